// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "fuzz/alloc_ledger.h"

#include <cstddef>
#include <vector>

#include "fuzz/fuzz_check.h"

namespace {

constexpr size_t kLongestDigitBuffer = 609;

struct Block {
    void *address;
    size_t size;
};

bool active = false;

std::vector<Block> &blocks() {
    static std::vector<Block> noted;
    return noted;
}

void *note(void *address, size_t size) {
    if (active && address != nullptr) blocks().push_back({address, size});
    return address;
}

void forget(void *address) {
    std::vector<Block> &noted = blocks();
    for (size_t i = noted.size(); i-- > 0;) {
        if (noted[i].address != address) continue;
        noted.erase(noted.begin() + static_cast<std::ptrdiff_t>(i));
        return;
    }
}

}  // namespace

extern "C" {

void *__real_malloc(size_t size);
void *__real_calloc(size_t count, size_t size);
void __real_free(void *block);
void *__wrap_malloc(size_t size);
void *__wrap_calloc(size_t count, size_t size);
void __wrap_free(void *block);

void *__wrap_malloc(size_t size) { return note(__real_malloc(size), size); }
void *__wrap_calloc(size_t count, size_t size) { return note(__real_calloc(count, size), count * size); }
void __wrap_free(void *block) {
    if (active) forget(block);
    __real_free(block);
}

}  // extern "C"

namespace zokecc_fuzz {

#ifdef ZOKECC_HARDENED
AllocLedger::AllocLedger(unsigned) : digit_buffers_(0) {
#else
AllocLedger::AllocLedger(unsigned digit_buffers) : digit_buffers_(digit_buffers) {
#endif
    blocks().clear();
    active = true;
}

AllocLedger::~AllocLedger() {
    active = false;
    check(blocks().size() <= digit_buffers_, "more than digit buffers left allocated");
    for (const Block &left : blocks()) {
        check(left.size <= kLongestDigitBuffer, "memory left that is not a digit buffer");
        __real_free(left.address);
    }
    blocks().clear();
}

LedgerPause::LedgerPause() : was_active_(active) { active = false; }
LedgerPause::~LedgerPause() { active = was_active_; }

}  // namespace zokecc_fuzz

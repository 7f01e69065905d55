// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "tests/support/failing_alloc.h"

#include <cstdlib>

namespace {

zokecc_test::FailingAlloc *active = nullptr;

// Counts one attempt; true if it must fail.
bool attempt(size_t size) {
    if (active == nullptr) return false;
    ++active->allocations;
    active->last_size = size;
    if (size > active->largest_size) active->largest_size = size;
    return active->allocations == active->fail_at;
}

void *note(void *block) {
    if (active != nullptr && block != nullptr) ++active->outstanding;
    return block;
}

}  // namespace

namespace zokecc_test {

FailingAlloc::FailingAlloc(unsigned fail_at_) : fail_at(fail_at_) { active = this; }
FailingAlloc::~FailingAlloc() { active = nullptr; }

AllocPause::AllocPause() : paused_(active) { active = nullptr; }
AllocPause::~AllocPause() { active = paused_; }

}  // namespace zokecc_test

extern "C" {

void *__real_malloc(size_t size);
void *__real_calloc(size_t count, size_t size);
void __real_free(void *block);
void *__wrap_malloc(size_t size);
void *__wrap_calloc(size_t count, size_t size);
void __wrap_free(void *block);

void *__wrap_malloc(size_t size) { return attempt(size) ? nullptr : note(__real_malloc(size)); }

void *__wrap_calloc(size_t count, size_t size) {
    return attempt(count * size) ? nullptr : note(__real_calloc(count, size));
}

void __wrap_free(void *block) {
    if (active != nullptr && block != nullptr) --active->outstanding;
    __real_free(block);
}

}  // extern "C"

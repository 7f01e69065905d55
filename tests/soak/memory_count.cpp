// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "tests/soak/memory_count.h"

#include <malloc.h>

#include <cstdint>
#include <cstring>

namespace {

// The size precedes every block. Sixteen bytes keep the block aligned for any type.
constexpr size_t kHead = 16;

zokecc_soak::MemoryCount in_use{};

void *counted(void *whole, size_t size) {
    if (whole == nullptr) return nullptr;
    std::memcpy(whole, &size, sizeof size);
    ++in_use.blocks;
    in_use.bytes += size;
    if (size > in_use.largest) in_use.largest = size;
    return static_cast<uint8_t *>(whole) + kHead;
}

}  // namespace

namespace zokecc_soak {

MemoryCount memory_in_use() { return in_use; }

size_t arena_in_use() {
#if defined(__GLIBC__) && __GLIBC_PREREQ(2, 33)
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
#else
    return 0;
#endif
}

}  // namespace zokecc_soak

extern "C" {

void *__real_malloc(size_t size);
void *__real_calloc(size_t count, size_t size);
void __real_free(void *block);
void *__wrap_malloc(size_t size);
void *__wrap_calloc(size_t count, size_t size);
void __wrap_free(void *block);

void *__wrap_malloc(size_t size) { return counted(__real_malloc(kHead + size), size); }

void *__wrap_calloc(size_t count, size_t size) {
    return counted(__real_calloc(1, kHead + count * size), count * size);
}

void __wrap_free(void *block) {
    if (block == nullptr) return;
    uint8_t *const whole = static_cast<uint8_t *>(block) - kHead;
    --in_use.blocks;
    size_t size = 0;
    std::memcpy(&size, whole, sizeof size);
    in_use.bytes -= size;
    __real_free(whole);
}

}  // extern "C"

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Secrets are gone from memory at the end of their scope.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <new>

#include "base/wipe.h"
#include "base/work_buffer.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/guarded_buffer.h"

namespace zokecc_test::wipe_test {

namespace {

struct Secret {
    uint32_t words[9];
    uint8_t tail[5];
};

using Held = zokecc::Wiping<Secret>;

// Reads memory as it is now: after the barrier the compiler can assume nothing about its content.
bool all_zero(const void *memory, size_t size) {
    __asm__ __volatile__("" : "+r"(memory) : : "memory");
    const uint8_t *bytes = static_cast<const uint8_t *>(memory);
    for (size_t i = 0; i < size; ++i)
        if (bytes[i] != 0) return false;
    return true;
}

TEST(Wipe, ClearsExactlyTheGivenBytes) {
    for (size_t size : {0u, 1u, 4u, 31u, 80u}) {
        GuardedBuffer memory(96);
        zokecc::wipe(memory.data(), size);
        EXPECT_TRUE(all_zero(memory.data(), size)) << size;
        EXPECT_TRUE(memory.untouched_from(size)) << size;
    }
}

TEST(Wiping, StartsAsZero) {
    alignas(Held) unsigned char storage[sizeof(Held)];
    std::memset(storage, 0xA5, sizeof storage);
    Held *held = new (storage) Held;
    EXPECT_TRUE(all_zero((*held)->words, sizeof(Secret::words)));
    EXPECT_TRUE(all_zero((*held)->tail, sizeof(Secret::tail)));
    held->~Held();
}

TEST(Wiping, EndOfTheScopeClearsTheStorage) {
    alignas(Held) unsigned char storage[sizeof(Held)];
    Held *held = new (storage) Held;
    std::memset(&**held, 0x5A, sizeof(Secret));
    EXPECT_FALSE(all_zero(storage, 1));
    held->~Held();
    EXPECT_TRUE(all_zero(storage, sizeof storage));
}

TEST(Wiping, AllAccessesReachTheSameValue) {
    zokecc::Wiping<uint32_t[4]> array;
    (*array)[2] = 7;
    EXPECT_EQ((*array.get())[2], 7u);
    Held held;
    held->words[8] = 9;
    EXPECT_EQ((*held).words[8], 9u);
    EXPECT_EQ(held.get()->words[8], 9u);
}

TEST(WorkBuffer, StartsAsZeroAndIsReturnedAtTheEndOfTheScope) {
    FailingAlloc allocations;
    bool held = false, clear = false;
    {
        zokecc::WorkBuffer buffer(100);
        held = static_cast<bool>(buffer);
        clear = held && all_zero(buffer.data(), 100);
    }
    EXPECT_EQ(allocations.allocations, 1u);
    EXPECT_EQ(allocations.last_size, 100u);
    EXPECT_EQ(allocations.outstanding, 0);
    EXPECT_TRUE(held);
    EXPECT_TRUE(clear);
}

TEST(WorkBuffer, FailedAllocationTestsFalseAndReturnsNothing) {
    FailingAlloc allocations(1);
    bool held = true;
    {
        zokecc::WorkBuffer buffer(100);
        held = static_cast<bool>(buffer);
        buffer.release();
    }
    EXPECT_FALSE(held);
    EXPECT_EQ(allocations.outstanding, 0);
}

TEST(WorkBuffer, ReleasedBlockIsClearedAndStaysAllocated) {
    FailingAlloc allocations;
    uint8_t *block = nullptr;
    {
        zokecc::WorkBuffer buffer(100);
        block = buffer.data();
        std::memset(block, 0x5A, 100);
        buffer.release();
        EXPECT_FALSE(static_cast<bool>(buffer));
    }
    EXPECT_EQ(allocations.outstanding, 1);
    EXPECT_TRUE(all_zero(block, 100));
    std::free(block);
    EXPECT_EQ(allocations.outstanding, 0);
}

}  // namespace

}  // namespace zokecc_test::wipe_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// sm3_hash and the compression function under it.
#include <gtest/gtest.h>
#include <zokecc/hash.h>

#include <sys/mman.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <vector>

#include "base/config.h"
#include "base/cpu_x86_64.h"
#include "hash/bytes.h"
#include "hash/sm3.h"
#include "tests/hash/helpers.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::sm3_test {

namespace {

std::string digest_of(const ByteString &message) {
    const sm3_msg descriptor = sm3_message(message);
    const sm3_msg before = descriptor;
    GuardedBuffer out(32);
    EXPECT_EQ(sm3_hash(&descriptor, out.data()), 0u);
    EXPECT_TRUE(out.untouched_from(32));
    EXPECT_EQ(descriptor.data, before.data);
    EXPECT_EQ(descriptor.len_high, 0u);
    EXPECT_EQ(descriptor.len_low, before.len_low);
    return to_hex(out.all());
}

using Blocks = void (*)(uint32_t *, const uint8_t *, uint64_t);

// The reference, and the routines that this processor supports.
std::vector<Blocks> routines() {
    std::vector<Blocks> all{zokecc::sm3_blocks_portable};
    if constexpr (zokecc::kShaInstructions) {
        if (zokecc::has_vector_instructions()) all.push_back(zokecc::sm3_blocks_avx);
        if (zokecc::has_rotating_vectors()) all.push_back(zokecc::sm3_blocks_avx512);
    }
    return all;
}

// Runs all routines on one state and block and compares with the model.
void expect_same_block(const HashState &start, const ByteString &block) {
    for (const Blocks compress : routines()) {
        GuardedRecord<HashState> state;
        *state.get() = start;
        const ByteString before = block;
        compress(state->data(), block.data(), 1);
        EXPECT_EQ(*state.get(), model_sm3_block(start, block.data()));
        EXPECT_TRUE(state.guards_intact());
        EXPECT_EQ(block, before);
    }
}

TEST(Sm3Hash, ThreeLettersGiveTheDigestOfTheStandard) {
    EXPECT_EQ(digest_of(text_bytes("abc")),
              "66c7f0f462eeedd9d1f2d46bdc10e4e24167c4875cf2f7a2297da02b8f4ba8e0");
}

TEST(Sm3Hash, SixteenTimesFourLettersGiveTheDigestOfTheStandard) {
    ByteString message;
    for (int i = 0; i < 16; ++i) message = joined(message, text_bytes("abcd"));
    EXPECT_EQ(digest_of(message), "debe9ff92275b8a138604889c18e5a4d6fdb70e5387e5765293dcba39c0c5732");
}

TEST(Sm3Hash, FiftyFiveBytesNeedOneTailBlockAndFiftySixTwo) {
    for (size_t length : {55u, 56u, 63u, 64u, 119u, 120u, 128u}) {
        const ByteString message = test_bytes(length, 56);
        EXPECT_EQ(digest_of(message), to_hex(model_sm3(message))) << length;
    }
}

TEST(Sm3Hash, EveryLengthUpToTwoHundredAgreesWithTheModel) {
    for (size_t length = 0; length <= 200; ++length) {
        const ByteString message = test_bytes(length);
        EXPECT_EQ(digest_of(message), to_hex(model_sm3(message))) << length;
    }
}

TEST(Sm3Hash, NullMessageOfLengthZeroIsTheEmptyMessage) {
    const sm3_msg descriptor{nullptr, 0, 0};
    GuardedBuffer out(32);
    EXPECT_EQ(sm3_hash(&descriptor, out.data()), 0u);
    EXPECT_EQ(to_hex(out.all()), "1ab21d8355cfa17f8e61194831e81a8f22bec8c728fefb747ed035eb5082aa2b");
    EXPECT_TRUE(out.untouched_from(32));
}

TEST(Sm3Hash, MessageAndDigestAtOddAddressesGiveTheSame) {
    const ByteString message = test_bytes(150);
    const std::string expected = to_hex(model_sm3(message));
    for (size_t offset = 1; offset < 4; ++offset) {
        ByteString moved(offset, 0);
        moved.insert(moved.end(), message.begin(), message.end());
        const sm3_msg descriptor{moved.data() + offset, 0, 150};
        GuardedBuffer out(32 + offset);
        EXPECT_EQ(sm3_hash(&descriptor, out.data() + offset), 0u);
        EXPECT_EQ(to_hex(out.data() + offset, 32), expected);
        EXPECT_TRUE(out.untouched_from(32 + offset));
    }
}

TEST(Sm3Hash, DigestMayReplaceTheMessage) {
    const ByteString message = test_bytes(100);
    ByteString buffer = message;
    const sm3_msg descriptor{buffer.data(), 0, 100};
    EXPECT_EQ(sm3_hash(&descriptor, buffer.data()), 0u);
    EXPECT_EQ(shortened(buffer, 32), model_sm3(message));
    EXPECT_EQ(ByteString(buffer.begin() + 32, buffer.end()), ByteString(message.begin() + 32, message.end()));
}

// Around the lengths at which the bit count needs another bit: 512 MiB, 4 GiB and the longest.
TEST(PadEnd, LengthInBitsTakesEightBytes) {
    for (uint64_t around : {uint64_t{1} << 29, uint64_t{1} << 32, uint64_t{1} << 60, uint64_t{1} << 61})
        for (uint32_t more : {0u, 1u, 55u, 56u, 63u, 64u}) {
            const uint64_t length = around - 64 + more;
            ByteString rest = test_bytes(length % 64, 3), tail = rest;
            tail.push_back(0x80);
            while (tail.size() % 64 != 56) tail.push_back(0);
            for (unsigned shift = 64; shift > 0; shift -= 8)
                tail.push_back(static_cast<uint8_t>(8 * length >> (shift - 8)));
            const size_t blocks = tail.size() / 64;
            tail.resize(128);
            GuardedBuffer end(128);
            EXPECT_EQ(zokecc::pad_end(rest.data(), length, end.data()), blocks) << length;
            EXPECT_EQ(end.all(), tail) << length;
            EXPECT_TRUE(end.untouched_from(128));
        }
}

// A message with a claimed length of 4 GiB lies before an unreadable page.
TEST(Sm3Hash, HighWordOfTheLengthIsRead) {
    const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    void *const pages = mmap(nullptr, 2 * page, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(pages, MAP_FAILED);
    auto *const message = static_cast<uint8_t *>(pages);
    ASSERT_EQ(mprotect(message + page, page, PROT_NONE), 0);
    auto reaches_the_end = [](auto hash) {
        std::signal(SIGSEGV, [](int) { _exit(7); });
        hash();
        _exit(0);
    };
    uint8_t out[32];
    const sm3_msg plain{message, 1, 0};
    const hash_msg selected{HASH_ALG_SM3, message, 1, 0};
    EXPECT_EXIT(reaches_the_end([&] { sm3_hash(&plain, out); }), testing::ExitedWithCode(7), "");
    EXPECT_EXIT(reaches_the_end([&] { hash_byte(&selected, out); }), testing::ExitedWithCode(7), "");
    EXPECT_EQ(munmap(pages, 2 * page), 0);
}

TEST(Sm3Compress, PaddedThreeLettersGiveTheDigestOfTheStandard) {
    ByteString block = text_bytes("abc");
    block.push_back(0x80);
    block.resize(64, 0);
    block[63] = 24;
    HashState state = model_sm3_start();
    sm3_compress(state.data(), block.data());
    EXPECT_EQ(to_hex(model_digest(state)),
              "66c7f0f462eeedd9d1f2d46bdc10e4e24167c4875cf2f7a2297da02b8f4ba8e0");
}

TEST(Sm3Compress, ArbitraryStatesAndBlocksAgreeWithTheModel) {
    for (uint32_t seed = 1; seed <= 20; ++seed) {
        HashState state;
        const ByteString bytes = test_bytes(32, 100 + seed);
        std::memcpy(state.data(), bytes.data(), 32);
        expect_same_block(state, test_bytes(64, seed));
    }
}

// Carries out of every addition, or out of none.
TEST(Sm3Compress, ExtremeStatesAndBlocksAgreeWithTheModel) {
    for (uint32_t word : {0u, 0xFFFFFFFFu, 0x80000000u, 1u})
        for (uint8_t byte : {uint8_t{0}, uint8_t{0xFF}, uint8_t{0x80}}) {
            HashState state;
            state.fill(word);
            expect_same_block(state, ByteString(64, byte));
        }
}

TEST(Sm3Compress, EveryRoutineGoesOnFromBlockToBlock) {
    const ByteString blocks = test_bytes(4 * 64, 11);
    for (const Blocks compress : routines()) {
        HashState expected = model_sm3_start();
        for (uint64_t count = 0; count <= 4; ++count) {
            HashState state = model_sm3_start();
            compress(state.data(), blocks.data(), count);
            EXPECT_EQ(state, expected) << count;
            if (count < 4) expected = model_sm3_block(expected, blocks.data() + 64 * count);
        }
    }
}

TEST(Sm3Compress, BlockAtAnOddAddressGivesTheSame) {
    const ByteString block = test_bytes(64, 9);
    for (size_t offset = 1; offset < 4; ++offset) {
        ByteString moved(offset, 0);
        moved.insert(moved.end(), block.begin(), block.end());
        for (const Blocks compress : routines()) {
            HashState state = model_sm3_start();
            compress(state.data(), moved.data() + offset, 1);
            EXPECT_EQ(state, model_sm3_block(model_sm3_start(), block.data()));
        }
    }
}

}  // namespace

}  // namespace zokecc_test::sm3_test

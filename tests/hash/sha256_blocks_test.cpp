// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The block transformation of SHA-256, with every routine that the processor supports.
#include "hash/sha256_blocks.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <vector>

#include "base/config.h"
#include "base/cpu_x86_64.h"
#include "tests/support/hard_words.h"

namespace zokecc_test::sha256_blocks_test {

namespace {

using State = std::array<uint32_t, 8>;
using Blocks = void (*)(uint32_t *, const uint8_t *, uint32_t);

constexpr State kInitial = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                            0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

std::vector<Blocks> routines() {
    std::vector<Blocks> all{zokecc::sha256_blocks_portable, zokecc::sha256_blocks};
    if constexpr (zokecc::kShaInstructions) {
        if (zokecc::has_sha_instructions()) all.push_back(zokecc::sha256_blocks_x86);
    }
    return all;
}

}  // namespace

// FIPS 180-4's example: "abc", padded.
TEST(Sha256Blocks, EveryRoutineGivesTheDigestOfAbc) {
    uint8_t block[64] = {'a', 'b', 'c', 0x80};
    block[63] = 24;
    const State expected = {0xba7816bf, 0x8f01cfea, 0x414140de, 0x5dae2223,
                            0xb00361a3, 0x96177a9c, 0xb410ff61, 0xf20015ad};
    for (const Blocks blocks : routines()) {
        State state = kInitial;
        blocks(state.data(), block, 1);
        EXPECT_EQ(state, expected);
    }
}

// "abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq", padded to two blocks.
TEST(Sha256Blocks, EveryRoutineGoesOnFromBlockToBlock) {
    uint8_t data[128] = {};
    std::memcpy(data, "abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq", 56);
    data[56] = 0x80;
    data[126] = 0x01;
    data[127] = 0xc0;
    const State expected = {0x248d6a61, 0xd20638b8, 0xe5c02693, 0x0c3e6039,
                            0xa33ce459, 0x64ff2167, 0xf6ecedd4, 0x19db06c1};
    for (const Blocks blocks : routines()) {
        State state = kInitial;
        blocks(state.data(), data, 2);
        EXPECT_EQ(state, expected);
        blocks(state.data(), data, 0);
        EXPECT_EQ(state, expected);
    }
}

TEST(Sha256Blocks, RoutinesAgreeAtEveryAlignmentAndFromAnyState) {
    HardWords draw(20);
    for (unsigned round = 0; round < 200; ++round) {
        std::vector<uint8_t> data(4 * 64 + 16);
        for (uint8_t &byte : data) byte = static_cast<uint8_t>(draw.word() >> 8);
        State start;
        for (uint32_t &word : start) word = draw.word();
        const uint32_t count = round % 5;
        const uint8_t *const from = data.data() + round % 16;
        State expected = start;
        zokecc::sha256_blocks_portable(expected.data(), from, count);
        for (const Blocks blocks : routines()) {
            State state = start;
            blocks(state.data(), from, count);
            ASSERT_EQ(state, expected) << "round " << round;
        }
    }
}

}  // namespace zokecc_test::sha256_blocks_test

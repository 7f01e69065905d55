// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Bit lengths and single bits.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/numbers.h"

namespace zokecc_test::bits_test {
namespace {

int32_t bits_of(const mint &value) {
    mint given = value;
    int32_t count = get_mint_bit_len(&value);
    EXPECT_TRUE(same_record(given, value));
    return count;
}

TEST(GetMintBitLen, ZeroHasNoBits) {
    EXPECT_EQ(0, bits_of(empty_zero()));
    EXPECT_EQ(0, bits_of(word_zero()));
}

TEST(GetMintBitLen, EveryPowerOfTwoAndItsPredecessor) {
    for (unsigned exponent = 1; exponent < 608; ++exponent) {
        mint power = Natural::power_of_two(exponent).to_mint();
        mint below = (Natural::power_of_two(exponent) - Natural(1)).to_mint();
        ASSERT_EQ(static_cast<int32_t>(exponent) + 1, bits_of(power));
        ASSERT_EQ(static_cast<int32_t>(exponent), bits_of(below));
    }
}

TEST(GetMintBitLen, ZeroTopWordCountsNoBits) {
    EXPECT_EQ(32, bits_of(of_words({1, 0})));
    EXPECT_EQ(96, bits_of(of_words({1, 1, 0, 0})));
}

TEST(GetMintBitLen, LenOutOfRangeReadsAsTheNearestLength) {
    EXPECT_EQ(0, bits_of(counting_words(0xFFFFFFFFu)));
    EXPECT_EQ(0, bits_of(counting_words(0x80000000u)));
    EXPECT_EQ(32 * 18 + 5, bits_of(counting_words(20)));
    EXPECT_EQ(32 * 18 + 5, bits_of(counting_words(0x7FFFFFFFu)));
}

TEST(MintBitSet, ReadsEveryBitAndChangesNothing) {
    HardWords draw(131);
    for (int round = 0; round < 20; ++round) {
        mint value = draw.number(MINT_WORDS), given = value;
        Natural number{value};
        for (int32_t i = 0; i < 640; ++i)
            ASSERT_EQ(number.bit(static_cast<unsigned>(i)) ? 1 : 0, mint_bit_set(&value, i))
                << draw.where() << ", bit " << i;
        EXPECT_TRUE(same_record(given, value));
    }
}

TEST(MintBitSet, NegativeIndexGivesZero) {
    mint value = all_ones(19);
    for (int32_t i : {-1, -31, -32, -33, -608, INT32_MIN}) EXPECT_EQ(0, mint_bit_set(&value, i)) << i;
}

TEST(MintBitSet, WordsAboveLenAreNotLookedAt) {
    mint value = all_ones(19);
    value.len = 2;
    EXPECT_EQ(1, mint_bit_set(&value, 63));
    EXPECT_EQ(0, mint_bit_set(&value, 64));
    EXPECT_EQ(0, mint_bit_set(&value, INT32_MAX));
    value.len = 0;
    EXPECT_EQ(0, mint_bit_set(&value, 0));
}

TEST(MintBitSet, LenOutOfRangeReadsAsTheNearestLength) {
    mint value = all_ones(19);
    value.len = 0x7FFFFFFFu;
    EXPECT_EQ(1, mint_bit_set(&value, 607));
    for (int32_t i : {608, 639, 640, INT32_MAX}) EXPECT_EQ(0, mint_bit_set(&value, i)) << i;
    for (uint32_t len : {0xFFFFFFFFu, 0x80000000u}) {
        value.len = len;
        for (int32_t i : {0, 1, 607, 608, INT32_MAX}) EXPECT_EQ(0, mint_bit_set(&value, i)) << i;
    }
}

TEST(MintBit, EveryPowerOfTwoAndItsNeighbours) {
    EXPECT_EQ(0, mint_bit(0));
    for (int32_t bits = 1; bits <= 32; ++bits) {
        uint32_t power = 1u << (bits - 1);
        EXPECT_EQ(bits, mint_bit(power));
        EXPECT_EQ(bits, mint_bit(power | 1));
        EXPECT_EQ(bits, mint_bit(power | (power - 1)));
    }
}

TEST(MintBit, EveryValueOfTheLowSixteenBits) {
    int32_t bits = 0;
    for (uint32_t value = 0; value < 0x10000u; ++value) {
        if (value >> bits != 0) ++bits;
        ASSERT_EQ(bits, mint_bit(value)) << value;
    }
}

}  // namespace
}  // namespace zokecc_test::bits_test

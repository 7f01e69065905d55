// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Shifts by any number of bits, in place.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/numbers.h"
#include "tests/support/guarded_buffer.h"

namespace zokecc_test::shift_test {
namespace {

using Shift = int32_t (*)(mint *, uint32_t);

mint shifted(Shift shift, const mint &value, uint32_t count) {
    GuardedRecord<mint> record;
    *record.get() = value;
    EXPECT_EQ(0, shift(record.get(), count));
    EXPECT_TRUE(record.guards_intact());
    return *record.get();
}
mint left(const mint &value, uint32_t count) { return shifted(mint_left_move, value, count); }
mint right(const mint &value, uint32_t count) { return shifted(mint_right_move, value, count); }

TEST(MintLeftMove, ByZeroLeavesTheRecordAlone) {
    for (const mint &value :
         {of_words({5, 0, 0}), word_zero(), counting_words(0xFFFFFFFFu), counting_words(25)})
        EXPECT_TRUE(same_record(value, left(value, 0)));
}

TEST(MintLeftMove, ByOneWordOfZeroGivesLenZero) {
    EXPECT_EQ(0u, left(empty_zero(), 32).len);
    EXPECT_EQ(0u, left(word_zero(), 32).len);
}

TEST(MintLeftMove, OfZeroGivesLenZeroForEveryCount) {
    for (uint32_t count = 1; count < 700; ++count) {
        ASSERT_EQ(0u, left(empty_zero(), count).len) << count;
        ASSERT_EQ(0u, left(of_words({0, 0}), count).len) << count;
    }
}

TEST(MintLeftMove, BitsLeavingTheTopWordMakeANewOne) {
    EXPECT_TRUE(is_value(left(one_word(0x80000001u), 1), of_words({2, 1})));
    EXPECT_TRUE(is_value(left(one_word(0x40000001u), 1), one_word(0x80000002u)));
}

TEST(MintLeftMove, WholeWordsMoveWithoutChange) {
    EXPECT_TRUE(is_value(left(of_words({1, 2}), 32), of_words({0, 1, 2})));
    EXPECT_TRUE(is_value(left(of_words({1, 2}), 96), of_words({0, 0, 0, 1, 2})));
}

TEST(MintLeftMove, NormalisesWhateverTheCount) {
    EXPECT_TRUE(is_value(left(of_words({1, 0, 0}), 32), of_words({0, 1})));
    EXPECT_TRUE(is_value(left(of_words({1, 0, 0}), 1), one_word(2)));
}

TEST(MintLeftMove, TopBitIsReachedAndThenLost) {
    mint top = left(one_word(1), 607);
    EXPECT_EQ(19u, top.len);
    EXPECT_EQ(0x80000000u, top.words[18]);
    EXPECT_EQ(0u, left(one_word(1), 608).len);
    EXPECT_EQ(0u, left(top, 1).len);
}

TEST(MintLeftMove, VeryLargeCountsGiveZero) {
    for (uint32_t count : {608u, 609u, 640u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFE0u, 0xFFFFFFFFu})
        EXPECT_EQ(0u, left(all_ones(19), count).len) << count;
}

TEST(MintLeftMove, HardNumbersAreKeptModuloTheCapacity) {
    HardWords draw(121);
    for (int round = 0; round < 3000; ++round) {
        mint value = draw.number(MINT_WORDS);
        uint32_t count = draw.below(4) == 0 ? 32 * draw.between(1, 20) : draw.between(1, 640);
        Natural expected = (Natural(value) << count).low_bits(32 * MINT_WORDS);
        ASSERT_TRUE(is_value(left(value, count), expected)) << draw.where() << ", by " << count;
    }
}

TEST(MintLeftMove, LenOutOfRangeReadsAsTheNearestLength) {
    mint full = counting_words(MINT_WORDS);
    Natural number{full};
    for (uint32_t count : {1u, 32u, 45u}) {
        Natural expected = (number << count).low_bits(32 * MINT_WORDS);
        EXPECT_TRUE(is_value(left(counting_words(20), count), expected)) << count;
        EXPECT_TRUE(is_value(left(counting_words(0x7FFFFFFFu), count), expected)) << count;
        EXPECT_EQ(0u, left(counting_words(0xFFFFFFFFu), count).len) << count;
    }
}

TEST(MintRightMove, ByZeroLeavesTheRecordAlone) {
    for (const mint &value :
         {of_words({5, 0, 0}), word_zero(), counting_words(0xFFFFFFFFu), counting_words(25)})
        EXPECT_TRUE(same_record(value, right(value, 0)));
}

TEST(MintRightMove, CarriesBitsIntoTheWordBelow) {
    EXPECT_TRUE(is_value(right(of_words({2, 1}), 1), one_word(0x80000001u)));
    EXPECT_TRUE(is_value(right(of_words({0, 0xFu}), 34), one_word(3)));
}

TEST(MintRightMove, WholeWordsMoveWithoutChange) {
    EXPECT_TRUE(is_value(right(of_words({1, 2, 0x80000000u}), 32), of_words({2, 0x80000000u})));
}

TEST(MintRightMove, ClearsTheVacatedTopWords) {
    mint moved = right(of_words({1, 2, 3, 4}), 64);
    EXPECT_TRUE(is_value(moved, of_words({3, 4})));
    EXPECT_EQ(0u, moved.words[2]);
    EXPECT_EQ(0u, moved.words[3]);
}

TEST(MintRightMove, NormalisesZeroTopWords) {
    EXPECT_TRUE(is_value(right(of_words({4, 8, 0}), 32), one_word(8)));
    EXPECT_TRUE(is_value(right(of_words({4, 8, 0}), 3), of_words({0, 1})));
}

TEST(MintRightMove, AllBitsAwayGivesZero) {
    mint value = of_words({7, 7});
    for (uint32_t count : {35u, 63u, 64u, 65u, 95u}) EXPECT_EQ(0u, right(value, count).len) << count;
}

TEST(MintRightMove, MoreWordsThanThereAreGivesZero) {
    for (uint32_t count : {96u, 608u, 640u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFE0u, 0xFFFFFFFFu}) {
        EXPECT_EQ(0u, right(of_words({1, 2}), count).len) << count;
        EXPECT_EQ(0u, right(empty_zero(), count).len) << count;
    }
    for (uint32_t count : {608u, 640u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFE0u, 0xFFFFFFFFu})
        EXPECT_EQ(0u, right(all_ones(19), count).len) << count;
}

TEST(MintRightMove, HardNumbersMatchTheOracle) {
    HardWords draw(122);
    for (int round = 0; round < 3000; ++round) {
        mint value = draw.number(MINT_WORDS);
        uint32_t count = draw.below(4) == 0 ? 32 * draw.between(1, 20) : draw.between(1, 640);
        ASSERT_TRUE(is_value(right(value, count), Natural(value) >> count))
            << draw.where() << ", by " << count;
    }
}

TEST(MintRightMove, LenOutOfRangeReadsAsTheNearestLength) {
    Natural number{counting_words(MINT_WORDS)};
    for (uint32_t count : {1u, 32u, 45u}) {
        EXPECT_TRUE(is_value(right(counting_words(20), count), number >> count)) << count;
        EXPECT_TRUE(is_value(right(counting_words(0x7FFFFFFFu), count), number >> count)) << count;
        EXPECT_EQ(0u, right(counting_words(0xFFFFFFFFu), count).len) << count;
    }
}

}  // namespace
}  // namespace zokecc_test::shift_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Copy, comparison and normalisation.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/kept_rules.h"
#include "tests/mint/numbers.h"
#include "tests/support/guarded_buffer.h"

namespace zokecc_test::value_test {
namespace {

TEST(MintCopy, TakesUsedWordsAndLenOnly) {
    GuardedRecord<mint> dst;
    mint src = of_words({1, 2, 3});
    mint given = src;
    EXPECT_EQ(0, mint_copy(dst.get(), &src));
    EXPECT_TRUE(is_value(*dst.get(), src));
    for (uint32_t i = 3; i < MINT_WORDS; ++i) EXPECT_EQ(0xA5A5A5A5u, dst->words[i]) << i;
    EXPECT_TRUE(dst.guards_intact());
    EXPECT_TRUE(same_record(given, src));
}

TEST(MintCopy, OfZeroWritesNoWord) {
    GuardedRecord<mint> dst;
    mint src = empty_zero();
    EXPECT_EQ(0, mint_copy(dst.get(), &src));
    EXPECT_EQ(0u, dst->len);
    for (uint32_t word : dst->words) EXPECT_EQ(0xA5A5A5A5u, word);
}

TEST(MintCopy, KeepsZeroTopWords) {
    mint dst = all_ones(5), src = of_words({7, 0, 0});
    EXPECT_EQ(0, mint_copy(&dst, &src));
    EXPECT_TRUE(is_value(dst, src));
}

TEST(MintCopy, OntoItselfChangesNothing) {
    mint value = of_words({1, 2, 3}), given = value;
    EXPECT_EQ(0, mint_copy(&value, &value));
    EXPECT_TRUE(same_record(given, value));
}

TEST(MintCopy, FullRecord) {
    GuardedRecord<mint> dst;
    mint src = counting_words(MINT_WORDS);
    EXPECT_EQ(0, mint_copy(dst.get(), &src));
    EXPECT_TRUE(same_record(src, *dst.get()));
    EXPECT_TRUE(dst.guards_intact());
}

TEST(MintCopy, LenAboveTheRecordCopiesNineteenWords) {
    for (uint32_t len : {20u, 100u, 0x7FFFFFFFu}) {
        GuardedRecord<mint> dst;
        mint src = counting_words(len);
        EXPECT_EQ(0, mint_copy(dst.get(), &src));
        EXPECT_EQ(0, std::memcmp(dst->words, src.words, sizeof src.words));
        EXPECT_EQ(len, dst->len);
        EXPECT_TRUE(dst.guards_intact());
    }
}

TEST(MintCopy, NegativeLenCopiesNoWord) {
    GuardedRecord<mint> dst;
    mint src = counting_words(0xFFFFFFFFu);
    EXPECT_EQ(0, mint_copy(dst.get(), &src));
    for (uint32_t word : dst->words) EXPECT_EQ(0xA5A5A5A5u, word);
    EXPECT_EQ(0xFFFFFFFFu, dst->len);
    EXPECT_TRUE(dst.guards_intact());
}

void expect_order(int32_t expected, const mint &a, const mint &b) {
    mint given_a = a, given_b = b;
    EXPECT_EQ(expected, mint_compare(&a, &b));
    EXPECT_EQ(-expected, mint_compare(&b, &a));
    EXPECT_TRUE(same_record(given_a, a) && same_record(given_b, b));
}

TEST(MintCompare, LongerValueIsTheGreater) { expect_order(1, of_words({0, 1}), one_word(0xFFFFFFFFu)); }

TEST(MintCompare, HighestDifferentWordDecides) {
    expect_order(1, of_words({0, 2, 9}), of_words({0xFFFFFFFFu, 1, 9}));
    expect_order(1, of_words({1, 5, 9}), of_words({0, 5, 9}));
}

TEST(MintCompare, WordsAreUnsigned) { expect_order(1, one_word(0x80000000u), one_word(0x7FFFFFFFu)); }

TEST(MintCompare, EqualValuesIgnoreTheWordsAbove) {
    mint a = of_words({1, 2}), b = a;
    b.words[2] = 77;
    expect_order(0, a, b);
    expect_order(0, a, a);
}

TEST(MintCompare, TwoEmptyZerosAreEqual) {
    mint a = empty_zero(), b = empty_zero();
    b.words[0] = 1;
    expect_order(0, a, b);
}

TEST(MintCompare, ZeroTopWordIsGreaterThanTheSameValueTrimmed) {
    expect_order(1, of_words({5, 0}), one_word(5));
    expect_order(1, of_words({5, 0}), one_word(0xFFFFFFFFu));
}

TEST(MintCompare, ZeroInOneWordIsGreaterThanEmptyZero) { expect_order(1, word_zero(), empty_zero()); }

TEST(MintCompare, LenIsReadAsSigned) {
    expect_order(-1, counting_words(0xFFFFFFFFu), empty_zero());
    expect_order(-1, counting_words(0x80000000u), counting_words(0xFFFFFFFFu));
    expect_order(-1, counting_words(0x80000000u), counting_words(0x7FFFFFFFu));
}

TEST(MintCompare, EqualNegativeLensAreEqualWhateverTheWords) {
    mint a = counting_words(0xFFFFFFFFu), b = a;
    b.words[0] = 99;
    expect_order(0, a, b);
}

TEST(MintCompare, LenAboveTheRecordDecidesBeforeTheWords) {
    mint a = counting_words(21), b = counting_words(20);
    b.words[18] = 0xFFFFFFFFu;
    expect_order(1, a, b);
    b.len = 21;
    expect_order(-1, a, b);
    b.words[18] = a.words[18];
    expect_order(0, a, b);
}

TEST(MintCompare, HardNumbersFollowTheRule) {
    HardWords draw(111);
    for (int round = 0; round < 5000; ++round) {
        mint a = draw.number(MINT_WORDS),
             b = draw.below(3) == 0 ? draw.number(MINT_WORDS) : draw.relative_of(a);
        ASSERT_EQ(kept_compare(a, b), mint_compare(&a, &b)) << draw.where();
        ASSERT_EQ(-kept_compare(a, b), mint_compare(&b, &a)) << draw.where();
    }
}

void expect_len(uint32_t expected, mint value, int32_t word_count) {
    GuardedRecord<mint> record;
    *record.get() = value;
    EXPECT_EQ(0, mint_adjust_len(record.get(), word_count));
    EXPECT_EQ(expected, record->len) << "from " << word_count;
    EXPECT_EQ(0, std::memcmp(record->words, value.words, sizeof value.words));
    EXPECT_TRUE(record.guards_intact());
}

TEST(MintAdjustLen, StopsAtTheHighestNonZeroWord) {
    mint value = of_words({1, 0, 3, 0, 0});
    expect_len(3, value, 5);
    expect_len(3, value, 4);
    expect_len(3, value, 3);
    expect_len(1, value, 2);
    expect_len(1, value, 1);
}

TEST(MintAdjustLen, AllZeroWordsGiveZero) { expect_len(0, of_words({0, 0, 0, 0}), 4); }

TEST(MintAdjustLen, IgnoresTheOldLen) {
    mint value = of_words({1, 2, 3});
    value.len = 1;
    expect_len(3, value, 3);
}

TEST(MintAdjustLen, CountOfZeroOrLessIsStoredAsItIs) {
    expect_len(0, of_words({1, 2}), 0);
    expect_len(0xFFFFFFFFu, of_words({1, 2}), -1);
    expect_len(0x80000000u, of_words({1, 2}), INT32_MIN);
}

TEST(MintAdjustLen, CountAboveTheRecordScansNineteenWords) {
    mint value = counting_words(3);
    for (int32_t count : {20, 21, 1000, INT32_MAX}) expect_len(19, value, count);
    for (uint32_t i = 4; i < MINT_WORDS; ++i) value.words[i] = 0;
    for (int32_t count : {19, 20, INT32_MAX}) expect_len(4, value, count);
}

}  // namespace
}  // namespace zokecc_test::value_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Addition, and subtraction in the cases that agree with the textbook.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/kept_rules.h"
#include "tests/mint/numbers.h"

namespace zokecc_test::add_sub_test {
namespace {

constexpr unsigned kCapacity = 32 * MINT_WORDS;

void expect_sum(const mint &a, const mint &b) {
    for_each_aliasing(a, b, Operands::kTrimmed, mint_add, [](const AliasRun &run) {
        EXPECT_EQ(0, run.returned) << run.how;
        EXPECT_TRUE(is_value(run.out, (Natural(run.a) + Natural(run.b)).low_bits(kCapacity))) << run.how;
    });
}

TEST(MintAdd, CarryMakesASecondWord) {
    mint a = one_word(0xFFFFFFFFu), b = one_word(1), out = of_words({});
    EXPECT_EQ(0, mint_add(&a, &b, &out));
    EXPECT_TRUE(is_value(out, of_words({0, 1})));
    expect_sum(a, b);
}

TEST(MintAdd, CarryRunsPastTheShorterOperand) {
    expect_sum(of_words({0xFFFFFFFFu, 0xFFFFFFFFu, 7}), one_word(1));
    expect_sum(one_word(1), of_words({0xFFFFFFFFu, 0xFFFFFFFFu, 7}));
}

TEST(MintAdd, CarryRunsPastTheTopOfTheLongerOperand) {
    expect_sum(all_ones(5), one_word(1));
    expect_sum(one_word(1), all_ones(5));
    expect_sum(all_ones(5), all_ones(5));
}

TEST(MintAdd, LongerOperandIsCopiedWhereNoCarryReaches) {
    expect_sum(of_words({1, 2, 3, 4}), of_words({5, 6}));
    expect_sum(of_words({5, 6}), of_words({1, 2, 3, 4}));
}

TEST(MintAdd, EveryFormOfZeroAddsNothing) {
    for (const mint &zero : {empty_zero(), word_zero(), of_words({0, 0, 0})}) {
        expect_sum(zero, of_words({1, 2}));
        expect_sum(of_words({1, 2}), zero);
        expect_sum(zero, empty_zero());
        expect_sum(zero, word_zero());
    }
}

TEST(MintAdd, TrimsTheLensOfBothOperandsInPlace) {
    mint a = of_words({1, 0, 0}), b = of_words({2, 3, 0}), given_a = a, given_b = b, out;
    EXPECT_EQ(0, mint_add(&a, &b, &out));
    EXPECT_EQ(1u, a.len);
    EXPECT_EQ(2u, b.len);
    EXPECT_EQ(0, std::memcmp(a.words, given_a.words, sizeof a.words));
    EXPECT_EQ(0, std::memcmp(b.words, given_b.words, sizeof b.words));
    EXPECT_TRUE(is_value(out, of_words({3, 3})));
}

TEST(MintAdd, SumAboveTheCapacityIsKeptModuloIt) {
    expect_sum(all_ones(19), one_word(1));
    expect_sum(all_ones(19), all_ones(19));
    mint half = empty_zero();
    half.len = 19;
    for (uint32_t &word : half.words) word = 0;
    half.words[18] = 0x80000000u;
    expect_sum(half, half);
    expect_sum(half, of_words({9}));
}

TEST(MintAdd, LenAboveTheRecordReadsNineteenWords) {
    mint a = counting_words(40), b = one_word(1), out;
    EXPECT_EQ(0, mint_add(&a, &b, &out));
    EXPECT_TRUE(is_value(out, Natural(counting_words(19)) + Natural(1)));
    EXPECT_EQ(19u, a.len);
}

TEST(MintAdd, NegativeLenReadsAsZero) {
    mint a = counting_words(0xFFFFFFFFu), b = of_words({7, 8}), out;
    EXPECT_EQ(0, mint_add(&a, &b, &out));
    EXPECT_TRUE(is_value(out, of_words({7, 8})));
    EXPECT_EQ(0, mint_add(&b, &a, &out));
    EXPECT_TRUE(is_value(out, of_words({7, 8})));
    mint c = counting_words(0x80000000u);
    EXPECT_EQ(0, mint_add(&a, &c, &out));
    EXPECT_LE(static_cast<int32_t>(out.len), 0);
}

TEST(MintAdd, HardNumbersInEveryPlace) {
    HardWords draw(151);
    for (int round = 0; round < 2500 && !::testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE(draw.where());
        mint a = draw.number(MINT_WORDS);
        expect_sum(a, draw.below(2) == 0 ? draw.number(MINT_WORDS) : draw.relative_of(a));
    }
}

// Compares with the textbook; the operands must avoid the kept cases.
void expect_textbook_difference(const mint &a, const mint &b) {
    for_each_aliasing(a, b, Operands::kKept, mint_sub, [](const AliasRun &run) {
        Natural x(run.a), y(run.b);
        EXPECT_EQ(x < y ? 1 : 0, run.returned) << run.how;
        EXPECT_TRUE(is_value(run.out, x < y ? y - x : x - y)) << run.how;
    });
}

TEST(MintSub, OfEqualNumbersGivesClearedZero) {
    for (const mint &a : {of_words({1, 2, 3}), one_word(9), word_zero(), empty_zero(), all_ones(19)})
        for_each_aliasing(a, a, Operands::kKept, mint_sub, [](const AliasRun &run) {
            EXPECT_EQ(0, run.returned) << run.how;
            EXPECT_TRUE(is_cleared_zero(run.out)) << run.how;
        });
}

TEST(MintSub, OneMinusTwoGivesOneAndTheSign) {
    mint a = one_word(1), b = one_word(2), out;
    EXPECT_EQ(1, mint_sub(&a, &b, &out));
    EXPECT_TRUE(is_value(out, one_word(1)));
    EXPECT_EQ(0, mint_sub(&b, &a, &out));
    EXPECT_TRUE(is_value(out, one_word(1)));
}

TEST(MintSub, ZeroLeavesTheOtherOperand) {
    expect_textbook_difference(of_words({1, 2}), empty_zero());
    expect_textbook_difference(empty_zero(), of_words({1, 2}));
    expect_textbook_difference(of_words({1, 2}), word_zero());
    expect_textbook_difference(one_word(0x80000000u), word_zero());
}

TEST(MintSub, BorrowReachesTheFirstUpperWord) {
    expect_textbook_difference(of_words({0, 1}), one_word(1));
    expect_textbook_difference(of_words({4, 7, 9}), of_words({5, 3}));
    expect_textbook_difference(of_words({4, 7, 9}), of_words({5, 8}));
}

TEST(MintSub, DifferenceIsNormalised) {
    expect_textbook_difference(of_words({5, 6, 7}), of_words({4, 6, 7}));
    expect_textbook_difference(of_words({0xFFFFFFFFu, 0, 1}), of_words({1, 0, 1}));
}

TEST(MintSub, BorrowsThroughDifferentWordsFollowTheTextbook) {
    HardWords draw(152);
    int compared = 0;
    for (int round = 0; round < 3000 && !::testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE(draw.where());
        mint a = draw.trimmed(MINT_WORDS), b = draw.trimmed(MINT_WORDS);
        Natural x(a), y(b), true_difference = x < y ? y - x : x - y;
        if (kept_sub(x, y, Over::kLarger) != true_difference ||
            kept_sub(x, y, Over::kOther) != true_difference)
            continue;
        expect_textbook_difference(a, b);
        ++compared;
    }
    EXPECT_GT(compared, 1500);
}

TEST(MintSub, ZeroTopWordMakesTheShorterNumberTheLarger) {
    // 5 as (5, 0) is longer than 7 and so counts as larger: 5 - 7 modulo 2^64, no sign.
    mint a = of_words({5, 0}), b = one_word(7), out;
    EXPECT_EQ(0, mint_sub(&a, &b, &out));
    EXPECT_TRUE(is_value(out, of_words({0xFFFFFFFEu, 0xFFFFFFFFu})));
    EXPECT_EQ(1, mint_sub(&b, &a, &out));
    EXPECT_TRUE(is_value(out, of_words({0xFFFFFFFEu, 0xFFFFFFFFu})));
}

TEST(MintSub, LenAboveTheRecordReadsNineteenWords) {
    mint a = counting_words(40), b = counting_words(30), out;
    b.words[18] = 1;
    EXPECT_EQ(0, mint_sub(&a, &b, &out));
    EXPECT_TRUE(is_value(out, Natural::power_of_two(32 * 18) * Natural(18)));
    EXPECT_EQ(1, mint_sub(&b, &a, &out));
    EXPECT_TRUE(is_value(out, Natural::power_of_two(32 * 18) * Natural(18)));
}

TEST(MintSub, NegativeLenReadsAsZeroAndAsTheSmaller) {
    mint a = of_words({7, 8}), b = counting_words(0xFFFFFFFFu), out;
    EXPECT_EQ(0, mint_sub(&a, &b, &out));
    EXPECT_TRUE(is_value(out, a));
    EXPECT_EQ(1, mint_sub(&b, &a, &out));
    EXPECT_TRUE(is_value(out, a));
    EXPECT_EQ(0, mint_sub(&b, &b, &out));
    EXPECT_TRUE(is_cleared_zero(out));
}

}  // namespace
}  // namespace zokecc_test::add_sub_test

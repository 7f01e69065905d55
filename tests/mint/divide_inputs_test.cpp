// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Division by zero, null outputs, dividends below the divisor and untrimmed lengths.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/numbers.h"
#include "tests/support/guarded_buffer.h"

namespace zokecc_test::divide_inputs_test {
namespace {

TEST(MintDiv, ByZeroReturnsZeroAndWritesNothing) {
    for (const mint &zero :
         {empty_zero(), word_zero(), of_words({0, 0}), of_words({0, 0, 0}), counting_words(0xFFFFFFFFu)}) {
        mint a = of_words({1, 2, 3}), given = a;
        GuardedRecord<mint> q, r;
        EXPECT_EQ(0, mint_div(&a, &zero, q.get(), r.get()));
        EXPECT_TRUE(q.unchanged());
        EXPECT_TRUE(r.unchanged());
        EXPECT_EQ(0, mint_mod(&a, &zero, r.get()));
        EXPECT_TRUE(r.unchanged());
        EXPECT_EQ(0, mint_mod(&a, &zero, &a));
        EXPECT_TRUE(same_record(given, a));
    }
}

TEST(MintDiv, ByMoreZeroWordsThanTheDividendHasCopiesTheDividend) {
    // The operands are compared as given before either is normalised.
    mint a = of_words({1, 2, 3}), zero = of_words({0, 0, 0, 0}), q, r;
    EXPECT_EQ(1, mint_div(&a, &zero, &q, &r));
    EXPECT_TRUE(is_cleared_zero(q));
    EXPECT_TRUE(is_value(r, a));
}

TEST(MintDiv, OfZeroByZeroReturnsZeroInEveryForm) {
    for (const mint &a : {empty_zero(), word_zero()})
        for (const mint &zero : {empty_zero(), word_zero()}) {
            GuardedRecord<mint> q, r;
            EXPECT_EQ(0, mint_div(&a, &zero, q.get(), r.get()));
            EXPECT_EQ(0, mint_mod(&a, &zero, r.get()));
            EXPECT_TRUE(q.unchanged() && r.unchanged());
        }
}

TEST(MintDiv, NullRemainderReturnsZeroAndWritesNothing) {
    mint a = of_words({1, 2, 3}), b = one_word(5), zero = empty_zero();
    GuardedRecord<mint> q;
    EXPECT_EQ(0, mint_div(&a, &b, q.get(), nullptr));
    EXPECT_EQ(0, mint_div(&b, &a, q.get(), nullptr));
    EXPECT_EQ(0, mint_div(&a, &zero, q.get(), nullptr));
    EXPECT_EQ(0, mint_mod(&a, &b, nullptr));
    EXPECT_TRUE(q.unchanged());
}

TEST(MintDiv, NullQuotientIsDropped) {
    mint a = of_words({1, 2, 3}), b = one_word(5), r;
    EXPECT_EQ(1, mint_div(&a, &b, nullptr, &r));
    EXPECT_TRUE(is_value(r, Natural(a) % Natural(5)));
    EXPECT_EQ(1, mint_div(&b, &a, nullptr, &r));
    EXPECT_TRUE(is_value(r, b));
}

TEST(MintDiv, SmallerDividendIsTheRemainder) {
    mint a = of_words({1, 2}), b = of_words({0, 3}), q, r;
    EXPECT_EQ(1, mint_div(&a, &b, &q, &r));
    EXPECT_TRUE(is_cleared_zero(q));
    EXPECT_TRUE(is_value(r, a));
}

TEST(MintMod, SmallerDividendIsCopiedAsItStands) {
    mint a = of_words({5, 0}), m = of_words({1, 1, 1}), q, r;
    EXPECT_EQ(1, mint_mod(&a, &m, &r));
    EXPECT_TRUE(is_value(r, of_words({5, 0})));  // the zero top word stays
    EXPECT_EQ(1, mint_div(&a, &m, &q, &r));
    EXPECT_TRUE(is_value(r, of_words({5, 0})));
    EXPECT_TRUE(is_cleared_zero(q));
    a = word_zero();
    EXPECT_EQ(1, mint_mod(&a, &m, &r));
    EXPECT_TRUE(is_value(r, word_zero()));
}

TEST(MintMod, DividendWithZeroTopWordsMayStillBeTheSmaller) {
    mint a = of_words({5, 0, 0}), m = one_word(7), q, r;
    EXPECT_EQ(1, mint_mod(&a, &m, &r));
    EXPECT_TRUE(is_value(r, one_word(5)));
    EXPECT_EQ(1, mint_div(&a, &m, &q, &r));
    EXPECT_TRUE(is_value(r, one_word(5)));
    EXPECT_TRUE(is_cleared_zero(q));
    a = of_words({0, 0, 0});
    EXPECT_EQ(1, mint_mod(&a, &m, &r));
    EXPECT_EQ(0u, r.len);
}

TEST(MintMod, DivisorWithZeroTopWordsComparesAsTheLonger) {
    // The operands are compared as given, and the longer one counts as larger.
    mint a = of_words({1, 2, 3}), m = of_words({7, 0, 0, 0}), q, r;
    EXPECT_EQ(1, mint_mod(&a, &m, &r));
    EXPECT_TRUE(is_value(r, a));
    EXPECT_EQ(1, mint_div(&a, &m, &q, &r));
    EXPECT_TRUE(is_value(r, a));
    EXPECT_TRUE(is_cleared_zero(q));
}

TEST(MintDiv, LensOutOfRangeReadAsTheNearest) {
    mint a = counting_words(1000), b = of_words({3, 5}), q, r;
    Natural number{counting_words(19)};
    EXPECT_EQ(1, mint_div(&a, &b, &q, &r));
    EXPECT_TRUE(is_value(q, number / Natural(b)));
    EXPECT_TRUE(is_value(r, number % Natural(b)));
    a.len = 0xFFFFFFFFu;
    EXPECT_EQ(1, mint_mod(&a, &b, &r));
    EXPECT_LE(static_cast<int32_t>(r.len), 0);
}

}  // namespace
}  // namespace zokecc_test::divide_inputs_test

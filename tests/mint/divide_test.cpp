// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Long division: quotient and remainder, and the remainder alone.
//
// Quotient and remainder are correct if and only if q * b + r is a and r is below b, so most
// tests need no second division.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/kept_rules.h"
#include "tests/mint/numbers.h"
#include "tests/support/guarded_buffer.h"

namespace zokecc_test::divide_test {
namespace {

// Divides between guards and checks the identity for mint_div and mint_mod.
void expect_division(const mint &a, const mint &b) {
    GuardedRecord<mint> quotient, remainder, alone;
    mint dividend = a, divisor = b;
    ASSERT_EQ(1, mint_div(&dividend, &divisor, quotient.get(), remainder.get()));
    ASSERT_EQ(1, mint_mod(&dividend, &divisor, alone.get()));
    ASSERT_TRUE(same_record(a, dividend) && same_record(b, divisor)) << "an operand changed";
    ASSERT_TRUE(quotient.guards_intact() && remainder.guards_intact() && alone.guards_intact());
    Natural q(*quotient.get()), r(*remainder.get());
    ASSERT_EQ(Natural(a), q * Natural(b) + r);
    ASSERT_LT(r, Natural(b));
    ASSERT_TRUE(is_value(*quotient.get(), q)) << "quotient is not normalised";
    ASSERT_TRUE(is_value(*alone.get(), *remainder.get())) << "mint_mod differs from mint_div";
}

TEST(MintDiv, SmallNumbers) {
    mint a = one_word(100), b = one_word(7), q, r;
    EXPECT_EQ(1, mint_div(&a, &b, &q, &r));
    EXPECT_TRUE(is_value(q, one_word(14)));
    EXPECT_TRUE(is_value(r, one_word(2)));
}

TEST(MintDiv, ExactDivisionLeavesLenZero) {
    mint a = of_words({0, 6}), b = of_words({0, 2}), q, r;
    EXPECT_EQ(1, mint_div(&a, &b, &q, &r));
    EXPECT_TRUE(is_value(q, one_word(3)));
    EXPECT_EQ(0u, r.len);
    EXPECT_EQ(1, mint_mod(&a, &a, &r));
    EXPECT_EQ(0u, r.len);
}

TEST(MintMod, DividendWithZeroTopWordsIsDivided) {
    expect_division(of_words({5, 9, 0, 0}), one_word(7));
    expect_division(of_words({5, 9, 0, 0}), of_words({5, 9}));
}

TEST(MintMod, DivisorWithZeroTopWordsIsNormalisedFirst) {
    expect_division(of_words({1, 2, 3, 4}), of_words({7, 0, 0}));
    expect_division(of_words({1, 2, 3, 4}), of_words({7, 9, 0, 0}));
}

TEST(MintDiv, DivisorOfFullWordsNeedsAWholeWordOfShift) {
    for (uint32_t len = 1; len <= 9; ++len) {
        SCOPED_TRACE(len);
        expect_division(all_ones(19), all_ones(len));
        expect_division(all_ones(2 * len), all_ones(len));
        mint prime = all_ones(len);
        prime.words[0] = 0xFFFFFF43u;
        expect_division(all_ones(19), prime);
        expect_division(all_ones(2 * len), prime);
    }
}

TEST(MintDiv, OneWordDivisorTakesEveryDividendLength) {
    HardWords draw(181);
    for (uint32_t divisor : {1u, 2u, 3u, 10u, 0xFFFFu, 0x80000000u, 0xFFFFFFFEu, 0xFFFFFFFFu})
        for (uint32_t len = 1; len <= MINT_WORDS; ++len) {
            SCOPED_TRACE(draw.where());
            expect_division(draw.untrimmed(len), one_word(divisor));
            expect_division(all_ones(len), one_word(divisor));
        }
}

TEST(MintDiv, DividendOfNineteenWordsByEveryDivisorLength) {
    HardWords draw(182);
    for (uint32_t len = 1; len <= MINT_WORDS; ++len)
        for (int round = 0; round < 8; ++round) {
            mint divisor = draw.untrimmed(len);
            divisor.words[len - 1] |= 1u << draw.below(32);
            SCOPED_TRACE(draw.where());
            expect_division(all_ones(19), divisor);
            expect_division(draw.untrimmed(19), divisor);
        }
}

TEST(MintDiv, FirstDigitIsOneOrNothing) {
    mint b = of_words({5, 0x80000000u});
    expect_division(of_words({0, 5, 0x80000000u}), b);
    expect_division(of_words({0, 4, 0x80000000u}), b);
    expect_division(of_words({0xFFFFFFFFu, 4, 0x80000000u}), b);
}

TEST(MintDiv, DigitEstimatesThatAreTooLarge) {
    // Top words equal, second words that make the estimate one or two too large.
    expect_division(of_words({0, 0, 0x80000000u, 0x7FFFFFFFu}), of_words({1, 0, 0x80000000u}));
    expect_division(of_words({0, 0xFFFFFFFEu, 0x80000000u}), of_words({0xFFFFFFFFu, 0x80000000u}));
    expect_division(of_words({3, 0, 0x80000000u}), of_words({1, 0x20000000u}));
    expect_division(of_words({0, 0, 0, 0x80000000u, 0x7FFFFFFFu}), of_words({1, 0, 0, 0x80000000u}));
    expect_division(of_words({0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu, 0x7FFFFFFFu}),
                    of_words({0xFFFFFFFFu, 0xFFFFFFFFu, 0x80000000u}));
}

TEST(MintDiv, HardNumbersSatisfyTheIdentity) {
    HardWords draw(183);
    for (int round = 0; round < 6000; ++round) {
        mint a = draw.number(MINT_WORDS), b = draw.trimmed(1 + draw.below(MINT_WORDS));
        if (draw.below(3) == 0) b = draw.relative_of(a);
        if (b.len == 0) b = one_word(1 + draw.below(9));
        if (kept_compare(a, b) < 0) continue;
        SCOPED_TRACE(draw.where());
        ASSERT_NO_FATAL_FAILURE(expect_division(a, b));
    }
}

TEST(MintDiv, MultiplesOfTheDivisorAndTheirNeighbours) {
    HardWords draw(184);
    for (int round = 0; round < 1500; ++round) {
        mint b = draw.trimmed(10), q = draw.trimmed(9);
        if (b.len == 0) continue;
        Natural product = Natural(b) * Natural(q);
        SCOPED_TRACE(draw.where());
        ASSERT_NO_FATAL_FAILURE(expect_division((product + Natural(1)).to_mint(), b));
        if (product.is_zero()) continue;
        ASSERT_NO_FATAL_FAILURE(expect_division(product.to_mint(), b));
        ASSERT_NO_FATAL_FAILURE(expect_division((product - Natural(1)).to_mint(), b));
    }
}

TEST(MintDiv, OracleAgreesOnQuotientAndRemainder) {
    HardWords draw(185);
    for (int round = 0; round < 150; ++round) {
        mint a = draw.trimmed(MINT_WORDS), b = draw.trimmed(9), q, r;
        if (b.len == 0) continue;
        ASSERT_EQ(1, mint_div(&a, &b, &q, &r));
        ASSERT_TRUE(is_value(q, Natural(a) / Natural(b))) << draw.where();
        ASSERT_TRUE(is_value(r, Natural(a) % Natural(b))) << draw.where();
    }
}

TEST(MintDiv, OutputsMayBeTheOperands) {
    HardWords draw(186);
    for (int round = 0; round < 400; ++round) {
        mint a = draw.trimmed(MINT_WORDS), b = draw.relative_of(a), q, r;
        if (draw.below(2) == 0) b = draw.trimmed(8);
        if (b.len == 0) continue;
        ASSERT_EQ(1, mint_div(&a, &b, &q, &r));
        SCOPED_TRACE(draw.where());
        mint x = a, y = b, other;
        ASSERT_EQ(1, mint_div(&x, &y, &other, &x));  // remainder over the dividend
        ASSERT_TRUE(is_value(other, q) && is_value(x, r) && same_record(y, b));
        x = a;
        ASSERT_EQ(1, mint_div(&x, &y, &y, &x));  // and quotient over the divisor
        ASSERT_TRUE(is_value(y, q) && is_value(x, r));
        x = a, y = b;
        ASSERT_EQ(1, mint_div(&x, &y, &x, &other));  // quotient over the dividend
        ASSERT_TRUE(is_value(x, q) && is_value(other, r) && same_record(y, b));
        x = a;
        ASSERT_EQ(1, mint_div(&x, &y, &y, &other));  // quotient over the divisor
        ASSERT_TRUE(is_value(y, q) && is_value(other, r) && same_record(x, a));
    }
}

TEST(MintDiv, OneRecordMayBeDividendAndDivisor) {
    mint a = of_words({1, 2, 3}), given = a, q, r;
    EXPECT_EQ(1, mint_div(&a, &a, &q, &r));
    EXPECT_TRUE(is_value(q, one_word(1)));
    EXPECT_EQ(0u, r.len);
    EXPECT_TRUE(same_record(given, a));
    EXPECT_EQ(1, mint_div(&a, &a, &a, &r));
    EXPECT_TRUE(is_value(a, one_word(1)));
}

TEST(MintMod, RemainderMayReplaceTheDividend) {
    HardWords draw(187);
    for (int round = 0; round < 1000; ++round) {
        mint x = draw.trimmed(MINT_WORDS), m = draw.trimmed(9), r;
        if (m.len == 0) continue;
        mint given = m;
        ASSERT_EQ(1, mint_mod(&x, &m, &r));
        ASSERT_EQ(1, mint_mod(&x, &m, &x));
        ASSERT_TRUE(is_value(x, r)) << draw.where();
        ASSERT_TRUE(same_record(given, m));
    }
}

}  // namespace
}  // namespace zokecc_test::divide_test

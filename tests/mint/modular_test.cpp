// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Addition and subtraction modulo p.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/kept_rules.h"
#include "tests/mint/moduli.h"
#include "tests/mint/numbers.h"

namespace zokecc_test::modular_test {
namespace {

void expect_sum(const mint &a, const mint &b, const mint &p) {
    mint modulus = p;
    for_each_aliasing(
        a, b, Operands::kTrimmed,
        [&](mint *x, mint *y, mint *out) { return mint_mod_add(x, y, &modulus, out); },
        [&](const AliasRun &run) {
            EXPECT_EQ(0, run.returned) << run.how;
            EXPECT_TRUE(is_value(run.out, (Natural(run.a) + Natural(run.b)) % Natural(p))) << run.how;
        });
    EXPECT_TRUE(same_record(p, modulus));
}

void expect_difference(const mint &a, const mint &b, const mint &p) {
    mint modulus = p;
    for_each_aliasing(
        a, b, Operands::kKept, [&](mint *x, mint *y, mint *out) { return mint_mod_sub(x, y, &modulus, out); },
        [&](const AliasRun &run) {
            EXPECT_EQ(0, run.returned) << run.how;
            EXPECT_TRUE(is_value(run.out, kept_mod_sub(Natural(run.a), Natural(run.b), Natural(p))))
                << run.how;
        });
    EXPECT_TRUE(same_record(p, modulus));
}

TEST(MintModAdd, WrapsAtTheModulus) {
    expect_sum(one_word(5), one_word(4), one_word(7));
    expect_sum(one_word(3), one_word(4), one_word(7));
    expect_sum(one_word(2), one_word(4), one_word(7));
    expect_sum(all_ones(8), all_ones(8), all_ones(8));
}

TEST(MintModAdd, EveryFormOfZeroAddsNothing) {
    for (const mint &zero : {empty_zero(), word_zero(), of_words({0, 0, 0})}) {
        expect_sum(zero, of_words({1, 2}), of_words({5, 5}));
        expect_sum(of_words({1, 2}), zero, of_words({5, 5}));
        expect_sum(zero, zero, of_words({5, 5}));
    }
}

TEST(MintModAdd, TrimsTheLensOfBothOperandsInPlace) {
    mint a = of_words({6, 0, 0, 0, 0, 0, 0, 0}), b = of_words({5, 0}), p = one_word(7), out;
    EXPECT_EQ(0, mint_mod_add(&a, &b, &p, &out));
    EXPECT_TRUE(is_value(a, one_word(6)));
    EXPECT_TRUE(is_value(b, one_word(5)));
    EXPECT_TRUE(is_value(out, one_word(4)));
}

TEST(MintModAdd, HardNumbersReducedAndNot) {
    HardWords draw(201);
    for (const Modulus &modulus : odd_moduli())
        for (int round = 0; round < 12; ++round) {
            mint p = modulus.value.to_mint();
            mint a = draw.below(4) == 0 ? draw.number(18) : draw.reduced(p), b = draw.reduced(p);
            SCOPED_TRACE(modulus.name + ", " + draw.where());
            expect_sum(a, b, p);
            expect_sum(b, a, p);
            if (HasFailure()) return;
        }
}

TEST(MintModSub, OfEqualOperandsGivesClearedZero) {
    mint p = of_words({5, 5});
    for (const mint &a : {one_word(3), of_words({1, 9}), word_zero(), empty_zero()})
        for_each_aliasing(
            a, a, Operands::kKept, [&](mint *x, mint *y, mint *out) { return mint_mod_sub(x, y, &p, out); },
            [](const AliasRun &run) {
                EXPECT_EQ(0, run.returned) << run.how;
                EXPECT_TRUE(is_cleared_zero(run.out)) << run.how;
            });
}

TEST(MintModSub, OneMinusTwoGivesTheModulusLessOne) {
    mint p = of_hex("ffffffff00000001000000000000000000000000ffffffffffffffffffffffff");
    mint a = one_word(1), b = one_word(2), out;
    EXPECT_EQ(0, mint_mod_sub(&a, &b, &p, &out));
    EXPECT_TRUE(is_value(out, Natural(p) - Natural(1)));
}

TEST(MintModSub, OfZeroGivesTheNegative) {
    expect_difference(empty_zero(), one_word(3), one_word(7));
    expect_difference(one_word(3), empty_zero(), one_word(7));
    expect_difference(word_zero(), one_word(3), one_word(7));
}

TEST(MintModSub, ModulusLessZeroIsReducedToZero) {
    mint p = of_words({5, 5}), zero = empty_zero(), out;
    EXPECT_EQ(0, mint_mod_sub(&p, &zero, &p, &out));
    EXPECT_EQ(0u, out.len);
}

TEST(MintModSub, KeptDifferenceMultipleOfModulusGivesModulus) {
    mint p = one_word(7), a = one_word(1), out;
    for (uint32_t b : {8u, 15u, 7001u}) {
        mint greater = one_word(b);
        EXPECT_EQ(0, mint_mod_sub(&a, &greater, &p, &out));
        EXPECT_TRUE(is_value(out, p)) << b;
        EXPECT_EQ(0, mint_mod_sub(&greater, &a, &p, &out));
        EXPECT_EQ(0u, out.len) << b;  // with operands swapped it is zero
    }
    mint zero = empty_zero();
    EXPECT_EQ(0, mint_mod_sub(&zero, &p, &p, &out));
    EXPECT_TRUE(is_value(out, p));
}

TEST(MintModSub, KeptEqualWordsUnderBorrowReachTheDifference) {
    mint a = of_words({1, 5, 1}), b = of_words({2, 5}), p = all_ones(4), out;
    EXPECT_EQ(0, mint_mod_sub(&a, &b, &p, &out));
    EXPECT_TRUE(is_value(out, of_words({0xFFFFFFFFu, 0xFFFFFFFEu})));
}

TEST(MintModSub, KeptEqualWordsUnderBorrowReachTheNegative) {
    mint a = empty_zero(), b = of_words({2, 7}), p = of_words({1, 7, 9}), out;
    EXPECT_EQ(0, mint_mod_sub(&a, &b, &p, &out));
    EXPECT_TRUE(is_value(out, of_words({0xFFFFFFFFu, 0xFFFFFFFEu, 8})));
}

TEST(MintModSub, OutputOverTheLargerOperandLosesNoBorrow) {
    expect_difference(of_words({0, 0, 0, 1}), one_word(1), all_ones(5));
    expect_difference(one_word(1), of_words({0, 0, 0, 1}), all_ones(5));
    mint a = of_words({0, 0, 0, 1}), b = one_word(1), p = all_ones(5);
    EXPECT_EQ(0, mint_mod_sub(&a, &b, &p, &a));
    EXPECT_TRUE(is_value(a, all_ones(3)));
}

TEST(MintModSub, ZeroTopWordMakesTheShorterNumberTheLarger) {
    mint a = of_words({5, 0}), b = one_word(7), p = one_word(11), out;
    EXPECT_EQ(0, mint_mod_sub(&a, &b, &p, &out));
    EXPECT_TRUE(is_value(out, Natural(of_words({0xFFFFFFFEu, 0xFFFFFFFFu})) % Natural(11)));
}

TEST(MintModSub, KeptRuleHoldsForHardNumbersReducedAndNot) {
    HardWords draw(202);
    for (const Modulus &modulus : odd_moduli())
        for (int round = 0; round < 15; ++round) {
            mint p = modulus.value.to_mint();
            mint a = draw.below(4) == 0 ? draw.trimmed(MINT_WORDS) : draw.reduced(p);
            mint b = draw.below(3) == 0 ? draw.relative_of(a) : draw.reduced(p);
            SCOPED_TRACE(modulus.name + ", " + draw.where());
            expect_difference(a, b, p);
            expect_difference(b, a, p);
            if (HasFailure()) return;
        }
}

}  // namespace
}  // namespace zokecc_test::modular_test

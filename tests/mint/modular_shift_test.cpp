// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Doubling and multiplication by a power of two modulo p.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/kept_rules.h"
#include "tests/mint/moduli.h"
#include "tests/mint/numbers.h"

namespace zokecc_test::modular_shift_test {
namespace {

void expect_double(const mint &a, const mint &p) {
    mint modulus = p;
    for_each_aliasing(
        a, [&](mint *x, mint *out) { return mint_mod_left_move_1(out, x, &modulus); },
        [&](const AliasRun &run) {
            EXPECT_EQ(1, run.returned) << run.how;
            EXPECT_TRUE(is_value(run.out, kept_double(Natural(a), Natural(p)))) << run.how;
        });
    EXPECT_TRUE(same_record(p, modulus));
}

void expect_shift(const mint &a, const mint &p, int32_t n) {
    mint modulus = p;
    int32_t returned = 0;
    Natural want = kept_shift(Natural(a), Natural(p), n, returned);
    for_each_aliasing(
        a, [&](mint *x, mint *out) { return mint_mod_left_move_n(out, x, &modulus, n); },
        [&](const AliasRun &run) {
            EXPECT_EQ(returned, run.returned) << run.how << ", n " << n;
            EXPECT_TRUE(is_value(run.out, want)) << run.how << ", n " << n;
        });
    EXPECT_TRUE(same_record(p, modulus));
}

TEST(MintModLeftMove1, SmallNumbers) {
    const uint32_t doubled[] = {0, 2, 4, 6, 1, 3, 5};
    mint p = one_word(7);
    for (uint32_t a = 0; a < 7; ++a) {
        mint value = one_word(a), out;
        EXPECT_EQ(1, mint_mod_left_move_1(&out, &value, &p));
        EXPECT_TRUE(is_value(out, Natural(doubled[a]))) << a;
    }
}

TEST(MintModLeftMove1, OfZeroGivesLenZero) {
    expect_double(empty_zero(), one_word(7));
    expect_double(word_zero(), one_word(7));
}

TEST(MintModLeftMove1, HalfOfTheModulusGivesZero) {
    expect_double(of_words({0, 3}), of_words({0, 6}));
    expect_double(of_words({0, 0x80000000u}), of_words({0, 0, 1}));
}

TEST(MintModLeftMove1, DoubleMayBeAWordLongerThanTheModulus) {
    for (uint32_t len = 1; len <= 9; ++len) {
        mint a = all_ones(len);
        a.words[0] -= 1;
        expect_double(a, all_ones(len));
    }
}

TEST(MintModLeftMove1, KeptEqualWordsUnderBorrow) {
    mint a = of_words({1, 5, 0x40000001u}), p = of_words({3, 10, 0x80000001u}), out;
    EXPECT_EQ(1, mint_mod_left_move_1(&out, &a, &p));
    EXPECT_TRUE(is_value(out, of_words({0xFFFFFFFFu, 0xFFFFFFFEu})));
}

TEST(MintModLeftMove1, KeptModulusIsSubtractedInPlaceAndOnce) {
    // Unreduced input: the borrow of 2^96 - 1 is lost above word 1.
    mint a = of_words({0, 0, 0x80000000u}), p = one_word(1), out;
    EXPECT_EQ(1, mint_mod_left_move_1(&out, &a, &p));
    EXPECT_TRUE(is_value(out, of_words({0xFFFFFFFFu, 0xFFFFFFFFu, 0, 1})));
}

TEST(MintModLeftMove1, ZeroModulusOnlyDoubles) { expect_double(of_words({1, 2}), empty_zero()); }

TEST(MintModLeftMove1, HardNumbersForEveryModulus) {
    HardWords draw(211);
    for (const Modulus &modulus : odd_moduli())
        for (int round = 0; round < 20; ++round) {
            mint p = modulus.value.to_mint();
            mint a = draw.below(6) == 0 ? draw.trimmed(18) : draw.reduced(p);
            SCOPED_TRACE(modulus.name + ", " + draw.where());
            expect_double(a, p);
            if (HasFailure()) return;
        }
}

TEST(MintModLeftMoveN, ByZeroOnlyCopies) {
    mint p = one_word(7);
    for (const mint &a : {one_word(3), of_words({9, 9, 9}), of_words({3, 0, 0}), word_zero(), empty_zero()})
        for (int32_t n : {0, -1, -32, INT32_MIN}) {
            mint value = a, out;
            EXPECT_EQ(1, mint_mod_left_move_n(&out, &value, &p, n));
            EXPECT_TRUE(is_value(out, a));
            EXPECT_EQ(1, mint_mod_left_move_n(&value, &value, &p, n));
            EXPECT_TRUE(same_record(a, value));
        }
}

TEST(MintModLeftMoveN, ValueWiderThanTheModulusReturnsZero) {
    mint a = of_words({1, 2}), p = one_word(0xFFFFFFFFu), out = of_words({});
    EXPECT_EQ(0, mint_mod_left_move_n(&out, &a, &p, 1));
    EXPECT_TRUE(is_value(out, a));  // the loop got no further than the copy
    p = one_word(7), a = one_word(8);
    EXPECT_EQ(0, mint_mod_left_move_n(&a, &a, &p, 5));
    EXPECT_TRUE(is_value(a, one_word(8)));
}

TEST(MintModLeftMoveN, ValueThatGrowsWiderReturnsZeroWithTheValueReached) {
    // 7 is not below 5 but no wider: 14 - 5 = 9, which is wider.
    mint a = one_word(7), p = one_word(5), out;
    EXPECT_EQ(1, mint_mod_left_move_n(&out, &a, &p, 1));
    EXPECT_TRUE(is_value(out, one_word(9)));
    EXPECT_EQ(0, mint_mod_left_move_n(&out, &a, &p, 2));
    EXPECT_TRUE(is_value(out, one_word(9)));
    EXPECT_EQ(0, mint_mod_left_move_n(&out, &a, &p, 1000));
    EXPECT_TRUE(is_value(out, one_word(9)));
}

TEST(MintModLeftMoveN, RoomAboveBelowAndEqualToTheCount) {
    mint p = of_words({0xFFFFFFFBu, 0xFFFFFFFFu});
    for (int32_t n : {1, 2, 30, 31, 32, 33, 34, 63, 64, 65, 127, 128, 300}) {
        expect_shift(one_word(1), p, n);
        expect_shift(one_word(0x80000001u), p, n);
        expect_shift(of_words({0xFFFFFFFAu, 0xFFFFFFFFu}), p, n);
    }
}

TEST(MintModLeftMoveN, OfZeroStaysZero) {
    for (int32_t n : {1, 32, 100}) {
        expect_shift(empty_zero(), of_words({5, 5}), n);
        expect_shift(word_zero(), of_words({5, 5}), n);
    }
}

TEST(MintModLeftMoveN, KeptEqualWordsUnderBorrow) {
    mint a = of_words({1, 5, 0x40000001u}), p = of_words({3, 10, 0x80000001u}), out;
    EXPECT_EQ(1, mint_mod_left_move_n(&out, &a, &p, 1));
    EXPECT_TRUE(is_value(out, of_words({0xFFFFFFFFu, 0xFFFFFFFEu})));
}

TEST(MintModLeftMoveN, IsMultiplicationByAPowerOfTwoForCurvePrimes) {
    HardWords draw(212);
    int same = 0, all = 0;
    for (const Modulus &modulus : curve_moduli())
        for (int32_t n : {1, 5, 64, 200}) {
            mint p = modulus.value.to_mint(), a = draw.reduced(p), out;
            ASSERT_EQ(1, mint_mod_left_move_n(&out, &a, &p, n));
            Natural product =
                mod_mul(Natural(a), Natural::power_of_two(static_cast<unsigned>(n)), modulus.value);
            ++all;
            if (Natural(out) == product) ++same;
        }
    EXPECT_GT(same, all * 3 / 4);  // the others met equal words under a borrow
}

TEST(MintModLeftMoveN, HardNumbersForEveryModulus) {
    HardWords draw(213);
    for (const Modulus &modulus : odd_moduli())
        for (int round = 0; round < 8; ++round) {
            mint p = modulus.value.to_mint();
            mint a = draw.below(4) == 0 ? draw.trimmed(p.len) : draw.reduced(p);
            SCOPED_TRACE(modulus.name + ", " + draw.where());
            expect_shift(a, p, static_cast<int32_t>(draw.below(8) == 0 ? draw.below(400) : draw.below(40)));
            if (HasFailure()) return;
        }
}

}  // namespace
}  // namespace zokecc_test::modular_shift_test

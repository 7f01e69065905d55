// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Multiplication modulo p, and the behaviour of all three operations with a zero modulus.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/moduli.h"
#include "tests/mint/numbers.h"
#include "tests/support/guarded_buffer.h"

namespace zokecc_test::modular_mul_test {
namespace {

void expect_product(const mint &a, const mint &b, const mint &p) {
    mint modulus = p;
    for_each_aliasing(
        a, b, Operands::kKept, [&](mint *x, mint *y, mint *out) { return mint_mod_mul(x, y, &modulus, out); },
        [&](const AliasRun &run) {
            EXPECT_EQ(0, run.returned) << run.how;
            EXPECT_TRUE(is_value(run.out, mod_mul(Natural(run.a), Natural(run.b), Natural(p)))) << run.how;
        });
    EXPECT_TRUE(same_record(p, modulus));
}

TEST(MintModMul, ZeroInEitherFormGivesClearedZero) {
    mint p = of_words({5, 5});
    for (const mint &zero : {empty_zero(), word_zero()})
        for (const mint &other : {one_word(3), of_words({1, 2}), empty_zero(), word_zero()})
            for (bool swap : {false, true}) {
                mint a = swap ? other : zero, b = swap ? zero : other, out = of_words({9, 9});
                EXPECT_EQ(0, mint_mod_mul(&a, &b, &p, &out));
                EXPECT_TRUE(is_cleared_zero(out));
                EXPECT_EQ(0, mint_mod_mul(&a, &b, &p, &a));
                EXPECT_TRUE(is_cleared_zero(a));
            }
}

TEST(MintModMul, ZeroInManyWordsGivesLenZero) {
    expect_product(of_words({0, 0}), of_words({1, 2}), of_words({5, 5}));
}

TEST(MintModMul, ProductsOfNineWords) {
    for (uint32_t len = 1; len <= 9; ++len) {
        expect_product(all_ones(len), all_ones(len), all_ones(len));
        mint p = all_ones(len), a = p;
        p.words[0] -= 2;
        a.words[0] -= 3;
        expect_product(a, a, p);
        expect_product(a, one_word(2), p);
    }
}

TEST(MintModMul, OperandsOfNineteenWordsAreReducedExactly) {
    HardWords draw(203);
    mint p = of_hex("fffffffeffffffffffffffffffffffffffffffff00000000ffffffffffffffff");
    for (uint32_t len = 10; len <= MINT_WORDS; ++len) {
        SCOPED_TRACE(draw.where());
        expect_product(all_ones(len), all_ones(len), p);
        expect_product(draw.untrimmed(len), draw.untrimmed(MINT_WORDS), p);
        expect_product(all_ones(len), all_ones(MINT_WORDS), one_word(0xFFFFFFFBu));
    }
    expect_product(all_ones(19), all_ones(19), all_ones(19));
    mint wide = all_ones(19);
    wide.words[0] = 5;
    expect_product(all_ones(19), all_ones(18), wide);
}

TEST(MintModMul, HardNumbersForEveryModulus) {
    HardWords draw(204);
    for (const Modulus &modulus : odd_moduli())
        for (int round = 0; round < 3; ++round) {
            mint p = modulus.value.to_mint(), a = draw.reduced(p), b = draw.reduced(p);
            SCOPED_TRACE(modulus.name + ", " + draw.where());
            expect_product(a, b, p);
            if (HasFailure()) return;
        }
}

TEST(MintModMul, EvenModuliAreNoException) {
    HardWords draw(205);
    for (const Modulus &modulus : even_moduli()) {
        mint p = modulus.value.to_mint();
        SCOPED_TRACE(modulus.name + ", " + draw.where());
        expect_product(draw.reduced(p), draw.reduced(p), p);
    }
}

TEST(MintModAdd, ZeroModulusLeavesTheOutputOfAllThreeAsItWas) {
    mint a = of_words({3, 4}), b = of_words({1, 2});
    for (const mint &zero : {empty_zero(), word_zero()}) {
        GuardedRecord<mint> out;
        EXPECT_EQ(0, mint_mod_add(&a, &b, &zero, out.get()));
        EXPECT_EQ(0, mint_mod_sub(&a, &b, &zero, out.get()));
        EXPECT_EQ(0, mint_mod_mul(&a, &b, &zero, out.get()));
        EXPECT_TRUE(out.unchanged());
    }
}

TEST(MintModMul, ZeroOperandIsSeenBeforeTheZeroModulus) {
    mint a = of_words({3, 4}), zero = empty_zero(), out = of_words({9});
    EXPECT_EQ(0, mint_mod_mul(&a, &zero, &zero, &out));
    EXPECT_TRUE(is_cleared_zero(out));
    out = of_words({9});
    EXPECT_EQ(0, mint_mod_sub(&a, &a, &zero, &out));
    EXPECT_TRUE(is_cleared_zero(out));
}

TEST(MintModSub, NegativeDifferenceModuloZeroIsZero) {
    mint a = one_word(1), b = one_word(2), zero = empty_zero(), out = of_words({9});
    EXPECT_EQ(0, mint_mod_sub(&a, &b, &zero, &out));
    EXPECT_TRUE(is_cleared_zero(out));  // 0 - 0, as the reduced difference stays zero
}

}  // namespace
}  // namespace zokecc_test::modular_mul_test

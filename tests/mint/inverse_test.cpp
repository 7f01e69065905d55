// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Inverses that agree with the textbook, and degenerate inputs.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/kept_rules.h"
#include "tests/mint/moduli.h"
#include "tests/mint/numbers.h"
#include "tests/support/guarded_buffer.h"

namespace zokecc_test::inverse_test {
namespace {

mint inverse(const mint &a, const mint &m) {
    GuardedRecord<mint> out;
    mint value = a, modulus = m;
    EXPECT_EQ(0, mint_EEA_algo(&value, &modulus, out.get()));
    EXPECT_TRUE(same_record(a, value) && same_record(m, modulus));
    EXPECT_TRUE(out.guards_intact());
    return *out.get();
}
uint32_t inverse(uint32_t a, uint32_t m) {
    mint out = inverse(one_word(a), one_word(m));
    EXPECT_LE(out.len, 1u);
    return out.len == 0 ? 0 : out.words[0];
}

TEST(MintEeaAlgo, ThreeModuloSevenIsFive) { EXPECT_EQ(5u, inverse(3, 7)); }

TEST(MintEeaAlgo, ThreeModuloEightIsThree) { EXPECT_EQ(3u, inverse(3, 8)); }

TEST(MintEeaAlgo, EveryInverseOfEverySmallModulus) {
    for (uint32_t m = 2; m <= 80; ++m)
        for (uint32_t a = 1; a < 2 * m; ++a) {
            if (greatest_common_divisor(Natural(a), Natural(m)) != Natural(1)) continue;
            uint32_t x = inverse(a, m);
            ASSERT_EQ(1u, a * x % m) << a << " modulo " << m;
            ASSERT_LE(x, m) << a << " modulo " << m;
        }
}

TEST(MintEeaAlgo, ZeroModuloOddGivesTheModulus) {
    for (const mint &m : {one_word(7), of_words({9, 9, 9}), all_ones(8)})
        for (const mint &zero : {empty_zero(), word_zero(), of_words({0, 0})})
            EXPECT_TRUE(is_value(inverse(zero, m), m));
}

TEST(MintEeaAlgo, ZeroModuloEvenGivesTheModulus) {
    for (const mint &m : {one_word(8), one_word(2), of_words({0, 0, 1})})
        for (const mint &zero : {empty_zero(), word_zero(), of_words({0, 0})})
            EXPECT_TRUE(is_value(inverse(zero, m), m));
}

TEST(MintEeaAlgo, MultiplesOfTheModulusAreZero) {
    for (uint32_t m : {7u, 9u, 8u, 10u})
        for (uint32_t times : {1u, 2u, 5u}) EXPECT_EQ(m, inverse(m * times, m));
    mint wide = of_words({9, 9, 9});
    EXPECT_TRUE(is_value(inverse((Natural(wide) << 200).to_mint(), wide), wide));
}

TEST(MintEeaAlgo, ModulusOneGivesOne) {
    for (const mint &a : {empty_zero(), word_zero(), one_word(1), one_word(5), all_ones(19)})
        EXPECT_TRUE(is_value(inverse(a, one_word(1)), one_word(1)));
}

TEST(MintEeaAlgo, ZeroModulusGivesOneForANonZeroOperand) {
    for (const mint &zero : {empty_zero(), word_zero(), of_words({0, 0})})
        for (const mint &a : {one_word(1), one_word(6), of_words({1, 2, 3})})
            EXPECT_TRUE(is_value(inverse(a, zero), one_word(1)));
}

TEST(MintEeaAlgo, ZeroModulusGivesZeroForZero) {
    EXPECT_EQ(0u, inverse(empty_zero(), empty_zero()).len);
    EXPECT_EQ(0u, inverse(word_zero(), empty_zero()).len);
    EXPECT_EQ(0u, inverse(empty_zero(), word_zero()).len);
}

TEST(MintEeaAlgo, OneIsItsOwnInverse) {
    for (uint32_t m : {2u, 3u, 4u, 7u, 8u, 0xFFFFFFFFu, 0xFFFFFFFEu}) EXPECT_EQ(1u, inverse(1, m));
    for (const Modulus &modulus : curve_moduli())
        EXPECT_TRUE(is_value(inverse(one_word(1), modulus.value.to_mint()), one_word(1))) << modulus.name;
}

TEST(MintEeaAlgo, UnreducedOperandIsReducedFirst) {
    HardWords draw(231);
    for (const Modulus &modulus : odd_moduli()) {
        mint m = modulus.value.to_mint(), a = draw.trimmed(MINT_WORDS);
        SCOPED_TRACE(modulus.name + ", " + draw.where());
        EXPECT_TRUE(is_value(inverse(a, m), inverse((Natural(a) % modulus.value).to_mint(), m)));
    }
}

TEST(MintEeaAlgo, ZeroTopWordsOfOperandAndModulusDoNotMatter) {
    EXPECT_TRUE(is_value(inverse(of_words({3, 0, 0}), one_word(7)), one_word(5)));
    EXPECT_TRUE(is_value(inverse(one_word(3), of_words({7, 0, 0})), one_word(5)));
    EXPECT_TRUE(is_value(inverse(of_words({3, 0}), of_words({8, 0})), one_word(3)));
    EXPECT_TRUE(is_value(inverse(of_words({10, 0}), of_words({7, 0, 0})), one_word(5)));
    EXPECT_TRUE(is_value(inverse(of_words({0, 0}), of_words({7, 0})), one_word(7)));
}

TEST(MintEeaAlgo, OutputMayBeTheOperandOrTheModulus) {
    HardWords draw(232);
    std::vector<Modulus> moduli = odd_moduli();
    for (const Modulus &even : even_moduli()) moduli.push_back(even);
    for (const Modulus &modulus : moduli) {
        mint m = modulus.value.to_mint();
        SCOPED_TRACE(modulus.name + ", " + draw.where());
        for_each_aliasing(draw.reduced(m), m, Operands::kKept, mint_EEA_algo, [](const AliasRun &run) {
            EXPECT_EQ(0, run.returned) << run.how;
            EXPECT_TRUE(is_value(run.out, kept_inverse(Natural(run.a), Natural(run.b)))) << run.how;
        });
    }
}

TEST(MintEeaAlgo, UniformOperandsInvertExactlyModuloEveryCurvePrime) {
    HardWords draw(233);
    for (const Modulus &modulus : curve_moduli())
        for (int round = 0; round < 8; ++round) {
            mint a = draw.untrimmed(modulus.value.to_mint().len);
            for (uint32_t i = 0; i < a.len; ++i) a.words[i] = draw.uniform();
            mint m = modulus.value.to_mint();
            Natural x(inverse(a, m));
            ASSERT_EQ(Natural(1), mod_mul(Natural(a), x, modulus.value))
                << modulus.name << ", " << draw.where();
            ASSERT_LT(x, modulus.value);
        }
}

TEST(MintEeaAlgo, CommonFactorLeavesWhatTheIterationLeaves) {
    for (uint32_t m = 4; m <= 120; ++m)
        for (uint32_t a = 2; a < m; ++a) {
            if (greatest_common_divisor(Natural(a), Natural(m)) == Natural(1)) continue;
            ASSERT_TRUE(is_value(inverse(one_word(a), one_word(m)), kept_inverse(Natural(a), Natural(m))))
                << a << " modulo " << m;
        }
}

}  // namespace
}  // namespace zokecc_test::inverse_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Powers modulo p.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/kept_rules.h"
#include "tests/mint/moduli.h"
#include "tests/mint/numbers.h"

namespace zokecc_test::power_test {
namespace {

const char kP192[] = "fffffffffffffffffffffffffffffffeffffffffffffffff";

mint power(const mint &g, const mint &e, const mint &p) {
    mint out = of_words({});
    EXPECT_EQ(0, mint_exp(&g, &e, &p, &out));
    return out;
}

void expect_power(const mint &g, const mint &e, const mint &p) {
    mint modulus = p;
    for_each_aliasing(
        g, e, Operands::kKept, [&](mint *x, mint *y, mint *out) { return mint_exp(x, y, &modulus, out); },
        [&](const AliasRun &run) {
            EXPECT_EQ(0, run.returned) << run.how;
            EXPECT_TRUE(is_value(run.out, kept_power(Natural(run.a), Natural(run.b), Natural(p)))) << run.how;
        });
    EXPECT_TRUE(same_record(p, modulus));
}

TEST(MintExp, EveryPowerModuloSmallPrimes) {
    for (uint32_t p : {3u, 5u, 7u, 11u, 13u})
        for (uint32_t g = 1; g < p; ++g)
            for (uint32_t e = 0; e < 2 * p; ++e)
                EXPECT_TRUE(is_value(power(one_word(g), one_word(e), one_word(p)),
                                     kept_power(Natural(g), Natural(e), Natural(p))))
                    << g << "^" << e << " mod " << p;
}

TEST(MintExp, ModulusLessOneGivesOne) {
    mint p = of_hex(kP192);
    EXPECT_TRUE(is_value(power(one_word(5), (Natural(p) - Natural(1)).to_mint(), p), one_word(1)));
}

TEST(MintExp, EveryFormOfZeroExponentGivesOne) {
    mint p = of_hex(kP192);
    for (const mint &zero : {empty_zero(), word_zero(), of_words({0, 0, 0})})
        for (const mint &g : {one_word(5), empty_zero(), word_zero(), all_ones(19)})
            EXPECT_TRUE(is_value(power(g, zero, p), one_word(1)));
}

TEST(MintExp, KeptBaseNotReduced) {
    mint p = one_word(7), wide = of_words({9, 9, 9});
    EXPECT_TRUE(is_value(power(one_word(9), one_word(1), p), one_word(9)));
    EXPECT_TRUE(is_value(power(wide, one_word(1), p), wide));
    EXPECT_TRUE(is_value(power(p, one_word(1), p), p));
    // 7 = 1 modulo 6, so this is the base itself, too.
    EXPECT_TRUE(is_value(power(one_word(9), one_word(7), p), one_word(9)));
}

TEST(MintExp, UnreducedBaseIsReducedByTheFirstProduct) {
    expect_power(one_word(9), one_word(2), one_word(7));
    expect_power(all_ones(19), one_word(2), of_hex(kP192));
    expect_power(all_ones(19), one_word(3), of_hex(kP192));
    expect_power(of_hex(kP192), one_word(2), of_hex(kP192));
}

TEST(MintExp, KeptExponentReducedModuloPMinusOne) {
    // Modulo the composite 15: 2^15 is 8, but 15 mod 14 is 1.
    EXPECT_TRUE(is_value(power(one_word(2), one_word(15), one_word(15)), one_word(2)));
    // Modulo the prime 7 with a base divisible by 7: 7^6 is 0, but 6 mod 6 is 0.
    EXPECT_TRUE(is_value(power(empty_zero(), one_word(6), one_word(7)), one_word(1)));
    // Modulo 2 every exponent vanishes.
    EXPECT_TRUE(is_value(power(empty_zero(), one_word(5), one_word(2)), one_word(1)));
    EXPECT_TRUE(is_value(power(one_word(1), one_word(5), one_word(2)), one_word(1)));
}

TEST(MintExp, ExponentMayBeWiderThanTheModulus) {
    expect_power(one_word(3), all_ones(19), of_words({0xFFFFFFFBu}));
    expect_power(one_word(3), of_words({1, 2, 3, 4}), one_word(101));
}

TEST(MintExp, ExponentWithZeroTopWordsIsNormalised) {
    mint p = of_hex(kP192);
    EXPECT_TRUE(is_value(power(one_word(3), of_words({5, 0}), p), one_word(243)));
    EXPECT_TRUE(is_value(power(one_word(3), of_words({5, 0, 0, 0}), p), one_word(243)));
}

TEST(MintExp, ZeroBaseStaysZero) {
    mint p = of_hex(kP192);
    EXPECT_EQ(0u, power(empty_zero(), one_word(2), p).len);
    EXPECT_EQ(0u, power(word_zero(), one_word(5), p).len);
    EXPECT_TRUE(is_value(power(empty_zero(), one_word(1), p), empty_zero()));
}

TEST(MintExp, ModuliOneAndZeroGiveOne) {
    for (const mint &p : {empty_zero(), word_zero(), one_word(1)})
        for (uint32_t e : {0u, 1u, 5u})
            EXPECT_TRUE(is_value(power(one_word(3), one_word(e), p), one_word(1)));
}

TEST(MintExp, OutputMayBeEitherOperand) {
    expect_power(one_word(3), one_word(1000), of_words({0xFFFFFFFBu}));
    expect_power(of_words({3, 4}), of_words({77, 5}), of_words({0x11, 0x22, 0x33}));
    expect_power(one_word(5), empty_zero(), one_word(7));
}

TEST(MintExp, FermatHoldsForEveryCurvePrime) {
    for (const Modulus &modulus : curve_moduli()) {
        mint p = modulus.value.to_mint(), two = one_word(2);
        mint half = (modulus.value >> 1).to_mint(), root = power(two, half, p);
        bool plus = same_value(root, one_word(1)),
             minus = same_value(root, (modulus.value - Natural(1)).to_mint());
        EXPECT_TRUE(plus || minus) << modulus.name;
    }
}

TEST(MintExp, HardNumbersMatchTheOracle) {
    HardWords draw(221);
    for (const Modulus &modulus : odd_moduli()) {
        mint p = modulus.value.to_mint();
        mint g = draw.below(4) == 0 ? draw.trimmed(MINT_WORDS) : draw.reduced(p);
        mint e = draw.trimmed(draw.below(8) == 0 ? p.len : 1);
        SCOPED_TRACE(modulus.name + ", " + draw.where());
        EXPECT_TRUE(is_value(power(g, e, p), kept_power(Natural(g), Natural(e), modulus.value)));
    }
}

}  // namespace
}  // namespace zokecc_test::power_test

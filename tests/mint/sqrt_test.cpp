// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Square roots modulo primes of the first two kinds, and refusals.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/kept_rules.h"
#include "tests/mint/moduli.h"
#include "tests/mint/numbers.h"
#include "tests/support/fake_entropy.h"
#include "tests/support/guarded_buffer.h"

namespace zokecc_test::sqrt_test {
namespace {

// One call between guards; `out` is untouched unless a root was found.
struct Root {
    int32_t returned;
    mint value;
};

Root root_of(const mint &a, const mint &p) {
    GuardedRecord<mint> out;
    mint value = a, modulus = p;
    Root root{mint_sqrt(&value, &modulus, out.get()), {}};
    root.value = *out.get();
    EXPECT_TRUE(same_record(a, value) && same_record(p, modulus));
    EXPECT_TRUE(out.guards_intact());
    return root;
}
Root root_of(uint32_t a, uint32_t p) { return root_of(a == 0 ? empty_zero() : one_word(a), one_word(p)); }

uint32_t power_mod(uint32_t a, uint32_t e, uint32_t p) {
    uint32_t out = 1 % p;
    for (; e > 0; --e) out = out * a % p;
    return out;
}

bool is_square(uint32_t a, uint32_t p) {
    for (uint32_t y = 0; y < p; ++y)
        if (y * y % p == a) return true;
    return false;
}

TEST(MintSqrt, EveryNumberModuloPrimesThreeModFour) {
    for (uint32_t p : {3u, 7u, 11u, 19u, 23u, 31u, 43u, 47u, 59u, 67u, 71u, 79u, 83u, 103u, 107u, 127u})
        for (uint32_t a = 1; a < p; ++a) {
            Root root = root_of(a, p);
            ASSERT_EQ(is_square(a, p) ? 1 : 0, root.returned) << a << " modulo " << p;
            if (root.returned == 1) {
                // The one of the two roots that this power gives.
                ASSERT_TRUE(is_value(root.value, one_word(power_mod(a, (p + 1) / 4, p))))
                    << a << " modulo " << p;
            }
        }
}

TEST(MintSqrt, EveryNumberModuloPrimesFiveModEight) {
    for (uint32_t p : {5u, 13u, 29u, 37u, 53u, 61u, 101u, 109u})
        for (uint32_t a = 1; a < p; ++a) {
            Root root = root_of(a, p);
            ASSERT_EQ(is_square(a, p) ? 1 : 0, root.returned) << a << " modulo " << p;
            if (root.returned == 0) continue;
            uint32_t u = (p - 5) / 8;
            uint32_t y = power_mod(a, 2 * u + 1, p) == 1 ? power_mod(a, u + 1, p)
                                                         : 2 * a % p * power_mod(4 * a % p, u, p) % p;
            ASSERT_EQ(a, y * y % p);
            ASSERT_TRUE(is_value(root.value, one_word(y))) << a << " modulo " << p;
        }
}

TEST(MintSqrt, NonSquareModuloAPrimeThreeModFourReturnsZero) {
    mint p = of_hex("ffffffff00000001000000000000000000000000ffffffffffffffffffffffff");
    EXPECT_EQ(0, root_of((Natural(p) - Natural(1)).to_mint(), p).returned);  // -1
    EXPECT_EQ(1, root_of(one_word(4), p).returned);
}

TEST(MintSqrt, ZeroModuloAPrimeThreeModFourDependsOnItsForm) {
    for (uint32_t p : {3u, 7u, 11u, 0x7FFFFFFFu}) {
        Root root = root_of(empty_zero(), one_word(p));
        EXPECT_EQ(1, root.returned);
        EXPECT_EQ(0u, root.value.len);
        EXPECT_EQ(0, root_of(word_zero(), one_word(p)).returned);
    }
}

TEST(MintSqrt, KeptZeroHasNoRootForFiveModEight) {
    for (uint32_t p : {5u, 13u, 29u, 37u})
        for (const mint &zero : {empty_zero(), word_zero()})
            EXPECT_EQ(0, root_of(zero, one_word(p)).returned) << p;
}

TEST(MintSqrt, UnreducedOperandHasNoRootModuloThreeModFour) {
    EXPECT_EQ(0, root_of(9, 7).returned);  // 9 = 2, a square, but the square found is 2 and not 9
    EXPECT_EQ(0, root_of(7, 7).returned);
    EXPECT_EQ(0, root_of(700, 7).returned);
}

TEST(MintSqrt, ModuliThatAreEvenOrZeroReturnZero) {
    for (uint32_t p : {0u, 2u, 4u, 6u, 8u, 10u, 12u, 14u, 16u, 1u << 31})
        for (uint32_t a : {0u, 1u, 4u}) EXPECT_EQ(0, root_of(a, p).returned) << a << " modulo " << p;
    EXPECT_EQ(0, root_of(one_word(4), empty_zero()).returned);
    EXPECT_EQ(0, root_of(one_word(4), of_words({0, 1})).returned);
}

TEST(MintSqrt, NoRootLeavesTheOutputAlone) {
    GuardedRecord<mint> out;
    for (uint32_t p : {7u, 13u, 8u}) {
        mint a = one_word(p == 13 ? 2 : 3), modulus = one_word(p);
        EXPECT_EQ(0, mint_sqrt(&a, &modulus, out.get())) << p;
    }
    EXPECT_TRUE(out.unchanged());
}

TEST(MintSqrt, OutputMayBeTheOperand) {
    for (uint32_t p : {7u, 13u, 29u, 17u, 41u, 257u})
        for (uint32_t y = 1; y < p; y += 3) {
            mint modulus = one_word(p), a = one_word(y * y % p), apart;
            ASSERT_EQ(1, mint_sqrt(&a, &modulus, &apart));
            ASSERT_EQ(1, mint_sqrt(&a, &modulus, &a));
            ASSERT_TRUE(is_value(a, apart)) << y << " squared modulo " << p;
        }
}

TEST(MintSqrt, SquaresModuloCurvePrimesHaveTheirRoot) {
    HardWords draw(251);
    for (const Modulus &modulus : curve_moduli()) {
        if (modulus.name == "secp224r1 p") continue;  // 1 modulo 8, has its own test
        mint p = modulus.value.to_mint(), y = draw.reduced(p);
        if (y.len == 0) y = one_word(3);
        mint square = mod_mul(Natural(y), Natural(y), modulus.value).to_mint();
        Root root = root_of(square, p);
        ASSERT_EQ(1, root.returned) << modulus.name << ", " << draw.where();
        EXPECT_EQ(Natural(square), mod_mul(Natural(root.value), Natural(root.value), modulus.value))
            << modulus.name;
    }
}

TEST(MintSqrt, ModuliOfTheFirstTwoKindsDrawNothing) {
    FakeEntropy entropy;
    for (uint32_t p : {7u, 11u, 13u, 29u, 8u})
        for (uint32_t a : {0u, 1u, 2u, 3u, 4u}) root_of(a, p);
    EXPECT_EQ(0u, entropy.number_calls);
    EXPECT_EQ(0u, entropy.calls());
}

}  // namespace
}  // namespace zokecc_test::sqrt_test

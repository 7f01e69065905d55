// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Inverses affected by the kept subtraction. Small numbers, powers of two and their
// neighbours are wrong modulo primes with words of all ones or all zeros; deployed
// devices compute them this way. Each of these tests fails if the inverse is corrected.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/kept_rules.h"
#include "tests/mint/moduli.h"
#include "tests/mint/numbers.h"

namespace zokecc_test::inverse_kept_test {
namespace {

const char kSm2Order[] = "fffffffeffffffffffffffffffffffff7203df6b21c6052b53bbf40939d54123";
const char kP256[] = "ffffffff00000001000000000000000000000000ffffffffffffffffffffffff";
const char kP224[] = "ffffffffffffffffffffffffffffffff000000000000000000000001";

mint inverse(const mint &a, const mint &m) {
    mint out;
    EXPECT_EQ(0, mint_EEA_algo(&a, &m, &out));
    return out;
}
std::string inverse_hex(uint32_t a, const std::string &m) {
    return mint_to_hex(inverse(one_word(a), of_hex(m)));
}

// Checks the kept value, and that it is not the true inverse.
void expect_kept(const std::string &kept, uint32_t a, const std::string &m) {
    EXPECT_EQ(kept, inverse_hex(a, m));
    EXPECT_NE(Natural(1), mod_mul(Natural(a), Natural::from_hex(kept), Natural::from_hex(m)));
}

TEST(MintEeaAlgo, KeptSmallInverseOfTwoModuloTheSm2Order) {
    expect_kept("7fffffff7ffffffffffffffefffffffeb901efb590e30295a9ddfa049ceaa092", 2, kSm2Order);
}

TEST(MintEeaAlgo, KeptSmallInverseOfThreeModuloTheSm2Order) {
    expect_kept("aaaaaaa9fffffffefffffffefffffffea157ea476bd958c78d27f806268e2b6d", 3, kSm2Order);
}

TEST(MintEeaAlgo, KeptSmallInverseOfElevenModuloP256NeedsSubtractionInPlace) {
    expect_kept("3ba2e8b9f2e8ba2ec745d17452e8ba2e95d1745d48ba2e8ba2e8ba2e8ba2e8ba", 11, kP256);
}

TEST(MintEeaAlgo, KeptSmallInverseOfThreeModuloP224NeedsSubtractionInPlace) {
    expect_kept("aaaaaaaaaaaaaaaaaaaaaaab55555554aaaaaaab", 3, kP224);
}

TEST(MintEeaAlgo, KeptSmallInverseOfTwoModuloTheNistOrders) {
    expect_kept("7ffffffffffffffefffffffeccef7c1b0a35e4d8da691419", 2,
                "ffffffffffffffffffffffff99def836146bc9b1b4d22831");
    expect_kept("7ffffffffffffffefffffffeffff8b51705c781f09ee94a2ae2e151f", 2,
                "ffffffffffffffffffffffffffff16a2e0b8f03e13dd29455c5c2a3d");
    expect_kept("7fffffff800000007ffffffffffffffede737d56d38bcf4279dce5617e3192a9", 2,
                "ffffffff00000000ffffffffffffffffbce6faada7179e84f3b9cac2fc632551");
}

TEST(MintEeaAlgo, KeptEvenModulusDividesWithTheSameSubtraction) {
    // The first remainder, 2^65 - (2^64 + 1), is computed as fffffffe ffffffff. The true inverse
    // of 2^64 + 1 modulo 2^65 is itself.
    mint a = of_words({1, 0, 1}), m = of_words({0, 0, 2});
    EXPECT_TRUE(is_value(inverse(a, m), of_hex("cccccccc00000001")));
}

// Operands for which borrows meet equal words.
std::vector<Natural> structured_operands(const Natural &m, HardWords &draw) {
    std::vector<Natural> out;
    for (uint32_t small : {1u, 2u, 3u, 4u, 5u, 6u, 7u, 8u, 11u, 12u, 16u, 33u, 64u, 0xFFFFFFFFu})
        out.emplace_back(small);
    for (unsigned exponent : {31u, 32u, 64u, 95u, 128u, 159u}) out.push_back(Natural::power_of_two(exponent));
    out.push_back(m - Natural(1));
    out.push_back((m + Natural(1)) >> 1);
    if (m >= Natural(3)) out.push_back(m - Natural(2));
    out.emplace_back(all_ones(2));
    out.emplace_back(all_ones(4));
    out.push_back(m);
    out.push_back(m + Natural(5));
    out.emplace_back();
    for (int i = 0; i < 3; ++i) out.emplace_back(draw.reduced(m.to_mint()));
    return out;
}

// Compares with the model's iteration; returns how many results are not true inverses.
int compare_with_iteration(const std::vector<Modulus> &moduli, uint32_t seed) {
    HardWords draw(seed);
    int wrong = 0;
    for (const Modulus &modulus : moduli)
        for (const Natural &a : structured_operands(modulus.value, draw)) {
            mint got = inverse(draw.with_rubbish(a), draw.with_rubbish(modulus.value));
            EXPECT_TRUE(is_value(got, kept_inverse(a, modulus.value)))
                << a.to_hex() << " modulo " << modulus.name << ", " << draw.where();
            Natural one = Natural(1) % modulus.value;
            if (mod_mul(a, Natural(got), modulus.value) != one) ++wrong;
        }
    return wrong;
}

TEST(MintEeaAlgo, KeptIterationForOddModuliAndStructuredOperands) {
    EXPECT_GT(compare_with_iteration(odd_moduli(), 241), 200);
}

TEST(MintEeaAlgo, KeptIterationForEvenModuliAndStructuredOperands) {
    EXPECT_GT(compare_with_iteration(even_moduli(), 242), 200);
}

TEST(MintEeaAlgo, KeptSmallInversesUpToSixtyFourModuloSpecialPrimes) {
    for (const char *text : {kSm2Order, kP256, kP224}) {
        Natural m = Natural::from_hex(text);
        int wrong = 0;
        for (uint32_t a = 1; a <= 64; ++a) {
            Natural got(inverse(one_word(a), m.to_mint()));
            ASSERT_EQ(kept_inverse(Natural(a), m), got) << a << " modulo " << text;
            if (mod_mul(Natural(a), got, m) != Natural(1)) ++wrong;
        }
        EXPECT_GT(wrong, 20) << text;
    }
}

TEST(MintEeaAlgo, KeptIterationForHardNumbersAndHardModuli) {
    HardWords draw(243);
    for (int round = 0; round < 250; ++round) {
        mint m = draw.trimmed(9), a = draw.below(2) == 0 ? draw.trimmed(10) : draw.relative_of(m);
        if (draw.below(4) != 0 && m.len > 0) m.words[0] |= 1;
        ASSERT_TRUE(is_value(inverse(a, m), kept_inverse(Natural(a), Natural(m))))
            << mint_to_hex(a) << " modulo " << mint_to_hex(m) << ", " << draw.where();
    }
}

}  // namespace
}  // namespace zokecc_test::inverse_kept_test

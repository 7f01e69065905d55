// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Square roots modulo p = 1 (mod 8): the search for a non-residue, the table of exponents,
// and unverified results.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include <vector>

#include "tests/mint/kept_rules.h"
#include "tests/mint/moduli.h"
#include "tests/mint/numbers.h"
#include "tests/support/fake_entropy.h"
#include "tests/support/guarded_buffer.h"

namespace zokecc_test::sqrt_one_mod_eight_test {
namespace {

// Modulo this prime 2, 3, ..., 21 are all squares; it is 1 modulo 16.
constexpr uint32_t kStubbornPrime = 53881;
// Not primes, whose smallest non-residue is always prime: modulo these the first numbers whose
// power (p - 1) / 2 is -1 are 21, the last fixed candidate, and 22.
constexpr uint32_t kTwentyOneQualifies = 83569;
constexpr uint32_t kTwentyTwoQualifies = 157753;
// Modulo 9 no power of a unit is -1, so no candidate ever qualifies.
constexpr uint32_t kHopeless = 9;

uint32_t times(uint32_t a, uint32_t b, uint32_t p) { return static_cast<uint32_t>(uint64_t{a} * b % p); }
uint32_t power_mod(uint32_t a, uint32_t e, uint32_t p) {
    uint32_t out = 1;
    for (uint32_t square = a % p; e > 0; e >>= 1, square = times(square, square, p))
        if ((e & 1) != 0) out = times(out, square, p);
    return out;
}
bool is_square(uint32_t a, uint32_t p) { return power_mod(a, (p - 1) / 2, p) == 1; }

uint32_t first_non_residue(uint32_t p) {
    uint32_t g = 2;
    while (power_mod(g, (p - 1) / 2, p) != p - 1) ++g;
    return g;
}

// The deployed computation, step by step, for a prime below 2^32 and any a.
uint32_t kept_root(uint32_t a, uint32_t p, uint32_t g) {
    std::vector<uint32_t> table;
    auto halve_all = [&](uint32_t c) {
        for (uint32_t &exponent : table) {
            exponent /= 2;
            c = times(c, power_mod(g, exponent, p), p);
        }
        return c;
    };
    uint32_t e = (p - 1) / 4, c = power_mod(a, e, p);
    for (;;) {
        if (c == p - 1) table.push_back((p - 1) / 2);
        if (e % 2 == 1) break;
        e /= 2;
        c = halve_all(power_mod(a, e, p));
    }
    return halve_all(power_mod(a, (e + 1) / 2, p));
}

int32_t root_of(uint32_t a, uint32_t p, mint &out) {
    mint value = a == 0 ? empty_zero() : one_word(a), modulus = one_word(p);
    return mint_sqrt(&value, &modulus, &out);
}

TEST(MintSqrt, EveryNumberModuloPrimesOneModEight) {
    for (uint32_t p : {17u, 41u, 73u, 89u, 97u, 113u, 193u, 257u}) {
        uint32_t g = first_non_residue(p);
        for (uint32_t a = 1; a < p; ++a) {
            mint out;
            ASSERT_EQ(1, root_of(a, p, out)) << a << " modulo " << p;
            ASSERT_TRUE(is_value(out, Natural(kept_root(a, p, g)))) << a << " modulo " << p;
            bool is_root = times(out.words[0], out.words[0], p) == a;
            ASSERT_EQ(is_square(a, p), is_root) << a << " modulo " << p;
        }
    }
}

TEST(MintSqrt, KeptRootUnverifiedForOneModEight) {
    mint out;
    EXPECT_EQ(1, root_of(3, 17, out));  // 3 is not a square modulo 17
    EXPECT_TRUE(is_value(out, one_word(kept_root(3, 17, 3))));
    EXPECT_NE(3u, times(out.words[0], out.words[0], 17));
    mint p = of_hex("ffffffffffffffffffffffffffffffff000000000000000000000001"), a = one_word(11);
    EXPECT_EQ(1, mint_sqrt(&a, &p, &out));  // neither is 11 modulo this one
    EXPECT_NE(Natural(11), mod_mul(Natural(out), Natural(out), Natural(p)));
}

TEST(MintSqrt, ZeroModuloAPrimeOneModEightHasRootZero) {
    for (uint32_t p : {17u, 41u, 257u})
        for (const mint &zero : {empty_zero(), word_zero()}) {
            mint modulus = one_word(p), out = one_word(9);
            EXPECT_EQ(1, mint_sqrt(&zero, &modulus, &out));
            EXPECT_TRUE(Natural(out).is_zero());
        }
}

TEST(MintSqrt, PrimesWithLongTables) {
    HardWords draw(261);
    for (uint32_t p : {769u, 7681u, 12289u, 40961u, 65537u, 998244353u, 2013265921u})
        for (int round = 0; round < 6; ++round) {
            uint32_t y = 1 + draw.uniform() % (p - 1), a = times(y, y, p);
            mint out;
            ASSERT_EQ(1, root_of(a, p, out)) << draw.where();
            ASSERT_TRUE(is_value(out, one_word(kept_root(a, p, first_non_residue(p)))))
                << a << " modulo " << p;
            ASSERT_EQ(a, times(out.words[0], out.words[0], p));
        }
}

TEST(MintSqrt, SquaresModuloTheFieldOfP224) {
    // p - 1 is an odd number times 2^96: up to 95 entries in the table.
    mint p = of_hex("ffffffffffffffffffffffffffffffff000000000000000000000001");
    mint y = of_hex("bd376388b5f723fb4c22dfe6cd4375a05a07476444d5819985007e34");
    mint square = mod_mul(Natural(y), Natural(y), Natural(p)).to_mint(), root;
    EXPECT_EQ(1, mint_sqrt(&square, &p, &root));
    EXPECT_EQ(Natural(square), mod_mul(Natural(root), Natural(root), Natural(p)));
}

// For the square of the non-residue found, every step is -1 and adds an entry.
TEST(MintSqrt, TwoHundredEntriesFillTheTable) {
    // 3 * 2^201 + 1, where 5 is found.
    const mint p = of_hex("600000000000000000000000000000000000000000000000001"), square = one_word(25);
    mint out;
    EXPECT_EQ(1, mint_sqrt(&square, &p, &out));
    EXPECT_TRUE(is_value(out, of_hex("5fffffffffffffffffffffffffffffffffffffffffffffffffc")));  // p - 5
}

TEST(MintSqrt, EntryBeyondTwoHundredMeansNoRoot) {
    // 135 * 2^202 + 1, where 7 is found.
    const mint p = of_hex("21c00000000000000000000000000000000000000000000000001"), square = one_word(49);
    mint out = one_word(9);
    EXPECT_EQ(0, mint_sqrt(&square, &p, &out));
    EXPECT_TRUE(is_value(out, one_word(9)));
}

TEST(MintSqrt, TableIsClearBeforeEveryCall) {
    mint first, second, out;
    EXPECT_EQ(1, root_of(2, 257, first));
    EXPECT_EQ(1, root_of(9, 193, out));
    EXPECT_EQ(1, root_of(2, 257, second));
    EXPECT_TRUE(is_value(first, second));
}

TEST(MintSqrt, FixedCandidateMeansNoDraw) {
    FakeEntropy entropy;
    mint out;
    for (uint32_t p : {17u, 41u, 73u, 97u, 193u, 257u, 65537u}) EXPECT_EQ(1, root_of(4, p, out));
    EXPECT_EQ(0u, entropy.number_calls);
    EXPECT_EQ(0u, entropy.calls());
}

TEST(MintSqrt, TwentyOneIsTheLastFixedCandidate) {
    ASSERT_EQ(21u, first_non_residue(kTwentyOneQualifies));
    ASSERT_EQ(22u, first_non_residue(kTwentyTwoQualifies));
    FakeEntropy entropy;
    mint out;
    EXPECT_EQ(1, root_of(4, kTwentyOneQualifies, out));
    EXPECT_TRUE(is_value(out, one_word(kept_root(4, kTwentyOneQualifies, 21))));
    EXPECT_EQ(0u, entropy.number_calls);
    entropy.queued_numbers.push_back(empty_zero());
    EXPECT_EQ(-1, root_of(4, kTwentyTwoQualifies, out));
    EXPECT_EQ(1u, entropy.number_calls);
}

TEST(MintSqrt, RandomCandidatesFollowTheTwentyFixedOnes) {
    for (uint32_t g = 2; g <= 21; ++g) ASSERT_TRUE(is_square(g, kStubbornPrime)) << g;
    FakeEntropy entropy;
    uint32_t g = first_non_residue(kStubbornPrime), a = times(777, 777, kStubbornPrime);
    for (uint32_t candidate : {4u, 9u, 25u, g}) entropy.queued_numbers.push_back(one_word(candidate));
    mint out;
    EXPECT_EQ(1, root_of(a, kStubbornPrime, out));
    EXPECT_EQ(4u, entropy.number_calls);
    EXPECT_TRUE(is_value(out, one_word(kept_root(a, kStubbornPrime, g))));
    EXPECT_EQ(a, times(out.words[0], out.words[0], kStubbornPrime));
}

TEST(MintSqrt, RandomCandidatesAreDrawnBelowTheModulus) {
    FakeEntropy entropy;
    mint out;
    EXPECT_EQ(1, root_of(4, kStubbornPrime, out));
    EXPECT_GT(entropy.number_calls, 0u);
    EXPECT_LT(entropy.number_calls, 60u);
    EXPECT_EQ(4u, times(out.words[0], out.words[0], kStubbornPrime));
}

TEST(MintSqrt, ZeroCandidateEndsTheSearch) {
    for (const mint &zero : {empty_zero(), word_zero()}) {
        FakeEntropy entropy;
        for (uint32_t candidate : {4u, 9u}) entropy.queued_numbers.push_back(one_word(candidate));
        entropy.queued_numbers.push_back(zero);
        GuardedRecord<mint> out;
        mint a = one_word(4), p = one_word(kStubbornPrime);
        EXPECT_EQ(-1, mint_sqrt(&a, &p, out.get()));
        EXPECT_EQ(3u, entropy.number_calls);
        EXPECT_TRUE(out.unchanged());
    }
}

TEST(MintSqrt, SixtyRandomCandidatesAreTheLast) {
    FakeEntropy entropy;
    for (int i = 0; i < 70; ++i) entropy.queued_numbers.push_back(one_word(4));
    GuardedRecord<mint> out;
    mint a = one_word(4), p = one_word(kHopeless);
    EXPECT_EQ(-1, mint_sqrt(&a, &p, out.get()));
    EXPECT_EQ(60u, entropy.number_calls);
    EXPECT_TRUE(out.unchanged());
}

TEST(MintSqrt, LastCandidateStillCounts) {
    FakeEntropy entropy;
    for (int i = 0; i < 59; ++i) entropy.queued_numbers.push_back(one_word(4));
    entropy.queued_numbers.push_back(one_word(first_non_residue(kStubbornPrime)));
    mint out;
    EXPECT_EQ(1, root_of(4, kStubbornPrime, out));
    EXPECT_EQ(60u, entropy.number_calls);
}

TEST(MintSqrt, ModulusOneEndsWithTheFirstDraw) {
    FakeEntropy entropy;  // every number below 1 is zero
    mint out;
    EXPECT_EQ(-1, root_of(0, 1, out));
    EXPECT_EQ(1u, entropy.number_calls);
}

TEST(MintSqrt, SquareModulusNeverFindsANonResidue) {
    for (uint32_t p : {9u, 25u, 49u, 81u, 121u, 169u}) {
        FakeEntropy entropy;
        for (int i = 0; i < 60; ++i) entropy.queued_numbers.push_back(one_word(2));
        mint out;
        EXPECT_EQ(-1, root_of(4, p, out)) << p;
        EXPECT_EQ(60u, entropy.number_calls) << p;
    }
}

}  // namespace
}  // namespace zokecc_test::sqrt_one_mod_eight_test

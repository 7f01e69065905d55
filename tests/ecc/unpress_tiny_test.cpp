// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// ecc_point_unpress on every curve over small primes of every residue modulo 8.
#include <gtest/gtest.h>
#include <zokecc/ecc.h>

#include <vector>

#include "tests/support/hard_words.h"
#include "tests/support/tiny_curve.h"

namespace zokecc_test::unpress_tiny_test {

namespace {

constexpr uint32_t kNone = 0xFFFFFFFFu;

uint32_t power_mod(uint32_t base, uint32_t exponent, uint32_t p) {
    uint32_t out = 1;
    for (uint32_t i = 0; i < exponent; ++i) out = out * base % p;
    return out;
}

// The root that the deployed method gives for `square`, or kNone. Each residue of p has its
// own method; for p = 1 modulo 8 the result of mint_sqrt is used, which has its own tests.
uint32_t deployed_root(uint32_t square, uint32_t p) {
    if (p % 4 == 3) {
        const uint32_t root = power_mod(square, (p + 1) / 4, p);
        return root * root % p == square ? root : kNone;
    }
    if (p % 8 == 5) {
        const uint32_t u = (p - 5) / 8, z = power_mod(square, 2 * u + 1, p);
        if (z == 1) return power_mod(square, u + 1, p);
        // KEPT: zero has no root here.
        if (z != p - 1) return kNone;
        return 2 * square % p * power_mod(4 * square % p, u, p) % p;
    }
    const mint value = tiny_number(square), modulus = tiny_number(p);
    mint out{};
    EXPECT_EQ(mint_sqrt(&value, &modulus, &out), 1);
    return out.len == 0 ? 0 : out.words[0];
}

void check(uint32_t p, uint32_t a, uint32_t b, uint32_t x, uint32_t root) {
    for (uint32_t parity : {0u, 1u, 2u, 0xFFFFFFFFu}) {
        mint y;
        std::memset(&y, 0xA5, sizeof y);
        const mint before = y, mx = tiny_number(x), ma = tiny_number(a), mb = tiny_number(b),
                   mp = tiny_number(p);
        const int32_t status = ecc_point_unpress(&y, &mx, &ma, &mb, &mp, parity);
        ASSERT_EQ(status, root == kNone ? -1 : 0)
            << "p " << p << " a " << a << " b " << b << " x " << x << " parity " << parity;
        if (root == kNone)
            ASSERT_TRUE(same_record(y, before)) << "p " << p << " a " << a << " b " << b << " x " << x;
        else
            ASSERT_TRUE(is_value(y, tiny_number(root % 2 == parity ? root : p - root)))
                << "p " << p << " a " << a << " b " << b << " x " << x << " parity " << parity;
    }
}

// Every b for each of the given a and x, so that every square and non-square occurs.
void check_prime(uint32_t p, const std::vector<uint32_t> &as, const std::vector<uint32_t> &xs) {
    std::vector<uint32_t> roots;
    for (uint32_t square = 0; square < p; ++square) roots.push_back(deployed_root(square, p));
    for (uint32_t a : as)
        for (uint32_t x : xs)
            for (uint32_t b = 0; b < p; ++b) check(p, a, b, x, roots[(x * x % p * x + a * x + b) % p]);
}

std::vector<uint32_t> all_below(uint32_t p) {
    std::vector<uint32_t> out;
    for (uint32_t i = 0; i < p; ++i) out.push_back(i);
    return out;
}

}  // namespace

TEST(EccPointUnpressTiny, EveryCurveAndXOverTheSmallestPrimes) {
    for (uint32_t p : {3u, 5u, 7u, 11u, 13u}) check_prime(p, all_below(p), all_below(p));
}

TEST(EccPointUnpressTiny, EveryRightSideModuloPrimesThreeAndSevenModEight) {
    for (uint32_t p : {19u, 23u, 43u, 47u, 59u, 71u, 83u, 103u})
        check_prime(p, {0, 1, p - 3}, {0, 1, 2, p - 1});
}

TEST(EccPointUnpressTiny, EveryRightSideModuloPrimesFiveModEight) {
    for (uint32_t p : {29u, 37u, 53u, 61u, 101u}) check_prime(p, {0, 1, p - 3}, {0, 1, 2, p - 1});
}

TEST(EccPointUnpressTiny, EveryRightSideModuloPrimesOneModEight) {
    // 97 - 1 holds 2^5 and 257 - 1 is 2^8: long and short runs of exponents.
    for (uint32_t p : {17u, 41u, 73u, 97u}) check_prime(p, {0, p - 3}, {0, 2});
    check_prime(257, {1}, {1});
}

TEST(EccPointUnpressTiny, EveryPointIsFoundFromItsXAndParity) {
    const uint32_t curves[][3] = {{97, 2, 3}, {101, 1, 1}, {103, 5, 7}, {89, 3, 4}, {67, 2, 3}};
    for (const auto &[p, a, b] : curves) {
        const TinyCurve c(p, a, b);
        for (const TinyPoint &P : c.points()) {
            if (P.infinite || P.y == 0) continue;
            const mint x = tiny_number(P.x), ma = tiny_number(a), mb = tiny_number(b), mp = tiny_number(p);
            mint y;
            ASSERT_EQ(ecc_point_unpress(&y, &x, &ma, &mb, &mp, P.y % 2), 0) << "p " << p << " x " << P.x;
            ASSERT_TRUE(is_value(y, tiny_number(P.y))) << "p " << p << " x " << P.x;
        }
    }
}

}  // namespace zokecc_test::unpress_tiny_test

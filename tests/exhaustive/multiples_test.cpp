// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Every scalar with every point of tiny curves, compared with plain integers.
//
// Points of small order meet the kept result of the Jacobian addition all the time, at places
// that depend on the window width, so agreement here pins the recoding, too.
#include <gtest/gtest.h>

#include <memory>

#include "ecc/curve.h"
#include "tests/exhaustive/curves.h"
#include "tests/support/model_curve.h"

namespace zokecc_test::multiples_test {

namespace {

std::string text(const TinyPoint &P) { return testing::PrintToString(P); }

std::vector<TinyParameters> curves_of_prime_order() {
    std::vector<TinyParameters> out;
    for (const TinyParameters &curve : kTinyCurves) {
        bool prime = true;
        for (uint32_t d = 2; d * d <= curve.order; ++d) prime = prime && curve.order % d != 0;
        if (prime) out.push_back(curve);
    }
    return out;
}

class TinyMultiples : public testing::TestWithParam<TinyParameters> {
protected:
    void expect_window(const mint &k, const TinyPoint &P) {
        ecc_point record = tiny_affine(P), out{};
        EXPECT_EQ(1, ecc_unknown_point_mul(&k, &record, &c.a, &c.b, &c.p, &out));
        EXPECT_EQ(curve.library_window(k, P), tiny_point(out))
            << k.words[0] << ", words " << k.len << ", point " << text(P);
    }

    const TinyCurve curve = tiny_curve(GetParam());
    const TinyRecords c{curve};
    const uint32_t step = GetParam().step;
    const std::vector<TinyPoint> points = some_points(curve, step);
};

TEST_P(TinyMultiples, EveryScalarThroughTheWindow) {
    for (const TinyPoint &P : points)
        for (uint32_t k = 0; k <= curve.order() + 4 && !HasFailure(); k += k < 8 ? 1 : step)
            expect_window(tiny_number(k), P);
}

// Scalars of `bits` bits from a fixed generator, low bits included.
mint drawn_scalar(unsigned bits, uint32_t &state) {
    mint out{};
    out.len = (bits + 31) / 32;
    for (uint32_t i = 0; i < out.len; ++i) {
        state = state * 1664525u + 1013904223u;
        out.words[i] = state ^ state >> 15;
    }
    out.words[out.len - 1] &= 0xFFFFFFFFu >> (31 - (bits - 1) % 32);
    out.words[out.len - 1] |= 1u << (bits - 1) % 32;
    return out;
}

TEST_P(TinyMultiples, ScalarsOfEveryWindowWidth) {
    uint32_t state = GetParam().p;
    for (unsigned bits : {18u, 19u, 20u, 21u, 40u, 69u, 70u, 71u, 200u, 299u, 300u, 301u, 608u})
        for (size_t i = 1; i < points.size() && !HasFailure(); i += 1 + points.size() / 5)
            for (int repeat = 0; repeat < 2; ++repeat) expect_window(drawn_scalar(bits, state), points[i]);
}

using TinyPrimeOrder = TinyMultiples;

// KEPT: of the multiples below a prime order n, n - 2 is lost if n is 1 modulo 4, to a last
// addition of equal points; no other multiple is lost.
TEST_P(TinyPrimeOrder, KeptWindowLosesOneMultipleBelowAPrimeOrder) {
    uint32_t n = curve.order();
    for (size_t i = 1; i < points.size(); i += points.size() / 8) {
        ecc_point record = tiny_affine(points[i]), out{};
        TinyPoint expected;
        for (uint32_t k = 0; k < n && !HasFailure(); ++k, expected = curve.add(expected, points[i])) {
            mint scalar = tiny_number(k);
            EXPECT_EQ(1, ecc_unknown_point_mul(&scalar, &record, &c.a, &c.b, &c.p, &out));
            bool lost = k == n - 2 && n % 4 == 1;
            EXPECT_EQ(lost ? TinyPoint{} : expected, tiny_point(out)) << k;
        }
    }
}

// One word: entries G, G, zero, 2^16 G and infinity. Without the origin on the curve no sum is
// mistaken for infinity, and the comb is exact.
TEST_P(TinyMultiples, EveryScalarOverATableOfOneWord) {
    auto table = std::make_unique<PrecompTable>();
    for (const TinyPoint &G : points) {
        ecc_point base = tiny_affine(G), out{};
        ASSERT_EQ(0, ecc_precomputation_point_1(&base, &c.a, &c.b, &c.p, table->entry));
        EXPECT_EQ(G, tiny_point(table->entry[1]));
        EXPECT_EQ(curve.library_comb(1u << 16, G), tiny_point(table->entry[3])) << text(G);
        std::vector<TinyPoint> multiple{TinyPoint{}};
        for (TinyPoint sum = G; !sum.infinite; sum = curve.add(sum, G)) multiple.push_back(sum);
        for (uint32_t k = 0; k <= curve.order() + 4 && !HasFailure(); k += k < 8 ? 1 : step)
            for (uint32_t scalar : {k, k << 16, k * 0x00030005u}) {
                mint record = tiny_number(scalar);
                EXPECT_EQ(0, ecc_fix_point_mul_1(&record, &base, &c.a, &c.b, &c.p, &out, table->entry));
                EXPECT_EQ(curve.b == 0 ? curve.library_comb(scalar, G) : multiple[scalar % multiple.size()],
                          tiny_point(out))
                    << scalar << " G " << text(G);
            }
    }
}

INSTANTIATE_TEST_SUITE_P(Curves, TinyMultiples, testing::ValuesIn(kTinyCurves),
                         [](const auto &tested) { return tiny_curve_name(tested.param); });

INSTANTIATE_TEST_SUITE_P(Curves, TinyPrimeOrder, testing::ValuesIn(curves_of_prime_order()),
                         [](const auto &tested) { return tiny_curve_name(tested.param); });

}  // namespace

}  // namespace zokecc_test::multiples_test

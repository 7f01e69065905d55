// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Affine addition and doubling, and the test of the curve equation.
#include <gtest/gtest.h>

#include "tests/ecc/multiples.h"

namespace zokecc_test::affine_test {

namespace {

// y^2 = x^3 + 2x + 3 modulo 97.
const mint kP97 = small(97);
const mint kA = small(2);
const mint kB = small(3);

ecc_point at(uint32_t x, uint32_t y) { return affine(small(x), small(y)); }

ecc_point sum97(const ecc_point &P, const ecc_point &Q) {
    ecc_point out{};
    EXPECT_EQ(0, ecc_point_add(&P, &Q, &kA, &kB, &kP97, &out));
    return out;
}

ecc_point sum(const Curve &c, const ecc_point &P, const ecc_point &Q) {
    ecc_point out{};
    EXPECT_EQ(0, ecc_point_add(&P, &Q, &c.a, &c.b, &c.p, &out));
    return out;
}

class EccPointAddOn : public testing::TestWithParam<std::string> {};

TEST_P(EccPointAddOn, SmallMultiplesAddUpAsPublished) {
    const Curve &c = curve(GetParam());
    const std::vector<ecc_point> &multiple = multiples(c);
    for (size_t i : {1u, 2u, 9u})
        for (size_t j = 1; i + j <= 20; ++j)
            EXPECT_TRUE(same_point(multiple[i + j], sum(c, multiple[i], multiple[j]))) << i << " + " << j;
}

TEST_P(EccPointAddOn, DifferencesOfMultiplesAreMultiples) {
    const Curve &c = curve(GetParam());
    const std::vector<ecc_point> &multiple = multiples(c);
    for (size_t i : {20u, 13u})
        for (size_t j : {1u, 2u, 7u, 12u})
            EXPECT_TRUE(same_point(multiple[i - j], sum(c, minus(c, multiple[j]), multiple[i])))
                << i << " - " << j;
}

TEST_P(EccPointAddOn, KeptOppositePointsGiveFinitePoint) {
    const Curve &c = curve(GetParam());
    ecc_point expected = minus(c, c.G);
    mint zero{};
    mint_mod_sub(&zero, &c.G.x, &c.p, &expected.x);
    mint_mod_left_move_1(&expected.x, &expected.x, &c.p);
    EXPECT_TRUE(same_point(expected, sum(c, c.G, minus(c, c.G))));
    EXPECT_TRUE(same_point(minus(c, expected), sum(c, minus(c, c.G), c.G)));
}

TEST_P(EccPointAddOn, DoublesAsPublished) {
    const Curve &c = curve(GetParam());
    for (size_t i = 1; i <= 10; ++i) {
        ecc_point out{};
        EXPECT_EQ(0, ecc_point_double(&multiples(c)[i], &c.a, &c.b, &c.p, &out));
        EXPECT_TRUE(same_point(multiples(c)[2 * i], out)) << i;
    }
}

TEST_P(EccPointAddOn, EveryPublishedMultipleIsOnTheCurve) {
    const Curve &c = curve(GetParam());
    for (size_t i = 1; i <= 20; ++i) {
        ecc_point moved = multiples(c)[i];
        EXPECT_EQ(0, ecc_test_point(&moved, &c.a, &c.b, &c.p)) << i;
        moved.y.words[0] ^= 1u;
        EXPECT_EQ(1, ecc_test_point(&moved, &c.a, &c.b, &c.p)) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Curves, EccPointAddOn, testing::ValuesIn(all_curve_names()),
                         curve_test_name<testing::TestParamInfo<std::string>>);

TEST(EccPointAdd, InfinityPlusInfinityIsInfinity) {
    ecc_point P = with_garbage(affine_infinity());
    GuardedRecord<ecc_point> out;
    ecc_point expected = *out.get();
    EXPECT_EQ(0, ecc_point_add(&P, &P, &kA, &kB, &kP97, out.get()));
    expected.infinity = 1;
    expected.x.len = 0;
    expected.y.len = 0;
    EXPECT_TRUE(same_bytes(expected, *out.get())) << "the words have to stay as they were";
    EXPECT_TRUE(out.guards_intact());
}

TEST(EccPointAdd, InfinityIsNeutralOnBothSides) {
    ecc_point P = at(3, 6);
    EXPECT_TRUE(same_point(P, sum97(P, affine_infinity())));
    EXPECT_TRUE(same_point(P, sum97(affine_infinity(), P)));
}

TEST(EccPointAdd, InfinityCopiesTheOtherPointAsItStands) {
    ecc_point P = affine(untrimmed(small(300)), zero_in_one_word());
    P.infinity = 2;
    EXPECT_TRUE(same_point(P, sum97(affine_infinity(), P)));
    EXPECT_TRUE(same_point(P, sum97(P, affine_infinity())));
}

TEST(EccPointAdd, EveryFlagButOneIsFinite) {
    ecc_point P = at(3, 6);
    ecc_point Q = at(80, 10);
    for (uint32_t flag : {2u, 0x80000001u, 0xFFFFFFFFu}) {
        ecc_point odd = P;
        odd.infinity = flag;
        EXPECT_TRUE(same_point(at(80, 87), sum97(odd, Q))) << flag;
        EXPECT_TRUE(same_point(at(80, 87), sum97(Q, odd))) << flag;
        EXPECT_TRUE(same_point(Q, sum97(P, odd))) << "doubles, the flags are not compared";
    }
}

TEST(EccPointAdd, WorkedExamples) {
    EXPECT_TRUE(same_point(at(80, 10), sum97(at(3, 6), at(3, 6))));
    EXPECT_TRUE(same_point(at(80, 87), sum97(at(3, 6), at(80, 10))));
}

TEST(EccPointAdd, EqualPointsInTwoRecordsDouble) {
    const Curve &c = curve("secp256k1");
    ecc_point P = multiples(c)[3];
    ecc_point same = P;
    EXPECT_TRUE(same_point(multiples(c)[6], sum(c, P, P)));
    EXPECT_TRUE(same_point(multiples(c)[6], sum(c, P, same)));
}

// -2 Gx and -Gy modulo p, computed without the library.
TEST(EccPointAdd, KeptOppositePointsGiveFinitePoint) {
    const Curve &nist = curve("secp256r1");
    ecc_point expected =
        affine(mint_from_hex("29d05c193da77b710e86323538b77e1b11f904fea42998be16bd8d744ece7ad3"),
               mint_from_hex("b01cbd1c01e58065711814b583f061e9d431cca994cea1313449bf97c840ae0a"));
    EXPECT_TRUE(same_point(expected, sum(nist, nist.G, minus(nist, nist.G))));
    EXPECT_TRUE(same_point(at(91, 91), sum97(at(3, 6), at(3, 91))));
    EXPECT_TRUE(same_point(at(91, 6), sum97(at(3, 91), at(3, 6))));
}

TEST(EccPointAdd, KeptOppositePointsWithZeroXGiveTheNegativeOfTheFirst) {
    // (0, 10) is on the curve: 100 is 3 modulo 97.
    EXPECT_TRUE(same_point(at(0, 87), sum97(at(0, 10), at(0, 87))));
}

TEST(EccPointAdd, ZeroCoordinatesFromPointsOffTheCurveAreInfinity) {
    // x equal and zero, y different, the first y zero: (-2x, -y) is (0, 0).
    EXPECT_TRUE(same_point(affine_infinity(), sum97(at(0, 0), at(0, 5))));
}

// On y^2 = x^3 + x modulo 31 the origin is a point of order 2.
TEST(EccPointAdd, KeptSumAtTheOriginIsTakenForInfinity) {
    mint p = small(31), a = small(1), b = small(0);
    ecc_point P = at(2, 17);
    ecc_point out{};
    ASSERT_EQ(0, ecc_test_point(&P, &a, &b, &p));
    ecc_point origin = at(0, 0);
    ecc_point shifted{};
    EXPECT_EQ(0, ecc_point_add(&P, &origin, &a, &b, &p, &shifted));
    ecc_point back = at(2, 14);
    EXPECT_EQ(0, ecc_point_add(&shifted, &back, &a, &b, &p, &out));
    EXPECT_TRUE(same_point(affine_infinity(), out));
}

TEST(EccPointAdd, DoublingWithZeroYGivesInfinity) {
    // (96, 0) is on the curve: -1 - 2 + 3 is 0.
    ecc_point P = at(96, 0);
    ASSERT_EQ(0, ecc_test_point(&P, &kA, &kB, &kP97));
    EXPECT_TRUE(same_point(affine_infinity(), sum97(P, P)));
}

// p - 0 reduces to a zero without words, which does not compare equal to a zero of one word;
// so the tangent runs with 1/0 = p, and 0 - y gives p.
TEST(EccPointAdd, KeptDoublingWithZeroYOfOneWordGivesFinitePoint) {
    ecc_point P = affine(small(96), zero_in_one_word());
    EXPECT_TRUE(same_point(affine(small(2), kP97), sum97(P, P)));
}

TEST(EccPointAdd, KeptZeroYInTwoFormsCountsAsOppositePoints) {
    ecc_point P = at(96, 0);
    ecc_point Q = affine(small(96), zero_in_one_word());
    EXPECT_TRUE(same_point(at(2, 0), sum97(P, Q)));
    EXPECT_TRUE(same_point(affine(small(2), kP97), sum97(Q, P)));
}

TEST(EccPointAdd, OutputMayBeEitherInputOrBoth) {
    const Curve &c = curve("secp224r1");
    ecc_point P = multiples(c)[4], Q = multiples(c)[9];
    ecc_point first = P, second = Q, both = P;
    ecc_point_add(&first, &Q, &c.a, &c.b, &c.p, &first);
    EXPECT_TRUE(same_point(multiples(c)[13], first));
    ecc_point_add(&P, &second, &c.a, &c.b, &c.p, &second);
    EXPECT_TRUE(same_point(multiples(c)[13], second));
    ecc_point_add(&both, &both, &c.a, &c.b, &c.p, &both);
    EXPECT_TRUE(same_point(multiples(c)[8], both));
    ecc_point_double(&both, &c.a, &c.b, &c.p, &both);
    EXPECT_TRUE(same_point(multiples(c)[16], both));
}

TEST(EccPointAdd, OutputMayBeAnInputInTheSpecialCases) {
    ecc_point P = at(3, 6);
    for (const ecc_point &Q : {at(3, 91), affine_infinity(), at(3, 6)}) {
        ecc_point expected = sum97(P, Q);
        ecc_point first = P, second = Q;
        ecc_point_add(&first, &Q, &kA, &kB, &kP97, &first);
        EXPECT_TRUE(same_point(expected, first));
        ecc_point_add(&P, &second, &kA, &kB, &kP97, &second);
        EXPECT_TRUE(same_point(expected, second));
    }
    ecc_point infinite = affine_infinity();
    ecc_point_add(&infinite, &infinite, &kA, &kB, &kP97, &infinite);
    EXPECT_TRUE(same_point(affine_infinity(), infinite));
}

TEST(EccPointAdd, LeavesEveryInputAsItWas) {
    ecc_point P = with_garbage(affine(untrimmed(small(3)), untrimmed(small(6))));
    ecc_point Q = with_garbage(affine(untrimmed(small(80)), untrimmed(small(10))));
    mint a = with_garbage(untrimmed(kA)), b = with_garbage(untrimmed(kB)), p = with_garbage(untrimmed(kP97));
    const ecc_point P0 = P, Q0 = Q;
    const mint a0 = a, b0 = b, p0 = p;
    ecc_point out{};
    ecc_point_add(&P, &Q, &a, &b, &p, &out);
    ecc_point_add(&P, &P, &a, &b, &p, &out);
    ecc_point_double(&P, &a, &b, &p, &out);
    ecc_test_point(&P, &a, &b, &p);
    EXPECT_TRUE(same_bytes(P0, P));
    EXPECT_TRUE(same_bytes(Q0, Q));
    EXPECT_TRUE(same_bytes(a0, a));
    EXPECT_TRUE(same_bytes(b0, b));
    EXPECT_TRUE(same_bytes(p0, p));
}

TEST(EccPointAdd, WordsAboveTheUsedOnesDoNotMatter) {
    const Curve &c = curve("brainpoolP192r1");
    ecc_point P = with_garbage(multiples(c)[5]), Q = with_garbage(multiples(c)[6]), out{};
    mint a = with_garbage(c.a), b = with_garbage(c.b), p = with_garbage(c.p);
    ecc_point_add(&P, &Q, &a, &b, &p, &out);
    EXPECT_TRUE(same_point(multiples(c)[11], out));
    ecc_point_double(&P, &a, &b, &p, &out);
    EXPECT_TRUE(same_point(multiples(c)[10], out));
}

TEST(EccPointAdd, DoesNotReadB) {
    const Curve &c = curve("secp192r1");
    ecc_point out{};
    ecc_point_add(&multiples(c)[2], &multiples(c)[3], &c.a, nullptr, &c.p, &out);
    EXPECT_TRUE(same_point(multiples(c)[5], out));
    ecc_point_double(&multiples(c)[2], &c.a, nullptr, &c.p, &out);
    EXPECT_TRUE(same_point(multiples(c)[4], out));
}

TEST(EccTestPoint, DoesNotLookAtTheInfinityFlag) {
    ecc_point on = at(3, 6);
    ecc_point off = at(3, 7);
    on.infinity = 1;
    off.infinity = 1;
    EXPECT_EQ(0, ecc_test_point(&on, &kA, &kB, &kP97));
    EXPECT_EQ(1, ecc_test_point(&off, &kA, &kB, &kP97));
    ecc_point infinite = affine_infinity();
    EXPECT_EQ(1, ecc_test_point(&infinite, &kA, &kB, &kP97)) << "b is not zero";
}

TEST(EccTestPoint, OriginIsOnACurveWithoutB) {
    ecc_point origin = affine_infinity();
    for (const mint &b : {small(0), zero_in_one_word()})
        EXPECT_EQ(0, ecc_test_point(&origin, &kA, &b, &kP97));
}

TEST(EccTestPoint, CoordinatesAboveThePrimeAreReduced) {
    ecc_point P = affine(small(3 + 97), small(6 + 970));
    EXPECT_EQ(0, ecc_test_point(&P, &kA, &kB, &kP97));
    P.y = small(6 + 971);
    EXPECT_EQ(1, ecc_test_point(&P, &kA, &kB, &kP97));
}

TEST(EccTestPoint, ReadsEveryCoefficient) {
    ecc_point P = at(3, 6);
    EXPECT_EQ(0, ecc_test_point(&P, &kA, &kB, &kP97));
    for (uint32_t wrong : {0u, 1u, 4u}) {
        mint value = small(wrong);
        EXPECT_EQ(1, ecc_test_point(&P, &value, &kB, &kP97));
        EXPECT_EQ(1, ecc_test_point(&P, &kA, &value, &kP97));
    }
}

TEST(EccTestPoint, ZeroPrimeComparesTwoZeros) {
    ecc_point P = at(3, 6);
    mint zero = small(0);
    EXPECT_EQ(0, ecc_test_point(&P, &kA, &kB, &zero));
}

}  // namespace

}  // namespace zokecc_test::affine_test

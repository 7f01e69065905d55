// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Jacobian doubling and the addition of an affine point.
#include <gtest/gtest.h>

#include "tests/ecc/multiples.h"
#include "tests/support/model_curve.h"

namespace zokecc_test::jacobian_test {

namespace {

// y^2 = x^3 + 2x + 3 modulo 97.
const mint kP97 = small(97);
const mint kA = small(2);
const mint kB = small(3);

ecc_jac_point at(uint32_t X, uint32_t Y, uint32_t Z) { return jacobian(small(X), small(Y), small(Z)); }
ecc_point at(uint32_t x, uint32_t y) { return affine(small(x), small(y)); }

ecc_jac_point twice97(const ecc_jac_point &P) {
    ecc_jac_point out{};
    EXPECT_EQ(1, ecc_jac_point_double(&P, &kA, &kB, &kP97, &out));
    return out;
}

// The call returns 0 except if it ends in a doubling, whose 1 it passes on; callers check
// neither.
ecc_jac_point sum97(const ecc_jac_point &P, const ecc_point &Q) {
    ecc_jac_point out{};
    ecc_jac_point_add(&P, &Q, &kA, &kB, &kP97, &out);
    return out;
}

class EccJacPointOn : public testing::TestWithParam<std::string> {};

TEST_P(EccJacPointOn, DoublesAsPublishedForEveryZ) {
    const Curve &c = curve(GetParam());
    for (size_t i = 1; i <= 10; ++i) {
        for (const mint &z : {small(1), any_z(c)}) {
            ecc_jac_point P = scaled(c, multiples(c)[i], z), out{};
            EXPECT_EQ(1, ecc_jac_point_double(&P, &c.a, &c.b, &c.p, &out));
            EXPECT_TRUE(same_point(multiples(c)[2 * i], to_affine(c, out))) << i;
        }
    }
}

TEST_P(EccJacPointOn, AddsAffinePointsAsPublishedForEveryZ) {
    const Curve &c = curve(GetParam());
    for (size_t i : {1u, 6u})
        for (size_t j = 1; i + j <= 20; j += 3)
            for (const mint &z : {small(1), any_z(c)}) {
                ecc_jac_point P = scaled(c, multiples(c)[i], z), out{};
                ecc_jac_point_add(&P, &multiples(c)[j], &c.a, &c.b, &c.p, &out);
                EXPECT_TRUE(same_point(multiples(c)[i + j], to_affine(c, out))) << i << " + " << j;
            }
}

INSTANTIATE_TEST_SUITE_P(Curves, EccJacPointOn, testing::ValuesIn(all_curve_names()),
                         curve_test_name<testing::TestParamInfo<std::string>>);

// M = 3 9 + 2 = 29, Z3 = 12, S = 4 3 36 = 44, X3 = 29^2 - 2 44 = 74, T = 8 36^2 = 86,
// Y3 = 29 (44 - 74) - 86 = 14.
TEST(EccJacPointDouble, WorkedExampleWithZOne) {
    EXPECT_TRUE(same_point(at(74, 14, 12), twice97(at(3, 6, 1))));
}

// (3, 6) with Z = 2 is (12, 48, 2): M = 3 47 + 2 16 = 76, Z3 = 95, w = 73, S = 4 12 73 = 12,
// X3 = 76^2 - 24 = 29, T = 8 91 = 49, Y3 = 76 (12 - 29) - 49 = 17.
TEST(EccJacPointDouble, WorkedExampleWithZTwo) {
    EXPECT_TRUE(same_point(at(29, 17, 95), twice97(at(12, 48, 2))));
}

TEST(EccJacPointDouble, CanonicalInfinityStaysCanonical) {
    EXPECT_TRUE(same_point(jacobian_infinity(), twice97(jacobian_infinity())));
}

// X and Y still go through the formula: M = 3 X^2 = 27, S = 44, X3 = 27^2 - 88 = 59,
// Y3 = 27 (44 - 59) - 86 = 91.
TEST(EccJacPointDouble, ZeroZStaysZeroInBothForms) {
    for (const mint &zero : {small(0), zero_in_one_word(), with_garbage(small(0))}) {
        ecc_jac_point P = jacobian(small(3), small(6), zero);
        EXPECT_TRUE(same_point(at(59, 91, 0), twice97(P)));
        EXPECT_EQ(1, ecc_jac_point_double(&P, &kA, &kB, &kP97, &P));
        EXPECT_TRUE(same_point(at(59, 91, 0), P));
    }
}

TEST(EccJacPointDouble, ZeroYGivesZeroZ) {
    for (uint32_t z : {1u, 5u}) {
        EXPECT_EQ(0u, twice97(at(96, 0, z)).Z.len) << z;
        ecc_jac_point P = jacobian(small(96), zero_in_one_word(), small(z));
        EXPECT_EQ(0u, twice97(P).Z.len) << z;
    }
}

TEST(EccJacPointDouble, OutputMayBeTheInput) {
    for (const ecc_jac_point &P : {at(3, 6, 1), at(12, 48, 2), at(96, 0, 1), at(5, 7, 0)}) {
        ecc_jac_point in_place = P;
        EXPECT_EQ(1, ecc_jac_point_double(&in_place, &kA, &kB, &kP97, &in_place));
        EXPECT_TRUE(same_point(twice97(P), in_place));
    }
}

TEST(EccJacPointDouble, DoesNotReadB) {
    ecc_jac_point P = at(3, 6, 1), out{};
    EXPECT_EQ(1, ecc_jac_point_double(&P, &kA, nullptr, &kP97, &out));
    EXPECT_TRUE(same_point(at(74, 14, 12), out));
}

// Z = 1 in two words is not recognised as one: the general formula gives the same numbers.
TEST(EccJacPointDouble, UntrimmedInputGivesTheSameValues) {
    ecc_jac_point P = jacobian(untrimmed(small(3)), untrimmed(small(6)), untrimmed(small(1)));
    EXPECT_TRUE(same_point(at(74, 14, 12), twice97(P)));
}

TEST(EccJacPointDouble, LeavesInputsAsTheyWere) {
    ecc_jac_point P = with_garbage(jacobian(untrimmed(small(12)), untrimmed(small(48)), untrimmed(small(2))));
    mint a = with_garbage(untrimmed(kA)), b = with_garbage(untrimmed(kB)), p = with_garbage(kP97);
    const ecc_jac_point P0 = P;
    const mint a0 = a, b0 = b, p0 = p;
    GuardedRecord<ecc_jac_point> out;
    EXPECT_EQ(1, ecc_jac_point_double(&P, &a, &b, &p, out.get()));
    EXPECT_TRUE(same_point(at(29, 17, 95), *out.get()));
    EXPECT_TRUE(out.guards_intact());
    EXPECT_TRUE(same_bytes(P0, P));
    EXPECT_TRUE(same_bytes(a0, a));
    EXPECT_TRUE(same_bytes(b0, b));
    EXPECT_TRUE(same_bytes(p0, p));
}

// H = 77, r = 4, Z3 = 77, C = 12 3 = 36, D = 51, X3 = 16 - 72 - 51 = 87,
// Y3 = (36 - 87) 4 - 51 6 = 72.
TEST(EccJacPointAdd, WorkedExampleWithZOne) {
    EXPECT_TRUE(same_point(at(87, 72, 77), sum97(at(3, 6, 1), at(80, 10))));
    ecc_jac_point P = at(3, 6, 1), out{};
    ecc_point Q = at(80, 10);
    EXPECT_EQ(0, ecc_jac_point_add(&P, &Q, &kA, &kB, &kP97, &out));
}

TEST(EccJacPointAdd, InfinitePointLeavesTheOtherAsItStands) {
    ecc_jac_point P = jacobian(untrimmed(small(300)), zero_in_one_word(), small(200));
    ecc_point infinite = at(3, 6);
    infinite.infinity = 1;
    EXPECT_TRUE(same_point(P, sum97(P, infinite)));
    ecc_jac_point nowhere = at(7, 8, 0);
    EXPECT_TRUE(same_point(nowhere, sum97(nowhere, infinite))) << "the affine operand is looked at first";
}

TEST(EccJacPointAdd, ZeroZGivesTheAffinePointWithZOne) {
    for (const mint &zero : {small(0), zero_in_one_word(), with_garbage(small(0))}) {
        ecc_jac_point P = jacobian(small(3), small(6), zero);
        EXPECT_TRUE(same_point(at(80, 10, 1), sum97(P, at(80, 10))));
        EXPECT_TRUE(same_point(at(3, 6, 1), sum97(P, at(3, 6))));
    }
}

TEST(EccJacPointAdd, EveryFlagButOneIsFinite) {
    ecc_point Q = at(80, 10);
    for (uint32_t flag : {2u, 0xFFFFFFFFu}) {
        Q.infinity = flag;
        EXPECT_TRUE(same_point(at(87, 72, 77), sum97(at(3, 6, 1), Q))) << flag;
    }
}

TEST(EccJacPointAdd, EqualPointsDoubleTheAffineOperand) {
    EXPECT_TRUE(same_point(at(74, 14, 12), sum97(at(3, 6, 1), at(3, 6))));
    EXPECT_TRUE(same_point(at(74, 14, 12), sum97(at(12, 48, 2), at(3, 6)))) << "not the operand with Z = 2";
}

TEST(EccJacPointAdd, EqualPointsOfOrderTwoGiveZeroZ) {
    EXPECT_EQ(0u, sum97(at(96, 0, 1), at(96, 0)).Z.len);
    EXPECT_EQ(0u, sum97(at(93, 0, 2), at(96, 0)).Z.len);
}

TEST(EccJacPointAdd, OppositePointsGiveCanonicalInfinity) {
    EXPECT_TRUE(same_point(jacobian_infinity(), sum97(at(3, 6, 1), at(3, 91))));
    EXPECT_TRUE(same_point(jacobian_infinity(), sum97(at(12, 48, 2), at(3, 91))));
}

TEST(EccJacPointAdd, OutputMayBeTheJacobianInput) {
    for (const ecc_jac_point &P : {at(3, 6, 1), at(12, 48, 2), at(5, 7, 0)})
        for (const ecc_point &Q : {at(80, 10), at(3, 6), at(3, 91), affine_infinity()}) {
            ecc_jac_point in_place = P;
            ecc_jac_point_add(&in_place, &Q, &kA, &kB, &kP97, &in_place);
            EXPECT_TRUE(same_point(sum97(P, Q), in_place));
        }
}

TEST(EccJacPointAdd, DoesNotReadB) {
    ecc_jac_point P = at(3, 6, 1), out{};
    for (const ecc_point &Q : {at(80, 10), at(3, 6)}) {
        ecc_jac_point_add(&P, &Q, &kA, nullptr, &kP97, &out);
        EXPECT_TRUE(same_point(sum97(P, Q), out));
    }
}

// The product 12 has one word and the untrimmed 12 has two, so that they do not compare equal
// and the difference is p itself, which is not zero: not even equal points are recognised.
TEST(EccJacPointAdd, UntrimmedEqualPointsAreNotRecognised) {
    ecc_jac_point P = jacobian(untrimmed(small(12)), untrimmed(small(48)), small(2));
    EXPECT_TRUE(same_point(at(0, 0, 0), sum97(P, at(3, 6))));
}

TEST(EccJacPointAdd, LeavesInputsAsTheyWere) {
    ecc_jac_point P = with_garbage(jacobian(untrimmed(small(12)), untrimmed(small(48)), untrimmed(small(2))));
    ecc_point Q = with_garbage(affine(untrimmed(small(80)), untrimmed(small(10))));
    ecc_point same = with_garbage(affine(untrimmed(small(3)), untrimmed(small(6))));
    mint a = with_garbage(untrimmed(kA)), b = with_garbage(untrimmed(kB)), p = with_garbage(kP97);
    const ecc_jac_point P0 = P;
    const ecc_point Q0 = Q, same0 = same;
    const mint a0 = a, b0 = b, p0 = p;
    GuardedRecord<ecc_jac_point> out;
    ecc_jac_point_add(&P, &same, &a, &b, &p, out.get());
    EXPECT_TRUE(same_point(ModelCurve(a, b, p).add(P, same), *out.get()));
    ecc_jac_point_add(&P, &Q, &a, &b, &p, out.get());
    EXPECT_TRUE(same_point(ModelCurve(a, b, p).add(P, Q), *out.get()));
    EXPECT_TRUE(out.guards_intact());
    EXPECT_TRUE(same_bytes(P0, P));
    EXPECT_TRUE(same_bytes(Q0, Q));
    EXPECT_TRUE(same_bytes(same0, same));
    EXPECT_TRUE(same_bytes(a0, a));
    EXPECT_TRUE(same_bytes(b0, b));
    EXPECT_TRUE(same_bytes(p0, p));
}

}  // namespace

}  // namespace zokecc_test::jacobian_test

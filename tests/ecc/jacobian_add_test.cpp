// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The addition of two Jacobian points, and its kept result for equal points.
#include <gtest/gtest.h>

#include "tests/ecc/multiples.h"

namespace zokecc_test::jacobian_add_test {

namespace {

// y^2 = x^3 + 2x + 3 modulo 97. (12, 48, 2) and (27, 65, 3) are both (3, 6); (41, 76, 3) is
// (80, 10), which is 2 (3, 6); the third multiple is (80, 87).
const mint kP97 = small(97);
const mint kA = small(2);
const mint kB = small(3);

ecc_jac_point at(uint32_t X, uint32_t Y, uint32_t Z) { return jacobian(small(X), small(Y), small(Z)); }

ecc_jac_point sum97(const ecc_jac_point &P, const ecc_jac_point &Q) {
    ecc_jac_point out{};
    EXPECT_EQ(1, ecc_jac_point_add_1(&P, &Q, &kA, &kB, &kP97, &out));
    return out;
}

class EccJacPointAdd1On : public testing::TestWithParam<std::string> {};

TEST_P(EccJacPointAdd1On, SmallMultiplesAddUpAsPublishedForEveryZ) {
    const Curve &c = curve(GetParam());
    for (size_t i : {1u, 6u})
        for (size_t j = 2; i + j <= 20; j += 5)
            for (const mint &z1 : {small(1), any_z(c)})
                for (const mint &z2 : {small(1), c.G.x}) {
                    ecc_jac_point P = scaled(c, multiples(c)[i], z1);
                    ecc_jac_point Q = scaled(c, multiples(c)[j], z2), out{};
                    EXPECT_EQ(1, ecc_jac_point_add_1(&P, &Q, &c.a, &c.b, &c.p, &out));
                    EXPECT_TRUE(same_point(multiples(c)[i + j], to_affine(c, out))) << i << " + " << j;
                }
}

TEST_P(EccJacPointAdd1On, KeptEqualPointsInTwoRecordsGiveInfinity) {
    const Curve &c = curve(GetParam());
    for (const mint &z1 : {small(1), any_z(c)})
        for (const mint &z2 : {small(1), any_z(c), c.G.x}) {
            ecc_jac_point P = scaled(c, c.G, z1), Q = scaled(c, c.G, z2), out = jacobian_infinity();
            EXPECT_EQ(1, ecc_jac_point_add_1(&P, &Q, &c.a, &c.b, &c.p, &out));
            EXPECT_TRUE(same_point(jacobian(small(0), small(0), small(0)), out));
        }
}

TEST_P(EccJacPointAdd1On, OneRecordTwiceDoubles) {
    const Curve &c = curve(GetParam());
    for (const mint &z : {small(1), any_z(c)}) {
        ecc_jac_point P = scaled(c, multiples(c)[9], z), out{}, doubled{};
        EXPECT_EQ(1, ecc_jac_point_add_1(&P, &P, &c.a, &c.b, &c.p, &out));
        EXPECT_EQ(1, ecc_jac_point_double(&P, &c.a, &c.b, &c.p, &doubled));
        EXPECT_TRUE(same_point(doubled, out));
        EXPECT_TRUE(same_point(multiples(c)[18], to_affine(c, out)));
    }
}

INSTANTIATE_TEST_SUITE_P(Curves, EccJacPointAdd1On, testing::ValuesIn(all_curve_names()),
                         curve_test_name<testing::TestParamInfo<std::string>>);

// W = 3 - 80 = 20, R = 6 - 10 = 93, T = 83, M = 16, Z3 = 20, V = 83 12 = 26,
// X3 = 93^2 - 26 = 87, (26 - 2 87) 93 - 16 46 = 50, which is even, so Y3 = 25.
TEST(EccJacPointAdd1, WorkedExampleWithBothZOne) {
    EXPECT_TRUE(same_point(at(87, 25, 20), sum97(at(3, 6, 1), at(80, 10, 1))));
}

TEST(EccJacPointAdd1, WorkedExamplesWithEachZ) {
    EXPECT_TRUE(same_point(at(39, 93, 63), sum97(at(12, 48, 2), at(80, 10, 1))));
    EXPECT_TRUE(same_point(at(10, 32, 52), sum97(at(12, 48, 2), at(41, 76, 3))));
}

TEST(EccJacPointAdd1, OddNumberIsHalvedAfterAddingP) {
    // (3, 6, 1) + (29, 80, 2), which is (80, 10): (V - 2 X3) R - M W^3 is 89, so Y3 is (89 + 97) / 2.
    EXPECT_TRUE(same_point(at(39, 93, 63), sum97(at(3, 6, 1), at(29, 80, 2))));
}

TEST(EccJacPointAdd1, ZeroZOfTheFirstGivesTheSecondAsItStands) {
    ecc_jac_point Q = jacobian(untrimmed(small(300)), zero_in_one_word(), small(200));
    for (const mint &zero : {small(0), zero_in_one_word(), with_garbage(small(0))})
        EXPECT_TRUE(same_point(Q, sum97(jacobian(small(3), small(6), zero), Q)));
}

TEST(EccJacPointAdd1, ZeroZOfTheSecondGivesTheFirstAsItStands) {
    ecc_jac_point P = jacobian(untrimmed(small(300)), zero_in_one_word(), small(200));
    for (const mint &zero : {small(0), zero_in_one_word(), with_garbage(small(0))})
        EXPECT_TRUE(same_point(P, sum97(P, jacobian(small(3), small(6), zero))));
}

TEST(EccJacPointAdd1, BothZerosGiveTheSecond) {
    EXPECT_TRUE(same_point(at(5, 6, 0), sum97(at(3, 4, 0), at(5, 6, 0))));
}

TEST(EccJacPointAdd1, OneInfiniteRecordTwiceIsDoubled) {
    ecc_jac_point P = at(3, 6, 0);
    EXPECT_TRUE(same_point(at(59, 91, 0), sum97(P, P))) << "the pointers are compared before Z is looked at";
}

// It doubles only if the same record is passed twice.
TEST(EccJacPointAdd1, KeptEqualPointsInTwoRecordsGiveInfinity) {
    EXPECT_TRUE(same_point(at(0, 0, 0), sum97(at(3, 6, 1), at(3, 6, 1))));
    EXPECT_TRUE(same_point(at(0, 0, 0), sum97(at(12, 48, 2), at(3, 6, 1))));
    EXPECT_TRUE(same_point(at(0, 0, 0), sum97(at(3, 6, 1), at(12, 48, 2))));
    EXPECT_TRUE(same_point(at(0, 0, 0), sum97(at(12, 48, 2), at(27, 65, 3))));
}

// W = 0 with R other than 0: X = R^2, Y = -R^3, Z = 0. R is 6 - 91 = 12 for Z = 1 twice, and
// 27 48 - 8 32 = 70 for Z = 2 and Z = 3.
TEST(EccJacPointAdd1, OppositePointsGiveInfinityWithThePowersOfTheDifference) {
    EXPECT_TRUE(same_point(at(47, 18, 0), sum97(at(3, 6, 1), at(3, 91, 1))));
    EXPECT_TRUE(same_point(at(50, 89, 0), sum97(at(12, 48, 2), at(27, 32, 3))));
}

TEST(EccJacPointAdd1, OutputMayBeEitherInput) {
    const ecc_jac_point operands[] = {at(3, 6, 1),   at(12, 48, 2), at(27, 65, 3), at(80, 10, 1),
                                      at(41, 76, 3), at(3, 91, 1),  at(27, 32, 3), at(5, 7, 0)};
    for (const ecc_jac_point &P : operands)
        for (const ecc_jac_point &Q : operands) {
            ecc_jac_point copy = Q;
            ecc_jac_point expected = sum97(P, copy);
            ecc_jac_point first = P, second = Q;
            EXPECT_EQ(1, ecc_jac_point_add_1(&first, &copy, &kA, &kB, &kP97, &first));
            EXPECT_TRUE(same_point(expected, first));
            EXPECT_EQ(1, ecc_jac_point_add_1(&P, &second, &kA, &kB, &kP97, &second));
            EXPECT_TRUE(same_point(expected, second));
        }
}

TEST(EccJacPointAdd1, OutputMayBeTheOneRecordGivenTwice) {
    ecc_jac_point P = at(3, 6, 1);
    EXPECT_EQ(1, ecc_jac_point_add_1(&P, &P, &kA, &kB, &kP97, &P));
    EXPECT_TRUE(same_point(at(74, 14, 12), P));
}

TEST(EccJacPointAdd1, DoesNotReadB) {
    ecc_jac_point P = at(12, 48, 2), Q = at(41, 76, 3), out{};
    EXPECT_EQ(1, ecc_jac_point_add_1(&P, &Q, &kA, nullptr, &kP97, &out));
    EXPECT_TRUE(same_point(at(10, 32, 52), out));
    EXPECT_EQ(1, ecc_jac_point_add_1(&P, &P, &kA, nullptr, &kP97, &out));
    EXPECT_TRUE(same_point(at(29, 17, 95), out));
}

// The last step adds p to an odd number; p itself must not be touched, nor any other input.
TEST(EccJacPointAdd1, LeavesInputsAsTheyWere) {
    ecc_jac_point P = with_garbage(jacobian(untrimmed(small(3)), untrimmed(small(6)), small(1)));
    ecc_jac_point Q = with_garbage(jacobian(untrimmed(small(29)), untrimmed(small(80)), untrimmed(small(2))));
    mint a = with_garbage(untrimmed(kA)), b = with_garbage(untrimmed(kB)), p = with_garbage(untrimmed(kP97));
    const ecc_jac_point P0 = P, Q0 = Q;
    const mint a0 = a, b0 = b, p0 = p;
    GuardedRecord<ecc_jac_point> out;
    EXPECT_EQ(1, ecc_jac_point_add_1(&P, &Q, &a, &b, &p, out.get()));
    EXPECT_TRUE(out.guards_intact());
    EXPECT_EQ(1, ecc_jac_point_add_1(&P, &P, &a, &b, &p, out.get()));
    EXPECT_TRUE(same_bytes(P0, P));
    EXPECT_TRUE(same_bytes(Q0, Q));
    EXPECT_TRUE(same_bytes(a0, a));
    EXPECT_TRUE(same_bytes(b0, b));
    EXPECT_TRUE(same_bytes(p0, p));
}

}  // namespace

}  // namespace zokecc_test::jacobian_add_test

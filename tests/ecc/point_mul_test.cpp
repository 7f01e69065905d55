// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The choice between the comb and wNAF.
#include <gtest/gtest.h>

#include "tests/ecc/multiples.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::point_mul_test {

namespace {

// wNAF allocates its digits and the comb nothing, which distinguishes them.
class EccPointMul : public testing::Test {
protected:
    EccPointMul() { ecc_precomputation_point(&c.G, &c.a, &c.b, &c.p); }
    // Also checks that the call took the expected path.
    ecc_point times(const mint &k, const ecc_point &P, const ecc_point &G, bool over_table) {
        ecc_point out{};
        FailingAlloc counting;
        EXPECT_EQ(0, ecc_point_mul(&k, &P, &G, &c.a, &c.b, &c.p, &out));
        EXPECT_EQ(over_table ? 0u : 1u, counting.allocations);
        return out;
    }
    const Curve &c = curve("brainpoolP160r1");
};

TEST_F(EccPointMul, BasePointItselfTakesTheTable) {
    EXPECT_TRUE(same_point(multiples(c)[19], times(small(19), c.G, c.G, true)));
    EXPECT_TRUE(same_point(affine_infinity(), times(c.n, c.G, c.G, true)));
    EXPECT_TRUE(same_point(affine_infinity(), times(small(0), c.G, c.G, true)));
}

TEST_F(EccPointMul, BasePointByValueTakesTheTable) {
    ecc_point elsewhere = with_garbage(c.G);
    EXPECT_TRUE(same_point(multiples(c)[19], times(small(19), elsewhere, c.G, true)));
}

TEST_F(EccPointMul, AnotherPointTakesTheWindow) {
    EXPECT_TRUE(same_point(multiples(c)[18], times(small(6), multiples(c)[3], c.G, false)));
    EXPECT_TRUE(same_point(affine_infinity(), times(small(0), multiples(c)[3], c.G, false)));
}

TEST_F(EccPointMul, EachPartOfTheBasePointIsCompared) {
    ecc_point flag = c.G, x = c.G, y = minus(c, c.G);
    flag.infinity = 1;
    x.x.words[0] ^= 1u;
    EXPECT_TRUE(same_point(affine_infinity(), times(small(3), flag, c.G, false)));
    times(small(3), x, c.G, false);
    EXPECT_TRUE(same_point(minus(c, multiples(c)[3]), times(small(3), y, c.G, false)));
}

TEST_F(EccPointMul, FlagsAreComparedAsNumbers) {
    ecc_point two = c.G, three = c.G;
    two.infinity = 2;
    three.infinity = 3;
    EXPECT_TRUE(same_point(multiples(c)[3], times(small(3), two, two, true)));
    EXPECT_TRUE(same_point(multiples(c)[3], times(small(3), two, three, false)));
}

TEST_F(EccPointMul, UntrimmedCoordinateIsNotEqual) {
    ecc_point longer = affine(untrimmed(c.G.x), c.G.y);
    EXPECT_TRUE(same_point(multiples(c)[3], times(small(3), longer, c.G, false)));
}

TEST_F(EccPointMul, InfiniteBasePointTwiceTakesTheTable) {
    ecc_point infinite = c.G;
    infinite.infinity = 1;
    EXPECT_TRUE(same_point(multiples(c)[3], times(small(3), infinite, infinite, true)))
        << "the table does not read its base point";
}

TEST_F(EccPointMul, TakesTheTableOfTheProcessWhateverTheBasePointIs) {
    const ecc_point &other = multiples(c)[2];
    EXPECT_TRUE(same_point(multiples(c)[3], times(small(3), other, other, true)));
}

// KEPT: the -1 of wNAF is not passed on; the output is unchanged.
TEST_F(EccPointMul, KeptFailureIsHidden) {
    mint k = small(6);
    const ecc_point &P = multiples(c)[3];
    GuardedRecord<ecc_point> out;
    FailingAlloc failing(1);
    EXPECT_EQ(0, ecc_point_mul(&k, &P, &c.G, &c.a, &c.b, &c.p, out.get()));
    EXPECT_EQ(1u, failing.allocations);
    EXPECT_TRUE(out.unchanged());
}

TEST_F(EccPointMul, KeptFailureOfAZeroScalarLeavesInfinity) {
    mint k = small(0);
    ecc_point P = multiples(c)[3], out = c.G;
    FailingAlloc failing(1);
    EXPECT_EQ(0, ecc_point_mul(&k, &P, &c.G, &c.a, &c.b, &c.p, &out));
    EXPECT_TRUE(same_point(affine_infinity(), out));
}

// The same multiple of G by the table and by wNAF.
TEST(EccPointMulOnP256, KeptTwoWaysDifferInOneMultiple) {
    const Curve &c = curve("secp256r1");
    ecc_precomputation_point(&c.G, &c.a, &c.b, &c.p);
    mint k{}, two = small(2);
    mint_sub(&c.n, &two, &k);
    ecc_point over_table{}, through_window{};
    EXPECT_EQ(0, ecc_point_mul(&k, &c.G, &c.G, &c.a, &c.b, &c.p, &over_table));
    EXPECT_EQ(0, ecc_point_mul(&k, &c.G, &multiples(c)[2], &c.a, &c.b, &c.p, &through_window));
    EXPECT_TRUE(same_point(minus(c, multiples(c)[2]), over_table));
    EXPECT_TRUE(same_point(affine_infinity(), through_window));
}

TEST_F(EccPointMul, DoesNotReadB) {
    mint k = small(6);
    for (const ecc_point &P : {c.G, multiples(c)[2]}) {
        ecc_point out{};
        EXPECT_EQ(0, ecc_point_mul(&k, &P, &c.G, &c.a, nullptr, &c.p, &out));
        EXPECT_TRUE(same_point(same_point(P, c.G) ? multiples(c)[6] : multiples(c)[12], out));
    }
}

}  // namespace

}  // namespace zokecc_test::point_mul_test

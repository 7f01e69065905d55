// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Conversion between affine and Jacobian form, and the three small operations on a Jacobian point.
#include <gtest/gtest.h>

#include "tests/ecc/multiples.h"

namespace zokecc_test::convert_test {

namespace {

TEST(EccAffineJacobin, InfinityGivesOneOneZero) {
    ecc_point in = affine_infinity();
    ecc_jac_point out = with_garbage(jacobian(small(5), small(6), small(7)));
    EXPECT_EQ(0, ecc_affine_jacobin(&out, &in));
    EXPECT_TRUE(same_value(small(1), out.X));
    EXPECT_TRUE(same_value(small(1), out.Y));
    EXPECT_EQ(0u, out.Z.len);
}

TEST(EccAffineJacobin, InfinityDoesNotLookAtTheCoordinates) {
    ecc_point in = curve("sm2p256v1").G;
    in.infinity = 1;
    ecc_jac_point out{};
    EXPECT_EQ(0, ecc_affine_jacobin(&out, &in));
    EXPECT_TRUE(same_point(jacobian_infinity(), out));
}

TEST(EccAffineJacobin, FinitePointGetsZOne) {
    const Curve &c = curve("brainpoolP224r1");
    GuardedRecord<ecc_jac_point> out;
    EXPECT_EQ(0, ecc_affine_jacobin(out.get(), &c.G));
    EXPECT_TRUE(same_point(jacobian(c.G.x, c.G.y, small(1)), *out.get()));
    EXPECT_TRUE(out.guards_intact());
}

TEST(EccAffineJacobin, EveryFlagButOneIsFinite) {
    for (uint32_t flag : {0u, 2u, 0x80000001u, 0xFFFFFFFFu}) {
        ecc_point in = affine(small(3), small(6));
        in.infinity = flag;
        ecc_jac_point out{};
        EXPECT_EQ(0, ecc_affine_jacobin(&out, &in));
        EXPECT_TRUE(same_point(jacobian(small(3), small(6), small(1)), out)) << flag;
    }
}

TEST(EccAffineJacobin, KeepsCoordinatesAsTheyStand) {
    ecc_point in = with_garbage(affine(untrimmed(small(3)), zero_in_one_word()));
    ecc_point before = in;
    ecc_jac_point out{};
    EXPECT_EQ(0, ecc_affine_jacobin(&out, &in));
    EXPECT_TRUE(same_point(jacobian(untrimmed(small(3)), zero_in_one_word(), small(1)), out));
    EXPECT_TRUE(same_bytes(before, in));
}

TEST(EccJacobinAffine, ZeroZGivesFlagOneAndNoUsedWords) {
    const Curve &c = curve("secp256r1");
    for (const mint &zero : {small(0), zero_in_one_word(), with_garbage(small(0))}) {
        ecc_jac_point in = jacobian(c.G.x, c.G.y, zero);
        GuardedRecord<ecc_point> out;
        ecc_point before = *out.get();
        EXPECT_EQ(0, ecc_jacobin_affine(out.get(), &c.p, &in));
        before.infinity = 1;
        before.x.len = 0;
        before.y.len = 0;
        EXPECT_TRUE(same_bytes(before, *out.get())) << "the words have to stay as they were";
        EXPECT_TRUE(out.guards_intact());
    }
}

TEST(EccJacobinAffine, FiniteResultClearsTheFlag) {
    const Curve &c = curve("secp192r1");
    ecc_jac_point in = jacobian(c.G.x, c.G.y, small(1));
    ecc_point out = affine_infinity();
    EXPECT_EQ(0, ecc_jacobin_affine(&out, &c.p, &in));
    EXPECT_TRUE(same_point(c.G, out));
}

TEST(EccJacobinAffine, TakesEveryZBackToThePoint) {
    for (const std::string &name : all_curve_names()) {
        const Curve &c = curve(name);
        ecc_jac_point in = with_garbage(scaled(c, multiples(c)[7], any_z(c)));
        ecc_jac_point before = in;
        ecc_point out{};
        EXPECT_EQ(0, ecc_jacobin_affine(&out, &c.p, &in));
        EXPECT_TRUE(same_point(multiples(c)[7], out)) << name;
        EXPECT_TRUE(same_bytes(before, in)) << name;
    }
}

TEST(EccJacobinAffine, WorkedExample) {
    // y^2 = x^3 + 2x + 3 modulo 97: (74, 14, 12) is 2 (3, 6) = (80, 10).
    mint p = small(97);
    ecc_jac_point in = jacobian(small(74), small(14), small(12));
    ecc_point out{};
    EXPECT_EQ(0, ecc_jacobin_affine(&out, &p, &in));
    EXPECT_TRUE(same_point(affine(small(80), small(10)), out));
}

TEST(EccInfinitePoint, ClearsLengthAndFirstWordOfZOnly) {
    ecc_jac_point point = with_garbage(jacobian(small(3), small(6), small(1)));
    ecc_jac_point expected = point;
    expected.Z.len = 0;
    expected.Z.words[0] = 0;
    EXPECT_EQ(1, ecc_infinite_point(&point));
    EXPECT_TRUE(same_bytes(expected, point));
}

TEST(EccCopyPoint, CopiesUsedWordsAndLengths) {
    ecc_jac_point in = with_garbage(jacobian(untrimmed(small(3)), zero_in_one_word(), small(0)));
    ecc_jac_point before = in;
    ecc_jac_point out{};
    EXPECT_EQ(1, ecc_copy_point(&out, &in));
    EXPECT_TRUE(same_bytes(before, in));
    EXPECT_TRUE(same_bytes(jacobian(untrimmed(small(3)), zero_in_one_word(), small(0)), out))
        << "words above the used ones are not copied";
}

TEST(EccCopyPoint, OntoItselfChangesNothing) {
    ecc_jac_point point = with_garbage(jacobian(small(3), small(6), small(2)));
    ecc_jac_point before = point;
    EXPECT_EQ(1, ecc_copy_point(&point, &point));
    EXPECT_TRUE(same_bytes(before, point));
}

TEST(EccInvertPoint, TakesYToPMinusY) {
    const Curve &c = curve("brainpoolP256r1");
    ecc_jac_point point = scaled(c, c.G, any_z(c));
    ecc_jac_point before = point;
    EXPECT_EQ(0, ecc_invert_point(&c.p, &point));
    EXPECT_TRUE(same_value(before.X, point.X));
    EXPECT_TRUE(same_value(before.Z, point.Z));
    EXPECT_TRUE(same_point(minus(c, c.G), to_affine(c, point)));
    EXPECT_EQ(0, ecc_invert_point(&c.p, &point));
    EXPECT_TRUE(same_point(before, point));
}

TEST(EccInvertPoint, ZeroYStaysAsItIs) {
    mint p = small(97);
    for (const mint &zero : {small(0), zero_in_one_word()}) {
        ecc_jac_point point = with_garbage(jacobian(small(3), zero, small(1)));
        ecc_jac_point before = point;
        EXPECT_EQ(1, ecc_invert_point(&p, &point));
        EXPECT_TRUE(same_bytes(before, point));
    }
}

TEST(EccInvertPoint, ZeroZStaysAsItIs) {
    mint p = small(97);
    for (const mint &zero : {small(0), zero_in_one_word()}) {
        ecc_jac_point point = with_garbage(jacobian(small(3), small(6), zero));
        ecc_jac_point before = point;
        EXPECT_EQ(1, ecc_invert_point(&p, &point));
        EXPECT_TRUE(same_bytes(before, point));
    }
}

TEST(EccInvertPoint, YAbovePGivesTheDifferenceAndStatusOne) {
    mint p = small(97);
    ecc_jac_point point = jacobian(small(3), small(100), small(1));
    EXPECT_EQ(1, ecc_invert_point(&p, &point));
    EXPECT_TRUE(same_point(jacobian(small(3), small(3), small(1)), point));
}

TEST(EccInvertPoint, YEqualToPGivesZero) {
    mint p = small(97);
    ecc_jac_point point = jacobian(small(3), small(97), small(1));
    EXPECT_EQ(0, ecc_invert_point(&p, &point));
    EXPECT_TRUE(same_point(jacobian(small(3), small(0), small(1)), point));
}

// p of the SM2 curve has FFFFFFFF in word 3; so has this Y, and word 2 borrows. The true word
// of the difference would be FFFFFFFF.
TEST(EccInvertPoint, KeptEqualWordsUnderBorrowGiveFffffffe) {
    const Curve &c = curve("sm2p256v1");
    ecc_jac_point point = jacobian(small(3), mint_from_hex("ffffffff000000010000000000000000"), small(1));
    EXPECT_EQ(0, ecc_invert_point(&c.p, &point));
    EXPECT_EQ("fffffffefffffffffffffffffffffffefffffffeffffffffffffffffffffffff", mint_to_hex(point.Y));
}

// The difference overwrites Y, which is the larger number here: the borrow out of word 1
// is read from a word that has just been overwritten. The true difference is ffffffffffffffff.
TEST(EccInvertPoint, KeptBorrowIsLostWhenYHasMoreWordsThanP) {
    mint p = small(1);
    ecc_jac_point point = jacobian(small(3), mint_from_hex("10000000000000000"), small(1));
    EXPECT_EQ(1, ecc_invert_point(&p, &point));
    EXPECT_EQ("1ffffffffffffffff", mint_to_hex(point.Y));
}

}  // namespace

}  // namespace zokecc_test::convert_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// y from x and a parity bit: ecc_point_unpress. Every curve over small primes is in
// unpress_tiny_test.cpp.
#include <gtest/gtest.h>
#include <zokecc/ecc.h>

#include "tests/ecc/multiples.h"
#include "tests/support/fake_entropy.h"
#include "tests/support/hard_words.h"

namespace zokecc_test::unpress_test {

namespace {

struct Equation {
    mint a, b, p;
};

Equation equation_of(const Curve &c) { return {c.a, c.b, c.p}; }

// y^2 = x^3 + 2x + 3 modulo 97, on which (3, 6) and (3, 91) lie, and (96, 0).
const Equation kTiny = {small(2), small(3), small(97)};

// The call's result; the output starts as a pattern.
struct Answer {
    int32_t status;
    mint y;
};

mint pattern() {
    mint out;
    std::memset(&out, 0xA5, sizeof out);
    return out;
}

Answer unpress(const Equation &e, const mint &x, uint32_t parity) {
    Answer out{0, pattern()};
    out.status = ecc_point_unpress(&out.y, &x, &e.a, &e.b, &e.p, parity);
    return out;
}

void expect_y(const Equation &e, const mint &x, uint32_t parity, const mint &y) {
    const Answer answer = unpress(e, x, parity);
    EXPECT_EQ(answer.status, 0);
    EXPECT_TRUE(is_value(answer.y, y)) << "parity " << parity;
}

void expect_none(const Equation &e, const mint &x, uint32_t parity) {
    const Answer answer = unpress(e, x, parity);
    EXPECT_EQ(answer.status, -1);
    EXPECT_TRUE(same_record(answer.y, pattern())) << "written although there is no root";
}

class EccPointUnpressOn : public testing::TestWithParam<std::string> {};

// Published multiples of the base point, each with both parities.
TEST_P(EccPointUnpressOn, GivesTheRootOfTheAskedParity) {
    const Curve &c = curve(GetParam());
    // p = 1 modulo 8 is slow, and every root takes the same path there.
    const uint32_t count = c.p.words[0] % 8 == 1 ? 1 : 20;
    for (uint32_t k = 1; k <= count; ++k) {
        SCOPED_TRACE(k);
        const ecc_point &P = multiples(c)[k];
        const uint32_t parity = P.y.words[0] & 1u;
        expect_y(equation_of(c), P.x, parity, P.y);
        expect_y(equation_of(c), P.x, 1 - parity, minus(c, P).y);
    }
}

INSTANTIATE_TEST_SUITE_P(Curves, EccPointUnpressOn, testing::ValuesIn(session_curve_names()),
                         curve_test_name<testing::TestParamInfo<std::string>>);

}  // namespace

TEST(EccPointUnpress, BothParitiesOnASmallCurve) {
    expect_y(kTiny, small(3), 0, small(6));
    expect_y(kTiny, small(3), 1, small(91));
}

TEST(EccPointUnpress, AnXWithoutARootIsRefused) {
    // 2^3 + 2 * 2 + 5 is 6 modulo 11, and at x = 0 the right side is b.
    expect_none({small(2), small(5), small(11)}, small(2), 0);  // p = 3 modulo 8, 6 is not a square
    expect_none({small(2), small(3), small(7)}, small(0), 0);   // p = 7 modulo 8, 3 is not a square
    expect_none({small(2), small(3), small(29)}, small(0), 1);  // p = 5 modulo 8, 3 is not a square
    expect_none(equation_of(curve("sm2p256v1")), small(2), 0);
    expect_none(equation_of(curve("sm2p256v1")), small(2), 1);
}

TEST(EccPointUnpress, KeptNonSquareGivesAMeaninglessYModuloPrimesOneModEight) {
    // 3 is not a square modulo 17; its meaningless square root is not verified.
    const Equation e = {small(2), small(3), small(17)};
    for (uint32_t parity : {0u, 1u}) {
        const Answer answer = unpress(e, small(0), parity);
        EXPECT_EQ(answer.status, 0);
        mint root;
        const mint three = small(3), p = small(17);
        ASSERT_EQ(mint_sqrt(&three, &p, &root), 1);
        ASSERT_EQ(root.len, 1u);
        EXPECT_NE(root.words[0] * root.words[0] % 17, 3u);
        EXPECT_TRUE(
            is_value(answer.y, small(root.words[0] % 2 == parity ? root.words[0] : 17 - root.words[0])));
    }
}

TEST(EccPointUnpress, RootZeroWithParityZeroGivesZero) {
    expect_y(kTiny, small(96), 0, small(0));
    expect_y({small(0), small(0), small(7)}, small(0), 0, small(0));
    expect_y({small(0), small(0), curve("secp256r1").p}, small(0), 0, small(0));
}

TEST(EccPointUnpress, KeptRootZeroWithParityOneGivesP) {
    expect_y(kTiny, small(96), 1, small(97));
    expect_y({small(0), small(0), small(7)}, small(0), 1, small(7));
    // x = 5 with the b that makes x^3 - 3x + b zero.
    const Curve &c = curve("secp256r1");
    const mint b = mint_from_hex("ffffffff00000001000000000000000000000000ffffffffffffffffffffff91");
    expect_y({c.a, b, c.p}, small(5), 1, c.p);
    expect_y({c.a, b, c.p}, small(5), 0, small(0));
}

TEST(EccPointUnpress, KeptRootZeroWithParityOneGivesPAlsoForOneModEight) {
    const Curve &c = curve("secp224r1");
    const mint b = mint_from_hex("fffffffffffffffffffffffffffffffeffffffffffffffffffffff93");
    expect_y({c.a, b, c.p}, small(5), 1, c.p);
}

TEST(EccPointUnpress, KeptZeroHasNoRootModuloPrimesFiveModEight) {
    const Equation e = {small(0), small(0), small(13)};
    expect_none(e, small(0), 0);
    expect_none(e, small(0), 1);
}

TEST(EccPointUnpress, KeptAParityOtherThanZeroAndOneNeverMatches) {
    // 36^25 is 6 modulo 97 or its negative: whichever the square root gives, the other one is returned.
    const mint square = small(36), p = small(97);
    mint root;
    ASSERT_EQ(mint_sqrt(&square, &p, &root), 1);
    for (uint32_t parity : {2u, 3u, 0x80000000u, 0xFFFFFFFFu}) {
        expect_y(kTiny, small(3), parity, small(97 - root.words[0]));
        expect_y(kTiny, small(96), parity, p);
    }
}

TEST(EccPointUnpress, KeptEqualWordsUnderABorrowReachTheOtherRoot) {
    // y^2 = b at x = 0. The square root gives 12345678 00000005 f0000000, which is even; p minus
    // it meets equal middle words under a borrow, and they give fffffffe, not ffffffff.
    const Equation e = {small(0), mint_from_hex("64a2d8b561e02106ca10b33c"),
                        mint_from_hex("c0000001000000050000001f")};
    expect_y(e, small(0), 0, mint_from_hex("1234567800000005f0000000"));
    expect_y(e, small(0), 1, mint_from_hex("adcba988fffffffe1000001f"));
}

TEST(EccPointUnpress, ModulusWithoutSquareRootsIsRefused) {
    for (uint32_t p : {0u, 2u, 8u, 96u}) {
        expect_none({small(2), small(3), small(p)}, small(3), 0);
        expect_none({small(2), small(3), small(p)}, small(3), 1);
    }
}

TEST(EccPointUnpress, SearchWithoutANonResidueIsRefused) {
    // Modulo 9 no power of a unit is -1: after 20 fixed candidates 60 are drawn, none qualifies.
    const Equation e = {small(0), small(4), small(9)};
    FakeEntropy entropy;
    for (int i = 0; i < 60; ++i) entropy.queued_numbers.push_back(small(2));
    expect_none(e, small(0), 0);
    EXPECT_EQ(entropy.number_calls, 60u);
}

TEST(EccPointUnpress, DrawnZeroEndsTheSearchForANonResidue) {
    const Equation e = {small(0), small(4), small(9)};
    FakeEntropy entropy;
    entropy.queued_numbers = {small(2), small(0), small(2)};
    expect_none(e, small(0), 1);
    EXPECT_EQ(entropy.number_calls, 2u);
}

TEST(EccPointUnpress, DrawsNothingWhereAFixedCandidateQualifies) {
    FakeEntropy entropy;
    expect_y(kTiny, small(3), 0, small(6));
    EXPECT_EQ(entropy.number_calls, 0u);
    EXPECT_EQ(entropy.calls(), 0u);
}

TEST(EccPointUnpress, OutputMayBeXOrACoefficient) {
    for (uint32_t parity : {0u, 1u}) {
        const mint want = small(parity == 0 ? 6 : 91);
        mint x = small(3), a = small(2), b = small(3);
        const mint p = small(97);
        EXPECT_EQ(ecc_point_unpress(&x, &x, &a, &b, &p, parity), 0);
        EXPECT_TRUE(is_value(x, want));
        x = small(3);
        EXPECT_EQ(ecc_point_unpress(&a, &x, &a, &b, &p, parity), 0);
        EXPECT_TRUE(is_value(a, want));
        a = small(2);
        EXPECT_EQ(ecc_point_unpress(&b, &x, &a, &b, &p, parity), 0);
        EXPECT_TRUE(is_value(b, want));
    }
}

TEST(EccPointUnpress, XAboveTheModulusIsTakenModuloIt) {
    expect_y(kTiny, small(3 + 97), 0, small(6));
    expect_y(kTiny, small(3 + 970), 1, small(91));
}

TEST(EccPointUnpress, OperandsStayAsTheyWereAndUnusedWordsAreNotRead) {
    const Curve &c = curve("sm2p256v1");
    const mint x = with_garbage(c.G.x), a = with_garbage(c.a), b = with_garbage(c.b), p = with_garbage(c.p);
    mint y;
    EXPECT_EQ(ecc_point_unpress(&y, &x, &a, &b, &p, c.G.y.words[0] & 1u), 0);
    EXPECT_TRUE(is_value(y, c.G.y));
    EXPECT_TRUE(same_record(x, with_garbage(c.G.x)));
    EXPECT_TRUE(same_record(a, with_garbage(c.a)));
    EXPECT_TRUE(same_record(b, with_garbage(c.b)));
    EXPECT_TRUE(same_record(p, with_garbage(c.p)));
}

TEST(EccPointUnpress, UntrimmedCoefficientsAreLeftUntrimmed) {
    const mint x = untrimmed(small(3)), a = untrimmed(small(2)), b = untrimmed(small(3)), p = small(97);
    mint y;
    EXPECT_EQ(ecc_point_unpress(&y, &x, &a, &b, &p, 0), 0);
    EXPECT_TRUE(is_value(y, small(6)));
    EXPECT_TRUE(same_record(a, untrimmed(small(2))));
    EXPECT_TRUE(same_record(b, untrimmed(small(3))));
}

}  // namespace zokecc_test::unpress_test

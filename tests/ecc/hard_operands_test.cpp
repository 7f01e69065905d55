// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Every routine on numbers that provoke carries and kept subtractions, compared with the model.
//
// The points are not on any curve: no routine checks. Coordinates are close to 0 and to p, have
// words in common with p, are zero in both forms; also unreduced and untrimmed ones.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "tests/ecc/multiples.h"
#include "tests/support/hard_words.h"
#include "tests/support/model_curve.h"

namespace zokecc_test::hard_operands_test {

namespace {

// The primes of the named curves, and odd moduli of nine words, of one, and at word boundaries.
std::vector<std::string> moduli() {
    std::vector<std::string> out;
    for (const std::string &name : all_curve_names()) out.push_back(mint_to_hex(curve(name).p));
    for (const char *hex :
         {"ffffffffffffffffffffffffffffffffffff"
          "ffffffffffffffffffffffffffffffffff59",
          "ffffffffffffffffffffffff", "8000000000000000000000000000001d", "100000001", "fffffffb", "65"})
        out.push_back(hex);
    return out;
}

class HardOperands : public testing::TestWithParam<std::string> {
protected:
    HardOperands() : p(mint_from_hex(GetParam())), hard(20240617) {}

    mint coordinate() {
        if (careless && hard.below(3) == 0) return hard.number(17);
        if (hard.below(12) == 0) return hard.below(2) == 0 ? small(0) : zero_in_one_word();
        return hard.reduced(p);
    }
    mint z() {
        switch (hard.below(6)) {
        case 0: return hard.below(2) == 0 ? small(0) : zero_in_one_word();
        case 1:
        case 2: return with_garbage(small(1));
        default: return coordinate();
        }
    }
    ecc_point point() {
        ecc_point out = affine(coordinate(), coordinate());
        if (hard.below(10) == 0) out.infinity = 1;
        return out;
    }
    ecc_jac_point jacobian_point() { return jacobian(coordinate(), coordinate(), z()); }

    mint product(const mint &x, const mint &y) {
        mint out{};
        mint_mod_mul(&x, &y, &p, &out);
        return out;
    }
    // A different record of P, so that additions meet equal and opposite points.
    ecc_jac_point rescaled(const ecc_jac_point &P) {
        mint s = hard.reduced(p), square = product(s, s);
        ecc_jac_point out = jacobian(product(P.X, square), product(P.Y, product(square, s)), product(P.Z, s));
        if (hard.below(3) == 0) ecc_invert_point(&p, &out);
        return out;
    }

    void affine_round(const ModelCurve &model);
    void jacobian_round(const ModelCurve &model);
    void rounds(int count);

    mint p;
    HardWords hard;
    bool careless = false;
};

void HardOperands::affine_round(const ModelCurve &model) {
    ecc_point P = point(), Q = point();
    switch (hard.below(4)) {
    case 0: Q = P; break;
    case 1: Q.x = P.x; break;
    default: break;
    }
    ecc_point out{};
    ecc_point_add(&P, &Q, &model.a, &model.b, &p, &out);
    EXPECT_TRUE(same_point(model.add(P, Q), out)) << hard.where();
    ecc_point_double(&P, &model.a, &model.b, &p, &out);
    EXPECT_TRUE(same_point(model.add(P, P), out)) << hard.where();
    EXPECT_EQ(model.holds(P) ? 0 : 1, ecc_test_point(&P, &model.a, &model.b, &p)) << hard.where();
}

void HardOperands::jacobian_round(const ModelCurve &model) {
    ecc_jac_point P = jacobian_point(), Q = hard.below(3) == 0 ? rescaled(P) : jacobian_point(), out{};
    ecc_point R = hard.below(4) == 0 ? affine(P.X, P.Y) : point(), affine_out{};
    EXPECT_EQ(1, ecc_jac_point_double(&P, &model.a, &model.b, &p, &out));
    EXPECT_TRUE(same_point(model.twice(P), out)) << hard.where();
    ecc_jac_point_add(&P, &R, &model.a, &model.b, &p, &out);
    EXPECT_TRUE(same_point(model.add(P, R), out)) << hard.where();
    EXPECT_EQ(1, ecc_jac_point_add_1(&P, &Q, &model.a, &model.b, &p, &out));
    EXPECT_TRUE(same_point(model.add(P, Q), out)) << hard.where();
    EXPECT_EQ(0, ecc_jacobin_affine(&affine_out, &p, &P));
    EXPECT_TRUE(same_point(model.to_affine(P), affine_out)) << hard.where();
    ecc_jac_point negative = P;
    ecc_invert_point(&p, &negative);
    EXPECT_TRUE(same_point(model.negate(P), negative)) << hard.where();
}

void HardOperands::rounds(int count) {
    for (int i = 0; i < count && !HasFailure(); ++i) {
        mint a = careless ? coordinate() : hard.reduced(p), b = hard.reduced(p);
        ModelCurve model(a, b, p);
        affine_round(model);
        jacobian_round(model);
    }
}

TEST_P(HardOperands, ReducedCoordinatesAgreeWithTheModel) { rounds(40); }

TEST_P(HardOperands, UnreducedAndUntrimmedCoordinatesAgreeWithTheModel) {
    careless = true;
    rounds(25);
}

TEST_P(HardOperands, UntrimmedPrimeAgreesWithTheModel) {
    p = untrimmed(p);
    for (int i = 0; i < 6 && !HasFailure(); ++i) {
        ModelCurve model(hard.reduced(p), hard.reduced(p), p);
        affine_round(model);
        jacobian_round(model);
    }
}

// Short scalars keep the structure of the point throughout, long ones lose it.
TEST_P(HardOperands, WindowAgreesWithTheModel) {
    const uint32_t words[] = {2, 8, MINT_WORDS};
    for (uint32_t i = 0; i < 40 && !HasFailure(); ++i) {
        careless = i % 8 == 7;
        ModelCurve model(hard.reduced(p), small(0), p);
        ecc_point P = point(), out{};
        mint k = i < 3 ? hard.number(words[i]) : small(hard.between(0, i % 2 == 0 ? 31 : 0xFFFFF));
        EXPECT_EQ(1, ecc_unknown_point_mul(&k, &P, &model.a, &model.b, &p, &out));
        EXPECT_TRUE(same_point(model.window(k, P), out)) << hard.where();
    }
}

// The entries need not be multiples of anything, and may be infinite, unreduced or untrimmed.
TEST_P(HardOperands, CombOverAnyEntriesAgreesWithTheModel) {
    if (p.len > 8) p.len = 8;
    std::vector<ecc_point> entries(2 * (1u << p.len) + 1);
    auto table = std::make_unique<PrecompTable>();
    for (int i = 0; i < 2; ++i) {
        careless = i == 1;
        for (ecc_point &entry : entries) entry = point();
        std::copy(entries.begin(), entries.end(), table->entry);
        ModelCurve model(hard.reduced(p), small(0), p);
        for (int j = 0; j < 3; ++j) {
            mint k = hard.untrimmed(p.len);
            ecc_point out{};
            EXPECT_EQ(0, ecc_fix_point_mul_1(&k, &entries[0], &model.a, &model.b, &p, &out, table->entry));
            EXPECT_TRUE(same_point(model.comb(k, entries), out)) << hard.where();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Moduli, HardOperands, testing::ValuesIn(moduli()),
                         [](const auto &tested) { return std::string("p").append(tested.param); });

}  // namespace

}  // namespace zokecc_test::hard_operands_test

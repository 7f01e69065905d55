// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// A second implementation of the curve layer, one line per step, on the exported mint_ calls.
//
// The order of the steps decides the results for infinity, equal points, numbers that are
// not reduced or not trimmed, and where a kept subtraction applies; so the library must match
// this model in every word of X, Y and Z, not only in the affine point. The mint_ calls
// have their own tests.
#ifndef ZOKECC_TESTS_SUPPORT_MODEL_CURVE_H
#define ZOKECC_TESTS_SUPPORT_MODEL_CURVE_H

#include <zokecc/ecc.h>

#include <cstdint>
#include <vector>

namespace zokecc_test {

class ModelCurve {
public:
    ModelCurve(const mint &a_, const mint &b_, const mint &p_) : a(a_), b(b_), p(p_) {}

    mint a, b, p;

    ecc_jac_point to_jacobian(const ecc_point &P) const;
    ecc_point to_affine(const ecc_jac_point &P) const;
    bool holds(const ecc_point &P) const;

    ecc_point add(const ecc_point &P, const ecc_point &Q) const;
    ecc_jac_point twice(const ecc_jac_point &P) const;
    ecc_jac_point add(const ecc_jac_point &P, const ecc_point &Q) const;
    // Two operands in different records; the same record is twice(P).
    ecc_jac_point add(const ecc_jac_point &P, const ecc_jac_point &Q) const;
    ecc_jac_point negate(ecc_jac_point P) const;

    // B[0]..B[2m] and the table, with as many entries as the library must write.
    std::vector<ecc_point> base_points(const ecc_point &G) const;
    std::vector<ecc_point> table(const ecc_point &G) const;

    // k of at most as many words as p.
    ecc_point comb(const mint &k, const std::vector<ecc_point> &table) const;
    ecc_point window(const mint &k, const ecc_point &P) const;

private:
    mint sum(mint x, mint y) const;
    mint difference(const mint &x, const mint &y) const;
    mint product(const mint &x, const mint &y) const;
    mint twice(const mint &x) const;
    mint shifted(const mint &x, int32_t bits) const;
    mint inverse(const mint &x) const;
    mint three_x_squared(const mint &x) const;
    ecc_point chord(const ecc_point &P, const ecc_point &Q) const;
    ecc_point tangent(const ecc_point &P) const;
};

// Zero in either form, which is how every point routine asks.
bool model_is_zero(const mint &value);
bool model_is_one(const mint &value);
unsigned model_bit_length(const mint &k);
bool model_bit(const mint &k, unsigned index);

// The bits the library counts: a zero top word of an untrimmed number adds no bits of its
// own, but the words below it count in full. This selects the window width.
unsigned model_counted_bits(const mint &k);

// The signed digits of k, least significant first, for the width selected by k's size.
struct ModelDigits {
    unsigned width;
    std::vector<int> digit;
};
ModelDigits model_digits(const mint &k);

}  // namespace zokecc_test

#endif

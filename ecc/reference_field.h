// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The prime field as the integer layer computes it: the reference that every other field must match word for
// word.
#ifndef ZOKECC_ECC_REFERENCE_FIELD_H
#define ZOKECC_ECC_REFERENCE_FIELD_H

#include <zokecc/ecc.h>

#include "base/burn.h"
#include "base/wipe.h"
#include "mint/plain.h"
#include "mint/value.h"

namespace zokecc {

// Outputs may be operands. If p is zero, most operations write nothing, so initialise every output to zero.
struct ReferenceField {
    static constexpr size_t kStackOfSums = kStackOfReferenceSums;
    static constexpr size_t kStackOfProduct = kStackOfReferenceProduct;

    using Element = mint;
    using Affine = ecc_point;
    using Jacobian = ecc_jac_point;
    // A number that is only read during a computation: refers to the caller's record.
    struct Constant {
        const mint *record;
    };

    const mint &p;

    // Accepts any number unchanged.
    static bool load(const mint &in, mint &out)
    {
        copy(in, out);
        return true;
    }
    static bool load(const mint &in, Constant &out)
    {
        out.record = &in;
        return true;
    }
    static const mint &number(const Constant &constant) { return *constant.record; }
    static bool load(const ecc_point &in, ecc_point &out)
    {
        store(in, out);
        return true;
    }
    static void store(const ecc_point &in, ecc_point &out)
    {
        out.infinity = in.infinity;
        copy(in.x, out.x);
        copy(in.y, out.y);
    }

    void add(const mint &a, const mint &b, mint &out) const { mod_add(a, b, p, out); }
    void sub(const mint &a, const mint &b, mint &out) const { mint_mod_sub(&a, &b, &p, &out); }
    // out = p - a, and 0 for 0
    void negate(const mint &a, mint &out) const { sub(p, a, out); }
    // out = p - a, which is p for 0
    void subtract_from_p(const mint &a, mint &out) const { mint_sub(&p, &a, &out); }
    void mul(const mint &a, const mint &b, mint &out) const { mint_mod_mul(&a, &b, &p, &out); }
    void square(const mint &a, mint &out) const { mul(a, a, out); }
    void twice(const mint &a, mint &out) const { mint_mod_left_move_1(&out, &a, &p); }
    // out = a * 2^bits
    void shift_left(const mint &a, int32_t bits, mint &out) const
    {
        mint_mod_left_move_n(&out, &a, &p, bits);
    }
    void invert(const mint &a, mint &out) const { mint_EEA_algo(&a, &p, &out); }
    // out = a / 2, or (a + p) / 2 if a is odd; the sum is not reduced.
    void halve(const mint &a, mint &out) const
    {
        if (is_odd(a))
            add_values(a, p, out);
        else
            copy(a, out);
        mint_right_move(&out, 1);
    }

    static void copy(const mint &a, mint &out) { mint_copy(&out, &a); }
    static bool equal(const mint &a, const mint &b) { return mint_compare(&a, &b) == 0; }
    static bool is_zero(const mint &a) { return zokecc::is_zero(a); }
    static bool is_one(const mint &a) { return zokecc::is_one(a); }
    static void clear(mint &a) { a.len = 0; }
    static void set_zero(mint &a) { zokecc::set_zero(a); }
    static void set_one(mint &a) { set_small(a, 1); }
};

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Point arithmetic on y^2 = x^3 + a x + b, as templates over the field.
//
// The order of the steps is part of the contract: it decides the results for infinity, for equal and
// opposite points, and for unreduced operands. The coefficient b is never used, and there is no shortcut
// for a = -3.
//
// Outputs may be inputs: each output coordinate is written after the last read of that coordinate.
// Independent products are adjacent, so that a processor can work on two at a time. Costs: M multiplications,
// S squarings, I inversions.
#ifndef ZOKECC_ECC_AFFINE_FORMULAS_H
#define ZOKECC_ECC_AFFINE_FORMULAS_H

#include <zokecc/ecc.h>

#include <cstdint>

#include "base/linkage.h"

namespace zokecc {

template <class Field>
using Element = typename Field::Element;
template <class Field>
using Affine = typename Field::Affine;
template <class Field>
using Jacobian = typename Field::Jacobian;

constexpr uint32_t kInfinity = 1;  // the only flag value that means infinity

inline void set_infinity(ecc_point &out)
{
    out.infinity = kInfinity;
    out.x.len = 0;
    out.y.len = 0;
}

template <class Field>
void copy_affine(const Field &f, const Affine<Field> &in, Affine<Field> &out)
{
    out.infinity = in.infinity;
    f.copy(in.x, out.x);
    f.copy(in.y, out.y);
}

template <class Field>
void set_affine_infinity(const Field &f, Affine<Field> &out)
{
    out.infinity = kInfinity;
    f.clear(out.x);
    f.clear(out.y);
}

template <class Field>
void copy_jacobian(const Field &f, const Jacobian<Field> &in, Jacobian<Field> &out)
{
    f.copy(in.X, out.X);
    f.copy(in.Y, out.Y);
    f.copy(in.Z, out.Z);
}

// (1, 1, 0)
template <class Field>
void set_jacobian_infinity(const Field &f, Jacobian<Field> &out)
{
    f.set_one(out.X);
    f.set_one(out.Y);
    f.set_zero(out.Z);
}

template <class Field>
void affine_to_jacobian(const Field &f, const Affine<Field> &in, Jacobian<Field> &out)
{
    if (in.infinity == kInfinity) {
        set_jacobian_infinity(f, out);
        return;
    }
    f.copy(in.x, out.X);
    f.copy(in.y, out.Y);
    f.set_one(out.Z);
}

// P = -P
template <class Field>
void jacobian_negate(const Field &f, Jacobian<Field> &P)
{
    if (f.is_zero(P.Z) || f.is_zero(P.Y)) return;
    f.subtract_from_p(P.Y, P.Y);
}

// 1 I + 3 M + 1 S
template <class Field>
ZOKECC_ONE_COPY void jacobian_to_affine(const Field &f, const Jacobian<Field> &in, Affine<Field> &out)
{
    if (f.is_zero(in.Z)) {
        set_affine_infinity(f, out);
        return;
    }
    Element<Field> i{};
    Element<Field> t{};
    out.infinity = 0;
    f.invert(in.Z, i);      // i = 1 / Z
    f.square(i, t);         // t = 1 / Z^2
    f.mul(in.X, t, out.x);  // x = X / Z^2
    f.mul(i, t, t);         // t = 1 / Z^3
    f.mul(in.Y, t, out.y);  // y = Y / Z^3
}

// The sum from the slope lambda of the chord or tangent through P = (x1, y1) and the point at x2. A result
// of (0, 0) counts as infinity.
template <class Field>
ZOKECC_ONE_COPY void affine_from_slope(const Field &f, const Element<Field> &lambda, const Affine<Field> &P,
                                       const Element<Field> &x2, Affine<Field> &out)
{
    Element<Field> s{};
    Element<Field> x3{};
    Element<Field> y3{};
    f.square(lambda, s);  // s = lambda^2
    f.sub(s, P.x, x3);
    f.sub(x3, x2, x3);  // x3 = lambda^2 - x1 - x2
    f.sub(P.x, x3, s);
    f.mul(lambda, s, s);
    f.sub(s, P.y, y3);  // y3 = lambda (x1 - x3) - y1
    if (f.is_zero(x3) && f.is_zero(y3)) {
        set_affine_infinity(f, out);
        return;
    }
    out.infinity = 0;
    f.copy(x3, out.x);
    f.copy(y3, out.y);
}

// Doubles P, which equals Q by value. Infinity if P's y equals p - y of Q. 1 I + 2 M + 2 S
template <class Field>
ZOKECC_OWN_FRAME void affine_tangent(const Field &f, const Affine<Field> &P, const Affine<Field> &Q,
                                     const Element<Field> &a, Affine<Field> &out)
{
    Element<Field> s{};
    Element<Field> u{};
    Element<Field> v{};
    f.negate(Q.y, s);
    if (f.equal(P.y, s)) {
        set_affine_infinity(f, out);
        return;
    }
    f.square(P.x, s);
    f.twice(s, u);
    f.add(s, u, v);
    f.add(v, a, s);  // s = 3 x1^2 + a
    f.twice(P.y, u);
    f.invert(u, v);  // v = 1 / (2 y1)
    f.mul(v, s, v);  // lambda
    affine_from_slope(f, v, P, P.x, out);
}

// out = P + Q. 1 I + 2 M + 1 S, or a doubling for equal points.
//
// KEPT: P + (-P) is not a special case. The inverse of zero is p, so the slope is 0 and the sum
// is the finite point (-2 x1, -y1). Deployed devices get the same when they build tables and verify
// signatures. Held by EccPointAdd.KeptOppositePointsGiveFinitePoint.
template <class Field>
ZOKECC_ONE_COPY void affine_add(const Field &f, const Affine<Field> &P, const Affine<Field> &Q,
                                const Element<Field> &a, Affine<Field> &out)
{
    if (P.infinity == kInfinity) {
        if (Q.infinity == kInfinity)
            set_affine_infinity(f, out);
        else
            copy_affine(f, Q, out);
        return;
    }
    if (Q.infinity == kInfinity) {
        copy_affine(f, P, out);
        return;
    }
    if (f.equal(P.x, Q.x) && f.equal(P.y, Q.y)) {
        affine_tangent(f, P, Q, a, out);
        return;
    }
    Element<Field> u{};
    Element<Field> v{};
    f.sub(Q.y, P.y, v);
    f.sub(Q.x, P.x, u);
    f.invert(u, u);
    f.mul(v, u, v);  // lambda = (y2 - y1) / (x2 - x1)
    affine_from_slope(f, v, P, Q.x, out);
}

}  // namespace zokecc

#endif

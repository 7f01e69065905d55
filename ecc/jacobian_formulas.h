// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Jacobian points: doubling, mixed and full addition, as templates over the field.
//
// ecc/affine_formulas.h states what all formulas have in common.
#ifndef ZOKECC_ECC_JACOBIAN_FORMULAS_H
#define ZOKECC_ECC_JACOBIAN_FORMULAS_H

#include "ecc/affine_formulas.h"

namespace zokecc {

// out = 2 P. 2 M + 4 S for Z = 1, otherwise 4 M + 6 S. For Z = 0 the formula yields Z3 = 0 without a special
// case.
template <class Field>
ZOKECC_ONE_COPY void jacobian_double(const Field &f, const Jacobian<Field> &P, const Element<Field> &a,
                                     Jacobian<Field> &out)
{
    Element<Field> M{};
    Element<Field> S{};
    Element<Field> t{};
    Element<Field> u{};
    const bool z_is_one = f.is_one(P.Z);
    if (!z_is_one) f.square(P.Z, u);
    f.square(P.Y, S);
    f.square(P.X, t);
    if (z_is_one) {
        f.twice(P.Y, out.Z);  // Z3 = 2 Y
    } else {
        f.mul(P.Y, P.Z, M);
        f.square(u, u);     // u = Z^4
        f.twice(M, out.Z);  // Z3 = 2 Y Z
        f.mul(u, a, u);
    }
    f.twice(t, M);
    f.add(t, M, t);                 // t = 3 X^2
    f.add(z_is_one ? a : u, t, M);  // M = 3 X^2 + a Z^4
    f.mul(P.X, S, t);
    f.square(S, u);
    f.square(M, out.X);
    f.shift_left(t, 2, S);  // S = 4 X Y^2
    f.twice(S, t);
    f.sub(out.X, t, out.X);  // X3 = M^2 - 2 S
    f.sub(S, out.X, t);
    f.mul(M, t, t);
    f.shift_left(u, 3, u);
    f.sub(t, u, out.Y);  // Y3 = M (S - X3) - 8 Y^4
}

// out = 2 Q for an affine Q.
template <class Field>
ZOKECC_OWN_FRAME void double_affine(const Field &f, const Affine<Field> &Q, const Element<Field> &a,
                                    Jacobian<Field> &out)
{
    Jacobian<Field> Q_jacobian{};
    affine_to_jacobian(f, Q, Q_jacobian);
    jacobian_double(f, Q_jacobian, a, out);
}

// The differences of Q and P in x (H) and y (r), scaled to P's denominator.
template <class Field>
void mixed_differences(const Field &f, const Jacobian<Field> &P, const Affine<Field> &Q, Element<Field> &H,
                       Element<Field> &r)
{
    f.square(P.Z, H);
    f.mul(H, P.Z, r);
    f.mul(H, Q.x, H);
    f.mul(r, Q.y, r);
    f.sub(H, P.X, H);  // H = x2 Z1^2 - X1
    f.sub(r, P.Y, r);  // r = y2 Z1^3 - Y1
}

// out = P + Q, from the differences H and r.
template <class Field>
void add_mixed_differences(const Field &f, const Jacobian<Field> &P, const Element<Field> &H,
                           const Element<Field> &r, Jacobian<Field> &out)
{
    Element<Field> V{};
    Element<Field> H3{};
    Element<Field> t{};
    f.square(H, V);
    f.mul(P.Z, H, out.Z);  // Z3 = Z1 H
    f.mul(V, H, H3);       // H3 = H^3
    f.mul(V, P.X, V);      // V = X1 H^2
    f.square(r, out.X);
    f.twice(V, t);
    f.sub(out.X, t, out.X);
    f.sub(out.X, H3, out.X);  // X3 = r^2 - 2 V - H^3
    f.mul(H3, P.Y, H3);
    f.sub(V, out.X, V);
    f.mul(V, r, V);
    f.sub(V, H3, out.Y);  // Y3 = r (V - X3) - Y1 H^3
}

// out = P + Q for an affine Q. 8 M + 3 S
template <class Field>
ZOKECC_ONE_COPY void jacobian_add_affine(const Field &f, const Jacobian<Field> &P, const Affine<Field> &Q,
                                         const Element<Field> &a, Jacobian<Field> &out)
{
    if (Q.infinity == kInfinity) {
        copy_jacobian(f, P, out);
        return;
    }
    if (f.is_zero(P.Z)) {
        affine_to_jacobian(f, Q, out);
        return;
    }
    Element<Field> H{};
    Element<Field> r{};
    mixed_differences(f, P, Q, H, r);
    if (!f.is_zero(H))
        add_mixed_differences(f, P, H, r, out);
    else if (!f.is_zero(r))
        set_jacobian_infinity(f, out);
    else
        double_affine(f, Q, a, out);
}

// Scales point's coordinates by other's denominator: U = X Z'^2, S = Y Z'^3.
template <class Field>
ZOKECC_ONE_COPY void bring_to_denominator(const Field &f, const Jacobian<Field> &point,
                                          const Jacobian<Field> &other, Element<Field> &U, Element<Field> &S)
{
    if (f.is_one(other.Z)) {
        f.copy(point.X, U);
        f.copy(point.Y, S);
        return;
    }
    f.square(other.Z, S);
    f.mul(point.X, S, U);
    f.mul(S, other.Z, S);
    f.mul(point.Y, S, S);
}

// Brings both points to the product of their denominators.
template <class Field>
void bring_to_common_denominator(const Field &f, const Jacobian<Field> &P, const Jacobian<Field> &Q,
                                 Element<Field> &U1, Element<Field> &S1, Element<Field> &U0,
                                 Element<Field> &S0)
{
    if (f.is_one(P.Z) || f.is_one(Q.Z)) {
        bring_to_denominator(f, Q, P, U0, S0);
        bring_to_denominator(f, P, Q, U1, S1);
        return;
    }
    f.square(P.Z, S0);
    f.square(Q.Z, S1);
    f.mul(Q.X, S0, U0);
    f.mul(P.X, S1, U1);
    f.mul(S0, P.Z, S0);
    f.mul(S1, Q.Z, S1);
    f.mul(Q.Y, S0, S0);
    f.mul(P.Y, S1, S1);
}

// Z3 of the full addition, (Z1 Z2) W; factors that are one are skipped.
template <class Field>
ZOKECC_OWN_FRAME void multiply_denominators(const Field &f, const Jacobian<Field> &P,
                                            const Jacobian<Field> &Q, const Element<Field> &W,
                                            Element<Field> &out)
{
    const bool p_is_one = f.is_one(P.Z);
    const bool q_is_one = f.is_one(Q.Z);
    if (p_is_one && q_is_one) {
        f.copy(W, out);
    } else if (p_is_one) {
        f.mul(Q.Z, W, out);
    } else if (q_is_one) {
        f.mul(P.Z, W, out);
    } else {
        f.mul(P.Z, Q.Z, out);
        f.mul(out, W, out);
    }
}

// Replaces u and v by their difference u - v and their sum u + v.
template <class Field>
void to_difference_and_sum(const Field &f, Element<Field> &u, Element<Field> &v, Element<Field> &spare)
{
    f.sub(u, v, spare);
    f.add(u, v, v);
    f.copy(spare, u);
}

// X3 and Y3 of the full addition, from W = U1 - U0, R = S1 - S0, T = U1 + U0 and M = S1 + S0, all of which
// are overwritten.
template <class Field>
void add_full_differences(const Field &f, Element<Field> &W, Element<Field> &R, Element<Field> &T,
                          Element<Field> &M, Jacobian<Field> &out)
{
    f.square(W, out.Y);
    f.square(R, out.X);
    f.mul(T, out.Y, T);      // T = V = (U1 + U0) W^2
    f.mul(out.Y, W, W);      // W = W^3
    f.sub(out.X, T, out.X);  // X3 = R^2 - V
    f.mul(M, W, M);
    f.twice(out.X, W);
    f.sub(T, W, W);
    f.mul(W, R, W);
    f.sub(W, M, W);
    f.halve(W, out.Y);  // Y3 = (R (V - 2 X3) - M W^3) / 2
}

// out = P + Q for two different records, neither at infinity. 12 M + 4 S, fewer if a Z is one. To save stack,
// out's coordinates are temporaries once P and Q have been read.
template <class Field>
ZOKECC_OWN_FRAME void jacobian_add_finite(const Field &f, const Jacobian<Field> &P, const Jacobian<Field> &Q,
                                          Jacobian<Field> &out)
{
    Element<Field> U0{};
    Element<Field> S0{};
    Element<Field> U1{};
    Element<Field> S1{};
    bring_to_common_denominator(f, P, Q, U1, S1, U0, S0);
    to_difference_and_sum(f, U1, U0, out.X);
    to_difference_and_sum(f, S1, S0, out.Y);
    multiply_denominators(f, P, Q, U1, out.Z);
    add_full_differences(f, U1, S1, U0, S0, out);
}

// out = P + Q
//
// KEPT: it doubles only if both are the same record. Equal points in two records go through the
// formula with W = 0 and give Z3 = 0, infinity. Scalar multiplication by wNAF ends that way for a few
// scalars just below the order, and deployed devices get infinity. Held by
// EccJacPointAdd1.KeptEqualPointsInTwoRecordsGiveInfinity.
template <class Field>
ZOKECC_ONE_COPY void jacobian_add(const Field &f, const Jacobian<Field> &P, const Jacobian<Field> &Q,
                                  const Element<Field> &a, Jacobian<Field> &out)
{
    if (&P == &Q)
        jacobian_double(f, P, a, out);
    else if (f.is_zero(P.Z))
        copy_jacobian(f, Q, out);
    else if (f.is_zero(Q.Z))
        copy_jacobian(f, P, out);
    else
        jacobian_add_finite(f, P, Q, out);
}

}  // namespace zokecc

#endif

// Point arithmetic on y^2 = x^3 + a x + b, as templates over the field.
//
// The order of the steps is part of what the library promises: it decides what comes out for
// infinity, for equal and for opposite points, and for operands that are not reduced. The
// coefficient b is never used, and there is no shortcut for a = -3.
//
// Outputs may be inputs: each output coordinate is written after its namesake was last read.
// Costs: M products (squares included), I inversions.
#ifndef ZOKECC_ECC_POINT_FORMULAS_H
#define ZOKECC_ECC_POINT_FORMULAS_H

#include <zokecc/ecc.h>

#include <cstdint>

#include "base/linkage.h"

namespace zokecc {

constexpr uint32_t kInfinity = 1;  // the only flag value that means infinity

inline void set_infinity(ecc_point &out)
{
    out.infinity = kInfinity;
    out.x.len = 0;
    out.y.len = 0;
}

template <class Field>
void copy_affine(const Field &f, const typename Field::Affine &in, typename Field::Affine &out)
{
    out.infinity = in.infinity;
    f.copy(in.x, out.x);
    f.copy(in.y, out.y);
}

template <class Field>
void set_affine_infinity(const Field &f, typename Field::Affine &out)
{
    out.infinity = kInfinity;
    f.clear(out.x);
    f.clear(out.y);
}

template <class Field>
void copy_jacobian(const Field &f, const typename Field::Jacobian &in, typename Field::Jacobian &out)
{
    f.copy(in.X, out.X);
    f.copy(in.Y, out.Y);
    f.copy(in.Z, out.Z);
}

// (1, 1, 0)
template <class Field>
void set_jacobian_infinity(const Field &f, typename Field::Jacobian &out)
{
    f.set_one(out.X);
    f.set_one(out.Y);
    f.set_zero(out.Z);
}

template <class Field>
void affine_to_jacobian(const Field &f, const typename Field::Affine &in, typename Field::Jacobian &out)
{
    if (in.infinity == kInfinity) {
        set_jacobian_infinity(f, out);
        return;
    }
    f.copy(in.x, out.X);
    f.copy(in.y, out.Y);
    f.set_one(out.Z);
}

// P becomes -P.
template <class Field>
void jacobian_negate(const Field &f, typename Field::Jacobian &P)
{
    if (f.is_zero(P.Z) || f.is_zero(P.Y)) return;
    f.subtract_from_p(P.Y, P.Y);
}

// 1 I + 4 M
template <class Field>
ZOKECC_OUT_OF_LINE void jacobian_to_affine(const Field &f, const typename Field::Jacobian &in,
                                           typename Field::Affine &out)
{
    if (f.is_zero(in.Z)) {
        set_affine_infinity(f, out);
        return;
    }
    typename Field::Element i{};
    typename Field::Element t{};
    out.infinity = 0;
    f.invert(in.Z, i);      // i = 1 / Z
    f.mul(i, i, t);         // t = 1 / Z^2
    f.mul(in.X, t, out.x);  // x = X / Z^2
    f.mul(i, t, t);         // t = 1 / Z^3
    f.mul(in.Y, t, out.y);  // y = Y / Z^3
}

// The chord or tangent of slope lambda through (x1, y1), meeting the curve at x2 as well. A
// result of (0, 0) counts as infinity.
template <class Field>
ZOKECC_OUT_OF_LINE void affine_from_slope(const Field &f, const typename Field::Element &lambda,
                                          const typename Field::Affine &P, const typename Field::Element &x2,
                                          typename Field::Affine &out)
{
    typename Field::Element s{};
    typename Field::Element x3{};
    typename Field::Element y3{};
    f.mul(lambda, lambda, s);  // s = lambda^2
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

// The doubling, for P = Q by value; P's y is compared with p - y of Q. 1 I + 4 M
template <class Field>
ZOKECC_OUT_OF_LINE void affine_tangent(const Field &f, const typename Field::Affine &P,
                                       const typename Field::Affine &Q, const typename Field::Element &a,
                                       typename Field::Affine &out)
{
    typename Field::Element s{};
    typename Field::Element u{};
    typename Field::Element v{};
    f.negate(Q.y, s);
    if (f.equal(P.y, s)) {
        set_affine_infinity(f, out);
        return;
    }
    f.mul(P.x, P.x, s);
    f.twice(s, u);
    f.add(s, u, v);
    f.add(v, a, s);  // s = 3 x1^2 + a
    f.twice(P.y, u);
    f.invert(u, v);  // v = 1 / (2 y1)
    f.mul(v, s, v);  // lambda
    affine_from_slope(f, v, P, P.x, out);
}

// The sum of two affine points. 1 I + 3 M, or a doubling for equal points.
//
// KEPT: P + (-P) has no case of its own. The inverse of zero is p, so the slope is 0 and the sum
// is the finite point (-2 x1, -y1). Table building and signature checks on deployed devices
// meet it the same way. Held by EccPointAdd.KeptOppositePointsGiveFinitePoint.
template <class Field>
ZOKECC_OUT_OF_LINE void affine_add(const Field &f, const typename Field::Affine &P,
                                   const typename Field::Affine &Q, const typename Field::Element &a,
                                   typename Field::Affine &out)
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
    typename Field::Element u{};
    typename Field::Element v{};
    f.sub(Q.y, P.y, v);
    f.sub(Q.x, P.x, u);
    f.invert(u, u);
    f.mul(v, u, v);  // lambda = (y2 - y1) / (x2 - x1)
    affine_from_slope(f, v, P, Q.x, out);
}

// 2 P. 6 M for Z = 1, else 10 M. For Z = 0 the formula gives Z3 = 0 by itself.
template <class Field>
ZOKECC_OUT_OF_LINE void jacobian_double(const Field &f, const typename Field::Jacobian &P,
                                        const typename Field::Element &a, typename Field::Jacobian &out)
{
    typename Field::Element M{};
    typename Field::Element S{};
    typename Field::Element t{};
    typename Field::Element u{};
    const bool z_is_one = f.is_one(P.Z);
    f.mul(P.X, P.X, t);
    f.twice(t, u);
    f.add(t, u, t);  // t = 3 X^2
    if (z_is_one) {
        f.add(t, a, M);       // M = 3 X^2 + a
        f.twice(P.Y, out.Z);  // Z3 = 2 Y
    } else {
        f.mul(P.Z, P.Z, u);
        f.mul(u, u, u);
        f.mul(u, a, u);
        f.add(u, t, M);  // M = 3 X^2 + a Z^4
        f.mul(P.Y, P.Z, t);
        f.twice(t, out.Z);  // Z3 = 2 Y Z
    }
    f.mul(P.Y, P.Y, u);  // u = Y^2
    f.mul(P.X, u, S);
    f.shift_left(S, 2, S);  // S = 4 X Y^2
    f.twice(S, t);
    f.mul(u, u, u);
    f.shift_left(u, 3, u);  // u = 8 Y^4
    f.mul(M, M, out.X);
    f.sub(out.X, t, out.X);  // X3 = M^2 - 2 S
    f.sub(S, out.X, t);
    f.mul(M, t, t);
    f.sub(t, u, out.Y);  // Y3 = M (S - X3) - 8 Y^4
}

// 2 Q for an affine Q.
template <class Field>
ZOKECC_OUT_OF_LINE void double_affine(const Field &f, const typename Field::Affine &Q,
                                      const typename Field::Element &a, typename Field::Jacobian &out)
{
    typename Field::Jacobian Q_jacobian{};
    affine_to_jacobian(f, Q, Q_jacobian);
    jacobian_double(f, Q_jacobian, a, out);
}

// P + Q for an affine Q. 11 M
template <class Field>
ZOKECC_OUT_OF_LINE void jacobian_add_affine(const Field &f, const typename Field::Jacobian &P,
                                            const typename Field::Affine &Q, const typename Field::Element &a,
                                            typename Field::Jacobian &out)
{
    if (Q.infinity == kInfinity) {
        copy_jacobian(f, P, out);
        return;
    }
    if (f.is_zero(P.Z)) {
        affine_to_jacobian(f, Q, out);
        return;
    }
    typename Field::Element A{};
    typename Field::Element B{};
    typename Field::Element C{};
    typename Field::Element D{};
    f.mul(P.Z, P.Z, A);
    f.mul(A, P.Z, B);
    f.mul(A, Q.x, A);
    f.mul(B, Q.y, B);
    f.sub(A, P.X, A);  // H = x2 Z1^2 - X1
    f.sub(B, P.Y, B);  // r = y2 Z1^3 - Y1
    if (f.is_zero(A)) {
        if (!f.is_zero(B)) {
            set_jacobian_infinity(f, out);
            return;
        }
        double_affine(f, Q, a, out);
        return;
    }
    f.mul(P.Z, A, out.Z);  // Z3 = Z1 H
    f.mul(A, A, C);
    f.mul(C, A, D);    // D = H^3
    f.mul(C, P.X, C);  // C = X1 H^2
    f.twice(C, A);
    f.mul(B, B, out.X);
    f.sub(out.X, A, out.X);
    f.sub(out.X, D, out.X);  // X3 = r^2 - 2 X1 H^2 - H^3
    f.sub(C, out.X, C);
    f.mul(C, B, C);
    f.mul(D, P.Y, D);
    f.sub(C, D, out.Y);  // Y3 = r (X1 H^2 - X3) - Y1 H^3
}

// Coordinates of point over the denominator of other: U = X Z'^2, S = Y Z'^3.
template <class Field>
ZOKECC_OUT_OF_LINE void bring_to_denominator(const Field &f, const typename Field::Jacobian &point,
                                             const typename Field::Jacobian &other,
                                             typename Field::Element &U, typename Field::Element &S)
{
    if (f.is_one(other.Z)) {
        f.copy(point.X, U);
        f.copy(point.Y, S);
        return;
    }
    typename Field::Element t{};
    f.mul(other.Z, other.Z, t);
    f.mul(point.X, t, U);
    f.mul(t, other.Z, t);
    f.mul(point.Y, t, S);
}

// Z3 of the full addition: (Z1 Z2) W without the factors that are one.
template <class Field>
ZOKECC_OUT_OF_LINE void multiply_denominators(const Field &f, const typename Field::Jacobian &P,
                                              const typename Field::Jacobian &Q,
                                              const typename Field::Element &W, typename Field::Element &out)
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

// P + Q for two records and neither at infinity. 16 M, fewer where a Z is one. Coordinates of out
// serve as soon as those of P and Q are read, since stack is scarce.
template <class Field>
ZOKECC_OUT_OF_LINE void jacobian_add_finite(const Field &f, const typename Field::Jacobian &P,
                                            const typename Field::Jacobian &Q, typename Field::Jacobian &out)
{
    typename Field::Element U0{};
    typename Field::Element S0{};
    typename Field::Element U1{};
    typename Field::Element S1{};
    bring_to_denominator(f, Q, P, U0, S0);
    bring_to_denominator(f, P, Q, U1, S1);
    f.sub(U1, U0, out.X);
    f.sub(S1, S0, out.Y);
    f.add(U1, U0, U1);
    f.add(S1, S0, S1);
    f.copy(out.X, U0);
    f.copy(out.Y, S0);
    typename Field::Element &W = U0;  // U1 - U0
    typename Field::Element &R = S0;  // S1 - S0
    typename Field::Element &T = U1;  // U1 + U0
    typename Field::Element &M = S1;  // S1 + S0
    multiply_denominators(f, P, Q, W, out.Z);
    typename Field::Element &V = out.Y;
    f.mul(W, W, out.X);
    f.mul(T, out.X, V);  // V = T W^2
    f.mul(out.X, W, W);  // W^3
    f.mul(R, R, out.X);
    f.sub(out.X, V, out.X);  // X3 = R^2 - T W^2
    typename Field::Element &t = U1;
    f.twice(out.X, t);
    f.sub(V, t, t);
    f.mul(t, R, t);
    f.mul(M, W, M);
    f.sub(t, M, t);
    f.halve(t, out.Y);  // Y3 = (R (V - 2 X3) - M W^3) / 2
}

// P + Q.
//
// KEPT: only the same record doubles. Equal points in two records run through the formula with
// W = 0 and give Z3 = 0, infinity. The signed-window product ends there for a few scalars just
// below the order, and deployed devices see infinity. Held by
// EccJacPointAdd1.KeptEqualPointsInTwoRecordsGiveInfinity.
template <class Field>
ZOKECC_OUT_OF_LINE void jacobian_add(const Field &f, const typename Field::Jacobian &P,
                                     const typename Field::Jacobian &Q, const typename Field::Element &a,
                                     typename Field::Jacobian &out)
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

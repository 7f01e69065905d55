// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Points for scalar multiplication with secret scalars: additions without exceptions.
//
// Additions follow J. Renes, C. Costello and L. Batina, "Complete addition formulas for prime order
// elliptic curves" (2016), algorithm 2, in homogeneous coordinates (X : Y : Z). They hold for all points,
// equal ones and infinity included, except two whose difference has order 2: the result is then (0, 0, 0),
// and every later sum with it is, too. A curve of odd order has no such points.
//
// Doublings are in Jacobian coordinates, where they cost less and have no exceptions. Infinity is
// (t^2, t^3, 0) there. Additions cost less there, too, but have exceptions: see running_sum.h.
#ifndef ZOKECC_CT_POINT_H
#define ZOKECC_CT_POINT_H

#include "ct/field.h"

namespace zokecc {

// How to multiply by a.
enum class CoefficientA : uint8_t { zero, minus_three, any };

template <class Field>
struct ProjectivePoint {
    typename Field::Element X, Y, Z;
};

// y^2 = x^3 + a x + b over the field.
template <class Field>
class SecretCurve {
public:
    using Element = typename Field::Element;
    using Affine = typename Field::Affine;
    using Jacobian = typename Field::Jacobian;
    using Point = ProjectivePoint<Field>;

    // True if the field serves p, and a and b are below p.
    static bool serves(const mint &p, const mint &a, const mint &b)
    {
        return Field::serves(p) && is_number(a, p) && is_number(b, p);
    }

    SecretCurve(const mint &p, const mint &a, const mint &b) : f(p)
    {
        read(a, a_);
        read(b, b_);
        f.add(b_, b_, b3_);
        f.add(b3_, b_, b3_);
        Element minus_three;
        f.set_small(3, minus_three);
        f.negate(minus_three, minus_three);
        kind_ = CoefficientA::any;
        if (f.equal(a_, minus_three) != 0) kind_ = CoefficientA::minus_three;
        if (f.is_zero(a_) != 0) kind_ = CoefficientA::zero;
    }

    // Reads a trimmed number below p.
    void read(const mint &in, Element &out) const
    {
        uint32_t words[kMaxSecretWords + 1] = {};
        std::memcpy(words, in.words, 4 * used_words(in));
        f.read_words(words, out);
    }

    void set_infinity(Point &out) const
    {
        f.set_zero(out.X);
        f.set_one(out.Y);
        f.set_zero(out.Z);
    }
    void set(const Affine &in, Point &out) const
    {
        out.X = in.x;
        out.Y = in.y;
        f.set_one(out.Z);
    }
    // Negates the point with this y where the mask is all ones.
    void negate(Mask mask, Element &y) const
    {
        Element negative;
        f.negate(y, negative);
        f.move(mask, negative, y);
    }
    void move(Mask mask, const Point &in, Point &out) const
    {
        f.move(mask, in.X, out.X);
        f.move(mask, in.Y, out.Y);
        f.move(mask, in.Z, out.Z);
    }

    Mask is_on_curve(const Affine &point) const
    {
        Element left;
        Element right;
        f.square(point.y, left);
        f.square(point.x, right);
        f.add(right, a_, right);
        f.mul(right, point.x, right);
        f.add(right, b_, right);
        return f.equal(left, right);
    }

    // out = P + Q; out may be P.
    ZOKECC_ONE_COPY void add(const Point &P, const Affine &Q, Point &out) const
    {
        Element t0, t1, t2, t3, t4, t5;  // NOLINT(readability-isolate-declaration): as the paper names them
        f.mul(P.X, Q.x, t0);
        f.mul(P.Y, Q.y, t1);
        f.add(P.X, P.Y, t3);
        f.add(Q.x, Q.y, t4);
        f.mul(t3, t4, t3);
        f.sub(t3, t0, t3);
        f.sub(t3, t1, t3);  // X1 y2 + x2 Y1
        f.mul(Q.x, P.Z, t4);
        f.add(t4, P.X, t4);
        f.mul(Q.y, P.Z, t5);
        f.add(t5, P.Y, t5);
        t2 = P.Z;
        // t0 = X1 x2, t1 = Y1 y2, t4 = X1 + x2 Z1, t5 = Y1 + y2 Z1
        multiply_by_a(t4, out.Z);
        f.mul(b3_, t2, out.X);
        f.add(out.X, out.Z, out.Z);
        f.sub(t1, out.Z, out.X);
        f.add(t1, out.Z, out.Z);
        f.mul(out.X, out.Z, out.Y);
        f.twice(t0, t1);
        f.add(t1, t0, t1);
        multiply_by_a(t2, t2);
        f.mul(b3_, t4, t4);
        f.add(t1, t2, t1);
        f.sub(t0, t2, t2);
        multiply_by_a(t2, t2);
        f.add(t4, t2, t4);
        f.mul(t1, t4, t0);
        f.add(out.Y, t0, out.Y);
        f.mul(t5, t4, t0);
        f.mul(t3, out.X, out.X);
        f.sub(out.X, t0, out.X);
        f.mul(t3, t1, t0);
        f.mul(t5, out.Z, out.Z);
        f.add(out.Z, t0, out.Z);
    }
    // point = 2^times point.
    void double_times(unsigned times, Point &point) const
    {
        Jacobian jacobian;
        to_jacobian(point, jacobian);
        double_times(times, jacobian);
        from_jacobian(jacobian, point);
    }
    void double_times(unsigned times, Jacobian &point) const
    {
        for (; times > 0; --times) double_jacobian(point);
    }

    // (X, Y, Z) to (X Z : Y : Z^3)
    ZOKECC_ONE_COPY void from_jacobian(const Jacobian &in, Point &out) const
    {
        f.mul(in.X, in.Z, out.X);
        out.Y = in.Y;
        f.square(in.Z, out.Z);
        f.mul(out.Z, in.Z, out.Z);
    }

    // Returns zero, with meaningless coordinates in out, if the point has no affine form.
    Mask to_affine(const Point &in, Affine &out) const
    {
        Element inverse;
        const Mask found = f.invert(in.Z, inverse);
        f.mul(in.X, inverse, out.x);
        f.mul(in.Y, inverse, out.y);
        return found;
    }

    const Field f;  // NOLINT(misc-non-private-member-variables-in-classes): the curve's field

private:
    static bool is_number(const mint &value, const mint &p)
    {
        return used_words(value) <= kMaxSecretWords && mint_compare(&value, &p) < 0;
    }

    ZOKECC_ONE_COPY void multiply_by_a(const Element &in, Element &out) const
    {
        if (kind_ == CoefficientA::any) {
            f.mul(in, a_, out);
        } else if (kind_ == CoefficientA::zero) {
            f.set_zero(out);
        } else {
            Element triple;
            f.twice(in, triple);
            f.add(triple, in, triple);
            f.negate(triple, out);
        }
    }

    // (X : Y : Z) to (X Z, Y Z^2, Z), infinity (0 : Y : 0) to (1, 1, 0), and (0 : 0 : 0) to (0, 0, 0).
    ZOKECC_ONE_COPY void to_jacobian(const Point &in, Jacobian &out) const
    {
        Element one;
        f.set_one(one);
        const Mask infinite = f.is_zero(in.Z) & ~f.is_zero(in.Y);
        out.Z = in.Z;
        f.mul(in.X, in.Z, out.X);
        f.square(in.Z, out.Y);
        f.mul(in.Y, out.Y, out.Y);
        f.move(infinite, one, out.X);
        f.move(infinite, one, out.Y);
    }

    ZOKECC_ONE_COPY void double_jacobian(Jacobian &point) const
    {
        Element slope;
        Element t;
        f.square(point.Z, t);
        if (kind_ == CoefficientA::minus_three) {
            f.sub(point.X, t, slope);
            f.add(point.X, t, t);
            f.mul(slope, t, slope);  // X^2 - Z^4
        } else {
            f.square(point.X, slope);
        }
        Element sum;
        f.twice(slope, sum);
        f.add(slope, sum, slope);
        if (kind_ == CoefficientA::any) {
            f.square(t, t);
            f.mul(t, a_, t);
            f.add(slope, t, slope);  // 3 X^2 + a Z^4
        }
        f.twice(point.Y, t);
        f.mul(t, point.Z, point.Z);  // 2 Y Z
        f.square(t, t);              // 4 Y^2
        f.mul(t, point.X, sum);      // 4 X Y^2
        f.square(t, t);
        f.halve(t, t);  // 8 Y^4
        f.square(slope, point.X);
        f.sub(point.X, sum, point.X);
        f.sub(point.X, sum, point.X);
        f.sub(sum, point.X, sum);
        f.mul(slope, sum, sum);
        f.sub(sum, t, point.Y);
    }

    Element a_, b_, b3_;
    CoefficientA kind_;
};

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// A product of a point as it grows: a sum of multiples, in Jacobian coordinates.
//
// Sums of Jacobian points (ecc/jacobian_formulas.h) cost less than complete ones, and are right for opposite
// points, but not for equal ones: all coordinates are zero then, and stay so. Nor are they for infinity, but
// nothing needs them there: what is infinite is known by masks, not by its coordinates. The products of
// multiples.h are such that no sum meets its like; a point that breaks what they rely on, one of small order,
// ends in a point without coordinates, which is refused.
#ifndef ZOKECC_CT_RUNNING_SUM_H
#define ZOKECC_CT_RUNNING_SUM_H

#include "ct/point.h"
#include "ecc/jacobian_formulas.h"

namespace zokecc {

// As long as there is nothing the sum is (0, 0, factor): the differences H and r from it to Q are then Q
// itself, over that denominator. So the factor, which is not zero, blinds the coordinates.
template <class Field>
class RunningSum {
public:
    using Element = typename Field::Element;

    RunningSum(const SecretCurve<Field> &curve, const Element &factor) : curve_(curve), factor_(factor)
    {
        curve_.f.set_zero(sum_->X);
        curve_.f.set_zero(sum_->Y);
        sum_->Z = factor_;
    }

    void double_times(unsigned times)
    {
        curve_.double_times(times, *sum_);
        Element zero;
        curve_.f.set_zero(zero);
        curve_.f.move(is_nothing_, zero, sum_->X);
        curve_.f.move(is_nothing_, zero, sum_->Y);
        curve_.f.move(is_nothing_, factor_, sum_->Z);
    }

    // Adds Q where the mask is all ones.
    ZOKECC_ONE_COPY void add(Mask mask, const typename Field::Affine &Q)
    {
        const Field &f = curve_.f;
        Element H, r;  // NOLINT(readability-isolate-declaration): as the formulas name them
        typename Field::Jacobian next;
        mixed_differences(f, *sum_, Q, H, r);
        add_mixed_differences(f, *sum_, H, r, next);
        f.move(is_nothing_, H, next.X);
        f.move(is_nothing_, r, next.Y);
        f.move(is_nothing_, factor_, next.Z);
        f.move(mask, next.X, sum_->X);
        f.move(mask, next.Y, sum_->Y);
        f.move(mask, next.Z, sum_->Z);
        is_nothing_ &= ~mask;
    }

    // In homogeneous coordinates.
    void store(ProjectivePoint<Field> &out)
    {
        Element zero;
        curve_.f.set_zero(zero);
        curve_.from_jacobian(*sum_, out);
        curve_.f.move(is_nothing_, factor_, out.Y);
        curve_.f.move(is_nothing_, zero, out.Z);
    }

private:
    const SecretCurve<Field> &curve_;
    Wiping<typename Field::Jacobian> sum_;
    const Element &factor_;
    Mask is_nothing_ = ~Mask{0};
};

}  // namespace zokecc

#endif

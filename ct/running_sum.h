// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The accumulator of a scalar multiplication, in Jacobian coordinates.
//
// Jacobian additions (ecc/jacobian_formulas.h) cost less than complete ones and are correct for opposite
// points, but not for equal ones: all coordinates become zero, and stay so. They are not correct for infinity
// either, but never have to be: masks, not coordinates, record that a sum is infinite. The algorithms of
// multiples.h never add two equal points, unless the point has a small order; its product then ends up
// without coordinates and is refused.
#ifndef ZOKECC_CT_RUNNING_SUM_H
#define ZOKECC_CT_RUNNING_SUM_H

#include "ct/point.h"
#include "ecc/jacobian_formulas.h"

namespace zokecc {

// An empty sum is (0, 0, factor): its differences H and r to Q are then Q itself, scaled to that denominator.
// So the nonzero factor blinds the coordinates.
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

    // out = the sum in homogeneous coordinates.
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

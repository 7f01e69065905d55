// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Conversions between affine and Jacobian points, and other calls with little or no arithmetic.
#include "ecc/points.h"

using namespace zokecc;

namespace {

// For functions that only copy.
constexpr mint kZero{};
constexpr ReferenceField kNoModulus{kZero};

}  // namespace

int32_t ecc_affine_jacobin(ecc_jac_point *out, const ecc_point *in)
{
    affine_to_jacobian(kNoModulus, *in, *out);
    return 0;
}

int32_t ecc_jacobin_affine(ecc_point *out, const mint *p, const ecc_jac_point *in)
{
    jacobian_to_affine(ReferenceField{*p}, *in, *out);
    return 0;
}

int32_t ecc_infinite_point(ecc_jac_point *point)
{
    set_zero(point->Z);
    return 1;
}

int32_t ecc_invert_point(const mint *p, ecc_jac_point *point)
{
    if (is_zero(point->Z) || is_zero(point->Y)) return 1;
    return mint_sub(p, &point->Y, &point->Y);
}

int32_t ecc_copy_point(ecc_jac_point *out, const ecc_jac_point *in)
{
    copy_jacobian(kNoModulus, *in, *out);
    return 1;
}

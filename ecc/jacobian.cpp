// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Jacobian points: doubling, mixed and full addition.
#include "ecc/points.h"

using namespace zokecc;

int32_t ecc_jac_point_double(const ecc_jac_point *P, const mint *a, const mint *, const mint *p,
                             ecc_jac_point *out)
{
    jacobian_double(ReferenceField{*p}, *P, *a, *out);
    return 1;
}

int32_t ecc_jac_point_add(const ecc_jac_point *P, const ecc_point *Q, const mint *a, const mint *,
                          const mint *p, ecc_jac_point *out)
{
    jacobian_add_affine(ReferenceField{*p}, *P, *Q, *a, *out);
    return 0;
}

int32_t ecc_jac_point_add_1(const ecc_jac_point *P, const ecc_jac_point *Q, const mint *a, const mint *,
                            const mint *p, ecc_jac_point *out)
{
    jacobian_add(ReferenceField{*p}, *P, *Q, *a, *out);
    return 1;
}

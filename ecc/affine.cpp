// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Affine points: addition, doubling and the curve equation.
#include "ecc/curve_numbers.h"
#include "ecc/points.h"

using namespace zokecc;

int32_t ecc_point_add(const ecc_point *P, const ecc_point *Q, const mint *a, const mint *, const mint *p,
                      ecc_point *out)
{
    affine_add(ReferenceField{*p}, *P, *Q, *a, *out);
    return 0;
}

int32_t ecc_point_double(const ecc_point *P, const mint *a, const mint *b, const mint *p, ecc_point *out)
{
    return ecc_point_add(P, P, a, b, p, out);
}

namespace zokecc {

void curve_right_side(const mint &x, const mint &a, const mint &b, const mint &p, mint &out)
{
    const ReferenceField f{p};
    mint t{};
    mint sum{};
    f.mul(x, x, t);
    f.mul(t, x, sum);  // x^3
    f.mul(a, x, t);
    f.add(sum, t, sum);  // x^3 + a x
    f.add(sum, b, sum);  // x^3 + a x + b
    out = sum;
}

}  // namespace zokecc

// The infinity flag is ignored, and coordinates of p and above are accepted.
int32_t ecc_test_point(const ecc_point *P, const mint *a, const mint *b, const mint *p)
{
    mint left{};
    mint right{};
    mint_mod_mul(&P->y, &P->y, p, &left);
    curve_right_side(P->x, *a, *b, *p, right);
    return mint_compare(&left, &right) != 0 ? 1 : 0;
}

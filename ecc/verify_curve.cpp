// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Checks a whole curve record.
#include <zokecc/ecc.h>

#include "base/config.h"
#include "ecc/affine_formulas.h"
#include "ecc/curve_numbers.h"
#include "mint/value.h"

using namespace zokecc;

// Does not check that p and n are prime or that the discriminant is nonzero.
//
// KEPT: without memory n = 0 passes, too, except in the hardened build. Held by
// ZokCurveVerify.KeptFailedDigitBufferOfOrderZeroIsNotSeen.
//
// KEPT: n = 0 makes n G infinite and passes. Held by ZokCurveVerify.KeptOrderZeroIsAccepted.
uint32_t ZOK_CurveVerify(uint32_t type, const CurvePara *record)
{
    const uint32_t L = session_byte_length(type);
    if (record == nullptr || L == 0) return ZOK_ERR_ARGUMENT;
    mint p;
    mint a;
    mint b;
    mint n;
    ecc_point G{};
    octetstring_to_mint(record->p, L, &p);
    octetstring_to_mint(record->a, L, &a);
    octetstring_to_mint(record->b, L, &b);
    octetstring_to_mint(record->n, L, &n);
    octetstring_to_mint(record->Gx, L, &G.x);
    octetstring_to_mint(record->Gy, L, &G.y);

    mint left{};
    mint right{};
    mint_mod_mul(&G.y, &G.y, &p, &left);
    curve_right_side(G.x, a, b, p, right);
    if (mint_compare(&left, &right) != 0 || is_zero(left) || is_zero(right)) return ZOK_ERR_INTERNAL;
    ecc_point product{};
    const int32_t status = ecc_unknown_point_mul(&n, &G, &a, &b, &p, &product);
    if (status < 0 && kHardened) return ZOK_ERR_INTERNAL;
    return product.infinity == kInfinity ? ZOK_OK : ZOK_ERR_INTERNAL;
}

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "schemes/records.h"

#include "mint/value.h"

namespace zokecc {

bool curve_is_installed() { return !is_zero(global_curve.n) && !is_zero(global_curve.p); }

CurveView global_view() { return view_of(global_curve); }

bool is_readable(const ecc_scalar *scalar)
{
    if (scalar == nullptr || scalar->length > kMintBytes) return false;
    return scalar->bytes != nullptr || scalar->length == 0;
}

void write_pair(const mint &first, const mint &second, ecc_point_bytes &record)
{
    const uint32_t L = global_curve.byte_len;
    mint_to_fixedlen_os(&first, L, kPointFieldBytes, &record.length, record.x);
    mint_to_fixedlen_os(&second, L, kPointFieldBytes, &record.length, record.y);
}

}  // namespace zokecc

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The byte form of a point on the process-wide curve.
#ifndef ZOKECC_ECC_POINT_BYTES_H
#define ZOKECC_ECC_POINT_BYTES_H

#include <zokecc/ecc.h>

namespace zokecc {

constexpr uint32_t kPointFieldBytes = 65;

// True if the record's length does not exceed its fields.
inline bool fits_field(const ecc_point_bytes &point) { return point.length <= kPointFieldBytes; }

// out = a finite point from the first length bytes of both fields.
inline void read_point(const ecc_point_bytes &bytes, ecc_point &out)
{
    out.infinity = 0;
    octetstring_to_mint(bytes.x, bytes.length, &out.x);
    octetstring_to_mint(bytes.y, bytes.length, &out.y);
}

}  // namespace zokecc

#endif

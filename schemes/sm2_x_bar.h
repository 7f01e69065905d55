// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// x-bar of a point on the process-wide curve.
#ifndef ZOKECC_SCHEMES_SM2_X_BAR_H
#define ZOKECC_SCHEMES_SM2_X_BAR_H

#include <zokecc/ecc.h>

#include "base/linkage.h"

// 2^w + (x mod 2^w) of the point's first coordinate, big-endian, at the end of the curve's L
// bytes of out. The bytes before it are not written: the caller clears them. Returns 0.
ZOKECC_INTERNAL int32_t sm2_x_bar(const ecc_point_bytes *point, uint32_t w, uint8_t *out);

#endif

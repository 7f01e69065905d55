// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// x-bar of a coordinate on a session's curve.
#ifndef ZOKECC_SDF_SM2_X_BAR_SESSION_H
#define ZOKECC_SDF_SM2_X_BAR_SESSION_H

#include <cstdint>

#include "base/linkage.h"

// 2^w + (x mod 2^w) of the coordinate in the session's L bytes at x, big-endian, at the end of
// the L bytes of out. The bytes before it are not written: the caller clears them. Returns 0.
ZOKECC_INTERNAL int32_t sm2_x_bar_session(void *session, const uint8_t *x, uint32_t w, uint8_t *out);

#endif

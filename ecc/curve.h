// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The records that hold a curve: one for the process, one per session.
#ifndef ZOKECC_ECC_CURVE_H
#define ZOKECC_ECC_CURVE_H

#include <zokecc/ecc.h>

#include <cstddef>
#include <cstdint>

#include "base/linkage.h"

// Multiples of a base point G for the fixed-base comb. With m used words in p and
// B[j] = 2^(32j) G, entry i (0 < i < 2^m) is the sum of B[j] over the set bits j of i, and
// entry 2^m + i is 2^16 times entry i. Entry 0 is G, entry 2^m is all zeros and entry
// 2^(m+1) is infinity; these three are never read.
struct PrecompTable {
    ecc_point entry[PRECOMP_TABLE_ENTRIES];
};

namespace zokecc {
constexpr uint32_t kDeviceOpen = 1;
constexpr uint32_t kDeviceClosed = 2;  // closed while sessions still point to it
}  // namespace zokecc

struct DeviceContext {
    uint32_t state;  // kDeviceOpen or kDeviceClosed
    uint32_t session_count;
    CurvePara *curve;  // null, or the record that configures new sessions
};

struct SessionContext {
    uint32_t curve_type;    // set last, and only by a configuration that succeeds
    CurvePara *record;      // the session's own copy, or the device's record: see record_is_borrowed
    DeviceContext *device;  // null for a session opened without one
    uint32_t curve_bits;    // set last, and only by a configuration that succeeds
    uint32_t byte_len;      // L, the bytes of a coordinate
    uint32_t hash_selector;
    mint p;
    mint a;
    mint b;
    ecc_point G;
    mint n;
    uint32_t config_bits;
    PrecompTable table;
    mint h;      // p / n
    uint32_t w;  // width of the key exchange's x-bar
    // 1 while record is the device's: the session never frees or writes it then. Takes the first
    // of twelve spare words at the end of the record.
    uint32_t record_is_borrowed;
    uint32_t reserved[11];
};

struct GlobalCurve {
    uint32_t byte_len;
    mint p;
    mint a;
    mint b;
    ecc_point G;
    mint n;
    uint32_t bits;
    uint32_t w;
    mint h;
    ecc_point base[17];  // B[0]..B[2m] of the last precomputation
    PrecompTable table;
};

// The curve of every call that takes no session. All zero until Curve_Init.
ZOKECC_INTERNAL GlobalCurve global_curve;

static_assert(sizeof(mint) == 80 && offsetof(mint, len) == 76);
static_assert(sizeof(ecc_point) == 164 && offsetof(ecc_point, x) == 4 && offsetof(ecc_point, y) == 84);
static_assert(sizeof(ecc_jac_point) == 240);
static_assert(sizeof(PrecompTable) == 85280);
static_assert(sizeof(GlobalCurve) == 88644 && offsetof(GlobalCurve, table) == 3364);
static_assert(sizeof(void *) != 4 || sizeof(DeviceContext) == 12);
static_assert(sizeof(void *) != 4 || sizeof(SessionContext) == 85924);
static_assert(sizeof(void *) != 4 || offsetof(SessionContext, table) == 512);
static_assert(sizeof(void *) != 4 || offsetof(SessionContext, w) == 85872);
static_assert(sizeof(void *) != 8 || sizeof(SessionContext) == 85936);

#endif

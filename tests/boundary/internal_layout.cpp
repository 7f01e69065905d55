// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The records behind the handles and of the hash. Callers never access them, but tools that read a
// device's memory do. Nothing here runs; a changed layout does not compile.
#include <cstddef>

#include "ecc/curve.h"
#include "hash/sha256.h"

namespace {

constexpr bool kWide = sizeof(void *) == 8;

// One value for the targets with 4-byte pointers, one for those with 8-byte pointers.
constexpr size_t by_pointer(size_t four, size_t eight) { return kWide ? eight : four; }

}  // namespace

static_assert(sizeof(void *) == 4 || sizeof(void *) == 8);

static_assert(sizeof(sha256_ctx) == 116);
static_assert(offsetof(sha256_ctx, hash) == 0);
static_assert(offsetof(sha256_ctx, length_high) == 32);
static_assert(offsetof(sha256_ctx, length_low) == 36);
static_assert(offsetof(sha256_ctx, block_index) == 40);
static_assert(offsetof(sha256_ctx, block) == 42);
static_assert(offsetof(sha256_ctx, computed) == 108);
static_assert(offsetof(sha256_ctx, corrupted) == 112);

static_assert(sizeof(PrecompTable) == 85280);

static_assert(sizeof(DeviceContext) == by_pointer(12, 16));
static_assert(offsetof(DeviceContext, state) == 0);
static_assert(offsetof(DeviceContext, session_count) == 4);
static_assert(offsetof(DeviceContext, curve) == 8);

static_assert(sizeof(SessionContext) == by_pointer(85924, 85936));
static_assert(offsetof(SessionContext, curve_type) == 0);
static_assert(offsetof(SessionContext, record) == by_pointer(4, 8));
static_assert(offsetof(SessionContext, device) == by_pointer(8, 16));
static_assert(offsetof(SessionContext, curve_bits) == by_pointer(12, 24));
static_assert(offsetof(SessionContext, byte_len) == by_pointer(16, 28));
static_assert(offsetof(SessionContext, hash_selector) == by_pointer(20, 32));
static_assert(offsetof(SessionContext, p) == by_pointer(24, 36));
static_assert(offsetof(SessionContext, a) == by_pointer(104, 116));
static_assert(offsetof(SessionContext, b) == by_pointer(184, 196));
static_assert(offsetof(SessionContext, G) == by_pointer(264, 276));
static_assert(offsetof(SessionContext, n) == by_pointer(428, 440));
static_assert(offsetof(SessionContext, config_bits) == by_pointer(508, 520));
static_assert(offsetof(SessionContext, table) == by_pointer(512, 524));
static_assert(offsetof(SessionContext, h) == by_pointer(85792, 85804));
static_assert(offsetof(SessionContext, w) == by_pointer(85872, 85884));

static_assert(sizeof(GlobalCurve) == 88644);
static_assert(offsetof(GlobalCurve, p) == 4);
static_assert(offsetof(GlobalCurve, G) == 244);
static_assert(offsetof(GlobalCurve, n) == 408);
static_assert(offsetof(GlobalCurve, h) == 496);
static_assert(offsetof(GlobalCurve, base) == 576);
static_assert(offsetof(GlobalCurve, table) == 3364);

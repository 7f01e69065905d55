// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Streaming SHA-256 (FIPS 180-4).
#ifndef ZOKECC_HASH_SHA256_H
#define ZOKECC_HASH_SHA256_H

#include <cstddef>
#include <cstdint>

#include "base/linkage.h"

// State of one SHA-256 computation. It lives on the caller's stack and owns nothing.
struct sha256_ctx {
    uint32_t hash[8];      // intermediate hash value H0..H7
    uint32_t length_high;  // message length in bits, high word
    uint32_t length_low;   // message length in bits, low word
    int16_t block_index;   // bytes waiting in block, 0..63
    uint8_t block[64];     // the message block being filled
    int32_t computed;      // 1 once the digest has been finalised
    int32_t corrupted;     // sticky: 0 good, 1 length overflow, 3 input after finalisation
};

static_assert(sizeof(sha256_ctx) == 116);
static_assert(offsetof(sha256_ctx, length_high) == 32 && offsetof(sha256_ctx, block_index) == 40);
static_assert(offsetof(sha256_ctx, block) == 42 && offsetof(sha256_ctx, computed) == 108);

// Starts a computation. Returns 1 if ctx is null, otherwise 0.
ZOKECC_INTERNAL int32_t sha256_init(sha256_ctx *ctx);

// Appends len bytes. Checks, in this order: len 0 returns 0 for any pointers; a null ctx or data
// returns 1; input after finalisation sets corrupted to 3 and returns 3; a nonzero corrupted is
// returned. A total length above 2^64 bits sets corrupted to 1, drops the bytes beyond the limit and
// still returns 0.
ZOKECC_INTERNAL int32_t sha256_update(sha256_ctx *ctx, const uint8_t *data, uint32_t len);

// Pads and compresses the pending block, once, and writes the 32-byte digest. A second call writes
// the same digest again. Returns 0.
ZOKECC_INTERNAL int32_t sha256_final(sha256_ctx *ctx, uint8_t *out);

// sha256_final with checks: returns 1 if a pointer is null, corrupted if that is nonzero, otherwise 0.
ZOKECC_INTERNAL int32_t sha256_result(sha256_ctx *ctx, uint8_t *out);

// Compresses ctx->block into ctx->hash; block_index becomes 0.
ZOKECC_INTERNAL void sha256_compress(sha256_ctx *ctx);

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Streaming SHA-256, FIPS 180-4 sections 5.1.1, 5.3.3 and 6.2.
#include "hash/sha256.h"

#include <zokecc/hash.h>

#include <cstring>

#include "base/burn.h"
#include "base/wipe.h"
#include "hash/bytes.h"
#include "hash/sha256_blocks.h"

using namespace zokecc;

namespace {

constexpr uint32_t kLengthOffset = 56;  // the bit length takes the last 8 bytes of the last block

constexpr int32_t kGood = 0;
constexpr int32_t kNull = 1;
constexpr int32_t kTooLong = 1;
constexpr int32_t kAfterFinal = 3;

constexpr uint32_t kInitialHash[8] = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                      0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

// Appends bytes to the pending block; whole blocks are compressed in place.
void absorb(sha256_ctx *ctx, const uint8_t *data, uint32_t len)
{
    while (len > 0) {
        if (ctx->block_index == 0 && len >= kHashBlockBytes) {
            const uint32_t whole = len / kHashBlockBytes;
            sha256_blocks(ctx->hash, data, whole);
            data += kHashBlockBytes * whole;
            len %= kHashBlockBytes;
            continue;
        }
        const uint32_t waiting = static_cast<uint32_t>(ctx->block_index);
        uint32_t part = kHashBlockBytes - waiting;
        if (part > len) part = len;
        std::memcpy(ctx->block + waiting, data, part);
        ctx->block_index = static_cast<int16_t>(waiting + part);
        if (ctx->block_index == kHashBlockBytes) sha256_compress(ctx);
        data += part;
        len -= part;
    }
}

// Appends 0x80, zero bytes, and the bit length in the last 8 bytes of a block.
void pad(sha256_ctx *ctx)
{
    ctx->block[ctx->block_index++] = 0x80;
    if (ctx->block_index > static_cast<int16_t>(kLengthOffset)) {
        std::memset(ctx->block + ctx->block_index, 0,
                    kHashBlockBytes - static_cast<uint32_t>(ctx->block_index));
        sha256_compress(ctx);
    }
    std::memset(ctx->block + ctx->block_index, 0, kLengthOffset - static_cast<uint32_t>(ctx->block_index));
    store_big_endian(ctx->length_high, ctx->block + kLengthOffset);
    store_big_endian(ctx->length_low, ctx->block + kLengthOffset + 4);
    sha256_compress(ctx);
}

// The processor's SHA instructions keep the words in registers, so there is less to clear.
class Sha256Burn {
public:
    Sha256Burn() = default;
    ~Sha256Burn()
    {
        if (sha256_takes_instructions())
            const StackBurn<kStackOfShaInstructions> burn;
        else
            const DigestBurn burn;
    }
    Sha256Burn(const Sha256Burn &) = delete;
    Sha256Burn &operator=(const Sha256Burn &) = delete;
};

}  // namespace

void sha256_compress(sha256_ctx *ctx)
{
    sha256_blocks(ctx->hash, ctx->block, 1);
    ctx->block_index = 0;
}

int32_t sha256_init(sha256_ctx *ctx)
{
    if (ctx == nullptr) return kNull;
    *ctx = sha256_ctx{};
    std::memcpy(ctx->hash, kInitialHash, sizeof kInitialHash);
    return kGood;
}

int32_t sha256_update(sha256_ctx *ctx, const uint8_t *data, uint32_t len)
{
    if (len == 0) return kGood;
    if (ctx == nullptr || data == nullptr) return kNull;
    if (ctx->computed != 0) {
        ctx->corrupted = kAfterFinal;
        return kAfterFinal;
    }
    if (ctx->corrupted != 0) return ctx->corrupted;

    const uint64_t before = uint64_t{ctx->length_high} << 32 | ctx->length_low;
    uint64_t after = before + 8 * uint64_t{len};
    if (after < before) {
        // The length exceeds 2^64 bits: the byte that crosses the limit is still absorbed, those after it are
        // not.
        const uint64_t bits_left = 0 - before;
        len = static_cast<uint32_t>((bits_left + 7) / 8);
        after = before + 8 * uint64_t{len};
        ctx->corrupted = kTooLong;
    }
    absorb(ctx, data, len);
    ctx->length_high = static_cast<uint32_t>(after >> 32);
    ctx->length_low = static_cast<uint32_t>(after);
    return kGood;
}

int32_t sha256_final(sha256_ctx *ctx, uint8_t *out)
{
    if (ctx->computed == 0) {
        pad(ctx);
        std::memset(ctx->block, 0, sizeof ctx->block);
        ctx->length_high = 0;
        ctx->length_low = 0;
        ctx->computed = 1;
    }
    for (uint32_t i = 0; i < 8; ++i) store_big_endian(ctx->hash[i], out + 4 * i);
    return kGood;
}

int32_t sha256_result(sha256_ctx *ctx, uint8_t *out)
{
    if (ctx == nullptr || out == nullptr) return kNull;
    if (ctx->corrupted != 0) return ctx->corrupted;
    return sha256_final(ctx, out);
}

// KEPT: returns 0 even if a step fails, so a null message with a nonzero length hashes like the
// empty one. Callers in the field ignore the result. Held by
// MhashSha256.KeptInnerFailuresAreNotReported.
uint32_t mhash_sha256(const uint8_t *data, uint32_t len, uint8_t *out)
{
    const Sha256Burn burn;
    if (out == nullptr) return 0;
    if (data == nullptr) len = 0;
    DigestWork work;
    std::memcpy(work.state, kInitialHash, sizeof work.state);

    const uint32_t blocks = len / kHashBlockBytes;
    // Early, because wide loads right after narrow stores to the same bytes stall.
    const uint32_t end_blocks = pad_end(data + kHashBlockBytes * blocks, len, work.end);
    if (blocks > 0) sha256_blocks(work.state, data, blocks);
    sha256_blocks(work.state, work.end, end_blocks);
    work.write_digest(out);
    wipe(&work, sizeof work);
    return 0;
}

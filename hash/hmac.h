// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Common to HMAC (RFC 2104) and the chained key derivation with either hash.
#ifndef ZOKECC_HASH_HMAC_H
#define ZOKECC_HASH_HMAC_H

#include <cstdint>

#include "hash/digest.h"

namespace zokecc {

constexpr uint32_t kHmacBlockBytes = 64;
constexpr uint8_t kInnerPad = 0x36;
constexpr uint8_t kOuterPad = 0x5C;

// out[64] = key[key_len] padded with zero bytes, xored with the pad byte. key_len <= 64.
inline void build_pad(const uint8_t *key, uint32_t key_len, uint8_t pad_byte, uint8_t *out)
{
    for (uint32_t i = 0; i < kHmacBlockBytes; ++i)
        out[i] = static_cast<uint8_t>((i < key_len ? key[i] : 0) ^ pad_byte);
}

// Key derivation as a chain of 32-byte MACs: block 1 is the MAC of the message, every further
// block the MAC of the block before it, read back from out. mac(message, message_len, out,
// out_len) computes one; a partial last block is requested with last_len bytes.
template <class Mac, class Length>
void derive_chained(const uint8_t *message, Length message_len, uint8_t *out, uint32_t out_len,
                    uint32_t last_len, Mac mac)
{
    for (uint32_t blocks = out_len / kDigestBytes; blocks > 0; --blocks) {
        mac(message, message_len, out, kDigestBytes);
        message = out;
        message_len = kDigestBytes;
        out += kDigestBytes;
    }
    if (out_len % kDigestBytes != 0) mac(message, message_len, out, last_len);
}

}  // namespace zokecc

#endif

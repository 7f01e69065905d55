// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Big-endian byte strings to integers and back (SEC 1 version 2, sections 2.3.7 and 2.3.8).
#include "mint/value.h"

using namespace zokecc;

int32_t octetstring_to_mint(const uint8_t *bytes, uint32_t byte_count, mint *out)
{
    *out = mint{};
    if (byte_count > kMintBytes) {
        bytes += byte_count - kMintBytes;
        byte_count = kMintBytes;
    }
    for (uint32_t i = 0; i < byte_count; ++i)
        out->words[i / 4] |= uint32_t{bytes[byte_count - 1 - i]} << (8 * (i % 4));
    out->len = trimmed_count(out->words, (byte_count + 3) / 4);
    return 0;
}

int32_t mint_to_octetstring(const mint *value, uint32_t capacity, uint8_t *out, uint32_t *out_len)
{
    const uint32_t used = used_words(*value);
    if (used == 0) {
        *out_len = 0;
        return 0;
    }
    // A zero top word counts as one byte.
    const uint32_t top_bits = bit_length(value->words[used - 1]);
    const uint32_t top_bytes = top_bits == 0 ? 1 : (top_bits + 7) / 8;
    const uint32_t total = 4 * (used - 1) + top_bytes;
    if (total > capacity) return 1;
    for (uint32_t i = 0; i < total; ++i)
        out[total - 1 - i] = static_cast<uint8_t>(value->words[i / 4] >> (8 * (i % 4)));
    *out_len = total;
    return 0;
}

// The capacity is compared with the shortest encoding, not with fixed_len: with a capacity below
// fixed_len, fixed_len bytes are still written. Callers inside the library pass equal values.
int32_t mint_to_fixedlen_os(const mint *value, uint32_t fixed_len, uint32_t capacity, uint32_t *out_len,
                            uint8_t *out)
{
    uint32_t shortest = 0;
    *out_len = 0;
    const int32_t status = mint_to_octetstring(value, capacity, out, &shortest);
    if (status != 0) return status;
    if (shortest > fixed_len) return 2;
    if (shortest < fixed_len) {
        std::memmove(out + (fixed_len - shortest), out, shortest);
        std::memset(out, 0, fixed_len - shortest);
    }
    *out_len = fixed_len;
    return 0;
}

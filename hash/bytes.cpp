// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "hash/bytes.h"

#include "base/declassify.h"

namespace zokecc {

bool is_all_zero(const uint8_t *bytes, uint32_t count)
{
    uint8_t any = 0;
    for (uint32_t i = 0; i < count; ++i) any = static_cast<uint8_t>(any | bytes[i]);
    return declassify(any == 0);
}

bool are_equal(const uint8_t *a, const uint8_t *b, uint32_t count)
{
    uint8_t any = 0;
    for (uint32_t i = 0; i < count; ++i) any = static_cast<uint8_t>(any | (a[i] ^ b[i]));
    return declassify(any == 0);
}

void mask(const uint8_t *in, const uint8_t *stream, uint32_t m, uint8_t *out)
{
    for (uint32_t i = 0; i < m; ++i) out[i] = static_cast<uint8_t>(in[i] ^ stream[i]);
}

uint32_t pad_end(const uint8_t *tail, uint64_t length, uint8_t *end)
{
    const uint32_t tail_bytes = static_cast<uint32_t>(length % kHashBlockBytes);
    const uint32_t blocks = tail_bytes <= kHashBlockBytes - 9 ? 1 : 2;
    std::memset(end, 0, 2 * kHashBlockBytes);
    if (tail_bytes > 0) std::memcpy(end, tail, tail_bytes);
    end[tail_bytes] = 0x80;
    const uint64_t bits = length * 8;
    uint8_t *const count = end + kHashBlockBytes * blocks - 8;
    store_big_endian(static_cast<uint32_t>(bits >> 32), count);
    store_big_endian(static_cast<uint32_t>(bits), count + 4);
    return blocks;
}

}  // namespace zokecc

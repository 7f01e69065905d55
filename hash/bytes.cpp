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

}  // namespace zokecc

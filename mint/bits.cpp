// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Bit lengths and single bits.
#include "mint/value.h"

using namespace zokecc;

int32_t get_mint_bit_len(const mint *value)
{
    const uint32_t used = used_words(*value);
    if (used == 0) return 0;
    return static_cast<int32_t>(32 * (used - 1) + bit_length(value->words[used - 1]));
}

// Tests a bit, despite its name.
int32_t mint_bit_set(const mint *value, int32_t bit_index)
{
    if (bit_index < 0) return 0;
    const uint32_t index = static_cast<uint32_t>(bit_index);
    if (index / 32 >= used_words(*value)) return 0;
    return static_cast<int32_t>(value->words[index / 32] >> (index % 32) & 1);
}

int32_t mint_bit(uint32_t word) { return static_cast<int32_t>(bit_length(word)); }

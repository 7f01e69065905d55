// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Shifts by any number of bits, in place.
#include "mint/value.h"

using namespace zokecc;

namespace {

// Word i of value shifted left by bits (0 to 31); words at used and above count as zero.
uint32_t shifted_left_word(const mint &value, uint32_t used, uint32_t i, uint32_t bits)
{
    const uint32_t here = i < used ? value.words[i] : 0;
    if (bits == 0) return here;
    const uint32_t below = i > 0 ? value.words[i - 1] : 0;
    return here << bits | below >> (32 - bits);
}

uint32_t shifted_right_word(const mint &value, uint32_t used, uint32_t i, uint32_t bits)
{
    if (bits == 0) return value.words[i];
    const uint32_t above = i + 1 < used ? value.words[i + 1] : 0;
    return value.words[i] >> bits | above << (32 - bits);
}

}  // namespace

int32_t mint_left_move(mint *value, uint32_t bit_count)
{
    if (bit_count == 0) return 0;
    const uint32_t used = used_words(*value);
    const uint32_t whole = bit_count / 32;
    const uint32_t bits = bit_count % 32;
    if (whole >= kMintWords) {
        set_zero(*value);
        return 0;
    }
    uint32_t count = used + whole + (bits != 0 ? 1 : 0);
    if (count > kMintWords) count = kMintWords;  // wider results are truncated
    for (uint32_t i = count; i-- > whole;) value->words[i] = shifted_left_word(*value, used, i - whole, bits);
    for (uint32_t i = 0; i < whole; ++i) value->words[i] = 0;
    value->len = trimmed_count(value->words, count);
    return 0;
}

int32_t mint_right_move(mint *value, uint32_t bit_count)
{
    if (bit_count == 0) return 0;
    const uint32_t used = used_words(*value);
    const uint32_t whole = bit_count / 32;
    if (whole > used) {
        set_zero(*value);
        return 0;
    }
    const uint32_t count = used - whole;
    for (uint32_t i = 0; i < count; ++i)
        value->words[i] = shifted_right_word(*value, used, i + whole, bit_count % 32);
    for (uint32_t i = count; i < used; ++i) value->words[i] = 0;
    value->len = trimmed_count(value->words, count);
    return 0;
}

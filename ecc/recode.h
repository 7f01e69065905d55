// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Recodes a scalar into the signed digits of its wNAF.
#ifndef ZOKECC_ECC_RECODE_H
#define ZOKECC_ECC_RECODE_H

#include <zokecc/mint.h>

#include <cstdint>

#include "mint/value.h"

namespace zokecc {

// The window width for a scalar of the given bit length; digits are below 2^width in magnitude.
inline uint32_t window_width(int32_t bits)
{
    if (bits >= 300) return 4;
    if (bits >= 70) return 3;
    if (bits >= 20) return 2;
    return 1;
}

// Writes digits, least significant first, each zero or odd and below 2^width in magnitude, with
// k = sum of digit[j] 2^j. digits must have room for bits + 1 of them, which suffices. Returns their number,
// or -1 rather than write past the room.
inline int32_t recode(const mint &k, int32_t bits, uint32_t width, int8_t *digits)
{
    const int32_t bit = 1 << width;
    const int32_t next = 2 * bit;
    const int32_t mask = next - 1;
    int32_t window = static_cast<int32_t>(low_word(k)) & mask;
    int32_t j = 0;
    while (window != 0 || j + static_cast<int32_t>(width) + 1 < bits) {
        int32_t digit = 0;
        if ((window & 1) != 0) {
            digit = window;
            if ((window & bit) != 0) {
                // Near the top a negative digit would only make the recoding longer.
                const bool near_top = j + static_cast<int32_t>(width) + 1 >= bits;
                digit = near_top ? window & (mask >> 1) : window - next;
            }
            window -= digit;
        }
        if (j > bits) return -1;
        digits[j++] = static_cast<int8_t>(digit);
        window = (window >> 1) + bit * mint_bit_set(&k, j + static_cast<int32_t>(width));
    }
    return j;
}

}  // namespace zokecc

#endif

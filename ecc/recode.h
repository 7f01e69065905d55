// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// A scalar as signed digits, for the product by a sliding window.
#ifndef ZOKECC_ECC_RECODE_H
#define ZOKECC_ECC_RECODE_H

#include <zokecc/mint.h>

#include <cstdint>

#include "mint/value.h"

namespace zokecc {

// The width of the window for a scalar of so many bits; digits are below 2^width in size.
inline uint32_t window_width(int32_t bits)
{
    if (bits >= 300) return 4;
    if (bits >= 70) return 3;
    if (bits >= 20) return 2;
    return 1;
}

// Digits, least significant first, each zero or odd and below 2^width in size, with
// k = sum of digit[j] 2^j. Room for bits + 1 of them, which is enough. Returns how many, and never writes
// beyond the room: -1 instead.
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
                // Near the top a negative digit would only lengthen the number.
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

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Word kernels: arrays of 32-bit words, least significant first, with a count.
//
// Shapes are written x[n], out[n]. A count below 1 reads and writes nothing and returns 0.
// Word i of every input is read before word i of the output is written, so the output array
// may be an input array; arrays that overlap in any other way are not supported.
#ifndef ZOKECC_MINT_WORDS_H
#define ZOKECC_MINT_WORDS_H

#include <cstdint>

namespace zokecc {

inline uint32_t low_half(uint64_t value) { return static_cast<uint32_t>(value); }
inline uint32_t high_half(uint64_t value) { return static_cast<uint32_t>(value >> 32); }

// out[n] = x[n] + y[n]; returns the carry.
inline uint32_t add_words(const uint32_t *x, const uint32_t *y, int32_t n, uint32_t *out)
{
    uint32_t carry = 0;
    for (int32_t i = 0; i < n; ++i) {
        const uint64_t sum = uint64_t{x[i]} + y[i] + carry;
        out[i] = low_half(sum);
        carry = high_half(sum);
    }
    return carry;
}

// out[n] = x[n] - y[n]; returns the borrow. This is the true difference, without the kept rule.
inline uint32_t sub_words(const uint32_t *x, const uint32_t *y, int32_t n, uint32_t *out)
{
    uint32_t borrow = 0;
    for (int32_t i = 0; i < n; ++i) {
        const uint64_t difference = uint64_t{x[i]} - y[i] - borrow;
        out[i] = low_half(difference);
        borrow = high_half(difference) & 1;
    }
    return borrow;
}

// out[n] = x[n] * w; returns the word above. (2^32 - 1)^2 + 2^32 - 1 < 2^64.
inline uint32_t mul_word(const uint32_t *x, uint32_t w, int32_t n, uint32_t *out)
{
    uint32_t carry = 0;
    for (int32_t i = 0; i < n; ++i) {
        const uint64_t product = uint64_t{x[i]} * w + carry;
        out[i] = low_half(product);
        carry = high_half(product);
    }
    return carry;
}

// out[n] += x[n] * w; returns the word above. (2^32 - 1)^2 + 2 (2^32 - 1) = 2^64 - 1.
inline uint32_t mul_add_word(const uint32_t *x, uint32_t w, int32_t n, uint32_t *out)
{
    uint32_t carry = 0;
    for (int32_t i = 0; i < n; ++i) {
        const uint64_t product = uint64_t{x[i]} * w + out[i] + carry;
        out[i] = low_half(product);
        carry = high_half(product);
    }
    return carry;
}

// Sign of x[n] - y[n].
inline int32_t compare_words(const uint32_t *x, const uint32_t *y, uint32_t n)
{
    while (n-- > 0)
        if (x[n] != y[n]) return x[n] > y[n] ? 1 : -1;
    return 0;
}

}  // namespace zokecc

#endif

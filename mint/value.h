// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Basic helpers for mint records.
//
// A mint has 19 words, least significant first; len counts those in use. Words at len and above
// are garbage. A trimmed value has a nonzero top word or len 0. Zero occurs both as len 0 and as
// len 1 with word 0 zero.
#ifndef ZOKECC_MINT_VALUE_H
#define ZOKECC_MINT_VALUE_H

#include <zokecc/mint.h>

#include <bit>
#include <cstdint>
#include <cstring>

namespace zokecc {

constexpr uint32_t kMintWords = MINT_WORDS;
constexpr uint32_t kMintBytes = 4 * kMintWords;
constexpr uint32_t kProductWords = 2 * kMintWords;  // no product of two records is longer
constexpr uint32_t kAllOnes = 0xFFFFFFFFu;

// len as mint_compare reads it.
inline int32_t signed_len(const mint &value) { return static_cast<int32_t>(value.len); }

// The number of words that may be read: len, limited to the record, and 0 if it is negative.
inline uint32_t used_words(const mint &value)
{
    if (signed_len(value) < 0) return 0;
    return value.len < kMintWords ? value.len : kMintWords;
}

// count without the zero words at the top.
inline uint32_t trimmed_count(const uint32_t *words, uint32_t count)
{
    while (count > 0 && words[count - 1] == 0) --count;
    return count;
}
inline uint32_t trimmed_words(const mint &value) { return trimmed_count(value.words, used_words(value)); }

// The test for zero used everywhere except in mint_compare.
inline bool is_zero(const mint &value)
{
    const uint32_t used = used_words(value);
    return used == 0 || (used == 1 && value.words[0] == 0);
}

inline bool is_one(const mint &value) { return value.len == 1 && value.words[0] == 1; }

inline uint32_t low_word(const mint &value) { return used_words(value) > 0 ? value.words[0] : 0; }

inline bool is_odd(const mint &value) { return (low_word(value) & 1) != 0; }

inline void set_zero(mint &value)
{
    value.words[0] = 0;
    value.len = 0;
}

inline void set_small(mint &value, uint32_t number)
{
    value.words[0] = number;
    value.len = 1;
}

// Sets value to words[count], trimmed; words beyond 19 are dropped.
inline void set_words(mint &value, const uint32_t *words, uint32_t count)
{
    if (count > kMintWords) count = kMintWords;
    std::memmove(value.words, words, 4 * count);
    value.len = trimmed_count(value.words, count);
}

inline uint32_t bit_length(uint32_t word) { return static_cast<uint32_t>(std::bit_width(word)); }

}  // namespace zokecc

#endif

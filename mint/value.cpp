// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Copying, comparing and trimming.
#include "mint/value.h"

#include "mint/words.h"

using namespace zokecc;

int32_t mint_copy(mint *dst, const mint *src)
{
    if (dst == src) return 0;
    std::memcpy(dst->words, src->words, 4 * used_words(*src));
    dst->len = src->len;
    return 0;
}

// The value with the larger len is greater, even if its top word is zero: callers trim first.
int32_t mint_compare(const mint *a, const mint *b)
{
    const int32_t a_len = signed_len(*a);
    const int32_t b_len = signed_len(*b);
    if (a_len != b_len) return a_len > b_len ? 1 : -1;
    return compare_words(a->words, b->words, used_words(*a));
}

int32_t mint_adjust_len(mint *value, int32_t word_count)
{
    value->len = static_cast<uint32_t>(word_count);
    if (word_count > 0) value->len = trimmed_words(*value);
    return 0;
}

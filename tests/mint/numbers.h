// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Shorthands for the numbers of the integer tests.
#ifndef ZOKECC_TESTS_MINT_NUMBERS_H
#define ZOKECC_TESTS_MINT_NUMBERS_H

#include <zokecc/mint.h>

#include <initializer_list>
#include <string>

#include "tests/support/hard_words.h"
#include "tests/support/hex.h"

namespace zokecc_test {

// The given words, least significant first, including zero top words. The words
// above them are garbage.
inline mint of_words(std::initializer_list<uint32_t> words) {
    mint out;
    for (uint32_t &word : out.words) word = 0xBAD0BAD0u;
    out.len = 0;
    for (uint32_t word : words) out.words[out.len++] = word;
    return out;
}

inline mint one_word(uint32_t value) { return of_words({value}); }
inline mint empty_zero() { return of_words({}); }  // zero without a word
inline mint word_zero() { return of_words({0}); }  // zero as one word

// A normalised value with garbage above it.
inline mint of_hex(const std::string &text) {
    mint value = mint_from_hex(text), out = of_words({});
    for (; out.len < value.len; ++out.len) out.words[out.len] = value.words[out.len];
    return out;
}

// `count` words of all ones.
inline mint all_ones(uint32_t count) {
    mint out = of_words({});
    while (out.len < count) out.words[out.len++] = 0xFFFFFFFFu;
    return out;
}

// A record of words 1, 2, ... 19 with the given length, valid or not.
inline mint counting_words(uint32_t len) {
    mint out;
    for (uint32_t i = 0; i < MINT_WORDS; ++i) out.words[i] = i + 1;
    out.len = len;
    return out;
}

// Zero as the arithmetic writes it: no words, and word 0 cleared.
inline ::testing::AssertionResult is_cleared_zero(const mint &got) {
    if (got.len == 0 && got.words[0] == 0) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "len " << got.len << ", word 0 " << got.words[0];
}

}  // namespace zokecc_test

#endif

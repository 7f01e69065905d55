// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Word arrays for the kernel tests, with a fence after the words that may be written.
#ifndef ZOKECC_TESTS_MINT_WORD_ROWS_H
#define ZOKECC_TESTS_MINT_WORD_ROWS_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/hard_words.h"

namespace zokecc_test {

using Words = std::vector<uint32_t>;

constexpr uint32_t kFence = 0xFEFEFEFEu;  // must never be overwritten

// The output array: separate, x, y, or x, y and output all the same.
enum class Place { kApart, kX, kY, kAll };
constexpr Place kPlaces[] = {Place::kApart, Place::kX, Place::kY, Place::kAll};

inline std::string place_name(Place place) { return "place " + std::to_string(static_cast<int>(place)); }

inline Natural number(const Words &words, size_t count) { return Natural(words.data(), count); }
inline Natural number(const Words &words) { return number(words, words.size()); }

inline Words drawn(HardWords &draw, size_t count) {
    Words out(count);
    draw.fill(out.data(), count);
    return out;
}

// The words, and a fence of three after them.
inline Words fenced(const Words &words) {
    Words out = words;
    out.insert(out.end(), 3, kFence);
    return out;
}

inline void expect_fence(const Words &words, size_t count) {
    for (size_t i = count; i < words.size(); ++i)
        ASSERT_EQ(kFence, words[i]) << "word " << i << " was written";
}

}  // namespace zokecc_test

#endif

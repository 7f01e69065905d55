// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The signed digits of a scalar, and the window width.
#include "ecc/recode.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/hard_words.h"
#include "tests/support/model_curve.h"
#include "tests/support/points.h"

namespace zokecc_test::recode_test {

namespace {

constexpr int8_t kUnwritten = 0x55;
constexpr uint32_t kWidths[] = {1, 2, 3, 4};

// The digits, in room for one more than allowed; unused room must remain unchanged.
std::vector<int8_t> digits_of(const mint &k, int32_t bits, uint32_t width) {
    std::vector<int8_t> digits(static_cast<size_t>(bits) + 2, kUnwritten);
    const int32_t count = zokecc::recode(k, bits, width, digits.data());
    EXPECT_GE(count, 0) << mint_to_hex(k);
    EXPECT_LE(count, bits + 1) << mint_to_hex(k);
    for (size_t j = static_cast<size_t>(count); j < digits.size(); ++j) EXPECT_EQ(kUnwritten, digits[j]) << j;
    digits.resize(static_cast<size_t>(count));
    return digits;
}

Natural sum_of(const std::vector<int8_t> &digits) {
    Natural positive, negative;
    for (size_t j = 0; j < digits.size(); ++j) {
        const Natural size(static_cast<uint32_t>(digits[j] < 0 ? -digits[j] : digits[j]));
        (digits[j] < 0 ? negative : positive).add(size << static_cast<unsigned>(j));
    }
    return positive - negative;
}

// Invariants of the digits of any scalar.
void expect_digits_of(const mint &k, uint32_t width) {
    const int32_t bits = get_mint_bit_len(&k);
    const std::vector<int8_t> digits = digits_of(k, bits, width);
    EXPECT_EQ(Natural(k), sum_of(digits)) << mint_to_hex(k) << ", width " << width;
    for (int8_t digit : digits) {
        EXPECT_TRUE(digit == 0 || digit % 2 != 0) << int{digit} << " of " << mint_to_hex(k);
        EXPECT_LT(digit < 0 ? -digit : digit, 1 << width) << mint_to_hex(k);
    }
    // Below the top each nonzero digit is followed by as many zeros as the window is wide.
    for (size_t j = 0; j + 2 * width + 2 < digits.size(); ++j) {
        if (digits[j] == 0) continue;
        EXPECT_EQ(width, static_cast<uint32_t>(std::count(&digits[j + 1], &digits[j + 1 + width], 0)))
            << "digit " << j << " of " << mint_to_hex(k) << ", width " << width;
    }
}

}  // namespace

TEST(WindowWidth, GrowsAtTwentySeventyAndThreeHundredBits) {
    struct {
        int32_t bits;
        uint32_t width;
    } const cases[] = {{0, 1}, {1, 1}, {19, 1}, {20, 2}, {69, 2}, {70, 3}, {299, 3}, {300, 4}, {608, 4}};
    for (auto [bits, width] : cases) EXPECT_EQ(width, zokecc::window_width(bits)) << bits;
}

TEST(Recode, EveryScalarOfElevenBits) {
    for (uint32_t width : kWidths)
        for (uint32_t k = 1; k < 2048 && !::testing::Test::HasFailure(); ++k)
            expect_digits_of(small(k), width);
}

TEST(Recode, HardScalarsOfEveryLength) {
    HardWords draw(611);
    for (int round = 0; round < 400 && !::testing::Test::HasFailure(); ++round) {
        const mint k = draw.trimmed(MINT_WORDS);
        if (get_mint_bit_len(&k) != 0) expect_digits_of(k, kWidths[round % 4]);
    }
}

TEST(Recode, DigitsAreThoseOfTheModel) {
    HardWords draw(612);
    for (int round = 0; round < 400 && !::testing::Test::HasFailure(); ++round) {
        const mint k = draw.trimmed(MINT_WORDS);
        const int32_t bits = get_mint_bit_len(&k);
        if (bits == 0) continue;
        const ModelDigits model = model_digits(k);
        const std::vector<int8_t> digits = digits_of(k, bits, zokecc::window_width(bits));
        EXPECT_EQ(model.digit, std::vector<int>(digits.begin(), digits.end())) << mint_to_hex(k);
    }
}

// Computed by hand, the lowest digit first.
TEST(Recode, DigitsNearTheTopArePositive) {
    EXPECT_EQ((std::vector<int8_t>{1, 1}), digits_of(small(3), 2, 1));
    EXPECT_EQ((std::vector<int8_t>{-1, 0, 0, 1}), digits_of(small(7), 3, 1));
    EXPECT_EQ((std::vector<int8_t>{3, 0, 1}), digits_of(small(7), 3, 2));
    EXPECT_EQ((std::vector<int8_t>{-1, 0, 0, 0, 1}), digits_of(small(15), 4, 2));
    EXPECT_EQ((std::vector<int8_t>{7}), digits_of(small(7), 3, 3));
}

TEST(Recode, TooFewBitsForTheScalarAreRefused) {
    int8_t digits[] = {kUnwritten, kUnwritten, kUnwritten};
    EXPECT_EQ(-1, zokecc::recode(small(5), 1, 2, digits));
    EXPECT_EQ(kUnwritten, digits[2]);
}

}  // namespace zokecc_test::recode_test

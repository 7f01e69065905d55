// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The kernels on plain word arrays: exact words, exact extent, and outputs over inputs.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/word_rows.h"

namespace zokecc_test::kernels_test {
namespace {

constexpr int32_t kLongest = 20;

struct Kernel2 {
    uint32_t (*call)(const uint32_t *, const uint32_t *, int32_t, uint32_t *);
    // The carry out, and the expected words as numbers.
    Natural (*expected)(const Natural &x, const Natural &y, unsigned bits, uint32_t &carry);
};

Natural plus(const Natural &x, const Natural &y, unsigned bits, uint32_t &carry) {
    Natural sum = x + y;
    carry = sum.bit(bits) ? 1 : 0;
    return sum.low_bits(bits);
}
Natural minus(const Natural &x, const Natural &y, unsigned bits, uint32_t &carry) {
    carry = x < y ? 1 : 0;
    return (Natural::power_of_two(bits) + x - y).low_bits(bits);
}

void check_two_rows(const Kernel2 &kernel, const Words &x, const Words &y, Place place) {
    int32_t count = static_cast<int32_t>(x.size());
    Words row_x = fenced(x), row_y = fenced(y), apart = fenced(Words(x.size(), kFence));
    uint32_t *out = place == Place::kApart ? apart.data() : place == Place::kY ? row_y.data() : row_x.data();
    const uint32_t *second = place == Place::kAll ? row_x.data() : row_y.data();
    uint32_t carry = 7;
    Natural want = kernel.expected(number(x), number(place == Place::kAll ? x : y),
                                   32 * static_cast<unsigned>(count), carry);
    ASSERT_EQ(carry, kernel.call(row_x.data(), second, count, out));
    ASSERT_EQ(want, Natural(out, x.size()));
    for (const Words *row : {&row_x, &row_y, &apart}) expect_fence(*row, x.size());
    ASSERT_TRUE(place == Place::kX || place == Place::kAll || row_x == fenced(x));
    ASSERT_TRUE(place == Place::kY || row_y == fenced(y));
}

void check_two_row_kernel(const Kernel2 &kernel, uint32_t seed) {
    HardWords draw(seed);
    for (uint32_t count = 1; count <= kLongest; ++count)
        for (int round = 0; round < 15; ++round) {
            Words x = drawn(draw, count), y = draw.below(2) == 0 ? x : drawn(draw, count);
            if (draw.below(2) == 0) y[draw.below(count)] = draw.word();
            for (Place place : kPlaces) {
                SCOPED_TRACE(draw.where() + ", " + place_name(place));
                ASSERT_NO_FATAL_FAILURE(check_two_rows(kernel, x, y, place));
            }
        }
}

TEST(Add2, CarryRunsThroughAllWords) {
    uint32_t x[] = {0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu}, y[] = {1, 0, 0}, out[3];
    EXPECT_EQ(1u, add_2(x, y, 3, out));
    EXPECT_EQ(Words(3, 0), Words(out, out + 3));
}

TEST(Add2, CarryIntoAWordOfAllOnesGoesOn) {
    uint32_t x[] = {0xFFFFFFFFu, 0xFFFFFFFFu}, y[] = {0xFFFFFFFFu, 0xFFFFFFFFu}, out[2];
    EXPECT_EQ(1u, add_2(x, y, 2, out));
    EXPECT_EQ((Words{0xFFFFFFFEu, 0xFFFFFFFFu}), Words(out, out + 2));
}

TEST(Add2, NoWordsWriteNothing) {
    uint32_t x[] = {1}, y[] = {2}, out[] = {kFence};
    for (int32_t count : {0, -1, INT32_MIN}) EXPECT_EQ(0u, add_2(x, y, count, out)) << count;
    EXPECT_EQ(kFence, out[0]);
}

TEST(Add2, EveryCountAndPlaceMatchesTheOracle) { check_two_row_kernel({add_2, plus}, 141); }

TEST(Sub2, BorrowStaysThroughEqualWords) {
    uint32_t x[] = {0, 5, 5, 9}, y[] = {1, 5, 5, 3}, out[4];
    EXPECT_EQ(0u, sub_2(x, y, 4, out));
    EXPECT_EQ((Words{0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu, 5}), Words(out, out + 4));
}

TEST(Sub2, SmallerMinusGreaterBorrows) {
    uint32_t x[] = {1, 2}, y[] = {2, 2}, out[2];
    EXPECT_EQ(1u, sub_2(x, y, 2, out));
    EXPECT_EQ((Words{0xFFFFFFFFu, 0xFFFFFFFFu}), Words(out, out + 2));
}

TEST(Sub2, NoWordsWriteNothing) {
    uint32_t x[] = {1}, y[] = {2}, out[] = {kFence};
    for (int32_t count : {0, -1, INT32_MIN}) EXPECT_EQ(0u, sub_2(x, y, count, out)) << count;
    EXPECT_EQ(kFence, out[0]);
}

TEST(Sub2, EveryCountAndPlaceMatchesTheOracle) { check_two_row_kernel({sub_2, minus}, 142); }

TEST(MintMul4, AllOnesGiveTheLargestCarry) {
    uint32_t x[] = {0xFFFFFFFFu, 0xFFFFFFFFu}, out[2];
    EXPECT_EQ(0xFFFFFFFEu, mint_mul_4(out, x, 0xFFFFFFFFu, 2));
    EXPECT_EQ((Words{1, 0xFFFFFFFFu}), Words(out, out + 2));
}

TEST(MintMul4, NoWordsWriteNothing) {
    uint32_t x[] = {3}, out[] = {kFence};
    for (int32_t count : {0, -1, INT32_MIN}) EXPECT_EQ(0u, mint_mul_4(out, x, 5, count)) << count;
    EXPECT_EQ(kFence, out[0]);
}

TEST(MintMul4, EveryCountApartAndInPlaceMatchesTheOracle) {
    HardWords draw(143);
    for (size_t count = 1; count <= kLongest; ++count)
        for (int round = 0; round < 15; ++round) {
            Words x = drawn(draw, count), row = fenced(x), out = fenced(Words(count, kFence));
            uint32_t w = draw.word();
            Natural product = number(x) * Natural(w);
            SCOPED_TRACE(draw.where());
            ASSERT_EQ(product.word(count),
                      mint_mul_4(out.data(), row.data(), w, static_cast<int32_t>(count)));
            ASSERT_EQ(product.low_bits(32 * static_cast<unsigned>(count)), number(out, count));
            ASSERT_NO_FATAL_FAILURE(expect_fence(out, count));
            ASSERT_EQ(fenced(x), row);
            ASSERT_EQ(product.word(count),
                      mint_mul_4(row.data(), row.data(), w, static_cast<int32_t>(count)));
            ASSERT_EQ(out, row);
        }
}

TEST(MintMul3, AllOnesGiveTheLargestCarry) {
    uint32_t x[] = {0xFFFFFFFFu, 0xFFFFFFFFu}, out[] = {0xFFFFFFFFu, 0xFFFFFFFFu};
    EXPECT_EQ(0xFFFFFFFFu, mint_mul_3(out, x, 0xFFFFFFFFu, 2));
    EXPECT_EQ((Words{0, 0xFFFFFFFFu}), Words(out, out + 2));
}

TEST(MintMul3, NoWordsWriteNothing) {
    uint32_t x[] = {3}, out[] = {kFence};
    for (int32_t count : {0, -1, INT32_MIN}) EXPECT_EQ(0u, mint_mul_3(out, x, 5, count)) << count;
    EXPECT_EQ(kFence, out[0]);
}

TEST(MintMul3, EveryCountApartAndInPlaceMatchesTheOracle) {
    HardWords draw(144);
    for (size_t count = 1; count <= kLongest; ++count)
        for (int round = 0; round < 15; ++round) {
            Words x = drawn(draw, count), old = drawn(draw, count), row = fenced(x), out = fenced(old);
            uint32_t w = draw.word();
            unsigned bits = 32 * static_cast<unsigned>(count);
            Natural sum = number(old) + number(x) * Natural(w);
            SCOPED_TRACE(draw.where());
            ASSERT_EQ(sum.word(count), mint_mul_3(out.data(), row.data(), w, static_cast<int32_t>(count)));
            ASSERT_EQ(sum.low_bits(bits), number(out, count));
            ASSERT_NO_FATAL_FAILURE(expect_fence(out, count));
            ASSERT_EQ(fenced(x), row);
            sum = number(x) + number(x) * Natural(w);
            ASSERT_EQ(sum.word(count), mint_mul_3(row.data(), row.data(), w, static_cast<int32_t>(count)));
            ASSERT_EQ(sum.low_bits(bits), number(row, count));
            ASSERT_NO_FATAL_FAILURE(expect_fence(row, count));
        }
}

}  // namespace
}  // namespace zokecc_test::kernels_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The schoolbook product of two word arrays, and the quotient of two words by one.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/mint/word_rows.h"

namespace zokecc_test::kernel_products_test {
namespace {

TEST(Mul2, OneWordMultiplierWritesOneWordMore) {
    uint32_t a[] = {0xFFFFFFFFu, 2, 3}, b[] = {2};
    Words out(6, kFence);
    mul_2(a, 3, b, 1, out.data());
    EXPECT_EQ((Words{0xFFFFFFFEu, 5, 6, 0, kFence, kFence}), out);
    out.assign(6, kFence);
    mul_2(b, 1, a, 3, out.data());
    EXPECT_EQ((Words{0xFFFFFFFEu, 5, 6, 0, kFence, kFence}), out);
}

TEST(Mul2, EmptyOperandGivesZerosForTheLongerOneOnly) {
    uint32_t a[] = {1, 2, 3};
    for (int32_t none : {0, -1, INT32_MIN}) {
        Words out(5, kFence);
        mul_2(a, 3, a, none, out.data());
        EXPECT_EQ((Words{0, 0, 0, kFence, kFence}), out) << none;
        out.assign(5, kFence);
        mul_2(a, none, a, 3, out.data());
        EXPECT_EQ((Words{0, 0, 0, kFence, kFence}), out) << none;
    }
}

TEST(Mul2, TwoEmptyOperandsWriteNothing) {
    uint32_t a[] = {1};
    Words out(2, kFence);
    for (int32_t none : {0, -3}) {
        mul_2(a, none, a, none, out.data());
        mul_2(a, 0, a, none, out.data());
        EXPECT_EQ(Words(2, kFence), out);
    }
}

// The product of the rows, written to a fresh array or over one of the operands.
void check_product(const Words &a, const Words &b, Place place) {
    Words row_a = a, row_b = b, out(a.size() + b.size() + 2, kFence);
    Words &target = place == Place::kApart ? out : place == Place::kY ? row_b : row_a;
    target.resize(a.size() + b.size() + 2, kFence);
    Words &second = place == Place::kAll ? row_a : row_b;
    size_t count = place == Place::kAll ? 2 * a.size() : a.size() + b.size();
    if (place == Place::kAll) target.resize(count + 2, kFence);
    std::fill(target.begin() + static_cast<std::ptrdiff_t>(count), target.end(), kFence);
    mul_2(row_a.data(), static_cast<int32_t>(a.size()), second.data(),
          static_cast<int32_t>(place == Place::kAll ? a.size() : b.size()), target.data());
    ASSERT_EQ(number(a) * number(place == Place::kAll ? a : b), number(target, count));
    ASSERT_NO_FATAL_FAILURE(expect_fence(target, count));
    ASSERT_TRUE(place != Place::kApart || (row_a == a && row_b == b));
}

TEST(Mul2, EveryPairOfCountsMatchesTheOracle) {
    HardWords draw(145);
    for (size_t na = 1; na <= 19; ++na)
        for (size_t nb = 1; nb <= 19; nb += 1 + draw.below(3)) {
            Words a = drawn(draw, na), b = drawn(draw, nb);
            for (Place place : kPlaces) {
                SCOPED_TRACE(draw.where() + ", " + place_name(place));
                ASSERT_NO_FATAL_FAILURE(check_product(a, b, place));
            }
        }
}

TEST(Mul2, OperandOfThirtyEightWordsMayBeTheOutput) {
    HardWords draw(146);
    for (size_t nb : {1u, 2u, 9u}) {
        Words a = drawn(draw, 38), b = drawn(draw, nb);
        for (Place place : {Place::kApart, Place::kX, Place::kY}) {
            SCOPED_TRACE(draw.where() + ", " + place_name(place));
            ASSERT_NO_FATAL_FAILURE(check_product(a, b, place));
            ASSERT_NO_FATAL_FAILURE(check_product(b, a, place));
        }
    }
}

TEST(Div2, QuotientKeepsAllSixtyFourBits) {
    EXPECT_EQ(0xFFFFFFFFFFFFFFFFull, div_2(0xFFFFFFFFu, 0xFFFFFFFFu, 1));
    EXPECT_EQ(0x5555555555555555ull, div_2(0xFFFFFFFFu, 0xFFFFFFFFu, 3));
    EXPECT_EQ(0x100000001ull, div_2(0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu));
    EXPECT_EQ(0ull, div_2(0, 0, 5));
    EXPECT_EQ(0ull, div_2(0, 4, 5));
}

TEST(Div2, HardWordsMatchTheOracle) {
    HardWords draw(147);
    for (int round = 0; round < 500; ++round) {
        uint32_t value[2] = {draw.word(), draw.word()}, divisor = draw.word() | (draw.below(2) << 31);
        if (divisor == 0) divisor = 1;
        uint64_t quotient = div_2(value[1], value[0], divisor);
        uint32_t parts[2] = {static_cast<uint32_t>(quotient), static_cast<uint32_t>(quotient >> 32)};
        ASSERT_EQ(Natural(value, 2) / Natural(divisor), Natural(parts, 2)) << draw.where();
    }
}

// The platform's fault handler ends the process, by whatever signal or message it uses.
TEST(Div2DeathTest, ZeroDivisorGoesToThePlatform) {
    volatile uint64_t quotient = 0;
    EXPECT_DEATH(quotient = div_2(1, 2, 0), "");
    EXPECT_EQ(0u, quotient);
}

}  // namespace
}  // namespace zokecc_test::kernel_products_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Products of two integers.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/numbers.h"

namespace zokecc_test::mul_test {
namespace {

void expect_product(const mint &a, const mint &b) {
    for_each_aliasing(a, b, Operands::kKept, mint_mul, [](const AliasRun &run) {
        EXPECT_EQ(1, run.returned) << run.how;
        EXPECT_TRUE(is_value(run.out, (Natural(run.a) * Natural(run.b)).low_bits(32 * MINT_WORDS)))
            << run.how;
    });
}

TEST(MintMul, ZeroInEitherFormGivesClearedZero) {
    mint others[] = {of_words({3, 4}), empty_zero(), word_zero(), all_ones(19)};
    for (const mint &zero : {empty_zero(), word_zero()})
        for (const mint &other : others) {
            auto cleared = [](const AliasRun &run) {
                EXPECT_EQ(1, run.returned) << run.how;
                bool has_zero = Natural(run.a).is_zero() || Natural(run.b).is_zero();
                EXPECT_TRUE(!has_zero || is_cleared_zero(run.out)) << run.how;
            };
            for_each_aliasing(zero, other, Operands::kKept, mint_mul, cleared);
            for_each_aliasing(other, zero, Operands::kKept, mint_mul, cleared);
        }
}

TEST(MintMul, ZeroInManyWordsGivesLenZero) { expect_product(of_words({0, 0, 0}), of_words({1, 2})); }

TEST(MintMul, NegativeLenReadsAsZero) {
    mint a = counting_words(0xFFFFFFFFu), b = of_words({5}), out = of_words({9, 9});
    EXPECT_EQ(1, mint_mul(&a, &b, &out));
    EXPECT_TRUE(is_cleared_zero(out));
    out = of_words({9, 9});
    EXPECT_EQ(1, mint_mul(&b, &a, &out));
    EXPECT_TRUE(is_cleared_zero(out));
}

TEST(MintMul, ProductOfAllOnes) {
    expect_product(one_word(0xFFFFFFFFu), one_word(0xFFFFFFFFu));
    for (uint32_t len = 1; len <= 9; ++len) expect_product(all_ones(len), all_ones(len));
    expect_product(all_ones(9), all_ones(10));
}

TEST(MintMul, ProductIsNormalised) {
    expect_product(one_word(2), one_word(3));
    expect_product(of_words({2, 0, 0}), of_words({3, 0}));
    expect_product(of_words({0, 1}), of_words({0, 1}));
}

TEST(MintMul, ZeroTopWordsMayExceedTheCapacity) {
    mint a = of_words({1, 2, 3, 0, 0, 0, 0, 0, 0, 0, 0, 0}), b = of_words({4, 5, 6, 7, 8, 0, 0, 0, 0, 0});
    expect_product(a, b);
}

TEST(MintMul, ProductAboveTheCapacityKeepsTheLowNineteenWords) {
    expect_product(all_ones(19), all_ones(19));
    expect_product(all_ones(10), all_ones(10));
    mint top = of_words({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1});
    expect_product(top, top);  // 2^640: truncated to nothing
}

TEST(MintMul, LenAboveTheRecordReadsNineteenWords) {
    mint a = counting_words(33), b = one_word(7), out;
    EXPECT_EQ(1, mint_mul(&a, &b, &out));
    EXPECT_TRUE(is_value(out, Natural(counting_words(19)) * Natural(7)));
    EXPECT_EQ(1, mint_mul(&b, &a, &out));
    EXPECT_TRUE(is_value(out, Natural(counting_words(19)) * Natural(7)));
}

TEST(MintMul, HardNumbersInEveryPlace) {
    HardWords draw(171);
    for (int round = 0; round < 800 && !::testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE(draw.where());
        mint a = draw.number(10);
        expect_product(a, draw.number(MINT_WORDS - a.len));
    }
}

TEST(MintMul, HardNumbersAboveTheCapacityInEveryPlace) {
    HardWords draw(172);
    for (int round = 0; round < 200 && !::testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE(draw.where());
        expect_product(draw.number(MINT_WORDS), draw.number(MINT_WORDS));
    }
}

}  // namespace
}  // namespace zokecc_test::mul_test

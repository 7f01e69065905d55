// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Modular reduction word by word.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/numbers.h"
#include "tests/support/guarded_buffer.h"

namespace zokecc_test::mod_reduce_test {
namespace {

mint reduced(const mint &a, const mint &m) {
    GuardedRecord<mint> out;
    mint value = a, modulus = m;
    EXPECT_EQ(0, mint_mod_reduce(&value, &modulus, out.get()));
    EXPECT_TRUE(same_record(a, value) && same_record(m, modulus));
    EXPECT_TRUE(out.guards_intact());
    return *out.get();
}

TEST(MintModReduce, OfTheModulusGivesClearedZero) {
    for (const mint &m : {of_words({1, 2, 3}), one_word(7), all_ones(19)})
        EXPECT_TRUE(is_cleared_zero(reduced(m, m)));
}

TEST(MintModReduce, SmallerValueIsCopiedAsItStands) {
    EXPECT_TRUE(is_value(reduced(of_words({5, 0}), of_words({1, 1, 1})), of_words({5, 0})));
    EXPECT_TRUE(is_value(reduced(empty_zero(), one_word(3)), empty_zero()));
    EXPECT_TRUE(is_value(reduced(word_zero(), one_word(3)), word_zero()));
}

TEST(MintModReduce, ZeroModulusGivesZero) {
    for (const mint &zero : {empty_zero(), word_zero()})
        for (const mint &a : {of_words({1, 2, 3}), one_word(1), empty_zero()})
            EXPECT_EQ(0u, reduced(a, zero).len);
    EXPECT_EQ(0u, reduced(of_words({1, 2, 3}), of_words({0, 0})).len);
}

TEST(MintModReduce, SameLengthNeedsOneDivision) {
    EXPECT_TRUE(is_value(reduced(of_words({5, 9}), of_words({1, 2})), of_words({1, 1})));
    EXPECT_TRUE(is_value(reduced(of_words({2, 9}), of_words({1, 9})), one_word(1)));
}

TEST(MintModReduce, MultiplesOfTheModulusGiveLenZero) {
    mint m = of_words({7, 8, 9});
    EXPECT_EQ(0u, reduced((Natural(m) * Natural(all_ones(16))).to_mint(), m).len);
    EXPECT_EQ(0u, reduced((Natural(m) << 32).to_mint(), m).len);
}

TEST(MintModReduce, OneWordModulusTakesEveryLength) {
    for (uint32_t modulus : {1u, 2u, 3u, 0x80000000u, 0xFFFFFFFFu})
        for (uint32_t len = 2; len <= MINT_WORDS; ++len)
            EXPECT_TRUE(is_value(reduced(all_ones(len), one_word(modulus)),
                                 Natural(all_ones(len)) % Natural(modulus)));
}

TEST(MintModReduce, GivesTheRemainderOfMintMod) {
    HardWords draw(191);
    for (int round = 0; round < 1500; ++round) {
        mint a = draw.trimmed(MINT_WORDS), m = draw.trimmed(1 + draw.below(18)), remainder;
        if (draw.below(4) == 0) m = draw.relative_of(a);
        if (m.len == 0) continue;
        ASSERT_EQ(1, mint_mod(&a, &m, &remainder));
        ASSERT_TRUE(is_value(reduced(a, m), remainder)) << draw.where();
    }
}

TEST(MintModReduce, OracleAgrees) {
    HardWords draw(192);
    for (int round = 0; round < 100; ++round) {
        mint a = draw.trimmed(MINT_WORDS), m = draw.trimmed(9);
        if (m.len == 0) continue;
        ASSERT_TRUE(is_value(reduced(a, m), Natural(a) % Natural(m))) << draw.where();
    }
}

}  // namespace
}  // namespace zokecc_test::mod_reduce_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Subtraction in the cases that depart from the textbook. Keys and signatures in the field went
// through these words; each of these tests fails if one of them is corrected.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/kept_rules.h"
#include "tests/mint/numbers.h"

namespace zokecc_test::sub_kept_test {
namespace {

// The output of mint_sub.
enum class Store { kApart, kOverA, kOverB };

mint difference(const mint &a, const mint &b, Store store, int32_t expected_sign = 0) {
    mint x = a, y = b, apart;
    mint *out = store == Store::kApart ? &apart : store == Store::kOverA ? &x : &y;
    EXPECT_EQ(expected_sign, mint_sub(&x, &y, out));
    return *out;
}

TEST(MintSub, KeptEqualWordsUnderBorrowGiveFffffffe) {
    mint a = of_words({1, 5, 1}), b = of_words({2, 5}), kept = of_words({0xFFFFFFFFu, 0xFFFFFFFEu});
    for (Store store : {Store::kApart, Store::kOverA, Store::kOverB}) {
        EXPECT_TRUE(is_value(difference(a, b, store), kept));
        EXPECT_TRUE(is_value(difference(b, a, store, 1), kept));
    }
}

TEST(MintSub, KeptEveryEqualWordUnderTheBorrowGivesFffffffe) {
    mint a = of_words({0, 3, 0, 0xFFFFFFFFu, 8}), b = of_words({1, 3, 0, 0xFFFFFFFFu, 2});
    mint kept = of_words({0xFFFFFFFFu, 0xFFFFFFFEu, 0xFFFFFFFEu, 0xFFFFFFFEu, 5});
    for (Store store : {Store::kApart, Store::kOverA, Store::kOverB})
        EXPECT_TRUE(is_value(difference(a, b, store), kept));
}

TEST(MintSub, EqualWordsWithoutBorrowGiveZeroWords) {
    mint a = of_words({2, 5, 5, 9}), b = of_words({1, 5, 5, 3});
    EXPECT_TRUE(is_value(difference(a, b, Store::kApart), of_words({1, 0, 0, 6})));
}

TEST(MintSub, KeptBorrowStaysSetAfterEqualWords) {
    mint a = of_words({0, 5, 9}), b = of_words({1, 5, 3});
    EXPECT_TRUE(is_value(difference(a, b, Store::kApart), of_words({0xFFFFFFFFu, 0xFFFFFFFEu, 5})));
}

TEST(MintSub, KeptBorrowLostAboveShorterOperandInPlace) {
    // 2^64 - 1: the borrow crosses word 1, which is zero, and must take the 1 of word 2.
    mint a = of_words({0, 0, 1}), b = one_word(1);
    mint textbook = of_words({0xFFFFFFFFu, 0xFFFFFFFFu}), kept = of_words({0xFFFFFFFFu, 0xFFFFFFFFu, 1});
    EXPECT_TRUE(is_value(difference(a, b, Store::kOverA), kept));
    EXPECT_TRUE(is_value(difference(a, b, Store::kApart), textbook));
    EXPECT_TRUE(is_value(difference(a, b, Store::kOverB), textbook));
}

TEST(MintSub, KeptBorrowIsLostWhicheverArgumentIsTheLarger) {
    mint a = of_words({0, 0, 1}), b = one_word(1);
    mint textbook = of_words({0xFFFFFFFFu, 0xFFFFFFFFu}), kept = of_words({0xFFFFFFFFu, 0xFFFFFFFFu, 1});
    EXPECT_TRUE(is_value(difference(b, a, Store::kOverB, 1), kept));
    EXPECT_TRUE(is_value(difference(b, a, Store::kApart, 1), textbook));
    EXPECT_TRUE(is_value(difference(b, a, Store::kOverA, 1), textbook));
}

TEST(MintSub, KeptBorrowInPlaceStillReachesTheFirstUpperWord) {
    mint a = of_words({0, 7, 1}), b = one_word(1);
    EXPECT_TRUE(is_value(difference(a, b, Store::kOverA), of_words({0xFFFFFFFFu, 6, 1})));
}

TEST(MintSub, BorrowCrossesManyZeroWordsOnlyApartFromTheLarger) {
    mint a = of_words({0, 0, 0, 0, 0, 4}), b = one_word(3);
    EXPECT_TRUE(is_value(difference(a, b, Store::kApart),
                         of_words({0xFFFFFFFDu, 0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu, 3})));
    EXPECT_TRUE(is_value(difference(a, b, Store::kOverA), of_words({0xFFFFFFFDu, 0xFFFFFFFFu, 0, 0, 0, 4})));
}

TEST(MintSub, KeptBothFaultsInOneSubtraction) {
    mint a = of_words({1, 5, 0, 9}), b = of_words({2, 5});
    EXPECT_TRUE(
        is_value(difference(a, b, Store::kApart), of_words({0xFFFFFFFFu, 0xFFFFFFFEu, 0xFFFFFFFFu, 8})));
    EXPECT_TRUE(
        is_value(difference(a, b, Store::kOverA), of_words({0xFFFFFFFFu, 0xFFFFFFFEu, 0xFFFFFFFFu, 9})));
}

TEST(MintSub, KeptRuleHoldsForHardNumbersInEveryPlace) {
    HardWords draw(161);
    int departures = 0, lost_borrows = 0;
    for (int round = 0; round < 15000 && !::testing::Test::HasFailure(); ++round) {
        mint a = draw.number(MINT_WORDS);
        mint b = draw.below(4) == 0 ? draw.number(MINT_WORDS) : draw.relative_of(a);
        int32_t order = kept_compare(a, b);
        for_each_aliasing(a, b, Operands::kKept, mint_sub, [&](const AliasRun &run) {
            bool over_larger = (order > 0 && run.out_is_a) || (order < 0 && run.out_is_b);
            KeptDifference want = kept_sub(run.a, run.b, over_larger ? Over::kLarger : Over::kOther);
            EXPECT_EQ(want.negative, run.returned) << run.how << ", " << draw.where();
            EXPECT_TRUE(is_value(run.out, want.value)) << run.how << ", " << draw.where();
        });
        Natural x(a), y(b), apart(kept_sub(a, b, Over::kOther).value);
        if (apart != (x < y ? y - x : x - y)) ++departures;
        if (apart != Natural(kept_sub(a, b, Over::kLarger).value)) ++lost_borrows;
    }
    // The draws must have met the cases, otherwise this proves nothing.
    EXPECT_GT(departures, 1000);
    EXPECT_GT(lost_borrows, 100);
}

}  // namespace
}  // namespace zokecc_test::sub_kept_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Rows of limbs, compared with naive integers: the portable bodies and the assembly that replaces them.
#include "mint/limbs/limb.h"

#include "tests/mint/limb_rows.h"
#include "tests/support/counting_trace.h"
#include "tests/support/emulated.h"

namespace zokecc_test::limb_test {
namespace {

constexpr size_t kMaxRow = 19;

template <class Steps>
class LimbRows : public testing::Test {
protected:
    using Limb = typename Steps::Limb;

    // A Natural modulo the limbs' bits, for columns that wrap around.
    static Natural cut(const Natural &value, size_t limbs) {
        return value.low_bits(static_cast<unsigned>(limbs) * zokecc::kLimbBits<Limb>);
    }
    static Natural base_to(size_t limbs) {
        return Natural::power_of_two(static_cast<unsigned>(limbs) * zokecc::kLimbBits<Limb>);
    }
    static bool has_word_of_ones(const Row<Limb> &x, size_t n) {
        for (size_t i = 0; i < n * zokecc::kWordsPerLimb<Limb>; ++i)
            if (natural(x, n).word(i) == 0xFFFFFFFFu) return true;
        return false;
    }

    // Each length a few times with hard rows a and b; b is often close to a.
    template <class Check>
    void for_each_pair(Check check) {
        for (int round = 0; round < rounds(36); ++round)
            for (size_t n = 1; n <= kMaxRow; ++n) {
                const Row<Limb> a = drawn_limbs<Limb>(draw, n);
                check(a, round % 2 == 0 ? drawn_limbs<Limb>(draw, n) : related_limbs(draw, a), n);
                ASSERT_FALSE(this->HasFailure()) << n << " limbs, " << draw.where();
            }
    }

    HardWords draw{7001 + sizeof(Limb)};
};
TYPED_TEST_SUITE(LimbRows, StepTypes);

TYPED_TEST(LimbRows, SumsAndDifferencesOfLimbsCarryIntoTheNext) {
    using L = typename TypeParam::Limb;
    const L edges[] = {
        0, 1, 2, kAllOnesLimb<L> / 2, kAllOnesLimb<L> / 2 + 1, kAllOnesLimb<L> - 1, kAllOnesLimb<L>};
    for (L a : edges)
        for (L b : edges)
            for (L in : {L{0}, L{1}}) {
                L carry = in;
                L borrow = in;
                const L sum = zokecc::add_limb(a, b, carry);
                const L difference = zokecc::sub_limb(a, b, borrow);
                EXPECT_EQ(natural(a) + natural(b) + natural(in), natural(Row<L>{sum, carry}));
                EXPECT_LE(borrow, 1u);
                EXPECT_EQ(natural(Row<L>{a, borrow}), natural(difference) + natural(b) + natural(in));
            }
}

TYPED_TEST(LimbRows, MarkIsSetForAWordOfAllOnesAlone) {
    using L = typename TypeParam::Limb;
    const uint32_t edges[] = {0,           1,           0x7FFFFFFFu, 0x80000000u,
                              0xFFFF0000u, 0xFFFFFFFEu, 0xFFFFFFFFu, 0x0000FFFFu};
    for (uint32_t low : edges)
        for (uint32_t high : edges) {
            const uint32_t words[2] = {low, high};
            L limb;
            std::memcpy(&limb, words, sizeof limb);
            const bool expected = low == 0xFFFFFFFFu || (sizeof(L) == 8 && high == 0xFFFFFFFFu);
            EXPECT_EQ(expected, zokecc::all_ones_mark(limb) != 0) << std::hex << low << " " << high;
        }
}

TYPED_TEST(LimbRows, SumIsExactInEveryPlace) {
    using L = typename TypeParam::Limb;
    this->for_each_pair([this](const Row<L> &a, const Row<L> &b, size_t n) {
        for (int place = 0; place < 3; ++place) {
            Row<L> x = fenced_limbs(a);
            Row<L> y = fenced_limbs(b);
            Row<L> apart = fenced_limbs(Row<L>(n));
            Row<L> &out = place == 0 ? apart : place == 1 ? x : y;
            const L carry = TypeParam::add_limbs(x.data(), y.data(), static_cast<unsigned>(n), out.data());
            EXPECT_EQ(natural(a) + natural(b), natural(out, n) + natural(carry) * this->base_to(n));
            EXPECT_TRUE(fence_stands(out, n));
        }
    });
}

TYPED_TEST(LimbRows, DifferenceIsExactInEveryPlaceAndTellsOfWordsOfOnes) {
    using L = typename TypeParam::Limb;
    int with_ones = 0;
    this->for_each_pair([&](const Row<L> &a, const Row<L> &b, size_t n) {
        for (int place = 0; place < 3; ++place) {
            Row<L> x = fenced_limbs(a);
            Row<L> y = fenced_limbs(b);
            Row<L> apart = fenced_limbs(Row<L>(n));
            Row<L> &out = place == 0 ? apart : place == 1 ? x : y;
            L ones = 77;
            const L borrow =
                TypeParam::sub_limbs(x.data(), y.data(), static_cast<unsigned>(n), out.data(), ones);
            EXPECT_EQ(natural(a) < natural(b) ? 1u : 0u, borrow);
            EXPECT_EQ(this->cut(natural(out, n) + natural(b), n), natural(a));
            EXPECT_EQ(this->has_word_of_ones(out, n), ones != 0);
            EXPECT_TRUE(fence_stands(out, n));
            with_ones += ones != 0 ? 1 : 0;
        }
    });
    EXPECT_GE(with_ones, rounds(300));
}

// One differing word, at every position: no group of a kernel may miss it.
TYPED_TEST(LimbRows, OneWordOfOnesIsSeenAtEveryPosition) {
    using L = typename TypeParam::Limb;
    for (size_t n = 1; n <= kMaxRow; ++n)
        for (size_t word = 0; word < n * zokecc::kWordsPerLimb<L>; ++word) {
            std::vector<uint32_t> words(n * zokecc::kWordsPerLimb<L>, 0xFFFFFFFEu);
            words[word] = 0xFFFFFFFFu;
            Row<L> x(n);
            std::memcpy(x.data(), words.data(), 4 * words.size());
            const Row<L> zero(n);
            L ones = 0;
            EXPECT_EQ(0u,
                      TypeParam::sub_limbs(x.data(), zero.data(), static_cast<unsigned>(n), x.data(), ones));
            EXPECT_NE(0u, ones) << word << " of " << n;
        }
}

TYPED_TEST(LimbRows, ComparisonIsThatOfTheNumbers) {
    using L = typename TypeParam::Limb;
    this->for_each_pair([](const Row<L> &a, const Row<L> &b, size_t n) {
        const unsigned count = static_cast<unsigned>(n);
        EXPECT_EQ(natural(a) < natural(b), zokecc::is_below(a.data(), b.data(), count));
        EXPECT_EQ(natural(b) < natural(a), zokecc::is_below(b.data(), a.data(), count));
        EXPECT_FALSE(zokecc::is_below(a.data(), a.data(), count));
    });
}

TYPED_TEST(LimbRows, ShiftUpMultipliesByThePowerOfTwo) {
    using L = typename TypeParam::Limb;
    this->for_each_pair([this](const Row<L> &a, const Row<L> &, size_t n) {
        const unsigned bits = this->draw.below(zokecc::kLimbBits<L>);
        Row<L> apart = fenced_limbs(Row<L>(n + 1));
        zokecc::shift_limbs_up(a.data(), static_cast<unsigned>(n), bits, apart.data());
        EXPECT_EQ(natural(a) << bits, natural(apart, n + 1)) << bits;
        EXPECT_TRUE(fence_stands(apart, n + 1));
        Row<L> x = fenced_limbs(a);
        zokecc::shift_limbs_up(x.data(), static_cast<unsigned>(n), bits, x.data());
        EXPECT_EQ(natural(apart, n + 1), natural(x, n + 1)) << bits << " in place";
    });
}

TYPED_TEST(LimbRows, ShiftDownDividesByThePowerOfTwo) {
    using L = typename TypeParam::Limb;
    this->for_each_pair([this](const Row<L> &a, const Row<L> &, size_t n) {
        const unsigned bits = 1 + this->draw.below(zokecc::kLimbBits<L> - 1);
        Row<L> x = fenced_limbs(a);
        TypeParam::shift_limbs_down(x.data(), static_cast<unsigned>(n), bits);
        EXPECT_EQ(natural(a) >> bits, natural(x, n)) << bits;
        EXPECT_TRUE(fence_stands(x, n));
    });
}

TYPED_TEST(LimbRows, MultipleIsAddedToTheRow) {
    using L = typename TypeParam::Limb;
    this->for_each_pair([this](const Row<L> &a, const Row<L> &b, size_t n) {
        const L w = drawn_limb<L>(this->draw);
        Row<L> out = fenced_limbs(b);
        const L above = TypeParam::mul_add_limbs(a.data(), w, static_cast<unsigned>(n), out.data());
        EXPECT_EQ(natural(b) + natural(a) * natural(w), natural(out, n) + natural(above) * this->base_to(n));
        EXPECT_TRUE(fence_stands(out, n));
    });
}

TYPED_TEST(LimbRows, MultipleIsTakenOffTheRow) {
    using L = typename TypeParam::Limb;
    this->for_each_pair([this](const Row<L> &a, const Row<L> &b, size_t n) {
        const L w = drawn_limb<L>(this->draw);
        Row<L> out = fenced_limbs(b);
        const L above = TypeParam::mul_sub_limbs(a.data(), w, static_cast<unsigned>(n), out.data());
        EXPECT_EQ(natural(b) + natural(above) * this->base_to(n), natural(out, n) + natural(a) * natural(w));
        EXPECT_TRUE(fence_stands(out, n));
    });
}

// The largest limbs and multiplier give the largest carries.
TYPED_TEST(LimbRows, RowsOfAllOnesCarryToTheTop) {
    using L = typename TypeParam::Limb;
    for (unsigned n = 1; n <= kMaxRow; ++n) {
        const Row<L> ones(n, kAllOnesLimb<L>);
        Row<L> out = ones;
        const L above = TypeParam::mul_add_limbs(ones.data(), kAllOnesLimb<L>, n, out.data());
        EXPECT_EQ(natural(ones) * natural(kAllOnesLimb<L>) + natural(ones),
                  natural(out) + natural(above) * this->base_to(n));
        Row<L> none(n);
        const L taken = TypeParam::mul_sub_limbs(ones.data(), kAllOnesLimb<L>, n, none.data());
        EXPECT_EQ(natural(taken) * this->base_to(n),
                  natural(none) + natural(ones) * natural(kAllOnesLimb<L>));
    }
}

}  // namespace
}  // namespace zokecc_test::limb_test

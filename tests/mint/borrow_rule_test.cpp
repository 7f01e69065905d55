// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The kept rule of subtraction, applied to true differences of limbs.
#include "mint/limbs/borrow_rule.h"

#include "tests/mint/kept_rules.h"
#include "tests/mint/limb_rows.h"
#include "tests/support/counting_trace.h"
#include "tests/support/emulated.h"

namespace zokecc_test::borrow_rule_test {
namespace {

constexpr uint32_t kWords = zokecc::kMaxFastWords;

template <class Steps>
class BorrowRule : public testing::Test {
protected:
    using Limb = typename Steps::Limb;
    static constexpr unsigned kLimbs = zokecc::kMaxFastLimbs<Limb>;

    static Row<Limb> limbs_of(const mint &value) {
        Row<Limb> out(kLimbs);
        std::memcpy(out.data(), value.words, 4 * value.len);
        return out;
    }

    // x > y, with equal words and with zero words above y.
    void draw_pair() {
        do {
            x = draw.trimmed(kWords);
            y = draw.below(3) == 0 ? draw.trimmed(kWords) : draw.relative_of(x);
            for (uint32_t i = y.len; i + 1 < x.len; ++i)
                if (draw.below(3) == 0) x.words[i] = 0;
            if (mint_compare(&x, &y) < 0) std::swap(x, y);
        } while (mint_compare(&x, &y) == 0);
        n = static_cast<unsigned>(zokecc::kWordsPerLimb<Limb> == 1 ? x.len : (x.len + 1) / 2);
        if (draw.below(2) == 0) n = kLimbs;
    }

    // How often the kept difference was not the true one.
    template <class Keep>
    int departures(Over over, Keep keep) {
        int departed = 0;
        for (int round = 0; round < rounds(6000); ++round) {
            draw_pair();
            const Row<Limb> larger = limbs_of(x);
            const Row<Limb> smaller = limbs_of(y);
            Row<Limb> d(kLimbs);
            Limb ones = 0;
            EXPECT_EQ(0u, Steps::sub_limbs(larger.data(), smaller.data(), n, d.data(), ones));
            const Natural exact = natural(d);
            const Natural kept = kept_sub(Natural(x), Natural(y), over);
            keep(larger.data(), smaller.data(), n, d.data());
            EXPECT_EQ(kept, natural(d)) << mint_to_hex(x) << " - " << mint_to_hex(y) << ", " << draw.where();
            EXPECT_TRUE(kept == exact || ones != 0) << "nothing would have looked at this difference";
            if (this->HasFailure()) break;
            departed += kept == exact ? 0 : 1;
        }
        return departed;
    }

    HardWords draw{7101 + sizeof(Limb)};
    mint x, y;
    unsigned n = 0;
};
TYPED_TEST_SUITE(BorrowRule, StepTypes);

TYPED_TEST(BorrowRule, KeptEqualWordsApartFromTheLargerOperand) {
    using L = typename TypeParam::Limb;
    EXPECT_GE(
        this->departures(Over::kOther, [](const L *larger, const L *smaller, unsigned limbs,
                                          L *d) { zokecc::keep_equal_words<L>(larger, smaller, limbs, d); }),
        rounds(300));
}

TYPED_TEST(BorrowRule, KeptEqualWordsAndLostBorrowsInPlace) {
    using L = typename TypeParam::Limb;
    EXPECT_GE(
        this->departures(Over::kLarger, [](const L *, const L *smaller, unsigned limbs,
                                           L *d) { zokecc::keep_in_place<TypeParam>(smaller, limbs, d); }),
        rounds(500));
}

TYPED_TEST(BorrowRule, WordsAreReadAndWrittenSingly) {
    using L = typename TypeParam::Limb;
    Row<L> limbs(3);
    for (unsigned word = 0; word < 3 * zokecc::kWordsPerLimb<L>; ++word) {
        EXPECT_EQ(word, zokecc::used_words_of(limbs.data(), 3));
        zokecc::set_word(limbs.data(), word, 0xFFFFFFFFu);
        zokecc::set_word(limbs.data(), word, 0xA0000000u + word);
        for (unsigned i = 0; i <= word; ++i) EXPECT_EQ(0xA0000000u + i, zokecc::word_of(limbs.data(), i));
    }
    EXPECT_EQ(3 * zokecc::kWordsPerLimb<L>, zokecc::used_words_of(limbs.data(), 3));
    EXPECT_EQ(0u, zokecc::used_words_of(limbs.data(), 0));
}

}  // namespace
}  // namespace zokecc_test::borrow_rule_test

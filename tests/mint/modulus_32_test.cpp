// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Products on whole words, for each number of words.
#include "mint/limbs/modulus_32.h"

#include "tests/mint/limb_products.h"
#include "tests/mint/portable_moduli.h"
#include "tests/support/emulated.h"

namespace zokecc_test::word_limbs_test {
namespace {

// The guard is that of half the quotient, doubled.
constexpr unsigned kGuardBits = 31;

// A machine with 64-bit limbs has only the portable steps for these.
#ifdef __SIZEOF_INT128__
using WordModuli = testing::Types<zokecc::WordModulus>;
#else
using WordModuli = testing::Types<zokecc::WordModulus, PortableWordModulus>;
#endif

template <class Modulus>
class WordProducts : public testing::Test {};
TYPED_TEST_SUITE(WordProducts, WordModuli);

TYPED_TEST(WordProducts, ProductsAreThoseOfTheDefinition) {
    for (uint32_t words = 5; words <= 9; ++words)
        check_width<zokecc::AnyWidth<TypeParam>>(words, kGuardBits, 7520);
}

TEST(WordLimbs, FiveToNineWordsAreServed) {
    uint32_t p[10] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
    EXPECT_FALSE(zokecc::WordModulus::fits(p, 4));
    EXPECT_FALSE(zokecc::WordModulus::fits(p, 10));
    for (uint32_t words = 5; words <= 9; ++words) {
        EXPECT_TRUE(zokecc::AnyWordLimbs::fits(p, words)) << words;
        p[words - 1] = 0;
        EXPECT_FALSE(zokecc::AnyWordLimbs::fits(p, words)) << words;
        p[words - 1] = 1;
    }
}

// p with a top word of 1, which needs the largest shift.
TYPED_TEST(WordProducts, EveryShiftOfTheModulus) {
    HardWords draw(7540);
    for (uint32_t words = 5; words <= 9; ++words)
        for (unsigned shift = 0; shift < 32; ++shift) {
            mint p = draw.untrimmed(words);
            p.words[0] |= 1;
            p.words[words - 1] = (p.words[words - 1] | 0x80000000u) >> shift;
            check_hard_products<zokecc::AnyWidth<TypeParam>>(p, kGuardBits, draw, rounds(8));
            ASSERT_FALSE(this->HasFailure()) << mint_to_hex(p) << ", " << draw.where();
        }
}

}  // namespace
}  // namespace zokecc_test::word_limbs_test

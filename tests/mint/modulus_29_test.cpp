// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Products on 29-bit limbs: in loops, and as the library chooses between loops and columns.
#include "mint/limbs/modulus_29_columns.h"

#include <algorithm>

#include "tests/mint/limb_products.h"
#include "tests/mint/portable_moduli.h"
#include "tests/support/emulated.h"

namespace zokecc_test::short_limbs_test {
namespace {

// multiply_looped with the interface of the others.
template <class Modulus>
struct LoopedLimbs {
    using Limb = uint32_t;
    static constexpr unsigned kElementLimbs = zokecc::kMaxFastWords;
    unsigned limbs() const { return modulus.words; }
    static bool fits(const uint32_t *p, uint32_t words) {
        return zokecc::column_scale(words) == 0 && Modulus::fits(p, words);
    }
    void prepare(const uint32_t *p, uint32_t words) { modulus.prepare(p, words); }
    bool multiply(const Limb *a, const Limb *b, Limb *out) const {
        return multiply_looped(modulus, a, b, out);
    }
    Modulus modulus;
};

// A machine with 64-bit limbs has only the portable steps for these.
#ifdef __SIZEOF_INT128__
using ShortModuli = testing::Types<zokecc::ShortModulus>;
#else
using ShortModuli = testing::Types<zokecc::ShortModulus, PortableShortModulus>;
#endif

template <class Modulus>
class ShortProducts : public testing::Test {};
TYPED_TEST_SUITE(ShortProducts, ShortModuli);

// The words above the quotient, too: nothing reads them, but they are specified.
TEST(ShortLimbs, ReciprocalIsThatOfTheDefinitionInEveryWord) {
    HardWords draw(7430);
    for (uint32_t words = 1; words <= 9; ++words)
        for (uint32_t exponent :
             {32 * words, 32 * words + 31, 64 * words, 64 * words + 45, 64 * words + 95}) {
            uint32_t p[9] = {};
            draw.fill(p, words);
            p[words - 1] |= 1u << draw.below(32);
            uint32_t out[16];
            std::fill(out, out + 16, 0xA5A5A5A5u);
            zokecc::reciprocal_words(p, words, exponent, out, 15);
            const Natural quotient = Natural::power_of_two(exponent) / Natural(p, words);
            for (unsigned i = 0; i < 15; ++i)
                EXPECT_EQ(quotient.word(i), out[i]) << draw.where() << ", " << exponent << ", " << i;
            EXPECT_EQ(0xA5A5A5A5u, out[15]);
        }
}

constexpr unsigned kGuardBits = zokecc::kShortBits;

TYPED_TEST(ShortProducts, LoopedProductsAreThoseOfTheDefinition) {
    check_width<LoopedLimbs<TypeParam>>(5, kGuardBits, 7410);
    check_width<LoopedLimbs<TypeParam>>(9, kGuardBits, 7410);
}

TYPED_TEST(ShortProducts, ChosenProductsAreThoseOfTheDefinition) {
    for (uint32_t words = 5; words <= 9; ++words)
        check_width<zokecc::AnyWidth<TypeParam>>(words, kGuardBits, 7420);
}

TEST(ShortLimbs, EveryTopWordButZeroFits) {
    for (uint32_t words = 5; words <= 9; ++words) {
        uint32_t p[9] = {1, 1, 1, 1, 1, 1, 1, 1, 1};
        for (uint32_t zeros = 0; zeros <= 32; ++zeros) {
            p[words - 1] = zeros == 32 ? 0 : 0xFFFFFFFFu >> zeros;
            EXPECT_EQ(zeros < 32, zokecc::ShortModulus::fits(p, words)) << words << ", " << zeros;
            EXPECT_EQ(zeros < 32, zokecc::AnyShortLimbs::fits(p, words)) << words << ", " << zeros;
        }
    }
    const uint32_t ones[10] = {1, 1, 1, 0xFFFFFFFFu, 0xFFFFFFFFu, 0, 1, 1, 1, 0xFFFFFFFFu};
    EXPECT_FALSE(zokecc::ShortModulus::fits(ones, 4));
    EXPECT_TRUE(zokecc::ShortModulus::fits(ones, 5));
    EXPECT_FALSE(zokecc::ShortModulus::fits(ones, 6));
    EXPECT_FALSE(zokecc::ShortModulus::fits(ones, 10));
}

// For each number of words: how p is shifted and, if the kernel is unrolled, scaled; elsewhere it has as few
// limbs as it needs.
TYPED_TEST(ShortProducts, EveryShiftOfTheModulus) {
    HardWords draw(7440);
    for (uint32_t words = 5; words <= 9; ++words)
        for (unsigned shift = 0; shift < 32; ++shift) {
            mint p = draw.untrimmed(words);
            p.words[0] |= 1;
            p.words[words - 1] = (p.words[words - 1] | 0x80000000u) >> shift;
            check_hard_products<zokecc::AnyWidth<TypeParam>>(p, kGuardBits, draw, rounds(24));
            ASSERT_FALSE(this->HasFailure()) << mint_to_hex(p) << ", " << draw.where();
        }
}

// The top bit of a remainder of 256 or 192 bits is not computed but recovered from the guard: remainders
// on both sides of it, as close as words allow, and those of the smallest and of the largest moduli.
TYPED_TEST(ShortProducts, TopBitOfTheRemainderFollowsFromTheGuard) {
    HardWords draw(7450);
    const Natural one(1);
    for (uint32_t words = 6; words <= 8; ++words) {
        const Natural half = Natural::power_of_two(32 * words - 1);
        for (const Natural &modulus :
             {half + one, half + (half >> 3) - one, half + (half >> 1) + one, (half << 1) - one}) {
            const mint p = modulus.to_mint();
            LimbProducts<zokecc::AnyWidth<TypeParam>> products(p, kGuardBits);
            for (int i = 0; i < rounds(16); ++i) {
                const mint a = drawn_operand(draw, p);
                mint inverse{};
                mint_EEA_algo(&a, &p, &inverse);
                const Natural distance(draw.trimmed(1 + draw.below(words)));
                for (const Natural &rest : {half - one, half, (half + distance) % modulus,
                                            half < distance ? half : half - distance}) {
                    if (!(rest < modulus)) continue;
                    products.check(a, defined_product(rest.to_mint(), inverse, p));
                }
            }
            ASSERT_FALSE(this->HasFailure()) << mint_to_hex(p) << ", " << draw.where();
        }
    }
}

// The largest limbs and columns, closest to an overflow of a column.
template <class Product>
void check_largest(uint32_t words) {
    const mint p = (Natural::power_of_two(32 * words) - Natural(1)).to_mint();
    const mint largest = (Natural(p) - Natural(1)).to_mint();
    LimbProducts<Product> products(p, kGuardBits);
    products.check(largest, largest);
    products.check(p, p);
    for (unsigned bits = 1; bits < 32 * words; bits += 7) {
        const mint ones = (Natural::power_of_two(bits) - Natural(1)).to_mint();
        products.check(largest, ones);
        products.check((Natural(p) - Natural(ones)).to_mint(), largest);
    }
}

TYPED_TEST(ShortProducts, LargestColumnsDoNotOverflow) {
    for (uint32_t words = 5; words <= 9; ++words) check_largest<zokecc::AnyWidth<TypeParam>>(words);
}

}  // namespace
}  // namespace zokecc_test::short_limbs_test

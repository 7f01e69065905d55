// Products on limbs of 29 bits: unrolled, in loops, and as the library chooses between them.
#include "mint/limbs/modulus_29.h"

#include <algorithm>

#include "tests/mint/limb_products.h"

namespace zokecc_test::short_limbs_test {
namespace {

// multiply_looped in the shape of the others.
struct LoopedLimbs {
    using Limb = uint32_t;
    static constexpr unsigned kElementLimbs = zokecc::kMaxFastWords;
    unsigned limbs() const { return modulus.words; }
    static bool fits(const uint32_t *p, uint32_t words) { return zokecc::ShortModulus::fits(p, words); }
    void prepare(const uint32_t *p, uint32_t words) { modulus.prepare(p, words); }
    bool multiply(const Limb *a, const Limb *b, Limb *out) const {
        return zokecc::multiply_looped(modulus, a, b, out);
    }
    zokecc::ShortModulus modulus;
};

// The words above the quotient, too: nothing there reads them, but they are promised.
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

TEST(ShortLimbs, UnrolledProductsAreThoseOfTheDefinition) {
    check_width<zokecc::ShortLimbs<5>>(5, kGuardBits, 7400);
    check_width<zokecc::ShortLimbs<6>>(6, kGuardBits, 7400);
    check_width<zokecc::ShortLimbs<7>>(7, kGuardBits, 7400);
    check_width<zokecc::ShortLimbs<8>>(8, kGuardBits, 7400);
    check_width<zokecc::ShortLimbs<9>>(9, kGuardBits, 7400);
}

TEST(ShortLimbs, LoopedProductsAreThoseOfTheDefinition) {
    for (uint32_t words = 5; words <= 9; ++words) check_width<LoopedLimbs>(words, kGuardBits, 7410);
}

TEST(ShortLimbs, ChosenProductsAreThoseOfTheDefinition) {
    for (uint32_t words = 5; words <= 9; ++words) check_width<zokecc::AnyShortLimbs>(words, kGuardBits, 7420);
}

// The modulus is shifted to the top of its last limb; for that many bits a word has to suffice.
TEST(ShortLimbs, ModuliThatLackTopBitsAreRefused) {
    for (uint32_t words = 5; words <= 9; ++words) {
        const uint32_t spare = 29 * zokecc::short_limbs(words) - 32 * words;
        uint32_t p[9] = {1, 1, 1, 1, 1, 1, 1, 1, 1};
        for (uint32_t zeros = 0; zeros < 32; ++zeros) {
            p[words - 1] = 0xFFFFFFFFu >> zeros;
            EXPECT_EQ(zeros + spare < 32, zokecc::ShortModulus::fits(p, words)) << words << ", " << zeros;
            EXPECT_EQ(zeros + spare < 32, zokecc::AnyShortLimbs::fits(p, words)) << words << ", " << zeros;
        }
    }
    const uint32_t ones[10] = {1, 1, 1, 0xFFFFFFFFu, 0xFFFFFFFFu, 1, 1, 1, 1, 0xFFFFFFFFu};
    EXPECT_FALSE(zokecc::ShortModulus::fits(ones, 4));
    EXPECT_TRUE(zokecc::ShortLimbs<5>::fits(ones, 5));
    EXPECT_FALSE(zokecc::ShortLimbs<6>::fits(ones, 5));
    EXPECT_FALSE(zokecc::ShortModulus::fits(ones, 10));
}

// Limbs and columns at their largest: the closest that a column comes to overflow.
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

TEST(ShortLimbs, LargestColumnsDoNotOverflow) {
    for (uint32_t words = 5; words <= 9; ++words) {
        check_largest<LoopedLimbs>(words);
        check_largest<zokecc::AnyShortLimbs>(words);
    }
    check_largest<zokecc::ShortLimbs<5>>(5);
    check_largest<zokecc::ShortLimbs<9>>(9);
}

}  // namespace
}  // namespace zokecc_test::short_limbs_test

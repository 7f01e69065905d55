// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The inverse on limbs, compared with the kept iteration word for word.
//
// The fast inverse may give up: if the cofactor x is a multiple of m, the reference's result depends
// on which multiple. No test needs this to happen, because no operand is known that causes it. If
// the kept subtraction never departs from the true one, a x is -gcd(a, m) modulo m. A departure turns
// the steps into a true Euclid on a and another modulus, which equal words make smaller and lost
// borrows larger, and x stays below that modulus: so equal words alone never lead to m. For one lost
// borrow alone the bounds on the rows of the matrix exclude m, too. Several together would have to
// hit one residue out of 2^64 and more.
#include "mint/limbs/inverse.h"

#include "mint/limbs/division.h"
#include "tests/mint/kept_rules.h"
#include "tests/mint/limb_rows.h"
#include "tests/mint/moduli.h"
#include "tests/support/counting_trace.h"
#include "tests/support/emulated.h"

namespace zokecc_test::fast_inverse_test {
namespace {

constexpr uint32_t kMaxWords = zokecc::kMaxFastWords;

template <class Steps>
class FastInverseOn : public testing::Test {
protected:
    using L = typename Steps::Limb;

    void SetUp() override { CountingTrace::reset(); }

    // Runs the inverse of a modulo m with fences around its output.
    static void expect_kept(const Natural &a, const Natural &m) {
        const unsigned n = zokecc::limbs_for<L>(static_cast<unsigned>(m.word_count()));
        Row<L> x(n);
        Row<L> modulus(n);
        for (unsigned i = 0; i < n * zokecc::kWordsPerLimb<L>; ++i) {
            zokecc::set_word(x.data(), i, a.word(i));
            zokecc::set_word(modulus.data(), i, m.word(i));
        }
        Row<L> out = fenced_limbs(Row<L>(n));
        ASSERT_TRUE((zokecc::FastInverse<Steps, CountingTrace>(x.data(), modulus.data(), n).run(out.data())));
        EXPECT_EQ(kept_inverse(a, m), natural(out, n)) << a.to_hex() << " modulo " << m.to_hex();
        EXPECT_TRUE(fence_stands(out, n));
        EXPECT_TRUE((zokecc::FastInverse<Steps, CountingTrace>(x.data(), modulus.data(), n).run(x.data())));
        EXPECT_EQ(natural(out, n), natural(x)) << "over the operand";
    }

    // An odd modulus above 1 with the given number of words, hard or a named one.
    Natural drawn_modulus(uint32_t words) {
        mint m = draw.untrimmed(words);
        m.words[0] |= 1;
        if (m.words[words - 1] < 2) m.words[words - 1] = draw.below(2) == 0 ? 3 : 0xFFFFFFFFu;
        return Natural(m);
    }

    // Between 1 and m - 1: small, sparse, short, even, and close to m, to m / 2 and to words of m.
    Natural drawn_operand(const Natural &m) {
        const Natural one(1);
        for (;;) {
            Natural a = Natural(draw.reduced(m.to_mint()));
            switch (draw.below(8)) {
            case 0: a = Natural(draw.below(64)); break;
            case 1: a = Natural::power_of_two(draw.below(m.bit_length())); break;
            case 2: a = Natural(draw.trimmed(static_cast<uint32_t>(m.word_count()))); break;
            case 3: a = (a >> (32 * draw.below(8))) << draw.below(64); break;
            case 4: a = Natural::power_of_two(32 * (1 + draw.below(8))) - one; break;
            default: break;
            }
            if (!a.is_zero() && a < m) return a;
        }
    }

    HardWords draw{7501 + sizeof(L)};
};
TYPED_TEST_SUITE(FastInverseOn, StepTypes);

TYPED_TEST(FastInverseOn, KeptIterationForTheModuliOfCurves) {
    const std::vector<Modulus> moduli = odd_moduli();
    for (const Modulus &modulus : moduli) {
        if (modulus.value.word_count() > kMaxWords) continue;
        for (int round = 0; round < rounds(24); ++round) {
            this->expect_kept(this->drawn_operand(modulus.value), modulus.value);
            ASSERT_FALSE(this->HasFailure()) << modulus.name << ", " << this->draw.where();
        }
    }
    EXPECT_GE(CountingTrace::counts.difference_in_place, rounds(100));
}

TYPED_TEST(FastInverseOn, KeptIterationForHardModuliOfOneToNineWords) {
    for (uint32_t words = 1; words <= kMaxWords; ++words)
        for (int round = 0; round < rounds(120); ++round) {
            const Natural m = this->drawn_modulus(words);
            this->expect_kept(this->drawn_operand(m), m);
            ASSERT_FALSE(this->HasFailure()) << words << " words, " << this->draw.where();
        }
    EXPECT_GE(CountingTrace::counts.difference_in_place, rounds(240));
}

// In the last subtraction, m - x, x has words of m: a is the negated inverse of such an x.
TYPED_TEST(FastInverseOn, KeptLastDifference) {
    for (uint32_t words = 3; words <= kMaxWords; ++words)
        for (int round = 0; round < rounds(60); ++round) {
            const Natural m = this->drawn_modulus(words);
            const Natural x(this->draw.relative_of(m.to_mint()));
            if (x.is_zero() || !(x < m)) continue;
            const Natural a = kept_inverse(m - x, m);
            if (a.is_zero() || !(a < m)) continue;
            this->expect_kept(a, m);
            ASSERT_FALSE(this->HasFailure()) << words << " words, " << this->draw.where();
        }
    EXPECT_GE(CountingTrace::counts.last_difference, rounds(100));
}

// Operands with a factor in common with the modulus have no inverse, but a defined result.
TYPED_TEST(FastInverseOn, CommonFactorsGiveWhatTheIterationLeaves) {
    for (uint32_t words = 2; words <= kMaxWords; ++words)
        for (int round = 0; round < rounds(60); ++round) {
            const uint32_t half = words / 2;
            const Natural f = this->drawn_modulus(half);
            const Natural m = f * this->drawn_modulus(words - half);
            const Natural a = f * this->drawn_operand(m / f);
            this->expect_kept(a, m);
            ASSERT_FALSE(this->HasFailure()) << words << " words, " << this->draw.where();
        }
}

// Long runs of halvings fill the matrix at once, and a value with zero low limbs needs even more.
TYPED_TEST(FastInverseOn, PowersOfTwoAndTheirNeighbours) {
    const Natural one(1);
    for (const char *name : {"2^288 - 1", "2^288 - 167", "2^256 + 1", "2^255 - 19"})
        for (const Modulus &modulus : odd_moduli()) {
            if (modulus.name != name) continue;
            for (unsigned bits = 1; bits + 1 < modulus.value.bit_length(); bits += kEmulated ? 31 : 7) {
                const Natural power = Natural::power_of_two(bits);
                for (const Natural &a : {power, power - one, power + one, modulus.value - power})
                    this->expect_kept(a, modulus.value);
                ASSERT_FALSE(this->HasFailure()) << name << ", 2^" << bits;
            }
        }
}

TYPED_TEST(FastInverseOn, EveryOperandOfSmallModuli) {
    for (uint32_t m = 3; m < static_cast<uint32_t>(rounds(80)); m += 2)
        for (uint32_t a = 1; a < m; ++a) this->expect_kept(Natural(a), Natural(m));
    for (uint32_t m : {0x7FFFFFFFu, 0x80000001u, 0xFFFFFFFBu, 0xFFFFFFFFu})
        for (uint32_t a : {1u, 2u, 3u, 0x10000u, m / 2, m / 2 + 1, m / 3, m - 2, m - 1})
            this->expect_kept(Natural(a), Natural(m));
}

// mint_EEA_algo uses the fast inverse only for odd moduli of up to nine words.
TEST(FastInverseCalls, KeptIterationOnBothSidesOfTheChoice) {
    HardWords draw(7531);
    for (int round = 0; round < rounds(300); ++round) {
        mint m = draw.trimmed(12);
        if (m.len > 0 && draw.below(4) != 0) m.words[0] |= 1;
        if (m.len == 0 || (m.len == 1 && m.words[0] == 0)) continue;
        const mint a = draw.below(3) == 0 ? draw.number(12) : draw.reduced(m);
        mint out = a;
        ASSERT_EQ(0, mint_EEA_algo(&a, &m, &out));
        ASSERT_TRUE(is_value(out, kept_inverse(Natural(a), Natural(m))))
            << mint_to_hex(a) << " modulo " << mint_to_hex(m) << ", " << draw.where();
        mint over_m = m;
        ASSERT_EQ(0, mint_EEA_algo(&a, &over_m, &over_m));
        ASSERT_TRUE(is_value(over_m, out)) << "over the modulus, " << draw.where();
    }
}

}  // namespace
}  // namespace zokecc_test::fast_inverse_test

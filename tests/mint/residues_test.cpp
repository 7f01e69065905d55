// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Powers with the fast moduli, compared with the reference, and the choice made by mint_exp.
#include "mint/limbs/residues.h"

#include <gtest/gtest.h>

#include "mint/by_definition.h"
#include "mint/limbs/modulus_29.h"
#include "mint/limbs/modulus_32.h"
#include "tests/mint/limb_products.h"
#include "tests/mint/numbers.h"
#include "tests/support/emulated.h"

namespace zokecc_test::residues_test {
namespace {

template <class Modulus>
class ResiduesOf : public testing::Test {
protected:
    using Residues = zokecc::Residues<Modulus, CountingTrace>;
    using Element = typename Residues::Element;

    void SetUp() override { CountingTrace::reset(); }

    std::vector<mint> served() {
        std::vector<mint> out;
        for (uint32_t words = 5; words <= 9; ++words)
            for (const mint &p : moduli_of(words, draw, rounds(6)))
                if (Residues::serves(p)) out.push_back(p);
        EXPECT_FALSE(out.empty());
        return out;
    }

    // Nonzero exponents: dense, sparse, short, and as long as p.
    mint exponent(const mint &p) {
        for (;;) {
            const mint e = Natural(draw.trimmed(draw.below(3) == 0 ? 1 : p.len)).to_mint();
            if (e.len != 0) return e;
        }
    }

    HardWords draw{7610};
};

using Moduli = testing::Types<
#ifdef __SIZEOF_INT128__
    zokecc::FullLimbs<3>, zokecc::FullLimbs<4>, zokecc::FullLimbs<5>,
#endif
    zokecc::AnyWordLimbs, zokecc::AnyShortLimbs>;
TYPED_TEST_SUITE(ResiduesOf, Moduli);

TYPED_TEST(ResiduesOf, PowersAreThoseOfTheDefinition) {
    for (const mint &p : this->served()) {
        const typename TestFixture::Residues residues(p);
        for (int round = 0; round < rounds(8); ++round) {
            const mint base = this->draw.number(round % 4 == 0 ? MINT_WORDS : p.len);
            const mint e = this->exponent(p);
            typename TestFixture::Element x, out;
            residues.load(base, x);
            residues.power(x, e, out);
            mint got{};
            mint want{};
            mint reduced{};
            residues.store(out, got);
            mint_mod(&base, &p, &reduced);
            zokecc::power_by_definition(reduced, e, p, want);
            ASSERT_TRUE(is_value(got, Natural(want)))
                << mint_to_hex(base) << " ^ " << mint_to_hex(e) << " modulo " << mint_to_hex(p);
            residues.power(x, e, x);
            EXPECT_TRUE(residues.equal(x, out)) << "over the base";
        }
    }
}

// All exponent lengths around the steps of the window width, all ones and single bits.
TYPED_TEST(ResiduesOf, ExponentsOfEveryLength) {
    const mint p = this->served().back();
    const typename TestFixture::Residues residues(p);
    const mint base = Natural(this->draw.reduced(p)).to_mint();
    typename TestFixture::Element x, out;
    residues.load(base, x);
    for (unsigned bits = 1; bits < 80; ++bits)
        for (const Natural &e : {Natural::power_of_two(bits) - Natural(1), Natural::power_of_two(bits - 1),
                                 Natural::power_of_two(bits - 1) + Natural(bits > 1 ? 1 : 0)}) {
            residues.power(x, e.to_mint(), out);
            mint got{};
            mint want{};
            residues.store(out, got);
            zokecc::power_by_definition(base, e.to_mint(), p, want);
            ASSERT_TRUE(is_value(got, Natural(want))) << e.to_hex();
        }
}

// f^2 and f g modulo f g: multiples of the modulus, for which the quotient is left open.
TYPED_TEST(ResiduesOf, OpenQuotientsGoToTheDefinition) {
    for (uint32_t words = 5; words <= 9; ++words) {
        const Natural f = Natural::power_of_two(16 * words) - Natural(2 * this->draw.below(1000) + 1);
        for (const Natural &g : {f, Natural::power_of_two(16 * words) - Natural(5001)}) {
            const mint p = (f * g).to_mint();
            if (!TestFixture::Residues::serves(p)) continue;
            const typename TestFixture::Residues residues(p);
            typename TestFixture::Element x, y, zero;
            residues.load(f.to_mint(), x);
            residues.load(g.to_mint(), y);
            residues.load(mint{}, zero);
            CountingTrace::reset();
            residues.multiply(x, y, y);
            EXPECT_TRUE(residues.equal(y, zero));
            EXPECT_EQ(1, CountingTrace::counts.quotient_unsure);
            if (g != f) continue;
            residues.square(x, x);
            EXPECT_TRUE(residues.equal(x, zero));
            EXPECT_EQ(2, CountingTrace::counts.quotient_unsure);
        }
    }
}

// What callers may pass to mint_exp: reduced or not, trimmed or not, any length.
TEST(ResiduesCalls, PowersOnBothSidesOfTheChoice) {
    HardWords draw(7620);
    for (int round = 0; round < rounds(400); ++round) {
        mint p = draw.number(11);
        if (p.len > 0 && draw.below(4) != 0) p.words[0] |= 1;
        const mint base = draw.below(3) == 0 ? draw.number(MINT_WORDS) : draw.number(p.len);
        const mint e = draw.below(4) == 0 ? draw.number(p.len) : draw.number(1);
        mint p_minus_1{};
        mint reduced{};
        const mint one = one_word(1);
        mint_sub(&p, &one, &p_minus_1);
        mint_mod(&e, &p_minus_1, &reduced);
        reduced.len = zokecc::trimmed_words(reduced);
        mint want = one_word(1);
        if (reduced.len != 0) zokecc::power_by_definition(base, reduced, p, want);
        for_each_aliasing(
            base, e, Operands::kKept, [&p](mint *a, mint *b, mint *out) { return mint_exp(a, b, &p, out); },
            [&](const AliasRun &run) {
                if (!same_record(run.a, base) || !same_record(run.b, e)) return;
                EXPECT_EQ(0, run.returned);
                EXPECT_TRUE(is_value(run.out, want))
                    << run.how << ": " << mint_to_hex(base) << " ^ " << mint_to_hex(e) << " modulo "
                    << mint_to_hex(p) << ", " << draw.where();
            });
        ASSERT_FALSE(testing::Test::HasFailure());
    }
}

}  // namespace
}  // namespace zokecc_test::residues_test

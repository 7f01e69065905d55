// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Every operation of the fast fields, compared with the reference word for word.
#include "tests/ecc/fast_field_on.h"
#include "tests/mint/numbers.h"
#include "tests/support/emulated.h"

namespace zokecc_test::fast_field_test {
namespace {

TYPED_TEST_SUITE(FastFieldOn, AllFields);

TYPED_TEST(FastFieldOn, SumsAreThoseOfTheDefinition) {
    this->for_each_modulus(30, rounds(40), [this](const auto &on) {
        const mint a = loadable(this->draw, on.p);
        this->expect_same_sum(on, a, loadable(this->draw, on.p));
        this->expect_same_sum(on, a, a);
        mint opposite{};
        mint_sub(&on.p, &a, &opposite);  // p itself, or one of its neighbours, is the sum
        if (a.len != 0 && mint_compare(&opposite, &on.p) < 0) this->expect_same_sum(on, a, opposite);
    });
}

TYPED_TEST(FastFieldOn, KeptDifferences) {
    this->for_each_modulus(30, rounds(60), [this](const auto &on) {
        const mint a = loadable(this->draw, on.p);
        mint b = this->draw.relative_of(a);
        if (mint_compare(&b, &on.p) >= 0) b = loadable(this->draw, on.p);
        this->expect_same_difference(on, a, b);
        this->expect_same_difference(on, b, a);
        this->expect_same_difference(on, a, a);
    });
    EXPECT_GE(CountingTrace::counts.first_difference, rounds(600));
}

// For a < b the difference is subtracted from p, which has words in common with it here.
TYPED_TEST(FastFieldOn, KeptDifferencesFromTheModulus) {
    this->for_each_modulus(30, rounds(60), [this](const auto &on) {
        const Natural p(on.p);
        const Natural below(this->draw.relative_of(on.p));
        if (below.is_zero() || !(below < p)) return;
        const Natural a = Natural(loadable(this->draw, on.p)) % (p - below);
        this->expect_same_difference(on, a.to_mint(), (a + below).to_mint());
        this->expect_same_negations(on, below.to_mint());
    });
    EXPECT_GE(CountingTrace::counts.second_difference, rounds(600));
}

TYPED_TEST(FastFieldOn, NegationsAreThoseOfTheDefinition) {
    this->for_each_modulus(30, rounds(40), [this](const auto &on) {
        this->expect_same_negations(on, loadable(this->draw, on.p));
    });
}

TYPED_TEST(FastFieldOn, KeptDoublingsAndShifts) {
    this->for_each_modulus(30, rounds(40), [this](const auto &on) {
        const Natural p(on.p);
        this->expect_same_shift(on, loadable(this->draw, on.p), 1);
        this->expect_same_shift(on, loadable(this->draw, on.p),
                                static_cast<int32_t>(2 + this->draw.below(40)));
        // The double of this one has words in common with p.
        const Natural half = Natural(this->draw.relative_of(on.p)) >> 1;
        if (half < p) this->expect_same_shift(on, half.to_mint(), 1);
        const Natural upper = (p + Natural(this->draw.relative_of(on.p))) >> 2;
        if (upper < p) this->expect_same_shift(on, upper.to_mint(), 3);
    });
    EXPECT_GE(CountingTrace::counts.doubled_difference, rounds(150));
}

TYPED_TEST(FastFieldOn, HalvesAreThoseOfTheDefinition) {
    this->for_each_modulus(
        30, rounds(40), [this](const auto &on) { this->expect_same_half(on, loadable(this->draw, on.p)); });
}

TYPED_TEST(FastFieldOn, ProductsAreThoseOfTheDefinition) {
    this->for_each_modulus(30, rounds(60), [this](const auto &on) {
        const mint a = loadable(this->draw, on.p);
        const mint b = loadable(this->draw, on.p);
        this->expect_same_product(on, a, b);
        this->expect_same_product(on, a, a);
        this->expect_same_product(on, b, b);
    });
}

// Products close to a multiple of p, for which the division computes the quotient.
TYPED_TEST(FastFieldOn, ProductsNearMultiplesOfTheModulus) {
    this->for_each_modulus(20, rounds(20), [this](const auto &on) {
        const mint a = loadable(this->draw, on.p);
        mint inverse{};
        mint_EEA_algo(&a, &on.p, &inverse);
        const Natural near(this->draw.below(4));
        for (const Natural &rest : {near, Natural(on.p) - near}) {
            const mint b = defined_product(rest.to_mint(), inverse, on.p);
            this->expect_same_product(on, a, b);
        }
    });
    EXPECT_GE(CountingTrace::counts.quotient_unsure, rounds(500));
}

TYPED_TEST(FastFieldOn, KeptInverses) {
    this->for_each_modulus(30, rounds(6), [this](const auto &on) {
        const mint a = loadable(this->draw, on.p);
        if (a.len == 0) return;
        this->expect_same_inverse(on, a);
    });
    EXPECT_GE(CountingTrace::counts.difference_in_place, rounds(30));
}

// The only unreduced element, and its use in the formulas.
TYPED_TEST(FastFieldOn, KeptInverseOfZeroIsTheModulusAndProductsReduceIt) {
    this->for_each_modulus(10, 1, [this](const auto &on) {
        auto zero = this->loaded(on, mint{});
        auto inverse = zero;
        on.fast.invert(zero, inverse);
        EXPECT_TRUE(this->holds(on, inverse, on.p));
        for (int i = 0; i < 4; ++i) {
            const auto x = this->loaded(on, loadable(this->draw, on.p));
            auto out = x;
            on.fast.mul(x, inverse, out);
            EXPECT_TRUE(on.fast.is_zero(out));
            on.fast.mul(inverse, x, out);
            EXPECT_TRUE(on.fast.is_zero(out));
        }
        on.fast.mul(inverse, inverse, inverse);
        EXPECT_TRUE(on.fast.is_zero(inverse));
    });
}

TYPED_TEST(FastFieldOn, EqualityZeroAndOneLookAtEveryWord) {
    this->for_each_modulus(10, 1, [this](const auto &on) {
        auto zero = this->loaded(on, mint{});
        auto one = zero;
        auto set = this->loaded(on, Natural(2).to_mint());
        on.fast.set_one(one);
        EXPECT_TRUE(on.fast.is_zero(zero) && !on.fast.is_one(zero));
        EXPECT_TRUE(on.fast.is_one(one) && !on.fast.is_zero(one));
        for (unsigned bit = 0; bit + 1 < Natural(on.p).bit_length(); bit += 5) {
            const auto power = this->loaded(on, Natural::power_of_two(bit).to_mint());
            auto more = power;
            on.fast.add(power, one, more);
            EXPECT_FALSE(on.fast.is_zero(power)) << bit;
            EXPECT_EQ(bit == 0, on.fast.is_one(power)) << bit;
            EXPECT_FALSE(on.fast.is_one(more)) << bit;
            EXPECT_FALSE(on.fast.equal(power, more)) << bit;
            EXPECT_FALSE(on.fast.equal(power, zero)) << bit;
            EXPECT_TRUE(on.fast.equal(power, power)) << bit;
        }
        on.fast.set_zero(set);
        EXPECT_TRUE(on.fast.equal(set, zero));
        on.fast.copy(one, set);
        EXPECT_TRUE(on.fast.equal(set, one));
        on.fast.clear(set);
        EXPECT_TRUE(on.fast.is_zero(set));
    });
}

TYPED_TEST(FastFieldOn, LoadTakesReducedAndTrimmedNumbersAlone) {
    this->for_each_modulus(10, 1, [this](const auto &on) {
        const Natural p(on.p);
        typename TypeParam::Element out;
        for (const Natural &value : {Natural(), Natural(1), p >> 1, p - Natural(1)}) {
            EXPECT_TRUE(on.fast.load(this->draw.with_rubbish(value), out)) << value.to_hex();
            EXPECT_TRUE(this->holds(on, out, value.to_mint()));
            mint untrimmed = this->draw.with_rubbish(value);
            untrimmed.words[untrimmed.len++] = 0;
            EXPECT_FALSE(on.fast.load(untrimmed, out)) << value.to_hex();
        }
        for (const Natural &value :
             {p, p + Natural(1), p << 1, Natural::power_of_two(32 * on.p.len), p << 290})
            EXPECT_FALSE(on.fast.load(this->draw.with_rubbish(value), out)) << value.to_hex();
        for (uint32_t len : {MINT_WORDS + 1u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
            mint wrong = counting_words(len);
            EXPECT_FALSE(on.fast.load(wrong, out)) << len;
        }
    });
}

TYPED_TEST(FastFieldOn, PointsAreLoadedAndStoredByTheirFlag) {
    this->for_each_modulus(4, 1, [this](const auto &on) {
        const mint x = loadable(this->draw, on.p);
        const mint y = loadable(this->draw, on.p);
        typename TypeParam::Affine P;
        ecc_point stored{};
        EXPECT_TRUE(on.fast.load(ecc_point{0, x, y}, P));
        on.fast.store(P, stored);
        EXPECT_EQ(0u, stored.infinity);
        EXPECT_TRUE(is_value(stored.x, x) && is_value(stored.y, y));
        // Any flag but 1 is a finite point, and the flag is retained.
        EXPECT_TRUE(on.fast.load(ecc_point{7, x, y}, P));
        EXPECT_EQ(7u, P.infinity);
        EXPECT_FALSE(on.fast.load(ecc_point{0, on.p, y}, P));
        EXPECT_FALSE(on.fast.load(ecc_point{0, x, on.p}, P));
        EXPECT_TRUE(on.fast.load(ecc_point{1, on.p, on.p}, P));  // its coordinates are never read
        EXPECT_EQ(1u, P.infinity);
    });
}

}  // namespace
}  // namespace zokecc_test::fast_field_test

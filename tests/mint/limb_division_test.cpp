// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Division on limbs, compared with Knuth's division on words.
#include "mint/limbs/division.h"

#include "mint/limbs/borrow_rule.h"
#include "tests/mint/definition.h"
#include "tests/mint/limb_rows.h"
#include "tests/support/counting_trace.h"
#include "tests/support/emulated.h"

namespace zokecc_test::fast_divide_test {
namespace {

using zokecc::kMintWords;
using zokecc::kProductWords;

template <class Steps>
class FastDivide : public testing::Test {
protected:
    using Limb = typename Steps::Limb;

    static constexpr uint32_t kLeastWords = zokecc::kWordsPerLimb<Limb> + 1;

    // floor((B^2 - 1) / d) - B
    static Natural true_reciprocal(Limb d) {
        const Natural base = Natural::power_of_two(zokecc::kLimbBits<Limb>);
        return (base * base - Natural(1)) / natural(d) - base;
    }

    // A multiple of the divisor, or one less or more.
    void set_near_multiple(const Row<Limb> &divisor, Row<Limb> &span) {
        const Natural two(2);
        const Natural product = natural(divisor) * (natural(drawn_limb<Limb>(draw)) + Natural(1));
        const Natural near = product + Natural(1 + draw.below(3)) - two;
        for (unsigned i = 0; i < 3 * zokecc::kWordsPerLimb<Limb>; ++i)
            zokecc::set_word(span.data(), i, near.word(i));
    }

    // v[v_count] with a nonzero top word, its top bit set or not.
    void draw_divisor() {
        v_count = draw.between(kLeastWords, kMintWords);
        draw.fill(v, v_count);
        if (v[v_count - 1] == 0) v[v_count - 1] = draw.word() | 1;
        if (draw.below(4) == 0) v[v_count - 1] |= 0x80000000u;
        if (draw.below(4) == 0) v[v_count - 1] = 1u << draw.below(32);
    }

    // Hard words, or a multiple of v plus v - 1, v - 2 or so, for which estimates are too large.
    void draw_dividend() {
        u_count = draw.between(v_count, kProductWords);
        draw.fill(u, u_count);
        if (draw.below(2) == 0 || u_count == v_count) return;
        const Natural divisor(v, v_count);
        const uint32_t room = u_count - v_count < kMintWords ? u_count - v_count : kMintWords;
        const Natural quotient(draw.untrimmed(room));
        const Natural rest = draw.below(3) == 0 ? Natural() : divisor - Natural(1 + draw.below(3)) % divisor;
        const Natural made = quotient * divisor + rest % divisor;
        for (uint32_t i = 0; i < u_count; ++i) u[i] = made.word(i);
    }

    void expect_same_division();

    HardWords draw{7201 + sizeof(Limb)};
    uint32_t u[kProductWords] = {};
    uint32_t v[kMintWords] = {};
    uint32_t u_count = 0, v_count = 0;
};
TYPED_TEST_SUITE(FastDivide, StepTypes);

template <class Steps>
void FastDivide<Steps>::expect_same_division() {
    uint32_t quotient[kProductWords + 1], remainder[kMintWords + 1];
    uint32_t fast_quotient[kProductWords + 1], fast_remainder[kMintWords + 1];
    for (uint32_t *array : {quotient, fast_quotient}) std::fill_n(array, kProductWords + 1, 0xFEFEFEFEu);
    for (uint32_t *array : {remainder, fast_remainder}) std::fill_n(array, kMintWords + 1, 0xFEFEFEFEu);
    zokecc::divide_words(u, u_count, v, v_count, quotient, remainder);
    zokecc::divide_limbs<Steps>(u, u_count, v, v_count, fast_quotient, fast_remainder);
    EXPECT_EQ(0, std::memcmp(quotient, fast_quotient, sizeof quotient));
    EXPECT_EQ(0, std::memcmp(remainder, fast_remainder, sizeof remainder));

    zokecc::divide_limbs<Steps>(u, u_count, v, v_count, nullptr, fast_remainder);
    EXPECT_EQ(0, std::memcmp(remainder, fast_remainder, sizeof remainder)) << "no quotient asked for";
    uint32_t over_v[kMintWords];
    std::memcpy(over_v, v, sizeof v);
    zokecc::divide_limbs<Steps>(u, u_count, over_v, v_count, nullptr, over_v);
    EXPECT_EQ(0, std::memcmp(remainder, over_v, 4 * v_count)) << "remainder over the divisor";
    zokecc::divide_limbs<Steps>(u, u_count, v, v_count, fast_quotient, u);
    EXPECT_EQ(0, std::memcmp(remainder, u, 4 * v_count)) << "remainder over the dividend";
    EXPECT_EQ(0, std::memcmp(quotient, fast_quotient, sizeof quotient));
}

TYPED_TEST(FastDivide, QuotientAndRemainderAreThoseOfTheDefinition) {
    for (int round = 0; round < rounds(6000); ++round) {
        this->draw_divisor();
        this->draw_dividend();
        this->expect_same_division();
        ASSERT_FALSE(this->HasFailure())
            << this->u_count << " by " << this->v_count << " words, " << this->draw.where();
    }
}

TYPED_TEST(FastDivide, EveryPairOfLengths) {
    uint32_t &u_words = this->u_count;
    uint32_t &v_words = this->v_count;
    for (v_words = this->kLeastWords; v_words <= kMintWords; ++v_words)
        for (u_words = v_words; u_words <= kProductWords; ++u_words)
            for (uint32_t top : {1u, 0x80000000u, 0xFFFFFFFFu}) {
                std::fill_n(this->u, u_words, 0xFFFFFFFFu);
                std::fill_n(this->v, v_words, 0xFFFFFFFFu);
                this->v[v_words - 1] = top;
                this->v[0] = 0;
                this->expect_same_division();
                ASSERT_FALSE(this->HasFailure()) << u_words << " by " << v_words << " words";
            }
}

// Quotient and remainder are the same for both forms of the dividend.
TYPED_TEST(FastDivide, DividendAsItsComplement) {
    using L = typename TypeParam::Limb;
    constexpr unsigned kLimbs = zokecc::limbs_for<L>(kProductWords) + 1;
    for (int round = 0; round < rounds(6000); ++round) {
        this->draw_divisor();
        this->draw_dividend();
        L room[kLimbs] = {};
        L divisor[kLimbs] = {};
        L plain[kLimbs] = {};
        const unsigned u_limbs = zokecc::limbs_for<L>(this->u_count);
        const unsigned v_limbs = zokecc::limbs_for<L>(this->v_count);
        const L *limbs = zokecc::as_limbs<L>(this->v, this->v_count, room);
        const unsigned bits = zokecc::leading_zeros(limbs[v_limbs - 1]);
        zokecc::shift_limbs_up(limbs, v_limbs, bits, divisor);
        zokecc::shift_limbs_up(zokecc::as_limbs<L>(this->u, this->u_count, room), u_limbs, bits, plain);
        L flipped[kLimbs];
        std::memcpy(flipped, plain, sizeof flipped);
        zokecc::divide_normalised<TypeParam, false>(plain, u_limbs, divisor, v_limbs);
        zokecc::divide_normalised<TypeParam, true>(flipped, u_limbs, divisor, v_limbs);
        TypeParam::complement_limbs(flipped, v_limbs, flipped);
        ASSERT_EQ(0, std::memcmp(plain, flipped, sizeof flipped)) << this->draw.where();
    }
}

TYPED_TEST(FastDivide, ReciprocalsOfLimbs) {
    using L = typename TypeParam::Limb;
    const L lowest = L{1} << (zokecc::kLimbBits<L> - 1);
    for (L step = 0; step < static_cast<L>(rounds(300)); ++step)
        for (L d : {static_cast<L>(lowest + step), static_cast<L>(kAllOnesLimb<L> - step),
                    static_cast<L>(lowest | drawn_limb<L>(this->draw)),
                    static_cast<L>(kAllOnesLimb<L> / 3 * 2 + step)})
            ASSERT_EQ(this->true_reciprocal(d), natural(zokecc::reciprocal_limb(d))) << natural(d).to_hex();
}

// The digit for the divisor d1 d0, for all relations of the three limbs to it.
TYPED_TEST(FastDivide, DigitsByTwoLimbs) {
    using L = typename TypeParam::Limb;
    const Natural largest = natural(kAllOnesLimb<L>);
    for (int round = 0; round < rounds(4000); ++round) {
        Row<L> divisor = drawn_limbs<L>(this->draw, 2);
        divisor[1] |= L{1} << (zokecc::kLimbBits<L> - 1);
        Row<L> span = drawn_limbs<L>(this->draw, 3);
        switch (this->draw.below(3)) {
        case 0:
            span[2] = divisor[1];
            span[1] = divisor[0] - static_cast<L>(this->draw.below(3));
            break;
        case 1: this->set_near_multiple(divisor, span); break;
        default: break;
        }
        if (natural(divisor) < natural(Row<L>{span[1], span[2]})) span[2] = 0;
        const Natural quotient = natural(span) / natural(divisor);
        const zokecc::DigitFinder<L> finder(divisor[1], divisor[0]);
        ASSERT_EQ(largest < quotient ? largest : quotient, natural(finder.digit(span[2], span[1], span[0])))
            << natural(span).to_hex() << " by " << natural(divisor).to_hex() << ", " << this->draw.where();
    }
}

// All counts, with zero words on top, and products below p, as long as p and far above.
TYPED_TEST(FastDivide, ProductModuloIsThatOfTheDefinition) {
    for (int round = 0; round < rounds(6000); ++round) {
        this->draw_divisor();
        mint p{};
        zokecc::set_words(p, this->v, this->v_count);
        mint a = this->draw.untrimmed(this->draw.between(1, kMintWords));
        mint b = this->draw.untrimmed(this->draw.between(1, kMintWords));
        if (this->draw.below(3) == 0) {
            a = this->draw.reduced(p);
            b = this->draw.reduced(p);
        }
        if (a.len == 0 || b.len == 0) continue;
        uint32_t remainder[kMintWords + 1];
        std::fill_n(remainder, kMintWords + 1, 0xFEFEFEFEu);
        zokecc::multiply_and_divide<TypeParam>(a.words, a.len, b.words, b.len, this->v, this->v_count,
                                               remainder);
        mint got{};
        zokecc::set_words(got, remainder, this->v_count);
        ASSERT_TRUE(is_value(got, defined_product(a, b, p)))
            << mint_to_hex(a) << " * " << mint_to_hex(b) << " modulo " << mint_to_hex(p) << ", "
            << this->draw.where();
        ASSERT_EQ(0xFEFEFEFEu, remainder[this->v_count]);
    }
}

// The exported calls take the fast path from some length on, and agree with the reference on both
// sides of it.
class FastDivideCalls : public testing::Test {
protected:
    HardWords draw{7231};
};

TEST_F(FastDivideCalls, DivisionAndRemainder) {
    for (int round = 0; round < rounds(4000); ++round) {
        const mint u = draw.trimmed(kMintWords);
        mint v = draw.below(2) == 0 ? draw.trimmed(kMintWords) : draw.relative_of(u);
        if (v.len == 0) continue;
        uint32_t quotient_words[kMintWords] = {};
        mint expected{}, quotient{}, remainder{}, alone{};
        const mint rest = defined_remainder(u.words, u.len, v);
        if (u.len >= v.len) {
            uint32_t unused[kMintWords];
            zokecc::divide_words(u.words, u.len, v.words, v.len, quotient_words, unused);
        }
        zokecc::set_words(expected, quotient_words, kMintWords);
        ASSERT_EQ(1, mint_div(&u, &v, &quotient, &remainder));
        ASSERT_EQ(1, mint_mod(&u, &v, &alone));
        ASSERT_TRUE(is_value(quotient, expected)) << draw.where();
        ASSERT_TRUE(is_value(remainder, rest)) << draw.where();
        ASSERT_TRUE(is_value(alone, rest)) << draw.where();
    }
}

TEST_F(FastDivideCalls, ProductAndReducedProduct) {
    for (int round = 0; round < rounds(4000); ++round) {
        mint p = draw.trimmed(kMintWords);
        if (p.len == 0) continue;
        const mint a = draw.below(2) == 0 ? draw.reduced(p) : draw.number(kMintWords);
        const mint b = draw.below(2) == 0 ? draw.reduced(p) : draw.number(kMintWords);
        const mint expected = defined_product(a, b, p);
        mint out{};
        ASSERT_EQ(0, mint_mod_mul(&a, &b, &p, &out));
        ASSERT_TRUE(is_value(out, expected)) << draw.where();
        out = a;
        ASSERT_EQ(0, mint_mod_mul(&out, &b, &p, &out));
        ASSERT_TRUE(is_value(out, expected)) << "over the first factor, " << draw.where();
        out = b;
        ASSERT_EQ(0, mint_mod_mul(&a, &out, &p, &out));
        ASSERT_TRUE(is_value(out, expected)) << "over the second factor, " << draw.where();
    }
}

}  // namespace
}  // namespace zokecc_test::fast_divide_test

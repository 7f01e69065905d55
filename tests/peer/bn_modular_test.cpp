// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Modular arithmetic, compared with OpenSSL's big numbers. Where the kept subtraction makes the
// deployed result differ, a model of the rule gives the expected one, and the differences are
// counted so that neither side of the comparison can silently vanish.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/kept_rules.h"
#include "tests/mint/moduli.h"
#include "tests/peer/bignum.h"
#include "tests/support/hard_words.h"

namespace zokecc_test::bn_modular_test {
namespace {

constexpr int kRounds = 100;  // per modulus

struct Tally {
    int agreed = 0, departed = 0;

    // The deployed result is `kept`; it counts as agreeing if it is also the textbook's.
    void expect(const mint &got, const Natural &kept, const Bignum &textbook) {
        EXPECT_EQ(kept.to_hex(), mint_to_hex(got));
        if (kept.to_hex() == hex_of(textbook))
            ++agreed;
        else
            ++departed;
    }
};

// Calls `body(p, modulus)` for each odd modulus until something fails.
template <class Body>
void for_each_modulus(HardWords &draw, Body body) {
    for (const Modulus &modulus : odd_moduli())
        for (int round = 0; round < kRounds && !::testing::Test::HasFailure(); ++round) {
            SCOPED_TRACE(modulus.name + ", " + draw.where());
            body(modulus.value.to_mint(), modulus.value);
        }
}

TEST(BnMintModAdd, Agrees) {
    HardWords draw(311);
    for_each_modulus(draw, [&](const mint &p, const Natural &) {
        mint a = draw.reduced(p), b = draw.reduced(p), out;
        Bignum want = bn();
        BN_mod_add(want.get(), bn(a).get(), bn(b).get(), bn(p).get(), scratch());
        EXPECT_EQ(0, mint_mod_add(&a, &b, &p, &out));
        EXPECT_EQ(hex_of(want), mint_to_hex(out));
    });
}

TEST(BnMintModSub, AgreesWhereNoKeptRuleApplies) {
    HardWords draw(312);
    Tally tally;
    for_each_modulus(draw, [&](const mint &p, const Natural &modulus) {
        mint a = draw.reduced(p), b = draw.reduced(p), out;
        Bignum want = bn();
        BN_mod_sub(want.get(), bn(a).get(), bn(b).get(), bn(p).get(), scratch());
        EXPECT_EQ(0, mint_mod_sub(&a, &b, &p, &out));
        tally.expect(out, kept_mod_sub(Natural(a), Natural(b), modulus), want);
    });
    EXPECT_GT(tally.agreed, 2000);
    EXPECT_GT(tally.departed, 50);
}

TEST(BnMintModMul, Agrees) {
    HardWords draw(313);
    for_each_modulus(draw, [&](const mint &p, const Natural &) {
        mint a = draw.reduced(p), b = draw.below(4) == 0 ? draw.trimmed(MINT_WORDS) : draw.reduced(p), out;
        Bignum want = bn();
        BN_mod_mul(want.get(), bn(a).get(), bn(b).get(), bn(p).get(), scratch());
        EXPECT_EQ(0, mint_mod_mul(&a, &b, &p, &out));
        EXPECT_EQ(hex_of(want), mint_to_hex(out));
    });
}

TEST(BnMintModLeftMove, AgreesWhereNoKeptRuleApplies) {
    HardWords draw(314);
    Tally once, many;
    for_each_modulus(draw, [&](const mint &p, const Natural &modulus) {
        mint a = draw.reduced(p), out;
        Bignum want = bn();
        BN_mod_lshift1(want.get(), bn(a).get(), bn(p).get(), scratch());
        EXPECT_EQ(1, mint_mod_left_move_1(&out, &a, &p));
        once.expect(out, kept_double(Natural(a), modulus), want);
        int32_t n = static_cast<int32_t>(draw.below(70)), returned = 0;
        Natural kept = kept_shift(Natural(a), modulus, n, returned);
        BN_mod_lshift(want.get(), bn(a).get(), n, bn(p).get(), scratch());
        EXPECT_EQ(returned, mint_mod_left_move_n(&out, &a, &p, n));
        many.expect(out, kept, want);
    });
    EXPECT_GT(once.agreed, 3000);
    EXPECT_GT(many.agreed, 2000);
}

TEST(BnMintExp, AgreesForPrimeModuliAndTwoOrMoreBits) {
    HardWords draw(315);
    for (const Modulus &modulus : curve_moduli())
        for (int round = 0; round < 30; ++round) {
            mint p = modulus.value.to_mint(), g = draw.reduced(p), e = draw.reduced(p), out;
            if (draw.below(5) == 0) g = draw.trimmed(MINT_WORDS);
            if (draw.below(5) == 0) e = draw.trimmed(MINT_WORDS);
            Bignum order = bn(), rest = bn(), want = bn();
            BN_sub(order.get(), bn(p).get(), BN_value_one());
            BN_mod(rest.get(), bn(e).get(), order.get(), scratch());
            if (BN_num_bits(rest.get()) < 2) continue;  // then the base is not reduced, or unused
            BN_mod_exp(want.get(), bn(g).get(), rest.get(), bn(p).get(), scratch());
            ASSERT_EQ(0, mint_exp(&g, &e, &p, &out));
            ASSERT_EQ(hex_of(want), mint_to_hex(out)) << modulus.name << ", " << draw.where();
        }
}

TEST(BnMintEeaAlgo, AgreesWhereNoKeptRuleApplies) {
    HardWords draw(316);
    Tally tally;
    for_each_modulus(draw, [&](const mint &p, const Natural &modulus) {
        mint a = draw.reduced(p), out;
        Bignum want(BN_mod_inverse(nullptr, bn(a).get(), bn(p).get(), scratch()));
        EXPECT_EQ(0, mint_EEA_algo(&a, &p, &out));
        if (want) tally.expect(out, kept_inverse(Natural(a), modulus), want);
    });
    EXPECT_GT(tally.agreed, 2000);
    EXPECT_GT(tally.departed, 50);
}

TEST(BnMintEeaAlgo, AgreesForUniformOperandsWithoutException) {
    HardWords draw(317);
    for (const Modulus &modulus : curve_moduli())
        for (int round = 0; round < 60; ++round) {
            mint p = modulus.value.to_mint(), a = draw.untrimmed(p.len), out;
            for (uint32_t i = 0; i < a.len; ++i) a.words[i] = draw.uniform();
            Bignum want(BN_mod_inverse(nullptr, bn(a).get(), bn(p).get(), scratch()));
            ASSERT_TRUE(want);
            ASSERT_EQ(0, mint_EEA_algo(&a, &p, &out));
            ASSERT_EQ(hex_of(want), mint_to_hex(out)) << modulus.name << ", " << draw.where();
        }
}

TEST(BnMintSqrt, AgreesOnEveryCurvePrime) {
    HardWords draw(318);
    for (const Modulus &modulus : curve_moduli())
        for (int round = 0; round < 6; ++round) {
            mint p = modulus.value.to_mint(), a = draw.reduced(p), out;
            if (a.len == 0) continue;
            SCOPED_TRACE(modulus.name + ", " + draw.where());
            bool square = BN_kronecker(bn(a).get(), bn(p).get(), scratch()) == 1;
            bool unverified = p.words[0] % 8 == 1;
            ASSERT_EQ(square || unverified ? 1 : 0, mint_sqrt(&a, &p, &out));
            if (!square) continue;
            Bignum want(BN_mod_sqrt(nullptr, bn(a).get(), bn(p).get(), scratch())), other = bn();
            BN_sub(other.get(), bn(p).get(), want.get());
            ASSERT_TRUE(mint_to_hex(out) == hex_of(want) || mint_to_hex(out) == hex_of(other));
        }
}

}  // namespace
}  // namespace zokecc_test::bn_modular_test

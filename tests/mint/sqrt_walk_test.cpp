// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The square root modulo p = 1 (mod 8) with one running exponent, compared with the iteration with a
// table: the same bits for squares, for other numbers, and for composite moduli.
#include "mint/by_definition.h"

#include <gtest/gtest.h>

#include <vector>

#include "base/config.h"
#include "mint/value.h"
#include "tests/mint/numbers.h"
#include "tests/support/counting_trace.h"
#include "tests/support/emulated.h"
#include "tests/support/fake_entropy.h"

namespace zokecc_test::sqrt_walk_test {
namespace {

// Primes of 160 to 288 bits, p - 1 divisible by 2^3 to 2^192, and two composite numbers at the end
// for which a small number qualifies nevertheless.
const char *const kModuli[] = {
    "9a1afe84599f4b430bcace71f8fb2d46f2938809",
    "e3cd593d13e9b67418a947980eb2730000000001",
    "afe385c7d6d46fe3f46abe22992d296f0000000000000001",
    "d8269f891b2c89b439a2965bdd12b0a34b65d2c311fd8e6ac3e12561",
    "ffffffffffffffffffffffffffffffff000000000000000000000001",
    "dd09450d28694ea35753f7bb144841f8d15ae645353b9ad331fe02b6a20a2669",
    "ba79b6ea16d158964d536956906c5748016b4405e8f9158c3a62876100000001",
    "c70f06d085409417000000000000000000000000000000000000000000000001",
    "ffffffff00001996108dc5f9b48d214e3141cf1a565e0d7b558ac8392fdc1881",
    "923f76f055788ae6c9109ebaa5967b3b5871bb8ee3105e73258abe1e948a63d5a7b0d249",
    "b863581d3e002d4cdd80abbed4174f7c036c417dfeedfca103352e377bd1fd9a00000001",
    "8c359cbbe6ea4d3c5e1f7bc66da839c3fe9bfa5245f1",
    "1a29d8429b478df82815754ef3593e35143c29629bb615af64a0799722e11",
};
// Modulo this prime 2, 3, ..., 21 are all squares.
constexpr const char *kStubborn = "edf51bf6122094ec3d865fea62cbccd8e3c382df0fcae641";

// Under emulation and in the size build the table is too slow for those with many rounds.
std::vector<mint> moduli() {
    std::vector<mint> out;
    for (const char *name : kModuli) {
        const mint p = of_hex(name);
        if (!(kEmulated || zokecc::kSmall) || (p.words[0] >> 9) != 0) out.push_back(p);
    }
    return out;
}

bool qualifies(const mint &g, const mint &p) {
    const mint one = one_word(1);
    mint half{};
    mint sign{};
    mint p_minus_1{};
    mint_sub(&p, &one, &p_minus_1);
    half = p_minus_1;
    mint_right_move(&half, 1);
    zokecc::power_by_definition(g, half, p, sign);
    return mint_compare(&sign, &p_minus_1) == 0;
}

mint first_candidate(const mint &p) {
    uint32_t g = 2;
    while (g < 22 && !qualifies(one_word(g), p)) ++g;
    EXPECT_LT(g, 22u);
    return one_word(g);
}

void expect_walk(const mint &a, const mint &p, const mint &g) {
    mint got = one_word(9);
    mint want = one_word(9);
    const int32_t expected = zokecc::root_by_table(a, p, g, want);
    ASSERT_EQ(expected, mint_sqrt(&a, &p, &got));
    ASSERT_TRUE(is_value(got, want)) << mint_to_hex(a) << " modulo " << mint_to_hex(p);
    got = a;
    ASSERT_EQ(expected, mint_sqrt(&got, &p, &got));
    if (expected == 1) {
        ASSERT_TRUE(is_value(got, want)) << "over the operand";
    }
}

TEST(MintSqrtWalk, EveryKindOfOperandGivesWhatTheTableGives) {
    HardWords draw(271);
    for (const mint &p : moduli()) {
        const mint g = first_candidate(p);
        for (int round = 0; round < rounds(8); ++round) {
            mint a = draw.reduced(p);
            if (round % 2 == 0) mint_mod_mul(&a, &a, &p, &a);  // a square
            expect_walk(a, p, g);
            ASSERT_FALSE(testing::Test::HasFailure()) << draw.where();
        }
    }
}

TEST(MintSqrtWalk, ZeroOneMinusOneAndTheNonResidueItself) {
    for (const mint &p : moduli()) {
        const mint g = first_candidate(p);
        mint g_squared{};
        mint_mod_mul(&g, &g, &p, &g_squared);
        for (const mint &a :
             {empty_zero(), word_zero(), one_word(1), g, g_squared, (Natural(p) - Natural(1)).to_mint()}) {
            expect_walk(a, p, g);
            if (kEmulated) break;
        }
    }
}

// Not below p, with zeros on top, p itself.
TEST(MintSqrtWalk, OperandsThatAreNotReduced) {
    HardWords draw(272);
    for (const char *name : {kModuli[0], kModuli[3], kModuli[9]}) {
        const mint p = of_hex(name);
        const mint g = first_candidate(p);
        mint padded = draw.reduced(p);
        while (padded.len < 12) padded.words[padded.len++] = 0;
        for (const mint &a : {p, padded, all_ones(MINT_WORDS), (Natural(p) + Natural(4)).to_mint(),
                              (Natural(p) + Natural(p) - Natural(1)).to_mint()})
            expect_walk(a, p, g);
    }
}

TEST(MintSqrtWalk, DrawsAreThoseOfTheSearchAndTheRootIsTheirs) {
    const mint p = of_hex(kStubborn);
    HardWords draw(273);
    mint drawn = draw.reduced(p);
    while (!qualifies(drawn, p)) drawn = draw.reduced(p);
    mint a = draw.reduced(p);
    mint_mod_mul(&a, &a, &p, &a);
    FakeEntropy entropy;
    for (const mint &candidate : {one_word(4), one_word(9), drawn, drawn})
        entropy.queued_numbers.push_back(candidate);
    mint got{};
    mint want{};
    EXPECT_EQ(1, mint_sqrt(&a, &p, &got));
    EXPECT_EQ(3u, entropy.number_calls);
    EXPECT_EQ(1, zokecc::root_by_table(a, p, drawn, want));
    EXPECT_TRUE(is_value(got, want));
}

}  // namespace
}  // namespace zokecc_test::sqrt_walk_test

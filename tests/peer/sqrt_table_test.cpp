// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The table of exponents of the square root, filled to its 200 entries and beyond. It takes
// millions of modular products, so it is tested on the host only.
//
// For p = c * 2^s + 1 and the smallest non-residue g, the root of g^2 meets p - 1 in every
// round and so adds an entry in each of its s - 1 rounds.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/peer/bignum.h"
#include "tests/support/fake_entropy.h"
#include "tests/support/guarded_buffer.h"

namespace zokecc_test::sqrt_table_test {
namespace {

mint prime_of(uint32_t c, unsigned s) {
    Natural p = Natural(c) * Natural::power_of_two(s) + Natural(1);
    EXPECT_EQ(1, BN_check_prime(bn(p).get(), scratch(), nullptr));
    return p.to_mint();
}

void expect_first_non_residue(int g, const mint &p) {
    for (int candidate = 2; candidate <= g; ++candidate) {
        Bignum value = bn();
        BN_set_word(value.get(), static_cast<BN_ULONG>(candidate));
        EXPECT_EQ(candidate == g ? -1 : 1, BN_kronecker(value.get(), bn(p).get(), scratch())) << candidate;
    }
}

TEST(BnMintSqrtTable, TwoHundredEntriesStillGiveTheRoot) {
    mint p = prime_of(3, 201), a{{25}, 1}, out;
    expect_first_non_residue(5, p);
    FakeEntropy entropy;
    ASSERT_EQ(1, mint_sqrt(&a, &p, &out));
    Bignum square = bn();
    BN_mod_sqr(square.get(), bn(out).get(), bn(p).get(), scratch());
    EXPECT_EQ("19", hex_of(square));
    EXPECT_EQ(0u, entropy.number_calls);
}

TEST(BnMintSqrtTable, EntryTwoHundredAndOneIsRefused) {
    mint p = prime_of(265, 202), a{{9}, 1};
    expect_first_non_residue(3, p);
    GuardedRecord<mint> out;
    EXPECT_EQ(0, mint_sqrt(&a, &p, out.get()));
    EXPECT_TRUE(out.unchanged());
}

TEST(BnMintSqrtTable, OtherNumbersModuloTheSamePrimeAreNotRefused) {
    mint p = prime_of(265, 202), a{{1}, 1}, out;
    ASSERT_EQ(1, mint_sqrt(&a, &p, &out));
    Bignum square = bn();
    BN_mod_sqr(square.get(), bn(out).get(), bn(p).get(), scratch());
    EXPECT_EQ("1", hex_of(square));
}

}  // namespace
}  // namespace zokecc_test::sqrt_table_test

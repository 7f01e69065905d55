// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The integer layer uses only the stack: no call allocates memory.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/numbers.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::allocation_test {
namespace {

struct Numbers {
    mint a = of_hex("fffffffefffffffffffffffffffffffd7203df6b21c6052b53bbf40939d54122");
    mint b = of_hex("7f00000000000000000000000000000000000000000000000000000000000001");
    mint p = of_hex("fffffffeffffffffffffffffffffffffffffffff00000000ffffffffffffffff");
    mint out, rest;
};

// Runs the calls with every allocation failing, and returns how many there were.
template <class Calls>
unsigned allocations_of(Calls calls) {
    FailingAlloc watch(1);
    calls();
    return watch.allocations;
}

TEST(MintAllocation, PlainArithmeticAsksForNoMemory) {
    Numbers n;
    EXPECT_EQ(0u, allocations_of([&n] {
                  mint_add(&n.a, &n.b, &n.out);
                  mint_sub(&n.a, &n.b, &n.out);
                  mint_mul(&n.a, &n.b, &n.out);
                  mint_div(&n.out, &n.p, &n.out, &n.rest);
                  mint_mod(&n.a, &n.b, &n.rest);
                  mint_mod_reduce(&n.a, &n.b, &n.rest);
                  mint_left_move(&n.rest, 300);
                  mint_right_move(&n.rest, 33);
              }));
}

TEST(MintAllocation, ModularArithmeticAsksForNoMemory) {
    Numbers n;
    EXPECT_EQ(0u, allocations_of([&n] {
                  mint_mod_add(&n.a, &n.b, &n.p, &n.out);
                  mint_mod_sub(&n.b, &n.a, &n.p, &n.out);
                  mint_mod_mul(&n.a, &n.b, &n.p, &n.out);
                  mint_mod_left_move_1(&n.out, &n.a, &n.p);
                  mint_mod_left_move_n(&n.out, &n.a, &n.p, 77);
                  mint_EEA_algo(&n.a, &n.p, &n.out);
                  mint_exp(&n.a, &n.b, &n.p, &n.out);
                  mint_sqrt(&n.b, &n.p, &n.out);
              }));
}

TEST(MintAllocation, SquareRootWithItsTableAsksForNoMemory) {
    mint p = of_words({257}), a = of_words({9}), out;
    int32_t found = 0;
    EXPECT_EQ(0u, allocations_of([&] { found = mint_sqrt(&a, &p, &out); }));
    EXPECT_EQ(1, found);
}

TEST(MintAllocation, ConversionsAskForNoMemory) {
    Numbers n;
    uint8_t bytes[80];
    uint32_t len = 0;
    EXPECT_EQ(0u, allocations_of([&] {
                  mint_to_octetstring(&n.a, sizeof bytes, bytes, &len);
                  mint_to_fixedlen_os(&n.a, 66, sizeof bytes, &len, bytes);
                  octetstring_to_mint(bytes, len, &n.out);
              }));
    EXPECT_TRUE(is_value(n.out, n.a));
}

}  // namespace
}  // namespace zokecc_test::allocation_test

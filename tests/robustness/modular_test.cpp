// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Bad inputs of division and modular arithmetic: moduli of zero and one, counts beyond the record,
// unreduced operands, and null where it is refused.
#include <zokecc/mint.h>

#include "tests/mint/kept_rules.h"
#include "tests/robustness/bad_inputs.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/points.h"

namespace zokecc_test::modular_test {

using robustness::bad;

namespace {

const uint32_t kWrongLens[] = {20, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu};
const Natural kP = Natural::from_hex("fffffffeffffffffffffffffffffffffffffffff00000000ffffffffffffffff");
const Natural kB = Natural::from_hex("28e9fa9e9d9f5e344d5a9e4bcf6509a7f39789f515ab8f92");

mint full_record(uint32_t len) {
    mint out;
    for (uint32_t i = 0; i < MINT_WORDS; ++i) out.words[i] = 0x01020304u + 0x11111111u * (i % 5);
    out.len = len;
    return out;
}

using Call = std::function<int32_t(mint *a, mint *b, const mint *p, mint *out)>;

struct Operation {
    const char *name;
    Call call;
    std::function<Natural(const Natural &a, const Natural &p)> model;
};

const std::vector<Operation> &operations() {
    static const std::vector<Operation> all = {
        {"mint_mod_add", mint_mod_add, [](auto &a, auto &p) { return (a + kB) % p; }},
        {"mint_mod_sub", mint_mod_sub, [](auto &a, auto &p) { return kept_mod_sub(a, kB, p); }},
        {"mint_mod_mul", mint_mod_mul, [](auto &a, auto &p) { return mod_mul(a % p, kB % p, p); }},
        {"mint_mod", [](mint *a, mint *, const mint *p, mint *out) { return mint_mod(a, p, out); },
         [](auto &a, auto &p) { return a % p; }},
        {"mint_mod_reduce",
         [](mint *a, mint *, const mint *p, mint *out) { return mint_mod_reduce(a, p, out); },
         [](auto &a, auto &p) { return a % p; }},
        {"mint_div", [](mint *a, mint *, const mint *p, mint *out) { return mint_div(a, p, nullptr, out); },
         [](auto &a, auto &p) { return a % p; }},
        {"mint_EEA_algo", [](mint *a, mint *, const mint *p, mint *out) { return mint_EEA_algo(a, p, out); },
         [](auto &a, auto &p) { return kept_inverse(a, p); }},
        {"mint_exp",
         [](mint *a, mint *, const mint *p, mint *out) {
             const mint three = Natural(3).to_mint();
             return mint_exp(a, &three, p, out);
         },
         [](auto &a, auto &p) { return kept_power(a, Natural(3), p); }},
        {"mint_mod_left_move_1",
         [](mint *a, mint *, const mint *p, mint *out) { return mint_mod_left_move_1(out, a, p); },
         [](auto &a, auto &p) { return kept_double(a, p); }},
        {"mint_mod_left_move_n",
         [](mint *a, mint *, const mint *p, mint *out) { return mint_mod_left_move_n(out, a, p, 9); },
         [](auto &a, auto &p) {
             int32_t returned = 0;
             return kept_shift(a, p, 9, returned);
         }},
    };
    return all;
}

// The first operand with a count beyond the record, or wider than the modulus.
void add_lens() {
    for (const Operation &each : operations())
        for (uint32_t len : {0u, 9u, 19u, 20u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu})
            bad(each.name, "an operand of len " + std::to_string(len), [=] {
                mint a = full_record(len), b = kB.to_mint();
                const mint p = kP.to_mint();
                GuardedRecord<mint> out;
                each.call(&a, &b, &p, out.get());
                EXPECT_TRUE(out.guards_intact());
                EXPECT_EQ(Natural(*out.get()).to_hex(), each.model(Natural(full_record(len)), kP).to_hex());
            });
    for (uint32_t len : kWrongLens)
        bad("mint_sqrt", "an operand of len " + std::to_string(len), [=] {
            const mint a = full_record(len), p = Natural(7).to_mint();
            GuardedRecord<mint> out;
            EXPECT_EQ(mint_sqrt(&a, &p, out.get()), 0);
            EXPECT_TRUE(out.unchanged());
        });
}

// A modulus of zero, in both forms: the result, and what is written.
void zero_modulus(const std::string &call, std::function<int32_t(const mint *p, mint *out)> run,
                  int32_t result, int64_t value) {
    for (uint32_t len : {0u, 1u})
        bad(call, "modulus 0 as len " + std::to_string(len), [=] {
            mint p{};
            p.len = len;
            GuardedRecord<mint> out;
            EXPECT_EQ(run(&p, out.get()), result);
            if (value < 0) {
                EXPECT_TRUE(out.unchanged());
            } else {
                EXPECT_TRUE(Natural(*out.get()) == Natural(static_cast<uint32_t>(value)));
                EXPECT_TRUE(out.guards_intact());
            }
        });
}

void add_zero_moduli() {
    static mint seven = Natural(7).to_mint(), nine = Natural(9).to_mint(), zero{};
    zero_modulus(
        "mint_mod_add", [](auto p, auto out) { return mint_mod_add(&seven, &nine, p, out); }, 0, -1);
    zero_modulus(
        "mint_mod_sub", [](auto p, auto out) { return mint_mod_sub(&nine, &seven, p, out); }, 0, -1);
    zero_modulus(
        "mint_mod_sub", [](auto p, auto out) { return mint_mod_sub(&seven, &nine, p, out); }, 0, 0);
    zero_modulus(
        "mint_mod_mul", [](auto p, auto out) { return mint_mod_mul(&seven, &nine, p, out); }, 0, -1);
    zero_modulus(
        "mint_mod_mul", [](auto p, auto out) { return mint_mod_mul(&zero, &nine, p, out); }, 0, 0);
    zero_modulus(
        "mint_mod", [](auto p, auto out) { return mint_mod(&seven, p, out); }, 0, -1);
    zero_modulus(
        "mint_div", [](auto p, auto out) { return mint_div(&seven, p, nullptr, out); }, 0, -1);
    zero_modulus(
        "mint_mod_reduce", [](auto p, auto out) { return mint_mod_reduce(&seven, p, out); }, 0, 0);
    zero_modulus(
        "mint_EEA_algo", [](auto p, auto out) { return mint_EEA_algo(&seven, p, out); }, 0, 1);
    zero_modulus(
        "mint_EEA_algo", [](auto p, auto out) { return mint_EEA_algo(&zero, p, out); }, 0, 0);
    zero_modulus(
        "mint_exp", [](auto p, auto out) { return mint_exp(&seven, &nine, p, out); }, 0, 1);
    zero_modulus(
        "mint_sqrt", [](auto p, auto out) { return mint_sqrt(&seven, p, out); }, 0, -1);

    bad("mint_div", "no remainder", [] {
        GuardedRecord<mint> quotient;
        EXPECT_EQ(mint_div(&nine, &seven, quotient.get(), nullptr), 0);
        EXPECT_TRUE(quotient.unchanged());
    });
    bad("mint_mod", "no remainder", [] { EXPECT_EQ(mint_mod(&nine, &seven, nullptr), 0); });
    bad("mint_EEA_algo", "a multiple of the modulus", [] {
        const mint multiple = Natural(63).to_mint();
        GuardedRecord<mint> out;
        EXPECT_EQ(mint_EEA_algo(&multiple, &seven, out.get()), 0);
        EXPECT_TRUE(Natural(*out.get()) == Natural(7));
    });
    bad("mint_exp", "modulus 1", [] {
        const mint one = Natural(1).to_mint();
        GuardedRecord<mint> out;
        EXPECT_EQ(mint_exp(&seven, &nine, &one, out.get()), 0);
        EXPECT_TRUE(Natural(*out.get()) == Natural(1));
    });
    for (uint32_t p : {2u, 4u, 1000u})
        bad("mint_sqrt", "an even modulus " + std::to_string(p), [=] {
            const mint modulus = Natural(p).to_mint();
            GuardedRecord<mint> out;
            EXPECT_EQ(mint_sqrt(&seven, &modulus, out.get()), 0);
            EXPECT_TRUE(out.unchanged());
        });
    bad("mint_sqrt", "a number without a root", [] {
        const mint five = Natural(5).to_mint();  // the squares modulo 7 are 1, 2 and 4
        GuardedRecord<mint> out;
        EXPECT_EQ(mint_sqrt(&five, &seven, out.get()), 0);
        EXPECT_TRUE(out.unchanged());
    });
    for (int32_t bits : {0, -1, INT32_MIN})
        bad("mint_mod_left_move_n", std::to_string(bits) + " bits", [=] {
            const mint a = Natural(5).to_mint();
            GuardedRecord<mint> out;
            EXPECT_EQ(mint_mod_left_move_n(out.get(), &a, &seven, bits), 1);
            EXPECT_TRUE(Natural(*out.get()) == Natural(5) && out.guards_intact());
        });
}

const robustness::Rows lens(add_lens), zero_moduli(add_zero_moduli);

}  // namespace

}  // namespace zokecc_test::modular_test

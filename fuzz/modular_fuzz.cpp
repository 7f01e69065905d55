// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Plain and modular arithmetic, compared with naive integers and the kept subtraction, with the
// output separate from the operands and over each of them.
#include "fuzz/fuzz_check.h"
#include "fuzz/fuzz_input.h"
#include "tests/mint/kept_rules.h"

using namespace zokecc_fuzz;

namespace {

constexpr unsigned kRecordBits = 32 * MINT_WORDS;

// Runs call(a, b, out) with a separate output, over a and over b, and compares.
template <class Call>
void check_places(const mint &a, const mint &b, Call call, const Natural &want, const char *what) {
    mint x = a, y = b, out = Natural(7).to_mint();
    call(&x, &y, &out);
    check_value(out, want, what);
    check(Natural(x) == Natural(a) && Natural(y) == Natural(b), "operands keep their value");
    x = a;
    y = b;
    call(&x, &y, &x);
    check_value(x, want, what);
    x = a;
    y = b;
    call(&x, &y, &y);
    check_value(y, want, what);
}

void check_sub(const mint &a, const mint &b) {
    const KeptDifference apart = kept_sub(a, b, Over::kOther), over = kept_sub(a, b, Over::kLarger);
    const bool b_is_larger = kept_compare(a, b) < 0;
    mint out = a;
    out.len = 0;
    check(mint_sub(&a, &b, &out) == apart.negative, "the sign of a difference");
    check_value(out, apart.value, "mint_sub");
    out = a;
    check(mint_sub(&out, &b, &out) == apart.negative, "the sign of a difference over a");
    check_value(out, b_is_larger ? apart.value : over.value, "mint_sub over a");
    out = b;
    check(mint_sub(&a, &out, &out) == apart.negative, "the sign of a difference over b");
    check_value(out, b_is_larger ? over.value : apart.value, "mint_sub over b");
    check(mint_compare(&a, &b) == kept_compare(a, b), "mint_compare");
}

void check_plain(FuzzInput &input) {
    const mint a = input.number(MINT_WORDS);
    const mint b = input.flag() ? input.relative_of(a) : input.number(MINT_WORDS);
    check_places(a, b, mint_add, (Natural(a) + Natural(b)).low_bits(kRecordBits), "mint_add");
    check_places(a, b, mint_mul, (Natural(a) * Natural(b)).low_bits(kRecordBits), "mint_mul");
    check_sub(a, b);

    const uint32_t bits = input.below(700);
    mint shifted = a;
    mint_left_move(&shifted, bits);
    if (bits != 0) check_value(shifted, (Natural(a) << bits).low_bits(kRecordBits), "mint_left_move");
    shifted = a;
    mint_right_move(&shifted, bits);
    if (bits != 0) check_value(shifted, Natural(a) >> bits, "mint_right_move");
}

// The calls on plain word arrays of up to 38.
void check_words(FuzzInput &input) {
    const mint a = input.untrimmed(MINT_WORDS), b = input.untrimmed(MINT_WORDS);
    const uint32_t w = input.word();
    const int32_t count = static_cast<int32_t>(input.below(MINT_WORDS + 1));
    const size_t n = static_cast<size_t>(count);
    const Natural A(a.words, n), B(b.words, n);
    uint32_t out[MINT_WORDS + 1] = {};
    out[n] = add_2(a.words, b.words, count, out);
    check(Natural(out, n + 1) == A + B, "add_2 with its carry");
    out[n] = 0;
    const uint32_t borrow = sub_2(a.words, b.words, count, out);
    const Natural top = Natural::power_of_two(32 * static_cast<unsigned>(n));
    check(borrow == (A < B ? 1u : 0u), "the borrow of sub_2");
    check(Natural(out, n) == (A < B ? A + top - B : A - B), "sub_2");
    out[n] = mint_mul_4(out, a.words, w, count);
    check(Natural(out, n + 1) == A * Natural(w), "mint_mul_4 with its carry");
    std::copy(b.words, b.words + n, out);
    out[n] = mint_mul_3(out, a.words, w, count);
    check(Natural(out, n + 1) == B + A * Natural(w), "mint_mul_3 with its carry");

    uint32_t product[2 * MINT_WORDS] = {};
    mul_2(a.words, count, b.words, static_cast<int32_t>(b.len), product);
    if (count > 0 && b.len > 0)
        check(Natural(product, n + b.len) == A * Natural(b.words, b.len), "mul_2 writes the whole product");
}

void check_modular(FuzzInput &input) {
    mint p = input.trimmed(10);
    if (Natural(p).is_zero()) p = Natural(1).to_mint();
    const mint a = input.reduced(p), b = input.flag() ? input.reduced(p) : input.relative_or_trimmed(a, 17);
    const Natural A(a), B(b), P(p);
    auto add = [&p](mint *x, mint *y, mint *out) { mint_mod_add(x, y, &p, out); };
    auto sub = [&p](const mint *x, const mint *y, mint *out) { mint_mod_sub(x, y, &p, out); };
    auto mul = [&p](const mint *x, const mint *y, mint *out) { mint_mod_mul(x, y, &p, out); };
    check_places(a, b, add, (A + B) % P, "mint_mod_add");
    check_places(a, b, sub, kept_mod_sub(A, B, P), "mint_mod_sub");
    check_places(b, a, sub, kept_mod_sub(B, A, P), "mint_mod_sub, turned round");
    check_places(a, b, mul, mod_mul(A, B % P, P), "mint_mod_mul");
    check_places(a, a, mul, mod_mul(A, A, P), "mint_mod_mul of a square");

    mint out{};
    check(mint_mod_left_move_1(&out, &a, &p) == 1, "the result of a doubling");
    check_value(out, kept_double(A, P), "mint_mod_left_move_1");
    const int32_t bits = static_cast<int32_t>(input.below(900)) - 5;
    int32_t returned = 0;
    const Natural shifted = kept_shift(A, P, bits, returned);
    out = a;
    check(mint_mod_left_move_n(&out, &out, &p, bits) == returned, "the result of a modular shift");
    check_value(out, shifted, "mint_mod_left_move_n");
}

// Short numbers: the naive power is slow.
void check_power(FuzzInput &input) {
    const mint p = input.trimmed(3), g = input.trimmed(4), e = input.relative_or_trimmed(p, 3);
    const Natural want = kept_power(Natural(g), Natural(e), Natural(p));
    mint out{};
    mint_exp(&g, &e, &p, &out);
    check_value(out, want, "mint_exp");
    out = g;
    mint_exp(&out, &e, &p, &out);
    check_value(out, want, "mint_exp over the base");
    out = e;
    mint_exp(&g, &out, &p, &out);
    check_value(out, want, "mint_exp over the exponent");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    FuzzInput input(data, size);
    switch (input.below(4)) {
    case 0: check_plain(input); break;
    case 1: check_words(input); break;
    case 2: check_power(input); break;
    default: check_modular(input); break;
    }
    return 0;
}

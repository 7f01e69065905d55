// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Modular addition, subtraction, multiplication and doubling.
//
// Operands should be reduced; this is not checked. With a zero modulus nothing is written.
#include "mint/limbs/division.h"
#include "mint/plain.h"
#include "mint/value.h"

using namespace zokecc;

namespace {

// out = sum mod p for a trimmed sum.
void reduce_sum(const mint &sum, const mint &p, mint &out)
{
    // For reduced operands the quotient is 0 or 1.
    const uint32_t n = p.len;
    if (n - 1 < kMintWords && p.words[n - 1] != 0 && (sum.len == n || sum.len == n + 1)) {
        uint32_t remainder[kMintWords];
        uint32_t ones;
        const uint32_t borrow = StepsOn<uint32_t>::sub_limbs(sum.words, p.words, n, remainder, ones);
        const uint32_t above = sum.len > n ? sum.words[n] : 0;
        if (above == borrow && is_below(remainder, p.words, n)) {
            set_words(out, remainder, n);
            return;
        }
    }
    mint_mod(&sum, &p, &out);
}

}  // namespace

namespace zokecc {

void mod_add(const mint &a, const mint &b, const mint &p, mint &out)
{
    mint sum;
    add_values(a, b, sum);
    reduce_sum(sum, p, out);
}

}  // namespace zokecc

int32_t mint_mod_add(mint *a, mint *b, const mint *p, mint *out)
{
    mint sum;
    mint_add(a, b, &sum);
    reduce_sum(sum, *p, *out);
    return 0;
}

// KEPT: for a < b with b - a a multiple of p the result is p, not 0. Only unreduced operands can
// cause it; deployed devices return p. Held by
// MintModSub.KeptDifferenceMultipleOfModulusGivesModulus.
int32_t mint_mod_sub(const mint *a, const mint *b, const mint *p, mint *out)
{
    mint difference;
    const int32_t order = mint_compare(a, b);
    if (order == 0) {
        set_zero(*out);
    } else if (order > 0) {
        subtract_smaller(*a, *b, difference);
        mint_mod(&difference, p, out);
    } else {
        subtract_smaller(*b, *a, difference);
        if (mint_mod(&difference, p, &difference) == 0) set_zero(difference);
        mint_sub(p, &difference, out);
    }
    return 0;
}

namespace {

// The full product, then a division: for moduli of one limb or with a zero top word.
ZOKECC_OWN_FRAME void multiply_and_reduce(const mint &a, const mint &b, const mint &p, mint &out)
{
    const uint32_t a_used = used_words(a);
    const uint32_t b_used = used_words(b);
    uint32_t product[kProductWords];
    mul_2(a.words, static_cast<int32_t>(a_used), b.words, static_cast<int32_t>(b_used), product);
    reduce_product(product, trimmed_count(product, a_used + b_used), p, out);
}

}  // namespace

int32_t mint_mod_mul(const mint *a, const mint *b, const mint *p, mint *out)
{
    const uint32_t a_used = used_words(*a);
    const uint32_t b_used = used_words(*b);
    if (a_used < 2 || b_used < 2) {  // otherwise is_zero is false for both
        if (is_zero(*a) || is_zero(*b)) {
            set_zero(*out);
            return 0;
        }
    }
    const uint32_t p_used = used_words(*p);
    if (p_used > kWordsPerLimb<NativeLimb> && p->words[p_used - 1] != 0) {
        // Written last, so out may be any of the operands.
        multiply_and_divide<NativeSteps>(a->words, a_used, b->words, b_used, p->words, p_used, out->words);
        out->len = trimmed_count(out->words, p_used);
        return 0;
    }
    multiply_and_reduce(*a, *b, *p, *out);
    return 0;
}

int32_t mint_mod_left_move_1(mint *out, const mint *a, const mint *p)
{
    mint_copy(out, a);
    mint_left_move(out, 1);
    if (mint_compare(out, p) >= 0) mint_sub(out, p, out);
    return 1;
}

int32_t mint_mod_left_move_n(mint *out, const mint *a, const mint *p, int32_t bit_count)
{
    mint_copy(out, a);
    while (bit_count > 0) {
        const int32_t room = get_mint_bit_len(p) - get_mint_bit_len(out);
        if (room < 0) return 0;
        // Up to p's bit length in one shift, then bit by bit.
        int32_t step = room == 0 ? 1 : room;
        if (step > bit_count) step = bit_count;
        mint_left_move(out, static_cast<uint32_t>(step));
        bit_count -= step;
        if (mint_compare(out, p) >= 0) mint_sub(out, p, out);
    }
    return 1;
}

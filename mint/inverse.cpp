// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Modular inverse by the extended Euclidean algorithm: binary for odd moduli, with divisions for even ones.
//
// Neither checks that the inverse exists. Their results are those of deployed devices: every subtraction goes
// through mint_sub, and the odd method subtracts in place.
#include "mint/limbs/inverse.h"
#include "base/config.h"
#include "mint/limbs/division.h"
#include "mint/limbs/trace.h"
#include "mint/plain.h"
#include "mint/value.h"
#include "mint/words.h"

using namespace zokecc;

namespace {

mint trimmed(const mint &value)
{
    mint out{};
    set_words(out, value.words, used_words(value));
    return out;
}

// out = m - x, for the negated inverse x; an x above m is reduced first.
void write_negated(mint &x, const mint &m, mint &out)
{
    if (mint_compare(&x, &m) > 0) mint_mod(&x, &m, &x);
    mint_sub(&m, &x, &out);
}

// value must be trimmed and nonzero.
uint32_t trailing_zero_bits(const mint &value)
{
    uint32_t i = 0;
    while (value.words[i] == 0) ++i;
    return 32 * i + static_cast<uint32_t>(std::countr_zero(value.words[i]));
}

// Halves value until it is odd, and its cofactor modulo m as often.
void make_odd(mint &value, mint &cofactor, const mint &m)
{
    const uint32_t zeros = trailing_zero_bits(value);
    mint_right_move(&value, zeros);
    for (uint32_t i = 0; i < zeros; ++i) {
        if (is_odd(cofactor)) add_values(cofactor, m, cofactor);
        mint_right_move(&cofactor, 1);
    }
}

// KEPT: both subtractions overwrite their larger operand, so all borrow rules of mint_sub apply
// and inverses of small numbers modulo common orders differ from the mathematical ones (1/2
// modulo the order of the recommended SM2 curve, for one). Keys and signatures on deployed
// devices went through this iteration. Held by MintEeaAlgo.KeptSmallInverseOfTwoModuloTheSm2Order
// and MintEeaAlgo.KeptSmallInverseOfElevenModuloP256NeedsSubtractionInPlace.
ZOKECC_OWN_FRAME void invert_modulo_odd(mint &u, const mint &m, mint &out)
{
    // a * x1 = u and a * x2 = -v (mod m): the cofactors are only ever added.
    mint v = m;
    mint x1{};
    mint x2{};
    set_small(x1, 1);
    // Terminates even with lost borrows: the difference of two odd values is even, and its half is smaller
    // than the value it replaces.
    while (!is_zero(u)) {
        make_odd(u, x1, m);
        make_odd(v, x2, m);
        if (mint_compare(&u, &v) < 0) {
            add_values(x2, x1, x2);
            mint_sub(&v, &u, &v);
        } else {
            add_values(x1, x2, x1);
            mint_sub(&u, &v, &u);
        }
    }
    write_negated(x2, m, out);
}

// The same on limbs; false if the fast inverse does not accept these numbers.
[[maybe_unused]] ZOKECC_OWN_FRAME bool invert_on_limbs(const mint &a, const mint &m, mint &out)
{
    using L = NativeLimb;
    if (m.len > kMaxFastWords || is_zero(a) || is_one(m)) return false;
    L a_limbs[kMaxFastLimbs<L>] = {};
    L m_limbs[kMaxFastLimbs<L>] = {};
    std::memcpy(a_limbs, a.words, 4 * a.len);
    std::memcpy(m_limbs, m.words, 4 * m.len);
    const unsigned n = limbs_for<L>(m.len);
    FastInverse<NativeSteps, NoTrace> inverse(a_limbs, m_limbs, n);
    const bool done = inverse.run(a_limbs);
    if (done) {
        uint32_t words[kMaxFastWords + 1];
        std::memcpy(words, a_limbs, 4 * m.len);
        set_words(out, words, m.len);
    }
    wipe(a_limbs, sizeof a_limbs);
    return done;
}

// Returns whether r0 >= 3 * r1; 3 * r1 may be one word longer than a record.
bool holds_three_times(const mint &r0, const mint &r1)
{
    constexpr int32_t width = MINT_WORDS + 1;
    uint32_t dividend[width] = {};
    uint32_t divisor[width] = {};
    std::memcpy(dividend, r0.words, 4 * used_words(r0));
    std::memcpy(divisor, r1.words, 4 * used_words(r1));
    mul_word(divisor, 3, width, divisor);
    return compare_words(dividend, divisor, width) >= 0;
}

// Quotient and remainder of r0 by r1. If the bit lengths are equal or one apart, the quotient is 1,
// 2 or 3 and the remainder comes from mint_sub.
ZOKECC_OWN_FRAME void divide_by_bit_lengths(const mint &r0, const mint &r1, mint &quotient, mint &remainder)
{
    const int32_t longer_by = get_mint_bit_len(&r0) - get_mint_bit_len(&r1);
    if (longer_by != 0 && longer_by != 1) {
        mint_div(&r0, &r1, &quotient, &remainder);
        return;
    }
    mint twice_r1 = r1;
    if (longer_by == 1) mint_left_move(&twice_r1, 1);  // as long as r0, so it fits
    if (longer_by == 0 || mint_compare(&r0, &twice_r1) < 0) {
        set_small(quotient, 1);
        mint_sub(&r0, &r1, &remainder);
    } else if (!holds_three_times(r0, r1)) {
        set_small(quotient, 2);
        mint_sub(&r0, &twice_r1, &remainder);
    } else {
        mint difference{};
        set_small(quotient, 3);
        mint_sub(&r0, &twice_r1, &difference);
        mint_sub(&difference, &r1, &remainder);
    }
}

ZOKECC_OWN_FRAME void invert_modulo_even(mint &r1, const mint &m, mint &out)
{
    mint r0 = m;
    mint x1{};
    mint x2{};
    set_small(x1, 1);
    bool negative = true;
    while (!is_zero(r1)) {
        mint quotient{};
        mint remainder{};
        divide_by_bit_lengths(r0, r1, quotient, remainder);
        r0 = r1;
        r1 = remainder;
        mint_mul(&quotient, &x1, &quotient);
        add_values(quotient, x2, quotient);
        x2 = x1;
        x1 = quotient;
        negative = !negative;
    }
    if (negative)
        write_negated(x2, m, out);
    else
        mint_copy(&out, &x2);
}

}  // namespace

int32_t mint_EEA_algo(const mint *a, const mint *modulus, mint *out)
{
    const mint m = trimmed(*modulus);
    mint u = trimmed(*a);
    if (mint_compare(&u, &m) >= 0) mint_mod(&u, &m, &u);
    if (!is_odd(m)) {
        invert_modulo_even(u, m, *out);
        return 0;
    }
    if constexpr (!kSmall) {
        if (invert_on_limbs(u, m, *out)) return 0;
    }
    invert_modulo_odd(u, m, *out);
    return 0;
}

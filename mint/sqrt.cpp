// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Square roots modulo a prime p, by cases of p mod 8.
//
// This file makes the one upward call of the library: if p is 1 modulo 8 and no small number is a
// non-residue, candidates come from the random generator.
#include "mint/by_definition.h"

#include <zokecc/hash.h>

#include "mint/limbs/residues.h"
#include "mint/plain.h"
#include "mint/value.h"

using namespace zokecc;

namespace {

constexpr int32_t kFound = 1;
constexpr int32_t kNone = 0;
constexpr int32_t kNoNonResidue = -1;

constexpr uint32_t kFixedCandidates = 20;  // 2, 3, ..., 21
constexpr uint32_t kRandomCandidates = 60;
constexpr uint32_t kExponents = 200;

// The exponents of the p = 1 (mod 8) branch: one table for the process, so this branch is not
// reentrant.
constinit mint exponents[kExponents] = {};

mint small(uint32_t number)
{
    mint value{};
    set_small(value, number);
    return value;
}

// (p - number) / 2^bits
mint lowered_and_shifted(const mint &p, uint32_t number, uint32_t bits)
{
    const mint subtrahend = small(number);
    mint out{};
    mint_sub(&p, &subtrahend, &out);
    mint_right_move(&out, bits);
    return out;
}

mint plus_one(const mint &value)
{
    mint out{};
    add_values(value, small(1), out);
    return out;
}

mint power(const mint &base, const mint &exponent, const mint &p)
{
    mint out{};
    mint_exp(&base, &exponent, &p, &out);
    return out;
}

bool divisible(const mint &value, const mint &p)
{
    mint remainder{};
    mint_mod(&value, &p, &remainder);
    return is_zero(remainder);
}

// p = 3 (mod 4): a^((p+1)/4), if its square is a.
int32_t root_three_mod_four(const mint &a, const mint &p, mint &out)
{
    const mint root = power(a, plus_one(lowered_and_shifted(p, 3, 2)), p);
    mint square{};
    mint_mod_mul(&root, &root, &p, &square);
    if (mint_compare(&square, &a) != 0) return kNone;
    mint_copy(&out, &root);
    return kFound;
}

// p = 5 (mod 8), with u = (p-5)/8 and z = a^(2u+1): a^(u+1) for z = 1, 2a (4a)^u for z = -1.
//
// KEPT: zero has no root here, because its z is neither 1 nor -1. Held by
// MintSqrt.KeptZeroHasNoRootForFiveModEight.
int32_t root_five_mod_eight(const mint &a, const mint &p, mint &out)
{
    const mint u = lowered_and_shifted(p, 5, 3);
    mint exponent = u;
    mint_left_move(&exponent, 1);
    const mint z = power(a, plus_one(exponent), p);
    if (divisible(lowered_and_shifted(z, 1, 0), p)) {
        const mint root = power(a, plus_one(u), p);
        mint_copy(&out, &root);
        return kFound;
    }
    if (!divisible(plus_one(z), p)) return kNone;
    mint twice{};
    mint four_times{};
    mod_add(a, a, p, twice);
    mod_add(twice, twice, p, four_times);
    const mint factor = power(four_times, u, p);
    mint_mod_mul(&twice, &factor, &p, &out);
    return kFound;
}

// Random numbers are drawn only if no fixed candidate qualifies; drawing a zero ends the search.
bool find_non_residue(const mint &p, const mint &half, const mint &p_minus_1, mint &g)
{
    for (uint32_t i = 0; i < kFixedCandidates + kRandomCandidates; ++i) {
        g = small(i + 2);
        if (i >= kFixedCandidates) {
            if (gen_random_number(&g, &p) != 0 || is_zero(g)) return false;
        }
        const mint sign = power(g, half, p);
        if (mint_compare(&sign, &p_minus_1) == 0) return true;
    }
    return false;
}

// Halves every exponent in the table and multiplies c by g to the power of each.
void apply_exponents(uint32_t count, const mint &g, const mint &p, mint &c)
{
    for (uint32_t i = 0; i < count; ++i) {
        mint_right_move(&exponents[i], 1);
        const mint factor = power(g, exponents[i], p);
        mint_mod_mul(&c, &factor, &p, &c);
    }
}

// The iteration of root_by_table with one running exponent. Let p - 1 = 2^s q for an odd q, and let t be
// the sum of the exponents divided by q. Then c is (a^q (g^q)^t)^(2^i), where i starts at s - 2 and drops
// by one per round, because the halvings of e and of every exponent are exact and only take out a power of
// two. An exponent added in round j = s - 2 - i adds 2^(j+1) to t, and in the end g is raised to half of
// q t. So instead of recomputing powers, the loop keeps
//     w = a^q (g^q)^t,   out = a^((q+1)/2) (g^q)^(t/2),   z = (g^q)^(2^j)
// and each round takes the i squarings from w to c.
struct RootByOneExponent {
    const mint &a, &p, &p_minus_1, &g;
    mint &out;
    int32_t &status;

    template <class Residues>
    bool over(const Residues &residues) const
    {
        mint half_of_q = p_minus_1;  // ends up as (q - 1) / 2
        uint32_t s = 0;
        while (!is_odd(half_of_q)) {
            mint_right_move(&half_of_q, 1);
            ++s;
        }
        mint_right_move(&half_of_q, 1);

        typename Residues::Element w;
        typename Residues::Element root;
        typename Residues::Element z;
        typename Residues::Element c;
        typename Residues::Element minus_1;
        residues.load(p_minus_1, minus_1);
        residues.load(g, w);
        residues.power(w, half_of_q, z);
        residues.square(z, z);
        residues.multiply(z, w, z);
        residues.load(a, w);
        residues.power(w, half_of_q, c);
        residues.multiply(c, w, root);
        residues.multiply(root, c, w);

        uint32_t count = 0;
        for (uint32_t i = s - 1; i-- > 0;) {
            c = w;
            for (uint32_t squarings = i; squarings > 0; --squarings) residues.square(c, c);
            const bool joins = residues.equal(c, minus_1);
            if (joins) {
                if (count++ == kExponents) {
                    status = kNone;
                    return true;
                }
                residues.multiply(root, z, root);
            }
            residues.square(z, z);
            if (joins) residues.multiply(w, z, w);
        }
        residues.store(root, out);
        status = kFound;
        return true;
    }
};

// p = 1 (mod 8).
//
// KEPT: the result is not verified by squaring, so for a number without a root it is meaningless.
// Point decompression relies on a later test of the curve equation instead. Held by
// MintSqrt.KeptRootUnverifiedForOneModEight.
int32_t root_one_mod_eight(const mint &a, const mint &p, mint &out)
{
    const mint p_minus_1 = lowered_and_shifted(p, 1, 0);
    mint g{};
    if (!find_non_residue(p, lowered_and_shifted(p, 1, 1), p_minus_1, g)) return kNoNonResidue;
    int32_t status = kFound;
    if (!run_over_residues(p, RootByOneExponent{a, p, p_minus_1, g, out, status}))
        status = root_by_table(a, p, g, out);
    return status;
}

}  // namespace

namespace zokecc {

// As e is halved from (p-1)/4 down to its odd part, c = a^e g^(sum of exponents) stays a root of
// unity; each time it is -1, adding an exponent (p-1)/2 makes it 1.
int32_t root_by_table(const mint &a, const mint &p, const mint &g, mint &out)
{
    const mint p_minus_1 = lowered_and_shifted(p, 1, 0);
    const mint half = lowered_and_shifted(p, 1, 1);
    std::memset(exponents, 0, sizeof exponents);
    uint32_t count = 0;
    mint e = lowered_and_shifted(p, 1, 2);
    mint c = power(a, e, p);
    for (;;) {
        if (mint_compare(&c, &p_minus_1) == 0) {
            if (count == kExponents) return kNone;
            exponents[count++] = half;
        }
        if (is_odd(e)) break;
        mint_right_move(&e, 1);
        c = power(a, e, p);
        apply_exponents(count, g, p, c);
    }
    e = plus_one(e);
    mint_right_move(&e, 1);
    c = power(a, e, p);
    apply_exponents(count, g, p, c);
    mint_copy(&out, &c);
    return kFound;
}

}  // namespace zokecc

int32_t mint_sqrt(const mint *a, const mint *p, mint *out)
{
    const uint32_t residue = low_word(*p) & 7;
    if (residue == 3 || residue == 7) return root_three_mod_four(*a, *p, *out);
    if (residue == 5) return root_five_mod_eight(*a, *p, *out);
    if (residue == 1) return root_one_mod_eight(*a, *p, *out);
    return kNone;
}

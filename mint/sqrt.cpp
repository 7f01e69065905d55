// Square roots modulo a prime, by the residue of the prime.
//
// This file makes the one upward call of the library: where p is 1 modulo 8 and no small
// number is a non-residue, candidates come from the random generator.
#include <zokecc/hash.h>

#include "mint/plain.h"
#include "mint/value.h"

namespace {

constexpr int32_t kFound = 1;
constexpr int32_t kNone = 0;
constexpr int32_t kNoNonResidue = -1;

constexpr uint32_t kFixedCandidates = 20;  // 2, 3, ..., 21
constexpr uint32_t kRandomCandidates = 60;
constexpr uint32_t kExponents = 200;

// The exponents of the p = 1 (mod 8) branch: one table for the process, so that branch is not
// reentrant.
constinit mint exponents[kExponents] = {};

mint small(uint32_t number)
{
    mint value{};
    zokecc::set_small(value, number);
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
    zokecc::add_values(value, small(1), out);
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
    mint rest{};
    mint_mod(&value, &p, &rest);
    return zokecc::is_zero(rest);
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
// KEPT: zero has no root here, since its z is neither. Held by
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
    zokecc::mod_add(a, a, p, twice);
    zokecc::mod_add(twice, twice, p, four_times);
    const mint factor = power(four_times, u, p);
    mint_mod_mul(&twice, &factor, &p, &out);
    return kFound;
}

// Random numbers are drawn only when no fixed candidate qualifies; a zero among them ends the
// search.
bool find_non_residue(const mint &p, const mint &half, const mint &p_minus_1, mint &g)
{
    for (uint32_t i = 0; i < kFixedCandidates + kRandomCandidates; ++i) {
        g = small(i + 2);
        if (i >= kFixedCandidates) {
            if (gen_random_number(&g, &p) != 0 || zokecc::is_zero(g)) return false;
        }
        const mint sign = power(g, half, p);
        if (mint_compare(&sign, &p_minus_1) == 0) return true;
    }
    return false;
}

// Halves every exponent in the table and multiplies c by g to each of them.
void apply_exponents(uint32_t count, const mint &g, const mint &p, mint &c)
{
    for (uint32_t i = 0; i < count; ++i) {
        mint_right_move(&exponents[i], 1);
        const mint factor = power(g, exponents[i], p);
        mint_mod_mul(&c, &factor, &p, &c);
    }
}

// p = 1 (mod 8). With e from (p-1)/4 halved down to its odd part, c = a^e g^(sum of exponents)
// stays a root of unity; each time it is -1, an exponent (p-1)/2 joins and turns it to 1.
//
// KEPT: the result is not squared again, so a number without a root gets a meaningless one.
// Decoding of compressed points relies on a later curve test instead. Held by
// MintSqrt.KeptRootUnverifiedForOneModEight.
int32_t root_one_mod_eight(const mint &a, const mint &p, mint &out)
{
    const mint p_minus_1 = lowered_and_shifted(p, 1, 0);
    const mint half = lowered_and_shifted(p, 1, 1);
    mint g{};
    if (!find_non_residue(p, half, p_minus_1, g)) return kNoNonResidue;

    std::memset(exponents, 0, sizeof exponents);
    uint32_t count = 0;
    mint e = lowered_and_shifted(p, 1, 2);
    mint c = power(a, e, p);
    for (;;) {
        if (mint_compare(&c, &p_minus_1) == 0) {
            if (count == kExponents) return kNone;
            exponents[count++] = half;
        }
        if (zokecc::is_odd(e)) break;
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

}  // namespace

int32_t mint_sqrt(const mint *a, const mint *p, mint *out)
{
    const uint32_t residue = zokecc::low_word(*p) & 7;
    if (residue == 3 || residue == 7) return root_three_mod_four(*a, *p, *out);
    if (residue == 5) return root_five_mod_eight(*a, *p, *out);
    if (residue == 1) return root_one_mod_eight(*a, *p, *out);
    return kNone;
}

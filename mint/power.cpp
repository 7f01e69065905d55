// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Modular exponentiation, left to right.
#include "mint/by_definition.h"

#include "mint/limbs/residues.h"
#include "mint/value.h"

using namespace zokecc;

namespace {

// Powers with an exponent of at least 2, by fast multiplications.
struct FastPower {
    const mint &base, &exponent;
    mint &out;

    template <class Residues>
    bool over(const Residues &residues) const
    {
        typename Residues::Element element;
        residues.load(base, element);
        residues.power(element, exponent, element);
        residues.store(element, out);
        return true;
    }
};

}  // namespace

namespace zokecc {

void power_by_definition(const mint &base, const mint &exponent, const mint &p, mint &out)
{
    mint power{};
    mint_copy(&power, &base);
    for (int32_t i = get_mint_bit_len(&exponent) - 2; i >= 0; --i) {
        mint_mod_mul(&power, &power, &p, &power);
        if (mint_bit_set(&exponent, i) != 0) mint_mod_mul(&power, &base, &p, &power);
    }
    mint_copy(&out, &power);
}

}  // namespace zokecc

// KEPT: the exponent is always reduced modulo p - 1, which is right only for a prime p, and the
// base is never reduced by itself: with exponent 1 it is returned unreduced. Callers on deployed
// devices get both. Held by MintExp.KeptExponentReducedModuloPMinusOne and
// MintExp.KeptBaseNotReduced.
int32_t mint_exp(const mint *base, const mint *exponent, const mint *p, mint *out)
{
    mint one{};
    set_small(one, 1);
    mint p_minus_1{};
    mint_sub(p, &one, &p_minus_1);
    mint e{};
    mint_mod(exponent, &p_minus_1, &e);
    e.len = trimmed_words(e);
    if (is_zero(e)) {
        set_small(*out, 1);
        return 0;
    }
    // From the second power on every result is reduced, even if the base is not.
    if (is_one(e) || !run_over_residues(*p, FastPower{*base, e, *out}))
        power_by_definition(*base, e, *p, *out);
    return 0;
}

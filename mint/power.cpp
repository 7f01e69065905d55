// Modular exponentiation, left to right.
#include "mint/value.h"

// KEPT: the exponent is reduced modulo p - 1 in every call, which is right for a prime p only,
// and the base is never reduced by itself: with exponent 1 it comes back as it is. Callers on
// deployed devices see both. Held by MintExp.KeptExponentReducedModuloPMinusOne and
// MintExp.KeptBaseNotReduced.
int32_t mint_exp(const mint *base, const mint *exponent, const mint *p, mint *out)
{
    mint one{};
    zokecc::set_small(one, 1);
    mint p_minus_1{};
    mint_sub(p, &one, &p_minus_1);
    mint e{};
    mint_mod(exponent, &p_minus_1, &e);
    e.len = zokecc::trimmed_words(e);
    if (zokecc::is_zero(e)) {
        zokecc::set_small(*out, 1);
        return 0;
    }
    mint power{};
    mint_copy(&power, base);
    for (int32_t i = get_mint_bit_len(&e) - 2; i >= 0; --i) {
        mint_mod_mul(&power, &power, p, &power);
        if (mint_bit_set(&e, i) != 0) mint_mod_mul(&power, base, p, &power);
    }
    mint_copy(out, &power);
    return 0;
}

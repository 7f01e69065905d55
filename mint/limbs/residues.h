// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Products and powers modulo p, with the same modular multiplications as the point arithmetic.
//
// For odd moduli of five to nine words. Products alone are true remainders whatever the method: the borrow
// rule does not apply.
#ifndef ZOKECC_MINT_LIMBS_RESIDUES_H
#define ZOKECC_MINT_LIMBS_RESIDUES_H

#include "base/config.h"
#include "base/linkage.h"
#include "mint/limbs/borrow_rule.h"
#include "mint/limbs/modulus.h"
#include "mint/limbs/trace.h"
#include "mint/value.h"

namespace zokecc {

template <class Modulus, class Trace = NoTrace>
class Residues {
public:
    using Limb = typename Modulus::Limb;
    using Element = ModulusElement<Modulus>;

    // True if p is a modulus for this class.
    static bool serves(const mint &p) { return is_fast_modulus<Modulus>(p); }

    explicit Residues(const mint &p) : p_(p) { modulus_.prepare(p.words, p.len); }

    // out = a mod p, for any a.
    void load(const mint &a, Element &out) const
    {
        mint remainder{};
        mint_mod(&a, &p_, &remainder);
        std::memset(out.limb, 0, sizeof out.limb);
        std::memcpy(out.limb, remainder.words, 4 * trimmed_words(remainder));
    }

    // out = a, trimmed.
    void store(const Element &a, mint &out) const
    {
        const unsigned words = used_words_of(a.limb, modulus_.limbs());
        std::memcpy(out.words, a.limb, 4 * words);
        out.len = words;
    }

    bool equal(const Element &a, const Element &b) const
    {
        return std::memcmp(a.limb, b.limb, modulus_.limbs() * sizeof(Limb)) == 0;
    }

    // out = a b; out may be a or b.
    ZOKECC_ONE_COPY void multiply(const Element &a, const Element &b, Element &out) const
    {
        if (!modulus_.multiply(a.limb, b.limb, out.limb)) [[unlikely]]
            multiply_by_division(a, b, out);
    }

    // out = a^2, by the modulus's squaring if it has one; out may be a.
    ZOKECC_ONE_COPY void square(const Element &a, Element &out) const
    {
        bool done;
        if constexpr (requires { modulus_.square(a.limb, out.limb); })
            done = modulus_.square(a.limb, out.limb);
        else
            done = modulus_.multiply(a.limb, a.limb, out.limb);
        if (!done) [[unlikely]]
            multiply_by_division(a, a, out);
    }

    // out = base^exponent for a nonzero exponent, with sliding windows from the top bit down; out may be
    // base.
    void power(const Element &base, const mint &exponent, Element &out) const
    {
        const int32_t bits = get_mint_bit_len(&exponent);
        const int32_t width = bits > 64 ? 4 : bits > 16 ? 3 : 1;
        Element odd[8];  // base^1, base^3, ...
        odd[0] = base;
        if (width > 1) {
            Element base_squared;
            square(base, base_squared);
            for (int32_t i = 1; i < 1 << (width - 1); ++i) multiply(odd[i - 1], base_squared, odd[i]);
        }
        bool first = true;
        for (int32_t high = bits - 1; high >= 0; --high) {
            if (!has_bit(exponent, high)) {
                square(out, out);
                continue;
            }
            // The window is bits high to low; both ends are ones.
            int32_t low = high >= width ? high - width + 1 : 0;
            while (!has_bit(exponent, low)) ++low;
            uint32_t window = 0;
            for (int32_t i = high; i >= low; --i) {
                window = 2 * window + (has_bit(exponent, i) ? 1 : 0);
                if (!first) square(out, out);
            }
            if (first)
                out = odd[window >> 1];
            else
                multiply(out, odd[window >> 1], out);
            first = false;
            high = low;
        }
    }

private:
    static bool has_bit(const mint &a, int32_t i) { return (a.words[i / 32] >> (i % 32) & 1) != 0; }

    ZOKECC_OWN_FRAME void multiply_by_division(const Element &a, const Element &b, Element &out) const
    {
        Trace::quotient_unsure();
        mint x{};
        mint y{};
        store(a, x);
        store(b, y);
        mint_mod_mul(&x, &y, &p_, &x);
        load(x, out);
    }

    const mint &p_;
    Modulus modulus_;
};

// Calls operation.over(residues) with the residues of the first modulus that accepts p. False if none does.
template <class Operation>
ZOKECC_OWN_FRAME bool run_over_residues(const mint &p, const Operation &operation)
{
    if constexpr (!kSmall) return run_over_first<Residues>(p, operation);
    return false;
}

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The prime field on limbs: the same bits as ReferenceField, several times faster.
//
// Only for odd moduli of 5 to 9 words and for reduced, trimmed numbers; load() refuses others, which
// ReferenceField then handles. Results stay reduced, so a number is just its limbs, without a length. The
// only exception, the inverse of zero, is p; it is used only in products, which reduce it.
#ifndef ZOKECC_ECC_FAST_FIELD_H
#define ZOKECC_ECC_FAST_FIELD_H

#include <zokecc/ecc.h>

#include "base/burn.h"
#include "base/linkage.h"
#include "base/wipe.h"
#include "mint/limbs/borrow_rule.h"
#include "mint/limbs/inverse.h"
#include "mint/limbs/modular_sums.h"
#include "mint/limbs/modulus.h"
#include "mint/limbs/trace.h"
#include "mint/plain.h"
#include "mint/value.h"

namespace zokecc {

template <class Modulus, class Trace = NoTrace>
class FastField {
public:
    static constexpr size_t kStackOfSums = kStackOfFastSums;
    static constexpr size_t kStackOfProduct = kStackOfFastProduct;

    using Steps = typename Modulus::Steps;
    using Limb = typename Modulus::Limb;
    using Element = ModulusElement<Modulus>;
    struct Affine {
        uint32_t infinity;
        Element x, y;
    };
    struct Jacobian {
        Element X, Y, Z;
    };

    using Constant = Element;
    static const Element &number(const Constant &constant) { return constant; }

    // True if p is a modulus for this field.
    static bool serves(const mint &p) { return is_fast_modulus<Modulus>(p); }

    explicit FastField(const mint &p) : p_record_(p)
    {
        modulus_.prepare(p.words, p.len);
        copy_words(p, p_);
    }

    // out = a record's number. False if it is not below p or not trimmed.
    ZOKECC_SHORT_BODY bool load(const mint &in, Element &out) const
    {
        const uint32_t words = in.len;
        if (words > p_record_.len || (words > 0 && in.words[words - 1] == 0)) return false;
        copy_words(in, out);
        return is_below(out.limb, p_.limb, limbs());
    }

    ZOKECC_SHORT_BODY bool load(const ecc_point &in, Affine &out) const
    {
        out.infinity = in.infinity;
        return in.infinity == 1 || (load(in.x, out.x) && load(in.y, out.y));
    }

    ZOKECC_SHORT_BODY void store(const Element &in, mint &out) const
    {
        const unsigned words = used_words_of(in.limb, limbs());
        std::memcpy(out.words, in.limb, 4 * words);
        out.len = words;
    }

    ZOKECC_SHORT_BODY void store(const Affine &in, ecc_point &out) const
    {
        out.infinity = in.infinity;
        store(in.x, out.x);
        store(in.y, out.y);
    }

    ZOKECC_SHORT_BODY void add(const Element &a, const Element &b, Element &out) const
    {
        Sums::add(a.limb, b.limb, p_.limb, limbs(), out.limb);
    }

    // KEPT: as in ReferenceField, word for word: for a < b there are two subtractions, d = b - a and
    // p - d, and the borrow rule applies to each. Held by
    // FastField.KeptBorrowRuleInModularSubtraction.
    ZOKECC_SHORT_BODY void sub(const Element &a, const Element &b, Element &out) const
    {
        if (!Sums::try_sub(a.limb, b.limb, p_.limb, limbs(), out.limb)) [[unlikely]]
            sub_by_rule(a, b, out);
    }

    // out = p - a as the reference computes it: 0 for 0.
    void negate(const Element &a, Element &out) const
    {
        if (is_zero(a))
            out = a;
        else
            subtract_from_p(a, out);
    }

    // out = p - a by the borrow rule, for 0 < a < p.
    ZOKECC_SHORT_BODY void subtract_from_p(const Element &a, Element &out) const
    {
        Limb ones;
        Element d;
        subtract(p_, a, d, ones);
        if (ones != 0) [[unlikely]] {
            Trace::second_difference();
            keep_equal_words(p_.limb, a.limb, limbs(), d.limb);
        }
        copy(d, out);
    }

    // Never inlined: a dozen copies in a row would fill the instruction cache.
    ZOKECC_ONE_COPY void mul(const Element &a, const Element &b, Element &out) const
    {
        if (!modulus_.multiply(a.limb, b.limb, out.limb)) [[unlikely]]
            multiply_by_division(a, b, out);
    }

    ZOKECC_ONE_COPY void square(const Element &a, Element &out) const
    {
        if constexpr (requires { modulus_.square(a.limb, out.limb); }) {
            if (!modulus_.square(a.limb, out.limb)) [[unlikely]]
                multiply_by_division(a, a, out);
        } else {
            mul(a, a, out);
        }
    }

    void twice(const Element &a, Element &out) const { shift_left(a, 1, out); }

    // The reference shifts up to p's bit length in one step. Nothing is subtracted before that, so
    // shifting bit by bit makes the same subtractions.
    ZOKECC_SHORT_BODY void shift_left(const Element &a, int32_t bits, Element &out) const
    {
        if (!Sums::try_double(a.limb, static_cast<unsigned>(bits), p_.limb, limbs(), out.limb)) [[unlikely]]
            shift_left_by_rule(a, bits, out);
    }

    ZOKECC_SHORT_BODY void halve(const Element &a, Element &out) const
    {
        Limb top = 0;
        Element sum = a;
        if ((a.limb[0] & 1) != 0) top = Steps::add_limbs(a.limb, p_.limb, limbs(), sum.limb);
        const unsigned last = limbs() - 1;
        for (unsigned i = 0; i < last; ++i)
            out.limb[i] = sum.limb[i] >> 1 | sum.limb[i + 1] << (kLimbBits<Limb> - 1);
        out.limb[last] = sum.limb[last] >> 1 | top << (kLimbBits<Limb> - 1);
    }

    ZOKECC_SHORT_BODY void invert(const Element &a, Element &out) const
    {
        if (is_zero(a)) {
            out = p_;  // what the reference leaves for zero
            return;
        }
        FastInverse<Steps, Trace> inverse(a.limb, p_.limb, limbs());
        if (!inverse.run(out.limb)) invert_by_definition(a, out);
    }

    static void copy(const Element &a, Element &out) { out = a; }
    ZOKECC_SHORT_BODY bool equal(const Element &a, const Element &b) const
    {
        Limb difference = 0;
        for (unsigned i = 0; i < limbs(); ++i) difference |= a.limb[i] ^ b.limb[i];
        return difference == 0;
    }
    // Most numbers already differ in the lowest limb.
    ZOKECC_SHORT_BODY bool is_zero(const Element &a) const { return is_small(a, 0); }
    ZOKECC_SHORT_BODY bool is_one(const Element &a) const { return is_small(a, 1); }
    static void clear(Element &a) { set_small(a, 0); }
    static void set_zero(Element &a) { set_small(a, 0); }
    static void set_one(Element &a) { set_small(a, 1); }

private:
    using Sums = ModularSums<Steps>;

    unsigned limbs() const { return modulus_.limbs(); }

    bool is_small(const Element &a, Limb number) const
    {
        if (a.limb[0] != number) return false;
        for (unsigned i = 1; i < limbs(); ++i)
            if (a.limb[i] != 0) return false;
        return true;
    }

    static void set_small(Element &a, Limb number)
    {
        std::memset(a.limb, 0, sizeof a.limb);
        a.limb[0] = number;
    }

    static void copy_words(const mint &in, Element &out)
    {
        set_zero(out);
        std::memcpy(out.limb, in.words, 4 * in.len);
    }

    ZOKECC_SHORT_BODY Limb subtract(const Element &a, const Element &b, Element &out, Limb &ones) const
    {
        return Steps::sub_limbs(a.limb, b.limb, limbs(), out.limb, ones);
    }

    ZOKECC_OWN_FRAME void sub_by_rule(const Element &a, const Element &b, Element &out) const
    {
        Limb ones;
        Element d;
        const Limb below = subtract(a, b, d, ones);
        if (below != 0) subtract(b, a, d, ones);
        if (ones != 0) {
            Trace::first_difference();
            keep_equal_words((below != 0 ? b : a).limb, (below != 0 ? a : b).limb, limbs(), d.limb);
        }
        if (below != 0)
            subtract_from_p(d, out);
        else
            copy(d, out);
    }

    ZOKECC_OWN_FRAME void shift_left_by_rule(const Element &a, int32_t bits, Element &out) const
    {
        twice_by_rule(a, out);
        while (--bits > 0) twice_by_rule(out, out);
    }

    ZOKECC_OWN_FRAME void twice_by_rule(const Element &a, Element &out) const
    {
        Limb ones;
        Element doubled;
        const Limb carry = Steps::add_limbs(a.limb, a.limb, limbs(), doubled.limb);
        if (carry == 0 && is_below(doubled.limb, p_.limb, limbs())) {
            copy(doubled, out);
            return;
        }
        subtract(doubled, p_, out, ones);
        if (ones == 0) return;
        Trace::doubled_difference();
        keep_equal_words(doubled.limb, p_.limb, limbs(), out.limb);
    }

    ZOKECC_OWN_FRAME void multiply_by_division(const Element &a, const Element &b, Element &out) const
    {
        Trace::quotient_unsure();
        mint x;
        mint y;
        store(a, x);
        store(b, y);
        mint_mod_mul(&x, &y, &p_record_, &x);
        copy_words(x, out);
    }

    ZOKECC_OWN_FRAME void invert_by_definition(const Element &a, Element &out) const
    {
        Trace::inverse_by_definition();
        mint x;
        store(a, x);
        mint_EEA_algo(&x, &p_record_, &x);
        copy_words(x, out);
    }

    const mint &p_record_;
    Modulus modulus_;
    Element p_;
};

}  // namespace zokecc

#endif

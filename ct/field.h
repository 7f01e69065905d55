// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The integers modulo an odd p of five to nine words, for secret numbers: exact, with the same instructions
// and addresses for all values. p itself is public.
//
// Numbers are below p, in the modulus's limbs. Outputs may be operands.
#ifndef ZOKECC_CT_FIELD_H
#define ZOKECC_CT_FIELD_H

#include "base/linkage.h"
#include "base/wipe.h"
#include "ct/inverse.h"
#include "ct/mask.h"
#include "ct/sums.h"
#include "mint/limbs/modulus.h"
#include "mint/value.h"

namespace zokecc {

template <class Modulus>
class SecretField {
public:
    using Limb = typename Modulus::Limb;
    using Element = ModulusElement<Modulus>;
    struct Affine {
        Element x, y;
    };
    struct Jacobian {
        Element X, Y, Z;
    };

    // True if p is a modulus for this field.
    static bool serves(const mint &p)
    {
        const uint32_t words = used_words(p);
        return words > 0 && p.words[words - 1] != 0 && is_odd(p) && !is_one(p) &&
               Modulus::fits(p.words, words);
    }

    explicit SecretField(const mint &p) : words_(p.len)
    {
        modulus_.prepare(p.words, p.len);
        modulus_.open_quotients().go_on();
        read_words(p.words, p_);
        const Limb top = p_.limb[limbs() - 1];
        top_mask_ = ~Limb{0} >> std::countl_zero(top);
        half_top_ = top > 1 ? top / 2 : 1;
    }

    unsigned words() const { return words_; }
    const Element &modulus() const { return p_; }

    // in[words()], below p.
    void read_words(const uint32_t *in, Element &out) const
    {
        out.limb[limbs() - 1] = 0;
        std::memcpy(out.limb, in, 4 * words_);
    }
    void write_words(const Element &in, uint32_t *out) const { std::memcpy(out, in.limb, 4 * words_); }

    void set_zero(Element &out) const { set_small(0, out); }
    void set_one(Element &out) const { set_small(1, out); }
    void set_small(Limb number, Element &out) const
    {
        for (unsigned i = 1; i < limbs(); ++i) out.limb[i] = 0;
        out.limb[0] = number;
    }

    ZOKECC_ONE_COPY void add(const Element &a, const Element &b, Element &out) const
    {
        Sums::add(a.limb, b.limb, p_.limb, limbs(), out.limb);
    }
    ZOKECC_ONE_COPY void sub(const Element &a, const Element &b, Element &out) const
    {
        Sums::sub(a.limb, b.limb, p_.limb, limbs(), out.limb);
    }
    // out = p - a, and 0 for 0
    void negate(const Element &a, Element &out) const
    {
        Element zero;
        set_zero(zero);
        sub(zero, a, out);
    }
    void twice(const Element &a, Element &out) const { add(a, a, out); }
    ZOKECC_ONE_COPY void halve(const Element &a, Element &out) const
    {
        if (&out != &a) out = a;
        const Limb top = Sums::add_masked(mask_of_bit(a.limb[0] & 1), p_.limb, limbs(), out.limb);
        const unsigned last = limbs() - 1;
        for (unsigned i = 0; i < last; ++i)
            out.limb[i] = out.limb[i] >> 1 | out.limb[i + 1] << (kLimbBits<Limb> - 1);
        out.limb[last] = out.limb[last] >> 1 | top << (kLimbBits<Limb> - 1);
    }
    ZOKECC_ONE_COPY void mul(const Element &a, const Element &b, Element &out) const
    {
        correct(modulus_.multiply(a.limb, b.limb, out.limb), out);
    }
    ZOKECC_ONE_COPY void square(const Element &a, Element &out) const
    {
        correct(modulus_.square(a.limb, out.limb), out);
    }

    // out = 1 / a. For an a without an inverse returns zero and leaves some other number in out.
    Mask invert(const Element &a, Element &out) const
    {
        uint32_t in[kMaxSecretWords + 1];
        uint32_t inverse[kMaxSecretWords + 1];
        uint32_t p[kMaxSecretWords + 1];
        write_words(a, in);
        write_words(p_, p);
        const Mask found = invert_secret(in, p, words_, inverse);
        Element product;
        Element one;
        Element result;
        read_words(inverse, result);
        mul(a, result, product);
        set_one(one);
        out = result;
        wipe(in, sizeof in);
        wipe(inverse, sizeof inverse);
        return found & equal(product, one);
    }

    Mask equal(const Element &a, const Element &b) const
    {
        Limb difference = 0;
        for (unsigned i = 0; i < limbs(); ++i) difference |= a.limb[i] ^ b.limb[i];
        return mask_of_zero(difference);
    }
    Mask is_zero(const Element &a) const
    {
        Limb any = 0;
        for (unsigned i = 0; i < limbs(); ++i) any |= a.limb[i];
        return mask_of_zero(any);
    }
    // All ones if a is below p.
    Mask is_reduced(const Element &a) const
    {
        Limb ones;
        Element difference;
        return mask_of_bit(StepsOn<Limb>::sub_limbs(a.limb, p_.limb, limbs(), difference.limb, ones));
    }
    // out = a where the mask is all ones.
    void move(Mask mask, const Element &a, Element &out) const
    {
        for (unsigned i = 0; i < limbs(); ++i) out.limb[i] = select(mask, a.limb[i], out.limb[i]);
    }

    unsigned limbs() const { return modulus_.limbs(); }

private:
    using Sums = SecretSums<Limb>;

    // Corrects a product. If its quotient was open, the true remainder lies close to p; if it has lost its
    // top bit it appears far below p / 2. That shows in the top limb or, if p has a single bit there, in the
    // highest bit of the next limb.
    void correct(bool is_exact, Element &out) const
    {
        constexpr unsigned kSecond = Modulus::kElementLimbs > 1 ? 2 : 1;
        Limb &top = out.limb[limbs() - 1];
        Limb lost = 0;
        // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult): the product wrote every limb
        sub_limb(top | out.limb[limbs() - kSecond] >> (kLimbBits<Limb> - 1), half_top_, lost);
        Sums::subtract_once(lost & (opaque(Limb{is_exact}) ^ 1), p_.limb, limbs(), out.limb);
        top &= top_mask_;
    }

    Modulus modulus_;
    Element p_;
    Limb top_mask_;  // the bits of p's top limb
    Limb half_top_;  // half of it, but not 0
    unsigned words_;
};

}  // namespace zokecc

#endif

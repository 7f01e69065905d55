// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Sums and differences modulo p on limbs, for operands below p: exact and branch-free. out may be an operand.
#ifndef ZOKECC_CT_SUMS_H
#define ZOKECC_CT_SUMS_H

#include <type_traits>

#include "base/config.h"
#include "base/linkage.h"
#include "ct/mask.h"
#include "mint/limbs/borrow_rule.h"

namespace zokecc {

template <class L>
struct PortableSecretSums {
    // out[n] = a + b mod p
    static void add(const L *a, const L *b, const L *p, unsigned n, L *out)
    {
        const L carry = StepsOn<L>::add_limbs(a, b, n, out);
        subtract_once(carry, p, n, out);
    }

    // out[n] = a - b mod p
    static void sub(const L *a, const L *b, const L *p, unsigned n, L *out)
    {
        L ones;
        const L borrow = StepsOn<L>::sub_limbs(a, b, n, out, ones);
        add_masked(mask_of_bit(borrow), p, n, out);
    }

    // out[n] -= p where out, with the carry above it, is p or more.
    ZOKECC_SHORT_BODY static void subtract_once(L carry, const L *p, unsigned n, L *out)
    {
        L ones;
        const L borrow = StepsOn<L>::sub_limbs(out, p, n, out, ones);
        add_masked(mask_of_bit(borrow & (carry ^ 1)), p, n, out);
    }

    // out[n] += p where the mask is all ones. Returns the carry.
    ZOKECC_SHORT_BODY static L add_masked(Mask mask, const L *p, unsigned n, L *out)
    {
        L correction[kMaxFastLimbs<L>];
        for (unsigned i = 0; i < n; ++i) correction[i] = p[i] & static_cast<L>(mask);
        return StepsOn<L>::add_limbs(out, correction, n, out);
    }
};

// The ARM bodies for eight words, all of them in registers; see sums_arm.cpp.
ZOKECC_INTERNAL void zokecc_secret_add_8(const uint32_t *a, const uint32_t *b, const uint32_t *p,
                                         uint32_t *out);
ZOKECC_INTERNAL void zokecc_secret_sub_8(const uint32_t *a, const uint32_t *b, const uint32_t *p,
                                         uint32_t *out);
ZOKECC_INTERNAL void zokecc_secret_subtract_once_8(uint32_t *out, uint32_t carry, const uint32_t *p);

struct ArmSecretSums : PortableSecretSums<uint32_t> {
    using Portable = PortableSecretSums<uint32_t>;

    static void add(const uint32_t *a, const uint32_t *b, const uint32_t *p, unsigned n, uint32_t *out)
    {
        if (n == 8) [[likely]]
            return zokecc_secret_add_8(a, b, p, out);
        Portable::add(a, b, p, n, out);
    }
    static void sub(const uint32_t *a, const uint32_t *b, const uint32_t *p, unsigned n, uint32_t *out)
    {
        if (n == 8) [[likely]]
            return zokecc_secret_sub_8(a, b, p, out);
        Portable::sub(a, b, p, n, out);
    }
    static void subtract_once(uint32_t carry, const uint32_t *p, unsigned n, uint32_t *out)
    {
        if (n == 8) [[likely]]
            return zokecc_secret_subtract_once_8(out, carry, p);
        Portable::subtract_once(carry, p, n, out);
    }
};

// The bodies for this machine.
template <class L>
using SecretSums = std::conditional_t<kArmFunctions && sizeof(L) == 4, ArmSecretSums, PortableSecretSums<L>>;

}  // namespace zokecc

#endif

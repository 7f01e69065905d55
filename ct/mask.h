// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Masks: all ones or zero, instead of branches that would depend on a secret.
#ifndef ZOKECC_CT_MASK_H
#define ZOKECC_CT_MASK_H

#include <cstdint>

#include "base/declassify.h"
#include "mint/limbs/limb.h"

namespace zokecc {

// Returns x, hidden from the optimiser: it cannot turn arithmetic on the result into a branch.
template <class L>
inline L opaque(L x)
{
    if constexpr (!kMemorySanitizer) __asm__("" : "+r"(x));
    return x;
}

using Mask = NativeLimb;

// All ones if bit is 1, zero if it is 0.
inline Mask mask_of_bit(Mask bit) { return Mask{0} - opaque(bit); }

// All ones for x = 0.
inline Mask mask_of_zero(Mask x) { return mask_of_bit(~(x | (Mask{0} - x)) >> (kLimbBits<Mask> - 1)); }

// a where the mask is all ones, b where it is zero.
template <class L>
inline L select(Mask mask, L a, L b)
{
    return static_cast<L>(b ^ (static_cast<L>(mask) & (a ^ b)));
}

// The outcome of a test as a bool to branch on: it becomes public.
inline bool declassified(Mask mask) { return declassify(mask != 0); }

}  // namespace zokecc

#endif

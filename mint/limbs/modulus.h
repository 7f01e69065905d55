// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Chooses the modular multiplications for this machine; cmake/Kernels.cmake compiles the matching bodies.
#ifndef ZOKECC_MINT_LIMBS_MODULUS_H
#define ZOKECC_MINT_LIMBS_MODULUS_H

#include <zokecc/mint.h>

#include "base/linkage.h"
#include "mint/limbs/borrow_rule.h"
#include "mint/limbs/trace.h"
#include "mint/value.h"

// ZOKECC_MODULI: all of them, in the order in which they are tried. ZOKECC_SHARED_MODULI: those for which all
// users share one copy of the code built on them; for the others each user has its own copy.
#if defined(__SIZEOF_INT128__)
#include "mint/limbs/modulus_64.h"
#define ZOKECC_MODULI(each) each(FullLimbs<4>) each(FullLimbs<3>) each(FullLimbs<5>)
#define ZOKECC_SHARED_MODULI(each)
#elif defined(__ARM_ARCH_ISA_ARM) && __ARM_ARCH >= 6
#include "mint/limbs/modulus_32.h"
#define ZOKECC_MODULI(each) each(AnyWordLimbs)
#define ZOKECC_SHARED_MODULI ZOKECC_MODULI
#else
#include "mint/limbs/modulus_29.h"
#define ZOKECC_MODULI(each) each(AnyShortLimbs)
#define ZOKECC_SHARED_MODULI ZOKECC_MODULI
#endif

namespace zokecc {

// A number below a modulus, in limbs.
template <class Modulus>
struct ModulusElement {
    // Not defaulted: {} would clear the limbs, which are always written before they are read.
    ModulusElement() {}  // NOLINT(modernize-use-equals-default)
    typename Modulus::Limb limb[Modulus::kElementLimbs];
};

// True if p is odd, trimmed, of five to nine words, and accepted by Modulus.
template <class Modulus>
ZOKECC_ONE_COPY bool is_fast_modulus(const mint &p)
{
    const uint32_t words = used_words(p);
    return words >= 5 && words <= kMaxFastWords && p.words[words - 1] != 0 && is_odd(p) &&
           Modulus::fits(p.words, words);
}

// Calls operation.over(arithmetic), where Arithmetic (FastField or Residues) is that of the first modulus
// that accepts p, and returns its result. False if no modulus accepts p.
template <template <class, class> class Arithmetic, class Operation>
ZOKECC_INLINE bool run_over_first(const mint &p, const Operation &operation)
{
#define ZOKECC_TRY(Modulus) \
    if (Arithmetic<Modulus, NoTrace>::serves(p)) return operation.over(Arithmetic<Modulus, NoTrace>(p));
    ZOKECC_MODULI(ZOKECC_TRY)
#undef ZOKECC_TRY
    return false;
}

}  // namespace zokecc

#endif

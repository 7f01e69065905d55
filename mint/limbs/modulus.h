// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The multiplications modulo p for this machine: the one place where they are chosen, besides
// cmake/Kernels.cmake, which compiles the bodies.
#ifndef ZOKECC_MINT_LIMBS_MODULUS_H
#define ZOKECC_MINT_LIMBS_MODULUS_H

#include <zokecc/mint.h>

#include "base/linkage.h"
#include "mint/limbs/borrow_rule.h"
#include "mint/limbs/trace.h"
#include "mint/value.h"

// ZOKECC_MODULI: all of them, in the order in which they are tried. ZOKECC_SHARED_MODULI: those whose users
// share one copy of what is computed with them; with the others each user has its own.
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
    // Not defaulted: {} would clear the limbs, and nothing is read before it is written.
    ModulusElement() {}  // NOLINT(modernize-use-equals-default)
    typename Modulus::Limb limb[Modulus::kElementLimbs];
};

// True for an odd p of five to nine words, trimmed, that Modulus takes.
template <class Modulus>
ZOKECC_ONE_COPY bool is_fast_modulus(const mint &p)
{
    const uint32_t words = used_words(p);
    return words >= 5 && words <= kMaxFastWords && p.words[words - 1] != 0 && is_odd(p) &&
           Modulus::fits(p.words, words);
}

// Runs the operation, a record with a member template over(arithmetic), with the arithmetic of the first
// modulus that serves p: FastField or Residues. False if none does, or what the operation returns.
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

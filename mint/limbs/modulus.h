// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The multiplication modulo p that this machine has: the one place where it is chosen, beside
// cmake/Kernels.cmake, which compiles the bodies.
#ifndef ZOKECC_MINT_LIMBS_MODULUS_H
#define ZOKECC_MINT_LIMBS_MODULUS_H

#if defined(__SIZEOF_INT128__)
#include "mint/limbs/modulus_64.h"
#elif defined(__ARM_ARCH_ISA_ARM) && __ARM_ARCH >= 6
#include "mint/limbs/modulus_32.h"
namespace zokecc {
using SmallModulus = AnyWordLimbs;
}
#else
#include "mint/limbs/modulus_29.h"
namespace zokecc {
using SmallModulus = AnyShortLimbs;
}
#endif

#endif

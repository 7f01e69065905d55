// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The point formulas over the fast field of 32-bit machines, compiled for size, unlike the field itself.
#include "ecc/points.h"

namespace zokecc {

#define ZOKECC_FAST_FORMULAS(Modulus) ZOKECC_POINT_FORMULAS(, FastField<Modulus>)
ZOKECC_SHARED_MODULI(ZOKECC_FAST_FORMULAS)

}  // namespace zokecc

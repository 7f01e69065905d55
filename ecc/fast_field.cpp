// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The fast field of 32-bit machines, compiled for speed.
#include "ecc/fields.h"

namespace zokecc {

// NOLINTNEXTLINE(bugprone-macro-parentheses): the argument is a type
#define ZOKECC_FAST_FIELD(Modulus) template class FastField<Modulus>;
ZOKECC_SHARED_MODULI(ZOKECC_FAST_FIELD)

}  // namespace zokecc

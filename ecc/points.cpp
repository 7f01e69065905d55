// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The point formulas, written out for the fields that share them.
#include "ecc/points.h"

namespace zokecc {

ZOKECC_POINT_FORMULAS(, ReferenceField)
#if !defined(__SIZEOF_INT128__) && !defined(ZOKECC_SMALL)
ZOKECC_POINT_FORMULAS(, SmallField)
#endif

}  // namespace zokecc

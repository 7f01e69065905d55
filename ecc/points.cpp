// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The point formulas over the reference field.
#include "ecc/points.h"

namespace zokecc {

ZOKECC_POINT_FORMULAS(, ReferenceField)

}  // namespace zokecc

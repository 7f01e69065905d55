// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The field of small machines.
#include "ecc/fields.h"

#if !defined(__SIZEOF_INT128__) && !defined(ZOKECC_SMALL)

namespace zokecc {

template class FastField<SmallModulus>;

}  // namespace zokecc

#endif

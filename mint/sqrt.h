// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The square root for p = 1 (mod 8) as it is defined, for tests to compare with.
#ifndef ZOKECC_MINT_SQRT_H
#define ZOKECC_MINT_SQRT_H

#include <zokecc/mint.h>

namespace zokecc {

// What the table of exponents leaves for a and g, a non-residue: 1 with out written, or 0 where the
// table would overflow. out may be a.
int32_t root_by_table(const mint &a, const mint &p, const mint &g, mint &out);

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The power and the square root as they are defined, for the routines that are faster to fall back to and for
// tests to compare with.
#ifndef ZOKECC_MINT_BY_DEFINITION_H
#define ZOKECC_MINT_BY_DEFINITION_H

#include <zokecc/mint.h>

namespace zokecc {

// out = base^exponent mod p, a product after the other, for a trimmed exponent other than zero. With
// exponent 1 the base comes back as it is. out may be any of the operands.
void power_by_definition(const mint &base, const mint &exponent, const mint &p, mint &out);

// The square root for p = 1 (mod 8): what the table of exponents leaves for a and g, a non-residue. 1 with
// out written, or 0 where the table would overflow. out may be a.
int32_t root_by_table(const mint &a, const mint &p, const mint &g, mint &out);

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Power and square root, straight from their definitions: the fallback of the faster routines and the
// reference for tests.
#ifndef ZOKECC_MINT_BY_DEFINITION_H
#define ZOKECC_MINT_BY_DEFINITION_H

#include <zokecc/mint.h>

namespace zokecc {

// out = base^exponent mod p by square and multiply, for a trimmed, nonzero exponent. With exponent 1 the base
// is returned unreduced. out may be any of the operands.
void power_by_definition(const mint &base, const mint &exponent, const mint &p, mint &out);

// The square root for p = 1 (mod 8) by the table of exponents; g is a non-residue. Returns 1 with out
// written, or 0 if the table would overflow. out may be a.
int32_t root_by_table(const mint &a, const mint &p, const mint &g, mint &out);

}  // namespace zokecc

#endif

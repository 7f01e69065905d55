// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The power as it is defined, for tests to compare with.
#ifndef ZOKECC_MINT_POWER_H
#define ZOKECC_MINT_POWER_H

#include <zokecc/mint.h>

namespace zokecc {

// out = base^exponent mod p, a product after the other, for a trimmed exponent other than zero. With
// exponent 1 the base comes back as it is. out may be any of the operands.
void power_by_definition(const mint &base, const mint &exponent, const mint &p, mint &out);

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The curve equation y^2 = x^3 + a x + b (mod p).
#ifndef ZOKECC_ECC_EQUATION_H
#define ZOKECC_ECC_EQUATION_H

#include <zokecc/mint.h>

namespace zokecc {

// out = x^3 + a x + b (mod p); zero for p = 0. out may be an operand.
void curve_right_side(const mint &x, const mint &a, const mint &b, const mint &p, mint &out);

}  // namespace zokecc

#endif

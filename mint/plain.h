// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Plain arithmetic for the layers above, without the in-place trimming of mint_add.
#ifndef ZOKECC_MINT_PLAIN_H
#define ZOKECC_MINT_PLAIN_H

#include <zokecc/mint.h>

namespace zokecc {

// out = a + b, trimmed, modulo 2^608. out may be a, b or both; other operands are left unchanged,
// even if they are not trimmed.
void add_values(const mint &a, const mint &b, mint &out);

// out = X - Y for X > Y by mint_compare, with the borrows of mint_sub. out may be X or Y.
void subtract_smaller(const mint &X, const mint &Y, mint &out);

// out = (a + b) mod p, as mint_mod_add computes it but leaving the operands unchanged.
void mod_add(const mint &a, const mint &b, const mint &p, mint &out);

// out = x[count] mod modulus, for a trimmed product of up to 38 words. Writes nothing if the
// modulus is zero. A value below the modulus is copied unchanged.
void reduce_product(const uint32_t *x, uint32_t count, const mint &modulus, mint &out);

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Multiplication on 29-bit limbs, unrolled for the common widths: 192, 224 and 256 bits.
#include "mint/limbs/modulus_29_columns.h"

namespace zokecc {

namespace {

struct Here : ShortModulus::Steps {};  // gives the instantiations internal linkage

}  // namespace

bool multiply_eight(const ShortModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out)
{
    return ColumnLimbs<8, Here>::multiply(p, a, b, out);
}

bool multiply_chosen(const ShortModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out)
{
    return ColumnProducts<Here>::multiply_chosen(p, a, b, out);
}

}  // namespace zokecc

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Multiplication on whole words, for every width that a fast field accepts.
#include "mint/limbs/modulus_32.h"

namespace zokecc {

namespace {

struct Here : WordModulus::Steps {};  // gives the instantiations internal linkage

}  // namespace

bool multiply_eight(const WordModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out)
{
    return WordLimbs<8, WordModulus::Steps>::multiply(p, a, b, out);
}

void multiply_eight_words(const uint32_t *a, const uint32_t *b, uint32_t *out)
{
    WordLimbs<8, WordModulus::Steps>::product(a, b, out);
}

bool multiply_chosen(const WordModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out)
{
    return WordProducts<Here>::multiply_chosen(p, a, b, out);
}

}  // namespace zokecc

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The full product.
#include "mint/limbs/division.h"
#include "mint/value.h"

using namespace zokecc;

int32_t mint_mul(const mint *a, const mint *b, mint *out)
{
    if (is_zero(*a) || is_zero(*b)) {
        set_zero(*out);
        return 1;
    }
    const uint32_t a_used = used_words(*a);
    const uint32_t b_used = used_words(*b);
    uint32_t product[kProductWords];
    multiply_words<NativeSteps>(a->words, a_used, b->words, b_used, product);
    set_words(*out, product, a_used + b_used);
    return 1;
}

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The full product.
#include "mint/limbs/division.h"
#include "mint/value.h"

int32_t mint_mul(const mint *a, const mint *b, mint *out)
{
    if (zokecc::is_zero(*a) || zokecc::is_zero(*b)) {
        zokecc::set_zero(*out);
        return 1;
    }
    const uint32_t a_used = zokecc::used_words(*a);
    const uint32_t b_used = zokecc::used_words(*b);
    uint32_t product[zokecc::kProductWords];
    zokecc::multiply_words<zokecc::NativeLimb>(a->words, a_used, b->words, b_used, product);
    zokecc::set_words(*out, product, a_used + b_used);
    return 1;
}

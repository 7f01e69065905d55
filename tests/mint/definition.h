// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Reference products and remainders, by long division on words, independent of the exported calls.
#ifndef ZOKECC_TESTS_MINT_DEFINITION_H
#define ZOKECC_TESTS_MINT_DEFINITION_H

#include <zokecc/mint.h>

#include "mint/divide.h"
#include "mint/value.h"
#include "tests/support/hard_words.h"

namespace zokecc_test {

// x[count] mod p, for a nonzero p.
inline mint defined_remainder(const uint32_t *x, uint32_t count, const mint &p) {
    const uint32_t used = zokecc::trimmed_words(p);
    mint out{};
    if (count < used) {
        zokecc::set_words(out, x, count);
        return out;
    }
    uint32_t rest[zokecc::kMintWords];
    zokecc::divide_words(x, count, p.words, used, nullptr, rest);
    zokecc::set_words(out, rest, used);
    return out;
}

inline mint defined_product(const mint &a, const mint &b, const mint &p) {
    mint zero{};
    if (a.len == 0 || b.len == 0) return zero;
    uint32_t product[zokecc::kProductWords];
    mul_2(a.words, static_cast<int32_t>(a.len), b.words, static_cast<int32_t>(b.len), product);
    return defined_remainder(product, a.len + b.len, p);
}

}  // namespace zokecc_test

#endif

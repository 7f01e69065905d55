// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The shape of the fixed-base table.
#ifndef ZOKECC_ECC_TABLE_H
#define ZOKECC_ECC_TABLE_H

#include <zokecc/ecc.h>

#include <cstdint>

#include "base/linkage.h"

namespace zokecc {

constexpr uint32_t kCombMaxWords = 8;  // 2^9 + 1 entries; a ninth word would need 2^10 + 1

// m, the words of p that give the table its shape, or 0 where there is no table: p of no words
// or of more than eight.
uint32_t comb_words(const mint &p);

}  // namespace zokecc

// In the hardened build alone: the table of the precomputation, in which no entry is spoilt by the word rule
// of subtraction. False, with nothing written, where G is not on the curve or p has no exact field.
ZOKECC_INTERNAL bool fill_exact_table(const ecc_point *G, const mint *a, const mint *b, const mint *p,
                                      ecc_point *table);

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The shape of the fixed-base table.
#ifndef ZOKECC_ECC_TABLE_H
#define ZOKECC_ECC_TABLE_H

#include <zokecc/ecc.h>

#include <cstdint>

#include "base/linkage.h"

namespace zokecc {

constexpr uint32_t kCombMaxWords = 8;  // 2^9 + 1 entries; a ninth word would need 2^10 + 1

// m, the number of p's words, which determines the table's shape; 0 if there is no table, because p
// has no words or more than eight.
uint32_t comb_words(const mint &p);

}  // namespace zokecc

// Hardened build only: the same table, with no entry spoilt by the borrow rule of subtraction. False, with
// nothing written, if G is not on the curve or p has no exact field.
ZOKECC_INTERNAL bool fill_exact_table(const ecc_point *G, const mint *a, const mint *b, const mint *p,
                                      ecc_point *table);

#endif

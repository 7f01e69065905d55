// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The table for fixed-base multiplication.
#include "ecc/table.h"

#include <cstring>

#include "ecc/curve.h"
#include "ecc/points.h"
#include "ecc/table_builder.h"
#include "mint/value.h"

using namespace zokecc;

namespace {

constexpr ecc_point kZeroPoint{};
constexpr ecc_point kInfinitePoint{1, {}, {}};

}  // namespace

namespace zokecc {

uint32_t comb_words(const mint &p)
{
    const int32_t len = signed_len(p);
    return len > 0 && len <= static_cast<int32_t>(kCombMaxWords) ? static_cast<uint32_t>(len) : 0;
}

}  // namespace zokecc

int32_t ecc_precomputation_point_1(const ecc_point *G, const mint *a, const mint *, const mint *p,
                                   ecc_point *table)
{
    const uint32_t m = comb_words(*p);
    if (m == 0) return 1;
    const uint32_t size = 1u << m;
    // Copy only the words in use, and no coordinates of infinity.
    ecc_point base{};
    base.infinity = G->infinity;
    if (G->infinity != kInfinity) {
        mint_copy(&base.x, &G->x);
        mint_copy(&base.y, &G->y);
    }
    run_over_best_field(*p, TableOfMultiples{base, *a, table, size});
    table[size] = kZeroPoint;
    table[2 * size] = kInfinitePoint;
    return 0;
}

// KEPT: one round more than the table needs: base point 2m is computed and stored in the curve's
// record like the others, but never read. Held by
// EccPrecomputationPoint.KeptLastRoundOfBasePointsIsComputed.
int32_t ecc_precomputation_point(const ecc_point *G, const mint *a, const mint *b, const mint *p)
{
    ecc_point *const table = global_curve.table.entry;
    if (ecc_precomputation_point_1(G, a, b, p, table) != 0) return 1;
    const uint32_t m = comb_words(*p);
    for (uint32_t j = 0; j < m; ++j) {
        global_curve.base[j] = table[1u << j];
        global_curve.base[m + j] = table[(1u << m) + (1u << j)];
    }
    run_over_best_field(*p, DoubledPoint{global_curve.base[m], *a, kHalfWordShift, global_curve.base[2 * m]});
    return 0;
}

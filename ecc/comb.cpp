// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Fixed-base scalar multiplication: a comb over the precomputed table.
#include "ecc/comb.h"

#include "ecc/curve.h"
#include "ecc/points.h"
#include "ecc/table.h"

using namespace zokecc;

namespace {

// True if k needs more than the m words that the table covers.
bool is_wider_than(const mint &k, uint32_t m) { return trimmed_words(k) > m; }

}  // namespace

int32_t ecc_fix_point_mul_1(const mint *k, const ecc_point *, const mint *a, const mint *b, const mint *p,
                            ecc_point *out, const ecc_point *table)
{
    const uint32_t m = comb_words(*p);
    if (is_zero(*k) || m == 0 || is_zero(*p)) {
        set_infinity(*out);
        return 0;
    }
    if (is_wider_than(*k, m)) {
        // The true product, for callers that check the range of a scalar only afterwards.
        ecc_point product{};
        if (ecc_unknown_point_mul(k, &table[1], a, b, p, &product) < 0) set_infinity(product);
        *out = product;
        return 0;
    }
    run_over_best_field(*p, CombMultiple{*k, m, table, *a, *out});
    return 0;
}

int32_t ecc_fix_point_mul(const mint *k, const ecc_point *G, const mint *a, const mint *b, const mint *p,
                          ecc_point *out)
{
    return ecc_fix_point_mul_1(k, G, a, b, p, out, global_curve.table.entry);
}

// The table behind fixed-base multiplication.
#include "ecc/table.h"

#include <cstring>

#include "ecc/curve.h"
#include "mint/value.h"

namespace {

constexpr uint32_t kWordShift = 32;      // doublings from one base point to the next
constexpr uint32_t kHalfWordShift = 16;  // doublings from the first half of the table to the second

constexpr ecc_point kZeroPoint{};
constexpr ecc_point kInfinitePoint{1, {}, {}};

struct Curve {
    const mint *a;
    const mint *b;
    const mint *p;
};

ecc_point doubled(const ecc_point &point, uint32_t times, const Curve &curve)
{
    ecc_point out = point;
    for (uint32_t i = 0; i < times; ++i) ecc_point_double(&out, curve.a, curve.b, curve.p, &out);
    return out;
}

// From base points at the powers of two, entry i for every other i below size: the sum of its
// base points from the lowest bit up, which is the entry without the top bit plus the last one.
void fill_sums(ecc_point *half, uint32_t size, const Curve &curve)
{
    for (uint32_t top = 2; top < size; top *= 2)
        for (uint32_t low = 1; low < top; ++low) {
            half[top + low] = kInfinitePoint;
            ecc_point_add(&half[low], &half[top], curve.a, curve.b, curve.p, &half[top + low]);
        }
}

}  // namespace

namespace zokecc {

uint32_t comb_words(const mint &p)
{
    const int32_t len = signed_len(p);
    return len > 0 && len <= static_cast<int32_t>(kCombMaxWords) ? static_cast<uint32_t>(len) : 0;
}

}  // namespace zokecc

int32_t ecc_precomputation_point_1(const ecc_point *G, const mint *a, const mint *b, const mint *p,
                                   ecc_point *table)
{
    const uint32_t m = zokecc::comb_words(*p);
    if (m == 0) return 1;
    const Curve curve = {a, b, p};
    const uint32_t size = 1u << m;
    ecc_point *const low = table;
    ecc_point *const high = table + size;

    low[0] = *G;
    low[1] = *G;
    for (uint32_t bit = 1; bit < size / 2; bit *= 2) low[2 * bit] = doubled(low[bit], kWordShift, curve);
    for (uint32_t bit = 1; bit < size; bit *= 2) high[bit] = doubled(low[bit], kHalfWordShift, curve);
    fill_sums(low, size, curve);
    fill_sums(high, size, curve);
    high[0] = kZeroPoint;
    high[size] = kInfinitePoint;
    return 0;
}

// KEPT: one round more than the table needs: base point 2m is computed and never read. It stands
// in the curve's record like the others. Held by
// EccPrecomputationPoint.KeptLastRoundOfBasePointsIsComputed.
int32_t ecc_precomputation_point(const ecc_point *G, const mint *a, const mint *b, const mint *p)
{
    ecc_point *const table = global_curve.table.entry;
    if (ecc_precomputation_point_1(G, a, b, p, table) != 0) return 1;
    const uint32_t m = zokecc::comb_words(*p);
    for (uint32_t j = 0; j < m; ++j) {
        global_curve.base[j] = table[1u << j];
        global_curve.base[m + j] = table[(1u << m) + (1u << j)];
    }
    global_curve.base[2 * m] = doubled(global_curve.base[m], kHalfWordShift, {a, b, p});
    return 0;
}

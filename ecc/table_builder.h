// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Builds the table for fixed-base multiplication, as a template over the field.
#ifndef ZOKECC_ECC_TABLE_BUILDER_H
#define ZOKECC_ECC_TABLE_BUILDER_H

#include "ecc/affine_formulas.h"

namespace zokecc {

constexpr uint32_t kWordShift = 32;      // doublings from one base point to the next
constexpr uint32_t kHalfWordShift = 16;  // doublings from the first half of the table to the second

// The steps of building a table. Each returns false if the field refuses a number.
template <class Field>
class TableBuilder {
public:
    explicit TableBuilder(const Field &f) : f_(f) {}

    bool load(const mint &a) { return f_.load(a, a_); }

    // out = 2^times point
    bool doubled(const ecc_point &point, uint32_t times, ecc_point &out)
    {
        Affine<Field> P{};
        if (!f_.load(point, P)) return false;
        for (uint32_t i = 0; i < times; ++i) affine_add(f_, P, P, a_, P);
        out = point;
        f_.store(P, out);
        return true;
    }

    // Fills every other entry i below size from the base points at the powers of two: the sum of i's
    // base points from the lowest bit up, that is the entry without the top bit plus the top base point.
    bool fill_sums(ecc_point *half, uint32_t size)
    {
        Affine<Field> P{};
        Affine<Field> Q{};
        for (uint32_t top = 2; top < size; top *= 2)
            for (uint32_t low = 1; low < top; ++low) {
                if (!f_.load(half[low], P) || !f_.load(half[top], Q)) return false;
                affine_add(f_, P, Q, a_, P);
                half[top + low] = ecc_point{};
                f_.store(P, half[top + low]);
            }
        return true;
    }

    bool fill_table(const ecc_point &G, ecc_point *table, uint32_t size)
    {
        ecc_point *const low = table;
        ecc_point *const high = table + size;
        low[0] = G;
        low[1] = G;
        for (uint32_t bit = 1; bit < size / 2; bit *= 2)
            if (!doubled(low[bit], kWordShift, low[2 * bit])) return false;
        for (uint32_t bit = 1; bit < size; bit *= 2)
            if (!doubled(low[bit], kHalfWordShift, high[bit])) return false;
        return fill_sums(low, size) && fill_sums(high, size);
    }

private:
    const Field &f_;
    Element<Field> a_{};
};

// table = all entries of G's table that are ever read, size entries in each half.
struct TableOfMultiples {
    const ecc_point &G;
    const mint &a;
    ecc_point *table;
    uint32_t size;

    template <class Field>
    bool over(const Field &f) const
    {
        TableBuilder builder(f);
        return builder.load(a) && builder.fill_table(G, table, size);
    }
};

// out = 2^times P
struct DoubledPoint {
    const ecc_point &P;
    const mint &a;
    uint32_t times;
    ecc_point &out;

    template <class Field>
    bool over(const Field &f) const
    {
        TableBuilder builder(f);
        return builder.load(a) && builder.doubled(P, times, out);
    }
};

}  // namespace zokecc

#endif

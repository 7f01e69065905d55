// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The exact table of the base point's multiples. The default build's table has wrong entries for some curves,
// because of the borrow rule of subtraction. Everything here is public.
#include "ecc/table.h"

#include "ct/choice.h"
#include "ct/point.h"

using namespace zokecc;

namespace {

constexpr unsigned kHalfWord = 16;

template <class Field>
class ExactTable {
public:
    ExactTable(const mint &p, const mint &a, const mint &b) : curve_(p, a, b) {}

    bool fill(const ecc_point &G, ecc_point *table, uint32_t words)
    {
        AffinePoint affine;
        read(G, affine);
        if (curve_.is_on_curve(affine) == 0) return false;
        ecc_point *const high = table + (1u << words);
        Point P;
        curve_.set(affine, P);
        for (uint32_t j = 0; j < words; ++j) {
            store(P, table[1u << j]);
            curve_.double_times(kHalfWord, P);
            store(P, high[1u << j]);
            curve_.double_times(kHalfWord, P);
        }
        table[0] = table[1];
        fill_sums(table, 1u << words);
        fill_sums(high, 1u << words);
        high[0] = ecc_point{};
        high[1u << words] = ecc_point{};
        high[1u << words].infinity = 1;
        return true;
    }

private:
    using AffinePoint = typename Field::Affine;
    using Point = ProjectivePoint<Field>;

    // Fills all entries below size from those at the powers of two.
    void fill_sums(ecc_point *half, uint32_t size)
    {
        AffinePoint affine;
        Point P;
        for (uint32_t top = 2; top < size; top *= 2)
            for (uint32_t low = 1; low < top; ++low) {
                load(half[low], P);
                read(half[top], affine);
                if (half[top].infinity != 1) curve_.add(P, affine, P);
                store(P, half[top + low]);
            }
    }

    void read(const ecc_point &in, AffinePoint &out) const
    {
        curve_.read(in.x, out.x);
        curve_.read(in.y, out.y);
    }

    void load(const ecc_point &in, Point &out) const
    {
        AffinePoint affine;
        read(in, affine);
        curve_.set(affine, out);
        if (in.infinity == 1) curve_.set_infinity(out);
    }

    // The words above those in use are zero: secret lookups read all of them.
    void store(const Point &in, ecc_point &out) const
    {
        AffinePoint affine;
        out = ecc_point{};
        if (curve_.to_affine(in, affine) == 0) {
            out.infinity = 1;
            return;
        }
        curve_.f.write_words(affine.x, out.x.words);
        curve_.f.write_words(affine.y, out.y.words);
        out.x.len = trimmed_count(out.x.words, curve_.f.words());
        out.y.len = trimmed_count(out.y.words, curve_.f.words());
    }

    SecretCurve<Field> curve_;
};

}  // namespace

bool fill_exact_table(const ecc_point *G, const mint *a, const mint *b, const mint *p, ecc_point *table)
{
    const uint32_t words = comb_words(*p);
    if (words == 0 || !has_secret_field(*p)) return false;
    if (mint_compare(a, p) >= 0 || mint_compare(b, p) >= 0) return false;
    if (mint_compare(&G->x, p) >= 0 || mint_compare(&G->y, p) >= 0) return false;
    return on_secret_field(*p, [&](auto *field) {
        return ExactTable<std::remove_pointer_t<decltype(field)>>(*p, *a, *b).fill(*G, table, words);
    });
}

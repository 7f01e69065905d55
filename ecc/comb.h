// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The comb over the precomputed table, as a template over the field.
//
// Each 32-bit word of the scalar is split into two halves of 16 bits. Round i takes bit 15 - i of
// every low half at once (first half of the table) and bit 31 - i of every high half (second
// half), so a scalar of up to p's words costs at most 16 doublings and 32 mixed additions.
#ifndef ZOKECC_ECC_COMB_H
#define ZOKECC_ECC_COMB_H

#include "base/burn.h"
#include "base/wipe.h"
#include "ecc/jacobian_formulas.h"
#include "mint/value.h"

namespace zokecc {

constexpr uint32_t kCombRounds = 16;

// Collects bit number bit of words 0 to m - 1: bit j of the result comes from word j.
inline uint32_t comb_column(const mint &k, uint32_t m, uint32_t bit)
{
    const uint32_t count = used_words(k) < m ? used_words(k) : m;
    uint32_t out = 0;
    for (uint32_t j = 0; j < count; ++j) out |= (k.words[j] >> bit & 1) << j;
    return out;
}

// out = k times the point the table was built for; k has at most m words.
struct CombMultiple {
    const mint &k;
    uint32_t m;
    const ecc_point *table;
    const mint &a;
    ecc_point &out;

    // False, with nothing written, if the field refuses a number of the table or a.
    template <class Field>
    ZOKECC_OWN_FRAME bool over(const Field &f) const;
};

template <class Field>
bool CombMultiple::over(const Field &f) const
{
    const StackBurn<Field::kStackOfProduct> burn;
    typename Field::Constant constant{};
    if (!f.load(a, constant)) return false;
    const Element<Field> &a_element = f.number(constant);
    Wiping<Jacobian<Field>> sum;
    Wiping<Affine<Field>> entry;  // a table entry, finally the product
    set_jacobian_infinity(f, *sum);
    for (uint32_t i = 0; i < kCombRounds; ++i) {
        if (!f.is_zero(sum->Z)) jacobian_double(f, *sum, a_element, *sum);  // skipped while sum is infinity
        const uint32_t low = comb_column(k, m, 15 - i);
        const uint32_t high = comb_column(k, m, 31 - i);
        if (low != 0) {
            if (!f.load(table[low], *entry)) return false;
            jacobian_add_affine(f, *sum, *entry, a_element, *sum);
        }
        if (high != 0) {
            if (!f.load(table[(1u << m) + high], *entry)) return false;
            jacobian_add_affine(f, *sum, *entry, a_element, *sum);
        }
    }
    jacobian_to_affine(f, *sum, *entry);
    f.store(*entry, out);
    return true;
}

}  // namespace zokecc

#endif

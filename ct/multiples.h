// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Scalar multiplication with a secret scalar, as templates over the field.
#ifndef ZOKECC_CT_MULTIPLES_H
#define ZOKECC_CT_MULTIPLES_H

#include <zokecc/ecc.h>

#include "base/wipe.h"
#include "ct/point.h"
#include "ecc/table.h"

namespace zokecc {

constexpr unsigned kCombBits = 16;      // rounds of the comb: bits of half a word
constexpr unsigned kCombDigitBits = 4;  // of a column, as many as are looked up at a time
constexpr unsigned kWindowBits = 5;
constexpr unsigned kWindowPoints = 1u << (kWindowBits - 1);

// Bit number bit of words 0..count-1, side by side.
inline uint32_t secret_column(const uint32_t *k, unsigned count, unsigned bit)
{
    uint32_t out = 0;
    for (unsigned j = 0; j < count; ++j) out |= (k[j] >> bit & 1) << j;
    return out;
}

// Reads all of entries 1 to count - 1, stride records apart, whatever the index: x and y of that one, or
// zero words for an index of 0. A record has zero words behind those in use.
template <class Field>
ZOKECC_OWN_FRAME void look_up(const Field &f, const ecc_point *entries, unsigned stride, unsigned count,
                              uint32_t index, AffinePoint<Field> &out)
{
    uint32_t x[kMaxSecretWords + 1] = {};
    uint32_t y[kMaxSecretWords + 1] = {};
    for (unsigned i = 1; i < count; ++i) {
        const ecc_point &entry = entries[i * stride];
        const uint32_t mask = static_cast<uint32_t>(mask_of_zero(i ^ index));
        for (unsigned j = 0; j < f.words(); ++j) {
            x[j] |= entry.x.words[j] & mask;
            y[j] |= entry.y.words[j] & mask;
        }
    }
    f.read_words(x, out.x);
    f.read_words(y, out.y);
}

// out = k G for the G that the table was made for, by the comb of ecc/comb.h: each half of it is looked up
// four columns at a time, for reading all of it would cost more than the sum that this saves. k[words] has
// as many words as the table is made for. The factor, not zero, blinds the coordinates.
template <class Field>
ZOKECC_OWN_FRAME void base_multiple(const SecretCurve<Field> &curve, const uint32_t *k, unsigned words,
                                    const ecc_point *table, const typename Field::Element &factor,
                                    ProjectivePoint<Field> &out)
{
    Wiping<AffinePoint<Field>> entry;
    Wiping<ProjectivePoint<Field>> sum;
    curve.set_infinity(out);
    out.Y = factor;
    for (unsigned round = 0; round < kCombBits; ++round) {
        if (round > 0) curve.add(out, out, out);
        for (unsigned half = 0; half < 2; ++half) {
            const uint32_t column = secret_column(k, words, kCombBits * (half + 1) - 1 - round);
            const ecc_point *const entries = table + (half << words);
            for (unsigned low = 0; low < words; low += kCombDigitBits) {
                const unsigned count = 1u << (words - low < kCombDigitBits ? words - low : kCombDigitBits);
                const uint32_t digit = column >> low & (count - 1);
                look_up(curve.f, entries, 1u << low, count, digit, *entry);
                curve.add(out, entry->x, entry->y, nullptr, *sum);
                curve.move(~mask_of_zero(digit), *sum, out);
            }
        }
    }
}

// Six bits of k[words] from position 5 window - 1 on, as a digit of -16 to 16: its size, and all ones if
// it is negative.
inline uint32_t window_digit(const uint32_t *k, unsigned words, unsigned window, Mask &negative)
{
    const unsigned first = kWindowBits * window;  // and the bit below it
    uint64_t bits = 0;
    const unsigned word = first == 0 ? 0 : (first - 1) / 32;
    if (word < words) bits = k[word];
    if (word + 1 < words) bits |= uint64_t{k[word + 1]} << 32;
    const uint32_t six = static_cast<uint32_t>(first == 0 ? bits << 1 : bits >> (first - 1) % 32) & 63;
    const uint32_t sign = six >> kWindowBits;
    negative = mask_of_bit(sign);
    const uint32_t flip = 0 - opaque(sign);
    return (((six ^ flip) & 63) + 1) >> 1;
}

// The point of the table with that index, 1 to 16, or infinity for 0.
template <class Field>
ZOKECC_OWN_FRAME void look_up(const SecretCurve<Field> &curve, const ProjectivePoint<Field> *table,
                              uint32_t index, ProjectivePoint<Field> &out)
{
    curve.set_infinity(out);
    for (unsigned i = 0; i < kWindowPoints; ++i) curve.move(mask_of_zero((i + 1) ^ index), table[i], out);
}

// out = k P in signed windows of five bits; k[words] is below 2^bits.
template <class Field>
ZOKECC_OWN_FRAME void any_multiple(const SecretCurve<Field> &curve, const uint32_t *k, unsigned words,
                                   unsigned bits, const AffinePoint<Field> &P,
                                   const typename Field::Element &factor, ProjectivePoint<Field> &out)
{
    Wiping<ProjectivePoint<Field>[kWindowPoints]> multiples;
    ProjectivePoint<Field> *const table = *multiples;
    curve.set(P, table[0]);
    curve.scale(factor, table[0]);
    for (unsigned i = 1; i < kWindowPoints; ++i) curve.add(table[i - 1], P.x, P.y, nullptr, table[i]);
    Wiping<ProjectivePoint<Field>> digit;
    for (unsigned window = bits / kWindowBits + 1; window-- > 0;) {
        Mask negative = 0;
        const uint32_t index = window_digit(k, words, window, negative);
        look_up(curve, table, index, *digit);
        curve.negate(negative, digit->Y);
        if (window == bits / kWindowBits) {
            out = *digit;
            continue;
        }
        curve.double_times(kWindowBits, out);
        curve.add(out, *digit, out);
    }
}

}  // namespace zokecc

#endif

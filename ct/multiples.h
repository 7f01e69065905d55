// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Scalar multiplication with a secret scalar, as templates over the field.
#ifndef ZOKECC_CT_MULTIPLES_H
#define ZOKECC_CT_MULTIPLES_H

#include <zokecc/ecc.h>

#include "base/wipe.h"
#include "ct/look_up.h"
#include "ct/running_sum.h"
#include "ecc/table.h"

namespace zokecc {

constexpr unsigned kCombBits = 16;      // rounds of the comb: bits of half a word
constexpr unsigned kCombDigitBits = 4;  // bits of a column per lookup
constexpr unsigned kWindowBits = 4;
constexpr unsigned kWindowPoints = 1u << (kWindowBits - 1);

// Collects bit number bit of words 0 to count - 1: bit j of the result comes from word j.
inline uint32_t secret_column(const uint32_t *k, unsigned count, unsigned bit)
{
    uint32_t out = 0;
    for (unsigned j = 0; j < count; ++j) out |= (k[j] >> bit & 1) << j;
    return out;
}

// out = entry index of entries 1 to count, stride records apart, or (0, 0) for index 0. In a record the words
// above those in use must be zero.
template <class Field>
void look_up(const Field &f, const ecc_point &first, unsigned stride, unsigned count, uint32_t index,
             typename Field::Affine &out)
{
    constexpr size_t kPointWords = sizeof(ecc_point) / 4;
    uint32_t words[kCombMaxWords + 1] = {};
    look_up(first.x.words, kPointWords * stride, count, index, kCombMaxWords, words);
    f.read_words(words, out.x);
    look_up(first.y.words, kPointWords * stride, count, index, kCombMaxWords, words);
    f.read_words(words, out.y);
}

// out = k G for the table's base point G, by the comb of ecc/comb.h. Each half of the table is looked up four
// columns at a time, because scanning all of it would cost more than the additions saved. k[words] has as
// many words as the table is built for and does not exceed the order of G. The nonzero factor blinds the
// coordinates.
//
// No addition ever meets two equal points. Before an entry D G is added the sum is A G, and A is even in each
// half word in which D has a bit; so A = D only if both are zero. A + D does not exceed k, because each of
// its half words is made of leading bits of that half word of k. So A and D are both below the order.
template <class Field>
ZOKECC_OWN_FRAME void base_multiple(const SecretCurve<Field> &curve, const uint32_t *k, unsigned words,
                                    const ecc_point *table, const typename Field::Element &factor,
                                    ProjectivePoint<Field> &out)
{
    Wiping<typename Field::Affine> entry;
    RunningSum<Field> sum(curve, factor);
    for (unsigned round = 0; round < kCombBits; ++round) {
        if (round > 0) sum.double_times(1);
        for (unsigned half = 0; half < 2; ++half) {
            const uint32_t column = secret_column(k, words, kCombBits * (half + 1) - 1 - round);
            const ecc_point *const entries = table + (half << words);
            for (unsigned low = 0; low < words; low += kCombDigitBits) {
                const unsigned bits = words - low < kCombDigitBits ? words - low : kCombDigitBits;
                const uint32_t digit = column >> low & ((1u << bits) - 1);
                look_up(curve.f, entries[1u << low], 1u << low, (1u << bits) - 1, digit, *entry);
                sum.add(~mask_of_zero(digit), *entry);
            }
        }
    }
    sum.store(out);
}

// The five bits of k[words] from position 4 window - 1 up, as a digit from -8 to 8: returns its magnitude;
// negative becomes all ones if the digit is negative.
inline uint32_t window_digit(const uint32_t *k, unsigned words, unsigned window, Mask &negative)
{
    constexpr uint32_t kBits = (2u << kWindowBits) - 1;
    const unsigned first = kWindowBits * window;  // and the bit below it
    uint64_t bits = 0;
    const unsigned word = first == 0 ? 0 : (first - 1) / 32;
    if (word < words) bits = k[word];
    if (word + 1 < words) bits |= uint64_t{k[word + 1]} << 32;
    const uint32_t seen = static_cast<uint32_t>(first == 0 ? bits << 1 : bits >> (first - 1) % 32) & kBits;
    const uint32_t sign = seen >> kWindowBits;
    negative = mask_of_bit(sign);
    const uint32_t flip = 0 - opaque(sign);
    return (((seen ^ flip) & kBits) + 1) >> 1;
}

// The multiples 1 to 8 of a public point, affine.
template <class Field>
class Window {
public:
    using Element = typename Field::Element;
    using Affine = typename Field::Affine;

    // False if one of them is infinity, which means that the order of P is at most 8.
    ZOKECC_OWN_FRAME bool fill(const SecretCurve<Field> &curve, const Affine &P)
    {
        const Field &f = curve.f;
        Element Z[kWindowPoints];
        Element products[kWindowPoints];  // running products of Z
        typename Field::Jacobian sum;
        sum.X = P.x;
        sum.Y = P.y;
        f.set_one(sum.Z);
        f.set_one(products[0]);
        for (unsigned i = 0; i < kWindowPoints; ++i) {
            if (i == 1) curve.double_times(1, sum);
            if (i > 1) add_affine(f, sum, P);
            point_[i].x = sum.X;
            point_[i].y = sum.Y;
            Z[i] = sum.Z;
            if (i > 0) f.mul(products[i - 1], Z[i], products[i]);
        }
        Element inverse;  // of products[i], i going down
        if (f.invert(products[kWindowPoints - 1], inverse) == 0) return false;
        for (unsigned i = kWindowPoints; --i > 0;) {
            Element z;
            f.mul(inverse, products[i - 1], z);  // 1 / Z
            f.mul(inverse, Z[i], inverse);
            make_affine(f, z, point_[i]);
        }
        return true;
    }

    // out = index P for an index of 1 to 8, or (0, 0) for 0.
    void look_up(const Field &f, uint32_t index, Affine &out) const
    {
        constexpr size_t kStride = sizeof(Affine) / sizeof(typename Field::Limb);
        zokecc::look_up(point_[0].x.limb, kStride, kWindowPoints, index, f.limbs(), out.x.limb);
        zokecc::look_up(point_[0].y.limb, kStride, kWindowPoints, index, f.limbs(), out.y.limb);
    }

private:
    static void add_affine(const Field &f, typename Field::Jacobian &P, const Affine &Q)
    {
        Element H, r;  // NOLINT(readability-isolate-declaration): as the formulas name them
        mixed_differences(f, P, Q, H, r);
        add_mixed_differences(f, P, H, r, P);
    }

    // Makes Jacobian X and Y affine; z is 1 / Z.
    static void make_affine(const Field &f, const Element &z, Affine &point)
    {
        Element t;
        f.square(z, t);
        f.mul(point.x, t, point.x);
        f.mul(t, z, t);
        f.mul(point.y, t, point.y);
    }

    Affine point_[kWindowPoints];
};

// out = k P in signed windows of four bits; k[words] is below 2^bits, and P is public. False if the order of
// P is at most 8.
//
// Additions cost less if no point has a small order, that is one below 2^bits / 2 or below 32. Before the
// last window the sum is then either empty or A P with 16 <= A <= 2^bits / 16 + 8, and D P is added with D at
// most 8: neither A + D nor A - D is a multiple of the order. In the last window they may be.
template <class Field>
ZOKECC_OWN_FRAME bool any_multiple(const SecretCurve<Field> &curve, const uint32_t *k, unsigned words,
                                   unsigned bits, const typename Field::Affine &P, bool has_small_orders,
                                   const typename Field::Element &factor, ProjectivePoint<Field> &out)
{
    Window<Field> multiples;
    if (!multiples.fill(curve, P)) return false;
    Wiping<typename Field::Affine> digit;
    Wiping<ProjectivePoint<Field>> next;
    RunningSum<Field> sum(curve, factor);
    sum.store(out);
    for (unsigned window = bits / kWindowBits + 1; window-- > 0;) {
        Mask negative = 0;
        const uint32_t index = window_digit(k, words, window, negative);
        multiples.look_up(curve.f, index, *digit);
        curve.negate(negative, digit->y);
        if (!has_small_orders) {
            sum.double_times(kWindowBits);
            if (window > 0) {
                sum.add(~mask_of_zero(index), *digit);
                continue;
            }
            sum.store(out);
        } else {
            curve.double_times(kWindowBits, out);
        }
        curve.add(out, *digit, *next);
        curve.move(~mask_of_zero(index), *next, out);
    }
    return true;
}

}  // namespace zokecc

#endif

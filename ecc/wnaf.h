// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Scalar multiplication by wNAF, as templates over the field.
#ifndef ZOKECC_ECC_WNAF_H
#define ZOKECC_ECC_WNAF_H

#include "base/burn.h"
#include "base/wipe.h"
#include "ecc/jacobian_formulas.h"

namespace zokecc {

// A scalar has at most 608 bits, so the width is at most 4 and there are at most eight odd multiples.
constexpr uint32_t kMaxWindowWidth = 4;
constexpr uint32_t kMaxOddMultiples = 1u << (kMaxWindowWidth - 1);

// The digits of a scalar, least significant first.
struct WindowDigits {
    const int8_t *digit;
    int32_t count;
    uint32_t width;
};

// False, with nothing written, if the field refuses P.
template <class Field>
ZOKECC_OWN_FRAME bool load_jacobian(const Field &f, const ecc_point &P, Jacobian<Field> &out)
{
    Affine<Field> point{};
    if (!f.load(P, point)) return false;
    affine_to_jacobian(f, point, out);
    return true;
}

template <class Field>
ZOKECC_OWN_FRAME void store_jacobian(const Field &f, const Jacobian<Field> &P, ecc_point &out)
{
    const StackBurn<Field::kStackOfProduct> burn;
    Wiping<Affine<Field>> point;
    jacobian_to_affine(f, P, *point);
    f.store(*point, out);
}

// out[i] = (2 i + 1) P, with P in out[0]; twice becomes 2 P.
template <class Field>
void odd_multiples(const Field &f, const Element<Field> &a, uint32_t count, Jacobian<Field> &twice,
                   Jacobian<Field> *out)
{
    jacobian_double(f, out[0], a, twice);
    for (uint32_t i = 1; i < count; ++i) jacobian_add(f, out[i - 1], twice, a, out[i]);
}

// R = sum of digits[j] 2^j P, from the highest digit down. R is held negated while that saves
// negations: adding a negative digit to R is adding a positive digit to -R.
template <class Field>
ZOKECC_OWN_FRAME void evaluate(const Field &f, const Element<Field> &a, const WindowDigits &digits,
                               const Jacobian<Field> *odd, Jacobian<Field> &R)
{
    bool at_infinity = true;
    bool inverted = false;
    for (int32_t j = digits.count - 1; j >= 0; --j) {
        if (!at_infinity) jacobian_double(f, R, a, R);
        const int32_t digit = digits.digit[j];
        if (digit == 0) continue;
        if ((digit < 0) != inverted) {
            if (!at_infinity) jacobian_negate(f, R);
            inverted = !inverted;
        }
        const Jacobian<Field> &multiple = odd[(digit < 0 ? -digit : digit) >> 1];
        if (at_infinity)
            copy_jacobian(f, multiple, R);
        else
            jacobian_add(f, multiple, R, a, R);
        at_infinity = false;
    }
    if (at_infinity)
        f.set_zero(R.Z);
    else if (inverted)
        jacobian_negate(f, R);
}

// R = k P for the k of the digits; odd has room for the odd multiples of that width. False, with R not
// written, if the field refuses P or a.
template <class Field>
ZOKECC_ONE_COPY bool window_multiple_in(const Field &f, const WindowDigits &digits, const ecc_point &P_record,
                                        const mint &a_record, Jacobian<Field> *odd, Jacobian<Field> &R)
{
    typename Field::Constant constant{};
    if (!load_jacobian(f, P_record, odd[0]) || !f.load(a_record, constant)) return false;
    const Element<Field> &a = f.number(constant);
    odd_multiples(f, a, 1u << (digits.width - 1), R, odd);
    evaluate(f, a, digits, odd, R);
    return true;
}

// Scalars below 300 bits, as all curves of the field have, need four odd multiples.
template <class Field>
ZOKECC_OWN_FRAME bool narrow_window_multiple(const Field &f, const WindowDigits &digits, const ecc_point &P,
                                             const mint &a, Jacobian<Field> &R)
{
    const StackBurn<Field::kStackOfSums> burn;
    Wiping<Jacobian<Field>[kMaxOddMultiples / 2]> odd;
    return window_multiple_in(f, digits, P, a, *odd, R);
}

template <class Field>
ZOKECC_OWN_FRAME bool wide_window_multiple(const Field &f, const WindowDigits &digits, const ecc_point &P,
                                           const mint &a, Jacobian<Field> &R)
{
    const StackBurn<Field::kStackOfSums> burn;
    Wiping<Jacobian<Field>[kMaxOddMultiples]> odd;
    return window_multiple_in(f, digits, P, a, *odd, R);
}

// out = k P for the k of the digits.
struct WindowMultiple {
    const WindowDigits &digits;
    const ecc_point &P;
    const mint &a;
    ecc_point &out;

    // False, with nothing written, if the field refuses P or a.
    template <class Field>
    ZOKECC_OWN_FRAME bool over(const Field &f) const;
};

// The odd multiples are off the stack before the inversion needs its space.
template <class Field>
bool WindowMultiple::over(const Field &f) const
{
    Wiping<Jacobian<Field>> R;
    const bool taken = digits.width < kMaxWindowWidth ? narrow_window_multiple(f, digits, P, a, *R)
                                                      : wide_window_multiple(f, digits, P, a, *R);
    if (taken) store_jacobian(f, *R, out);
    return taken;
}

}  // namespace zokecc

#endif

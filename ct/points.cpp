// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "ct/points.h"

#include "base/burn.h"
#include "ct/choice.h"
#include "ct/multiples.h"
#include "ct/scalars.h"
#include "mint/plain.h"

namespace zokecc {

namespace {

template <class Field>
using CurveOf = SecretCurve<std::remove_const_t<Field>>;

// Reads a record in which the words above len may hold anything.
template <class Curve>
void read_point(const Curve &curve, const ecc_point &in, typename Curve::Affine &out)
{
    curve.read(in.x, out.x);
    curve.read(in.y, out.y);
}

template <class Field>
void write_wide(const Field &f, const typename Field::Element &in, mint &out)
{
    f.write_words(in, out.words);
    out.len = f.words();
}

// A random factor to blind the product's coordinates, one word shorter than p.
template <class Field>
void draw_factor(const Field &f, typename Field::Element &out)
{
    Wiping<uint32_t[kMaxSecretWords + 1]> words;
    draw_blinding(*words, f.words() - 1);
    f.read_words(*words, out);
}

// True if there may be points whose order is not n or a multiple of it. h is p div n, so a curve of 2 n
// points may have h = 1, but Window::fill refuses its point of order 2.
bool has_cofactor(const CurveView &view) { return !is_zero(view.h) && !is_one(view.h); }

// No curve over p has more than p + 1 + 2 sqrt(p) points.
bool fits_table(const mint &n, const mint &p)
{
    return n.len <= p.len || (n.len == p.len + 1 && n.words[p.len] == 1);
}

// If k has a bit above the given words, replaces it by n - k, which has none, and returns all ones.
Mask shorten(const mint &n, unsigned words, uint32_t *k)
{
    Wiping<uint32_t[kMaxSecretWords]> opposite;
    uint32_t ones;
    StepsOn<uint32_t>::sub_limbs(n.words, k, n.len, *opposite, ones);
    const Mask is_long = ~mask_of_zero(k[words]);
    for (unsigned i = 0; i < n.len; ++i) k[i] = select(is_long, (*opposite)[i], k[i]);
    return is_long;
}

// Writes a product in affine coordinates. False if it has none or is not on the curve.
template <class Curve>
bool finish(const Curve &curve, const typename Curve::Point &point, ecc_point &out)
{
    Wiping<typename Curve::Affine> affine;
    const Mask is_good = curve.to_affine(point, *affine) & curve.is_on_curve(*affine);
    out.infinity = 0;
    write_wide(curve.f, affine->x, out.x);
    write_wide(curve.f, affine->y, out.y);
    return declassified(is_good);
}

template <class Field>
ZOKECC_OWN_FRAME bool multiply_base_over(const CurveView &view, const mint &k, ecc_point &out)
{
    const StackBurn<kStackOfSecretProduct> burn;
    const SecretCurve<Field> curve(view.p, view.a, view.b);
    typename Field::Element factor;
    Wiping<ProjectivePoint<Field>> product;
    Wiping<uint32_t[kMaxSecretWords]> scalar;
    std::memcpy(*scalar, k.words, 4 * k.len);
    draw_factor(curve.f, factor);
    const bool is_wide = view.n.len > view.p.len;
    const Mask negative = is_wide ? shorten(view.n, view.p.len, *scalar) : 0;
    base_multiple(curve, *scalar, view.p.len, view.table, factor, *product);
    if (is_wide) curve.negate(negative, product->Y);
    return finish(curve, *product, out);
}

template <class Field>
ZOKECC_OWN_FRAME bool multiply_over(const CurveView &view, const mint &k, uint32_t bits, const ecc_point &P,
                                    const ecc_point *addend, ecc_point &out)
{
    const StackBurn<kStackOfSecretProduct> burn;
    const SecretCurve<Field> curve(view.p, view.a, view.b);
    typename Field::Element factor;
    Wiping<ProjectivePoint<Field>> product;
    typename Field::Affine point;
    draw_factor(curve.f, factor);
    read_point(curve, P, point);
    if (!any_multiple(curve, k.words, k.len, bits, point, has_cofactor(view), factor, *product)) return false;
    if (addend != nullptr) {
        read_point(curve, *addend, point);
        curve.add(*product, point, *product);
    }
    return finish(curve, *product, out);
}

}  // namespace

bool has_secret_points(const CurveView &curve)
{
    return has_secret_field(curve.p) && has_secret_field(curve.n) && fits_table(curve.n, curve.p) &&
           comb_words(curve.p) != 0 && mint_compare(&curve.a, &curve.p) < 0 &&
           mint_compare(&curve.b, &curve.p) < 0;
}

bool is_valid_point(const CurveView &view, const ecc_point &P)
{
    if (P.infinity == 1 || mint_compare(&P.x, &view.p) >= 0 || mint_compare(&P.y, &view.p) >= 0) return false;
    return on_secret_field(view.p, [&](auto *field) {
        const SecretCurve<std::remove_pointer_t<decltype(field)>> curve(view.p, view.a, view.b);
        typename decltype(curve)::Affine point;
        read_point(curve, P, point);
        return curve.is_on_curve(point) != 0;
    });
}

bool multiply_base_in_secret(const CurveView &view, const mint &k, ecc_point &out)
{
    return on_secret_field(view.p, [&](auto *field) {
        return multiply_base_over<std::remove_pointer_t<decltype(field)>>(view, k, out);
    });
}

bool multiply_in_secret(const CurveView &view, const mint &k, uint32_t bits, const ecc_point &P,
                        const ecc_point *addend, ecc_point &out)
{
    return on_secret_field(view.p, [&](auto *field) {
        return multiply_over<std::remove_pointer_t<decltype(field)>>(view, k, bits, P, addend, out);
    });
}

void publish_point(const ecc_point &wide, ecc_point &out)
{
    out = wide;
    declassify(out.x.words, 4 * out.x.len);
    declassify(out.y.words, 4 * out.y.len);
    out.x.len = trimmed_words(out.x);
    out.y.len = trimmed_words(out.y);
}

void write_wide_point(const ecc_point &wide, uint32_t len, PointBytes &out)
{
    out.len = len;
    write_secret(wide.x, len, out.xy);
    write_secret(wide.y, len, out.xy + len);
}

}  // namespace zokecc

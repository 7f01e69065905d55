// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "tests/support/tiny_curve.h"

#include "tests/support/model_curve.h"

namespace zokecc_test {

TinyCurve::TinyCurve(uint32_t p_, uint32_t a_, uint32_t b_) : p(p_), a(a_), b(b_), inverse_(p_, 1) {
    for (uint32_t x = 2; x < p; ++x) inverse_[x] = mod_product(p - p / x, inverse_[p % x]);
    points_.push_back(TinyPoint{});
    for (uint32_t x = 0; x < p; ++x) {
        uint32_t right = (mod_product(mod_product(x, x), x) + mod_product(a, x) + b) % p;
        for (uint32_t y = 0; y < p; ++y)
            if (mod_product(y, y) == right) points_.push_back({false, x, y});
    }
}

uint32_t TinyCurve::order_of(const TinyPoint &P) const {
    uint32_t order = 1;
    for (TinyPoint sum = P; !sum.infinite; sum = add(sum, P)) ++order;
    return order;
}

TinyPoint TinyCurve::negate(const TinyPoint &P) const {
    return P.infinite ? P : TinyPoint{false, P.x, (p - P.y) % p};
}

// The third point on the line through P and Q, reflected.
TinyPoint TinyCurve::along(uint32_t slope, const TinyPoint &P, const TinyPoint &Q) const {
    uint32_t x3 = (mod_product(slope, slope) + 2 * p - P.x - Q.x) % p;
    uint32_t y3 = (mod_product(slope, (P.x + p - x3) % p) + p - P.y) % p;
    return {false, x3, y3};
}

TinyPoint TinyCurve::add(const TinyPoint &P, const TinyPoint &Q) const {
    if (P.infinite) return Q;
    if (Q.infinite) return P;
    if (Q == negate(P)) return TinyPoint{};
    if (P == Q) {
        uint32_t top = (3 * mod_product(P.x, P.x) + a) % p;
        return along(mod_product(top, inverse_[2 * P.y % p]), P, Q);
    }
    return along(mod_product((Q.y + p - P.y) % p, inverse_[(Q.x + p - P.x) % p]), P, Q);
}

TinyPoint TinyCurve::library_affine_add(const TinyPoint &P, const TinyPoint &Q) const {
    if (P.infinite) return Q;
    if (Q.infinite) return P;
    TinyPoint sum = P.x == Q.x && P.y != Q.y ? along(0, P, Q) : add(P, Q);
    return sum.x == 0 && sum.y == 0 ? TinyPoint{} : sum;
}

TinyPoint TinyCurve::library_jacobian_add(const TinyPoint &P, const TinyPoint &Q) const {
    if (P.infinite) return Q;
    return P == Q ? TinyPoint{} : add(P, Q);
}

TinyPoint TinyCurve::library_window(const mint &k, const TinyPoint &P) const {
    ModelDigits digits = model_digits(k);
    std::vector<TinyPoint> odd{P};
    TinyPoint doubled = add(P, P);
    while (odd.size() < 1u << (digits.width - 1)) odd.push_back(library_jacobian_add(odd.back(), doubled));
    TinyPoint sum;
    for (size_t i = digits.digit.size(); i-- > 0;) {
        sum = add(sum, sum);
        int digit = digits.digit[i];
        if (digit > 0) sum = library_jacobian_add(odd[static_cast<size_t>(digit) >> 1], sum);
        if (digit < 0) sum = library_jacobian_add(negate(odd[static_cast<size_t>(-digit) >> 1]), sum);
    }
    return sum;
}

TinyPoint TinyCurve::library_comb(uint32_t k, const TinyPoint &G) const {
    TinyPoint upper = G;
    for (int i = 0; i < 16; ++i) upper = library_affine_add(upper, upper);
    TinyPoint sum;
    for (int i = 15; i >= 0; --i) {
        sum = add(sum, sum);
        if ((k >> i & 1u) != 0) sum = add(sum, G);
        if ((k >> (i + 16) & 1u) != 0) sum = add(sum, upper);
    }
    return sum;
}

void PrintTo(const TinyPoint &P, std::ostream *out) {
    if (P.infinite)
        *out << "infinity";
    else
        *out << "(" << P.x << ", " << P.y << ")";
}

mint tiny_number(uint32_t value) {
    mint out{};
    out.words[0] = value;
    out.len = value == 0 ? 0 : 1;
    return out;
}

ecc_point tiny_affine(const TinyPoint &P) {
    return {P.infinite ? 1u : 0u, tiny_number(P.x), tiny_number(P.y)};
}

ecc_jac_point tiny_jacobian(const TinyCurve &curve, const TinyPoint &P, uint32_t z) {
    if (P.infinite) return {tiny_number(1), tiny_number(1), tiny_number(0)};
    uint32_t square = z * z % curve.p;
    uint32_t cube = square * z % curve.p;
    return {tiny_number(P.x * square % curve.p), tiny_number(P.y * cube % curve.p), tiny_number(z)};
}

TinyPoint tiny_point(const ecc_point &P) {
    if (P.infinity == 1) return TinyPoint{};
    return {false, P.x.len == 0 ? 0 : P.x.words[0], P.y.len == 0 ? 0 : P.y.words[0]};
}

}  // namespace zokecc_test

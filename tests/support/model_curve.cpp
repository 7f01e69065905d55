// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "tests/support/model_curve.h"

#include "tests/support/give_up.h"

namespace zokecc_test {

namespace {

const mint kZero{};

mint one() {
    mint out{};
    out.words[0] = 1;
    out.len = 1;
    return out;
}

ecc_point infinity() { return {1, kZero, kZero}; }

}  // namespace

bool model_is_zero(const mint &value) { return value.len == 0 || (value.len == 1 && value.words[0] == 0); }
bool model_is_one(const mint &value) { return value.len == 1 && value.words[0] == 1; }

mint ModelCurve::sum(mint x, mint y) const {
    mint out{};
    mint_mod_add(&x, &y, &p, &out);
    return out;
}
mint ModelCurve::difference(const mint &x, const mint &y) const {
    mint out{};
    mint_mod_sub(&x, &y, &p, &out);
    return out;
}
mint ModelCurve::product(const mint &x, const mint &y) const {
    mint out{};
    mint_mod_mul(&x, &y, &p, &out);
    return out;
}
mint ModelCurve::twice(const mint &x) const {
    mint out{};
    mint_mod_left_move_1(&out, &x, &p);
    return out;
}
mint ModelCurve::shifted(const mint &x, int32_t bits) const {
    mint out{};
    mint_mod_left_move_n(&out, &x, &p, bits);
    return out;
}
mint ModelCurve::inverse(const mint &x) const {
    mint out{};
    mint_EEA_algo(&x, &p, &out);
    return out;
}
mint ModelCurve::three_x_squared(const mint &x) const {
    mint s = product(x, x);
    return sum(s, twice(s));
}

ecc_jac_point ModelCurve::to_jacobian(const ecc_point &P) const {
    if (P.infinity == 1) return {one(), one(), kZero};
    return {P.x, P.y, one()};
}

ecc_point ModelCurve::to_affine(const ecc_jac_point &P) const {
    if (model_is_zero(P.Z)) return infinity();
    mint i = inverse(P.Z);
    mint squared = product(i, i);
    mint cubed = product(i, squared);
    return {0, product(P.X, squared), product(P.Y, cubed)};
}

bool ModelCurve::holds(const ecc_point &P) const {
    mint left = product(P.y, P.y);
    mint right = sum(sum(product(product(P.x, P.x), P.x), product(a, P.x)), b);
    return mint_compare(&left, &right) == 0;
}

ecc_point ModelCurve::tangent(const ecc_point &P) const {
    mint s = sum(three_x_squared(P.x), a);
    mint slope = product(inverse(twice(P.y)), s);
    mint x3 = difference(difference(product(slope, slope), P.x), P.x);
    return {0, x3, difference(product(slope, difference(P.x, x3)), P.y)};
}

ecc_point ModelCurve::chord(const ecc_point &P, const ecc_point &Q) const {
    mint v = difference(Q.y, P.y);
    mint slope = product(v, inverse(difference(Q.x, P.x)));
    mint x3 = difference(difference(product(slope, slope), P.x), Q.x);
    return {0, x3, difference(product(slope, difference(P.x, x3)), P.y)};
}

ecc_point ModelCurve::add(const ecc_point &P, const ecc_point &Q) const {
    if (P.infinity == 1) return Q.infinity == 1 ? infinity() : Q;
    if (Q.infinity == 1) return P;
    ecc_point out;
    if (mint_compare(&P.x, &Q.x) == 0 && mint_compare(&P.y, &Q.y) == 0) {
        mint minus_y = difference(p, Q.y);
        if (mint_compare(&P.y, &minus_y) == 0) return infinity();
        out = tangent(P);
    } else {
        out = chord(P, Q);
    }
    return model_is_zero(out.x) && model_is_zero(out.y) ? infinity() : out;
}

ecc_jac_point ModelCurve::twice(const ecc_jac_point &P) const {
    ecc_jac_point out{};
    mint M;
    if (model_is_one(P.Z)) {
        M = sum(three_x_squared(P.X), a);
        out.Z = twice(P.Y);
    } else {
        mint fourth = product(P.Z, P.Z);
        fourth = product(fourth, fourth);
        M = sum(product(fourth, a), three_x_squared(P.X));
        out.Z = twice(product(P.Y, P.Z));
    }
    mint w = product(P.Y, P.Y);
    mint S = shifted(product(P.X, w), 2);
    out.X = difference(product(M, M), twice(S));
    mint T = shifted(product(w, w), 3);
    out.Y = difference(product(M, difference(S, out.X)), T);
    return out;
}

ecc_jac_point ModelCurve::add(const ecc_jac_point &P, const ecc_point &Q) const {
    if (Q.infinity == 1) return P;
    if (model_is_zero(P.Z)) return {Q.x, Q.y, one()};
    mint A = product(P.Z, P.Z);
    mint B = product(A, P.Z);
    A = product(A, Q.x);
    B = product(B, Q.y);
    mint H = difference(A, P.X);
    mint r = difference(B, P.Y);
    if (model_is_zero(H)) {
        if (!model_is_zero(r)) return {one(), one(), kZero};
        return twice(ecc_jac_point{Q.x, Q.y, one()});
    }
    ecc_jac_point out{};
    out.Z = product(P.Z, H);
    mint C = product(H, H);
    mint D = product(C, H);
    C = product(C, P.X);
    out.X = difference(difference(product(r, r), twice(C)), D);
    C = product(difference(C, out.X), r);
    out.Y = difference(C, product(D, P.Y));
    return out;
}

ecc_jac_point ModelCurve::add(const ecc_jac_point &P, const ecc_jac_point &Q) const {
    if (model_is_zero(P.Z)) return Q;
    if (model_is_zero(Q.Z)) return P;
    bool one1 = model_is_one(P.Z);
    bool one2 = model_is_one(Q.Z);
    mint U0 = Q.X, S0 = Q.Y, U1 = P.X, S1 = P.Y;
    if (!one1) {
        mint t = product(P.Z, P.Z);
        U0 = product(Q.X, t);
        S0 = product(Q.Y, product(t, P.Z));
    }
    if (!one2) {
        mint t = product(Q.Z, Q.Z);
        U1 = product(P.X, t);
        S1 = product(P.Y, product(t, Q.Z));
    }
    mint W = difference(U1, U0);
    mint R = difference(S1, S0);
    ecc_jac_point out{};
    if (one1 && one2)
        out.Z = W;
    else if (one1)
        out.Z = product(Q.Z, W);
    else if (one2)
        out.Z = product(P.Z, W);
    else
        out.Z = product(product(P.Z, Q.Z), W);
    mint W2 = product(W, W);
    mint V = product(sum(U1, U0), W2);
    out.X = difference(product(R, R), V);
    mint t = product(difference(V, twice(out.X)), R);
    out.Y = difference(t, product(sum(S1, S0), product(W2, W)));
    mint modulus = p;
    if (out.Y.len != 0 && (out.Y.words[0] & 1u) != 0) mint_add(&out.Y, &modulus, &out.Y);
    mint_right_move(&out.Y, 1);
    return out;
}

ecc_jac_point ModelCurve::negate(ecc_jac_point P) const {
    if (model_is_zero(P.Z) || model_is_zero(P.Y)) return P;
    mint_sub(&p, &P.Y, &P.Y);
    return P;
}

std::vector<ecc_point> ModelCurve::base_points(const ecc_point &G) const {
    auto doubled = [this](ecc_point P, int times) {
        for (int i = 0; i < times; ++i) P = add(P, P);
        return P;
    };
    uint32_t m = p.len;
    std::vector<ecc_point> base{G};
    for (uint32_t k = 0; k + 1 < m; ++k) base.push_back(doubled(base[k], 32));
    for (uint32_t s = 0; s <= m; ++s) base.push_back(doubled(base[s], 16));
    return base;
}

// The sum over the set bits of i in ascending order is the sum without the top bit plus one more point.
std::vector<ecc_point> ModelCurve::table(const ecc_point &G) const {
    std::vector<ecc_point> base = base_points(G);
    uint32_t m = p.len;
    uint32_t half = 1u << m;
    std::vector<ecc_point> out(2 * half + 1);
    for (uint32_t first : {0u, half}) {
        out[first] = infinity();
        for (uint32_t j = 0; j < m; ++j)
            for (uint32_t i = 0; i < (1u << j); ++i)
                out[first + (1u << j) + i] = add(out[first + i], base[(first == 0 ? 0 : m) + j]);
    }
    out[0] = G;
    out[half] = ecc_point{};
    out[2 * half] = infinity();
    return out;
}

bool model_bit(const mint &k, unsigned index) {
    return index / 32 < k.len && (k.words[index / 32] >> (index % 32) & 1u) != 0;
}

unsigned model_bit_length(const mint &k) {
    unsigned length = 32 * k.len;
    while (length > 0 && !model_bit(k, length - 1)) --length;
    return length;
}

ecc_point ModelCurve::comb(const mint &k, const std::vector<ecc_point> &table) const {
    uint32_t m = p.len;
    ecc_jac_point sum_so_far{one(), one(), kZero};
    for (unsigned i = 0; i < 16; ++i) {
        sum_so_far = twice(sum_so_far);
        uint32_t low = 0, high = 0;
        for (uint32_t j = 0; j < m; ++j) {
            low |= (model_bit(k, 32 * j + 15 - i) ? 1u : 0u) << j;
            high |= (model_bit(k, 32 * j + 31 - i) ? 1u : 0u) << j;
        }
        if (low != 0) sum_so_far = add(sum_so_far, table[low]);
        if (high != 0) sum_so_far = add(sum_so_far, table[(1u << m) + high]);
    }
    return to_affine(sum_so_far);
}

unsigned model_counted_bits(const mint &k) {
    if (model_is_zero(k)) return 0;
    unsigned top_bits = 32;
    while (top_bits > 0 && (k.words[k.len - 1] >> (top_bits - 1) & 1u) == 0) --top_bits;
    return 32 * (k.len - 1) + top_bits;
}

ModelDigits model_digits(const mint &k) {
    unsigned length = model_counted_bits(k);
    ModelDigits out;
    out.width = length >= 300 ? 4 : length >= 70 ? 3 : length >= 20 ? 2 : 1;
    if (length == 0) {
        out.digit.push_back(0);
        return out;
    }
    int bit = 1 << out.width;
    int window = 0;
    for (unsigned i = 0; i <= out.width; ++i) window |= (model_bit(k, i) ? 1 : 0) << i;
    unsigned j = 0;
    while (window != 0 || j + out.width + 1 < length) {
        int digit = 0;
        if ((window & 1) != 0) {
            bool last = j + out.width + 1 >= length;
            digit = window;
            if ((window & bit) != 0) digit = last ? window & (bit - 1) : window - 2 * bit;
            window -= digit;
            bool expected = window == 0 || window == bit || window == 2 * bit;
            if (digit <= -bit || digit >= bit || !expected)
                give_up("the recoding of a scalar broke its own rules");
        }
        out.digit.push_back(digit);
        ++j;
        window = (window >> 1) + (model_bit(k, j + out.width) ? bit : 0);
    }
    return out;
}

ecc_point ModelCurve::window(const mint &k, const ecc_point &P) const {
    if (P.infinity == 1) return infinity();
    ModelDigits digits = model_digits(k);
    std::vector<ecc_jac_point> odd{to_jacobian(P)};
    ecc_jac_point doubled = twice(odd[0]);
    while (odd.size() < 1u << (digits.width - 1)) odd.push_back(add(odd.back(), doubled));

    bool started = false;
    bool inverted = false;
    ecc_jac_point sum_so_far{one(), one(), kZero};
    for (size_t i = digits.digit.size(); i-- > 0;) {
        if (started) sum_so_far = twice(sum_so_far);
        int digit = digits.digit[i];
        if (digit == 0) continue;
        if ((digit < 0) != inverted) {
            if (started) sum_so_far = negate(sum_so_far);
            inverted = !inverted;
        }
        const ecc_jac_point &odd_multiple = odd[static_cast<size_t>(digit < 0 ? -digit : digit) >> 1];
        sum_so_far = started ? add(odd_multiple, sum_so_far) : odd_multiple;
        started = true;
    }
    if (!started) return infinity();
    if (inverted) sum_so_far = negate(sum_so_far);
    return to_affine(sum_so_far);
}

}  // namespace zokecc_test

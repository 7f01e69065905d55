// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The steps with secrets in the hardened build.
#include "ecc/secret_steps.h"

#include "base/wipe.h"
#include "ct/points.h"
#include "ct/scalars.h"
#include "mint/value.h"

namespace zokecc {

namespace {

uint32_t bits_of(const mint &number)
{
    const uint32_t words = trimmed_words(number);
    return words == 0 ? 0 : 32 * (words - 1) + bit_length(number.words[words - 1]);
}

// out = k P for a k below n.
bool multiply(const CurveView &curve, const mint &k, const ecc_point &P, ecc_point &out)
{
    return multiply_in_secret(curve, k, bits_of(curve.n), P, nullptr, out);
}

// out = k P + Q, or k P if Q is null, for public k, P and Q. False if that is infinity.
bool multiply_publicly(const CurveView &curve, const mint &k, const ecc_point &P, const ecc_point *Q,
                       ecc_point &out)
{
    if (!multiply_in_secret(curve, k, bits_of(k), P, Q, out)) return false;
    publish_point(out, out);
    return true;
}

// out = h P, a plain copy if h is 1. False if that is infinity or if h is 0.
bool multiply_by_cofactor(const CurveView &curve, const ecc_point &P, ecc_point &out)
{
    if (is_one(curve.h)) {
        out = P;
        return true;
    }
    return !is_zero(curve.h) && multiply_publicly(curve, curve.h, P, nullptr, out);
}

// x = the x coordinate of k G, modulo n. k G and x become public.
bool public_x(const CurveView &curve, const mint &k, mint &x)
{
    Wiping<ecc_point> R;
    if (!public_point(curve, k, *R)) return false;
    mint_mod(&R->x, &curve.n, &x);
    return true;
}

}  // namespace

bool read_private(const CurveView &curve, const uint8_t *bytes, uint32_t count, mint &d)
{
    return has_secret_points(curve) && read_secret(curve.n, bytes, count, d);
}

bool read_temporary(const CurveView &curve, const uint8_t *bytes, uint32_t count, mint &r)
{
    return read_private(curve, bytes, count, r);
}

bool draw_private(const CurveView &curve, mint &d)
{
    return has_secret_points(curve) && draw_secret_number(&d, &curve.n, nullptr, nullptr) == 0;
}

bool draw_nonce(const CurveView &curve, const mint &d, const mint &e, mint &k)
{
    return draw_secret_number(&k, &curve.n, &d, &e) == 0;
}

void write_number(const mint &number, uint32_t len, uint8_t *out) { write_secret(number, len, out); }

uint32_t write_shortest(const mint &number, uint8_t *out)
{
    const uint32_t count = 4 * number.len;
    Wiping<uint8_t[kMintBytes]> bytes;
    write_secret(number, count, *bytes);
    const uint32_t length = secret_length(*bytes, count);
    std::memcpy(out, *bytes + (count - length), length);
    return length;
}

bool is_zero_coordinate(const mint &coordinate) { return is_zero_secret(coordinate); }

bool may_meet_secrets(const CurveView &curve, const ecc_point &P)
{
    return has_secret_points(curve) && is_valid_point(curve, P);
}

bool public_point(const CurveView &curve, const mint &d, ecc_point &Q)
{
    if (!multiply_base_in_secret(curve, d, Q)) return false;
    publish_point(Q, Q);
    return true;
}

Step shared_point(const CurveView &curve, const mint &d, const ecc_point &P, ecc_point &out)
{
    return multiply(curve, d, P, out) ? Step::done : Step::refused;
}

bool sm2_first_half(const CurveView &curve, const mint &e, const mint &k, mint &r)
{
    mint e_mod_n{};
    mint_mod(&e, &curve.n, &e_mod_n);
    if (!public_x(curve, k, r)) return false;
    add_exactly(curve.n, e_mod_n, r, r);
    return true;
}

bool sum_is_order(const CurveView &curve, const mint &r, const mint &k)
{
    return sums_to_order(curve.n, k, &r);
}

bool is_last_scalar(const CurveView &curve, const mint &d) { return sums_to_order(curve.n, d, nullptr); }

bool sm2_second_half(const CurveView &curve, const mint &d, const mint &k, const mint &r, mint &s)
{
    return sm2_secret_half(curve.n, d, k, r, s);
}

bool ecdsa_first_half(const CurveView &curve, const mint &k, mint &r) { return public_x(curve, k, r); }

bool ecdsa_second_half(const CurveView &curve, const mint &e, const mint &d, const mint &k, const mint &r,
                       mint &s)
{
    return ecdsa_secret_half(curve.n, e, d, k, r, s);
}

Step sm2_encryption_points(const CurveView &curve, uint32_t len, const mint &k, const ecc_point &Q,
                           uint8_t *x1, uint8_t *y1, PointBytes &shared)
{
    Wiping<ecc_point> point;
    if (!multiply_by_cofactor(curve, Q, *point)) return Step::refused;
    if (is_zero(point->x) || is_zero(point->y)) return Step::refused;
    if (!public_point(curve, k, *point)) return Step::failed;
    write_number(point->x, len, x1);
    write_number(point->y, len, y1);
    if (!multiply(curve, k, Q, *point)) return Step::failed;
    write_wide_point(*point, len, shared);
    return Step::done;
}

Step sm2_decryption_point(const CurveView &curve, uint32_t len, const mint &d, const ecc_point &C1,
                          PointBytes &shared)
{
    Wiping<ecc_point> point;
    if (!may_meet_secrets(curve, C1) || !multiply_by_cofactor(curve, C1, *point)) return Step::refused;
    if (!multiply(curve, d, C1, *point)) return Step::failed;
    write_wide_point(*point, len, shared);
    return Step::done;
}

void read_message(const CurveView &curve, const uint8_t *message, uint32_t count, mint &out)
{
    reduce_secret(curve.p, message, count, out);
}

void mask_by_product(const CurveView &curve, const mint &M, const mint &x, mint &c)
{
    multiply_secrets(curve.p, M, x, c);
    publish(c, c);
}

void unmask_by_product(const CurveView &curve, const mint &c, const mint &x, mint &M)
{
    mint c_mod_p{};
    mint_mod(&c, &curve.p, &c_mod_p);
    divide_by_secret(curve.p, c_mod_p, x, M);
}

// Returns t, not h t. For any curve that can be installed, h is p div n and h t is below p: (h t) T equals
// t (h T), and the latter needs only a scalar below n.
bool sm2_exchange_scalar(const CurveView &curve, const mint &d, const mint &r, const mint &x_bar, mint &ht)
{
    return exchange_scalar(curve.n, d, r, x_bar, ht);
}

Step sm2_exchange_point(const CurveView &curve, uint32_t len, const mint &ht, const ecc_point &peer_key,
                        const mint &peer_x_bar, ecc_point &point, PointBytes &U)
{
    if (!multiply_publicly(curve, peer_x_bar, point, &peer_key, point)) return Step::refused;
    if (!multiply_by_cofactor(curve, point, point)) return Step::refused;
    if (!multiply(curve, ht, point, point)) return Step::refused;
    write_wide_point(point, len, U);
    return Step::done;
}

}  // namespace zokecc

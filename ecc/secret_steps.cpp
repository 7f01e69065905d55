// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The steps with secrets in the default build, straight on the layers below.
#include "ecc/secret_steps.h"

#include "base/wipe.h"
#include "mint/plain.h"
#include "mint/value.h"

namespace zokecc {

bool read_private(const CurveView &curve, const uint8_t *bytes, uint32_t count, mint &d)
{
    octetstring_to_mint(bytes, count, &d);
    return mint_compare(&d, &curve.n) < 0;
}

bool read_temporary(const CurveView &, const uint8_t *bytes, uint32_t count, mint &r)
{
    octetstring_to_mint(bytes, count, &r);
    return true;
}

bool draw_private(const CurveView &curve, mint &d) { return gen_random_number(&d, &curve.n) == 0; }

bool draw_nonce(const CurveView &curve, const mint &, const mint &, mint &k)
{
    return gen_random_number(&k, &curve.n) == 0;
}

void write_number(const mint &number, uint32_t len, uint8_t *out)
{
    uint32_t written = 0;
    mint_to_fixedlen_os(&number, len, len, &written, out);
}

uint32_t write_shortest(const mint &number, uint8_t *out)
{
    uint32_t length = 0;
    mint_to_octetstring(&number, kMintBytes, out, &length);
    return length;
}

bool is_zero_coordinate(const mint &coordinate) { return is_zero(coordinate); }

bool may_meet_secrets(const CurveView &, const ecc_point &) { return true; }

bool public_point(const CurveView &curve, const mint &d, ecc_point &Q)
{
    multiply_base(curve, d, Q);
    return true;
}

Step shared_point(const CurveView &curve, const mint &d, const ecc_point &P, ecc_point &out)
{
    return multiply_any(curve, d, P, out) ? Step::done : Step::failed;
}

bool sm2_first_half(const CurveView &curve, const mint &e, const mint &k, mint &r)
{
    ecc_point R{};
    multiply_base(curve, k, R);
    mod_add(e, x_of(R), curve.n, r);
    return true;
}

bool sum_is_order(const CurveView &curve, const mint &r, const mint &k)
{
    Wiping<mint> sum;
    add_values(r, k, *sum);
    return mint_compare(sum.get(), &curve.n) == 0;
}

bool is_last_scalar(const CurveView &curve, const mint &d)
{
    mint one{};
    set_small(one, 1);
    return sum_is_order(curve, one, d);
}

bool sm2_second_half(const CurveView &curve, const mint &d, const mint &k, const mint &r, mint &s)
{
    Wiping<mint> inverse;
    Wiping<mint> difference;
    mint one{};
    set_small(one, 1);
    add_values(d, one, *inverse);
    mint_EEA_algo(inverse.get(), &curve.n, inverse.get());           // 1 / (1 + d)
    mint_mod_mul(&r, &d, &curve.n, difference.get());                // r d
    mint_mod_sub(&k, difference.get(), &curve.n, difference.get());  // k - r d
    mint_mod_mul(inverse.get(), difference.get(), &curve.n, &s);
    return true;
}

bool ecdsa_first_half(const CurveView &curve, const mint &k, mint &r)
{
    ecc_point R{};
    multiply_base(curve, k, R);
    mint_mod(&x_of(R), &curve.n, &r);
    return true;
}

bool ecdsa_second_half(const CurveView &curve, const mint &e, const mint &d, const mint &k, const mint &r,
                       mint &s)
{
    Wiping<mint> inverse;
    Wiping<mint> sum;
    mint_mod_mul(&d, &r, &curve.n, sum.get());
    mod_add(*sum, e, curve.n, *sum);             // e + r d
    mint_EEA_algo(&k, &curve.n, inverse.get());  // 1 / k
    mint_mod_mul(inverse.get(), sum.get(), &curve.n, &s);
    return true;
}

Step sm2_encryption_points(const CurveView &curve, uint32_t len, const mint &k, const ecc_point &Q,
                           uint8_t *x1, uint8_t *y1, PointBytes &shared)
{
    Wiping<ecc_point> point;
    multiply_base(curve, k, *point);
    write_number(point->x, len, x1);
    write_number(point->y, len, y1);
    if (!multiply_any(curve, curve.h, Q, *point)) return Step::failed;
    if (is_zero(point->x) || is_zero(point->y)) return Step::refused;  // also for h = 0
    if (!multiply_any(curve, k, Q, *point)) return Step::failed;
    write_point(*point, len, shared);
    return Step::done;
}

Step sm2_decryption_point(const CurveView &curve, uint32_t len, const mint &d, const ecc_point &C1,
                          PointBytes &shared)
{
    Wiping<ecc_point> point;
    if (!multiply_any(curve, curve.h, C1, *point)) return Step::failed;
    if (point->infinity == 1) return Step::refused;  // also for h = 0
    if (!multiply_any(curve, d, C1, *point)) return Step::failed;
    write_point(*point, len, shared);
    return Step::done;
}

void read_message(const CurveView &, const uint8_t *message, uint32_t count, mint &out)
{
    octetstring_to_mint(message, count, &out);
}

void mask_by_product(const CurveView &curve, const mint &M, const mint &x, mint &c)
{
    mint_mod_mul(&M, &x, &curve.p, &c);
}

void unmask_by_product(const CurveView &curve, const mint &c, const mint &x, mint &M)
{
    mint_EEA_algo(&x, &curve.p, &M);
    mint_mod_mul(&c, &M, &curve.p, &M);
}

// KEPT: h t is reduced modulo the field prime, not modulo the order. With a cofactor of one it is t
// either way; with any other, only this agrees with deployed peers. Held by
// Sm2KeyExChg.KeptCofactorProductIsReducedModuloP.
bool sm2_exchange_scalar(const CurveView &curve, const mint &d, const mint &r, const mint &x_bar, mint &ht)
{
    mint_mod_mul(&x_bar, &r, &curve.n, &ht);
    mod_add(d, ht, curve.n, ht);
    mint_mod_mul(&curve.h, &ht, &curve.p, &ht);
    return true;
}

Step sm2_exchange_point(const CurveView &curve, uint32_t len, const mint &ht, const ecc_point &peer_key,
                        const mint &peer_x_bar, ecc_point &point, PointBytes &U)
{
    if (!multiply_any(curve, peer_x_bar, point, point)) return Step::failed;
    ecc_point_add(&peer_key, &point, &curve.a, &curve.b, &curve.p, &point);
    if (!multiply_any(curve, ht, point, point)) return Step::failed;
    if (point.infinity == 1) return Step::refused;  // also for an infinite sum or ht = 0
    write_point(point, len, U);
    return Step::done;
}

}  // namespace zokecc

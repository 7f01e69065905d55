// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "ecc/sm2_steps.h"

#include "base/wipe.h"
#include "mint/plain.h"
#include "mint/value.h"

namespace zokecc {

void multiply_base(const CurveView &curve, const mint &k, ecc_point &out)
{
    ecc_fix_point_mul_1(&k, &curve.G, &curve.a, &curve.b, &curve.p, &out, curve.table);
}

bool multiply_any(const CurveView &curve, const mint &k, const ecc_point &P, ecc_point &out)
{
    return ecc_unknown_point_mul(&k, &P, &curve.a, &curve.b, &curve.p, &out) >= 0;
}

bool add_multiples(const CurveView &curve, const mint &u, const ecc_point &Q, const mint &v, ecc_point &out)
{
    ecc_point of_key{};
    multiply_base(curve, u, out);
    if (!multiply_any(curve, v, Q, of_key)) return false;
    ecc_point_add(&out, &of_key, &curve.a, &curve.b, &curve.p, &out);
    return true;
}

bool sm2_recomputed_r(const CurveView &curve, const mint &e, const ecc_point &Q, const mint &s, const mint &t,
                      mint &R)
{
    ecc_point sum{};
    if (!add_multiples(curve, s, Q, t, sum)) return false;
    mod_add(e, x_of(sum), curve.n, R);
    return true;
}

bool ecdsa_recomputed_r(const CurveView &curve, const mint &e, const ecc_point &Q, const mint &r,
                        const mint &s, mint &R)
{
    mint u2{};
    mint_EEA_algo(&s, &curve.n, &u2);      // w = 1 / s
    mint &u1 = R;                          // R is written last
    mint_mod_mul(&e, &u2, &curve.n, &u1);  // e w
    mint_mod_mul(&r, &u2, &curve.n, &u2);  // r w
    ecc_point sum{};
    if (!add_multiples(curve, u1, Q, u2, sum)) return false;
    mint_mod(&x_of(sum), &curve.n, &R);
    return true;
}

bool has_only_zero_multiples(const CurveView &curve, const ecc_point &Q)
{
    mint residue{};
    mint_mod(&Q.x, &curve.p, &residue);
    if (!is_zero(residue)) return false;
    if (is_zero(Q.y)) return true;
    mint_mod(&curve.a, &curve.p, &residue);
    return is_zero(residue);
}

void write_point(const ecc_point &point, uint32_t len, PointBytes &out)
{
    uint32_t written = 0;
    out.len = len;
    mint_to_fixedlen_os(&point.x, len, len, &written, out.xy);
    mint_to_fixedlen_os(&point.y, len, len, &written, out.xy + len);
}

void write_x_bar(const uint8_t *x, uint32_t len, uint32_t w, uint8_t *out)
{
    const uint32_t whole = w / 8;
    const uint32_t bits = w % 8;
    if (whole >= len) return;
    const uint32_t top = len - 1 - whole;
    out[top] = static_cast<uint8_t>((x[top] & (0xFFu >> (8 - bits))) + (1u << bits));
    std::memcpy(out + top + 1, x + top + 1, whole);
}

void read_x_bar(const uint8_t *x, uint32_t len, uint32_t w, mint &out)
{
    uint8_t bytes[kMaxCoordinateBytes] = {};
    write_x_bar(x, len, w, bytes);
    octetstring_to_mint(bytes, len, &out);
}

}  // namespace zokecc

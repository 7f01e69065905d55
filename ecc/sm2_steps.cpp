#include "ecc/sm2_steps.h"

#include "base/wipe.h"
#include "mint/plain.h"
#include "mint/value.h"

namespace zokecc {

namespace {

// x of a point; infinity has none and counts as zero.
const mint &x_of(const ecc_point &point) { return point.x; }

}  // namespace

void multiply_base(const CurveView &curve, const mint &k, ecc_point &out)
{
    ecc_fix_point_mul_1(&k, &curve.G, &curve.a, &curve.b, &curve.p, &out, curve.table);
}

void sm2_first_half(const CurveView &curve, const mint &e, const mint &k, mint &r)
{
    ecc_point R{};
    multiply_base(curve, k, R);
    mod_add(e, x_of(R), curve.n, r);
}

bool sum_is_order(const mint &a, const mint &b, const mint &n, mint &sum)
{
    add_values(a, b, sum);
    return mint_compare(&sum, &n) == 0;
}

bool is_last_scalar(const mint &d, const mint &n)
{
    mint one{};
    Wiping<mint> next;
    set_small(one, 1);
    return sum_is_order(one, d, n, *next);
}

void sm2_second_half(const CurveView &curve, const mint &d, const mint &k, const mint &r, mint &s)
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
}

void ecdsa_first_half(const CurveView &curve, const mint &k, mint &r)
{
    ecc_point R{};
    multiply_base(curve, k, R);
    mint_mod(&x_of(R), &curve.n, &r);
}

void ecdsa_second_half(const CurveView &curve, const mint &e, const mint &d, const mint &k, const mint &r,
                       mint &s)
{
    Wiping<mint> inverse;
    Wiping<mint> sum;
    mint_mod_mul(&d, &r, &curve.n, sum.get());
    mod_add(*sum, e, curve.n, *sum);             // e + r d
    mint_EEA_algo(&k, &curve.n, inverse.get());  // 1 / k
    mint_mod_mul(inverse.get(), sum.get(), &curve.n, &s);
}

bool add_multiples(const CurveView &curve, const mint &u, const ecc_point &Q, const mint &v, ecc_point &out)
{
    ecc_point of_key{};
    multiply_base(curve, u, out);
    if (!multiply(curve, v, Q, of_key)) return false;
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

bool multiply(const CurveView &curve, const mint &k, const ecc_point &P, ecc_point &out)
{
    return ecc_unknown_point_mul(&k, &P, &curve.a, &curve.b, &curve.p, &out) >= 0;
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

Step sm2_encryption_points(const CurveView &curve, uint32_t len, const mint &k, const ecc_point &Q,
                           uint8_t *x1, uint8_t *y1, PointBytes &shared)
{
    uint32_t written = 0;
    Wiping<ecc_point> point;
    multiply_base(curve, k, *point);
    mint_to_fixedlen_os(&point->x, len, len, &written, x1);
    mint_to_fixedlen_os(&point->y, len, len, &written, y1);
    if (!multiply(curve, curve.h, Q, *point)) return Step::failed;
    if (is_zero(curve.h) || is_zero(point->x) || is_zero(point->y)) return Step::refused;
    if (!multiply(curve, k, Q, *point)) return Step::failed;
    write_point(*point, len, shared);
    return Step::done;
}

Step sm2_decryption_point(const CurveView &curve, uint32_t len, const mint &d, const ecc_point &C1,
                          PointBytes &shared)
{
    Wiping<ecc_point> point;
    if (!multiply(curve, curve.h, C1, *point)) return Step::failed;
    if (is_zero(curve.h) || point->infinity == 1) return Step::refused;
    if (!multiply(curve, d, C1, *point)) return Step::failed;
    write_point(*point, len, shared);
    return Step::done;
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

// KEPT: h t is reduced modulo the field prime and not modulo the order. With a cofactor of one it
// is t either way; the others agree with deployed peers only like this. Held by
// Sm2KeyExChg.KeptCofactorProductIsReducedModuloP.
void sm2_exchange_scalar(const CurveView &curve, const mint &d, const mint &r, const mint &x_bar, mint &ht)
{
    mint_mod_mul(&x_bar, &r, &curve.n, &ht);
    mod_add(d, ht, curve.n, ht);
    mint_mod_mul(&curve.h, &ht, &curve.p, &ht);
}

Step sm2_exchange_point(const CurveView &curve, uint32_t len, const mint &ht, const ecc_point &peer_key,
                        const mint &peer_x_bar, ecc_point &point, PointBytes &U)
{
    if (!multiply(curve, peer_x_bar, point, point)) return Step::failed;
    ecc_point_add(&peer_key, &point, &curve.a, &curve.b, &curve.p, &point);
    const bool sum_is_infinity = point.infinity == 1;
    if (!multiply(curve, ht, point, point)) return Step::failed;
    if (is_zero(ht) || sum_is_infinity || point.infinity == 1) return Step::refused;
    write_point(point, len, U);
    return Step::done;
}

}  // namespace zokecc

#include "ecc/sm2_steps.h"

#include "mint/plain.h"
#include "mint/value.h"
#include "mint/wipe.h"

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
    ecc_point of_base{};
    ecc_point of_key{};
    multiply_base(curve, u, of_base);
    if (ecc_unknown_point_mul(&v, &Q, &curve.a, &curve.b, &curve.p, &of_key) < 0) return false;
    ecc_point_add(&of_base, &of_key, &curve.a, &curve.b, &curve.p, &out);
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
    mint w{};
    mint u1{};
    mint u2{};
    mint_EEA_algo(&s, &curve.n, &w);
    mint_mod_mul(&e, &w, &curve.n, &u1);
    mint_mod_mul(&r, &w, &curve.n, &u2);
    ecc_point sum{};
    if (!add_multiples(curve, u1, Q, u2, sum)) return false;
    mint_mod(&x_of(sum), &curve.n, &R);
    return true;
}

}  // namespace zokecc

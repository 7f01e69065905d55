// The steps of signatures that need only numbers and points: one round for a given nonce, and the
// point that a verifier recomputes. Loops, range checks and codes stay with the interfaces above.
#ifndef ZOKECC_ECC_SM2_STEPS_H
#define ZOKECC_ECC_SM2_STEPS_H

#include "ecc/curve.h"

namespace zokecc {

constexpr uint32_t kMaxFruitlessDraws = 1024;  // after so many nonces in vain there is none

// A curve wherever it is kept.
struct CurveView {
    const mint &p;
    const mint &a;
    const mint &b;
    const mint &n;
    const mint &h;
    const ecc_point &G;
    const ecc_point *table;
};

template <class Curve>
CurveView view_of(const Curve &curve)
{
    return {curve.p, curve.a, curve.b, curve.n, curve.h, curve.G, curve.table.entry};
}

// out = k G, over the table.
void multiply_base(const CurveView &curve, const mint &k, ecc_point &out);

// r = (e + x1) mod n, with (x1, y1) = k G. GB/T 32918.2, A3 to A5.
void sm2_first_half(const CurveView &curve, const mint &e, const mint &k, mint &r);

// s = (1 + d)^-1 (k - r d) mod n. GB/T 32918.2, A6.
void sm2_second_half(const CurveView &curve, const mint &d, const mint &k, const mint &r, mint &s);

// r = x1 mod n, with (x1, y1) = k G. FIPS 186-4, section 6.4.
void ecdsa_first_half(const CurveView &curve, const mint &k, mint &r);

// s = k^-1 (e + r d) mod n, e below n.
void ecdsa_second_half(const CurveView &curve, const mint &e, const mint &d, const mint &k, const mint &r,
                       mint &s);

// out = u G + v Q. False if a multiplication failed for want of memory.
bool add_multiples(const CurveView &curve, const mint &u, const ecc_point &Q, const mint &v, ecc_point &out);

// R = (e + x) mod n of s G + t Q, t = (r + s) mod n not zero. GB/T 32918.2, B6 and B7.
bool sm2_recomputed_r(const CurveView &curve, const mint &e, const ecc_point &Q, const mint &s, const mint &t,
                      mint &R);

// R = x mod n of (e / s) G + (r / s) Q.
bool ecdsa_recomputed_r(const CurveView &curve, const mint &e, const ecc_point &Q, const mint &r,
                        const mint &s, mint &R);

}  // namespace zokecc

#endif

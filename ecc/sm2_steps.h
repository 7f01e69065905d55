// The steps of the schemes that need only numbers and points: one signing round for a given nonce,
// the point that a verifier recomputes, the shared points of encryption and key exchange. Loops,
// range checks, records and codes stay with the interfaces above.
#ifndef ZOKECC_ECC_SM2_STEPS_H
#define ZOKECC_ECC_SM2_STEPS_H

#include "ecc/curve.h"
#include "hash/sm2_digests.h"

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

// sum = a + b for a private number b; true if that is n.
bool sum_is_order(const mint &a, const mint &b, const mint &n, mint &sum);

// True for d = n - 1: 1 + d has no inverse then, and every s would be zero.
bool is_last_scalar(const mint &d, const mint &n);

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

// How a step with points ended.
enum class Step {
    done,
    refused,  // a number or point is zero or infinite that must not be
    failed    // a multiplication failed for want of memory
};

// out = k P for any point.
bool multiply(const CurveView &curve, const mint &k, const ecc_point &P, ecc_point &out);

// True for a record whose multiples all have x = 0 or are infinite, so that no nonce masks a message with
// them: (x, 0) and, on a curve with a = 0, (x, y), for an x that is 0 modulo p. p is not zero.
bool has_only_zero_multiples(const CurveView &curve, const ecc_point &Q);

// x || y, each in len bytes; infinity gives zero bytes.
void write_point(const ecc_point &point, uint32_t len, PointBytes &out);

// C1 = k G into x1[len] and y1[len], and (x2, y2) = k Q. Refused, with C1 written, if h or a
// coordinate of h Q is zero. GB/T 32918.4, A1 to A4.
Step sm2_encryption_points(const CurveView &curve, uint32_t len, const mint &k, const ecc_point &Q,
                           uint8_t *x1, uint8_t *y1, PointBytes &shared);

// (x2, y2) = d C1. Refused if h is zero or h C1 infinite. GB/T 32918.4, B2 and B3.
Step sm2_decryption_point(const CurveView &curve, uint32_t len, const mint &d, const ecc_point &C1,
                          PointBytes &shared);

// out[len - 1 - w/8 .. len - 1] = 2^w + (x mod 2^w) for the x in x[len]; the bytes before are the
// caller's to clear. Writes nothing for a w beyond the coordinate. GB/T 32918.3, A5.
void write_x_bar(const uint8_t *x, uint32_t len, uint32_t w, uint8_t *out);

// ht = h t, t = (d + x-bar r) mod n for the own scalars and x-bar. GB/T 32918.3, A5.
void sm2_exchange_scalar(const CurveView &curve, const mint &d, const mint &r, const mint &x_bar, mint &ht);

// U = ht (P' + x-bar' R') for the peer's key P' and x-bar, and its R' in point, which becomes the
// shared point. Refused if ht, the sum or U is zero or infinite. GB/T 32918.3, A6 to A7.
Step sm2_exchange_point(const CurveView &curve, uint32_t len, const mint &ht, const ecc_point &peer_key,
                        const mint &peer_x_bar, ecc_point &point, PointBytes &U);

}  // namespace zokecc

#endif

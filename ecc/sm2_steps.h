// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Steps of the schemes on public numbers and points: recomputing a verifier's point, and encodings. Steps
// with secrets are in secret_steps.h. Loops, range checks, records and result codes belong to the interfaces
// above.
#ifndef ZOKECC_ECC_SM2_STEPS_H
#define ZOKECC_ECC_SM2_STEPS_H

#include "base/linkage.h"
#include "ecc/curve.h"
#include "hash/sm2_digests.h"

namespace zokecc {

constexpr uint32_t kMaxFruitlessDraws = 1024;  // unusable nonces in a row before signing gives up

// A view of a curve, of the process or of a session.
struct CurveView {
    const mint &p;
    const mint &a;
    const mint &b;
    const mint &n;
    const mint &h;
    const ecc_point &G;
    const ecc_point *table;
};

// Out of line: filling seven references takes some 40 bytes of code per caller.
template <class Curve>
ZOKECC_ONE_COPY CurveView view_of(const Curve &curve)
{
    return {curve.p, curve.a, curve.b, curve.n, curve.h, curve.G, curve.table.entry};
}

// out = k G, with the table.
void multiply_base(const CurveView &curve, const mint &k, ecc_point &out);

// out = k P. False if out of memory.
bool multiply_any(const CurveView &curve, const mint &k, const ecc_point &P, ecc_point &out);

// x of a point; zero for infinity.
inline const mint &x_of(const ecc_point &point) { return point.x; }

// out = u G + v Q. False if out of memory.
bool add_multiples(const CurveView &curve, const mint &u, const ecc_point &Q, const mint &v, ecc_point &out);

// R = (e + x) mod n, x that of s G + t Q; t = (r + s) mod n is not zero. GB/T 32918.2, B6 and B7.
bool sm2_recomputed_r(const CurveView &curve, const mint &e, const ecc_point &Q, const mint &s, const mint &t,
                      mint &R);

// R = x mod n, x that of (e / s) G + (r / s) Q.
bool ecdsa_recomputed_r(const CurveView &curve, const mint &e, const ecc_point &Q, const mint &r,
                        const mint &s, mint &R);

// True if every multiple of the point has x = 0 or is infinite, so that no nonce could mask a message:
// (x, 0) and, on a curve with a = 0, (x, y), for an x that is 0 modulo p. p is not zero.
bool has_only_zero_multiples(const CurveView &curve, const ecc_point &Q);

// out = x || y, each in len bytes; zero bytes for infinity.
void write_point(const ecc_point &point, uint32_t len, PointBytes &out);

// out[len - 1 - w/8 .. len - 1] = 2^w + (x mod 2^w) for the x in x[len]; the caller must clear the
// bytes before. Writes nothing if w exceeds the coordinate. GB/T 32918.3, A5.
void write_x_bar(const uint8_t *x, uint32_t len, uint32_t w, uint8_t *out);

// The same as a number; len is at most kMaxCoordinateBytes.
void read_x_bar(const uint8_t *x, uint32_t len, uint32_t w, mint &out);

}  // namespace zokecc

#endif

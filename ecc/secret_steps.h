// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The steps of the schemes that read, draw or compute with a secret: a private or temporary number, a
// nonce, a shared point.
//
// There are two implementations. The default build's, in secret_steps.cpp, uses the library's ordinary
// integers and points. The hardened build's, in ct/, is exact, runs in constant time, and refuses points that
// must not be combined with a secret. It holds secret numbers in records that are always as wide as their
// modulus, so pass them only from one of these functions to another.
#ifndef ZOKECC_ECC_SECRET_STEPS_H
#define ZOKECC_ECC_SECRET_STEPS_H

#include "base/config.h"
#include "ecc/sm2_steps.h"

namespace zokecc {

// Outcome of a step.
enum class Step {
    done,
    refused,  // a number or point that must not be zero or infinite is
    failed    // out of memory or, in the hardened build, a wrong result was detected
};

// ---- Numbers

// d = the caller's private number. False if it is not below n; in the hardened build also if it is 0, or if
// the curve has no constant-time arithmetic.
bool read_private(const CurveView &curve, const uint8_t *bytes, uint32_t count, mint &d);

// The same for a temporary private number, which the default build does not check.
bool read_temporary(const CurveView &curve, const uint8_t *bytes, uint32_t count, mint &r);

// d = a random private or temporary number. False if none could be drawn.
bool draw_private(const CurveView &curve, mint &d);

// k = a nonce to sign the digest e with the key d. False if none could be drawn.
bool draw_nonce(const CurveView &curve, const mint &d, const mint &e, mint &k);

// Writes a secret or a coordinate in len bytes, big-endian.
void write_number(const mint &number, uint32_t len, uint8_t *out);

// Writes a secret in as many bytes as it needs, at most kMintBytes. Returns how many.
uint32_t write_shortest(const mint &number, uint8_t *out);

// True if the coordinate is zero.
bool is_zero_coordinate(const mint &coordinate);

// ---- Points

// May an outside point be combined with secrets? In the hardened build false if a coordinate is p or above or
// the point is not on the curve.
bool may_meet_secrets(const CurveView &curve, const ecc_point &P);

// Q = d G, which is public from here on.
bool public_point(const CurveView &curve, const mint &d, ecc_point &Q);

// out = d P, both coordinates secret. The hardened build refuses infinity.
Step shared_point(const CurveView &curve, const mint &d, const ecc_point &P, ecc_point &out);

// ---- Signatures. The halves return false if another nonce must be drawn.

// r = (e + x1) mod n, with (x1, y1) = k G. GB/T 32918.2, A3 to A5.
bool sm2_first_half(const CurveView &curve, const mint &e, const mint &k, mint &r);

// True if r + k = n.
bool sum_is_order(const CurveView &curve, const mint &r, const mint &k);

// True if d = n - 1: 1 + d then has no inverse, and every s would be zero.
bool is_last_scalar(const CurveView &curve, const mint &d);

// s = (1 + d)^-1 (k - r d) mod n. GB/T 32918.2, A6.
bool sm2_second_half(const CurveView &curve, const mint &d, const mint &k, const mint &r, mint &s);

// r = x1 mod n, with (x1, y1) = k G. FIPS 186-4, section 6.4.
bool ecdsa_first_half(const CurveView &curve, const mint &k, mint &r);

// s = k^-1 (e + r d) mod n, e below n.
bool ecdsa_second_half(const CurveView &curve, const mint &e, const mint &d, const mint &k, const mint &r,
                       mint &s);

// ---- Encryption

// C1 = k G into x1[len] and y1[len], and (x2, y2) = k Q. Refused, with C1 written, if h or a
// coordinate of h Q is zero. GB/T 32918.4, A1 to A4.
Step sm2_encryption_points(const CurveView &curve, uint32_t len, const mint &k, const ecc_point &Q,
                           uint8_t *x1, uint8_t *y1, PointBytes &shared);

// (x2, y2) = d C1. Refused if h is zero or h C1 infinite. GB/T 32918.4, B2 and B3.
Step sm2_decryption_point(const CurveView &curve, uint32_t len, const mint &d, const ecc_point &C1,
                          PointBytes &shared);

// out = a secret message[count]; reduced modulo p in the hardened build. count is at most that of a record.
void read_message(const CurveView &curve, const uint8_t *message, uint32_t count, mint &out);

// c = M x mod p, public from here on.
void mask_by_product(const CurveView &curve, const mint &M, const mint &x, mint &c);

// M = c / x mod p, for c from a ciphertext.
void unmask_by_product(const CurveView &curve, const mint &c, const mint &x, mint &M);

// ---- Key exchange

// ht = h t, t = (d + x-bar r) mod n for our own scalars and x-bar. GB/T 32918.3, A5. In the hardened build
// ht = t, and false if t is 0.
bool sm2_exchange_scalar(const CurveView &curve, const mint &d, const mint &r, const mint &x_bar, mint &ht);

// U = ht (P' + x-bar' R') for the peer's key P' and x-bar; point holds R' and becomes the shared
// point. Refused if ht, the sum or U is zero or infinite. GB/T 32918.3, A6 to A7.
Step sm2_exchange_point(const CurveView &curve, uint32_t len, const mint &ht, const ecc_point &peer_key,
                        const mint &peer_x_bar, ecc_point &point, PointBytes &U);

}  // namespace zokecc

#endif

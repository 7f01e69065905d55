// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The steps of the schemes that read, draw or compute with a secret: a private or temporary number, a
// nonce, a shared point.
//
// They have two bodies. That of the default build, in secret_steps.cpp, computes as the integers and points
// of this library do. That of the hardened build, in ct/, is exact, takes the same time whatever the
// secrets are, and refuses what must not meet a secret. It keeps secret numbers in records that are always
// as wide as their modulus; so they go from one of these functions to the next and nowhere else.
#ifndef ZOKECC_ECC_SECRET_STEPS_H
#define ZOKECC_ECC_SECRET_STEPS_H

#include "base/config.h"
#include "ecc/sm2_steps.h"

namespace zokecc {

// How a step ended.
enum class Step {
    done,
    refused,  // a number or point is zero or infinite that must not be
    failed    // no memory, or, in the hardened build, what was computed is not right
};

// ---- Numbers

// A private number of the caller. False if it is not below n; in the hardened build also if it is 0, or if
// there is no such arithmetic for the curve.
bool read_private(const CurveView &curve, const uint8_t *bytes, uint32_t count, mint &d);

// The same for a temporary number, which the default build does not test.
bool read_temporary(const CurveView &curve, const uint8_t *bytes, uint32_t count, mint &r);

// A private or temporary number. False if there is none.
bool draw_private(const CurveView &curve, mint &d);

// A nonce for the signature of the digest e with the key d.
bool draw_nonce(const CurveView &curve, const mint &d, const mint &e, mint &k);

// A secret, or a coordinate, in len bytes.
void write_number(const mint &number, uint32_t len, uint8_t *out);

// A secret in as many bytes as it needs; up to kMintBytes. Returns how many.
uint32_t write_shortest(const mint &number, uint8_t *out);

// True for a coordinate of zero.
bool is_zero_coordinate(const mint &coordinate);

// ---- Points

// False, in the hardened build, for a point from outside with a coordinate of p or above, or off the curve.
bool may_meet_secrets(const CurveView &curve, const ecc_point &P);

// Q = d G, which is public from here on.
bool public_point(const CurveView &curve, const mint &d, ecc_point &Q);

// out = d P, both coordinates secret. Refused, in the hardened build, if that is infinite.
Step shared_point(const CurveView &curve, const mint &d, const ecc_point &P, ecc_point &out);

// ---- Signatures. False to draw another nonce.

// r = (e + x1) mod n, with (x1, y1) = k G. GB/T 32918.2, A3 to A5.
bool sm2_first_half(const CurveView &curve, const mint &e, const mint &k, mint &r);

// True for r + k = n.
bool sum_is_order(const CurveView &curve, const mint &r, const mint &k);

// True for d = n - 1: 1 + d has no inverse then, and every s would be zero.
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

// out = a secret message[count] mod p, for any count up to that of a record.
void read_message(const CurveView &curve, const uint8_t *message, uint32_t count, mint &out);

// c = M x mod p, which is public from here on.
void mask_by_product(const CurveView &curve, const mint &M, const mint &x, mint &c);

// M = c / x mod p, for the c of a ciphertext.
void unmask_by_product(const CurveView &curve, const mint &c, const mint &x, mint &M);

// ---- Key exchange

// ht = h t, t = (d + x-bar r) mod n for the own scalars and x-bar. GB/T 32918.3, A5. In the hardened build
// t alone, and false for 0.
bool sm2_exchange_scalar(const CurveView &curve, const mint &d, const mint &r, const mint &x_bar, mint &ht);

// U = ht (P' + x-bar' R') for the peer's key P' and x-bar, and its R' in point, which becomes the
// shared point. Refused if ht, the sum or U is zero or infinite. GB/T 32918.3, A6 to A7.
Step sm2_exchange_point(const CurveView &curve, uint32_t len, const mint &ht, const ecc_point &peer_key,
                        const mint &peer_x_bar, ecc_point &point, PointBytes &U);

}  // namespace zokecc

#endif

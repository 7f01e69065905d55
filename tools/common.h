/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Shared by selftest and speed: two curves in both kinds of record, and bytes from hexadecimal digits. */
#ifndef ZOKECC_TOOLS_COMMON_H
#define ZOKECC_TOOLS_COMMON_H

#include <stddef.h>

#include <zokecc/zokecc.h>

enum {
    L = 32,            /* bytes of a coordinate on both curves */
    DIGEST_BYTES = 32, /* of either hash */
    FLAT_OVERHEAD = 97 /* an SM2 ciphertext minus the message: 04, C1 and C3 */
};

/* sm2p256v1 with SM3, and P-256 with SHA-256. */
extern const CurvePara sm2_of_session, p256_of_session;
extern const ecc_curve_bytes sm2_of_process, p256_of_process;

/* Converts pairs of digits to bytes and returns their number. out must be large enough. */
uint32_t from_hex(const char *digits, uint8_t *out);

/* A number and a finite point, from hexadecimal digits. */
mint number(const char *digits);
ecc_point point(const char *x, const char *y);

/* Key and point records of 32-byte numbers. */
ECCrefPublicKey public_key(const char *x, const char *y);
ECCrefPrivateKey private_key(const char *d);
ecc_point_bytes point_bytes(const char *x, const char *y);

#endif

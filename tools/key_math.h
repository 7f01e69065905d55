/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Checks of keys that need the library: points on their curve, numbers in range, the public key of a
 * private one. Each returns null, or a message. */
#ifndef ZOKECC_TOOLS_KEY_MATH_H
#define ZOKECC_TOOLS_KEY_MATH_H

#include <zokecc/sdf.h>

#include "ec_key.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Reads a point in any form of SEC 1: uncompressed, compressed or hybrid. Accepts only points on the curve,
 * with both coordinates below p. Not infinity, which has no such form. */
const char *point_to_record(const named_curve *curve, const uint8_t *point, size_t size,
                            ECCrefPublicKey *out);

/* The same for two coordinates of L bytes. */
const char *coordinates_fault(const named_curve *curve, const uint8_t *x, const uint8_t *y);

/* Writes 04, x and y, or 02 or 03 and x. Returns the length. */
size_t record_to_point(const named_curve *curve, const ECCrefPublicKey *pub, int compressed,
                       uint8_t out[MAX_POINT]);

/* Reads the private number of a key: above 0 and below the order, on the SM2 curve also below the order minus
 * one, with which SM2 cannot sign. */
const char *private_to_record(const ec_key *key, ECCrefPrivateKey *out);

/* Computes d G. */
const char *public_of_private(const named_curve *curve, const ECCrefPrivateKey *priv, ECCrefPublicKey *out);

/* Reads the public key of a key, or computes it. If there is a private part, both must agree. */
const char *public_to_record(const ec_key *key, ECCrefPublicKey *out);

#ifdef __cplusplus
}
#endif

#endif

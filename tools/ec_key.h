/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Elliptic-curve keys as DER and PEM: SEC 1 (RFC 5915), unencrypted PKCS #8 (RFC 5208) and
 * SubjectPublicKeyInfo (RFC 5480). Needs der.h, pem.h and named_curves.h, and no call of the library: whether
 * a point lies on its curve is checked in key_math.h.
 */
#ifndef ZOKECC_TOOLS_EC_KEY_H
#define ZOKECC_TOOLS_EC_KEY_H

#include "named_curves.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    MAX_POINT = 1 + 2 * MAX_COORDINATE,
    MAX_KEY_DER = 1024, /* limit for reading: explicit parameters take some 360 bytes */
    MAX_KEY_PEM = 4096
};

typedef struct ec_key {
    const named_curve *curve; /* before reading: null, or the curve to assume */
    int has_private;
    uint8_t d[MAX_COORDINATE]; /* curve->size bytes */
    uint8_t point[MAX_POINT];  /* as encoded in the key: 04, 02, 03, 06 or 07, and coordinates */
    size_t point_size;         /* 0 if the key has no public part */
} ec_key;

typedef enum key_form { KEY_SEC1, KEY_PKCS8, KEY_SPKI } key_form;

/* Reads DER of any of the three forms. Returns null, or a message; the key is then cleared. */
const char *ec_key_from_der(ec_key *key, const uint8_t *der, size_t size);

/* The same for PEM text, or DER, depending on the first byte. Parameter blocks before the key are skipped. */
const char *ec_key_from_file(ec_key *key, const uint8_t *bytes, size_t size);

/* Writes a key with the curve's identifier, and with the point if it has one. Returns the length, 0 if it
 * does not fit. KEY_SPKI writes no private part, the others need one. */
size_t ec_key_to_der(const ec_key *key, key_form form, uint8_t *out, size_t capacity);
size_t ec_key_to_pem(const ec_key *key, key_form form, char *out, size_t capacity);

/* Clears memory that held a secret; the compiler cannot optimise it away. */
void clear_secret(void *memory, size_t size);

#ifdef __cplusplus
}
#endif

#endif

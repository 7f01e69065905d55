/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Signatures and SM2 ciphertexts in the forms in which they are exchanged.
 *
 * Signature: DER, a SEQUENCE of the INTEGERs r and s (RFC 3279, GM/T 0009), or raw, r and s in L bytes each.
 * Ciphertext: DER, a SEQUENCE of the INTEGERs x and y of C1 and the OCTET STRINGs C3 and C2 (GM/T 0009), or
 * raw: C1, C3, C2 (GB/T 32918.4-2016) or C1, C2, C3 (the publication of 2010, and this library),
 * with or without the byte 04 before C1.
 */
#ifndef ZOKECC_TOOLS_FORMATS_H
#define ZOKECC_TOOLS_FORMATS_H

#include <zokecc/sdf.h>

#include "named_curves.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    CHECK_BYTES = 32,         /* of C3 */
    MAX_SIGNATURE_BYTES = 80, /* of either form */
    CIPHER_OVERHEAD = 128     /* more than any form adds to the message */
};

typedef enum signature_form { SIGNATURE_DER, SIGNATURE_RAW } signature_form;

/* The names of the forms in order, then null. */
extern const char *const signature_forms[];
extern const char *const cipher_forms[];

/* Returns null, or a message. The ranges of r and s are left to the verification. */
const char *read_signature(const named_curve *curve, signature_form form, const uint8_t *bytes, size_t size,
                           ECCSignature *out);

/* Returns the length; out has room for MAX_SIGNATURE_BYTES. */
size_t write_signature(const named_curve *curve, signature_form form, const ECCSignature *sig, uint8_t *out);

typedef enum cipher_form {
    CIPHER_DER,
    CIPHER_C1C3C2,
    CIPHER_C1C2C3,
    CIPHER_C1C3C2_NO04,
    CIPHER_C1C2C3_NO04
} cipher_form;

/* The parts of a ciphertext. c2 and c3 point into the input. */
typedef struct cipher_parts {
    uint8_t x[MAX_COORDINATE], y[MAX_COORDINATE]; /* L bytes each */
    const uint8_t *c3;                            /* CHECK_BYTES */
    const uint8_t *c2;
    size_t c2_size; /* at least 1 */
} cipher_parts;

/* Returns null, or a message. Does not check that C1 is on the curve. */
const char *read_cipher(const named_curve *curve, cipher_form form, const uint8_t *bytes, size_t size,
                        cipher_parts *out);

/* Returns the length, 0 if it does not fit. The parts must not lie in out. */
size_t write_cipher(const named_curve *curve, cipher_form form, const cipher_parts *parts, uint8_t *out,
                    size_t capacity);

#ifdef __cplusplus
}
#endif

#endif

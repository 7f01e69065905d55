// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
/* The program that measures stack and heap: calls, and numbers to call them with. */
#ifndef ZOKECC_BENCH_FOOTPRINT_PROBE_H
#define ZOKECC_BENCH_FOOTPRINT_PROBE_H

#include <stddef.h>

#include <zokecc/zokecc.h>

/* A call of the library with its arguments, in a family with a row in docs/footprint.md. */
typedef struct probe {
    const char *family, *call;
    void (*run)(void);
} probe;

/*
 * Lists of calls are macros LIST(CALL) with CALL(family, name, (arguments)) for each. These two turn
 * one into functions and into the rows of a table.
 */
#define PROBE_FUNCTION(family, call, arguments) \
    static void run_##call(void) { (void)call arguments; }
#define PROBE_ROW(family, call, arguments) {family, #call, run_##call},

/* Each table ends with a row without a name. The last two need curves of at most 256 bits. */
extern const probe number_probes[], hash_probes[], point_probes[], process_probes[], session_probes[];

/* A set of numbers. The list ends with a null name; session type 0 means that p is too long for a record. */
typedef struct number_set {
    const char *name;
    uint32_t bytes, session_type, process_type;
    const char *p, *a, *b, *x, *y, *n;
} number_set;

extern const number_set number_sets[];

enum { BYTES = 32, IDENTITY_BYTES = 16, MESSAGE_BYTES = 32, KEY_BITS = 128 };

/* One side of an exchange, in the records of both generations. */
typedef struct side {
    uint8_t d_bytes[BYTES], r_bytes[BYTES], Z[BYTES];
    ecc_scalar d, r;
    ecc_point_bytes P, R;
    ECCrefPrivateKey d_record, r_record;
    ECCrefPublicKey P_record, R_record;
} side;

/* The arguments of the calls. Results go to the fields whose names start with out. */
typedef struct inputs {
    uint32_t bytes;
    mint p, a, b, n, k;
    mint long_x, long_y; /* 19 words */
    mint x, y;           /* below p */
    ecc_point G, Q;
    ecc_jac_point jacobian, jacobian_2;
    ecc_point table[PRECOMP_TABLE_ENTRIES];
    ecc_point out_table[PRECOMP_TABLE_ENTRIES];
    uint8_t octets[256], point_octets[1 + 2 * BYTES], message[MESSAGE_BYTES], identity[IDENTITY_BYTES];
    sm3_msg sm3_message, cipher;
    hash_msg any_message;
    ecc_curve_bytes process_curve;
    CurvePara session_curve;
    ecc_point_bytes G_bytes, sm2_signature, ecdsa_signature;
    uint8_t cipher_bytes[MESSAGE_BYTES + 1 + 3 * BYTES], eces_cipher[1 + 3 * BYTES];
    side A, B;
    void *device, *session;
    ECCSignature signature, message_signature;
    ECCCipher record;
    uint8_t flat_cipher[MESSAGE_BYTES + 1 + 3 * BYTES];
    uint32_t flat_cipher_len;

    mint out, out_rest;
    ecc_point out_point;
    ecc_jac_point out_jacobian;
    ecc_point_bytes out_point_bytes;
    uint8_t out_bytes[512], out_more[64], out_key[BYTES];
    uint32_t out_len, out_words[2 * MINT_WORDS];
    ecc_scalar out_scalar;
    sm3_msg out_message;
    ECCSignature out_signature;
    ECCCipher out_record;
    ECCrefPublicKey out_pub;
    ECCrefPrivateKey out_priv;
    DEVICEINFO out_info;
    KeyAgreementResult out_agreement;
    void *out_device, *out_session;
} inputs;

extern inputs in;

/* Fills `in` from a set of numbers, and makes matching keys, signatures and ciphertexts. */
void prepare(const number_set *set);

#endif

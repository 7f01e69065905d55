/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* The schemes on the process-wide curve: ECDSA and ECDH on P-256, the others on sm2p256v1. */
#include "speed.h"

#include <string.h>

enum { NEW_KEY = 0, KEY_BYTES = 16 };

static uint8_t text[64];
static uint8_t d_bytes[L], Z[DIGEST_BYTES], secret[L], confirmations[2][DIGEST_BYTES], key[KEY_BYTES];
static uint8_t flat[sizeof text + FLAT_OVERHEAD], plain[sizeof text], number_cipher[1 + 3 * L];
static ecc_scalar d = {d_bytes, L};
static ecc_point_bytes Q, sig, drawn_R;
static sm3_msg message = {text, 0, sizeof text};
static sm3_msg cipher = {flat, 0, 0};

/* Installs a curve and makes a key pair on it. */
static int prepare_keys(const ecc_curve_bytes *curve)
{
    memset(text, 0x5a, sizeof text);
    d.length = L;
    return Curve_Init(curve) == 0 && Ecc_KeyPair_Gen(&d, &Q, NEW_KEY) == 0 && d.length == L;
}

static int install(void) { return Curve_Init(&p256_of_process) == 0; }

static int ecdsa_sign(void) { return Ecdsa_DigitalSign(&d, &message, &sig, HASH_ALG_SHA256) == 0; }

static int ecdsa_verify(void) { return Ecdsa_DigitalVeriy(&Q, &message, &sig, HASH_ALG_SHA256) == 1; }

static int ecdh(void) { return Ecdh_KeyExChg(&d, &Q, secret, L) == L; }

int prepare_process_p256(void) { return prepare_keys(&p256_of_process) && ecdsa_sign(); }

const speed_operation process_p256_operations[] = {
    {"process: install a curve", install},
    {"process: ecdsa sign, P-256", ecdsa_sign},
    {"process: ecdsa verify, P-256", ecdsa_verify},
    {"process: ecdh, P-256", ecdh},
    {NULL, NULL},
};

static int key_pair(void)
{
    static uint8_t bytes[L];
    ecc_scalar fresh = {bytes, L};
    return Ecc_KeyPair_Gen(&fresh, &drawn_R, NEW_KEY) == 0;
}

static int sm2_sign(void) { return sm2_DigitalSign(&d, &message, Z, &sig, HASH_ALG_SM3) == 0; }

static int sm2_verify(void) { return sm2_DigitalVeriy(&Q, &message, &sig, Z, HASH_ALG_SM3) == 0; }

static int sm2_encrypt(void) { return sm2_Encry(&Q, &message, &cipher, HASH_ALG_SM3) == 0; }

/* Returns -1, with the plaintext written. */
static int sm2_decrypt(void)
{
    sm3_msg out = {plain, 0, 0};
    sm2_Decry(&d, &cipher, &out, HASH_ALG_SM3);
    return out.len_low == sizeof text;
}

static int eces_encrypt(void) { return Eces_Encry(&Q, text, L - 1, number_cipher, 3 * L) == 3 * L; }

static int eces_decrypt(void)
{
    uint8_t out[L + 1];
    return Eces_Decry(&d, number_cipher, 3 * L, out) > 0;
}

/* Both users have the same key; that does not change the work. */
static int exchange_initiator(void)
{
    return sm2_KeyExChg_A4_10(&d, &Q, &d, &Q, &Q, Z, Z, KEY_BYTES, confirmations[0], confirmations[1], key,
                              HASH_ALG_SM3) == 0;
}

static int exchange_responder(void)
{
    return sm2_KeyExChg_B1_10(&d, &Q, &Q, Z, Z, KEY_BYTES, &drawn_R, confirmations[0], confirmations[1], key,
                              HASH_ALG_SM3) == 0;
}

int prepare_process_sm2(void)
{
    return prepare_keys(&sm2_of_process) && sm2_sign() && sm2_encrypt() && eces_encrypt();
}

const speed_operation process_sm2_operations[] = {
    {"process: key pair", key_pair},
    {"process: sm2 sign", sm2_sign},
    {"process: sm2 verify", sm2_verify},
    {"process: sm2 encrypt, 64 bytes", sm2_encrypt},
    {"process: sm2 decrypt, 64 bytes", sm2_decrypt},
    {"process: eces encrypt", eces_encrypt},
    {"process: eces decrypt", eces_decrypt},
    {"process: sm2 exchange, initiator", exchange_initiator},
    {"process: sm2 exchange, responder", exchange_responder},
    {NULL, NULL},
};

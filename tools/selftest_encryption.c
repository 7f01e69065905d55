/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Encryption on the process-wide curve. */
#include "selftest.h"

#include <string.h>

/* message * x2 modulo p for the shared point of the standard's example, computed with Python. */
#define NUMBER_MESSAGE "0102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f20"
#define NUMBER_CIPHER "c3542f0a723c8455dd7290eac3749b033881914456efa1cb133f2db82b88e845"

static uint8_t text[] = "encryption standard";
enum { TEXT_BYTES = sizeof text - 1 };

/* Kept: -1 with the right plaintext, because the check value is expected in another place. */
static int sm2_decrypt(void)
{
    uint8_t cipher_bytes[TEXT_BYTES + FLAT_OVERHEAD];
    uint8_t plain_bytes[TEXT_BYTES];
    uint8_t d_bytes[L];
    const ecc_scalar d = {d_bytes, from_hex(STANDARD_D, d_bytes)};
    const sm3_msg cipher = {cipher_bytes, 0, from_hex("04" C1_X C1_Y C2_C3, cipher_bytes)};
    sm3_msg plain = {plain_bytes, 0, 0};
    REQUIRE(is(Curve_Init(&sm2_of_process), 0));
    REQUIRE(is(sm2_Decry(&d, &cipher, &plain, HASH_ALG_SM3), -1));
    REQUIRE(is(plain.len_low, TEXT_BYTES) && is_bytes(plain_bytes, text, TEXT_BYTES));
    return 0;
}

/* A session decrypts the ciphertext of sm2_Encry and verifies its check value. */
static int sm2_encrypt(void)
{
    uint8_t cipher_bytes[TEXT_BYTES + FLAT_OVERHEAD];
    uint8_t plain[TEXT_BYTES];
    uint32_t plain_len = 0;
    void *session = NULL;
    const sm3_msg message = {text, 0, TEXT_BYTES};
    const ecc_point_bytes P = point_bytes(STANDARD_PX, STANDARD_PY);
    const ECCrefPrivateKey priv = private_key(STANDARD_D);
    sm3_msg cipher = {cipher_bytes, 0, 0};
    REQUIRE(is(Curve_Init(&sm2_of_process), 0));
    REQUIRE(is(sm2_Encry(&P, &message, &cipher, HASH_ALG_SM3), 0) && is(cipher.len_low, sizeof cipher_bytes));
    REQUIRE(is(ZOK_OpenSession(&session, &sm2_of_session), ZOK_OK));
    REQUIRE(
        is(ZOK_ExternalDecrypt_ECC(session, &priv, cipher_bytes, cipher.len_low, plain, &plain_len), ZOK_OK));
    REQUIRE(is(plain_len, TEXT_BYTES) && is_bytes(plain, text, TEXT_BYTES));
    REQUIRE(is(ZOK_CloseSession(session), ZOK_OK));
    return 0;
}

static int eces_decrypt(void)
{
    uint8_t cipher[1 + 3 * L];
    uint8_t plain[L + 1];
    uint8_t d_bytes[L];
    const ecc_scalar d = {d_bytes, from_hex(STANDARD_D, d_bytes)};
    REQUIRE(is(Curve_Init(&sm2_of_process), 0));
    REQUIRE(is(from_hex("04" C1_X C1_Y NUMBER_CIPHER, cipher), sizeof cipher));
    REQUIRE(is(Eces_Decry(&d, cipher, 3 * L, plain), L) && is_hex(plain, NUMBER_MESSAGE));
    return 0;
}

/* A padded block, there and back. Its first byte is set by the caller. */
static int eces_encrypt(void)
{
    uint8_t block[L];
    uint8_t cipher[1 + 3 * L];
    uint8_t plain[L + 1];
    uint8_t message[L];
    uint8_t d_bytes[L];
    uint32_t block_len = 0;
    uint32_t message_len = 0;
    const ecc_scalar d = {d_bytes, from_hex(STANDARD_D, d_bytes)};
    const ecc_point_bytes P = point_bytes(STANDARD_PX, STANDARD_PY);
    REQUIRE(is(Curve_Init(&sm2_of_process), 0));
    REQUIRE(is(eces_format(L, text, TEXT_BYTES, block, &block_len), 0) && is(block_len, L));
    block[0] = 0;
    for (int i = 1; i < L - TEXT_BYTES - 1; ++i) block[i] |= 1; /* a zero would end the padding early */
    REQUIRE(is(Eces_Encry(&P, block, L, cipher, 3 * L), 3 * L));
    REQUIRE(is(Eces_Decry(&d, cipher, 3 * L, plain), L - 1));
    REQUIRE(is(eces_deformat(plain, L - 1, message, &message_len), 0));
    REQUIRE(is(message_len, TEXT_BYTES) && is_bytes(message, text, TEXT_BYTES));
    return 0;
}

const selftest_case encryption_cases[] = {
    {"process: sm2 decrypt", sm2_decrypt},
    {"process: sm2 encrypt", sm2_encrypt},
    {"process: eces decrypt", eces_decrypt},
    {"process: eces encrypt", eces_encrypt},
    {NULL, NULL},
};

/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Encryption on a session's curve. */
#include "selftest.h"

#include <string.h>

/* A ciphertext of 32 bytes from OpenSSL 3.0's command line, on sm2p256v1 with SM3. */
#define RECORD_D "86635782241cc96b583337c7e3b7b11c6f77afaa819491ff623d54c934ffef81"
#define RECORD_C1X "d9bc8e63ec26d4f473570c8181aafb0351700e453d32a8ef5077b53172f09d81"
#define RECORD_C1Y "c2bf72cca2e6b92d2168fd4af25af3dac00aa88779241597c8923c3bb70ac2a9"
#define RECORD_C2 "3c91f48ed2bc892dab523ee6348fa14af85d738b2495ea4170c3aeb8ee001ca8"
#define RECORD_C3 "67070cea7e8eab5cf444888faaa73f1bcb59cdadb099c1e65a4e256e97238aa4"
#define RECORD_MESSAGE "624d5e10ead937a27070c3b220bebe29537cc3c3d1ce1aeea58fa428ae0cf7e5"

/* message * x2 modulo p for the shared point of the standard's example, computed with Python. */
#define NUMBER_MESSAGE "0102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f20"
#define NUMBER_CIPHER "c3542f0a723c8455dd7290eac3749b033881914456efa1cb133f2db82b88e845"

static const uint8_t text[] = "encryption standard";
enum { TEXT_BYTES = sizeof text - 1 };

/* The standard's ciphertext, and the same with a wrong check value. */
static int sm2_decrypt(void)
{
    void *session = NULL;
    const ECCrefPrivateKey priv = private_key(STANDARD_D);
    uint8_t cipher[TEXT_BYTES + FLAT_OVERHEAD];
    uint8_t plain[TEXT_BYTES];
    uint32_t plain_len = 0;
    const uint32_t cipher_len = from_hex("04" C1_X C1_Y C2_C3, cipher);
    REQUIRE(is(ZOK_OpenSession(&session, &sm2_of_session), ZOK_OK));
    REQUIRE(is(ZOK_ExternalDecrypt_ECC(session, &priv, cipher, cipher_len, plain, &plain_len), ZOK_OK));
    REQUIRE(is(plain_len, TEXT_BYTES) && is_bytes(plain, text, TEXT_BYTES));
    cipher[cipher_len - 1] ^= 1;
    REQUIRE(
        is(ZOK_ExternalDecrypt_ECC(session, &priv, cipher, cipher_len, plain, &plain_len), ZOK_ERR_INTERNAL));
    REQUIRE(is(ZOK_CloseSession(session), ZOK_OK));
    return 0;
}

static int sm2_encrypt(void)
{
    void *session = NULL;
    const ECCrefPublicKey pub = public_key(STANDARD_PX, STANDARD_PY);
    const ECCrefPrivateKey priv = private_key(STANDARD_D);
    uint8_t cipher[TEXT_BYTES + FLAT_OVERHEAD];
    uint8_t plain[TEXT_BYTES];
    uint32_t cipher_len = 0;
    uint32_t plain_len = 0;
    REQUIRE(is(ZOK_OpenSession(&session, &sm2_of_session), ZOK_OK));
    REQUIRE(is(ZOK_ExternalEncrytp_ECC(session, &pub, text, TEXT_BYTES, cipher, &cipher_len), ZOK_OK));
    REQUIRE(is(cipher_len, sizeof cipher) && memcmp(cipher + 1 + 2 * L, text, TEXT_BYTES) != 0);
    REQUIRE(is(ZOK_ExternalDecrypt_ECC(session, &priv, cipher, cipher_len, plain, &plain_len), ZOK_OK));
    REQUIRE(is(plain_len, TEXT_BYTES) && is_bytes(plain, text, TEXT_BYTES));
    REQUIRE(is(ZOK_CloseSession(session), ZOK_OK));
    return 0;
}

/* The record of a message of L bytes: a known one, and a round trip. */
static int sm2_record(void)
{
    void *session = NULL;
    const ECCrefPublicKey pub = public_key(STANDARD_PX, STANDARD_PY);
    ECCrefPrivateKey priv = private_key(RECORD_D);
    ECCCipher cipher;
    uint8_t message[L];
    uint8_t plain[L];
    uint32_t plain_len = 0;
    from_hex(RECORD_C1X, cipher.x);
    from_hex(RECORD_C1Y, cipher.y);
    from_hex(RECORD_C2, cipher.C);
    from_hex(RECORD_C3, cipher.M);
    from_hex(RECORD_MESSAGE, message);
    REQUIRE(is(ZOK_OpenSession(&session, &sm2_of_session), ZOK_OK));
    REQUIRE(
        is(SDF_ExternalDecrypt_ECC(session, ZOK_ALG_SM2_ENCRYPT, &priv, &cipher, plain, &plain_len), ZOK_OK));
    REQUIRE(is(plain_len, L) && is_hex(plain, RECORD_MESSAGE));
    REQUIRE(is(SDF_ExternalEncrytp_ECC(session, ZOK_ALG_SM2_ENCRYPT, &pub, message, L, &cipher), ZOK_OK));
    memset(plain, 0, sizeof plain);
    priv = private_key(STANDARD_D);
    REQUIRE(
        is(SDF_ExternalDecrypt_ECC(session, ZOK_ALG_SM2_ENCRYPT, &priv, &cipher, plain, &plain_len), ZOK_OK));
    REQUIRE(is(plain_len, L) && is_hex(plain, RECORD_MESSAGE));
    REQUIRE(is(ZOK_CloseSession(session), ZOK_OK));
    return 0;
}

static int multiplicative_record(void)
{
    void *session = NULL;
    const ECCrefPublicKey pub = public_key(STANDARD_PX, STANDARD_PY);
    const ECCrefPrivateKey priv = private_key(STANDARD_D);
    ECCCipher cipher;
    uint8_t message[L];
    uint8_t plain[L];
    uint32_t plain_len = 0;
    memset(&cipher, 0xee, sizeof cipher);
    from_hex(C1_X, cipher.x);
    from_hex(C1_Y, cipher.y);
    from_hex(NUMBER_CIPHER, cipher.C);
    from_hex(NUMBER_MESSAGE, message);
    REQUIRE(is(ZOK_OpenSession(&session, &sm2_of_session), ZOK_OK));
    REQUIRE(is(SDF_ExternalDecrypt_ECC(session, ZOK_ALG_MULTIPLICATIVE, &priv, &cipher, plain, &plain_len),
               ZOK_OK));
    REQUIRE(is(plain_len, L) && is_hex(plain, NUMBER_MESSAGE));
    REQUIRE(is(SDF_ExternalEncrytp_ECC(session, ZOK_ALG_MULTIPLICATIVE, &pub, message, L, &cipher), ZOK_OK));
    for (size_t i = 0; i < sizeof cipher.M; ++i) REQUIRE(is(cipher.M[i], 0));
    memset(plain, 0, sizeof plain);
    REQUIRE(is(SDF_ExternalDecrypt_ECC(session, ZOK_ALG_MULTIPLICATIVE, &priv, &cipher, plain, &plain_len),
               ZOK_OK));
    REQUIRE(is(plain_len, L) && is_hex(plain, NUMBER_MESSAGE));
    REQUIRE(is(ZOK_CloseSession(session), ZOK_OK));
    return 0;
}

const selftest_case session_encryption_cases[] = {
    {"session: sm2 decrypt", sm2_decrypt},
    {"session: sm2 encrypt", sm2_encrypt},
    {"session: sm2 record", sm2_record},
    {"session: multiplicative record", multiplicative_record},
    {NULL, NULL},
};

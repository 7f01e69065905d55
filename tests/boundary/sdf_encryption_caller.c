/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Encryption and decryption of sessions, called from C through the shared library. */
#include <zokecc/sdf.h>

#include "check.h"
#include "sm2_curve.h"

enum { L = 32, SHORT = 14, OVERHEAD = 1 + 2 * L + 32 };

/* 32 bytes, and below p as a number. */
static const uint8_t message[] = "a message as long as the curve's";

static void *session;
static ECCrefPublicKey pub;
static ECCrefPrivateKey priv;

/* The record for a message of L bytes. */
static void check_record(uint32_t algorithm) {
    ECCCipher cipher;
    uint8_t plain[L];
    uint32_t size = 0;

    memset(&cipher, 0xff, sizeof cipher);
    CHECK(SDF_ExternalEncrytp_ECC(session, algorithm, &pub, message, L - 1, &cipher) == ZOK_ERR_ARGUMENT);
    CHECK(SDF_ExternalEncrytp_ECC(session, algorithm, &pub, message, L, &cipher) == ZOK_OK);
    CHECK(memcmp(cipher.C, message, L) != 0);
    CHECK(SDF_ExternalDecrypt_ECC(session, algorithm, &priv, &cipher, plain, &size) == ZOK_OK);
    CHECK(size == L && memcmp(plain, message, L) == 0);
    CHECK(SDF_ExternalDecrypt_ECC(NULL, algorithm, &priv, &cipher, plain, &size) == ZOK_ERR_SESSION);
}

static void check_check_value(void) {
    ECCCipher cipher;
    uint8_t plain[L];
    uint32_t size = 0;

    CHECK(SDF_ExternalEncrytp_ECC(session, ZOK_ALG_SM2_ENCRYPT, &pub, message, L, &cipher) == ZOK_OK);
    cipher.M[31] ^= 1;
    CHECK(SDF_ExternalDecrypt_ECC(session, ZOK_ALG_SM2_ENCRYPT, &priv, &cipher, plain, &size) ==
          ZOK_ERR_INTERNAL);
}

/* The byte string for a message of any length. */
static void check_bytes(void) {
    uint8_t cipher[OVERHEAD + SHORT], plain[SHORT];
    uint32_t cipher_size = 0, size = 0;

    CHECK(ZOK_ExternalEncrytp_ECC(session, &pub, message, 0, cipher, &cipher_size) == ZOK_ERR_ARGUMENT);
    CHECK(ZOK_ExternalEncrytp_ECC(session, &pub, message, SHORT, cipher, &cipher_size) == ZOK_OK);
    CHECK(cipher_size == sizeof cipher && cipher[0] == 4);
    CHECK(ZOK_ExternalDecrypt_ECC(session, &priv, cipher, cipher_size, plain, &size) == ZOK_OK);
    CHECK(size == SHORT && memcmp(plain, message, SHORT) == 0);
    CHECK(ZOK_ExternalDecrypt_ECC(session, &priv, cipher, OVERHEAD, plain, &size) == ZOK_ERR_ARGUMENT);
    cipher[sizeof cipher - 1] ^= 1;
    CHECK(ZOK_ExternalDecrypt_ECC(session, &priv, cipher, cipher_size, plain, &size) == ZOK_ERR_INTERNAL);
}

int main(void) {
    const CurvePara curve = sm2_curve(HASH_ALG_SM3);
    CHECK(ZOK_OpenSession(&session, &curve) == ZOK_OK);
    CHECK(SDF_GenerateKeyPair_ECC(session, ZOK_ALG_SM2_KEY, 8 * L, &pub, &priv) == ZOK_OK);
    check_record(ZOK_ALG_SM2_ENCRYPT);
    check_record(ZOK_ALG_MULTIPLICATIVE);
    check_check_value();
    check_bytes();
    CHECK(ZOK_CloseSession(session) == ZOK_OK);
    return check_result();
}

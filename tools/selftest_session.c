/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Devices, sessions, keys and signatures. */
#include "selftest.h"

#include <string.h>

static const uint8_t identity[] = "1234567812345678";
static const uint8_t text[] = "message digest";
static const uint8_t sample[] = "sample";
enum { ID_LEN = sizeof identity - 1, TEXT_LEN = sizeof text - 1, SAMPLE_LEN = sizeof sample - 1 };

static int device_and_session(void)
{
    void *device = NULL;
    void *session = NULL;
    DEVICEINFO info;
    CurvePara off_curve = sm2_of_session;
    off_curve.Gy[0] ^= 1;
    REQUIRE(is(SDF_OpenDevice(&device), ZOK_OK) && is(SDF_OpenSession(device, &session), ZOK_OK));
    REQUIRE(is(SDF_GetDeviceInfo(session, &info), ZOK_OK) && is(info.device_version, 1));
    REQUIRE(is(ZOK_CurveParaCfg(session, 4, &off_curve), ZOK_ERR_INTERNAL));
    REQUIRE(is(ZOK_CurveParaCfg(session, 7, &sm2_of_session), ZOK_ERR_ARGUMENT));
    REQUIRE(is(ZOK_CurveParaCfg(session, 4, &sm2_of_session), ZOK_OK));
    REQUIRE(is(SDF_CloseSession(session), ZOK_OK) && is(SDF_CloseDevice(device), ZOK_OK));
    REQUIRE(is(SDF_OpenSession(NULL, &session), ZOK_ERR_DEVICE) &&
            is(SDF_CloseSession(NULL), ZOK_ERR_CLOSE_SESSION));
    return 0;
}

/* A new pair matches if one half verifies what the other signs. */
static int key_pair(void)
{
    void *session = NULL;
    ECCrefPublicKey pub;
    ECCrefPrivateKey priv;
    ECCSignature sig;
    REQUIRE(is(ZOK_OpenSession(&session, &p256_of_session), ZOK_OK));
    REQUIRE(is(SDF_GenerateKeyPair_ECC(session, ZOK_ALG_ECDSA_KEY, 255, &pub, &priv), ZOK_ERR_ARGUMENT));
    REQUIRE(is(SDF_GenerateKeyPair_ECC(session, ZOK_ALG_ECDSA_KEY, 8 * L, &pub, &priv), ZOK_OK));
    REQUIRE(is(SDF_ExternalSign_ECC(session, ZOK_ALG_ECDSA_SIGN, &priv, text, TEXT_LEN, &sig), ZOK_OK));
    REQUIRE(is(SDF_ExternalVerify_ECC(session, ZOK_ALG_ECDSA_SIGN, &pub, text, TEXT_LEN, &sig), ZOK_OK));
    REQUIRE(is(ZOK_CloseSession(session), ZOK_OK));
    return 0;
}

static int sm2_verify(void)
{
    void *session = NULL;
    const ECCrefPublicKey pub = public_key(STANDARD_PX, STANDARD_PY);
    ECCSignature sig;
    uint8_t Z[DIGEST_BYTES];
    uint8_t e[DIGEST_BYTES];
    uint32_t Z_len = 0;
    from_hex(SIGN_E, e);
    from_hex(SIGN_R, sig.r);
    from_hex(SIGN_S, sig.s);
    REQUIRE(is(ZOK_OpenSession(&session, &sm2_of_session), ZOK_OK));
    REQUIRE(is(ZOK_GenerateUserInfo(session, &pub, identity, ID_LEN, Z, &Z_len), ZOK_OK));
    REQUIRE(is(Z_len, DIGEST_BYTES) && is_hex(Z, SIGN_Z));
    REQUIRE(is(SDF_ExternalVerify_ECC(session, ZOK_ALG_SM2_SIGN, &pub, e, sizeof e, &sig), ZOK_OK));
    REQUIRE(is(
        ZOK_ExternalVerifyHash_ECC(session, ZOK_ALG_SM2_SIGN, &pub, text, TEXT_LEN, identity, ID_LEN, &sig),
        ZOK_OK));
    REQUIRE(is(ZOK_ExternalVerifyHash_ECC(session, ZOK_ALG_SM2_SIGN, &pub, text, TEXT_LEN, identity,
                                          ID_LEN - 1, &sig),
               ZOK_ERR_VERIFY));
    sig.s[L - 1] ^= 1;
    REQUIRE(is(SDF_ExternalVerify_ECC(session, ZOK_ALG_SM2_SIGN, &pub, e, sizeof e, &sig), ZOK_ERR_VERIFY));
    REQUIRE(is(ZOK_CloseSession(session), ZOK_OK));
    return 0;
}

static int sm2_sign(void)
{
    void *session = NULL;
    const ECCrefPublicKey pub = public_key(STANDARD_PX, STANDARD_PY);
    const ECCrefPrivateKey priv = private_key(STANDARD_D);
    const ECCrefPrivateKey zero = private_key("");
    ECCSignature sig;
    uint8_t e[DIGEST_BYTES];
    from_hex(SIGN_E, e);
    REQUIRE(is(ZOK_OpenSession(&session, &sm2_of_session), ZOK_OK));
    REQUIRE(is(SDF_ExternalSign_ECC(session, ZOK_ALG_SM2_SIGN, &priv, e, sizeof e, &sig), ZOK_OK));
    REQUIRE(memcmp(sig.r, e, L) != 0);
    REQUIRE(is(SDF_ExternalVerify_ECC(session, ZOK_ALG_SM2_SIGN, &pub, e, sizeof e, &sig), ZOK_OK));
    REQUIRE(
        is(ZOK_ExternalSignHash_ECC(session, ZOK_ALG_SM2_SIGN, &priv, text, TEXT_LEN, identity, ID_LEN, &sig),
           ZOK_OK));
    REQUIRE(is(SDF_ExternalVerify_ECC(session, ZOK_ALG_SM2_SIGN, &pub, e, sizeof e, &sig), ZOK_OK));
    REQUIRE(is(SDF_ExternalSign_ECC(session, ZOK_ALG_SM2_SIGN, &zero, e, sizeof e, &sig), ZOK_ERR_SIGN));
    REQUIRE(is(ZOK_CloseSession(session), ZOK_OK));
    return 0;
}

static int ecdsa_verify(void)
{
    void *session = NULL;
    const ECCrefPublicKey pub = public_key(ECDSA_QX, ECDSA_QY);
    ECCSignature sig;
    from_hex(ECDSA_R, sig.r);
    from_hex(ECDSA_S, sig.s);
    REQUIRE(is(ZOK_OpenSession(&session, &p256_of_session), ZOK_OK));
    REQUIRE(
        is(ZOK_ExternalVerifyHash_ECC(session, ZOK_ALG_ECDSA_SIGN, &pub, sample, SAMPLE_LEN, NULL, 0, &sig),
           ZOK_OK));
    REQUIRE(is(ZOK_ExternalVerifyHash_ECC(session, ZOK_ALG_ECDSA_SIGN, &pub, text, TEXT_LEN, NULL, 0, &sig),
               ZOK_ERR_VERIFY));
    REQUIRE(is(ZOK_CloseSession(session), ZOK_OK));
    return 0;
}

static int ecdsa_sign(void)
{
    void *session = NULL;
    const ECCrefPublicKey pub = public_key(ECDSA_QX, ECDSA_QY);
    const ECCrefPrivateKey priv = private_key(ECDSA_D);
    ECCSignature sig;
    REQUIRE(is(ZOK_OpenSession(&session, &p256_of_session), ZOK_OK));
    REQUIRE(
        is(ZOK_ExternalSignHash_ECC(session, ZOK_ALG_ECDSA_SIGN, &priv, sample, SAMPLE_LEN, NULL, 0, &sig),
           ZOK_OK));
    REQUIRE(
        is(ZOK_ExternalVerifyHash_ECC(session, ZOK_ALG_ECDSA_SIGN, &pub, sample, SAMPLE_LEN, NULL, 0, &sig),
           ZOK_OK));
    REQUIRE(is(ZOK_CloseSession(session), ZOK_OK));
    return 0;
}

const selftest_case session_cases[] = {
    {"session: device, curve", device_and_session},
    {"session: key pair", key_pair},
    {"session: sm2 verify", sm2_verify},
    {"session: sm2 sign", sm2_sign},
    {"session: ecdsa verify", ecdsa_verify},
    {"session: ecdsa sign", ecdsa_sign},
    {NULL, NULL},
};

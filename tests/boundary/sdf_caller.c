/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Devices, sessions and signatures, called from C through the shared library. */
#include <zokecc/zokecc.h>

#include "check.h"
#include "sm2_curve.h"

static const uint8_t message[] = "message digest";
static const uint8_t identity[] = "1234567812345678";

static void check_device(void) {
    void *device = NULL, *session = NULL;
    DEVICEINFO info;
    memset(&info, 0xff, sizeof info);

    CHECK(SDF_OpenDevice(&device) == ZOK_OK && device != NULL);
    CHECK(SDF_OpenSession(device, &session) == ZOK_OK && session != NULL);
    CHECK(SDF_GetDeviceInfo(session, &info) == ZOK_OK);
    CHECK(memcmp(info.issuer_name, "ZOKTECH", 8) == 0);
    CHECK(memcmp(info.device_name, "ZOK-ECC-T200", 13) == 0);
    CHECK(info.device_version == 1 && info.buffer_size == 0);
    CHECK(SDF_CloseSession(session) == ZOK_OK);
    CHECK(SDF_CloseDevice(device) == ZOK_OK);
    CHECK(SDF_CloseDevice(NULL) == ZOK_ERR_CLOSE_DEVICE);
}

static uint32_t verify(void *session, uint32_t algorithm, const ECCrefPublicKey *pub, uint32_t size,
                       const ECCSignature *signature) {
    return ZOK_ExternalVerifyHash_ECC(session, algorithm, pub, message, size, identity, sizeof identity - 1,
                                      signature);
}

static void check_signature(uint32_t key_algorithm, uint32_t algorithm, uint32_t hash_selector) {
    const CurvePara curve = sm2_curve(hash_selector);
    const uint32_t size = sizeof message - 1;
    void *session = NULL;
    ECCrefPublicKey pub;
    ECCrefPrivateKey priv;
    ECCSignature signature;

    CHECK(ZOK_OpenSession(&session, &curve) == ZOK_OK && session != NULL);
    CHECK(SDF_GenerateKeyPair_ECC(session, key_algorithm, 255, &pub, &priv) == ZOK_ERR_ARGUMENT);
    CHECK(SDF_GenerateKeyPair_ECC(session, key_algorithm, 256, &pub, &priv) == ZOK_OK);
    CHECK(pub.bits == 256 && priv.bits == 256);
    CHECK(ZOK_ExternalSignHash_ECC(session, algorithm, &priv, message, size, identity, sizeof identity - 1,
                                   &signature) == ZOK_OK);
    CHECK(verify(session, algorithm, &pub, size, &signature) == ZOK_OK);
    CHECK(verify(session, algorithm, &pub, size - 1, &signature) == ZOK_ERR_VERIFY);
    CHECK(verify(NULL, algorithm, &pub, size, &signature) == ZOK_ERR_SESSION);
    signature.s[31] ^= 1;
    CHECK(verify(session, algorithm, &pub, size, &signature) == ZOK_ERR_VERIFY);
    CHECK(ZOK_CloseSession(session) == ZOK_OK);
}

int main(void) {
    check_device();
    check_signature(ZOK_ALG_SM2_KEY, ZOK_ALG_SM2_SIGN, HASH_ALG_SM3);
    check_signature(ZOK_ALG_ECDSA_KEY, ZOK_ALG_ECDSA_SIGN, HASH_ALG_SHA256);
    return check_result();
}

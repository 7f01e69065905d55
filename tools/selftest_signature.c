/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Keys and signatures on the process-wide curve. */
#include "selftest.h"

#include <string.h>

enum { NEW_KEY = 0, GIVEN_KEY = 1 }; /* modes of Ecc_KeyPair_Gen */

static uint8_t digest_text[] = "message digest";
static uint8_t sample[] = "sample";
static const sm3_msg digest_message = {digest_text, 0, sizeof digest_text - 1};
static const sm3_msg sample_message = {sample, 0, sizeof sample - 1};

static int keys(void)
{
    uint8_t d_bytes[L];
    uint8_t new_bytes[L];
    const ecc_scalar d = {d_bytes, from_hex(STANDARD_D, d_bytes)};
    ecc_scalar key = {new_bytes, L};
    ecc_point_bytes P;
    ecc_point_bytes again;
    REQUIRE(is(Curve_Init(&sm2_of_process), 0));
    REQUIRE(is(Ecc_GenPubKey(&d, &P), 0) && is(P.length, L));
    REQUIRE(is_hex(P.x, STANDARD_PX) && is_hex(P.y, STANDARD_PY));
    REQUIRE(is(Ecc_KeyPair_Gen(&key, &P, NEW_KEY), 0) && is(key.length, L));
    REQUIRE(is(Ecc_KeyPair_Gen(&key, &again, GIVEN_KEY), 0));
    REQUIRE(is_bytes(P.x, again.x, L) && is_bytes(P.y, again.y, L));
    return 0;
}

static int sm2_verify(void)
{
    const ecc_point_bytes P = point_bytes(STANDARD_PX, STANDARD_PY);
    ecc_point_bytes sig = point_bytes(SIGN_R, SIGN_S);
    uint8_t Z[DIGEST_BYTES];
    from_hex(SIGN_Z, Z);
    REQUIRE(is(Curve_Init(&sm2_of_process), 0));
    REQUIRE(is(sm2_DigitalVeriy(&P, &digest_message, &sig, Z, HASH_ALG_SM3), 0));
    REQUIRE(is(sm2_DigitalVeriy(&P, &sample_message, &sig, Z, HASH_ALG_SM3), 1));
    sig.y[L - 1] ^= 1;
    REQUIRE(is(sm2_DigitalVeriy(&P, &digest_message, &sig, Z, HASH_ALG_SM3), 1));
    return 0;
}

static int sm2_sign(void)
{
    const ecc_point_bytes P = point_bytes(STANDARD_PX, STANDARD_PY);
    uint8_t d_bytes[L];
    uint8_t Z[DIGEST_BYTES];
    const ecc_scalar d = {d_bytes, from_hex(STANDARD_D, d_bytes)};
    ecc_point_bytes first;
    ecc_point_bytes second;
    from_hex(SIGN_Z, Z);
    REQUIRE(is(Curve_Init(&sm2_of_process), 0));
    REQUIRE(is(sm2_DigitalSign(&d, &digest_message, Z, &first, HASH_ALG_SM3), 0));
    REQUIRE(is(sm2_DigitalSign(&d, &digest_message, Z, &second, HASH_ALG_SM3), 0));
    REQUIRE(memcmp(first.x, second.x, L) != 0); /* never the same nonce twice */
    REQUIRE(is(sm2_DigitalVeriy(&P, &digest_message, &first, Z, HASH_ALG_SM3), 0));
    REQUIRE(is(sm2_DigitalVeriy(&P, &digest_message, &second, Z, HASH_ALG_SM3), 0));
    return 0;
}

static int ecdsa_verify(void)
{
    const ecc_point_bytes Q = point_bytes(ECDSA_QX, ECDSA_QY);
    ecc_point_bytes sig = point_bytes(ECDSA_R, ECDSA_S);
    REQUIRE(is(Curve_Init(&p256_of_process), 0));
    REQUIRE(is(Ecdsa_DigitalVeriy(&Q, &sample_message, &sig, HASH_ALG_SHA256), 1));
    REQUIRE(is(Ecdsa_DigitalVeriy(&Q, &digest_message, &sig, HASH_ALG_SHA256), 0));
    sig.x[0] ^= 1;
    REQUIRE(is(Ecdsa_DigitalVeriy(&Q, &sample_message, &sig, HASH_ALG_SHA256), 0));
    return 0;
}

static int ecdsa_sign(void)
{
    const ecc_point_bytes Q = point_bytes(ECDSA_QX, ECDSA_QY);
    uint8_t d_bytes[L];
    const ecc_scalar d = {d_bytes, from_hex(ECDSA_D, d_bytes)};
    ecc_point_bytes first;
    ecc_point_bytes second;
    REQUIRE(is(Curve_Init(&p256_of_process), 0));
    REQUIRE(is(Ecdsa_DigitalSign(&d, &sample_message, &first, HASH_ALG_SHA256), 0));
    REQUIRE(is(Ecdsa_DigitalSign(&d, &sample_message, &second, HASH_ALG_SHA256), 0));
    REQUIRE(memcmp(first.x, second.x, L) != 0);
    REQUIRE(is(Ecdsa_DigitalVeriy(&Q, &sample_message, &first, HASH_ALG_SHA256), 1));
    REQUIRE(is(Ecdsa_DigitalVeriy(&Q, &sample_message, &second, HASH_ALG_SHA256), 1));
    return 0;
}

const selftest_case signature_cases[] = {
    {"process: key pairs", keys},        {"process: sm2 verify", sm2_verify},
    {"process: sm2 sign", sm2_sign},     {"process: ecdsa verify", ecdsa_verify},
    {"process: ecdsa sign", ecdsa_sign}, {NULL, NULL},
};

/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* ECDH and SM2 key agreement in sessions. */
#include "selftest.h"

#include <string.h>

enum { KEY_BITS = 128, KEY_BYTES = KEY_BITS / 8 };

/* Both users of the standard's example have this identity. */
static const uint8_t identity[] = "1234567812345678";
enum { ID_LEN = sizeof identity - 1 };

/* Both users of the standard's example, and the results. */
typedef struct users {
    void *session;
    ECCrefPrivateKey dA, dB, rA, rB;
    ECCrefPublicKey PA, PB, RA, RB;
    uint8_t ZA[DIGEST_BYTES], ZB[DIGEST_BYTES];
    uint8_t key[KEY_BYTES];
    KeyAgreementResult result;
} users;

static int set_up(users *u)
{
    memset(u, 0, sizeof *u);
    u->dA = private_key(EXCHANGE_DA);
    u->dB = private_key(EXCHANGE_DB);
    u->rA = private_key(EXCHANGE_RA);
    u->rB = private_key(EXCHANGE_RB);
    u->PA = public_key(EXCHANGE_PAX, EXCHANGE_PAY);
    u->PB = public_key(EXCHANGE_PBX, EXCHANGE_PBY);
    u->RA = public_key(EXCHANGE_RAX, EXCHANGE_RAY);
    u->RB = public_key(EXCHANGE_RBX, EXCHANGE_RBY);
    from_hex(EXCHANGE_ZA, u->ZA);
    from_hex(EXCHANGE_ZB, u->ZB);
    u->result.key = u->key;
    return ZOK_OpenSession(&u->session, &sm2_of_session) == ZOK_OK;
}

/* True if the results are the standard's; then clears them. The initiator receives the value with 02. */
static int are_standard(users *u, const char *check, const char *send)
{
    const int result =
        is_hex(u->key, EXCHANGE_K) && is_hex(u->result.check, check) && is_hex(u->result.send, send);
    memset(u->key, 0, sizeof u->key);
    memset(&u->result, 0, sizeof u->result);
    u->result.key = u->key;
    return result;
}

static int ecdh(void)
{
    void *session = NULL;
    const ECCrefPrivateKey d = private_key(ECDH_D);
    const ECCrefPublicKey P = public_key(ECDH_PX, ECDH_PY);
    uint8_t secret[L];
    REQUIRE(is(ZOK_OpenSession(&session, &p256_of_session), ZOK_OK));
    REQUIRE(is(ZOK_ExternalEcdhKeyAgreement(session, &d, &P, secret), ZOK_OK) && is_hex(secret, ECDH_Z));
    REQUIRE(is(ZOK_ExternalEcdhKeyAgreement(session, &d, NULL, secret), ZOK_ERR_ARGUMENT));
    REQUIRE(is(ZOK_CloseSession(session), ZOK_OK));
    return 0;
}

static int with_identities(void)
{
    users u;
    REQUIRE(set_up(&u));
    REQUIRE(is(ZOK_SM2_GenerateKeyWithECC(u.session, KEY_BITS, identity, ID_LEN, identity, ID_LEN, &u.dA,
                                          &u.rA, &u.RA, &u.PB, &u.RB, &u.result),
               ZOK_OK));
    REQUIRE(are_standard(&u, EXCHANGE_S02, EXCHANGE_S03));
    REQUIRE(is(ZOK_SM2_GenerateResponseWithECC(u.session, KEY_BITS, identity, ID_LEN, identity, ID_LEN, &u.dB,
                                               &u.PA, &u.RA, &u.rB, &u.RB, &u.result),
               ZOK_OK));
    REQUIRE(are_standard(&u, EXCHANGE_S03, EXCHANGE_S02));
    REQUIRE(is(ZOK_CloseSession(u.session), ZOK_OK));
    return 0;
}

static int with_given_values(void)
{
    users u;
    REQUIRE(set_up(&u));
    REQUIRE(is(ZOK_GenerateKeyWithECC(u.session, KEY_BITS, u.ZA, DIGEST_BYTES, u.ZB, DIGEST_BYTES, &u.dA,
                                      &u.rA, &u.PB, &u.RB, &u.result),
               ZOK_OK));
    REQUIRE(are_standard(&u, EXCHANGE_S02, EXCHANGE_S03));
    REQUIRE(is(ZOK_GenerateResponseWithECC(u.session, KEY_BITS, u.ZA, DIGEST_BYTES, u.ZB, DIGEST_BYTES, &u.dB,
                                           &u.PA, &u.RA, &u.rB, &u.RB, &u.result),
               ZOK_OK));
    REQUIRE(are_standard(&u, EXCHANGE_S03, EXCHANGE_S02));
    u.RA.y[L - 1] ^= 1; /* off the curve */
    REQUIRE(is(ZOK_GenerateResponseWithECC(u.session, KEY_BITS, u.ZA, DIGEST_BYTES, u.ZB, DIGEST_BYTES, &u.dB,
                                           &u.PA, &u.RA, &u.rB, &u.RB, &u.result),
               ZOK_ERR_INTERNAL));
    REQUIRE(is(ZOK_CloseSession(u.session), ZOK_OK));
    return 0;
}

/* With random temporary keys both sides must agree. */
static int with_drawn_keys(void)
{
    users u;
    uint8_t other_key[KEY_BYTES];
    KeyAgreementResult other = {{0}, {0}, other_key};
    REQUIRE(set_up(&u));
    REQUIRE(is(ZOK_SM2_GenerateAgreementDataWithECC(u.session, &u.rA, &u.RA), ZOK_OK));
    REQUIRE(is(ZOK_SM2_GenerateAgreementDataAndKeyWithECC(u.session, KEY_BITS, identity, ID_LEN, identity,
                                                          ID_LEN, &u.dB, &u.PA, &u.RA, &u.RB, &other),
               ZOK_OK));
    REQUIRE(is(ZOK_SM2_GenerateKeyWithECC(u.session, KEY_BITS, identity, ID_LEN, identity, ID_LEN, &u.dA,
                                          &u.rA, &u.RA, &u.PB, &u.RB, &u.result),
               ZOK_OK));
    REQUIRE(is_bytes(u.key, other_key, KEY_BYTES) && !is_hex(u.key, EXCHANGE_K));
    REQUIRE(is_bytes(u.result.check, other.send, DIGEST_BYTES));
    REQUIRE(is_bytes(u.result.send, other.check, DIGEST_BYTES));
    REQUIRE(is(ZOK_CloseSession(u.session), ZOK_OK));
    return 0;
}

const selftest_case agreement_cases[] = {
    {"session: ecdh", ecdh},
    {"session: agreement, identities", with_identities},
    {"session: agreement, given values", with_given_values},
    {"session: agreement, drawn keys", with_drawn_keys},
    {NULL, NULL},
};

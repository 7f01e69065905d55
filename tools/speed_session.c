/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* The calls of sessions: one on sm2p256v1 with SM3, and one on P-256 with SHA-256. */
#include "speed.h"

#include <string.h>

enum { KEY_BITS = 128, KEY_BYTES = KEY_BITS / 8 };

static const uint8_t identity[] = "1234567812345678";
enum { ID_LEN = sizeof identity - 1 };

/* A session, a key pair on its curve, and signatures made with it. */
typedef struct side {
    void *session;
    uint32_t algorithm;
    ECCrefPrivateKey priv;
    ECCrefPublicKey pub;
    ECCSignature over_digest, over_message;
} side;

static side sm2, p256;
static uint8_t text[1024], digest[DIGEST_BYTES], flat[64 + FLAT_OVERHEAD], plain[64], secret[L];
static uint8_t key[KEY_BYTES];
static ECCrefPrivateKey r;
static ECCrefPublicKey R, other_R;
static KeyAgreementResult result = {{0}, {0}, key};
static uint32_t flat_len;

static int sign_message(side *s)
{
    return ZOK_ExternalSignHash_ECC(s->session, s->algorithm, &s->priv, text, sizeof text, identity, ID_LEN,
                                    &s->over_message) == ZOK_OK;
}

static int verify_message(const side *s)
{
    return ZOK_ExternalVerifyHash_ECC(s->session, s->algorithm, &s->pub, text, sizeof text, identity, ID_LEN,
                                      &s->over_message) == ZOK_OK;
}

static int sign_digest(side *s)
{
    return SDF_ExternalSign_ECC(s->session, s->algorithm, &s->priv, digest, sizeof digest, &s->over_digest) ==
           ZOK_OK;
}

static int verify_digest(const side *s)
{
    return SDF_ExternalVerify_ECC(s->session, s->algorithm, &s->pub, digest, sizeof digest,
                                  &s->over_digest) == ZOK_OK;
}

/* Both kinds of key pair are made in the same way. */
static int open_side(side *s, const CurvePara *curve, uint32_t algorithm)
{
    s->algorithm = algorithm;
    return ZOK_OpenSession(&s->session, curve) == ZOK_OK &&
           SDF_GenerateKeyPair_ECC(s->session, ZOK_ALG_SM2_KEY, 8 * L, &s->pub, &s->priv) == ZOK_OK &&
           sign_digest(s) && sign_message(s);
}

static int sm2_encrypt(void)
{
    return ZOK_ExternalEncrytp_ECC(sm2.session, &sm2.pub, text, sizeof plain, flat, &flat_len) == ZOK_OK;
}

static int temporary_key(void) { return ZOK_SM2_GenerateAgreementDataWithECC(sm2.session, &r, &R) == ZOK_OK; }

int prepare_session(void)
{
    memset(text, 0x5a, sizeof text);
    memset(digest, 0x5a, sizeof digest);
    return open_side(&sm2, &sm2_of_session, ZOK_ALG_SM2_SIGN) &&
           open_side(&p256, &p256_of_session, ZOK_ALG_ECDSA_SIGN) && sm2_encrypt() && temporary_key();
}

static int open_and_close(void)
{
    void *session = NULL;
    return ZOK_OpenSession(&session, &sm2_of_session) == ZOK_OK && ZOK_CloseSession(session) == ZOK_OK;
}

static int key_pair(void)
{
    ECCrefPublicKey pub;
    ECCrefPrivateKey priv;
    return SDF_GenerateKeyPair_ECC(sm2.session, ZOK_ALG_SM2_KEY, 8 * L, &pub, &priv) == ZOK_OK;
}

static int sm2_sign_digest(void) { return sign_digest(&sm2); }
static int sm2_verify_digest(void) { return verify_digest(&sm2); }
static int sm2_sign_message(void) { return sign_message(&sm2); }
static int sm2_verify_message(void) { return verify_message(&sm2); }
static int ecdsa_sign_digest(void) { return sign_digest(&p256); }
static int ecdsa_verify_digest(void) { return verify_digest(&p256); }

static int sm2_decrypt(void)
{
    uint32_t plain_len = 0;
    return ZOK_ExternalDecrypt_ECC(sm2.session, &sm2.priv, flat, flat_len, plain, &plain_len) == ZOK_OK;
}

static int ecdh(void)
{
    return ZOK_ExternalEcdhKeyAgreement(p256.session, &p256.priv, &p256.pub, secret) == ZOK_OK;
}

/* Both users have the same key; that does not change the work. */
static int agreement_initiator(void)
{
    return ZOK_SM2_GenerateKeyWithECC(sm2.session, KEY_BITS, identity, ID_LEN, identity, ID_LEN, &sm2.priv,
                                      &r, &R, &sm2.pub, &R, &result) == ZOK_OK;
}

static int agreement_responder(void)
{
    return ZOK_SM2_GenerateAgreementDataAndKeyWithECC(sm2.session, KEY_BITS, identity, ID_LEN, identity,
                                                      ID_LEN, &sm2.priv, &sm2.pub, &R, &other_R,
                                                      &result) == ZOK_OK;
}

const speed_operation session_operations[] = {
    {"session: open and close", open_and_close},
    {"session: key pair", key_pair},
    {"session: sm2 sign a digest", sm2_sign_digest},
    {"session: sm2 verify a digest", sm2_verify_digest},
    {"session: sm2 sign 1024 bytes", sm2_sign_message},
    {"session: sm2 verify 1024 bytes", sm2_verify_message},
    {"session: ecdsa sign, P-256", ecdsa_sign_digest},
    {"session: ecdsa verify, P-256", ecdsa_verify_digest},
    {"session: sm2 encrypt, 64 bytes", sm2_encrypt},
    {"session: sm2 decrypt, 64 bytes", sm2_decrypt},
    {"session: ecdh, P-256", ecdh},
    {"session: temporary key", temporary_key},
    {"session: agreement, initiator", agreement_initiator},
    {"session: agreement, responder", agreement_responder},
    {NULL, NULL},
};

/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Key agreement of sessions, both sides, called from C through the shared library. */
#include <zokecc/sdf.h>

#include "check.h"
#include "sm2_curve.h"

enum { L = 32, KEY_BITS = 128, KEY_BYTES = KEY_BITS / 8 };

/* A side of an agreement: a key pair, a temporary one, an identity, its Z, and the results. */
typedef struct side {
    ECCrefPrivateKey d, r;
    ECCrefPublicKey P, R;
    const uint8_t *id;
    uint32_t id_len;
    uint8_t Z[32], key[KEY_BYTES];
    KeyAgreementResult result;
} side;

static void *session;
static side A, B;

static void set_up(side *s, const char *id) {
    uint32_t Z_len = 0;
    memset(s, 0, sizeof *s);
    s->id = (const uint8_t *)id;
    s->id_len = (uint32_t)strlen(id);
    CHECK(SDF_GenerateKeyPair_ECC(session, ZOK_ALG_SM2_KEY, 8 * L, &s->P, &s->d) == ZOK_OK);
    CHECK(ZOK_GenerateUserInfo(session, &s->P, s->id, s->id_len, s->Z, &Z_len) == ZOK_OK && Z_len == 32);
}

static void forget_results(void) {
    memset(A.key, 1, sizeof A.key);
    memset(B.key, 2, sizeof B.key);
    memset(&A.result, 1, sizeof A.result);
    memset(&B.result, 2, sizeof B.result);
    A.result.key = A.key;
    B.result.key = B.key;
}

static int sides_agree(void) {
    return memcmp(A.key, B.key, KEY_BYTES) == 0 && memcmp(A.result.check, B.result.send, 32) == 0 &&
           memcmp(B.result.check, A.result.send, 32) == 0 && memcmp(A.result.check, A.result.send, 32) != 0;
}

static uint32_t initiator_by_identity(const side *peer) {
    return ZOK_SM2_GenerateKeyWithECC(session, KEY_BITS, A.id, A.id_len, peer->id, peer->id_len, &A.d, &A.r,
                                      &A.R, &B.P, &B.R, &A.result);
}

static void check_identities(void) {
    CHECK(ZOK_SM2_GenerateAgreementDataWithECC(session, &A.r, &A.R) == ZOK_OK);
    forget_results();
    CHECK(ZOK_SM2_GenerateAgreementDataAndKeyWithECC(session, KEY_BITS, A.id, A.id_len, B.id, B.id_len, &B.d,
                                                     &A.P, &A.R, &B.R, &B.result) == ZOK_OK);
    CHECK(initiator_by_identity(&B) == ZOK_OK && sides_agree());
    CHECK(initiator_by_identity(&A) == ZOK_OK && !sides_agree());

    CHECK(ZOK_SM2_GenerateResponseTmpKeyWithECC(session, &B.r, &B.R) == ZOK_OK);
    forget_results();
    CHECK(ZOK_SM2_GenerateResponseWithECC(session, KEY_BITS, A.id, A.id_len, B.id, B.id_len, &B.d, &A.P, &A.R,
                                          &B.r, &B.R, &B.result) == ZOK_OK);
    CHECK(initiator_by_identity(&B) == ZOK_OK && sides_agree());
}

static uint32_t initiator_by_Z(void) {
    return ZOK_GenerateKeyWithECC(session, KEY_BITS, A.Z, 32, B.Z, 32, &A.d, &A.r, &B.P, &B.R, &A.result);
}

static void check_given_Z(void) {
    CHECK(ZOK_GenerateAgreementDataWithECC(session, &A.r, &A.R) == ZOK_OK);
    forget_results();
    CHECK(ZOK_GenerateAgreementDataAndKeyWithECC(session, KEY_BITS, A.Z, 32, B.Z, 32, &B.d, &A.P, &A.R, &B.R,
                                                 &B.result) == ZOK_OK);
    CHECK(initiator_by_Z() == ZOK_OK && sides_agree());

    CHECK(ZOK_GenerateResponseTmpKeyWithECC(session, &B.r, &B.R) == ZOK_OK);
    forget_results();
    CHECK(ZOK_GenerateResponseWithECC(session, KEY_BITS, A.Z, 32, B.Z, 32, &B.d, &A.P, &A.R, &B.r, &B.R,
                                      &B.result) == ZOK_OK);
    CHECK(initiator_by_Z() == ZOK_OK && sides_agree());
    /* The values Z are those of the identities. */
    CHECK(initiator_by_identity(&B) == ZOK_OK && sides_agree());
    B.R.y[L - 1] ^= 1; /* off the curve */
    CHECK(initiator_by_Z() == ZOK_ERR_INTERNAL);
}

static void check_secret(void) {
    uint8_t alices[L], bobs[L];
    CHECK(ZOK_ExternalEcdhKeyAgreement(session, &A.d, &B.P, alices) == ZOK_OK);
    CHECK(ZOK_ExternalEcdhKeyAgreement(session, &B.d, &A.P, bobs) == ZOK_OK);
    CHECK(memcmp(alices, bobs, L) == 0 && memcmp(alices, A.P.x, L) != 0);
    CHECK(ZOK_ExternalEcdhKeyAgreement(NULL, &A.d, &B.P, alices) == ZOK_ERR_SESSION);
}

int main(void) {
    const CurvePara curve = sm2_curve(HASH_ALG_SM3);
    CHECK(ZOK_OpenSession(&session, &curve) == ZOK_OK);
    set_up(&A, "alice@example.org");
    set_up(&B, "bob@example.org");
    check_secret();
    check_identities();
    check_given_Z();
    CHECK(ZOK_CloseSession(session) == ZOK_OK);
    return check_result();
}

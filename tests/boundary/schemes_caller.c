/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* The calls on the process-wide curve, from C through the shared library. */
#include <zokecc/schemes.h>

#include "check.h"
#include "sm2_curve.h"

enum { L = 32, NEW_KEY = 0, GIVEN_KEY = 1, KEY_BYTES = 16 };

typedef struct key_pair {
    uint8_t bytes[L];
    ecc_scalar d;
    ecc_point_bytes Q;
} key_pair;

/* A message descriptor points to non-const bytes; as an input they are never changed. */
static uint8_t text[] = {'m', 'e', 's', 's', 'a', 'g', 'e', ' ', 'd', 'i', 'g', 'e', 's', 't'};
static uint8_t changed_text[] = {'M', 'e', 's', 's', 'a', 'g', 'e', ' ', 'd', 'i', 'g', 'e', 's', 't'};
static const sm3_msg message = {text, 0, sizeof text};
static const sm3_msg changed = {changed_text, 0, sizeof changed_text};
static const uint8_t ZA[32] = {1}, ZB[32] = {2};
static key_pair alice, bob;

static void make_key(key_pair *pair) {
    memset(pair, 0, sizeof *pair);
    pair->d.bytes = pair->bytes;
    pair->d.length = sizeof pair->bytes;
    CHECK(Ecc_KeyPair_Gen(&pair->d, &pair->Q, NEW_KEY) == 0);
    CHECK(pair->d.length == L && pair->Q.length == L);
}

static int same_point(const ecc_point_bytes *P, const ecc_point_bytes *Q) {
    return memcmp(P, Q, sizeof *P) == 0;
}

static void check_keys(void) {
    uint8_t two_bytes[1] = {2};
    const ecc_scalar two = {two_bytes, 1};
    ecc_point_bytes Q;

    memset(&Q, 0, sizeof Q);
    CHECK(Ecc_GenPubKey(&two, &Q) == 0);
    CHECK(Q.length == L && equals_hex(Q.x, SM2_2GX) && equals_hex(Q.y, SM2_2GY));
    memset(&Q, 0, sizeof Q);
    CHECK(Ecc_KeyPair_Gen(&alice.d, &Q, GIVEN_KEY) == 0 && same_point(&Q, &alice.Q));
}

static void check_ecdsa(void) {
    ecc_point_bytes sig;
    memset(&sig, 0, sizeof sig);
    CHECK(Ecdsa_DigitalSign(&alice.d, &message, &sig, HASH_ALG_SHA256) == 0 && sig.length == L);
    CHECK(Ecdsa_DigitalVeriy(&alice.Q, &message, &sig, HASH_ALG_SHA256) == 1);
    CHECK(Ecdsa_DigitalVeriy(&alice.Q, &changed, &sig, HASH_ALG_SHA256) == 0);
    CHECK(Ecdsa_DigitalVeriy(&bob.Q, &message, &sig, HASH_ALG_SHA256) == 0);
}

static void check_sm2_signature(void) {
    ecc_point_bytes sig;
    memset(&sig, 0, sizeof sig);
    CHECK(sm2_DigitalSign(&alice.d, &message, ZA, &sig, HASH_ALG_SM3) == 0 && sig.length == L);
    CHECK(sm2_DigitalVeriy(&alice.Q, &message, &sig, ZA, HASH_ALG_SM3) == 0);
    CHECK(sm2_DigitalVeriy(&alice.Q, &changed, &sig, ZA, HASH_ALG_SM3) == 1);
    CHECK(sm2_DigitalVeriy(&alice.Q, &message, &sig, ZB, HASH_ALG_SM3) == 1);
    CHECK(sm2_DigitalVeriy(&alice.Q, &message, NULL, ZA, HASH_ALG_SM3) == -1);
}

/* The plaintext is right, but the result is -1. */
static void check_sm2_encryption(void) {
    uint8_t cipher_bytes[1 + 2 * L + sizeof text + 32], plain_bytes[sizeof text];
    sm3_msg cipher = {cipher_bytes, 1, 0}, plain = {plain_bytes, 1, 0};

    memset(cipher_bytes, 0, sizeof cipher_bytes);
    memset(plain_bytes, 0, sizeof plain_bytes);
    CHECK(sm2_Encry(&alice.Q, &message, &cipher, HASH_ALG_SM3) == 0);
    CHECK(cipher.len_high == 0 && cipher.len_low == sizeof cipher_bytes && cipher_bytes[0] == 4);
    CHECK(sm2_Decry(&alice.d, &cipher, &plain, HASH_ALG_SM3) == -1);
    CHECK(plain.len_high == 0 && plain.len_low == sizeof text);
    CHECK(memcmp(plain_bytes, text, sizeof text) == 0);
}

static void check_eces(void) {
    uint8_t block[L], cipher[1 + 3 * L], back[L + 1], plain[L - 2];
    uint32_t size = 0;
    const int padding_end = L - (int)sizeof text - 1;

    CHECK(eces_format(L, text, L - 1, block, &size) == 1);
    CHECK(eces_format(L, text, sizeof text, block, &size) == 0 && size == L);
    CHECK(block[padding_end] == 0 && memcmp(block + padding_end + 1, text, sizeof text) == 0);
    block[0] = 0;                                           /* below p */
    for (int i = 1; i < padding_end; ++i) block[i] |= 0x80; /* a zero drawn there would end the padding */

    memset(back, 0xff, sizeof back);
    CHECK(Eces_Encry(&alice.Q, block, L, cipher, 3 * L) == 3 * L && cipher[0] == 4);
    CHECK(Eces_Decry(&alice.d, cipher, 3 * L, back) == L - 1);
    CHECK(memcmp(back, block + 1, L - 1) == 0 && back[L - 1] == 0);
    CHECK(eces_deformat(back, L - 1, plain, &size) == 0);
    CHECK(size == sizeof text && memcmp(plain, text, sizeof text) == 0);
    CHECK(eces_deformat(back, L, plain, &size) == 1);
}

static void check_ecdh(void) {
    uint8_t two_bytes[1] = {2}, alices[L], bobs[L];
    const ecc_scalar two = {two_bytes, 1};
    ecc_point_bytes G;

    memset(&G, 0, sizeof G);
    put_hex(G.x, SM2_GX);
    put_hex(G.y, SM2_GY);
    G.length = L;
    CHECK(Ecdh_KeyExChg(&two, &G, alices, L) == L && equals_hex(alices, SM2_2GX));
    CHECK(Ecdh_KeyExChg(&two, &G, alices, L - 1) == -1);
    CHECK(Ecdh_KeyExChg(&alice.d, &bob.Q, alices, L) == L);
    CHECK(Ecdh_KeyExChg(&bob.d, &alice.Q, bobs, L) == L);
    CHECK(memcmp(alices, bobs, L) == 0);
}

/* The initiator in two steps, the responder in one. */
static void check_split_exchange(void) {
    key_pair rA;
    ecc_point_bytes RA, RB;
    uint8_t S1[32], SA[32], S2[32], SB[32], KA[KEY_BYTES], KB[KEY_BYTES];

    make_key(&rA);
    memset(&RA, 0, sizeof RA);
    CHECK(sm2_KeyExChg_A1_3(&rA.d, &RA) == 0 && same_point(&RA, &rA.Q));
    CHECK(sm2_KeyExChg_B1_10(&bob.d, &alice.Q, &RA, ZA, ZB, KEY_BYTES, &RB, S2, SB, KB, HASH_ALG_SM3) == 0);
    CHECK(sm2_KeyExChg_A4_10(&rA.d, &RA, &alice.d, &bob.Q, &RB, ZA, ZB, KEY_BYTES, S1, SA, KA,
                             HASH_ALG_SM3) == 0);
    CHECK(memcmp(S1, SB, 32) == 0 && memcmp(S2, SA, 32) == 0 && memcmp(S1, S2, 32) != 0);
    CHECK(memcmp(KA, KB, KEY_BYTES) == 0);
}

/* Either side in one call: the key of the split calls, but no confirmation value in common. */
static void check_whole_exchange(void) {
    key_pair A, B;
    uint8_t A3[32], A2[32], B3[32], B2[32], KA[KEY_BYTES], KB[KEY_BYTES], split[KEY_BYTES], S1[32], SA[32];

    make_key(&A);
    make_key(&B);
    CHECK(sm2_KeyExChg(1, &A.d, &A.Q, &B.Q, &alice.d, &bob.Q, ZA, ZB, KEY_BYTES, A3, A2, KA, HASH_ALG_SM3) ==
          0);
    CHECK(sm2_KeyExChg(0, &B.d, &B.Q, &A.Q, &bob.d, &alice.Q, ZA, ZB, KEY_BYTES, B3, B2, KB, HASH_ALG_SM3) ==
          0);
    CHECK(sm2_KeyExChg_A4_10(&A.d, &A.Q, &alice.d, &bob.Q, &B.Q, ZA, ZB, KEY_BYTES, S1, SA, split,
                             HASH_ALG_SM3) == 0);
    CHECK(memcmp(KA, KB, KEY_BYTES) == 0 && memcmp(KA, split, KEY_BYTES) == 0);
    CHECK(memcmp(A3, B3, 32) != 0 && memcmp(A2, B2, 32) != 0 && memcmp(A2, S1, 32) != 0);
}

/* Multiplies nothing: zero bytes in y, and x unchanged. */
static void check_r_point(void) {
    static const uint8_t scalar[L] = {1}, zero[L];
    ecc_point_bytes R;
    memset(&R, 0xa5, sizeof R);
    CHECK(sm2_RPoint(scalar, L, &R) == 0);
    CHECK(R.length == L && memcmp(R.y, zero, L) == 0);
    CHECK(R.x[0] == 0xa5 && R.x[64] == 0xa5 && R.y[L] == 0xa5);
    CHECK(sm2_RPoint(NULL, L, &R) == 1);
}

int main(void) {
    const ecc_curve_bytes curve = sm2_process_curve();
    CHECK(Curve_Init(&curve) == 0);
    make_key(&alice);
    make_key(&bob);
    check_keys();
    check_ecdsa();
    check_sm2_signature();
    check_sm2_encryption();
    check_eces();
    check_ecdh();
    check_split_exchange();
    check_whole_exchange();
    check_r_point();
    return check_result();
}

/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* ECDH and the SM2 key exchange on the process-wide curve. */
#include "selftest.h"

#include <string.h>

enum { KEY_BYTES = 16, INITIATOR = 1, RESPONDER = 0 };

/* Both users of the standard's example. */
typedef struct users {
    uint8_t dA_bytes[L], dB_bytes[L], rA_bytes[L], rB_bytes[L], ZA[DIGEST_BYTES], ZB[DIGEST_BYTES];
    ecc_scalar dA, dB, rA, rB;
    ecc_point_bytes PA, PB, RA, RB;
} users;

static void set_scalar(ecc_scalar *scalar, uint8_t *bytes, const char *digits)
{
    scalar->bytes = bytes;
    scalar->length = from_hex(digits, bytes);
}

static int set_up(users *u)
{
    set_scalar(&u->dA, u->dA_bytes, EXCHANGE_DA);
    set_scalar(&u->dB, u->dB_bytes, EXCHANGE_DB);
    set_scalar(&u->rA, u->rA_bytes, EXCHANGE_RA);
    set_scalar(&u->rB, u->rB_bytes, EXCHANGE_RB);
    from_hex(EXCHANGE_ZA, u->ZA);
    from_hex(EXCHANGE_ZB, u->ZB);
    u->PA = point_bytes(EXCHANGE_PAX, EXCHANGE_PAY);
    u->PB = point_bytes(EXCHANGE_PBX, EXCHANGE_PBY);
    u->RA = point_bytes(EXCHANGE_RAX, EXCHANGE_RAY);
    u->RB = point_bytes(EXCHANGE_RBX, EXCHANGE_RBY);
    return Curve_Init(&sm2_of_process);
}

static int ecdh(void)
{
    uint8_t d_bytes[L];
    uint8_t secret[L];
    const ecc_scalar d = {d_bytes, from_hex(ECDH_D, d_bytes)};
    const ecc_point_bytes P = point_bytes(ECDH_PX, ECDH_PY);
    REQUIRE(is(Curve_Init(&p256_of_process), 0));
    REQUIRE(is(Ecdh_KeyExChg(&d, &P, secret, L), L) && is_hex(secret, ECDH_Z));
    REQUIRE(is(Ecdh_KeyExChg(&d, &P, secret, L - 1), -1));
    return 0;
}

static int initiator(void)
{
    users u;
    ecc_point_bytes RA;
    uint8_t S1[DIGEST_BYTES];
    uint8_t SA[DIGEST_BYTES];
    uint8_t key[KEY_BYTES];
    REQUIRE(is(set_up(&u), 0));
    REQUIRE(is(sm2_KeyExChg_A1_3(&u.rA, &RA), 0) && is_hex(RA.x, EXCHANGE_RAX) && is_hex(RA.y, EXCHANGE_RAY));
    REQUIRE(is(
        sm2_KeyExChg_A4_10(&u.rA, &RA, &u.dA, &u.PB, &u.RB, u.ZA, u.ZB, KEY_BYTES, S1, SA, key, HASH_ALG_SM3),
        0));
    REQUIRE(is_hex(key, EXCHANGE_K) && is_hex(S1, EXCHANGE_S02) && is_hex(SA, EXCHANGE_S03));
    return 0;
}

/* The responder draws rB itself: both sides must agree. */
static int responder(void)
{
    users u;
    uint8_t S1[DIGEST_BYTES];
    uint8_t S2[DIGEST_BYTES];
    uint8_t SA[DIGEST_BYTES];
    uint8_t SB[DIGEST_BYTES];
    uint8_t keys[2][KEY_BYTES];
    REQUIRE(is(set_up(&u), 0));
    REQUIRE(is(
        sm2_KeyExChg_B1_10(&u.dB, &u.PA, &u.RA, u.ZA, u.ZB, KEY_BYTES, &u.RB, S2, SB, keys[0], HASH_ALG_SM3),
        0));
    REQUIRE(!is_hex(u.RB.x, EXCHANGE_RBX));
    REQUIRE(is(sm2_KeyExChg_A4_10(&u.rA, &u.RA, &u.dA, &u.PB, &u.RB, u.ZA, u.ZB, KEY_BYTES, S1, SA, keys[1],
                                  HASH_ALG_SM3),
               0));
    REQUIRE(is_bytes(keys[0], keys[1], KEY_BYTES));
    REQUIRE(is_bytes(S1, SB, DIGEST_BYTES) && is_bytes(S2, SA, DIGEST_BYTES));
    return 0;
}

/* Both sides get the standard's key. Kept: the confirmation values are not the standard's and differ. */
static int both_sides_in_one_call(void)
{
    users u;
    uint8_t values[4][DIGEST_BYTES];
    uint8_t keys[2][KEY_BYTES];
    REQUIRE(is(set_up(&u), 0));
    REQUIRE(is(sm2_KeyExChg(INITIATOR, &u.rA, &u.RA, &u.RB, &u.dA, &u.PB, u.ZA, u.ZB, KEY_BYTES, values[0],
                            values[1], keys[0], HASH_ALG_SM3),
               0));
    REQUIRE(is(sm2_KeyExChg(RESPONDER, &u.rB, &u.RB, &u.RA, &u.dB, &u.PA, u.ZA, u.ZB, KEY_BYTES, values[2],
                            values[3], keys[1], HASH_ALG_SM3),
               0));
    REQUIRE(is_hex(keys[0], EXCHANGE_K) && is_hex(keys[1], EXCHANGE_K));
    REQUIRE(memcmp(values[0], values[2], DIGEST_BYTES) != 0 && !is_hex(values[1], EXCHANGE_S02));
    return 0;
}

const selftest_case exchange_cases[] = {
    {"process: ecdh", ecdh},
    {"process: sm2 exchange, initiator", initiator},
    {"process: sm2 exchange, responder", responder},
    {"process: sm2 exchange, either", both_sides_in_one_call},
    {NULL, NULL},
};

/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Hashes and random numbers, called from C through the shared library. */
#include <zokecc/hash.h>

#include "check.h"

/* FIPS 180-4 and GB/T 32905, first examples. */
#define SHA256_ABC "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"
#define SM3_ABC "66c7f0f462eeedd9d1f2d46bdc10e4e24167c4875cf2f7a2297da02b8f4ba8e0"
/* RFC 4231, case 2. */
#define HMAC_SHA256_JEFE "5bdcc146bf60754e6a042426089575c75a003f089d2739839dec58b964ec3843"

static void check_hashes(void) {
    const uint8_t abc[3] = {'a', 'b', 'c'};
    uint8_t digest[32];
    hash_msg message;

    mhash_sha256(abc, sizeof abc, digest);
    CHECK(equals_hex(digest, SHA256_ABC));

    memset(&message, 0, sizeof message);
    message.alg = HASH_ALG_SM3;
    message.data = abc;
    message.len_low = sizeof abc;
    CHECK(hash_byte(&message, digest) == 32);
    CHECK(equals_hex(digest, SM3_ABC));
    message.alg = HASH_ALG_SHA256;
    CHECK(hash_byte(&message, digest) == 32);
    CHECK(equals_hex(digest, SHA256_ABC));
}

static void check_hmac(void) {
    const char text[] = "what do ya want for nothing?", key[] = "Jefe";
    uint8_t mac[32];
    mhmac_sha256((const uint8_t *)text, (int32_t)strlen(text), (const uint8_t *)key, (int32_t)strlen(key),
                 mac, sizeof mac);
    CHECK(equals_hex(mac, HMAC_SHA256_JEFE));
}

static void check_session_calls(void) {
    const uint8_t abc[3] = {'a', 'b', 'c'};
    uint8_t digest[32];
    uint32_t size = 0;
    int anything = 0; /* the hash calls only test a session for null */

    CHECK(ZOK_SM3(NULL, abc, sizeof abc, digest, &size) == ZOK_ERR_SESSION);
    CHECK(ZOK_SM3(&anything, abc, sizeof abc, digest, &size) == ZOK_OK);
    CHECK(size == 32 && equals_hex(digest, SM3_ABC));
}

static void check_random(void) {
    uint8_t first[40], second[40];
    memset(first, 0, sizeof first);
    memset(second, 0, sizeof second);
    CHECK(gen_random(first, 39) == 0 && gen_random(second, 39) == 0);
    CHECK(memcmp(first, second, 39) != 0);
    CHECK(first[39] == 0 && second[39] == 0);
}

int main(void) {
    check_hashes();
    check_hmac();
    check_session_calls();
    check_random();
    return check_result();
}

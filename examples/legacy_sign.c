/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Signs a message with SM2 on the process-wide curve, without a session, and verifies it.
 *
 *     legacy_sign [MESSAGE [IDENTITY]]
 *
 * Prints Z, the public key and the signature (r, s) in hexadecimal. The exit status is 0 if the
 * signature verifies and is refused for another Z and for a changed message.
 *
 * These calls return small integers whose meaning differs from call to call; the comments in
 * zokecc/schemes.h explain them. The value Z, which a session computes by itself, is computed here.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <zokecc/curves.h>
#include <zokecc/schemes.h>

enum { L = 32, MAX_ID = 8191, HASH = HASH_ALG_SM3, NEW_KEY = 0 };

static void require(int condition, const char *what)
{
    if (condition) return;
    fprintf(stderr, "legacy_sign: %s\n", what);
    exit(EXIT_FAILURE);
}

/* Appends count bytes at `at` and returns the new end. */
static uint8_t *put(uint8_t *at, const uint8_t *bytes, size_t count)
{
    memcpy(at, bytes, count);
    return at + count;
}

/* Z = H(identity's length in bits, identity, a, b, G, public key), GB/T 32918.2 section 5.5. */
static void make_z(const char *id, const ecc_point_bytes *pub, uint8_t z[32])
{
    static uint8_t input[2 + MAX_ID + 6 * L];
    const size_t id_len = strlen(id);
    require(id_len <= MAX_ID, "the identity is too long: its bits are counted in two bytes");
    uint8_t *end = input;
    *end++ = (uint8_t)(8 * id_len >> 8);
    *end++ = (uint8_t)(8 * id_len);
    end = put(end, (const uint8_t *)id, id_len);
    end = put(end, zokecc_sm2p256v1_process.a, L);
    end = put(end, zokecc_sm2p256v1_process.b, L);
    end = put(end, zokecc_sm2p256v1_process.Gx, L);
    end = put(end, zokecc_sm2p256v1_process.Gy, L);
    end = put(end, pub->x, L);
    end = put(end, pub->y, L);
    const hash_msg message = {HASH, input, 0, (uint32_t)(end - input)};
    require(hash_byte(&message, z) == 32, "hash");
}

static void print_hex(const char *label, const uint8_t *bytes)
{
    printf("%-2s = ", label);
    for (int i = 0; i < L; ++i) printf("%02x", bytes[i]);
    printf("\n");
}

int main(int argc, char **argv)
{
    char standard_text[] = "The pump station opens at six.";
    char *text = argc > 1 && argv[1][0] != '\0' ? argv[1] : standard_text;
    const char *id = argc > 2 ? argv[2] : "1234567812345678";
    const sm3_msg message = {(uint8_t *)text, 0, (uint32_t)strlen(text)}; /* the 0 is ignored */

    /* Once, before any other call of this program that uses the curve; other threads must wait. */
    require(Curve_Init(&zokecc_sm2p256v1_process) == 0, "install the curve");

    /* A scalar is a pointer and a length. When a key is generated, the length is the capacity on entry
     * and the number of bytes written on return: 0 would mean that the key is lost. */
    uint8_t key_bytes[L];
    ecc_scalar key = {key_bytes, sizeof key_bytes};
    ecc_point_bytes pub, sig;
    require(Ecc_KeyPair_Gen(&key, &pub, NEW_KEY) == 0 && key.length == L, "make a key pair");

    /* 0 is success. The signature is a record like a point: r in x, s in y. */
    uint8_t z[32];
    make_z(id, &pub, z);
    require(sm2_DigitalSign(&key, &message, z, &sig, HASH) == 0, "sign");
    print_hex("Z", z);
    print_hex("x", pub.x);
    print_hex("y", pub.y);
    print_hex("r", sig.x);
    print_hex("s", sig.y);

    /* 0 is valid, 1 is not, and -1 means that the signature could not be checked. (ECDSA in the
     * same header is the other way round: there 1 is valid.) */
    require(sm2_DigitalVeriy(&pub, &message, &sig, z, HASH) == 0, "verify");
    printf("verified: signed by \"%s\"\n", id);
    z[0] ^= 1;
    require(sm2_DigitalVeriy(&pub, &message, &sig, z, HASH) == 1, "another Z was not refused");
    z[0] ^= 1;
    text[0] ^= 1;
    require(sm2_DigitalVeriy(&pub, &message, &sig, z, HASH) == 1, "a changed message was not refused");
    printf("refused: the same signature for another Z, and for a changed message\n");

    memset(key_bytes, 0, sizeof key_bytes); /* in a product use a call that is not optimised away */
    return EXIT_SUCCESS;
}

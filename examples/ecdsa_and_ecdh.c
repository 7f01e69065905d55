/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * ECDSA and ECDH with P-256 as the process-wide curve, with points sent as octet strings.
 *
 *     ecdsa_and_ecdh
 *
 * Alice and Bob each sign the public key that they send, read the other's, and compute the same
 * secret. The exit status is 0 if they do, and if somebody else's signature and a point off the
 * curve are refused.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <zokecc/curves.h>
#include <zokecc/schemes.h>

enum {
    L = 32, /* bytes of a coordinate on this curve */
    HASH = HASH_ALG_SHA256,
    NEW_KEY = 0,    /* mode of Ecc_KeyPair_Gen */
    COMPRESSED = 1, /* form of ecc_PointToByte: 02 or 03, and x */
    VALID = 1       /* returned by Ecdsa_DigitalVeriy, unlike every other call */
};

/* What goes over the channel: a point in 33 bytes and a signature over them. */
typedef struct letter {
    uint8_t point[1 + L];
    ecc_point_bytes sig;
} letter;

/* A signing key, whose public half the other side knows, and a key for this agreement. */
typedef struct user {
    uint8_t sign_bytes[L], ecdh_bytes[L];
    ecc_scalar sign_key, ecdh_key;
    ecc_point_bytes sign_pub, ecdh_pub;
} user;

static void require(int condition, const char *what)
{
    if (condition) return;
    fprintf(stderr, "ecdsa_and_ecdh: %s\n", what);
    exit(EXIT_FAILURE);
}

static void make_key(ecc_scalar *key, uint8_t *bytes, ecc_point_bytes *pub)
{
    key->bytes = bytes;
    key->length = L; /* in: capacity; out: bytes written */
    require(Ecc_KeyPair_Gen(key, pub, NEW_KEY) == 0 && key->length == L, "make a key pair");
}

static void make_keys(user *u)
{
    make_key(&u->sign_key, u->sign_bytes, &u->sign_pub);
    make_key(&u->ecdh_key, u->ecdh_bytes, &u->ecdh_pub);
}

static letter write_letter(const user *from)
{
    letter out;
    /* In: the capacity; returned: the bytes written, or -1 if that is too small. */
    require(ecc_PointToByte(&from->ecdh_pub, COMPRESSED, out.point, sizeof out.point) == 1 + L, "encode");
    const sm3_msg message = {out.point, 0, sizeof out.point};
    require(Ecdsa_DigitalSign(&from->sign_key, &message, &out.sig, HASH) == 0, "sign");
    return out;
}

static int is_signed_by(letter *in, const user *from)
{
    const sm3_msg message = {in->point, 0, sizeof in->point};
    return Ecdsa_DigitalVeriy(&from->sign_pub, &message, &in->sig, HASH) == VALID;
}

/* The secret is x of d * P in L bytes; derive a key from it before use. */
static void make_secret(const user *u, const ecc_point_bytes *peer, uint8_t secret[L])
{
    static const uint8_t zero[L];
    /* L is success. If out of memory the result is L, too, and the secret is zero. */
    require(Ecdh_KeyExChg(&u->ecdh_key, peer, secret, L) == L, "make the secret");
    require(memcmp(secret, zero, L) != 0, "the secret is zero");
}

int main(void)
{
    user alice, bob;
    ecc_point_bytes from_alice, from_bob, nobody;
    uint8_t alices[L], bobs[L];

    require(Curve_Init(&zokecc_secp256r1_process) == 0, "install the curve");
    make_keys(&alice);
    make_keys(&bob);
    letter a = write_letter(&alice), b = write_letter(&bob); /* a goes to Bob, b goes to Alice */

    /* Accept a letter only if the right person signed it. */
    require(is_signed_by(&a, &alice) && is_signed_by(&b, &bob), "a letter was not accepted");
    require(!is_signed_by(&a, &bob), "somebody else's letter was accepted");

    /* Decoding recovers y and checks that the point is on the curve. Ecdh_KeyExChg does not, so
     * decode every point from outside first. */
    require(ecc_ByteToPoint(a.point, sizeof a.point, &from_alice) == 0, "decode Alice's point");
    require(ecc_ByteToPoint(b.point, sizeof b.point, &from_bob) == 0, "decode Bob's point");
    require(memcmp(from_alice.y, alice.ecdh_pub.y, L) == 0, "another point came back");

    make_secret(&alice, &from_bob, alices);
    make_secret(&bob, &from_alice, bobs);
    require(memcmp(alices, bobs, L) == 0, "the secrets differ");
    printf("the same secret on both sides, from two signed points of %d bytes\n", 1 + L);

    uint8_t off_curve[1 + 2 * L] = {4}; /* 04: both coordinates uncompressed, here with y = 0 */
    memcpy(off_curve + 1, bob.ecdh_pub.x, L);
    require(ecc_ByteToPoint(off_curve, sizeof off_curve, &nobody) == -1, "a point off the curve passed");
    printf("refused: a letter by somebody else, and a point off the curve\n");

    memset(&alice, 0, sizeof alice); /* in a product use a call that is not optimised away */
    memset(&bob, 0, sizeof bob);
    memset(alices, 0, sizeof alices);
    memset(bobs, 0, sizeof bobs);
    return EXIT_SUCCESS;
}

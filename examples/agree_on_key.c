/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Two users agree on a key with SM2 over an open channel, and each makes sure that the other
 * has it, too.
 *
 *     agree_on_key
 *
 * Prints the key. The exit status is 0 if both sides have the same key and their confirmation
 * values match, and if they do not match for somebody with another identity. Both users run in
 * this one program; comments show what goes over the channel.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <zokecc/curves.h>
#include <zokecc/sdf.h>

enum { KEY_BITS = 128, KEY_BYTES = KEY_BITS / 8, CONFIRMATION_BYTES = 32 };

/* A user's data: a session, a key pair, an identity, and the results of the agreement. */
typedef struct user {
    void *session;
    ECCrefPrivateKey priv;
    ECCrefPublicKey pub;
    const char *id;
    uint8_t key[KEY_BYTES];
    KeyAgreementResult result;
} user;

static void require(int condition, const char *what)
{
    if (condition) return;
    fprintf(stderr, "agree_on_key: %s\n", what);
    exit(EXIT_FAILURE);
}

/* Every session call returns a status; ZOK_OK is success. */
static void check(uint32_t status, const char *step)
{
    if (status != ZOK_OK) fprintf(stderr, "status %08x: ", (unsigned)status);
    require(status == ZOK_OK, step);
}

static const uint8_t *bytes(const char *text) { return (const uint8_t *)text; }
static uint32_t length(const char *text) { return (uint32_t)strlen(text); }

/* Compares every byte, so that the time does not reveal how many match. */
static int same(const uint8_t *a, const uint8_t *b, int count)
{
    int difference = 0;
    for (int i = 0; i < count; ++i) difference |= a[i] ^ b[i];
    return difference == 0;
}

/* Checks a public key from outside: both coordinates below p, and the point on the curve. The calls that
 * use the key do not check this. */
static int is_valid(const CurvePara *curve, const ECCrefPublicKey *key)
{
    mint p, a, b;
    ecc_point Q = {0};
    octetstring_to_mint(curve->p, 32, &p);
    octetstring_to_mint(curve->a, 32, &a);
    octetstring_to_mint(curve->b, 32, &b);
    octetstring_to_mint(key->x, 32, &Q.x);
    octetstring_to_mint(key->y, 32, &Q.y);
    return key->bits == 256 && mint_compare(&Q.x, &p) < 0 && mint_compare(&Q.y, &p) < 0 &&
           ecc_test_point(&Q, &a, &b, &p) == 0;
}

static void set_up(user *u, const char *id)
{
    memset(u, 0, sizeof *u);
    u->id = id;
    u->result.key = u->key; /* the library writes KEY_BYTES bytes there */
    /* Both sides need the same curve and the same hash: SM3 in this record. */
    check(ZOK_OpenSession(&u->session, &zokecc_sm2p256v1), "open a session");
    check(SDF_GenerateKeyPair_ECC(u->session, ZOK_ALG_SM2_KEY, 256, &u->pub, &u->priv), "make a key pair");
}

/* One agreement; Alice begins, and believes the other side to be bobs_name. Each side has
 * the other's public key from a trusted source and checks it all the same; the calls check only
 * R. Returns whether both confirmations match. */
static int agree(user *alice, user *bob, const char *bobs_name)
{
    ECCrefPrivateKey rA;
    ECCrefPublicKey RA, RB;

    require(is_valid(&zokecc_sm2p256v1, &bob->pub), "Bob's public key");
    require(is_valid(&zokecc_sm2p256v1, &alice->pub), "Alice's public key");

    /* Alice makes a temporary key pair for this one agreement.        Alice -> Bob: RA */
    check(ZOK_SM2_GenerateAgreementDataWithECC(alice->session, &rA, &RA), "Alice's temporary key");

    /* Bob makes his temporary key, the shared key and both confirmation values in one call. The
     * initiator's identity and length come first on both sides.       Bob -> Alice: RB, send */
    check(ZOK_SM2_GenerateAgreementDataAndKeyWithECC(bob->session, KEY_BITS, bytes(alice->id),
                                                     length(alice->id), bytes(bob->id), length(bob->id),
                                                     &bob->priv, &alice->pub, &RA, &RB, &bob->result),
          "Bob's key");

    /* Alice computes the same from her side.                          Alice -> Bob: send */
    check(ZOK_SM2_GenerateKeyWithECC(alice->session, KEY_BITS, bytes(alice->id), length(alice->id),
                                     bytes(bobs_name), length(bobs_name), &alice->priv, &rA, &RA, &bob->pub,
                                     &RB, &alice->result),
          "Alice's key");

    /* No call compares: each application compares what it received with its own "check", and must
     * not use the key before that. */
    memset(&rA, 0, sizeof rA); /* use a temporary key only once */
    return same(alice->result.check, bob->result.send, CONFIRMATION_BYTES) &&
           same(bob->result.check, alice->result.send, CONFIRMATION_BYTES);
}

int main(void)
{
    user alice, bob;
    set_up(&alice, "alice@example.org");
    set_up(&bob, "bob@example.org");

    require(agree(&alice, &bob, bob.id), "the confirmation values differ");
    require(same(alice.key, bob.key, KEY_BYTES), "the keys differ");
    printf("agreed, %d bits: ", (int)KEY_BITS);
    for (int i = 0; i < KEY_BYTES; ++i) printf("%02x", alice.key[i]); /* never in a product */

    /* Every status is ZOK_OK here, too. Only the confirmation values show the mistake. */
    require(!agree(&alice, &bob, "carol@example.org"), "another identity was confirmed");
    require(!same(alice.key, bob.key, KEY_BYTES), "another identity gave the same key");
    printf("\nnot confirmed: Alice took the other side for Carol\n");

    check(ZOK_CloseSession(alice.session), "close Alice's session");
    check(ZOK_CloseSession(bob.session), "close Bob's session");
    memset(&alice, 0, sizeof alice); /* in a product use a call that is not optimised away */
    memset(&bob, 0, sizeof bob);
    return EXIT_SUCCESS;
}

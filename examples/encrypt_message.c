/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Encrypts a message for a public key with SM2, decrypts it, and shows that changed bytes are
 * detected.
 *
 *     encrypt_message [MESSAGE]
 *
 * The exit status is 0 if the message comes back unchanged and every changed ciphertext is refused.
 *
 * The key pair and the nonces come from the C library's rand. A product must link its own rand, srand
 * and time, based on a trustworthy source.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <zokecc/curves.h>
#include <zokecc/sdf.h>

enum {
    L = 32,                   /* bytes of a coordinate on this curve */
    OVERHEAD = 1 + 2 * L + 32 /* a ciphertext minus the message: 04, C1 = (x1, y1), C3 */
};

static void fail(const char *what)
{
    fprintf(stderr, "encrypt_message: %s\n", what);
    exit(EXIT_FAILURE);
}

/* Every session call returns a status; ZOK_OK is success. */
static void check(uint32_t status, const char *step)
{
    if (status == ZOK_OK) return;
    fprintf(stderr, "status %08x: ", (unsigned)status);
    fail(step);
}

/* Checks a public key from outside: both coordinates below p, and the point on the curve. The calls that
 * use the key do not check this. */
static int is_valid(const CurvePara *curve, const ECCrefPublicKey *key)
{
    mint p, a, b;
    ecc_point Q = {0};
    octetstring_to_mint(curve->p, L, &p);
    octetstring_to_mint(curve->a, L, &a);
    octetstring_to_mint(curve->b, L, &b);
    octetstring_to_mint(key->x, L, &Q.x);
    octetstring_to_mint(key->y, L, &Q.y);
    return key->bits == 8 * L && mint_compare(&Q.x, &p) < 0 && mint_compare(&Q.y, &p) < 0 &&
           ecc_test_point(&Q, &a, &b, &p) == 0;
}

/* A ciphertext with one changed bit must be refused. The plaintext may be written before the
 * check value is compared, so after any result other than ZOK_OK discard it unread. */
static void expect_refusal(void *session, const ECCrefPrivateKey *priv, uint8_t *cipher, uint32_t cipher_len,
                           uint8_t *plain, uint32_t position)
{
    uint32_t plain_len = 0;
    cipher[position] ^= 1;
    const uint32_t status = ZOK_ExternalDecrypt_ECC(session, priv, cipher, cipher_len, plain, &plain_len);
    cipher[position] ^= 1;
    memset(plain, 0, cipher_len - OVERHEAD);
    if (status == ZOK_OK) fail("a changed ciphertext was decrypted");
    printf("refused: byte %u changed, status %08x\n", (unsigned)position, (unsigned)status);
}

int main(int argc, char **argv)
{
    const char *text = argc > 1 ? argv[1] : "The pump station opens at six.";
    const size_t text_len = strlen(text);
    /* An empty message cannot be encrypted. The length is a signed 32-bit number. */
    if (text_len < 1 || text_len > 1000000) fail("the message is empty or too long");
    const int32_t message_len = (int32_t)text_len;

    void *session = NULL;
    ECCrefPublicKey pub;
    ECCrefPrivateKey priv;
    check(ZOK_OpenSession(&session, &zokecc_sm2p256v1), "open a session");
    check(SDF_GenerateKeyPair_ECC(session, ZOK_ALG_SM2_KEY, 8 * L, &pub, &priv), "make a key pair");

    /* The ciphertext's size is known in advance: the message's plus 97 bytes. No capacity is passed. */
    uint32_t cipher_len = 0, plain_len = 0;
    uint8_t *cipher = malloc(text_len + OVERHEAD);
    uint8_t *plain = malloc(text_len);
    if (cipher == NULL || plain == NULL) fail("no memory");

    /* The sender needs only the public key, and checks it, because it comes from outside. */
    if (!is_valid(&zokecc_sm2p256v1, &pub)) fail("not a public key of this curve");
    ECCrefPublicKey other = pub;
    other.y[L - 1] ^= 1;
    if (is_valid(&zokecc_sm2p256v1, &other)) fail("a point off the curve was accepted");
    check(ZOK_ExternalEncrytp_ECC(session, &pub, (const uint8_t *)text, message_len, cipher, &cipher_len),
          "encrypt");
    if (cipher_len != text_len + OVERHEAD) fail("the ciphertext has the wrong length");
    printf("encrypted: %u bytes of message, %u of ciphertext\n", (unsigned)text_len, (unsigned)cipher_len);

    /* The receiver. A ciphertext from outside must be at least one byte longer than OVERHEAD, which
     * the call checks, and its plaintext buffer OVERHEAD shorter than the ciphertext, which it cannot. */
    check(ZOK_ExternalDecrypt_ECC(session, &priv, cipher, cipher_len, plain, &plain_len), "decrypt");
    if (plain_len != text_len || memcmp(plain, text, text_len) != 0) fail("a different message came back");
    printf("decrypted: %.*s\n", (int)plain_len, (const char *)plain);

    /* C1, C2 and C3: any change is detected. */
    expect_refusal(session, &priv, cipher, cipher_len, plain, 0);              /* the leading 04 */
    expect_refusal(session, &priv, cipher, cipher_len, plain, 1 + L / 2);      /* x1 */
    expect_refusal(session, &priv, cipher, cipher_len, plain, 1 + 2 * L);      /* C2, the message */
    expect_refusal(session, &priv, cipher, cipher_len, plain, cipher_len - 1); /* C3, the check value */

    /* The caller must clear records, in a product with a call that is not optimised away; a
     * session holds no secret. */
    memset(&priv, 0, sizeof priv);
    free(plain);
    free(cipher);
    check(ZOK_CloseSession(session), "close the session");
    return EXIT_SUCCESS;
}

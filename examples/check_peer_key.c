/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Checks a public key that comes from outside, as every program must before it verifies, encrypts or agrees
 * on a key with it: the calls themselves do not.
 *
 *     check_peer_key
 *
 * The exit status is 0 if a good key passes and every bad one is refused. The last part shows the risk of
 * omitting the check.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <zokecc/curves.h>
#include <zokecc/sdf.h>

enum { L = 32 };

static void require(int condition, const char *what)
{
    if (condition) return;
    fprintf(stderr, "check_peer_key: %s\n", what);
    exit(EXIT_FAILURE);
}

/* True if the key is a point of the curve: of the right size, with both coordinates below p, and on the
 * curve. On curves with cofactor 1, as all of zokecc/curves.h are, nothing else is needed. */
static int is_valid(const CurvePara *curve, uint32_t size, const ECCrefPublicKey *key)
{
    ecc_point P;
    mint p, a, b;
    if (key->bits != 8 * size) return 0;
    octetstring_to_mint(curve->p, size, &p);
    octetstring_to_mint(curve->a, size, &a);
    octetstring_to_mint(curve->b, size, &b);
    P.infinity = 0;
    octetstring_to_mint(key->x, size, &P.x);
    octetstring_to_mint(key->y, size, &P.y);
    if (mint_compare(&P.x, &p) >= 0 || mint_compare(&P.y, &p) >= 0) return 0;
    return ecc_test_point(&P, &a, &b, &p) == 0;
}

/* What an attacker can send without any private key: zero bytes, and matching numbers. The formulas treat
 * (0, 0) as a point of order two, so for an even r + s its multiple vanishes, and r = e + x of s * G. */
static void forge(void *session, const uint8_t e[L], ECCrefPublicKey *key, ECCSignature *sig)
{
    ECCrefPrivateKey s;
    ECCrefPublicKey point;
    mint number, x, r, t, n;
    uint32_t size = 0;
    octetstring_to_mint(zokecc_sm2p256v1.n, L, &n);
    memset(key, 0, sizeof *key);
    key->bits = 8 * L;
    do {
        require(SDF_GenerateKeyPair_ECC(session, ZOK_ALG_SM2_KEY, 8 * L, &point, &s) == ZOK_OK, "draw s");
        octetstring_to_mint(e, L, &number);
        octetstring_to_mint(point.x, L, &x);
        mint_mod_reduce(&x, &n, &x);
        mint_mod_add(&number, &x, &n, &r);
        octetstring_to_mint(s.K, L, &number);
        mint_mod_add(&number, &r, &n, &t);
    } while ((t.words[0] & 1) != 0);
    require(mint_to_fixedlen_os(&r, L, L, &size, sig->r) == 0, "write r");
    memcpy(sig->s, s.K, L);
}

int main(void)
{
    const CurvePara *curve = &zokecc_sm2p256v1;
    static const uint8_t e[L] = {0x5a, 1, 2, 3};
    void *session = NULL;
    ECCrefPublicKey good, bad;
    ECCrefPrivateKey priv;
    ECCSignature sig;
    memset(&good, 0, sizeof good);
    require(ZOK_OpenSession(&session, curve) == ZOK_OK, "open a session");
    require(SDF_GenerateKeyPair_ECC(session, ZOK_ALG_SM2_KEY, 8 * L, &good, &priv) == ZOK_OK, "make a key");
    memset(&priv, 0, sizeof priv);

    require(is_valid(curve, L, &good), "a good key was refused");
    bad = good;
    bad.y[L - 1] ^= 1;
    require(!is_valid(curve, L, &bad), "a point off the curve passed");
    bad = good;
    bad.bits = 0;
    require(!is_valid(curve, L, &bad), "a key of no size passed");
    memset(bad.x, 0xff, L);
    bad.bits = 8 * L;
    require(!is_valid(curve, L, &bad), "an x of p and above passed");
    memset(&bad, 0, sizeof bad);
    bad.bits = 8 * L;
    require(!is_valid(curve, L, &bad), "a key of zero bytes passed");
    require(!is_valid(&zokecc_secp256r1, L, &good), "a point of another curve passed");
    printf("the good key passes; refused: off the curve, no size, x above p, zero bytes, another curve\n");

    forge(session, e, &bad, &sig);
    const int fooled = SDF_ExternalVerify_ECC(session, ZOK_ALG_SM2_SIGN, &bad, e, L, &sig) == ZOK_OK;
    require(fooled, "the forged signature did not verify");
    printf("without the check: a signature that nobody made verifies under a key of zero bytes\n");
    require(ZOK_CloseSession(session) == ZOK_OK, "close the session");
    return EXIT_SUCCESS;
}

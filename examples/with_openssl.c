/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Exchanges an SM2 key, signatures and ciphertexts with OpenSSL inside one program.
 *
 *     with_openssl
 *
 * OpenSSL reads our key, verifies our signature and decrypts our ciphertext, and we do the same with its.
 * The exit status is 0 if all of that worked. DER is read and written by sources of tools/.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <zokecc/sdf.h>

#include "ec_key.h"
#include "formats.h"

static const named_curve *curve;
static const uint8_t message[] = "The pump station opens at six.", id[] = "alice@example.org";
enum { SIZE = sizeof message - 1, ID_SIZE = sizeof id - 1, ROOM = SIZE + CIPHER_OVERHEAD };

static void require(int condition, const char *what)
{
    if (condition) return;
    fprintf(stderr, "with_openssl: %s\n", what);
    exit(EXIT_FAILURE);
}

/* Converts our records to PKCS #8 in DER, which OpenSSL accepts. */
static EVP_PKEY *to_openssl(const ECCrefPrivateKey *priv, const ECCrefPublicKey *pub)
{
    ec_key key = {.curve = curve, .has_private = 1, .point = {4}, .point_size = 65};
    uint8_t der[MAX_KEY_DER];
    const uint8_t *at = der;
    memcpy(key.d, priv->K, 32);
    memcpy(key.point + 1, pub->x, 32);
    memcpy(key.point + 33, pub->y, 32);
    EVP_PKEY *out = d2i_AutoPrivateKey(NULL, &at, (long)ec_key_to_der(&key, KEY_PKCS8, der, sizeof der));
    clear_secret(der, sizeof der);
    clear_secret(&key, sizeof key);
    require(out != NULL, "OpenSSL did not take the key");
    return out;
}

/* OpenSSL hashes Z and the message. Both sides must set the same identity. */
static void signatures(void *session, EVP_PKEY *key, const ECCrefPrivateKey *priv, const ECCrefPublicKey *pub)
{
    uint8_t der[MAX_SIGNATURE_BYTES];
    size_t size = sizeof der;
    ECCSignature sig;
    EVP_MD_CTX *context = EVP_MD_CTX_new();
    EVP_PKEY_CTX *options = EVP_PKEY_CTX_new(key, NULL);
    EVP_MD_CTX_set_pkey_ctx(context, options);
    require(EVP_PKEY_CTX_set1_id(options, id, ID_SIZE) == 1, "set the identity");
    require(EVP_DigestSignInit(context, NULL, EVP_sm3(), NULL, key) == 1 &&
                EVP_DigestSign(context, der, &size, message, SIZE) == 1,
            "OpenSSL did not sign");
    require(read_signature(curve, SIGNATURE_DER, der, size, &sig) == NULL, "not a signature");
    require(ZOK_ExternalVerifyHash_ECC(session, ZOK_ALG_SM2_SIGN, pub, message, SIZE, id, ID_SIZE, &sig) ==
                ZOK_OK,
            "OpenSSL's signature did not verify");

    require(ZOK_ExternalSignHash_ECC(session, ZOK_ALG_SM2_SIGN, priv, message, SIZE, id, ID_SIZE, &sig) ==
                ZOK_OK,
            "sign");
    size = write_signature(curve, SIGNATURE_DER, &sig, der);
    require(EVP_DigestVerifyInit(context, NULL, EVP_sm3(), NULL, key) == 1 &&
                EVP_DigestVerify(context, der, size, message, SIZE) == 1,
            "OpenSSL did not verify our signature");
    EVP_MD_CTX_free(context);
    EVP_PKEY_CTX_free(options);
}

static void encryption(void *session, EVP_PKEY *key, const ECCrefPrivateKey *priv, const ECCrefPublicKey *pub)
{
    uint8_t native[ROOM], der[ROOM], plain[ROOM];
    uint32_t native_size = 0, plain_size = 0;
    size_t size = sizeof plain;
    cipher_parts parts;
    EVP_PKEY_CTX *context = EVP_PKEY_CTX_new(key, NULL);

    require(ZOK_ExternalEncrytp_ECC(session, pub, message, SIZE, native, &native_size) == ZOK_OK, "encrypt");
    require(read_cipher(curve, CIPHER_C1C2C3, native, native_size, &parts) == NULL, "not a ciphertext");
    const size_t ours = write_cipher(curve, CIPHER_DER, &parts, der, sizeof der);
    require(EVP_PKEY_decrypt_init(context) == 1 && EVP_PKEY_decrypt(context, plain, &size, der, ours) == 1,
            "OpenSSL did not decrypt");
    require(size == SIZE && memcmp(plain, message, SIZE) == 0, "OpenSSL decrypted something else");

    size = sizeof der;
    require(EVP_PKEY_encrypt_init(context) == 1 && EVP_PKEY_encrypt(context, der, &size, message, SIZE) == 1,
            "OpenSSL did not encrypt");
    EVP_PKEY_CTX_free(context);
    require(read_cipher(curve, CIPHER_DER, der, size, &parts) == NULL, "not DER");
    native_size = (uint32_t)write_cipher(curve, CIPHER_C1C2C3, &parts, native, sizeof native);
    require(ZOK_ExternalDecrypt_ECC(session, priv, native, native_size, plain, &plain_size) == ZOK_OK,
            "decrypt");
    require(plain_size == SIZE && memcmp(plain, message, SIZE) == 0, "decrypted something else");
}

int main(void)
{
    void *session = NULL;
    ECCrefPublicKey pub;
    ECCrefPrivateKey priv;
    curve = curve_by_name("sm2p256v1");
    require(ZOK_OpenSession(&session, curve->record) == ZOK_OK, "open a session");
    require(SDF_GenerateKeyPair_ECC(session, ZOK_ALG_SM2_KEY, 256, &pub, &priv) == ZOK_OK, "make a key pair");
    EVP_PKEY *key = to_openssl(&priv, &pub);
    signatures(session, key, &priv, &pub);
    encryption(session, key, &priv, &pub);
    printf("a key, signatures and ciphertexts went to OpenSSL and back\n");
    EVP_PKEY_free(key);
    clear_secret(&priv, sizeof priv);
    require(ZOK_CloseSession(session) == ZOK_OK, "close the session");
    return EXIT_SUCCESS;
}

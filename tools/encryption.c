/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* encrypt and decrypt. */
#include <stdlib.h>
#include <string.h>

#include <zokecc/hash.h>
#include <zokecc/status.h>

#include "command.h"
#include "formats.h"
#include "key_math.h"

/* The library's lengths have 31 bits; this leaves room for the rest of a ciphertext. */
enum { MAX_PLAIN = 0x7fffffff - 1024 };

static int chosen_form(const options *o, cipher_form *form)
{
    const int index = o->format == NULL ? CIPHER_DER : index_of(o->format, cipher_forms);
    if (index < 0)
        return misuse("unknown form %s: use der, c1c3c2, c1c2c3, c1c3c2-no04 or c1c2c3-no04", o->format);
    *form = (cipher_form)index;
    return DONE;
}

/* The library's own form is 04, C1, C2, C3. */
static int encrypt_native(const options *o, const ec_key *key, const ECCrefPublicKey *pub,
                          const content *plain, uint8_t *native, uint32_t *native_size)
{
    uint32_t hash = 0;
    void *session = NULL;
    int status = chosen_hash(o, HASH_ALG_SM3, &hash);
    if (status == DONE) status = open_session(key->curve, hash, &session);
    if (status != DONE) return status;
    begin_long_work(o, "encrypting", plain->size);
    const uint32_t result =
        ZOK_ExternalEncrytp_ECC(session, pub, plain->bytes, (int32_t)plain->size, native, native_size);
    end_long_work();
    ZOK_CloseSession(session);
    return result == ZOK_OK ? DONE : misuse("encrypting: %s", zokecc_status_text(result));
}

static int write_in_form(const options *o, const named_curve *curve, cipher_form form, const uint8_t *native,
                         size_t native_size)
{
    cipher_parts parts;
    const size_t capacity = native_size + CIPHER_OVERHEAD;
    const char *fault = read_cipher(curve, CIPHER_C1C2C3, native, native_size, &parts);
    uint8_t *out = malloc(capacity);
    const size_t size = fault != NULL || out == NULL ? 0 : write_cipher(curve, form, &parts, out, capacity);
    const int status = size == 0 ? misuse("no memory for the ciphertext") : write_result(o, out, size);
    free(out);
    return status;
}

int run_encrypt(const options *o)
{
    ec_key key;
    ECCrefPublicKey pub;
    content plain;
    cipher_form form = CIPHER_DER;
    uint32_t native_size = 0;
    if (o->key == NULL) return misuse("missing -k FILE, the recipient's public key");
    int status = chosen_form(o, &form);
    if (status == DONE) status = load_public_key(o, o->key, &key, &pub);
    if (status == DONE) status = read_content(o, argument(o, 0), MAX_PLAIN, &plain);
    if (status != DONE) return status;
    uint8_t *native = plain.size > 0 ? malloc(plain.size + CIPHER_OVERHEAD) : NULL;
    if (plain.size == 0)
        status = misuse("nothing to encrypt: SM2 needs at least one byte");
    else if (native == NULL)
        status = misuse("no memory for the ciphertext");
    else
        status = encrypt_native(o, &key, &pub, &plain, native, &native_size);
    drop_content(&plain);
    if (status == DONE) status = write_in_form(o, key.curve, form, native, native_size);
    free(native);
    return status;
}

static int decrypt_native(const options *o, const named_curve *curve, const ECCrefPrivateKey *priv,
                          const uint8_t *native, size_t size, content *plain)
{
    uint32_t hash = 0, plain_size = 0;
    void *session = NULL;
    int status = chosen_hash(o, HASH_ALG_SM3, &hash);
    if (status == DONE) status = open_session(curve, hash, &session);
    if (status != DONE) return status;
    begin_long_work(o, "decrypting", size);
    const uint32_t result =
        ZOK_ExternalDecrypt_ECC(session, priv, native, (uint32_t)size, plain->bytes, &plain_size);
    end_long_work();
    ZOK_CloseSession(session);
    plain->size = plain_size;
    if (result == ZOK_OK) return DONE;
    return invalid("the ciphertext is not for this key, is damaged, or has another form (-f)");
}

/* Writes nothing if the check value differs. */
static int decrypt_parts(const options *o, const named_curve *curve, const ECCrefPrivateKey *priv,
                         const cipher_parts *parts)
{
    const size_t capacity = parts->c2_size + CIPHER_OVERHEAD;
    content plain = {NULL, 0, NULL, capacity};
    uint8_t *native = malloc(capacity);
    int status = DONE;
    plain.block = malloc(capacity);
    plain.bytes = plain.block;
    if (native == NULL || plain.block == NULL) {
        status = misuse("no memory for the message");
    } else {
        const size_t size = write_cipher(curve, CIPHER_C1C2C3, parts, native, capacity);
        status = decrypt_native(o, curve, priv, native, size, &plain);
    }
    if (status == DONE) status = write_result(o, plain.bytes, plain.size);
    drop_content(&plain);
    free(native);
    return status;
}

int run_decrypt(const options *o)
{
    ec_key key;
    ECCrefPrivateKey priv;
    content file;
    cipher_parts parts;
    cipher_form form = CIPHER_DER;
    int status = chosen_form(o, &form);
    if (status == DONE) status = load_private_key(o, &key, &priv);
    if (status != DONE) return status;
    clear_secret(key.d, sizeof key.d);
    status = read_content(o, argument(o, 0), MAX_PLAIN, &file);
    if (status == DONE) {
        const char *fault = read_cipher(key.curve, form, file.bytes, file.size, &parts);
        /* The library does not check C1, and a point off the curve would reveal something about the key. */
        if (fault == NULL && coordinates_fault(key.curve, parts.x, parts.y) != NULL)
            fault = "C1 of the ciphertext is not on the key's curve: another form (-f), or damaged";
        status = fault != NULL ? invalid("%s", fault) : decrypt_parts(o, key.curve, &priv, &parts);
        drop_content(&file);
    }
    clear_secret(&priv, sizeof priv);
    return status;
}

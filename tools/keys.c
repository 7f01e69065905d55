/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* keygen, pubkey and check. */
#include <stdio.h>
#include <string.h>

#include <zokecc/status.h>

#include "command.h"
#include "key_math.h"

enum { TRIES = 8 };

static const char *const private_forms[] = {"sec1", "pkcs8", NULL};
static const char *const public_forms[] = {"spki", "spki-compressed", NULL};

/* Writes a key as PEM, or as DER with -D. */
static int write_key(const options *o, const char *path, const ec_key *key, key_form form)
{
    char text[MAX_KEY_PEM];
    size_t size = 0;
    if (o->der)
        size = ec_key_to_der(key, form, (uint8_t *)text, sizeof text);
    else
        size = ec_key_to_pem(key, form, text, sizeof text);
    const int status = size == 0 ? misuse("the key cannot be written in this form")
                                 : write_key_file(o, path, text, size, form != KEY_SPKI);
    clear_secret(text, sizeof text);
    return status;
}

/* True if a signature made with the private key verifies with the public key. */
static int works(void *session, const named_curve *curve, const ECCrefPrivateKey *priv,
                 const ECCrefPublicKey *pub)
{
    static const uint8_t e[DIGEST_SIZE] = {0x5a, 0xa5, 1, 2, 3, 4, 5, 6, 7, 8};
    const uint32_t algorithm = curve->is_sm2 ? ZOK_ALG_SM2_SIGN : ZOK_ALG_ECDSA_SIGN;
    ECCSignature sig;
    return SDF_ExternalSign_ECC(session, algorithm, priv, e, curve->size, &sig) == ZOK_OK &&
           SDF_ExternalVerify_ECC(session, algorithm, pub, e, curve->size, &sig) == ZOK_OK;
}

/* The library draws once and checks nothing; an unusable key is drawn again. */
static int generate(const named_curve *curve, ec_key *key)
{
    void *session = NULL;
    ECCrefPrivateKey priv;
    ECCrefPublicKey pub, same;
    int status = open_session(curve, curve->record->hash_selector, &session);
    if (status != DONE) return status;
    memset(key, 0, sizeof *key);
    key->curve = curve;
    for (int i = 0; i < TRIES && !key->has_private; ++i) {
        memset(&pub, 0, sizeof pub);
        memset(&priv, 0, sizeof priv);
        const uint32_t result = SDF_GenerateKeyPair_ECC(
            session, curve->is_sm2 ? ZOK_ALG_SM2_KEY : ZOK_ALG_ECDSA_KEY, 8u * curve->size, &pub, &priv);
        if (result != ZOK_OK) {
            status = misuse("%s", zokecc_status_text(result));
            break;
        }
        memcpy(key->d, priv.K, curve->size);
        key->point_size = record_to_point(curve, &pub, 0, key->point);
        key->has_private = 1;
        if (public_to_record(key, &same) != NULL || !works(session, curve, &priv, &pub)) key->has_private = 0;
    }
    clear_secret(&priv, sizeof priv);
    ZOK_CloseSession(session);
    if (status == DONE && !key->has_private) status = misuse("no usable key was generated");
    return status;
}

int run_keygen(const options *o)
{
    int status = DONE;
    ec_key key;
    const named_curve *curve = chosen_curve(o, &status);
    const int form = o->format == NULL ? KEY_PKCS8 : index_of(o->format, private_forms);
    if (status != DONE) return status;
    if (curve == NULL) return misuse("missing -c CURVE: see `zokecc help curves`");
    if (form < 0) return misuse("unknown form %s: a new key is sec1 or pkcs8", o->format);
    if (o->out == NULL) return misuse("missing -o FILE, or -o - for standard output");
    status = generate(curve, &key);
    if (status == DONE) status = write_key(o, o->out, &key, (key_form)form);
    if (status == DONE && o->pub != NULL) status = write_key(o, o->pub, &key, KEY_SPKI);
    clear_secret(&key, sizeof key);
    return status;
}

int run_pubkey(const options *o)
{
    ec_key key;
    ECCrefPublicKey pub;
    const int form = o->format == NULL ? 0 : index_of(o->format, public_forms);
    if (form < 0) return misuse("unknown form %s: use spki, spki-compressed or convert", o->format);
    const int status = load_public_key(o, argument(o, 0), &key, &pub);
    if (status != DONE) return status;
    key.point_size = record_to_point(key.curve, &pub, form, key.point);
    return write_key(o, o->out, &key, KEY_SPKI);
}

static void print_number(const char *label, const uint8_t *bytes, size_t size)
{
    printf("%s ", label);
    for (size_t i = 0; i < size; ++i) printf("%02x", bytes[i]);
    printf("\n");
}

int run_check(const options *o)
{
    ec_key key;
    ECCrefPublicKey pub;
    const char *fault = NULL;
    const int status = read_key(o, argument(o, 0), &key, &fault);
    if (status != DONE) return status;
    const int private = fault == NULL && key.has_private;
    if (fault == NULL) fault = public_to_record(&key, &pub);
    clear_secret(key.d, sizeof key.d);
    if (fault != NULL) return invalid("%s: %s", name_of_input(argument(o, 0)), fault);
    if (o->quiet) return DONE;
    printf("valid %s key on %s\n", private ? "private" : "public", key.curve->name);
    print_number("x", pub.x, key.curve->size);
    print_number("y", pub.y, key.curve->size);
    return DONE;
}

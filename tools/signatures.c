/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* sign and verify, and computing what is signed. */
#include <stdio.h>
#include <string.h>

#include <zokecc/hash.h>
#include <zokecc/status.h>

#include "command.h"
#include "formats.h"
#include "key_math.h"

enum { TRIES = 8, Z_SIZE = DIGEST_SIZE };

static const char *const algorithms[] = {"sm2", "ecdsa", NULL};

/* The choices made by -k, -a, -f and -d. */
typedef struct scheme {
    ec_key key;
    ECCrefPublicKey pub;
    int sm2;
    uint32_t algorithm;
    signature_form form;
} scheme;

static int choose_scheme(const options *o, scheme *s)
{
    const int form = o->format == NULL ? SIGNATURE_DER : index_of(o->format, signature_forms);
    const int algorithm = o->algorithm == NULL ? 0 : index_of(o->algorithm, algorithms);
    if (form < 0) return misuse("unknown form %s: a signature is der or raw", o->format);
    if (algorithm < 0) return misuse("unknown algorithm %s: use sm2 or ecdsa", o->algorithm);
    s->form = (signature_form)form;
    s->sm2 = o->algorithm == NULL ? s->key.curve->is_sm2 : algorithm == 0;
    s->algorithm = s->sm2 ? ZOK_ALG_SM2_SIGN : ZOK_ALG_ECDSA_SIGN;
    if (!s->sm2 && (o->id != NULL || o->id_hex != NULL))
        return misuse("ECDSA has no identity: drop -i, or use -a sm2");
    return DONE;
}

static int make_z(const options *o, const ec_key *key, const ECCrefPublicKey *pub, uint32_t hash,
                  uint8_t z[Z_SIZE])
{
    uint8_t id[MAX_ID];
    uint32_t id_size = 0, z_size = 0;
    void *session = NULL;
    int status = chosen_id(o, id, &id_size);
    if (status == DONE) status = open_session(key->curve, hash, &session);
    if (status != DONE) return status;
    const uint32_t result = ZOK_GenerateUserInfo(session, pub, id, id_size, z, &z_size);
    ZOK_CloseSession(session);
    return result == ZOK_OK ? DONE : misuse("Z: %s", zokecc_status_text(result));
}

int make_e(const options *o, const ec_key *key, const ECCrefPublicKey *pub, int sm2, content *message,
           uint8_t e[DIGEST_SIZE], uint32_t *e_size)
{
    uint32_t hash = 0;
    int status = chosen_hash(o, sm2 ? HASH_ALG_SM3 : HASH_ALG_SHA256, &hash);
    uint8_t *start = message->bytes;
    if (status == DONE && sm2) {
        start -= Z_SIZE; /* into the headroom */
        status = make_z(o, key, pub, hash, start);
    }
    if (status != DONE) return status;
    begin_long_work(o, "hashing", message->size);
    status = hash_content(hash, start, message->size + (size_t)(message->bytes - start), e);
    end_long_work();
    *e_size = DIGEST_SIZE;
    return status;
}

/* With -d the input is the value to sign. */
static int take_e(const options *o, const content *input, uint8_t e[DIGEST_SIZE], uint32_t *e_size, int sm2)
{
    if (o->hash != NULL || o->id != NULL || o->id_hex != NULL)
        return misuse("with -d nothing is hashed: drop -H and -i");
    if (sm2 && input->size != DIGEST_SIZE)
        return misuse("e has 32 bytes, the hash of Z and the message; got %lu bytes",
                      (unsigned long)input->size);
    if (input->size == 0 || input->size > 64) return misuse("a digest has 1 to 64 bytes");
    *e_size = input->size < DIGEST_SIZE ? (uint32_t)input->size : DIGEST_SIZE;
    memcpy(e, input->bytes, *e_size);
    return DONE;
}

/* Reads the input and computes e from it. */
static int read_e(const options *o, const scheme *s, uint8_t e[DIGEST_SIZE], uint32_t *e_size)
{
    content input;
    int status = read_content(o, argument(o, 0), SIZE_MAX / 4, &input);
    if (status != DONE) return status;
    status = o->prehashed ? take_e(o, &input, e, e_size, s->sm2)
                          : make_e(o, &s->key, &s->pub, s->sm2, &input, e, e_size);
    drop_content(&input);
    /* Other implementations of ECDSA truncate the digest to the size of the order; every order here fills its
     * bytes. */
    if (!s->sm2 && *e_size > s->key.curve->size) *e_size = s->key.curve->size;
    return status;
}

/* A few signatures in a million are wrong (see docs/security.md), so each is verified. */
static int sign_e(const scheme *s, const ECCrefPrivateKey *priv, const uint8_t *e, uint32_t e_size,
                  ECCSignature *sig)
{
    void *session = NULL;
    const int status = open_session(s->key.curve, HASH_ALG_SM3, &session);
    if (status != DONE) return status;
    uint32_t result = ZOK_ERR_VERIFY;
    for (int i = 0; i < TRIES && result == ZOK_ERR_VERIFY; ++i) {
        memset(sig, 0, sizeof *sig);
        result = SDF_ExternalSign_ECC(session, s->algorithm, priv, e, e_size, sig);
        if (result == ZOK_OK) result = SDF_ExternalVerify_ECC(session, s->algorithm, &s->pub, e, e_size, sig);
    }
    ZOK_CloseSession(session);
    return result == ZOK_OK ? DONE : misuse("signing: %s", zokecc_status_text(result));
}

int run_sign(const options *o)
{
    scheme s;
    ECCrefPrivateKey priv;
    ECCSignature sig;
    uint8_t e[DIGEST_SIZE], out[MAX_SIGNATURE_BYTES];
    uint32_t e_size = 0;
    int status = load_private_key(o, &s.key, &priv);
    if (status != DONE) return status;
    clear_secret(s.key.d, sizeof s.key.d);
    status = point_to_record(s.key.curve, s.key.point, s.key.point_size, &s.pub) == NULL ? DONE : MISUSE;
    if (status == DONE) status = choose_scheme(o, &s);
    if (status == DONE) status = read_e(o, &s, e, &e_size);
    if (status == DONE) status = sign_e(&s, &priv, e, e_size, &sig);
    clear_secret(&priv, sizeof priv);
    if (status != DONE) return status;
    return write_result(o, out, write_signature(s.key.curve, s.form, &sig, out));
}

static int read_signature_file(const options *o, const scheme *s, ECCSignature *sig)
{
    content file;
    const int status = read_content(o, o->signature, MAX_KEY_DER, &file);
    if (status != DONE) return status;
    const char *fault = read_signature(s->key.curve, s->form, file.bytes, file.size, sig);
    drop_content(&file);
    return fault == NULL ? DONE : invalid("%s: %s", o->signature, fault);
}

int run_verify(const options *o)
{
    scheme s;
    ECCSignature sig;
    uint8_t e[DIGEST_SIZE];
    uint32_t e_size = 0;
    void *session = NULL;
    if (o->key == NULL) return misuse("missing -k FILE, the public key");
    if (o->signature == NULL) return misuse("missing -s FILE, the signature");
    if (strcmp(o->signature, "-") == 0) return misuse("the signature cannot come from standard input");
    int status = load_public_key(o, o->key, &s.key, &s.pub);
    if (status == DONE) status = choose_scheme(o, &s);
    if (status == DONE) status = read_signature_file(o, &s, &sig);
    if (status == DONE) status = read_e(o, &s, e, &e_size);
    if (status == DONE) status = open_session(s.key.curve, HASH_ALG_SM3, &session);
    if (status != DONE) return status;
    const uint32_t result = SDF_ExternalVerify_ECC(session, s.algorithm, &s.pub, e, e_size, &sig);
    ZOK_CloseSession(session);
    if (result == ZOK_ERR_VERIFY)
        return invalid("the signature is not valid for this key%s",
                       s.sm2 ? ", message and identity" : " and message");
    if (result != ZOK_OK) return misuse("verifying: %s", zokecc_status_text(result));
    if (!o->quiet) puts("valid");
    return DONE;
}

/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>

#include <zokecc/hash.h>
#include <zokecc/status.h>

#include "command.h"
#include "key_math.h"

const char *argument(const options *o, int index) { return index < o->count ? o->args[index] : NULL; }

int index_of(const char *name, const char *const names[])
{
    for (int i = 0; names[i] != NULL; ++i)
        if (strcmp(name, names[i]) == 0) return i;
    return -1;
}

const named_curve *chosen_curve(const options *o, int *status)
{
    const named_curve *curve = o->curve == NULL ? NULL : curve_by_name(o->curve);
    *status = DONE;
    if (o->curve != NULL && curve == NULL)
        *status = misuse("unknown curve %s: see `zokecc help curves`", o->curve);
    return curve;
}

/* Warns if others can read a private key. */
static void look_at_mode(const options *o, const char *path, const ec_key *key)
{
    struct stat info;
    if (o->quiet || !key->has_private || path == NULL || stat(path, &info) != 0) return;
    if (S_ISREG(info.st_mode) && (info.st_mode & (S_IRWXG | S_IRWXO)) != 0)
        warn("others may read the private key in %s: chmod 600 %s", path, path);
}

int read_key(const options *o, const char *path, ec_key *key, const char **fault)
{
    content file;
    int status = DONE;
    memset(key, 0, sizeof *key);
    key->curve = chosen_curve(o, &status);
    if (status == DONE) status = read_content(o, path, MAX_KEY_FILE, &file);
    if (status != DONE) return status;
    *fault = ec_key_from_file(key, file.bytes, file.size);
    drop_content(&file);
    if (*fault == NULL) look_at_mode(o, path, key);
    return DONE;
}

static int load_key(const options *o, const char *path, ec_key *key)
{
    const char *fault = NULL;
    const int status = read_key(o, path, key, &fault);
    return status == DONE && fault != NULL ? misuse("%s: %s", name_of_input(path), fault) : status;
}

int load_private_key(const options *o, ec_key *key, ECCrefPrivateKey *priv)
{
    ECCrefPublicKey pub;
    if (o->key == NULL) return misuse("missing -k FILE, the private key");
    const int status = load_key(o, o->key, key);
    if (status != DONE) return status;
    const char *fault = private_to_record(key, priv);
    if (fault == NULL) fault = public_to_record(key, &pub);
    if (fault == NULL) {
        key->point_size = record_to_point(key->curve, &pub, 0, key->point);
        return DONE;
    }
    clear_secret(key, sizeof *key);
    clear_secret(priv, sizeof *priv);
    return misuse("%s: %s", o->key, fault);
}

int load_public_key(const options *o, const char *path, ec_key *key, ECCrefPublicKey *pub)
{
    const int status = load_key(o, path, key);
    if (status != DONE) return status;
    const char *fault = public_to_record(key, pub);
    clear_secret(key->d, sizeof key->d);
    key->has_private = 0;
    if (fault == NULL) return DONE;
    return misuse("%s: %s", name_of_input(path), fault);
}

int chosen_hash(const options *o, uint32_t fallback, uint32_t *selector)
{
    static const char *const names[] = {"sm3", "sha256", NULL};
    const int index = o->hash == NULL ? (int)fallback : index_of(o->hash, names);
    if (index < 0) return misuse("unknown hash %s: use sm3 or sha256", o->hash);
    *selector = (uint32_t)index; /* the values of HASH_ALG_SM3 and HASH_ALG_SHA256 */
    return DONE;
}

static int digit(char c)
{
    static const char digits[] = "0123456789abcdef0123456789ABCDEF";
    const char *at = c == '\0' ? NULL : strchr(digits, c);
    return at == NULL ? -1 : (int)(at - digits) & 15;
}

static int id_from_hex(const char *text, uint8_t id[MAX_ID], uint32_t *size)
{
    for (*size = 0; text[0] != '\0'; text += 2) {
        const int high = digit(text[0]);
        const int low = high < 0 ? -1 : digit(text[1]);
        if (low < 0 || *size == MAX_ID)
            return misuse("-I takes pairs of hexadecimal digits, at most %d", (int)MAX_ID);
        id[(*size)++] = (uint8_t)(high << 4 | low);
    }
    return DONE;
}

int chosen_id(const options *o, uint8_t id[MAX_ID], uint32_t *size)
{
    const char *text = o->id != NULL ? o->id : "1234567812345678";
    if (o->id != NULL && o->id_hex != NULL) return misuse("-i and -I exclude each other");
    if (o->id_hex != NULL) return id_from_hex(o->id_hex, id, size);
    const size_t length = strlen(text);
    if (length > MAX_ID) return misuse("the identity has more than %d bytes", (int)MAX_ID);
    memcpy(id, text, length); /* NOLINT: bytes with a length, not a string */
    *size = (uint32_t)length;
    return DONE;
}

int open_session(const named_curve *curve, uint32_t hash, void **session)
{
    CurvePara record = *curve->record;
    record.hash_selector = hash;
    uint32_t status = ZOK_OpenSession(session, &record);
    if (status != ZOK_OK) return misuse("opening a session: %s", zokecc_status_text(status));
    status = ZOK_CurveParaCfg(*session, record.type, &record);
    if (status == ZOK_OK) return DONE;
    ZOK_CloseSession(*session);
    return misuse("installing %s: %s", curve->name, zokecc_status_text(status));
}

int hash_content(uint32_t selector, const uint8_t *bytes, size_t size, uint8_t digest[DIGEST_SIZE])
{
    const hash_msg message = {selector, bytes, (uint32_t)((uint64_t)size >> 32), (uint32_t)size};
    if (selector == HASH_ALG_SHA256 && message.len_high != 0)
        return misuse("SHA-256 is limited to less than 4 gigabytes: hash with another tool and use -d");
    return hash_byte(&message, digest) == DIGEST_SIZE ? DONE : misuse("hashing failed");
}

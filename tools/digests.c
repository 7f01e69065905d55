/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* digest, mac and rand. */
#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <zokecc/hash.h>
#include <zokecc/status.h>

#include "command.h"
#include "key_math.h"

enum { RANDOM_BLOCK = 4096, MAX_MAC_KEY = 1 << 20, MAX_MAC_INPUT = 0x7fffffff - 256 };

/* Without -k the digest of a file; with -k the number e that SM2 signs. */
static int digest_of(const options *o, const ec_key *key, const ECCrefPublicKey *pub, const char *path,
                     uint8_t digest[DIGEST_SIZE])
{
    content file;
    uint32_t hash = 0, size = 0;
    int status = chosen_hash(o, HASH_ALG_SM3, &hash);
    if (status == DONE) status = read_content(o, path, SIZE_MAX / 4, &file);
    if (status != DONE) return status;
    begin_long_work(o, "hashing", file.size);
    status = key != NULL ? make_e(o, key, pub, 1, &file, digest, &size)
                         : hash_content(hash, file.bytes, file.size, digest);
    end_long_work();
    drop_content(&file);
    return status;
}

/* Prints a line as sha256sum does. */
static int print_digest(const uint8_t digest[DIGEST_SIZE], const char *path)
{
    for (int i = 0; i < DIGEST_SIZE; ++i) printf("%02x", digest[i]);
    printf("  %s\n", path == NULL ? "-" : path);
    return fflush(stdout) == 0 ? DONE : misuse("cannot write the result: %s", strerror(errno));
}

int run_digest(const options *o)
{
    ec_key key;
    ECCrefPublicKey pub;
    uint8_t digest[DIGEST_SIZE];
    int status = DONE;
    if (o->key == NULL && (o->id != NULL || o->id_hex != NULL))
        return misuse("an identity needs the signer's public key: use -k FILE");
    if (o->key != NULL) status = load_public_key(o, o->key, &key, &pub);
    for (int i = 0; status == DONE && (i < o->count || i == 0); ++i) {
        status = digest_of(o, o->key != NULL ? &key : NULL, &pub, argument(o, i), digest);
        if (status == DONE) status = print_digest(digest, argument(o, i));
    }
    return status;
}

static int hmac(uint32_t hash, const content *key, const content *input, uint8_t code[DIGEST_SIZE])
{
    static int any_handle; /* the call only tests for null */
    if (hash == HASH_ALG_SHA256)
        return mhmac_sha256(input->bytes, (int32_t)input->size, key->bytes, (int32_t)key->size, code,
                            DIGEST_SIZE) == 0
                   ? DONE
                   : misuse("computing the HMAC failed");
    const uint32_t result = ZOK_HMAC_SM3(&any_handle, input->bytes, (uint32_t)input->size, key->bytes,
                                         (uint32_t)key->size, code, DIGEST_SIZE);
    return result == ZOK_OK ? DONE : misuse("%s", zokecc_status_text(result));
}

int run_mac(const options *o)
{
    content key, input;
    uint32_t hash = 0;
    uint8_t code[DIGEST_SIZE];
    if (o->key == NULL) return misuse("missing -k FILE; all its bytes are the key, even a final newline");
    int status = chosen_hash(o, HASH_ALG_SM3, &hash);
    if (status == DONE) status = read_content(o, o->key, MAX_MAC_KEY, &key);
    if (status != DONE) return status;
    if (key.size == 0) {
        status = misuse("%s: the key is empty", o->key);
    } else {
        status = read_content(o, argument(o, 0), MAX_MAC_INPUT, &input);
        if (status == DONE) {
            status = hmac(hash, &key, &input, code);
            drop_content(&input);
        }
    }
    drop_content(&key);
    return status == DONE ? print_digest(code, argument(o, 0)) : status;
}

int run_rand(const options *o)
{
    static int any_handle;
    char *end = NULL;
    const char *text = argument(o, 0);
    if (text == NULL) return misuse("missing the number of bytes");
    const unsigned long count = strtoul(text, &end, 10);
    if (text[0] < '0' || text[0] > '9' || *end != '\0' || count == 0 || count > 1ul << 26)
        return misuse("%s is not a number from 1 to %lu", text, 1ul << 26);
    content bytes = {NULL, count, malloc(count), count};
    if (bytes.block == NULL) return misuse("no memory for %s bytes", text);
    bytes.bytes = bytes.block;
    int status = DONE;
    for (size_t i = 0; status == DONE && i < count; i += RANDOM_BLOCK) {
        const uint32_t now = (uint32_t)(count - i < RANDOM_BLOCK ? count - i : RANDOM_BLOCK);
        const uint32_t result = SDF_GenerateRandom(&any_handle, now, bytes.bytes + i);
        if (result != ZOK_OK) status = misuse("%s", zokecc_status_text(result));
    }
    if (status == DONE) status = write_result(o, bytes.bytes, count);
    drop_content(&bytes);
    return status;
}

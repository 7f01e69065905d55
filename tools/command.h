/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* What the commands of zokecc share: options, messages, files and keys. */
#ifndef ZOKECC_TOOLS_COMMAND_H
#define ZOKECC_TOOLS_COMMAND_H

#include <zokecc/sdf.h>

#include "ec_key.h"

/* The exit status of a command. */
enum {
    DONE = 0,    /* done; for verify and check: valid */
    INVALID = 1, /* the signature, ciphertext or public key is not valid */
    MISUSE = 2 /* not tried: wrong options, files that cannot be read or written, unusable keys, no memory */
};

typedef struct options {
    const char *key, *out, *curve, *id, *id_hex, *signature, *hash, *format, *from, *algorithm, *pub, *type;
    int force, hex, prehashed, der, quiet, user_value;
    int count; /* of the arguments that are no options */
    char **args;
} options;

/* The first argument, or null. */
const char *argument(const options *o, int index);

/* Both print one line for the command on standard error and return INVALID or MISUSE. */
int invalid(const char *format, ...) __attribute__((format(printf, 1, 2)));
int misuse(const char *format, ...) __attribute__((format(printf, 1, 2)));
void warn(const char *format, ...) __attribute__((format(printf, 1, 2)));

/* ---- files ------------------------------------------------------------------------------------------- */

enum { HEADROOM = 128 }; /* bytes before the content that may be written to */

typedef struct content {
    uint8_t *bytes;
    size_t size;
    uint8_t *block; /* what is allocated; HEADROOM bytes before bytes */
    size_t block_size;
} content;

/* Reads a file, or standard input for null and "-". At most `limit` bytes. Returns DONE or MISUSE. */
int read_content(const options *o, const char *path, uint64_t limit, content *out);

/* How messages call an input. */
const char *name_of_input(const char *path);

/* Clears and frees. */
void drop_content(content *c);

/* Tells on a terminal what takes long; nothing if size is small. */
void begin_long_work(const options *o, const char *what, size_t size);
void end_long_work(void);

/* Writes a result to -o or standard output: as hexadecimal digits with -x, and never as bytes to a
 * terminal. */
int write_result(const options *o, const uint8_t *bytes, size_t size);

/* Writes a key file: a new one, or with --force in place of an old one; mode 0600 if it is private. */
int write_key_file(const options *o, const char *path, const void *bytes, size_t size, int private);

/* ---- keys and choices ---------------------------------------------------------------------------------- */

/* The curve of -c. Null if there is none; *status is MISUSE if the name is not known. */
const named_curve *chosen_curve(const options *o, int *status);

/* Reads a key file. DONE says that there was one; what is wrong with it is then in *fault, else null. */
int read_key(const options *o, const char *path, ec_key *key, const char **fault);

/* Reads a key of which the parts are wanted as records of the library: the private one of -k, or a public
 * one, which may come out of a private one. */
int load_private_key(const options *o, ec_key *key, ECCrefPrivateKey *priv);
int load_public_key(const options *o, const char *path, ec_key *key, ECCrefPublicKey *pub);

/* The hash of -H as a selector. */
int chosen_hash(const options *o, uint32_t fallback, uint32_t *selector);

/* The identity of -i or -I, or the usual one. At most 8,191 bytes, in *id of `MAX_ID` bytes. */
enum { MAX_KEY_FILE = 1 << 16, MAX_ID = 8191, DIGEST_SIZE = 32 };
int chosen_id(const options *o, uint8_t id[MAX_ID], uint32_t *size);

/* The place of a name in a list that ends with null, or -1. */
int index_of(const char *name, const char *const names[]);

/* A session on the curve with this hash. */
int open_session(const named_curve *curve, uint32_t hash, void **session);

/* Hashes bytes. SHA-256 takes less than 4 gigabytes. */
int hash_content(uint32_t selector, const uint8_t *bytes, size_t size, uint8_t digest[DIGEST_SIZE]);

/* e: what is signed. Z, which SM2 hashes before the message, is written to the headroom of the message. */
int make_e(const options *o, const ec_key *key, const ECCrefPublicKey *pub, int sm2, content *message,
           uint8_t e[DIGEST_SIZE], uint32_t *e_size);

/* ---- the commands -------------------------------------------------------------------------------------- */

int run_keygen(const options *o);
int run_pubkey(const options *o);
int run_check(const options *o);
int run_convert(const options *o);
int run_sign(const options *o);
int run_verify(const options *o);
int run_encrypt(const options *o);
int run_decrypt(const options *o);
int run_digest(const options *o);
int run_mac(const options *o);
int run_rand(const options *o);

#endif

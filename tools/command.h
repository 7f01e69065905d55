/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Shared by the commands of zokecc: options, messages, files and keys. */
#ifndef ZOKECC_TOOLS_COMMAND_H
#define ZOKECC_TOOLS_COMMAND_H

#include <zokecc/sdf.h>

#include "ec_key.h"

/* The exit status of a command. */
enum {
    DONE = 0,    /* done; for verify and check: valid */
    INVALID = 1, /* the signature, ciphertext or public key is not valid */
    MISUSE = 2   /* not done: wrong options, files that cannot be read or written, unusable keys, no memory */
};

typedef struct options {
    const char *key, *out, *curve, *id, *id_hex, *signature, *hash, *format, *from, *algorithm, *pub, *type;
    int force, hex, prehashed, der, quiet, user_value;
    int count; /* of the arguments that are not options */
    char **args;
} options;

/* The argument with this index, or null. */
const char *argument(const options *o, int index);

/* Both print one line to standard error, with the command's name, and return INVALID or MISUSE. */
int invalid(const char *format, ...) __attribute__((format(printf, 1, 2)));
int misuse(const char *format, ...) __attribute__((format(printf, 1, 2)));
void warn(const char *format, ...) __attribute__((format(printf, 1, 2)));

/* ---- files ------------------------------------------------------------------------------------------- */

enum { HEADROOM = 128 }; /* writable bytes before the content */

typedef struct content {
    uint8_t *bytes;
    size_t size;
    uint8_t *block; /* the allocated block; starts HEADROOM before bytes */
    size_t block_size;
} content;

/* Reads a file, or standard input for null and "-". At most `limit` bytes. Returns DONE or MISUSE. */
int read_content(const options *o, const char *path, uint64_t limit, content *out);

/* The name of an input in messages. */
const char *name_of_input(const char *path);

/* Wipes and frees the content. */
void drop_content(content *c);

/* Announces long work on a terminal; prints nothing if size is small. */
void begin_long_work(const options *o, const char *what, size_t size);
void end_long_work(void);

/* Writes a result to -o or standard output: as hexadecimal digits with -x, and never as raw bytes to a
 * terminal. */
int write_result(const options *o, const uint8_t *bytes, size_t size);

/* Writes a new key file, or replaces one with --force; mode 0600 if it is private. */
int write_key_file(const options *o, const char *path, const void *bytes, size_t size, int private);

/* ---- keys and choices ---------------------------------------------------------------------------------- */

/* The curve given with -c, or null if none was given. *status is MISUSE if the name is unknown. */
const named_curve *chosen_curve(const options *o, int *status);

/* Reads a key file. DONE if it could be read; *fault then says what is wrong with the key, or is null. */
int read_key(const options *o, const char *path, ec_key *key, const char **fault);

/* Reads a key and converts it to records of the library: the private key of -k, or a public
 * key, which may be that of a private one. */
int load_private_key(const options *o, ec_key *key, ECCrefPrivateKey *priv);
int load_public_key(const options *o, const char *path, ec_key *key, ECCrefPublicKey *pub);

/* The hash given with -H, as a selector. */
int chosen_hash(const options *o, uint32_t fallback, uint32_t *selector);

/* The identity given with -i or -I, or the default one, in id, which has room for MAX_ID bytes. */
enum { MAX_KEY_FILE = 1 << 16, MAX_ID = 8191, DIGEST_SIZE = 32 };
int chosen_id(const options *o, uint8_t id[MAX_ID], uint32_t *size);

/* The index of a name in a null-terminated list, or -1. */
int index_of(const char *name, const char *const names[]);

/* A session on the curve with this hash. */
int open_session(const named_curve *curve, uint32_t hash, void **session);

/* Hashes bytes, with SHA-256 less than 4 gigabytes. */
int hash_content(uint32_t selector, const uint8_t *bytes, size_t size, uint8_t digest[DIGEST_SIZE]);

/* Computes e, the number that is signed. For SM2, Z is written into the headroom before the message. */
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

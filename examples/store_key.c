/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Makes a key, stores it in a PEM file that nobody else can read, loads it again and signs with it.
 *
 *     store_key [FILE]
 *
 * Without FILE a temporary one is used and removed. An existing FILE is loaded, not replaced. openssl can
 * read the file, and this program reads openssl's files. Reading and writing PEM is done by the sources
 * der, pem, ec_key, ec_parameters and named_curves of tools/, which a program may include.
 */
#define _POSIX_C_SOURCE 200809L /* NOLINT: reserved for this purpose */
#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

#include <zokecc/sdf.h>
#include <zokecc/status.h>

#include "ec_key.h"

static void require(int condition, const char *what)
{
    if (condition) return;
    fprintf(stderr, "store_key: %s%s%s\n", what, errno != 0 ? ": " : "", errno != 0 ? strerror(errno) : "");
    exit(EXIT_FAILURE);
}

static void check(uint32_t status, const char *step)
{
    if (status != ZOK_OK) fprintf(stderr, "%s: ", zokecc_status_text(status));
    require(status == ZOK_OK, step);
}

/* Opened so that no file is replaced, no link is followed, and nobody else can ever read it. read and
 * write are used because a FILE would keep a copy of the key in its buffer. */
static void store(const char *path, const ECCrefPrivateKey *priv, const ECCrefPublicKey *pub)
{
    ec_key key = {.curve = curve_by_name("sm2p256v1"), .has_private = 1};
    char pem[MAX_KEY_PEM];
    memcpy(key.d, priv->K, 32);
    key.point[0] = 4;
    memcpy(key.point + 1, pub->x, 32);
    memcpy(key.point + 33, pub->y, 32);
    key.point_size = 65;
    const size_t size = ec_key_to_pem(&key, KEY_PKCS8, pem, sizeof pem);
    const int fd = open(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    require(fd >= 0, path);
    /* The key must be on disk before it is used: fsync; a product does the same with the folder. */
    require(write(fd, pem, size) == (ssize_t)size && fsync(fd) == 0 && close(fd) == 0, "write the key");
    clear_secret(pem, sizeof pem);
    clear_secret(&key, sizeof key);
}

static void load(const char *path, ECCrefPrivateKey *priv, ECCrefPublicKey *pub)
{
    ec_key key = {.curve = curve_by_name("sm2p256v1")}; /* only this curve is accepted */
    uint8_t pem[MAX_KEY_PEM];
    struct stat info;
    const int fd = open(path, O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    require(fd >= 0 && fstat(fd, &info) == 0, path);
    require((info.st_mode & (S_IRWXG | S_IRWXO)) == 0, "others can read the key");
    const ssize_t size = read(fd, pem, sizeof pem);
    require(size > 0 && (size_t)size < sizeof pem && close(fd) == 0, "read the key");
    errno = 0;
    const char *fault = ec_key_from_file(&key, pem, (size_t)size);
    clear_secret(pem, sizeof pem);
    require(fault == NULL, fault);
    require(key.has_private && key.point_size == 65 && key.point[0] == 4, "not a private key with its point");
    memset(priv, 0, sizeof *priv);
    memset(pub, 0, sizeof *pub);
    priv->bits = pub->bits = 256;
    memcpy(priv->K, key.d, 32);
    memcpy(pub->x, key.point + 1, 32);
    memcpy(pub->y, key.point + 33, 32);
    clear_secret(&key, sizeof key);
}

int main(int argc, char **argv)
{
    char folder[] = "/tmp/store_key.XXXXXX", own[sizeof folder + 8];
    const char *path = argc > 1 ? argv[1] : own;
    static const uint8_t message[] = "The pump station opens at six.", id[] = "1234567812345678";
    void *session = NULL;
    ECCrefPublicKey pub;
    ECCrefPrivateKey priv;
    ECCSignature sig;
    if (argc <= 1) {
        require(mkdtemp(folder) != NULL, folder);
        snprintf(own, sizeof own, "%s/key.pem", folder);
    }
    check(ZOK_OpenSession(&session, curve_by_name("sm2p256v1")->record), "open a session");
    if (access(path, F_OK) != 0) {
        /* The default build draws from rand: see own_random.c, or make keys with the hardened build. */
        check(SDF_GenerateKeyPair_ECC(session, ZOK_ALG_SM2_KEY, 256, &pub, &priv), "make a key pair");
        store(path, &priv, &pub);
        clear_secret(&priv, sizeof priv);
    }
    load(path, &priv, &pub);
    check(
        ZOK_ExternalSignHash_ECC(session, ZOK_ALG_SM2_SIGN, &priv, message, sizeof message - 1, id, 16, &sig),
        "sign");
    clear_secret(&priv, sizeof priv); /* as soon as it is no longer needed */
    check(ZOK_ExternalVerifyHash_ECC(session, ZOK_ALG_SM2_SIGN, &pub, message, sizeof message - 1, id, 16,
                                     &sig),
          "verify");
    printf("the key from %s signs, and its public key verifies\n", path);
    if (path == own) require(unlink(path) == 0 && rmdir(folder) == 0, folder);
    check(ZOK_CloseSession(session), "close the session");
    return EXIT_SUCCESS;
}

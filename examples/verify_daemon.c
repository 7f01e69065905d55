/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Verifies signatures indefinitely in a fixed amount of memory, with either build of the library.
 *
 *     verify_daemon [WORKERS [SIGNATURES]]
 *
 * The default build never frees some 260 bytes per verification, as deployed systems expect; the hardened
 * build frees everything. If that matters, let a worker process verify and replace it after some signatures:
 * the kernel reclaims its memory. Here WORKERS (2) of them verify SIGNATURES (4,000) each. The exit status
 * is 0 if every worker succeeded within its limit.
 */
#define _POSIX_C_SOURCE 200809L /* NOLINT: reserved for this purpose */
#include <stdio.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <zokecc/curves.h>
#include <zokecc/sdf.h>

enum {
    KEPT = 257 + 31, /* of a verification in the default build, with what the heap adds */
    SLACK = 1 << 18  /* the heap asks the kernel for whole blocks */
};

static const uint8_t message[] = "The pump station opens at six.", id[] = "1234567812345678";

static void require(int condition, const char *what)
{
    if (condition) return;
    fprintf(stderr, "verify_daemon: %s\n", what);
    exit(EXIT_FAILURE);
}

/* The size of the process in bytes: the first number of statm, in pages. The second one, the pages in use,
 * lags behind on a machine with many processors. */
static long memory_size(void)
{
    char line[128] = "";
    FILE *file = fopen("/proc/self/statm", "r");
    if (file == NULL) return 0;
    if (fgets(line, sizeof line, file) == NULL) line[0] = 0;
    fclose(file);
    return strtol(line, NULL, 10) * sysconf(_SC_PAGESIZE);
}

/* A product reads requests from a socket here, and ends after count of them. */
static int serve(void *session, const ECCrefPublicKey *pub, const ECCSignature *sig, long count)
{
    long at_first = 0;
    for (long i = 0; i < count; ++i) {
        if (i == count / 2) at_first = memory_size(); /* tables and buffers are there by now */
        if (ZOK_ExternalVerifyHash_ECC(session, ZOK_ALG_SM2_SIGN, pub, message, sizeof message - 1, id, 16,
                                       sig) != ZOK_OK)
            return EXIT_FAILURE;
    }
    const long grown = memory_size() - at_first;
    printf("worker %ld: %ld signatures, %ld kilobytes more for the second half\n", (long)getpid(), count,
           grown / 1024);
    fflush(stdout);
    return grown <= (count - count / 2) * KEPT + SLACK ? EXIT_SUCCESS : EXIT_FAILURE;
}

int main(int argc, char **argv)
{
    const long workers = argc > 1 ? strtol(argv[1], NULL, 10) : 2;
    const long count = argc > 2 ? strtol(argv[2], NULL, 10) : 4000;
    void *session = NULL;
    ECCrefPublicKey pub;
    ECCrefPrivateKey priv;
    ECCSignature sig;
    require(workers > 0 && count > 0, "WORKERS and SIGNATURES are numbers above 0");
    require(ZOK_OpenSession(&session, &zokecc_sm2p256v1) == ZOK_OK, "open a session");
    require(SDF_GenerateKeyPair_ECC(session, ZOK_ALG_SM2_KEY, 256, &pub, &priv) == ZOK_OK, "make a key pair");
    require(ZOK_ExternalSignHash_ECC(session, ZOK_ALG_SM2_SIGN, &priv, message, sizeof message - 1, id, 16,
                                     &sig) == ZOK_OK,
            "sign");
    printf("a worker may grow by %ld kilobytes before it is replaced\n", count * KEPT / 1024);
    fflush(stdout); /* else both processes have the line */

    /* The session was opened before the fork and is shared, page by page, until it is written to. A
     * worker that signs must not inherit the state of rand: see docs/integrating.md. */
    for (long i = 0; i < workers; ++i) {
        int status = 0;
        const pid_t worker = fork();
        if (worker == 0) _exit(serve(session, &pub, &sig, count));
        require(worker > 0 && waitpid(worker, &status, 0) == worker, "start a worker");
        require(WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS, "a worker failed");
    }
    printf("%ld workers, one after the other\n", workers);
    require(ZOK_CloseSession(session) == ZOK_OK, "close the session");
    return EXIT_SUCCESS;
}

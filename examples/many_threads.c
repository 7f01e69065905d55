/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Signs and verifies on several threads, each with its own session.
 *
 *     many_threads [THREADS]
 *
 * The library has no locks. Sessions are independent of each other, so verification runs in parallel on all
 * of them. Calls that draw random numbers share one generator and must be serialised: one lock around them.
 * The exit status is 0 if every signature verified and none occurred twice.
 */
#define _POSIX_C_SOURCE 200809L /* NOLINT: reserved for this purpose */
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <zokecc/curves.h>
#include <zokecc/sdf.h>

enum { MAX_THREADS = 64, ROUNDS = 20 };

typedef struct worker {
    pthread_t thread;
    void *session; /* some 86,000 bytes: open it once, not for every message */
    int number;
    int verified;
    ECCSignature last;
} worker;

static pthread_mutex_t drawing = PTHREAD_MUTEX_INITIALIZER;
static ECCrefPublicKey pub;
static ECCrefPrivateKey priv; /* written before the threads start, only read by them */
static const uint8_t id[] = "1234567812345678";

static void require(int condition, const char *what)
{
    if (condition) return;
    fprintf(stderr, "many_threads: %s\n", what);
    exit(EXIT_FAILURE);
}

/* Key generation, encryption and temporary keys draw, too; conventions.h lists all such calls. */
static int sign(worker *w, const uint8_t *message, uint32_t size)
{
    pthread_mutex_lock(&drawing);
    const uint32_t status =
        ZOK_ExternalSignHash_ECC(w->session, ZOK_ALG_SM2_SIGN, &priv, message, size, id, 16, &w->last);
    pthread_mutex_unlock(&drawing);
    return status == ZOK_OK;
}

static void *work(void *argument)
{
    worker *w = argument;
    for (int i = 0; i < ROUNDS; ++i) {
        uint8_t message[2] = {(uint8_t)w->number, (uint8_t)i};
        if (!sign(w, message, sizeof message)) return NULL;
        if (ZOK_ExternalVerifyHash_ECC(w->session, ZOK_ALG_SM2_SIGN, &pub, message, sizeof message, id, 16,
                                       &w->last) == ZOK_OK)
            ++w->verified;
    }
    return NULL;
}

int main(int argc, char **argv)
{
    static worker workers[MAX_THREADS];
    const long threads = argc > 1 ? strtol(argv[1], NULL, 10) : 4;
    require(threads > 0 && threads <= MAX_THREADS, "THREADS is a number from 1 to 64");
    for (long i = 0; i < threads; ++i) {
        workers[i].number = (int)i;
        require(ZOK_OpenSession(&workers[i].session, &zokecc_sm2p256v1) == ZOK_OK, "open a session");
    }
    require(SDF_GenerateKeyPair_ECC(workers[0].session, ZOK_ALG_SM2_KEY, 256, &pub, &priv) == ZOK_OK,
            "make a key pair");

    for (long i = 0; i < threads; ++i)
        require(pthread_create(&workers[i].thread, NULL, work, &workers[i]) == 0, "start a thread");
    int verified = 0;
    for (long i = 0; i < threads; ++i) {
        require(pthread_join(workers[i].thread, NULL) == 0, "wait for a thread");
        verified += workers[i].verified;
    }
    require(verified == threads * ROUNDS, "a signature did not verify");
    /* Two threads drawing at once could get the same nonce, and a nonce used twice reveals the key. */
    for (long i = 0; i < threads; ++i)
        for (long j = 0; j < i; ++j)
            require(memcmp(workers[i].last.r, workers[j].last.r, 32) != 0, "the same r twice");
    printf("%ld threads signed and verified %d messages\n", threads, verified);

    for (long i = 0; i < threads; ++i)
        require(ZOK_CloseSession(workers[i].session) == ZOK_OK, "close a session");
    memset(&priv, 0, sizeof priv); /* in a product use a call that is not optimised away */
    return EXIT_SUCCESS;
}

/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Gives the library trustworthy random numbers: the program defines rand and srand, and the
 * library, which calls them by name, uses the program's.
 *
 *     own_random
 *
 * Makes two key pairs and prints how often the library called rand. The exit status is 0 if it called it
 * often enough for both and the keys differ.
 *
 * The C library's own rand is reseeded from the clock at every draw: two devices, or two runs, that
 * make a key in the same second make the same one. With the two functions below the clock
 * does not matter.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <zokecc/curves.h>
#include <zokecc/sdf.h>

static unsigned long draws;

/* From the kernel's generator; a product may read a hardware source instead. rand cannot report a
 * failure, and no key is better than a guessable one. */
int rand(void)
{
    static FILE *source;
    unsigned value = 0;
    if (source == NULL) {
        source = fopen("/dev/urandom", "rb");
        if (source != NULL) setvbuf(source, NULL, _IONBF, 0); /* a fork must not duplicate buffered bytes */
    }
    if (source == NULL || fread(&value, sizeof value, 1, source) != 1) abort();
    ++draws;
    return (int)(value & 0x7fffffffu); /* 0 to RAND_MAX */
}

/* Called with the time before every draw: there is nothing to seed. */
void srand(unsigned seed) { (void)seed; }

static void require(int condition, const char *what)
{
    if (condition) return;
    fprintf(stderr, "own_random: %s\n", what);
    exit(EXIT_FAILURE);
}

int main(void)
{
    enum { KEYS = 2, SEEDINGS = 2, DRAWS = 24 }; /* a key of 32 bytes needs two seedings */
    void *session = NULL;
    ECCrefPublicKey pub[KEYS];
    ECCrefPrivateKey priv[KEYS];
    require(RAND_MAX == 0x7fffffff, "another RAND_MAX");
    require(ZOK_OpenSession(&session, &zokecc_sm2p256v1) == ZOK_OK, "open a session");
    for (int i = 0; i < KEYS; ++i)
        require(SDF_GenerateKeyPair_ECC(session, ZOK_ALG_SM2_KEY, 256, &pub[i], &priv[i]) == ZOK_OK,
                "make a key");
    require(memcmp(pub[0].x, pub[1].x, 32) != 0, "the same key twice");
    require(draws == KEYS * SEEDINGS * DRAWS, "the library drew from elsewhere");
    printf("two key pairs from %lu numbers of this program's rand\n", draws);
    memset(priv, 0, sizeof priv); /* in a product use a call that is not optimised away */
    require(ZOK_CloseSession(session) == ZOK_OK, "close the session");
    return EXIT_SUCCESS;
}

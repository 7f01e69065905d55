/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Fixes the clock, the process and the randomness of the counted program for both libraries:
 * the same nonces in each run, and so the same number of instructions.
 */
#include <stddef.h>
#include <string.h>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

enum { FIXED_SECOND = 1700000000, FIXED_PROCESS = 4711 };

time_t time(time_t *out)
{
    if (out != NULL) *out = FIXED_SECOND;
    return FIXED_SECOND;
}

int clock_gettime(clockid_t clock, struct timespec *out)
{
    (void)clock;
    out->tv_sec = FIXED_SECOND;
    out->tv_nsec = 0;
    return 0;
}

int gettimeofday(struct timeval *restrict out, void *restrict zone)
{
    (void)zone;
    out->tv_sec = FIXED_SECOND;
    out->tv_usec = 0;
    return 0;
}

pid_t getpid(void) { return FIXED_PROCESS; }

/* OpenSSL seeds its generator with this. */
int getentropy(void *out, size_t size)
{
    memset(out, 0x5A, size);
    return 0;
}

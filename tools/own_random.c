/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * The tool's own random numbers: the library calls rand and srand by name and so gets these.
 *
 * So the tool's keys are no worse with the default build than with the hardened one, which asks
 * the kernel itself. The time that the library passes to srand does not matter.
 */
#include <errno.h>
#include <stdlib.h>
#include <string.h>
#include <sys/random.h>
#include <unistd.h>

#include "about.h"

static unsigned long draws;

unsigned long random_draws(void) { return draws; }

int rand(void)
{
    static const char message[] = "zokecc: the kernel delivers no random numbers\n";
    unsigned value = 0;
    ssize_t got = 0;
    do got = getrandom(&value, sizeof value, 0);
    while (got < 0 && errno == EINTR);
    if (got != (ssize_t)sizeof value) {
        /* rand cannot report a failure, and no key is better than a guessable one. */
        if (write(STDERR_FILENO, message, sizeof message - 1) < 0) _exit(2);
        _exit(2);
    }
    ++draws;
    return (int)(value & 0x7fffffffu);
}

void srand(unsigned seed) { (void)seed; }

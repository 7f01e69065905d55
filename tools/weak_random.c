/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * rand for programs that only measure and test: the default build of the library calls whatever
 * is named rand, here xorshift. The hardened build asks the kernel. Never link this file into a program that
 * makes keys for use; zokecc has own_random.c.
 */
#include <stdint.h>
#include <stdlib.h>

#include "about.h"

static unsigned long draws;
static uint32_t state = 1;

unsigned long random_draws(void) { return draws; }

void srand(unsigned int seed) { state = (uint32_t)seed | 1; }

int rand(void)
{
    ++draws;
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    return (int)(state & RAND_MAX);
}

/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * A program that defines rand, srand and time itself: the shared library must use those, each as
 * often as documented, and nothing else. The random bytes are then recomputed here.
 */
#include <time.h>

#include <zokecc/hash.h>

#include "check.h"

#define NOW 1700000000

static unsigned rand_calls, srand_calls, time_calls;
static unsigned wrong_seeds;
static uint32_t generator;

int rand(void) {
    ++rand_calls;
    generator = generator * 69069u + 1u;
    return (int)(generator >> 1);
}

void srand(unsigned seed) {
    ++srand_calls;
    if (seed != NOW) ++wrong_seeds;
    generator = seed;
}

time_t time(time_t *out) {
    ++time_calls;
    if (out != NULL) *out = NOW;
    return NOW;
}

/* One seeding: eight words from 24 draws and a counter that is never reset. */
static uint32_t counter;

static void seed_block(uint8_t block[32]) {
    uint32_t state = NOW;
    for (int i = 0; i < 8; ++i) {
        uint32_t word = 1;
        for (unsigned shift = 0; shift <= 22; shift += 11) {
            state = state * 69069u + 1u;
            const uint32_t half = counter >> 1; /* the counter stays small and positive here */
            word |= ((state >> 1) + 3 * counter + half) << shift;
            ++counter;
        }
        for (int j = 0; j < 4; ++j) block[4 * i + j] = (uint8_t)(word >> (8 * j));
    }
}

static void xor_block(const uint8_t a[32], const uint8_t b[32], uint8_t out[32]) {
    for (int i = 0; i < 32; ++i) out[i] = a[i] ^ b[i];
}

/* The output of gen_random for 33 bytes. */
static void expected_33(uint8_t out[33]) {
    uint8_t state[32], seed[32], middle[32], mixed[32], last[32];
    seed_block(state);

    seed_block(seed);
    mhash_sha256(seed, 32, middle);
    xor_block(state, middle, mixed);
    mhash_sha256(mixed, 32, out);
    xor_block(middle, out, mixed);
    mhash_sha256(mixed, 32, state);

    seed_block(seed);
    mhash_sha256(seed, 32, middle);
    xor_block(state, middle, mixed);
    mhash_sha256(mixed, 32, last);
    out[32] = last[0];
}

static void check_calls(uint32_t size, unsigned seedings) {
    uint8_t bytes[64];
    rand_calls = srand_calls = time_calls = 0;
    CHECK(gen_random(bytes, size) == 0);
    CHECK(rand_calls == 24 * seedings);
    CHECK(srand_calls == seedings);
    CHECK(time_calls == seedings);
}

int main(void) {
    uint8_t bytes[34] = {0}, expected[33];
    uint32_t now = 0;

    CHECK(gen_random(bytes, 33) == 0); /* the first of the process: the counter is 0 */
    expected_33(expected);
    CHECK(memcmp(bytes, expected, 33) == 0 && bytes[33] == 0);

    check_calls(0, 1);
    check_calls(32, 2);
    check_calls(33, 3);
    CHECK(wrong_seeds == 0);
    CHECK(ecc_time(&now) == NOW && now == NOW);
    return check_result();
}

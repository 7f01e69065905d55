/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * A program that defines getrandom itself, and rand, srand and time: the shared library of the
 * hardened build must draw from the first, as often as documented, and leave the others alone. The
 * random bytes are then recomputed here.
 */
#include <errno.h>
#include <sys/types.h>
#include <time.h>

#include <zokecc/hash.h>

#include "check.h"

#define SEED_BYTES 32

static unsigned kernel_calls, other_calls;
static unsigned wrong_requests;
static int kernel_fails;
static uint8_t next_byte;

ssize_t getrandom(void *out, size_t size, unsigned flags) {
    uint8_t *bytes = out;
    ++kernel_calls;
    if (size != SEED_BYTES || flags != 0) ++wrong_requests;
    if (kernel_fails) {
        errno = EIO;
        return -1;
    }
    for (size_t i = 0; i < size; ++i) bytes[i] = next_byte++;
    return (ssize_t)size;
}

int rand(void) {
    ++other_calls;
    return 0;
}

void srand(unsigned seed) {
    (void)seed;
    ++other_calls;
}

time_t time(time_t *out) {
    ++other_calls;
    if (out != NULL) *out = 17;
    return 17;
}

static uint8_t expected_byte;

static void seed_block(uint8_t block[SEED_BYTES]) {
    for (int i = 0; i < SEED_BYTES; ++i) block[i] = expected_byte++;
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
    kernel_calls = 0;
    CHECK(gen_random(bytes, size) == 0);
    CHECK(kernel_calls == seedings);
}

int main(void) {
    uint8_t bytes[34] = {0}, expected[33];
    uint32_t now = 0;

    CHECK(gen_random(bytes, 33) == 0);
    expected_33(expected);
    CHECK(memcmp(bytes, expected, 33) == 0 && bytes[33] == 0);

    check_calls(0, 1);
    check_calls(32, 2);
    check_calls(33, 3);
    CHECK(wrong_requests == 0 && other_calls == 0);

    kernel_fails = 1;
    memset(bytes, 0x5A, sizeof bytes);
    CHECK(gen_random(bytes, 32) == -1);
    CHECK(bytes[0] == 0x5A && bytes[31] == 0x5A);
    CHECK(other_calls == 0);

    CHECK(ecc_time(&now) == 17 && now == 17);
    return check_result();
}

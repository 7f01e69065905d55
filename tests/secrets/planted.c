/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
#include "tests/secrets/planted.h"

#include <stdlib.h>

enum { kBlockBytes = 100, kMaxWords = 16 };

volatile uint32_t planted_variable[4];

void planted_on_stack(const uint32_t *secret) {
    volatile uint32_t frame[4] = {0};
    frame[2] = secret[3];
    (void)frame[2];
}

void planted_in_freed_heap(const uint32_t *secret) {
    volatile uint32_t *const block = malloc(kBlockBytes);
    if (block == NULL) return;
    block[5] = secret[1];
    free((void *)block);
}

void planted_in_kept_heap(const uint32_t *secret) {
    volatile uint32_t *const block = malloc(kBlockBytes);
    if (block != NULL) block[7] = secret[2];
}

void planted_in_variable(const uint32_t *secret) { planted_variable[1] = secret[0]; }

void planted_sum_on_stack(const uint32_t *secret) {
    volatile uint32_t frame[4] = {0};
    frame[1] = secret[0] + 0x01234567u;
    (void)frame[1];
}

void planted_nothing(const uint32_t *secret) {
    volatile uint32_t frame[4] = {0};
    frame[2] = secret[3];
    (void)frame[2];
    frame[2] = 0;
    (void)frame[2];
}

void planted_sum(const uint32_t *a, const uint32_t *b, uint32_t count, uint32_t *out) {
    volatile uint32_t frame[kMaxWords];
    uint64_t carry = 0;
    for (uint32_t i = 0; i < count; ++i) {
        carry += (uint64_t)a[i] + b[i];
        frame[i] = (uint32_t)carry;
        carry >>= 32;
    }
    for (uint32_t i = 0; i < count; ++i) out[i] = frame[i];
}

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
/* Calls that leave a secret behind, in their own shared library: the scan must report each. */
#ifndef ZOKECC_TESTS_SECRETS_PLANTED_H
#define ZOKECC_TESTS_SECRETS_PLANTED_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Each but the last leaves one 4-byte word. */
void planted_on_stack(const uint32_t *secret);
void planted_in_freed_heap(const uint32_t *secret);
void planted_in_kept_heap(const uint32_t *secret);
void planted_in_variable(const uint32_t *secret);
void planted_sum_on_stack(const uint32_t *secret);
void planted_nothing(const uint32_t *secret);

/* out = a + b over count words, computed on the stack and left there. */
void planted_sum(const uint32_t *a, const uint32_t *b, uint32_t count, uint32_t *out);

#ifdef __cplusplus
}
#endif

#endif

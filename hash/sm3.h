// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SM3 (GB/T 32905, GM/T 0004).
#ifndef ZOKECC_HASH_SM3_H
#define ZOKECC_HASH_SM3_H

#include <cstdint>

#include "base/linkage.h"

// One compression of a 64-byte block into the 8-word state.
ZOKECC_INTERNAL void sm3_compress(uint32_t *state, const uint8_t *block);

namespace zokecc {

// sm3_compress for count consecutive blocks.
void sm3_blocks_portable(uint32_t *state, const uint8_t *data, uint64_t count);

// The same, in builds with kShaInstructions: one if has_vector_instructions(), the other if
// has_rotating_vectors().
void sm3_blocks_avx(uint32_t *state, const uint8_t *data, uint64_t count);
void sm3_blocks_avx512(uint32_t *state, const uint8_t *data, uint64_t count);

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The block transformation of SHA-256 (FIPS 180-4 section 6.2.2), reading the blocks where they are.
#ifndef ZOKECC_HASH_SHA256_BLOCKS_H
#define ZOKECC_HASH_SHA256_BLOCKS_H

#include <cstdint>

#include "base/config.h"
#include "base/cpu_x86_64.h"

namespace zokecc {

extern const uint32_t kSha256Constants[64];

// True if this processor has the instructions of sha256_blocks_x86 and the build uses them.
inline bool sha256_takes_instructions()
{
    if constexpr (kShaInstructions)
        return has_sha_instructions();
    else
        return false;
}

// Compresses count blocks of 64 bytes into the eight hash words, by the fastest routine below that the
// processor supports.
void sha256_blocks(uint32_t *hash, const uint8_t *data, uint32_t count);

void sha256_blocks_portable(uint32_t *hash, const uint8_t *data, uint32_t count);

// Only if sha256_takes_instructions().
void sha256_blocks_x86(uint32_t *hash, const uint8_t *data, uint32_t count);

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Common to both hashes: the digest size and the selectors.
#ifndef ZOKECC_HASH_DIGEST_H
#define ZOKECC_HASH_DIGEST_H

#include <zokecc/hash.h>

#include <cstdint>

namespace zokecc {

constexpr uint32_t kDigestBytes = 32;

inline bool is_known_hash(uint32_t selector)
{
    return selector == HASH_ALG_SM3 || selector == HASH_ALG_SHA256;
}

}  // namespace zokecc

#endif

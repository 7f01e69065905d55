// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The size that both hashes share.
#ifndef ZOKECC_HASH_DIGEST_H
#define ZOKECC_HASH_DIGEST_H

#include <cstdint>

namespace zokecc {

constexpr uint32_t kDigestBytes = 32;

}  // namespace zokecc

#endif

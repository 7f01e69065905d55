// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The inverse modulo an odd number, in time that depends only on the modulus's size.
#ifndef ZOKECC_CT_INVERSE_H
#define ZOKECC_CT_INVERSE_H

#include <cstdint>

#include "ct/mask.h"

namespace zokecc {

constexpr unsigned kMaxSecretWords = 9;

// out[words] = 1 / a[words] mod m[words], for an odd m and a below it; words up to kMaxSecretWords. out
// may be a. Returns all ones, or zero if there is no inverse; out is below m in either case.
Mask invert_secret(const uint32_t *a, const uint32_t *m, unsigned words, uint32_t *out);

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The curve types of the session interface.
#ifndef ZOKECC_ECC_CURVE_TYPES_H
#define ZOKECC_ECC_CURVE_TYPES_H

#include <cstdint>

namespace zokecc {

// Bytes of a coordinate by type; 0 for a type that does not exist.
inline uint32_t session_byte_length(uint32_t type)
{
    constexpr uint32_t kByteLengths[] = {0, 20, 24, 28, 32, 32, 32};
    return type < sizeof kByteLengths / sizeof kByteLengths[0] ? kByteLengths[type] : 0;
}

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// A view of a byte string: where it starts and how long it is, never who owns it.
#ifndef ZOKECC_BASE_VIEWS_H
#define ZOKECC_BASE_VIEWS_H

#include <cstdint>
#include <span>

namespace zokecc {

using Bytes = std::span<const uint8_t>;

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Counts what the library has allocated and not freed: it calls malloc, calloc and free through this.
#ifndef ZOKECC_TESTS_SOAK_MEMORY_COUNT_H
#define ZOKECC_TESTS_SOAK_MEMORY_COUNT_H

#include <cstddef>

namespace zokecc_soak {

struct MemoryCount {
    size_t blocks;
    size_t bytes;    // as requested
    size_t largest;  // size of the largest block so far, freed or not
};

MemoryCount memory_in_use();

// The C library's own figure: bytes of its arena in use. 0 if unknown.
size_t arena_in_use();

}  // namespace zokecc_soak

#endif

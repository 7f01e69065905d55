// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The heap and the sources of randomness with which the scan replaces the C library's.
#ifndef ZOKECC_TESTS_SECRETS_STAND_INS_H
#define ZOKECC_TESTS_SECRETS_STAND_INS_H

#include <cstddef>
#include <cstdint>

#include "tests/secrets/machine.h"

namespace zokecc_test::secrets {

// The library's blocks, one after the other; nothing is reused, so a block stays as it
// was when it was freed.
struct Heap {
    uint8_t *begin;
    size_t size, used;
};
extern Heap heap;

struct Block {
    size_t offset, size;
    bool freed;
};

// Empties the heap.
void clear_heap();
// While enabled, blocks come from this heap. Also for blocks that all calls need.
void use_heap(bool on);
// The current blocks are part of every start state.
void keep_blocks();
Block block_at(size_t offset);

// Null, or called with everything the fake kernel delivers.
extern void (*note_random)(void *bytes, size_t size);

void start_watching(const Conditions &conditions);
Counts stop_watching();

}  // namespace zokecc_test::secrets

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The heap and the sources of randomness that the scan puts in the place of the C library's.
#ifndef ZOKECC_TESTS_SECRETS_STAND_INS_H
#define ZOKECC_TESTS_SECRETS_STAND_INS_H

#include <cstddef>
#include <cstdint>

#include "tests/secrets/machine.h"

namespace zokecc_test::secrets {

// Where the library's blocks lie, one after the other; nothing is used twice, so a block stays as it
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
// While it is on, blocks come from the heap. For what the calls need all the time, too.
void use_heap(bool on);
// Blocks of now belong to every start.
void keep_blocks();
Block block_at(size_t offset);

// Null, or told of all that the stand-in for the kernel gives.
extern void (*note_random)(void *bytes, size_t size);

void start_watching(const Conditions &conditions);
Counts stop_watching();

}  // namespace zokecc_test::secrets

#endif

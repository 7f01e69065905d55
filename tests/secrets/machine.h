// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Runs a call on its own stack and records all heap blocks and the library's variables: the
// memory it leaves can be compared with that left by the same call with other secrets.
//
// The program defines malloc, calloc, free, rand, srand, time and getrandom, so the installed shared library
// uses these while a call runs. Equal calls get equal addresses.
#ifndef ZOKECC_TESTS_SECRETS_MACHINE_H
#define ZOKECC_TESTS_SECRETS_MACHINE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zokecc_test::secrets {

struct Conditions {
    uint32_t stream = 0;      // which random numbers are drawn
    unsigned allocation = 0;  // the one that fails, from 1 on; 0 for none
    unsigned draw = 0;        // the draw from the kernel that fails, also from 1 on
};

struct Counts {
    unsigned allocations = 0;
    unsigned draws = 0;  // of the kernel's generator
    size_t stack = 0;    // bytes below the caller
};

using Work = uint32_t (*)();

// Finds the variables of the shared libraries with these names and saves them and the heap:
// every call starts from there.
void note_start(const std::vector<std::string> &libraries);
size_t bytes_of_variables();

// All that a call leaves in memory.
struct Remains {
    std::vector<uint8_t> stack, heap, variables;
    uint32_t status = 0;
    Counts counts;
};

// The result is in one of two buffers, used in turn.
const Remains &run(Work work, const Conditions &conditions);

// A 4-byte word that differs.
struct Finding {
    const char *place;  // "stack", "freed heap", "kept heap", "variable"
    size_t offset;      // below the caller, in its block, in the variables
    uint32_t first, second;
};

// The differences between two runs; `second` must be the latest run.
std::vector<Finding> differences(const Remains &first, const Remains &second);

}  // namespace zokecc_test::secrets

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// A call on a stack of its own, with every block of the heap and the library's variables in view: the
// memory that it leaves can be compared with what the same call left that was given other secrets.
//
// The program defines malloc, calloc, free, rand, srand, time and getrandom, so the shared library uses
// these while a call runs, as it lies in the file system. Equal calls see equal addresses.
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
    unsigned draw = 0;        // the draw from the kernel that fails, likewise
};

struct Counts {
    unsigned allocations = 0;
    unsigned draws = 0;  // of the kernel's generator
    size_t stack = 0;    // bytes below the caller
};

using Work = uint32_t (*)();

// Finds the variables of the shared libraries with these names and notes what they and the heap hold:
// every call starts from there.
void note_start(const std::vector<std::string> &libraries);
size_t bytes_of_variables();

// All that a call leaves in memory.
struct Remains {
    std::vector<uint8_t> stack, heap, variables;
    uint32_t status = 0;
    Counts counts;
};

// The result lies in one of two places that are used in turn.
const Remains &run(Work work, const Conditions &conditions);

// A word of 4 bytes that differs.
struct Finding {
    const char *place;  // "stack", "freed heap", "kept heap", "variable"
    size_t offset;      // below the caller, in its block, in the variables
    uint32_t first, second;
};

// What differs between two runs; `second` has to be the last that ran.
std::vector<Finding> differences(const Remains &first, const Remains &second);

}  // namespace zokecc_test::secrets

#endif

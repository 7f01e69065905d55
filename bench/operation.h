// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Named operations to measure, each as done by the library and by its peer, OpenSSL.
//
// Shared by the programs that measure time and the one that counts instructions. Operations call only the
// public interfaces of both sides.
#ifndef ZOKECC_BENCH_OPERATION_H
#define ZOKECC_BENCH_OPERATION_H

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <vector>

namespace zokecc_bench {

// Throws if good is false.
inline void require(bool good, const std::string &what)
{
    if (!good) throw std::runtime_error(what);
}

// Runs an operation count times; throws if one of them failed.
using Loop = std::function<void(uint64_t count)>;

// The call is inlined into the loop, so that overhead does not swamp a call of a few nanoseconds.
template <class Call>
Loop repeat(Call call)
{
    return [call](uint64_t count) mutable {
        bool good = true;
        while (count-- > 0) good &= static_cast<bool>(call());
        require(good, "a call failed");
    };
}

struct Sides {
    Loop ours;
    Loop peer = {};                          // empty if nothing is comparable
    std::function<void()> before_ours = {};  // not measured; installs the process-wide curve
};

struct Operation {
    std::string name;
    std::function<Sides()> make;  // sets up keys and sessions; compares deterministic results
    unsigned batch = 1;           // calls between two clock readings
    bool has_peer = true;
};

// All operations linked into the program, in the order of their files.
std::vector<Operation> &operations();

// Adds operations before main starts.
struct Register {
    Register(std::initializer_list<Operation> added);
};

}  // namespace zokecc_bench

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// What is measured: named operations, each as the library does it and as its peer, OpenSSL, does.
//
// The programs that measure time and the one that counts instructions share these. Operations call
// nothing but the public interfaces of both sides.
#ifndef ZOKECC_BENCH_OPERATION_H
#define ZOKECC_BENCH_OPERATION_H

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <vector>

namespace zokecc_bench {

// Throws if something that has to work did not.
inline void require(bool good, const std::string &what)
{
    if (!good) throw std::runtime_error(what);
}

// Does one operation that many times; throws if one of them failed.
using Loop = std::function<void(uint64_t count)>;

// The loop is compiled with the call inside, so that a call of some nanoseconds does not drown.
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
    Loop peer = {};                          // empty where nothing compares
    std::function<void()> before_ours = {};  // not measured; installs the curve of the process
};

struct Operation {
    std::string name;
    std::function<Sides()> make;  // sets up keys and sessions, and compares results where they are fixed
    unsigned batch = 1;           // calls between two looks at the clock
    bool has_peer = true;
};

// All operations that are linked into the program, in the order of their files.
std::vector<Operation> &operations();

// Adds operations before main starts.
struct Register {
    Register(std::initializer_list<Operation> added);
};

}  // namespace zokecc_bench

#endif

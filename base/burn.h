// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Clears the stack that a call has used.
//
// Variables that hold a secret are wiped where they are declared (base/wipe.h), but the compiler makes
// further copies: spilled registers, temporaries. When the call returns they remain below its frame. Scalar
// multiplications use the most stack and clear it themselves; a call clears no deeper than it has been, so a
// thread needs no more stack for it. tests/secrets verifies that the sizes are large enough.
#ifndef ZOKECC_BASE_BURN_H
#define ZOKECC_BASE_BURN_H

#include <cstddef>
#include <cstdint>

#include "base/linkage.h"

namespace zokecc {

// Bytes to clear below a frame: for point additions, and for scalar multiplications with their inversion. The
// reference path goes deeper, because its frames hold numbers of 80 bytes.
#ifdef __LP64__
constexpr size_t kStackOfShaInstructions = 256;
constexpr size_t kStackOfDigest = 768;
constexpr size_t kStackOfHash = 1152;
constexpr size_t kStackOfFastSums = 1536;
constexpr size_t kStackOfFastProduct = 1536;
constexpr size_t kStackOfReferenceSums = 2048;
constexpr size_t kStackOfReferenceProduct = 2304;
constexpr size_t kStackOfSecretProduct = 3072;
constexpr size_t kStackOfCall = 3072;
#else
constexpr size_t kStackOfShaInstructions = 544;
constexpr size_t kStackOfDigest = 544;
constexpr size_t kStackOfHash = 832;
constexpr size_t kStackOfFastSums = 1152;
constexpr size_t kStackOfFastProduct = 1280;
constexpr size_t kStackOfReferenceSums = 1200;
constexpr size_t kStackOfReferenceProduct = 1824;
constexpr size_t kStackOfSecretProduct = 2848;
constexpr size_t kStackOfCall = 2304;
#endif

// These two functions must save no register except the return address: the caller's registers may still hold
// secrets, and nothing would clear the place where they are saved. That rules out memset, and in Thumb-1 a
// frame of this size, which needs one more register.
#if defined(__thumb__) && !defined(__thumb2__) && defined(__GNUC__) && !defined(__clang__)
#define ZOKECC_PLAIN_FRAME __attribute__((noinline, target("arm")))
#else
#define ZOKECC_PLAIN_FRAME __attribute__((noinline))
#endif

// The widest store that every processor of this architecture has.
#if defined(__SSE2__) && defined(__LP64__)
using Burned = uint32_t __attribute__((vector_size(16)));
#else
using Burned = uint32_t;
#endif
constexpr size_t kBurnedAtOnce = 4;  // stores

ZOKECC_PLAIN_FRAME inline void burn_area(Burned *area, size_t count)
{
    do {
        area[0] = Burned{};
        area[1] = Burned{};
        area[2] = Burned{};
        area[3] = Burned{};
        __asm__ __volatile__("" : : "r"(area) : "memory");  // not a memset
        area += kBurnedAtOnce;
    } while (--count > 0);
}

template <size_t size>
ZOKECC_PLAIN_FRAME void burn_stack()
{
    static_assert(size % (sizeof(Burned) * kBurnedAtOnce) == 0);
    Burned area[size / sizeof(Burned)];
    burn_area(area, size / (sizeof(Burned) * kBurnedAtOnce));
}

// Declare it first in a function, so that it is destroyed last.
template <size_t size>
class StackBurn {
public:
    StackBurn() = default;
    ~StackBurn()
    {
        burn_stack<size>();
        __asm__ __volatile__("");  // no tail call: this frame must stay in place
    }
    StackBurn(const StackBurn &) = delete;
    StackBurn &operator=(const StackBurn &) = delete;
};

using CallBurn = StackBurn<kStackOfCall>;
using HashBurn = StackBurn<kStackOfHash>;
using DigestBurn = StackBurn<kStackOfDigest>;

}  // namespace zokecc

#endif

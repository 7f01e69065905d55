// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Clearing of the stack that a call has used.
//
// What holds a secret is wiped where it is declared (base/wipe.h), but the compiler keeps copies of its
// own: words of a number in spilled registers, results on their way to where they belong. They lie below
// the frame of the call when it returns. Most of the stack is taken by products of points, which clear
// what they used themselves; so a call clears no deeper than it has been, and the stack that a thread
// needs does not grow. tests/secrets shows that the sizes are enough.
#ifndef ZOKECC_BASE_BURN_H
#define ZOKECC_BASE_BURN_H

#include <cstddef>
#include <cstdint>

#include "base/linkage.h"

namespace zokecc {

// Bytes below a frame: sums of points alone, products with the inversion at their end. Frames of the
// definition have numbers of 80 bytes, which is why it goes deeper.
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
constexpr size_t kStackOfReferenceSums = 1408;
constexpr size_t kStackOfReferenceProduct = 1824;
constexpr size_t kStackOfSecretProduct = 2592;
constexpr size_t kStackOfCall = 2304;
#endif

// The two functions save no register but the address to return to: whoever burns his stack still has in
// the others what he computed with, and where they are saved, nothing clears them. So memset does not
// serve, and in short instructions neither does a frame of that size, which takes one register more.
#if defined(__thumb__) && !defined(__thumb2__) && defined(__GNUC__) && !defined(__clang__)
#define ZOKECC_PLAIN_FRAME __attribute__((noinline, target("arm")))
#else
#define ZOKECC_PLAIN_FRAME __attribute__((noinline))
#endif

// The widest store that every processor of the kind has.
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

// Declared before everything else in a function, so that it acts when all the rest is gone.
template <size_t size>
class StackBurn {
public:
    StackBurn() = default;
    ~StackBurn()
    {
        burn_stack<size>();
        __asm__ __volatile__("");  // not a jump: the caller's frame has to stay where it is
    }
    StackBurn(const StackBurn &) = delete;
    StackBurn &operator=(const StackBurn &) = delete;
};

using CallBurn = StackBurn<kStackOfCall>;
using HashBurn = StackBurn<kStackOfHash>;
using DigestBurn = StackBurn<kStackOfDigest>;

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The sum of one column of products, in two words, for limbs of 29 bits stored times 8.
#ifndef ZOKECC_MINT_LIMBS_COLUMN_SUM_H
#define ZOKECC_MINT_LIMBS_COLUMN_SUM_H

#include <cstdint>
#include <type_traits>

#include "base/config.h"
#include "base/linkage.h"
#include "mint/limbs/limb.h"

namespace zokecc {

// Two words, not one 64-bit variable: compilers keep that in a register pair, which costs a sixth more
// instructions.
struct PortableColumnSum {
    uint32_t low, high;

    // Adds a b to a sum that must fit; the first product of a column is stored instead.
    template <bool first>
    ZOKECC_INLINE void add(uint32_t a, uint32_t b)
    {
        set((first ? 0 : value()) + uint64_t{a} * b);
    }

    ZOKECC_INLINE void add_word(uint32_t word) { set(value() + word); }

    // Adds the carry of the column below, given that column's upper word; its lower word is the limb.
    ZOKECC_INLINE void add_carry(uint32_t below) { set(value() + (uint64_t{below} << 3)); }

private:
    uint64_t value() const { return uint64_t{high} << 32 | low; }
    void set(uint64_t value)
    {
        low = static_cast<uint32_t>(value);
        high = static_cast<uint32_t>(value >> 32);
    }
};

struct ArmColumnSum {
    uint32_t low, high;

    template <bool first>
    ZOKECC_INLINE void add(uint32_t a, uint32_t b)
    {
        if constexpr (first)
            __asm__("umull %0, %1, %2, %3" : "=&r"(low), "=&r"(high) : "r"(a), "r"(b));
        else
            __asm__("umlal %0, %1, %2, %3" : "+r"(low), "+r"(high) : "r"(a), "r"(b));
    }

    ZOKECC_INLINE void add_word(uint32_t word)
    {
        __asm__("adds %0, %0, %2\n\tadc %1, %1, #0" : "+&r"(low), "+r"(high) : "r"(word) : "cc");
    }

    ZOKECC_INLINE void add_carry(uint32_t below)
    {
        __asm__("adds %0, %0, %2, lsl #3\n\tadc %1, %1, %2, lsr #29"
                : "+&r"(low), "+r"(high)
                : "r"(below)
                : "cc");
    }
};

template <class Steps>
using ColumnSumOf = std::conditional_t<kArmSteps && kIsNative<Steps>, ArmColumnSum, PortableColumnSum>;

}  // namespace zokecc

#endif

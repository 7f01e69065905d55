// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The carry chains of limb.h in x86-64 instructions, with the carry in the flags, and the 128-bit product.
//
// Each replaces its namesake in PortableSteps. Included by limb.h only.
#ifndef ZOKECC_MINT_LIMBS_LIMB_X86_64_H
#define ZOKECC_MINT_LIMBS_LIMB_X86_64_H

#include "base/carry_x86_64.h"
#include "base/cpu_x86_64.h"
#include "base/linkage.h"

namespace zokecc::x86_64 {

struct AssembledSum : PortableSum {
    void add_product(uint64_t a, uint64_t b)
    {
        uint64_t top;
        __asm__("mulq %[b]\n\taddq %%rax, %[low]\n\tadcq %%rdx, %[middle]\n\tadcq $0, %[high]"
                : [low] "+&r"(low), [middle] "+&r"(middle), [high] "+&r"(high), "+&a"(a), "=&d"(top)
                : [b] "rm"(b)
                : "cc");
    }
};

// Two carry chains, one for the lower and one for the upper halves, run in parallel.
#define ZOKECC_ROW_STEP(here, next) \
    "mulxq 8*" #here "(%[b]), %[low], %[high]\n\tadcxq %[low], %[r" #here "]\n\t" \
    "adoxq %[high], %[r" #next "]\n\t"
// For limbs that are set, not added to.
#define ZOKECC_FIRST_STEP "mulxq (%[b]), %[r0], %[r1]\n\t"
#define ZOKECC_NEW_STEP(add, here, next) \
    "mulxq 8*" #here "(%[b]), %[low], %[r" #next "]\n\t" add " %[low], %[r" #here "]\n\t"
#define ZOKECC_ROW(steps, last, ...) \
    __asm__(steps "adcq $0, %[r" #last "]" \
            : [low] "=&r"(low), [high] "=&r"(high), __VA_ARGS__ \
            : [b] "r"(b), "d"(a), "m"(*reinterpret_cast<const uint64_t(*)[count]>(b)) \
            : "cc")
#define ZOKECC_CLEAR "xorl %k[low], %k[low]\n\t"

// Adds products of a row of limbs by one limb, usable if has_rows().
struct NativeSum : AssembledSum {
    // cppcheck-suppress duplInheritedMember ; meant to hide the base's, which has no rows
    static constexpr unsigned kMaxRow = 5;
    static bool has_rows() { return has_row_instructions(); }

    // r[count + 1] += a * b[count]; the sum must fit.
    template <unsigned count>
    static ZOKECC_INLINE void add_row(uint64_t a, const uint64_t *b, uint64_t *r)
    {
        uint64_t low;
        uint64_t high;
        static_assert(count >= 1 && count <= 5);
        if constexpr (count == 1)
            ZOKECC_ROW(ZOKECC_CLEAR ZOKECC_ROW_STEP(0, 1), 1, [r0] "+&r"(r[0]), [r1] "+&r"(r[1]));
        else if constexpr (count == 2)
            ZOKECC_ROW(ZOKECC_CLEAR ZOKECC_ROW_STEP(0, 1) ZOKECC_ROW_STEP(1, 2),
                       2, [r0] "+&r"(r[0]), [r1] "+&r"(r[1]), [r2] "+&r"(r[2]));
        else if constexpr (count == 3)
            ZOKECC_ROW(ZOKECC_CLEAR ZOKECC_ROW_STEP(0, 1) ZOKECC_ROW_STEP(1, 2) ZOKECC_ROW_STEP(2, 3),
                       3, [r0] "+&r"(r[0]), [r1] "+&r"(r[1]), [r2] "+&r"(r[2]), [r3] "+&r"(r[3]));
        else if constexpr (count == 4)
            ZOKECC_ROW(
                ZOKECC_CLEAR ZOKECC_ROW_STEP(0, 1) ZOKECC_ROW_STEP(1, 2) ZOKECC_ROW_STEP(2, 3)
                    ZOKECC_ROW_STEP(3, 4),
                4, [r0] "+&r"(r[0]), [r1] "+&r"(r[1]), [r2] "+&r"(r[2]), [r3] "+&r"(r[3]), [r4] "+&r"(r[4]));
        else if constexpr (count == 5)
            ZOKECC_ROW(ZOKECC_CLEAR ZOKECC_ROW_STEP(0, 1) ZOKECC_ROW_STEP(1, 2) ZOKECC_ROW_STEP(2, 3)
                           ZOKECC_ROW_STEP(3, 4) ZOKECC_ROW_STEP(4, 5),
                       5, [r0] "+&r"(r[0]), [r1] "+&r"(r[1]), [r2] "+&r"(r[2]), [r3] "+&r"(r[3]),
                       [r4] "+&r"(r[4]), [r5] "+&r"(r[5]));
    }

    // r[count + 1] = a * b[count]
    template <unsigned count>
    static ZOKECC_INLINE void set_row(uint64_t a, const uint64_t *b, uint64_t *r)
    {
        uint64_t low;
        uint64_t high;
        static_assert(count >= 1 && count <= 4);
        if constexpr (count == 1)
            __asm__("mulxq %[b], %[r0], %[r1]" : [r0] "=&r"(r[0]), [r1] "=&r"(r[1]) : [b] "rm"(b[0]), "d"(a));
        else if constexpr (count == 2)
            ZOKECC_ROW(ZOKECC_FIRST_STEP ZOKECC_NEW_STEP("addq", 1, 2),
                       2, [r0] "=&r"(r[0]), [r1] "=&r"(r[1]), [r2] "=&r"(r[2]));
        else if constexpr (count == 3)
            ZOKECC_ROW(ZOKECC_FIRST_STEP ZOKECC_NEW_STEP("addq", 1, 2) ZOKECC_NEW_STEP("adcq", 2, 3),
                       3, [r0] "=&r"(r[0]), [r1] "=&r"(r[1]), [r2] "=&r"(r[2]), [r3] "=&r"(r[3]));
        else if constexpr (count == 4)
            ZOKECC_ROW(
                ZOKECC_FIRST_STEP ZOKECC_NEW_STEP("addq", 1, 2) ZOKECC_NEW_STEP("adcq", 2, 3)
                    ZOKECC_NEW_STEP("adcq", 3, 4),
                4, [r0] "=&r"(r[0]), [r1] "=&r"(r[1]), [r2] "=&r"(r[2]), [r3] "=&r"(r[3]), [r4] "=&r"(r[4]));
    }

    // x[2 n] = 2 x[2 n] + the squares of a[n]; the sum must fit.
    template <unsigned n>
    static ZOKECC_INLINE void double_and_add_squares(const uint64_t *a, uint64_t *x)
    {
        unsigned long long doubled[2 * n];
        unsigned char carry = 0;
#pragma GCC unroll 8
        for (unsigned i = 0; i < 2 * n; ++i) carry = add_carry(carry, x[i], x[i], doubled[i]);
        carry = 0;
#pragma GCC unroll 4
        for (unsigned i = 0; i < n; ++i) {
            uint64_t square[2];
            set_row<1>(a[i], a + i, square);
            unsigned long long sum;
            carry = add_carry(carry, doubled[2 * i], square[0], sum);
            x[2 * i] = sum;
            carry = add_carry(carry, doubled[2 * i + 1], square[1], sum);
            x[2 * i + 1] = sum;
        }
    }
};

#undef ZOKECC_CLEAR
#undef ZOKECC_NEW_STEP
#undef ZOKECC_FIRST_STEP
#undef ZOKECC_ROW
#undef ZOKECC_ROW_STEP

struct Steps : PortableSteps<uint64_t> {
    using Sum = NativeSum;

    static uint64_t add_limbs(const uint64_t *a, const uint64_t *b, unsigned n, uint64_t *out)
    {
        unsigned char carry = 0;
#pragma GCC unroll 5
        for (unsigned i = 0; i < n; ++i) {
            unsigned long long sum;
            carry = add_carry(carry, a[i], b[i], sum);
            out[i] = sum;
        }
        return carry;
    }

    static uint64_t sub_limbs(const uint64_t *a, const uint64_t *b, unsigned n, uint64_t *out, uint64_t &ones)
    {
        const uint64_t borrow = subtract(a, b, n, out);
        uint64_t marks = 0;
#pragma GCC unroll 5
        for (unsigned i = 0; i < n; ++i) marks |= all_ones_mark(out[i]);
        ones = marks;
        return borrow;
    }

private:
    // sub_limbs without the check for words of all ones.
    static uint64_t subtract(const uint64_t *a, const uint64_t *b, unsigned n, uint64_t *out)
    {
        unsigned char borrow = 0;
#pragma GCC unroll 5
        for (unsigned i = 0; i < n; ++i) {
            unsigned long long difference;
            borrow = sub_borrow(borrow, a[i], b[i], difference);
            out[i] = difference;
        }
        return borrow;
    }
};

}  // namespace zokecc::x86_64

#endif

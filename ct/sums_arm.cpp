// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Sums modulo p of secret numbers of eight words in ARM instructions: all words in registers r4 to r11.
//
// Naked functions: eight words, three of the other operand and its pointer need every register. No
// instruction is conditional; a mask in r1 stands for the carry.
#include "ct/sums.h"

#define ENTER "push {r4-r11, lr}\n\tldmia r0, {r4-r11}\n\t"
#define LEAVE "stmia r3, {r4-r11}\n\tpop {r4-r11, pc}\n\t"

// One instruction for each word, the first one without a carry; leaves the pointer 24 bytes further on.
#define CHAIN(first, next, from) \
    "ldmia " from "!, {r0, ip, lr}\n\t" first " r4, r4, r0\n\t" next " r5, r5, ip\n\t" next \
    " r6, r6, lr\n\t" \
    "ldmia " from "!, {r0, ip, lr}\n\t" next " r7, r7, r0\n\t" next " r8, r8, ip\n\t" next " r9, r9, lr\n\t" \
    "ldmia " from ", {r0, ip}\n\t" next " r10, r10, r0\n\t" next " r11, r11, ip\n\t"

// Adds p where r1 is all ones.
#define ADD_MASKED \
    "ldmia r2!, {r0, ip, lr}\n\tand r0, r0, r1\n\tand ip, ip, r1\n\tand lr, lr, r1\n\t" \
    "adds r4, r4, r0\n\tadcs r5, r5, ip\n\tadcs r6, r6, lr\n\t" \
    "ldmia r2!, {r0, ip, lr}\n\tand r0, r0, r1\n\tand ip, ip, r1\n\tand lr, lr, r1\n\t" \
    "adcs r7, r7, r0\n\tadcs r8, r8, ip\n\tadcs r9, r9, lr\n\t" \
    "ldmia r2, {r0, ip}\n\tand r0, r0, r1\n\tand ip, ip, r1\n\t" \
    "adcs r10, r10, r0\n\tadcs r11, r11, ip\n\t"

// Subtracts p, and adds it back if that borrows and r1 is all ones.
#define SUBTRACT_ONCE \
    CHAIN("subs", "sbcs", "r2") \
    "sbc r0, r0, r0\n\tand r1, r1, r0\n\tsub r2, r2, #24\n\t" ADD_MASKED

namespace zokecc {

__attribute__((naked)) void zokecc_secret_add_8(const uint32_t *, const uint32_t *, const uint32_t *,
                                                uint32_t *)
{
    __asm__(ENTER CHAIN("adds", "adcs", "r1") "sbc r1, r1, r1\n\t" SUBTRACT_ONCE LEAVE);
}

__attribute__((naked)) void zokecc_secret_sub_8(const uint32_t *, const uint32_t *, const uint32_t *,
                                                uint32_t *)
{
    __asm__(ENTER CHAIN("subs", "sbcs", "r1") "sbc r1, r1, r1\n\t" ADD_MASKED LEAVE);
}

__attribute__((naked)) void zokecc_secret_subtract_once_8(uint32_t *, uint32_t, const uint32_t *)
{
    __asm__("mov r3, r0\n\t" ENTER "sub r1, r1, #1\n\t" SUBTRACT_ONCE LEAVE);
}

}  // namespace zokecc

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Steps of the inverse in ARM instructions.
#include "mint/limbs/inverse_steps.h"

namespace zokecc {

// r0 points to the number that was halved last, r1 to the other one; r2 is the room left. The difference is
// in registers from r4 on; after a borrow it is negated, and r0 and r1 change places.

// r3 = trailing zeros of r4, ip = 32 - r3. Branches to 2 if there are none or more than r2, or if the
// comparisons before it found a word of all ones.
#define ZOKECC_COUNT_HALVINGS \
    "beq 2f\n\trsbs r3, r4, #0\n\tbeq 2f\n\tand r3, r3, r4\n\tclz r3, r3\n\trsb r3, r3, #31\n\t" \
    "cmp r3, r2\n\tbhi 2f\n\tsub r2, r2, r3\n\trsb ip, r3, #32\n\t"
#define ZOKECC_HALVE(word, above) \
    "mov " #word ", " #word ", lsr r3\n\torr " #word ", " #word ", " #above ", lsl ip\n\t"
#define ZOKECC_ADD_ROWS \
    "ldmdb r0, {r4, r5}\n\tldmdb r1, {r6, r7}\n\tadd r4, r4, r6\n\tadd r5, r5, r7\n\t" \
    "stmdb r0, {r4, r5}\n\t"
#define ZOKECC_DOUBLE_ROW "mov r6, r6, lsl r3\n\tmov r7, r7, lsl r3\n\tstmdb r1, {r6, r7}\n\t"
#define ZOKECC_CHANGE_SIDES "mov r3, r0\n\tmov r0, r1\n\tmov r1, r3\n\t"
#define ZOKECC_STORE_ROOM "ldr r3, [sp], #4\n\tstr r2, [r3]\n\t"

// clang-format off
__attribute__((naked)) uint32_t *subtract_and_halve_8(uint32_t *, uint32_t *, uint32_t *)
{
    __asm__(
        "push {r2, r4, r5, r6, r7, r8, r9, r10, r11, lr}\n\tldr r2, [r2]\n"
        "0:\n\t"
        "ldmia r0, {r4, r5, r6, r7, r8, r9, r10, r11}\n\t"
        "ldmia r1!, {r3, ip, lr}\n\tsubs r4, r4, r3\n\tsbcs r5, r5, ip\n\tsbcs r6, r6, lr\n\t"
        "ldmia r1!, {r3, ip, lr}\n\tsbcs r7, r7, r3\n\tsbcs r8, r8, ip\n\tsbcs r9, r9, lr\n\t"
        "ldmia r1, {r3, ip}\n\tsbcs r10, r10, r3\n\tsbcs r11, r11, ip\n\t"
        "sub r1, r1, #24\n\tbcc 3f\n"
        "1:\n\t"
        "cmn r4, #1\n\tcmnne r5, #1\n\tcmnne r6, #1\n\tcmnne r7, #1\n\t"
        "cmnne r8, #1\n\tcmnne r9, #1\n\tcmnne r10, #1\n\tcmnne r11, #1\n\t"
        ZOKECC_COUNT_HALVINGS
        ZOKECC_HALVE(r4, r5) ZOKECC_HALVE(r5, r6) ZOKECC_HALVE(r6, r7) ZOKECC_HALVE(r7, r8)
        ZOKECC_HALVE(r8, r9) ZOKECC_HALVE(r9, r10) ZOKECC_HALVE(r10, r11)
        "mov r11, r11, lsr r3\n\t"
        "stmia r0, {r4, r5, r6, r7, r8, r9, r10, r11}\n\t"
        ZOKECC_ADD_ROWS
        ZOKECC_DOUBLE_ROW
        "b 0b\n"
        "2:\n\t"
        "stmia r0, {r4, r5, r6, r7, r8, r9, r10, r11}\n\t"
        ZOKECC_ADD_ROWS
        ZOKECC_STORE_ROOM
        "pop {r4, r5, r6, r7, r8, r9, r10, r11, pc}\n"
        "3:\n\t"
        "rsbs r4, r4, #0\n\trscs r5, r5, #0\n\trscs r6, r6, #0\n\trscs r7, r7, #0\n\t"
        "rscs r8, r8, #0\n\trscs r9, r9, #0\n\trscs r10, r10, #0\n\trsc r11, r11, #0\n\t"
        ZOKECC_CHANGE_SIDES
        "b 1b");
}

__attribute__((naked)) uint32_t *subtract_and_halve_4(uint32_t *, uint32_t *, uint32_t *)
{
    __asm__(
        "push {r2, r4, r5, r6, r7, r8, lr}\n\tldr r2, [r2]\n"
        "0:\n\t"
        "ldmia r0, {r4, r5, r6, r7}\n\tldmia r1, {r3, r8, ip, lr}\n\t"
        "subs r4, r4, r3\n\tsbcs r5, r5, r8\n\tsbcs r6, r6, ip\n\tsbcs r7, r7, lr\n\tbcc 3f\n"
        "1:\n\t"
        "cmn r4, #1\n\tcmnne r5, #1\n\tcmnne r6, #1\n\tcmnne r7, #1\n\t"
        ZOKECC_COUNT_HALVINGS
        ZOKECC_HALVE(r4, r5) ZOKECC_HALVE(r5, r6) ZOKECC_HALVE(r6, r7)
        "mov r7, r7, lsr r3\n\t"
        "stmia r0, {r4, r5, r6, r7}\n\t"
        ZOKECC_ADD_ROWS
        ZOKECC_DOUBLE_ROW
        "b 0b\n"
        "2:\n\t"
        "stmia r0, {r4, r5, r6, r7}\n\t"
        ZOKECC_ADD_ROWS
        ZOKECC_STORE_ROOM
        "pop {r4, r5, r6, r7, r8, pc}\n"
        "3:\n\t"
        "rsbs r4, r4, #0\n\trscs r5, r5, #0\n\trscs r6, r6, #0\n\trsc r7, r7, #0\n\t"
        ZOKECC_CHANGE_SIDES
        "b 1b");
}
// clang-format on

}  // namespace zokecc

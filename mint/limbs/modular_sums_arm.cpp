// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Sums modulo p in ARM instructions: all words of a number in registers, from r4 on.
//
// Naked functions: eight words and three of the other operand need every register. r1 and r2 point to the
// other operand and to p; a chain leaves its pointer 24 bytes further on.
#include "mint/limbs/modular_sums.h"

// One instruction for each word, the first one without a carry.
#define FIRST(first, next, from) \
    "ldmia " from "!, {r0, ip, lr}\n\t" first " r4, r4, r0\n\t" next " r5, r5, ip\n\t" next \
    " r6, r6, lr\n\t" \
    "ldmia " from "!, {r0, ip, lr}\n\t" next " r7, r7, r0\n\t" next " r8, r8, ip\n\t" next " r9, r9, lr\n\t"
#define CHAIN_6(first, next, from) FIRST(first, next, from)
#define CHAIN_7(first, next, from) FIRST(first, next, from) "ldr r0, [" from "]\n\t" next " r10, r10, r0\n\t"
#define CHAIN_8(first, next, from) \
    FIRST(first, next, from) "ldmia " from ", {r0, ip}\n\t" next " r10, r10, r0\n\t" next " r11, r11, ip\n\t"

#define DOUBLE_6 \
    "adds r4, r4, r4\n\tadcs r5, r5, r5\n\tadcs r6, r6, r6\n\t" \
    "adcs r7, r7, r7\n\tadcs r8, r8, r8\n\tadcs r9, r9, r9\n\t"
#define DOUBLE_7 DOUBLE_6 "adcs r10, r10, r10\n\t"
#define DOUBLE_8 DOUBLE_7 "adcs r11, r11, r11\n\t"

// eq if a word is all ones.
#define ANY_ALL_ONES_6 \
    "cmn r4, #1\n\tcmnne r5, #1\n\tcmnne r6, #1\n\tcmnne r7, #1\n\tcmnne r8, #1\n\tcmnne r9, #1\n\t"
#define ANY_ALL_ONES_7 ANY_ALL_ONES_6 "cmnne r10, #1\n\t"
#define ANY_ALL_ONES_8 ANY_ALL_ONES_7 "cmnne r11, #1\n\t"

// cc if a word is 0 or 1.
#define ANY_BELOW_TWO_6 \
    "cmp r4, #2\n\tcmpcs r5, #2\n\tcmpcs r6, #2\n\tcmpcs r7, #2\n\tcmpcs r8, #2\n\tcmpcs r9, #2\n\t"
#define ANY_BELOW_TWO_7 ANY_BELOW_TWO_6 "cmpcs r10, #2\n\t"
#define ANY_BELOW_TWO_8 ANY_BELOW_TWO_7 "cmpcs r11, #2\n\t"

#define ENTER(last) "push {r4-r11, lr}\n\tldmia r0, {r4-" last "}\n\t"
#define LEAVE "pop {r4-r11, pc}\n\t"
#define LEAVE_WITH(last) "stmia r3, {r4-" last "}\n\tmov r0, #1\n\t" LEAVE
#define FAIL "mov r0, #0\n\t" LEAVE
#define REWIND "sub r2, r2, #24\n\t"
// Compares the top words: hi if the sum is above p, cc if it is below, eq if undecided.
#define COMPARE_TOP(last, top) "ldr ip, [r2, #" top "]\n\tcmp " last ", ip\n\t"

// clang-format off
#define ADD(words, last, top) \
    ENTER(last) CHAIN_##words("adds", "adcs", "r1") \
    "bcs 1f\n\t" COMPARE_TOP(last, top) "bhi 1f\n\tbeq 2f\n" \
    "0:\tstmia r3, {r4-" last "}\n\t" LEAVE \
    "1:\n\t" CHAIN_##words("subs", "sbcs", "r2") "b 0b\n" \
    "2:\n\t" CHAIN_##words("subs", "sbcs", "r2") "bcs 0b\n\t" REWIND \
             CHAIN_##words("adds", "adcs", "r2") "b 0b"

#define TRY_SUB(words, last) \
    ENTER(last) CHAIN_##words("subs", "sbcs", "r1") \
    "bcc 1f\n\t" ANY_ALL_ONES_##words "beq 9f\n\t" LEAVE_WITH(last) \
    "1:\n\t" ANY_BELOW_TWO_##words "bcc 9f\n\t" \
             CHAIN_##words("adds", "adcs", "r2") ANY_ALL_ONES_##words "beq 9f\n\t" LEAVE_WITH(last) \
    "9:\n\t" FAIL

#define TRY_DOUBLE(words, last, top) \
    ENTER(last) \
    "0:\n\t" DOUBLE_##words "bcs 1f\n\t" COMPARE_TOP(last, top) "bhi 1f\n\tbeq 3f\n" \
    "2:\tsubs r1, r1, #1\n\tbne 0b\n\t" LEAVE_WITH(last) \
    "1:\n\t" CHAIN_##words("subs", "sbcs", "r2") REWIND \
    "4:\n\t" ANY_ALL_ONES_##words "bne 2b\n\t" FAIL \
    "3:\n\t" CHAIN_##words("subs", "sbcs", "r2") REWIND "bcs 4b\n\t" \
             CHAIN_##words("adds", "adcs", "r2") REWIND "b 2b"
// clang-format on

#define MODULAR_SUMS(words, last, top) \
    __attribute__((naked)) void zokecc_add_mod_##words(const uint32_t *, const uint32_t *, const uint32_t *, \
                                                       uint32_t *) \
    { \
        __asm__(ADD(words, last, top)); \
    } \
    __attribute__((naked)) bool zokecc_try_sub_mod_##words(const uint32_t *, const uint32_t *, \
                                                           const uint32_t *, uint32_t *) \
    { \
        __asm__(TRY_SUB(words, last)); \
    } \
    __attribute__((naked)) bool zokecc_try_double_mod_##words(const uint32_t *, unsigned, const uint32_t *, \
                                                              uint32_t *) \
    { \
        __asm__(TRY_DOUBLE(words, last, top)); \
    }

namespace zokecc {

MODULAR_SUMS(6, "r9", "20")
MODULAR_SUMS(7, "r10", "24")
MODULAR_SUMS(8, "r11", "28")

void zokecc_add_mod_any(const uint32_t *a, const uint32_t *b, const uint32_t *p, unsigned n, uint32_t *out)
{
    PortableSums<NativeSteps>::add(a, b, p, n, out);
}

}  // namespace zokecc

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The chains of limb.h in ARM's own instructions: four words at a time, the carry in the flags.
//
// Each overload takes the place of the template above it for 32-bit words. Included by limb.h only.
#ifndef ZOKECC_MINT_LIMBS_LIMB_ARM_H
#define ZOKECC_MINT_LIMBS_LIMB_ARM_H

namespace zokecc {

inline uint32_t add_limbs(const uint32_t *a, const uint32_t *b, unsigned n, uint32_t *out)
{
    uint32_t carry = 0;
    for (; n >= 4; n -= 4)
        __asm__ volatile(
            "ldmia %[a]!, {r4, r5, r6, r8}\n\tldmia %[b]!, {r9, r10, ip, lr}\n\tcmp %[carry], #1\n\t"
            "adcs r4, r4, r9\n\tadcs r5, r5, r10\n\tadcs r6, r6, ip\n\tadcs r8, r8, lr\n\t"
            "stmia %[out]!, {r4, r5, r6, r8}\n\tmov %[carry], #0\n\tadc %[carry], %[carry], #0"
            : [a] "+r"(a), [b] "+r"(b), [out] "+r"(out), [carry] "+r"(carry)
            :
            : "r4", "r5", "r6", "r8", "r9", "r10", "ip", "lr", "cc", "memory");
    for (; n > 0; --n)
        __asm__ volatile("ldr r4, [%[a]], #4\n\tldr r5, [%[b]], #4\n\tcmp %[carry], #1\n\tadcs r4, r4, r5\n\t"
                         "str r4, [%[out]], #4\n\tmov %[carry], #0\n\tadc %[carry], %[carry], #0"
                         : [a] "+r"(a), [b] "+r"(b), [out] "+r"(out), [carry] "+r"(carry)
                         :
                         : "r4", "r5", "cc", "memory");
    return carry;
}

inline uint32_t sub_limbs(const uint32_t *a, const uint32_t *b, unsigned n, uint32_t *out, uint32_t &ones)
{
    uint32_t borrow = 0;
    uint32_t marks = 0;
    for (; n >= 4; n -= 4)
        __asm__ volatile(
            "ldmia %[a]!, {r4, r5, r6, r8}\n\tldmia %[b]!, {r9, r10, ip, lr}\n\t"
            "rsbs %[borrow], %[borrow], #0\n\t"
            "sbcs r4, r4, r9\n\tsbcs r5, r5, r10\n\tsbcs r6, r6, ip\n\tsbcs r8, r8, lr\n\t"
            "stmia %[out]!, {r4, r5, r6, r8}\n\tmovcs %[borrow], #0\n\tmovcc %[borrow], #1\n\t"
            "cmn r4, #1\n\tcmnne r5, #1\n\tcmnne r6, #1\n\tcmnne r8, #1\n\tmoveq %[marks], #1"
            : [a] "+r"(a), [b] "+r"(b), [out] "+r"(out), [borrow] "+r"(borrow), [marks] "+r"(marks)
            :
            : "r4", "r5", "r6", "r8", "r9", "r10", "ip", "lr", "cc", "memory");
    for (; n > 0; --n)
        __asm__ volatile(
            "ldr r4, [%[a]], #4\n\tldr r5, [%[b]], #4\n\trsbs %[borrow], %[borrow], #0\n\t"
            "sbcs r4, r4, r5\n\t"
            "str r4, [%[out]], #4\n\tmovcs %[borrow], #0\n\tmovcc %[borrow], #1\n\t"
            "cmn r4, #1\n\tmoveq %[marks], #1"
            : [a] "+r"(a), [b] "+r"(b), [out] "+r"(out), [borrow] "+r"(borrow), [marks] "+r"(marks)
            :
            : "r4", "r5", "cc", "memory");
    ones = marks;
    return borrow;
}

inline uint64_t multiply_add(uint64_t sum, uint32_t a, uint32_t b)
{
    __asm__("umlal %Q0, %R0, %1, %2" : "+r"(sum) : "r"(a), "r"(b));
    return sum;
}

#if __ARM_ARCH >= 6
inline void multiply_add_both(uint32_t &low, uint32_t &high, uint32_t a, uint32_t b)
{
    __asm__("umaal %0, %1, %2, %3" : "+r"(low), "+r"(high) : "r"(a), "r"(b));
}
#endif

template <unsigned count>
inline uint64_t add_column(uint64_t sum, const uint32_t *a, const uint32_t *b)
{
    const uint32_t *end = b + count;
    for (unsigned i = 0; i < count / 4; ++i)
        __asm__ volatile("ldmia %[a]!, {r4, r5, r6, r8}\n\tldmdb %[end]!, {r9, r10, ip, lr}\n\t"
                         "umlal %Q[sum], %R[sum], r4, lr\n\tumlal %Q[sum], %R[sum], r5, ip\n\t"
                         "umlal %Q[sum], %R[sum], r6, r10\n\tumlal %Q[sum], %R[sum], r8, r9"
                         : [sum] "+r"(sum), [a] "+r"(a), [end] "+r"(end)
                         :
                         : "r4", "r5", "r6", "r8", "r9", "r10", "ip", "lr", "memory");
    if (count % 4 == 3)
        __asm__ volatile("ldmia %[a], {r4, r5, r6}\n\tldmdb %[end], {r9, r10, ip}\n\t"
                         "umlal %Q[sum], %R[sum], r4, ip\n\tumlal %Q[sum], %R[sum], r5, r10\n\t"
                         "umlal %Q[sum], %R[sum], r6, r9"
                         : [sum] "+r"(sum)
                         : [a] "r"(a), [end] "r"(end)
                         : "r4", "r5", "r6", "r9", "r10", "ip", "memory");
    if (count % 4 == 2)
        __asm__ volatile("ldmia %[a], {r4, r5}\n\tldmdb %[end], {r9, r10}\n\t"
                         "umlal %Q[sum], %R[sum], r4, r10\n\tumlal %Q[sum], %R[sum], r5, r9"
                         : [sum] "+r"(sum)
                         : [a] "r"(a), [end] "r"(end)
                         : "r4", "r5", "r9", "r10", "memory");
    if (count % 4 == 1)
        __asm__ volatile("ldr r4, [%[a]]\n\tldr r5, [%[end], #-4]\n\tumlal %Q[sum], %R[sum], r4, r5"
                         : [sum] "+r"(sum)
                         : [a] "r"(a), [end] "r"(end)
                         : "r4", "r5", "memory");
    return sum;
}

inline void shift_limbs_down(uint32_t *x, unsigned n, unsigned bits)
{
    uint32_t above = 0;
    for (; n % 4 != 0; --n) {
        const uint32_t word = x[n - 1];
        x[n - 1] = word >> bits | above << (32 - bits);
        above = word;
    }
    uint32_t *end = x + n;
    for (; n > 0; n -= 4)
        __asm__ volatile(
            "ldmdb %[end], {r4, r5, r6, r8}\n\tmov r9, %[above], lsl %[up]\n\tmov %[above], r4\n\t"
            "mov r4, r4, lsr %[down]\n\torr r4, r4, r5, lsl %[up]\n\t"
            "mov r5, r5, lsr %[down]\n\torr r5, r5, r6, lsl %[up]\n\t"
            "mov r6, r6, lsr %[down]\n\torr r6, r6, r8, lsl %[up]\n\t"
            "orr r8, r9, r8, lsr %[down]\n\tstmdb %[end]!, {r4, r5, r6, r8}"
            : [end] "+r"(end), [above] "+r"(above)
            : [down] "r"(bits), [up] "r"(32 - bits)
            : "r4", "r5", "r6", "r8", "r9", "memory");
}

// (2^32 - 1)^2 + 2 (2^32 - 1) = 2^64 - 1: a product, the word there and the carry fit two words.
#define ZOKECC_ARM_MUL_ADD_PAIR \
    "ldmia %[x]!, {r4, r5}\n\tldmia %[out], {r6, r8}\n\t" \
    "adds r6, r6, %[carry]\n\tmov %[carry], #0\n\tadc %[carry], %[carry], #0\n\t" \
    "umlal r6, %[carry], r4, %[w]\n\t" \
    "adds r8, r8, %[carry]\n\tmov %[carry], #0\n\tadc %[carry], %[carry], #0\n\t" \
    "umlal r8, %[carry], r5, %[w]\n\tstmia %[out]!, {r6, r8}\n\t"

inline uint32_t mul_add_limbs(const uint32_t *x, uint32_t w, unsigned n, uint32_t *out)
{
    uint32_t carry = 0;
    for (unsigned groups = n / 4; groups > 0; --groups)
        __asm__ volatile(ZOKECC_ARM_MUL_ADD_PAIR ZOKECC_ARM_MUL_ADD_PAIR
                         : [x] "+r"(x), [out] "+r"(out), [carry] "+r"(carry)
                         : [w] "r"(w)
                         : "r4", "r5", "r6", "r8", "cc", "memory");
    for (n %= 4; n > 0; --n) {
        const uint64_t sum = uint64_t{*x++} * w + *out + carry;
        *out++ = static_cast<uint32_t>(sum);
        carry = static_cast<uint32_t>(sum >> 32);
    }
    return carry;
}
#undef ZOKECC_ARM_MUL_ADD_PAIR

#define ZOKECC_ARM_MUL_SUB_PAIR \
    "ldmia %[x]!, {r4, r5}\n\tldmia %[out], {r6, r8}\n\t" \
    "mov r9, #0\n\tumlal %[carry], r9, r4, %[w]\n\tsubs r6, r6, %[carry]\n\taddcc r9, r9, #1\n\t" \
    "mov %[carry], #0\n\tumlal r9, %[carry], r5, %[w]\n\tsubs r8, r8, r9\n\t" \
    "addcc %[carry], %[carry], #1\n\tstmia %[out]!, {r6, r8}\n\t"

inline uint32_t mul_sub_limbs(const uint32_t *x, uint32_t w, unsigned n, uint32_t *out)
{
    uint32_t carry = 0;
    for (unsigned groups = n / 4; groups > 0; --groups)
        __asm__ volatile(ZOKECC_ARM_MUL_SUB_PAIR ZOKECC_ARM_MUL_SUB_PAIR
                         : [x] "+r"(x), [out] "+r"(out), [carry] "+r"(carry)
                         : [w] "r"(w)
                         : "r4", "r5", "r6", "r8", "r9", "cc", "memory");
    for (n %= 4; n > 0; --n) {
        const uint64_t product = uint64_t{*x++} * w + carry;
        const uint32_t low = static_cast<uint32_t>(product);
        carry = static_cast<uint32_t>(product >> 32) + (*out < low ? 1 : 0);
        *out++ -= low;
    }
    return carry;
}
#undef ZOKECC_ARM_MUL_SUB_PAIR

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The carry chains of limb.h in ARM instructions: four words at a time, the carry in the flags.
//
// Each replaces its namesake in PortableSteps. Included by limb.h only.
#ifndef ZOKECC_MINT_LIMBS_LIMB_ARM_H
#define ZOKECC_MINT_LIMBS_LIMB_ARM_H

namespace zokecc {

// modulus_32.cpp
void multiply_eight_words(const uint32_t *a, const uint32_t *b, uint32_t *out);

}  // namespace zokecc

namespace zokecc::arm {

// A row takes four words at a time and needs nearly all registers. It saves them with push and pop, two
// instructions; as clobbers they would make the compiler store and reload each of its values.
#define ZOKECC_ARM_ROW(step) \
    __asm__ volatile("push {r4-r11}\n\tmov ip, #0\n\tsubs r2, r2, #4\n\tblo 2f\n" \
                     "1:\n\tldmia r0!, {r4-r7}\n\tldmia r3, {r8-r11}\n\t" step "subs r2, r2, #4\n\tbhs 1b\n" \
                     "2:\n\tpop {r4-r11}" \
                     : "+r"(x_pointer), "+r"(left), "+r"(out_pointer), "=r"(carry) \
                     : "r"(factor) \
                     : "lr", "cc", "memory")

// umaal adds the word of out and the carry to a product: (2^32 - 1)^2 + 2 (2^32 - 1) = 2^64 - 1.
#define ZOKECC_ARM_UMAAL_STEP \
    "umaal r8, ip, r4, r1\n\tumaal r9, ip, r5, r1\n\tumaal r10, ip, r6, r1\n\tumaal r11, ip, r7, r1\n\t" \
    "stmia r3!, {r8-r11}\n\t"
// Without it one carry chain adds the products to the words of out; umlal leaves the flags alone.
#define ZOKECC_ARM_ADD_STEP \
    "mov lr, #0\n\tumlal r8, lr, r4, r1\n\tadds r8, r8, ip\n\t" \
    "mov ip, #0\n\tumlal r9, ip, r5, r1\n\tadcs r9, r9, lr\n\t" \
    "mov lr, #0\n\tumlal r10, lr, r6, r1\n\tadcs r10, r10, ip\n\t" \
    "mov ip, #0\n\tumlal r11, ip, r7, r1\n\tadcs r11, r11, lr\n\t" \
    "stmia r3!, {r8-r11}\n\tadc ip, ip, #0\n\t"
// The subtraction, with one borrow chain.
#define ZOKECC_ARM_SUB_STEP \
    "mov lr, #0\n\tumlal ip, lr, r4, r1\n\tsubs r8, r8, ip\n\t" \
    "mov ip, #0\n\tumlal lr, ip, r5, r1\n\tsbcs r9, r9, lr\n\t" \
    "mov lr, #0\n\tumlal ip, lr, r6, r1\n\tsbcs r10, r10, ip\n\t" \
    "mov ip, #0\n\tumlal lr, ip, r7, r1\n\tsbcs r11, r11, lr\n\t" \
    "stmia r3!, {r8-r11}\n\taddcc ip, ip, #1\n\t"

// In Thumb code this has only the portable steps.
struct Steps : PortableSteps<uint32_t> {
#ifndef __thumb__
    static uint32_t add_limbs(const uint32_t *a, const uint32_t *b, unsigned n, uint32_t *out)
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
            __asm__ volatile(
                "ldr r4, [%[a]], #4\n\tldr r5, [%[b]], #4\n\tcmp %[carry], #1\n\tadcs r4, r4, r5\n\t"
                "str r4, [%[out]], #4\n\tmov %[carry], #0\n\tadc %[carry], %[carry], #0"
                : [a] "+r"(a), [b] "+r"(b), [out] "+r"(out), [carry] "+r"(carry)
                :
                : "r4", "r5", "cc", "memory");
        return carry;
    }

    static uint32_t sub_limbs(const uint32_t *a, const uint32_t *b, unsigned n, uint32_t *out, uint32_t &ones)
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

    static uint64_t multiply_add(uint64_t sum, uint32_t a, uint32_t b)
    {
        __asm__("umlal %Q0, %R0, %1, %2" : "+r"(sum) : "r"(a), "r"(b));
        return sum;
    }

    static void multiply_add_both(uint32_t &low, uint32_t &high, uint32_t a, uint32_t b)
    {
        if constexpr (kArmUmaal)
            __asm__("umaal %0, %1, %2, %3" : "+r"(low), "+r"(high) : "r"(a), "r"(b));
        else
            PortableSteps::multiply_add_both(low, high, a, b);
    }

    template <unsigned count>
    static uint64_t add_column(uint64_t sum, const uint32_t *a, const uint32_t *b)
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

    static void shift_limbs_down(uint32_t *x, unsigned n, unsigned bits)
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

    static uint32_t mul_add_limbs(const uint32_t *x, uint32_t w, unsigned n, uint32_t *out)
    {
        register const uint32_t *x_pointer __asm__("r0") = x;
        register uint32_t factor __asm__("r1") = w;
        register unsigned left __asm__("r2") = n;
        register uint32_t *out_pointer __asm__("r3") = out;
        register uint32_t carry __asm__("ip");
        if constexpr (kArmUmaal)
            ZOKECC_ARM_ROW(ZOKECC_ARM_UMAAL_STEP);
        else
            ZOKECC_ARM_ROW(ZOKECC_ARM_ADD_STEP);
        x = x_pointer;
        out = out_pointer;
        uint32_t above = carry;
        for (n %= 4; n > 0; --n) {
            const uint64_t sum = uint64_t{*x++} * w + *out + above;
            *out++ = static_cast<uint32_t>(sum);
            above = static_cast<uint32_t>(sum >> 32);
        }
        return above;
    }

    static uint32_t mul_sub_limbs(const uint32_t *x, uint32_t w, unsigned n, uint32_t *out)
    {
        register const uint32_t *x_pointer __asm__("r0") = x;
        register uint32_t factor __asm__("r1") = w;
        register unsigned left __asm__("r2") = n;
        register uint32_t *out_pointer __asm__("r3") = out;
        register uint32_t carry __asm__("ip");
        ZOKECC_ARM_ROW(ZOKECC_ARM_SUB_STEP);
        x = x_pointer;
        out = out_pointer;
        uint32_t above = carry;
        for (n %= 4; n > 0; --n) {
            const uint64_t product = uint64_t{*x++} * w + above;
            const uint32_t low = static_cast<uint32_t>(product);
            above = static_cast<uint32_t>(product >> 32) + (*out < low ? 1 : 0);
            *out++ -= low;
        }
        return above;
    }

    static void complement_limbs(const uint32_t *x, unsigned n, uint32_t *out)
    {
        for (; n % 4 != 0; --n) *out++ = ~*x++;
        for (; n > 0; n -= 4)
            __asm__ volatile("ldmia %[x]!, {r4, r5, r6, r8}\n\tmvn r4, r4\n\tmvn r5, r5\n\tmvn r6, r6\n\t"
                             "mvn r8, r8\n\tstmia %[out]!, {r4, r5, r6, r8}"
                             : [x] "+r"(x), [out] "+r"(out)
                             :
                             : "r4", "r5", "r6", "r8", "memory");
    }

    static bool multiply_unrolled(const uint32_t *x, unsigned x_count, const uint32_t *y, unsigned y_count,
                                  uint32_t *out)
    {
        if constexpr (kArmUmaal && !kSmall) {
            if (x_count != 8 || y_count != 8) return false;
            multiply_eight_words(x, y, out);
            return true;
        }
        return false;
    }
#endif
};

#undef ZOKECC_ARM_SUB_STEP
#undef ZOKECC_ARM_ADD_STEP
#undef ZOKECC_ARM_UMAAL_STEP
#undef ZOKECC_ARM_ROW

}  // namespace zokecc::arm

#endif

// The chains of limb.h in x86-64's own instructions: the carry in the flags, and the long product.
//
// Each overload takes the place of the template above it for 64-bit limbs. Included by limb.h only.
#ifndef ZOKECC_MINT_LIMB_X86_H
#define ZOKECC_MINT_LIMB_X86_H

#include <x86intrin.h>

namespace zokecc {

inline uint64_t add_limbs(const uint64_t *a, const uint64_t *b, unsigned n, uint64_t *out)
{
    unsigned char carry = 0;
#pragma GCC unroll 5
    for (unsigned i = 0; i < n; ++i) {
        unsigned long long sum;
        carry = _addcarry_u64(carry, a[i], b[i], &sum);
        out[i] = sum;
    }
    return carry;
}

inline uint64_t sub_limbs(const uint64_t *a, const uint64_t *b, unsigned n, uint64_t *out)
{
    unsigned char borrow = 0;
#pragma GCC unroll 5
    for (unsigned i = 0; i < n; ++i) {
        unsigned long long difference;
        borrow = _subborrow_u64(borrow, a[i], b[i], &difference);
        out[i] = difference;
    }
    return borrow;
}

inline uint64_t sub_limbs(const uint64_t *a, const uint64_t *b, unsigned n, uint64_t *out, uint64_t &ones)
{
    const uint64_t borrow = sub_limbs(a, b, n, out);
    uint64_t marks = 0;
#pragma GCC unroll 5
    for (unsigned i = 0; i < n; ++i) marks |= all_ones_mark(out[i]);
    ones = marks;
    return borrow;
}

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
using NativeSum = AssembledSum;

}  // namespace zokecc

#endif

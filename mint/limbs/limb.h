// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Limbs: native machine words, for faster arithmetic than on the 32-bit words of a mint.
//
// On a little-endian machine the words of a mint are its limbs; a 64-bit limb holds two words. Each step
// has a portable body. Where the compiler does not find the best instructions, a few lines of assembly
// replace it and pass the same tests.
//
// The table shows which file holds each body: "here" is this file, in C++, and "sums" stands for
// modular_sums. The bodies here form PortableSteps, those of a machine x86_64::Steps or arm::Steps; the end
// of this file chooses between them.
//
//   Call                          x86-64            ARMv5TE              ARMv6 and later   elsewhere
//   add_limbs, sub_limbs          limb_x86_64.h     limb_arm.h           limb_arm.h        here
//   mul_add_limbs, mul_sub_limbs  here              limb_arm.h           limb_arm.h        here
//   multiply_unrolled             none              none                 modulus_32.cpp    none
//   shift_limbs_down              here              limb_arm.h           limb_arm.h        here
//   products added up             limb_x86_64.h     column_sum.h         limb_arm.h        here, column_sum.h
//   a b mod p, 6 to 8 words       modulus_64.h      modulus_29_columns.h modulus_32.h      modulus_64.h or
//   a b mod p, 5 or 9 words       modulus_64.h      modulus_29_loops.h   modulus_32.h        as on ARMv5TE
//   a + b, a - b, 2 a mod p       sums.h            sums_arm.cpp         sums_arm.cpp      sums.h
//
// Thumb code uses the bodies under "elsewhere"; cmake/Kernels.cmake compiles the hot files as ARM code.
// modulus.h chooses the multiplication.
#ifndef ZOKECC_MINT_LIMBS_LIMB_H
#define ZOKECC_MINT_LIMBS_LIMB_H

#include <bit>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "base/config.h"

namespace zokecc {

static_assert(std::endian::native == std::endian::little);

template <class L>
struct DoubleLimb;
template <>
struct DoubleLimb<uint32_t> {
    using Type = uint64_t;
};
#ifdef __SIZEOF_INT128__
template <>
struct DoubleLimb<uint64_t> {
    __extension__ using Type = unsigned __int128;
};
using NativeLimb = uint64_t;
#else
using NativeLimb = uint32_t;
#endif

template <class L>
using Double = typename DoubleLimb<L>::Type;
template <class L>
constexpr unsigned kLimbBits = 8 * sizeof(L);
template <class L>
constexpr unsigned kWordsPerLimb = sizeof(L) / 4;

// Returns a + b + carry; carry (0 or 1) becomes the carry out.
template <class L>
inline L add_limb(L a, L b, L &carry)
{
    const L sum = a + b;
    const L out = sum + carry;
    carry = static_cast<L>(sum < a) | static_cast<L>(out < sum);
    return out;
}

// Returns a - b - borrow; borrow (0 or 1) becomes the borrow out.
template <class L>
inline L sub_limb(L a, L b, L &borrow)
{
    const L difference = a - b;
    const L out = difference - borrow;
    borrow = static_cast<L>(a < b) | static_cast<L>(difference < out);
    return out;
}

// Nonzero if and only if a 32-bit word of limb has all bits set. The same word w of ~limb is then zero,
// and (w - 1) & ~w has its top bit set for w = 0 and, unless a word below is zero, for no other w.
template <class L>
inline L all_ones_mark(L limb)
{
    if constexpr (sizeof(L) == 4)
        return static_cast<L>(limb == 0xFFFFFFFFu);
    else
        return (~limb - 0x0000000100000001u) & limb & 0x8000000080000000u;
}

template <class L>
inline bool is_below(const L *a, const L *b, unsigned n)
{
    while (n-- > 0)
        if (a[n] != b[n]) return a[n] < b[n];
    return false;
}

// out[n + 1] = x[n] * 2^bits, 0 <= bits < kLimbBits<L>. out may be x.
template <class L>
inline void shift_limbs_up(const L *x, unsigned n, unsigned bits, L *out)
{
    L below = 0;
    const unsigned down = kLimbBits<L> - 1 - bits;  // plus one: bits may be 0
    for (unsigned i = 0; i < n; ++i) {
        const L limb = x[i];
        out[i] = limb << bits | below;
        below = limb >> 1 >> down;
    }
    out[n] = below;
}

// Limbs per step: the ARM bodies take four at a time, so multiples of four have no slow tail.
template <class L>
constexpr unsigned kLimbGroup = sizeof(L) == 4 ? 4 : 1;

// A sum of products, three limbs wide: 2^(bits of a limb) products cannot overflow it.
struct PortableSum {
    static constexpr unsigned kMaxRow = 0;  // see limb_x86_64.h

    uint64_t low = 0, middle = 0, high = 0;

    void add(uint64_t limb)
    {
        uint64_t carry = 0;
        low = add_limb(low, limb, carry);
        middle = add_limb(middle, uint64_t{0}, carry);
        high += carry;
    }
    template <class L>
    void add_product(L a, L b)
    {
        const Double<L> product = Double<L>{a} * b;
        uint64_t carry = 0;
        low = add_limb(low, static_cast<L>(product), carry);
        middle = add_limb(middle, static_cast<L>(product >> 64), carry);
        high += carry;
    }
    // Removes the lowest limb and returns it.
    uint64_t shift()
    {
        const uint64_t out = low;
        low = middle;
        middle = high;
        high = 0;
        return out;
    }
};

// The steps that some machines replace, and the type for sums of products. Algorithms take such a type as a
// template argument.
template <class L>
struct PortableSteps {
    using Limb = L;
    using Sum = PortableSum;

    // out[n] = a[n] + b[n]; returns the carry. out may be a or b.
    static L add_limbs(const L *a, const L *b, unsigned n, L *out)
    {
        L carry = 0;
#pragma GCC unroll 5
        for (unsigned i = 0; i < n; ++i) out[i] = add_limb(a[i], b[i], carry);
        return carry;
    }

    // out[n] = a[n] - b[n]; returns the borrow. out may be a or b. ones becomes nonzero if and only if a
    // 32-bit word of out has all bits set.
    static L sub_limbs(const L *a, const L *b, unsigned n, L *out, L &ones)
    {
        L borrow = 0;
        L marks = 0;
#pragma GCC unroll 5
        for (unsigned i = 0; i < n; ++i) {
            out[i] = sub_limb(a[i], b[i], borrow);
            marks |= all_ones_mark(out[i]);
        }
        ones = marks;
        return borrow;
    }

    // x[n] /= 2^bits, 0 < bits < kLimbBits<L>.
    static void shift_limbs_down(L *x, unsigned n, unsigned bits)
    {
        for (unsigned i = 0; i + 1 < n; ++i) x[i] = x[i] >> bits | x[i + 1] << (kLimbBits<L> - bits);
        x[n - 1] >>= bits;
    }

    // Returns sum + a * b, which must fit.
    static Double<L> multiply_add(Double<L> sum, L a, L b) { return sum + Double<L>{a} * b; }

    // high B + low = a b + low + high, which always fits.
    static void multiply_add_both(L &low, L &high, L a, L b)
    {
        const Double<L> sum = Double<L>{a} * b + low + high;
        low = static_cast<L>(sum);
        high = static_cast<L>(sum >> kLimbBits<L>);
    }

    // Returns sum + a[0] b[count - 1] + a[1] b[count - 2] + ... + a[count - 1] b[0], which must fit. The
    // analyser cannot tell that modulus_29_loops.h splits numbers into at least six limbs.
    template <unsigned count>
    static Double<L> add_column(Double<L> sum, const L *a, const L *b)
    {
#pragma GCC unroll 11
        for (unsigned i = 0; i < count; ++i)
            sum = multiply_add(sum, a[i], b[count - 1 - i]);  // NOLINT(clang-analyzer-core.CallAndMessage)
        return sum;
    }

    // out[n] += x[n] * w; returns the limb above.
    static L mul_add_limbs(const L *x, L w, unsigned n, L *out)
    {
        L carry = 0;
        for (unsigned i = 0; i < n; ++i) {
            const Double<L> sum = Double<L>{x[i]} * w + out[i] + carry;
            out[i] = static_cast<L>(sum);
            carry = static_cast<L>(sum >> kLimbBits<L>);
        }
        return carry;
    }

    // out[n] -= x[n] * w; returns the limb to subtract from the next one up.
    static L mul_sub_limbs(const L *x, L w, unsigned n, L *out)
    {
        L carry = 0;
        for (unsigned i = 0; i < n; ++i) {
            const Double<L> product = Double<L>{x[i]} * w + carry;
            const L low = static_cast<L>(product);
            carry = static_cast<L>(product >> kLimbBits<L>) + static_cast<L>(out[i] < low);
            out[i] -= low;
        }
        return carry;
    }

    // out[n] = B^n - 1 - x[n]; out may be x.
    static void complement_limbs(const L *x, unsigned n, L *out)
    {
        for (unsigned i = 0; i < n; ++i) out[i] = static_cast<L>(~x[i]);
    }

    // out[x_count + y_count] = x[x_count] y[y_count] if there is an unrolled body for these counts; otherwise
    // returns false. out must not be x or y.
    static bool multiply_unrolled(const L *, unsigned, const L *, unsigned, L *) { return false; }
};

}  // namespace zokecc

// The only place where the steps are chosen: NativeSteps, for native limbs.
#if defined(__x86_64__) && !defined(ZOKECC_NO_ASSEMBLY)
#include "mint/limbs/limb_x86_64.h"
namespace zokecc {
using MachineSteps = x86_64::Steps;
}
#elif defined(__arm__) && !defined(ZOKECC_NO_ASSEMBLY)
#include "mint/limbs/limb_arm.h"
namespace zokecc {
using MachineSteps = arm::Steps;
}
#else
namespace zokecc {
using MachineSteps = PortableSteps<NativeLimb>;
}
#endif

namespace zokecc {

// A type of the same name in all objects, whether compiled to ARM or Thumb code.
struct NativeSteps : MachineSteps {};

// True for NativeSteps and for types that a source or a test derives from it.
template <class Steps>
constexpr bool kIsNative = std::is_base_of_v<NativeSteps, Steps>;

// The steps for limbs of either width.
template <class L>
using StepsOn = std::conditional_t<std::is_same_v<L, NativeLimb>, NativeSteps, PortableSteps<L>>;

}  // namespace zokecc

#endif

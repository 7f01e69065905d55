// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Sums modulo p on limbs, for operands below p; out may be an operand.
//
// The try_ functions return false and write nothing if the kept borrow rule (borrow_rule.h) might apply; the
// caller then computes the differences one by one. That is rare except for small and structured numbers.
#ifndef ZOKECC_MINT_LIMBS_MODULAR_SUMS_H
#define ZOKECC_MINT_LIMBS_MODULAR_SUMS_H

#include <type_traits>

#include "base/config.h"
#include "base/linkage.h"
#include "mint/limbs/borrow_rule.h"

namespace zokecc {

template <class Steps>
struct PortableSums {
    using L = typename Steps::Limb;

    static bool serves(unsigned) { return true; }

    // out[n] = a + b mod p
    static void add(const L *a, const L *b, const L *p, unsigned n, L *out)
    {
        L ones;
        const L carry = Steps::add_limbs(a, b, n, out);
        if (carry != 0 || !is_below(out, p, n)) Steps::sub_limbs(out, p, n, out, ones);
    }

    // out[n] = a - b mod p. For a < b, a word of b - a can be all ones only if that word of a - b is 0, or
    // 1 with only zeros below. Branch-free, because which operand is larger is practically random and a
    // mispredicted branch costs more than an addition.
    static bool try_sub(const L *a, const L *b, const L *p, unsigned n, L *out)
    {
        L d[kMaxFastLimbs<L>];
        L correction[kMaxFastLimbs<L>];
        L ones;
        const L mask = 0 - Steps::sub_limbs(a, b, n, d, ones);
        L small = 0;  // the top bit is set for each word that is 0 or 1, and perhaps for others
        for (unsigned i = 0; i < n; ++i) {
            small |= (d[i] - static_cast<L>(0x0000000200000002u)) & ~d[i];
            correction[i] = p[i] & mask;
        }
        Steps::add_limbs(d, correction, n, d);
        ones = small & mask & static_cast<L>(0x8000000080000000u);
        for (unsigned i = 0; i < n; ++i) ones |= all_ones_mark(d[i]);
        if (ones != 0) [[unlikely]]
            return false;
        std::memcpy(out, d, n * sizeof *d);
        return true;
    }

    // out[n] = a 2^times mod p, times at least 1.
    static bool try_double(const L *a, unsigned times, const L *p, unsigned n, L *out)
    {
        L doubled[kMaxFastLimbs<L>];
        do {
            const L carry = Steps::add_limbs(a, a, n, doubled);
            a = doubled;
            if (carry == 0 && is_below(doubled, p, n)) continue;
            L ones;
            Steps::sub_limbs(doubled, p, n, doubled, ones);
            if (ones != 0) [[unlikely]]
                return false;
        } while (--times > 0);
        std::memcpy(out, doubled, n * sizeof *doubled);
        return true;
    }
};

// ARM bodies for these widths, with all words in registers; modular_sums_arm.cpp.
#define ZOKECC_ARM_SUMS(words) \
    ZOKECC_INTERNAL void zokecc_add_mod_##words(const uint32_t *a, const uint32_t *b, const uint32_t *p, \
                                                uint32_t *out); \
    ZOKECC_INTERNAL bool zokecc_try_sub_mod_##words(const uint32_t *a, const uint32_t *b, const uint32_t *p, \
                                                    uint32_t *out); \
    ZOKECC_INTERNAL bool zokecc_try_double_mod_##words(const uint32_t *a, unsigned times, const uint32_t *p, \
                                                       uint32_t *out);
ZOKECC_ARM_SUMS(6)
ZOKECC_ARM_SUMS(7)
ZOKECC_ARM_SUMS(8)
ZOKECC_INTERNAL void zokecc_add_mod_any(const uint32_t *a, const uint32_t *b, const uint32_t *p, unsigned n,
                                        uint32_t *out);
#undef ZOKECC_ARM_SUMS

// For other widths try_sub and try_double always return false.
struct ArmSums {
    static bool serves(unsigned n) { return n >= 6 && n <= 8; }

    static void add(const uint32_t *a, const uint32_t *b, const uint32_t *p, unsigned n, uint32_t *out)
    {
        if (n == 8) [[likely]]
            return zokecc_add_mod_8(a, b, p, out);
        switch (n) {
        case 6: return zokecc_add_mod_6(a, b, p, out);
        case 7: return zokecc_add_mod_7(a, b, p, out);
        default: return zokecc_add_mod_any(a, b, p, n, out);
        }
    }

    static bool try_sub(const uint32_t *a, const uint32_t *b, const uint32_t *p, unsigned n, uint32_t *out)
    {
        if (n == 8) [[likely]]
            return zokecc_try_sub_mod_8(a, b, p, out);
        switch (n) {
        case 6: return zokecc_try_sub_mod_6(a, b, p, out);
        case 7: return zokecc_try_sub_mod_7(a, b, p, out);
        default: return false;
        }
    }

    static bool try_double(const uint32_t *a, unsigned times, const uint32_t *p, unsigned n, uint32_t *out)
    {
        if (n == 8) [[likely]]
            return zokecc_try_double_mod_8(a, times, p, out);
        switch (n) {
        case 6: return zokecc_try_double_mod_6(a, times, p, out);
        case 7: return zokecc_try_double_mod_7(a, times, p, out);
        default: return false;
        }
    }
};

// The bodies for this machine.
template <class Steps>
using ModularSums = std::conditional_t<kArmFunctions && kIsNative<Steps>, ArmSums, PortableSums<Steps>>;

}  // namespace zokecc

#endif

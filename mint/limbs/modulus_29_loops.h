// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Multiplication on 29-bit limbs in loops, for any width.
#ifndef ZOKECC_MINT_LIMBS_MODULUS_29_LOOPS_H
#define ZOKECC_MINT_LIMBS_MODULUS_29_LOOPS_H

#include "mint/limbs/modulus_29.h"

namespace zokecc {

template <class Steps>
class LoopedLimbs {
public:
    // multiply_looped, with the given steps.
    static bool multiply(const ShortModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out)
    {
        const unsigned n = p.limbs;
        uint32_t wide[kMaxFastWords + 1];
        uint32_t a_limbs[kMaxShortLimbs];  // later the quotient
        uint32_t b_limbs[kMaxShortLimbs];  // later the remainder
        uint32_t x[2 * kMaxShortLimbs];
        shift_limbs_up(a, p.words, p.shift, wide);
        split(wide, p.words + 1, a_limbs, n);
        split(b, p.words, b_limbs, n);
        product(a_limbs, b_limbs, n, x);

        uint64_t sum = add_columns(0, x + n - 1, p.reciprocal, n + 1) >> kShortBits;
        sum = add_columns(sum, x + n, p.reciprocal + 1, n);
        const uint32_t open = OpenQuotients::is_open(take_limb(sum), greatest_guard(n));
        // NOLINTNEXTLINE(readability-static-accessed-through-instance): static in the default build only
        if (p.open_quotients.give_up(open)) return false;
        for (unsigned k = 0; k + 1 < n; ++k) {
            sum = add_columns(sum, x + n + 1 + k, p.reciprocal + 2 + k, n - 1 - k);
            a_limbs[k] = take_limb(sum);
        }
        a_limbs[n - 1] = static_cast<uint32_t>(sum);

        // The lowest n limbs of x + q (B^n - P) equal x - q P, which is below P and so has no others.
        sum = 0;
        for (unsigned k = 0; k < n; ++k) {
            sum = add_columns(sum + x[k], a_limbs, p.complement, k + 1);
            b_limbs[k] = take_limb(sum);
        }
        join(b_limbs, n, wide, p.words + 1);
        for (unsigned i = 0; i < p.words; ++i) out[i] = wide[i] >> p.shift | wide[i + 1] << (32 - p.shift);
        return open == 0;
    }

    // out[limbs] = x[count], 29 bits per limb.
    static void split(const uint32_t *x, unsigned count, uint32_t *out, unsigned limbs)
    {
        uint64_t bits = 0;
        unsigned available = 0;
        for (unsigned i = 0; i < limbs; ++i) {
            if (available < kShortBits) {
                if (count > 0) {
                    bits |= uint64_t{*x++} << available;
                    --count;
                }
                available += 32;
            }
            out[i] = static_cast<uint32_t>(bits) & kShortMask;
            bits >>= kShortBits;
            available -= kShortBits;
        }
    }

private:
    // out[count] = x[limbs], 32 bits per word.
    static void join(const uint32_t *x, unsigned limbs, uint32_t *out, unsigned count)
    {
        uint64_t bits = 0;
        unsigned available = 0;
        for (unsigned i = 0; i < count; ++i) {
            for (; available < 32; available += kShortBits)
                if (limbs > 0) {
                    bits |= uint64_t{*x++} << available;
                    --limbs;
                }
            out[i] = static_cast<uint32_t>(bits);
            bits >>= 32;
            available -= 32;
        }
    }

    static uint64_t add_columns(uint64_t sum, const uint32_t *a, const uint32_t *b, unsigned count)
    {
        for (b += count; count >= 2; count -= 2) {
            b -= 2;
            sum = Steps::template add_column<2>(sum, a, b);
            a += 2;
        }
        return count > 0 ? Steps::multiply_add(sum, *a, b[-1]) : sum;
    }

    static uint32_t take_limb(uint64_t &sum)
    {
        const uint32_t limb = static_cast<uint32_t>(sum) & kShortMask;
        sum >>= kShortBits;
        return limb;
    }

    // x[2 n] = a[n] * b[n]
    static void product(const uint32_t *a, const uint32_t *b, unsigned n, uint32_t *x)
    {
        uint64_t sum = 0;
        for (unsigned k = 0; k < n; ++k) {
            sum = add_columns(sum, a, b, k + 1);
            *x++ = take_limb(sum);
        }
        for (unsigned k = n - 1; k > 0; --k) {
            sum = add_columns(sum, ++a, ++b, k);
            *x++ = take_limb(sum);
        }
        *x = static_cast<uint32_t>(sum);
    }
};

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Multiplication modulo p for machines with 32-bit words, on unsaturated limbs of radix 2^29.
//
// A product of two such limbs has 58 bits, so a column is summed in 64 bits without carries: with at
// most ten limbs, 10 * 2^59 and the carry of the column below stay under 2^63. On ARM each product
// is then one umlal.
#ifndef ZOKECC_MINT_LIMBS_MODULUS_29_H
#define ZOKECC_MINT_LIMBS_MODULUS_29_H

#include "base/linkage.h"
#include "mint/limbs/any_width.h"
#include "mint/limbs/barrett.h"
#include "mint/limbs/borrow_rule.h"

namespace zokecc {

constexpr unsigned kShortBits = 29;
constexpr uint32_t kShortMask = (1u << kShortBits) - 1;
constexpr unsigned short_limbs(unsigned words) { return (32 * words + kShortBits - 1) / kShortBits; }
constexpr unsigned kMaxShortLimbs = short_limbs(kMaxFastWords);

// Bits by which the two factors together are scaled if the kernel for this width is unrolled
// (modulus_29_columns.h); 0 for other widths.
constexpr unsigned column_scale(unsigned words)
{
    return words == 6 ? 12 : words == 7 ? 8 : words == 8 ? 6 : 0;
}

// p in the terms of barrett.h, with B = 2^29 and N = limbs: P = p 2^s is the modulus there, s the shift and
// the scale together.
struct ShortModulus {
    using Steps = StepsOn<uint32_t>;

    uint32_t words;
    uint32_t limbs;                           // with a scale short_limbs(words), else as few as p needs
    uint32_t kernel;                          // words if there is a scale and no shift, otherwise 0
    uint32_t shift;                           // of one factor
    uint32_t top;                             // the highest word of p 2^shift, if there is a scale
    uint32_t complement[kMaxShortLimbs];      // the lowest N limbs of -P
    uint32_t reciprocal[kMaxShortLimbs + 1];  // M, below 2 B^(N+1): its top limb is below 2^30
    [[no_unique_address]] OpenQuotients open_quotients;

    static bool fits(const uint32_t *p, uint32_t count)
    {
        return count >= 5 && count <= kMaxFastWords && p[count - 1] != 0;
    }
    void prepare(const uint32_t *p, uint32_t count);
};

// The largest guard, for this number of limbs, that does not leave the quotient open.
constexpr uint32_t greatest_guard(unsigned limbs) { return kShortMask - (limbs + 4); }

// out = a b mod p for a, b up to p without a scale, for any number of words; out may be a or b. False if the
// guard leaves the quotient open; see OpenQuotients for what out holds then.
bool multiply_looped(const ShortModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out);

// The same with the kernels: for p of exactly 256 bits, the most common case, and for any p.
bool multiply_eight(const ShortModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out);
bool multiply_chosen(const ShortModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out);

using AnyShortLimbs = AnyWidth<ShortModulus>;

}  // namespace zokecc

#endif

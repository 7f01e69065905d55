// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Multiplication on 29-bit limbs in loops, and the constants of p for all multiplications on these limbs.
#include "mint/limbs/modulus_29_loops.h"

namespace zokecc {

namespace {

struct Here : ShortModulus::Steps {};  // gives the instantiations internal linkage

}  // namespace

void ShortModulus::prepare(const uint32_t *p, uint32_t count)
{
    const unsigned scale = column_scale(count);
    const unsigned zeros = static_cast<unsigned>(std::countl_zero(p[count - 1]));
    const unsigned bits = 32 * count - zeros;
    unsigned n = short_limbs(count);
    while (scale == 0 && kShortBits * (n - 1) > bits) --n;
    words = count;
    limbs = n;
    shift = scale != 0 ? zeros : kShortBits * n - bits;  // from 1 on
    kernel = scale != 0 && shift == 0 ? count : 0;
    uint32_t wide[kMaxFastWords + 4];
    shift_limbs_up(p, count, shift, wide);
    top = wide[count - 1];
    if (scale != 0) shift_limbs_up(wide, count, scale, wide);  // wide[count] is still zero
    uint32_t borrow = 0;
    for (unsigned i = 0; i <= count; ++i) wide[i] = sub_limb(0u, wide[i], borrow);
    LoopedLimbs<Here>::split(wide, count + 1, complement, n);
    reciprocal_words(p, count, kShortBits * (2 * n + 1) - shift - scale, wide, count + 4);
    LoopedLimbs<Here>::split(wide, count + 4, reciprocal, n + 1);
    reciprocal[n] |= (wide[kShortBits * (n + 1) / 32] >> (kShortBits * (n + 1) % 32) & 1) << kShortBits;
}

bool multiply_looped(const ShortModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out)
{
    return LoopedLimbs<Here>::multiply(p, a, b, out);
}

}  // namespace zokecc

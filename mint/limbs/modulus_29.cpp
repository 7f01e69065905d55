// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Multiplication on 29-bit limbs in loops, for any width.
#include "mint/limbs/modulus_29.h"

namespace zokecc {

namespace {

// out[limbs] = x[count], 29 bits per limb.
void split(const uint32_t *x, unsigned count, uint32_t *out, unsigned limbs)
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

// out[count] = x[limbs], 32 bits per word.
void join(const uint32_t *x, unsigned limbs, uint32_t *out, unsigned count)
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

uint64_t add_columns(uint64_t sum, const uint32_t *a, const uint32_t *b, unsigned count)
{
    for (b += count; count >= 2; count -= 2) {
        b -= 2;
        sum = add_column<2>(sum, a, b);
        a += 2;
    }
    return count > 0 ? multiply_add(sum, *a, b[-1]) : sum;
}

uint32_t take_limb(uint64_t &sum)
{
    const uint32_t limb = static_cast<uint32_t>(sum) & kShortMask;
    sum >>= kShortBits;
    return limb;
}

// x[2 n] = a[n] * b[n]
void product(const uint32_t *a, const uint32_t *b, unsigned n, uint32_t *x)
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
    split(wide, count + 1, complement, n);
    reciprocal_words(p, count, kShortBits * (2 * n + 1) - shift - scale, wide, count + 4);
    split(wide, count + 4, reciprocal, n + 1);
    reciprocal[n] |= (wide[kShortBits * (n + 1) / 32] >> (kShortBits * (n + 1) % 32) & 1) << kShortBits;
}

bool multiply_looped(const ShortModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out)
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
    // NOLINTNEXTLINE(readability-static-accessed-through-instance): static in the default build alone
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

}  // namespace zokecc

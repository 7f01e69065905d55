// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Multiplication on 29-bit limbs, unrolled for the common widths: 192, 224 and 256 bits.
#include "mint/limbs/modulus_29_columns.h"

namespace zokecc {

bool multiply_eight(const ShortModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out)
{
    return ColumnLimbs<8>::multiply(p, a, b, out);
}

namespace {

ZOKECC_ONE_COPY bool multiply_six(const ShortModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out)
{
    return ColumnLimbs<6>::multiply(p, a, b, out);
}

ZOKECC_ONE_COPY bool multiply_seven(const ShortModulus &p, const uint32_t *a, const uint32_t *b,
                                    uint32_t *out)
{
    return ColumnLimbs<7>::multiply(p, a, b, out);
}

// For p with zero bits at the top of its top word: (a 2^s) b mod p 2^s is (a b mod p) 2^s.
ZOKECC_OWN_FRAME bool multiply_shifted(const ShortModulus &p, const uint32_t *a, const uint32_t *b,
                                       uint32_t *out)
{
    uint32_t shifted[kMaxFastWords + 1];
    shift_limbs_up(a, p.words, p.shift, shifted);
    const bool is_exact = p.words == 6   ? multiply_six(p, shifted, b, out)
                          : p.words == 7 ? multiply_seven(p, shifted, b, out)
                                         : multiply_eight(p, shifted, b, out);
    // NOLINTNEXTLINE(readability-static-accessed-through-instance): static in the default build alone
    if (p.open_quotients.give_up(1 ^ static_cast<uint32_t>(is_exact))) return false;
    shift_limbs_down(out, p.words, p.shift);
    return is_exact;
}

}  // namespace

bool multiply_chosen(const ShortModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out)
{
    if (p.kernel == 6) return multiply_six(p, a, b, out);
    if (p.kernel == 7) return multiply_seven(p, a, b, out);
    if (column_scale(p.words) == 0) return multiply_looped(p, a, b, out);
    return multiply_shifted(p, a, b, out);
}

}  // namespace zokecc

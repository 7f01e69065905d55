// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Multiplication on whole words, for every width that a fast field accepts.
#include "mint/limbs/modulus_32.h"

namespace zokecc {

bool multiply_eight(const WordModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out)
{
    return WordLimbs<8>::multiply(p, a, b, out);
}

void multiply_eight_words(const uint32_t *a, const uint32_t *b, uint32_t *out)
{
    WordLimbs<8>::product(a, b, out);
}

namespace {

ZOKECC_ONE_COPY bool multiply_words(const WordModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out)
{
    switch (p.words) {
    case 5: return WordLimbs<5>::multiply(p, a, b, out);
    case 6: return WordLimbs<6>::multiply(p, a, b, out);
    case 7: return WordLimbs<7>::multiply(p, a, b, out);
    case 9: return WordLimbs<9>::multiply(p, a, b, out);
    default: return multiply_eight(p, a, b, out);
    }
}

// For p with zero bits at the top of its top word: (a 2^s) b mod p 2^s is (a b mod p) 2^s.
ZOKECC_OWN_FRAME bool multiply_shifted(const WordModulus &p, const uint32_t *a, const uint32_t *b,
                                       uint32_t *out)
{
    uint32_t shifted[kMaxFastWords + 1];
    shift_limbs_up(a, p.words, p.shift, shifted);
    const bool is_exact = multiply_words(p, shifted, b, out);
    // NOLINTNEXTLINE(readability-static-accessed-through-instance): static in the default build alone
    if (p.open_quotients.give_up(1 ^ static_cast<uint32_t>(is_exact))) return false;
    shift_limbs_down(out, p.words, p.shift);
    return is_exact;
}

}  // namespace

bool multiply_chosen(const WordModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out)
{
    return p.kernel == 0 ? multiply_shifted(p, a, b, out) : multiply_words(p, a, b, out);
}

}  // namespace zokecc

// Whole words, for every width that a fast field serves.
#include "mint/limbs/modulus_32.h"

#if !defined(ZOKECC_SMALL) || defined(ZOKECC_HARDENED)

namespace zokecc {

namespace {

ZOKECC_INLINE bool multiply_words(const WordModulus &m, const uint32_t *a, const uint32_t *b, uint32_t *out)
{
    switch (m.words) {
    case 5: return WordLimbs<5>::multiply(m, a, b, out);
    case 6: return WordLimbs<6>::multiply(m, a, b, out);
    case 7: return WordLimbs<7>::multiply(m, a, b, out);
    case 9: return WordLimbs<9>::multiply(m, a, b, out);
    default: break;
    }
    return WordLimbs<8>::multiply(m, a, b, out);
}

// (a 2^s) b mod p 2^s is (a b mod p) 2^s.
ZOKECC_OUT_OF_LINE bool multiply_shifted(const WordModulus &m, const uint32_t *a, const uint32_t *b,
                                         uint32_t *out)
{
    uint32_t shifted[kMaxFastWords + 1];
    shift_limbs_up(a, m.words, m.shift, shifted);
    const bool is_exact = multiply_words(m, shifted, b, out);
    if (m.open_quotients.give_up(1 ^ static_cast<uint32_t>(is_exact))) return false;
    shift_limbs_down(out, m.words, m.shift);
    return is_exact;
}

}  // namespace

bool AnyWordLimbs::multiply(const Limb *a, const Limb *b, Limb *out) const
{
    if (modulus_.shift != 0) [[unlikely]]
        return multiply_shifted(modulus_, a, b, out);
    return multiply_words(modulus_, a, b, out);
}

}  // namespace zokecc

#endif

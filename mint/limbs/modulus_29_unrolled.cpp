// Short limbs unrolled for the common widths: 192, 224 and 256 bits.
#include "mint/limbs/modulus_29.h"

#if !defined(ZOKECC_SMALL) || defined(ZOKECC_HARDENED)

namespace zokecc {

bool AnyShortLimbs::multiply(const Limb *a, const Limb *b, Limb *out) const
{
    switch (modulus_.words) {
    case 6: return ShortLimbs<6>::multiply(modulus_, a, b, out);
    case 7: return ShortLimbs<7>::multiply(modulus_, a, b, out);
    case 8: return ShortLimbs<8>::multiply(modulus_, a, b, out);
    default: break;
    }
    return multiply_looped(modulus_, a, b, out);
}

}  // namespace zokecc

#endif

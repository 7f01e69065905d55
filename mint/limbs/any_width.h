// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Modular multiplication whose width is chosen at run time, so that the code using it exists only once.
#ifndef ZOKECC_MINT_LIMBS_ANY_WIDTH_H
#define ZOKECC_MINT_LIMBS_ANY_WIDTH_H

#include "mint/limbs/barrett.h"
#include "mint/limbs/borrow_rule.h"

namespace zokecc {

// Modulus is ShortModulus or WordModulus: p in the form that multiply_eight and multiply_chosen take.
template <class Modulus>
class AnyWidth {
public:
    using Steps = typename Modulus::Steps;
    using Limb = uint32_t;
    static constexpr unsigned kElementLimbs = kMaxFastWords;

    unsigned limbs() const { return modulus_.words; }
    static bool fits(const uint32_t *p, uint32_t words) { return Modulus::fits(p, words); }
    void prepare(const uint32_t *p, uint32_t words) { modulus_.prepare(p, words); }

    // out = a b mod p for a, b up to p; out may be a or b. False if the guard leaves the quotient open; see
    // OpenQuotients for what out holds then.
    bool multiply(const Limb *a, const Limb *b, Limb *out) const
    {
        if (modulus_.kernel == 8) [[likely]]
            return multiply_eight(modulus_, a, b, out);
        return multiply_chosen(modulus_, a, b, out);
    }
    bool square(const Limb *a, Limb *out) const { return multiply(a, a, out); }
    OpenQuotients &open_quotients() { return modulus_.open_quotients; }

private:
    Modulus modulus_;
};

}  // namespace zokecc

#endif

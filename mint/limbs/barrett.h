// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Barrett reduction with an exact quotient, without a correction step.
//
// With limbs of base B, N of them, pn = p 2^s with its top bit set (below B^N) and
// M = floor(B^(2N+1) / pn), the quotient of x = a b 2^s by pn, for a and b up to p, is computed from
// only the top N + 1 limbs of x and M. Their product is formed from column N up; columns N + 2 and
// up are the quotient, and column N + 1 is a guard. The omitted parts are worth, in units of the
// guard column:
//   - the columns below N: column j holds at most j + 1 products of (B - 1)^2 (the part of M above
//     N limbs only reaches columns from N on), in all less than N + 1;
//   - the fraction cut off from M, below 1, times the top of x, below B^(N+1): less than 1;
//   - the low N - 1 limbs of x times M, at most 2 B^(N+1): less than 2.
// So the true quotient is larger by less than N + 4 of these units, and if the guard is below
// B - (N + 4) the integer part is exact. Otherwise callers divide digit by digit, or correct the
// remainder with masks (OpenQuotients).
#ifndef ZOKECC_MINT_LIMBS_BARRETT_H
#define ZOKECC_MINT_LIMBS_BARRETT_H

#include "base/config.h"
#include "mint/divide.h"
#include "mint/limbs/limb.h"

namespace zokecc {

// out[count] = floor(2^exponent / p[words]); p's top word must not be zero, the result must fit count words,
// and exponent must be below 38 * 32.
inline void reciprocal_words(const uint32_t *p, uint32_t words, uint32_t exponent, uint32_t *out,
                             uint32_t count)
{
    uint32_t power[kProductWords] = {};
    uint32_t quotient[kProductWords];
    uint32_t remainder[kMintWords];
    const uint32_t power_words = exponent / 32 + 1;
    power[power_words - 1] = 1u << (exponent % 32);
    divide_quickly(power, power_words, p, words, quotient, remainder);
    const uint32_t available = power_words - words + 1;
    for (uint32_t i = 0; i < count; ++i) out[i] = i < available ? quotient[i] : 0;
}

// What happens if the guard leaves the quotient open: the multiplication gives up and writes nothing.
//
// In the hardened build a modulus for secret numbers carries on with the usual instructions instead. The
// quotient may then be one too small, so the remainder is at most (N + 4) p / B above p; it is written modulo
// 2^b, with b the bit length of p, and if it is p or above, the caller must subtract p.
template <bool may_go_on>
class OpenQuotientsOf {
public:
    // 1 for a guard above the limit, else 0.
    static uint32_t is_open(uint32_t guard, uint32_t limit) { return guard > limit ? 1 : 0; }
    static bool give_up(uint32_t open) { return open != 0; }
};

template <>
class OpenQuotientsOf<true> {
public:
    // The same, branch-free.
    static uint32_t is_open(uint32_t guard, uint32_t limit)
    {
        const uint64_t difference = uint64_t{limit} - guard;
        return static_cast<uint32_t>(difference >> 63);
    }
    void go_on() { gives_up_ = 0; }
    // open is 0 or 1. After go_on() always false, and no branch depends on open.
    bool give_up(uint32_t open) const
    {
        open &= gives_up_;
        __asm__("" : "+r"(open));
        return open != 0;
    }

private:
    uint32_t gives_up_ = 1;
};

using OpenQuotients = OpenQuotientsOf<kHardened>;

}  // namespace zokecc

#endif

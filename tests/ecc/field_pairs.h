// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// A fast field together with the reference, and the list of fields to test.
#ifndef ZOKECC_TESTS_ECC_FIELD_PAIRS_H
#define ZOKECC_TESTS_ECC_FIELD_PAIRS_H

#include <vector>

#include "ecc/fast_field.h"
#include "ecc/reference_field.h"
#include "tests/mint/moduli.h"
#include "tests/mint/portable_moduli.h"
#include "tests/support/counting_trace.h"
#include "tests/support/hard_words.h"

namespace zokecc_test {

template <class Modulus>
using Counted = zokecc::FastField<Modulus, CountingTrace>;

#ifdef __SIZEOF_INT128__
template <unsigned limbs>
using PortableFullLimbs = zokecc::FullLimbs<limbs, zokecc::PortableSteps<uint64_t>>;
#endif

// The fields that the library chooses from, for 32-bit and 64-bit machines, and the same with portable steps.
using AllFields = ::testing::Types<
#ifdef __SIZEOF_INT128__
    Counted<zokecc::FullLimbs<3>>, Counted<zokecc::FullLimbs<4>>, Counted<zokecc::FullLimbs<5>>,
    Counted<PortableFullLimbs<3>>, Counted<PortableFullLimbs<4>>, Counted<PortableFullLimbs<5>>,
#else
    Counted<PortableWordLimbs>, Counted<PortableShortLimbs>,
#endif
    Counted<zokecc::AnyWordLimbs>, Counted<zokecc::AnyShortLimbs>>;

// Odd moduli of five to nine words that Field accepts: named ones, and `hard` hard ones.
template <class Field>
std::vector<mint> served_moduli(HardWords &draw, int hard) {
    std::vector<mint> out;
    for (const Modulus &modulus : odd_moduli()) {
        if (modulus.value.word_count() > MINT_WORDS) continue;
        const mint p = modulus.value.to_mint();
        if (Field::serves(p)) out.push_back(p);
    }
    while (hard > 0) {
        mint p = draw.untrimmed(draw.between(5, 9));
        p.words[0] |= 1;
        if (draw.below(2) == 0) p.words[p.len - 1] |= 0x80000000u;
        if (!Field::serves(p)) continue;
        out.push_back(p);
        --hard;
    }
    return out;
}

// Below p and trimmed, as load() needs. Also short ones, and ones with words in common with p.
inline mint loadable(HardWords &draw, const mint &p) {
    switch (draw.below(10)) {
    case 0: return Natural(draw.below(3)).to_mint();
    case 1: return Natural::power_of_two(draw.below(Natural(p).bit_length() - 1)).to_mint();
    case 2: {
        const mint shorter = draw.trimmed(p.len - 1);
        return Natural(shorter).to_mint();
    }
    default: {
        const mint out = draw.reduced(p);
        return Natural(out).to_mint();
    }
    }
}

// A point on no curve, sometimes infinity: the formulas do not check.
inline ecc_point loadable_point(HardWords &draw, const mint &p) {
    ecc_point out{};
    out.infinity = draw.below(8) == 0 ? 1 : 0;
    out.x = loadable(draw, p);
    out.y = loadable(draw, p);
    return out;
}

}  // namespace zokecc_test

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Rows of limbs for the tests of the fast arithmetic, and the types of steps.
#ifndef ZOKECC_TESTS_MINT_LIMB_ROWS_H
#define ZOKECC_TESTS_MINT_LIMB_ROWS_H

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "mint/limbs/limb.h"
#include "tests/support/hard_words.h"

namespace zokecc_test {

// The portable steps, even if the machine does not use them, and its own.
using StepTypes = ::testing::Types<
#ifdef __SIZEOF_INT128__
    zokecc::PortableSteps<uint64_t>,
#endif
    zokecc::PortableSteps<uint32_t>, zokecc::NativeSteps>;

template <class L>
using Row = std::vector<L>;

template <class L>
constexpr L kAllOnesLimb = static_cast<L>(~L{0});
template <class L>
constexpr L kFenceLimb = static_cast<L>(0xFEFEFEFEFEFEFEFEu);  // must never be overwritten

template <class L>
Row<L> drawn_limbs(HardWords &draw, size_t count) {
    std::vector<uint32_t> words(count * zokecc::kWordsPerLimb<L>);
    draw.fill(words.data(), words.size());
    Row<L> out(count);
    if (count > 0) std::memcpy(out.data(), words.data(), count * sizeof(L));
    return out;
}

template <class L>
L drawn_limb(HardWords &draw) {
    return drawn_limbs<L>(draw, 1)[0];
}

// x with a few of its limbs changed.
template <class L>
Row<L> related_limbs(HardWords &draw, Row<L> x) {
    for (uint32_t changes = draw.below(3); changes > 0; --changes)
        x[draw.below(static_cast<uint32_t>(x.size()))] += static_cast<L>(draw.below(3)) - 1;
    return x;
}

template <class L>
Natural natural(const L *limbs, size_t count) {
    std::vector<uint32_t> words(count * zokecc::kWordsPerLimb<L>);
    if (count > 0) std::memcpy(words.data(), limbs, count * sizeof(L));
    return Natural(words.data(), words.size());
}
template <class L>
Natural natural(const Row<L> &limbs, size_t count) {
    return natural(limbs.data(), count);
}
template <class L>
Natural natural(const Row<L> &limbs) {
    return natural(limbs, limbs.size());
}
template <class L>
Natural natural(L limb) {
    return natural(&limb, 1);
}

// The same with a fence of three after it.
template <class L>
Row<L> fenced_limbs(Row<L> limbs) {
    limbs.insert(limbs.end(), 3, kFenceLimb<L>);
    return limbs;
}
template <class L>
::testing::AssertionResult fence_stands(const Row<L> &limbs, size_t count) {
    for (size_t i = count; i < limbs.size(); ++i)
        if (limbs[i] != kFenceLimb<L>) return ::testing::AssertionFailure() << "limb " << i << " was written";
    return ::testing::AssertionSuccess();
}

}  // namespace zokecc_test

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The kept rule of subtraction, applied to a true difference.
//
// mint_sub departs from the true difference D = X - Y only where D has a 32-bit word of all ones
// (add_sub.cpp has the rule and why it is kept):
//   - within Y's used words it writes FFFFFFFE where X and Y have equal words and a borrow comes in. D has
//     all ones there; for x == y, x - y - borrow is all ones only if there is a borrow.
//   - above them, and only in place, it loses the borrow after a zero word of X. D has 0 - 1 there, all ones.
// Every other word and every other borrow is the true one. So callers compute the true difference, test it
// for words of all ones, and come here only if there is one.
#ifndef ZOKECC_MINT_LIMBS_BORROW_RULE_H
#define ZOKECC_MINT_LIMBS_BORROW_RULE_H

#include "base/linkage.h"
#include "mint/limbs/limb.h"

namespace zokecc {

constexpr unsigned kMaxFastWords = 9;
template <class L>
constexpr unsigned kMaxFastLimbs = (kMaxFastWords + kWordsPerLimb<L> - 1) / kWordsPerLimb<L>;

template <class L>
inline uint32_t word_of(const L *limbs, unsigned i)
{
    return static_cast<uint32_t>(limbs[i / kWordsPerLimb<L>] >> (32 * (i % kWordsPerLimb<L>)));
}

template <class L>
inline void set_word(L *limbs, unsigned i, uint32_t word)
{
    const unsigned position = 32 * (i % kWordsPerLimb<L>);
    L &limb = limbs[i / kWordsPerLimb<L>];
    limb = (limb & ~(L{0xFFFFFFFFu} << position)) | L{word} << position;
}

template <class L>
inline unsigned used_words_of(const L *limbs, unsigned n)
{
    unsigned used = n * kWordsPerLimb<L>;
    while (used > 0 && word_of(limbs, used - 1) == 0) --used;
    return used;
}

// Turns d[n] = x[n] - y[n], x > y, into what mint_sub writes when the output is not x.
template <class L>
ZOKECC_ONE_COPY void keep_equal_words(const L *x, const L *y, unsigned n, L *d)
{
    const unsigned y_used = used_words_of(y, n);
    for (unsigned i = 0; i < y_used; ++i)
        if (word_of(d, i) == 0xFFFFFFFFu && word_of(x, i) == word_of(y, i)) set_word(d, i, 0xFFFFFFFEu);
}

// Turns d[n] = x[n] - y[n], x > y, into what mint_sub writes when the output is x.
template <class Steps>
ZOKECC_ONE_COPY void keep_in_place(const typename Steps::Limb *y, unsigned n, typename Steps::Limb *d)
{
    using L = typename Steps::Limb;
    L x[kMaxFastLimbs<L>];
    Steps::add_limbs(d, y, n, x);
    const unsigned words = n * kWordsPerLimb<L>;
    unsigned i = used_words_of(y, n);
    while (i < words && word_of(d, i) != 0xFFFFFFFFu) ++i;
    while (++i < words) set_word(d, i, word_of(x, i));  // the borrow is lost after the all-ones word
    keep_equal_words(x, y, n, d);
}

extern template void keep_equal_words(const NativeLimb *, const NativeLimb *, unsigned, NativeLimb *);
extern template void keep_in_place<NativeSteps>(const NativeLimb *, unsigned, NativeLimb *);

}  // namespace zokecc

#endif

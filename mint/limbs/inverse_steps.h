// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Steps of the inverse with all words in registers, for ARM.
#ifndef ZOKECC_MINT_LIMBS_INVERSE_STEPS_H
#define ZOKECC_MINT_LIMBS_INVERSE_STEPS_H

#include <cstdint>

#include "base/config.h"

namespace zokecc {

template <class L>
constexpr bool kStepsInRegisters = kArmInverseSteps && sizeof(L) == 4;

// For odd u and v of that many words, each with the two words of its row below it. A step takes the
// smaller one off the larger one and adds its row to the larger one's, then halves the difference until
// it is odd and doubles the smaller one's row as often. The steps end after a subtraction, before any
// halving, where a word of the difference is all ones, where its lowest word is zero, or where it would
// have to be halved more often than *room says, which is what is left of it after the halvings so far.
// Returns where that difference is: u or v, any of them where they were equal.
uint32_t *subtract_and_halve_8(uint32_t *u, uint32_t *v, uint32_t *room);
uint32_t *subtract_and_halve_4(uint32_t *u, uint32_t *v, uint32_t *room);

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Steps of the inverse with all words in registers, for ARM.
#ifndef ZOKECC_MINT_LIMBS_INVERSE_STEPS_H
#define ZOKECC_MINT_LIMBS_INVERSE_STEPS_H

#include <cstdint>

#include "base/config.h"
#include "mint/limbs/limb.h"

namespace zokecc {

template <class Steps>
constexpr bool kStepsInRegisters = (kArmInverseSteps && kIsNative<Steps>);

// For odd u and v of 8 or 4 words, each with the two words of its row stored just below it. A step subtracts
// the smaller number from the larger and adds its row to the larger one's, then halves the difference until
// it is odd and doubles the smaller one's row as often. The steps stop after a subtraction, before any
// halving, if a word of the difference is all ones, if its lowest word is zero, or if it would need more
// halvings than *room, which counts down with every halving. Returns where that difference is: u or v, either
// of them if they were equal.
uint32_t *subtract_and_halve_8(uint32_t *u, uint32_t *v, uint32_t *room);
uint32_t *subtract_and_halve_4(uint32_t *u, uint32_t *v, uint32_t *room);

}  // namespace zokecc

#endif

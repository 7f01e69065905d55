// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The fast inverse, instantiated once.
#include "mint/limbs/inverse.h"

namespace zokecc {

template void keep_equal_words(const NativeLimb *, const NativeLimb *, unsigned, NativeLimb *);
template void keep_in_place<NativeSteps>(const NativeLimb *, unsigned, NativeLimb *);
template class FastInverse<NativeSteps, NoTrace>;

}  // namespace zokecc

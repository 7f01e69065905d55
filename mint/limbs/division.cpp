// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Division on native limbs, instantiated once.
#include "mint/limbs/division.h"

namespace zokecc {

template void multiply_words<NativeSteps>(const uint32_t *, uint32_t, const uint32_t *, uint32_t, uint32_t *);
template void divide_limbs<NativeSteps>(const uint32_t *, uint32_t, const uint32_t *, uint32_t, uint32_t *,
                                        uint32_t *);
template void multiply_and_divide<NativeSteps>(const uint32_t *, uint32_t, const uint32_t *, uint32_t,
                                               const uint32_t *, uint32_t, uint32_t *);

}  // namespace zokecc

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Constant-time table lookup: every entry is read, one is kept.
#ifndef ZOKECC_CT_LOOK_UP_H
#define ZOKECC_CT_LOOK_UP_H

#include <cstddef>

#include "base/linkage.h"
#include "ct/mask.h"

namespace zokecc {

// group limbs at a time, held in registers.
template <unsigned group, class L>
ZOKECC_INLINE void look_up_limbs(const L *entry, size_t stride, unsigned count, uint32_t index, L *out)
{
    L sum[group] = {};
    for (unsigned i = 1; i <= count; ++i, entry += stride) {
        const L mask = static_cast<L>(mask_of_zero(i ^ index));
#pragma GCC unroll 8
        for (unsigned j = 0; j < group; ++j) sum[j] |= entry[j] & mask;
    }
#pragma GCC unroll 8
    for (unsigned j = 0; j < group; ++j) out[j] = sum[j];
}

// out[n] = the entry with the given index, 1 to count, or zero for index 0. Entries are stride limbs apart.
template <class L>
ZOKECC_ONE_COPY void look_up(const L *entries, size_t stride, unsigned count, uint32_t index, unsigned n,
                             L *out)
{
    unsigned done = 0;
    for (; n - done >= 8; done += 8) look_up_limbs<8>(entries + done, stride, count, index, out + done);
    for (; done < n; ++done) look_up_limbs<1>(entries + done, stride, count, index, out + done);
}

// Instantiated in field.cpp.
extern template void look_up(const uint32_t *, size_t, unsigned, uint32_t, unsigned, uint32_t *);

}  // namespace zokecc

#endif

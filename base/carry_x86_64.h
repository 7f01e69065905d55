// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Additions and subtractions with the carry in the flags: _addcarry_u64 and _subborrow_u64, without the
// header of all intrinsics, which takes longer to compile than most sources of the library.
#ifndef ZOKECC_BASE_CARRY_X86_64_H
#define ZOKECC_BASE_CARRY_X86_64_H

#include "base/linkage.h"

namespace zokecc::x86_64 {

// Returns the carry out; carry is 0 or 1.
ZOKECC_INLINE unsigned char add_carry(unsigned char carry, unsigned long long a, unsigned long long b,
                                      unsigned long long &sum)
{
    return __builtin_ia32_addcarryx_u64(carry, a, b, &sum);
}

// Returns the borrow out; borrow is 0 or 1.
ZOKECC_INLINE unsigned char sub_borrow(unsigned char borrow, unsigned long long a, unsigned long long b,
                                       unsigned long long &difference)
{
#ifdef __clang__
    return __builtin_ia32_subborrow_u64(borrow, a, b, &difference);
#else
    return __builtin_ia32_sbb_u64(borrow, a, b, &difference);
#endif
}

}  // namespace zokecc::x86_64

#endif

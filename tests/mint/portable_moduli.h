// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The multiplications of 32-bit machines with the portable steps, for machines that have their own.
#ifndef ZOKECC_TESTS_MINT_PORTABLE_MODULI_H
#define ZOKECC_TESTS_MINT_PORTABLE_MODULI_H

#include "mint/limbs/modulus_29_columns.h"
#include "mint/limbs/modulus_29_loops.h"
#include "mint/limbs/modulus_32.h"

namespace zokecc_test {

struct PortableShortModulus : zokecc::ShortModulus {
    using Steps = zokecc::PortableSteps<uint32_t>;
};

inline bool multiply_looped(const PortableShortModulus &p, const uint32_t *a, const uint32_t *b,
                            uint32_t *out) {
    return zokecc::LoopedLimbs<PortableShortModulus::Steps>::multiply(p, a, b, out);
}
inline bool multiply_eight(const PortableShortModulus &p, const uint32_t *a, const uint32_t *b,
                           uint32_t *out) {
    return zokecc::ColumnLimbs<8, PortableShortModulus::Steps>::multiply(p, a, b, out);
}
inline bool multiply_chosen(const PortableShortModulus &p, const uint32_t *a, const uint32_t *b,
                            uint32_t *out) {
    using Products = zokecc::ColumnProducts<PortableShortModulus::Steps, PortableShortModulus>;
    return Products::multiply_chosen(p, a, b, out);
}

struct PortableWordModulus : zokecc::WordModulus {
    using Steps = zokecc::PortableSteps<uint32_t>;
};

inline bool multiply_eight(const PortableWordModulus &p, const uint32_t *a, const uint32_t *b,
                           uint32_t *out) {
    return zokecc::WordLimbs<8, PortableWordModulus::Steps>::multiply(p, a, b, out);
}
inline bool multiply_chosen(const PortableWordModulus &p, const uint32_t *a, const uint32_t *b,
                            uint32_t *out) {
    using Products = zokecc::WordProducts<PortableWordModulus::Steps, PortableWordModulus>;
    return Products::multiply_chosen(p, a, b, out);
}

using PortableShortLimbs = zokecc::AnyWidth<PortableShortModulus>;
using PortableWordLimbs = zokecc::AnyWidth<PortableWordModulus>;

}  // namespace zokecc_test

#endif

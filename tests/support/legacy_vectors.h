// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The published vectors on the curves that Curve_Init supports.
#ifndef ZOKECC_TESTS_SUPPORT_LEGACY_VECTORS_H
#define ZOKECC_TESTS_SUPPORT_LEGACY_VECTORS_H

#include "tests/support/legacy_curve.h"
#include "tests/support/vector_file.h"

namespace zokecc_test {

inline bool is_legacy(const VectorBlock &block) { return curve(block.text("Curve")).legacy_type != kNoType; }
inline bool is_legacy_of_256_bits(const VectorBlock &block) {
    return curve(block.text("Curve")).legacy_type == 1;
}
inline bool is_shorter_legacy(const VectorBlock &block) {
    return is_legacy(block) && !is_legacy_of_256_bits(block);
}

}  // namespace zokecc_test

#endif

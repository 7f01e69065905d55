// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The published vectors over the curves that Curve_Init takes.
#ifndef ZOKECC_TESTS_SUPPORT_LEGACY_VECTORS_H
#define ZOKECC_TESTS_SUPPORT_LEGACY_VECTORS_H

#include <zokecc/hash.h>

#include <string>
#include <vector>

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

// The blocks of a file that the test is about, in the order of the file.
inline std::vector<VectorBlock> vectors_where(bool (*wanted)(const VectorBlock &), const std::string &file) {
    std::vector<VectorBlock> out;
    for (const VectorBlock &block : read_vectors(file))
        if (wanted(block)) out.push_back(block);
    return out;
}

inline uint32_t hash_of(const VectorBlock &block) {
    return block.text("Hash") == "SM3" ? HASH_ALG_SM3 : HASH_ALG_SHA256;
}

}  // namespace zokecc_test

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Emulation is ten to twenty times slower, and the native build runs every loop in full:
// emulated tests run a part of the rounds.
#ifndef ZOKECC_TESTS_SUPPORT_EMULATED_H
#define ZOKECC_TESTS_SUPPORT_EMULATED_H

#include <cstddef>
#include <vector>

namespace zokecc_test {

#ifdef __arm__
constexpr bool kEmulated = true;
#else
constexpr bool kEmulated = false;
#endif

// A quarter of the random rounds, and of the cases that they must hit.
constexpr int rounds(int full) { return kEmulated ? (full + 3) / 4 : full; }

// The step of a loop over all scalars or all lengths; coprime to the order of every small group.
constexpr int kStride = kEmulated ? 7 : 1;

// Message lengths: 1 to 200, and 64 KiB.
inline std::vector<size_t> message_lengths() {
    std::vector<size_t> out;
    for (size_t length = 1; length <= 200; length += kStride) out.push_back(length);
    out.push_back(65536);
    return out;
}

}  // namespace zokecc_test

#endif

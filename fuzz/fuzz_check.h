// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// How fuzz targets report a finding, and the comparisons they share.
#ifndef ZOKECC_FUZZ_FUZZ_CHECK_H
#define ZOKECC_FUZZ_FUZZ_CHECK_H

#include <zokecc/mint.h>

#include <cstdio>
#include <cstdlib>

#include "tests/support/hex.h"
#include "tests/support/naive_int.h"

// Runs one input. Always returns 0; a finding aborts the process.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace zokecc_fuzz {

using namespace zokecc_test;

// line is the caller's.
inline void check(bool holds, const char *what, int line = __builtin_LINE()) {
    if (holds) return;
    std::fprintf(stderr, "line %d: %s\n", line, what);
    std::abort();
}

inline void check_value(const mint &got, const mint &want, const char *what, int line = __builtin_LINE()) {
    if (same_value(got, want)) return;
    std::fprintf(stderr, "line %d: %s: got len %u %s, want len %u %s\n", line, what, got.len,
                 got.len <= MINT_WORDS ? mint_to_hex(got).c_str() : "?", want.len, mint_to_hex(want).c_str());
    std::abort();
}
inline void check_value(const mint &got, const Natural &want, const char *what, int line = __builtin_LINE()) {
    check_value(got, want.to_mint(), what, line);
}

inline void check_bytes(const ByteString &got, const ByteString &want, const char *what,
                        int line = __builtin_LINE()) {
    if (got == want) return;
    std::fprintf(stderr, "line %d: %s: got %s, want %s\n", line, what, to_hex(got).c_str(),
                 to_hex(want).c_str());
    std::abort();
}

}  // namespace zokecc_fuzz

#endif

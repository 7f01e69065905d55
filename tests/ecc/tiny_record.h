// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Records of a one-word curve, for configuration tests that need no real curve: its
// table has five entries and takes no time.
#ifndef ZOKECC_TESTS_ECC_TINY_RECORD_H
#define ZOKECC_TESTS_ECC_TINY_RECORD_H

#include <zokecc/ecc.h>

#include <cstring>

#include "tests/support/curves.h"
#include "tests/support/points.h"

namespace zokecc_test {

// y^2 = x^3 + 2x + 3 modulo 97 with G = (3, 6) of order 5, in fields of byte_len bytes.
template <class Record>
Record tiny_record(unsigned byte_len, uint32_t type) {
    Record out{};
    out.p[byte_len - 1] = 97;
    out.a[byte_len - 1] = 2;
    out.b[byte_len - 1] = 3;
    out.Gx[byte_len - 1] = 3;
    out.Gy[byte_len - 1] = 6;
    out.n[byte_len - 1] = 5;
    out.type = type;
    return out;
}

inline const mint kTinyP = small(97);
inline const ecc_point kTinyG = affine(small(3), small(6));

// The order field with `value` at its end.
template <class Record>
void set_order(Record &record, unsigned byte_len, uint32_t value) {
    ByteString bytes = fixed_bytes(small(value), byte_len);
    std::memcpy(record.n, bytes.data(), bytes.size());
}

}  // namespace zokecc_test

#endif

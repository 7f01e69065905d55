// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Small helpers for numbers and points in the tests of the curve layer.
#ifndef ZOKECC_TESTS_SUPPORT_POINTS_H
#define ZOKECC_TESTS_SUPPORT_POINTS_H

#include <zokecc/ecc.h>

#include <ostream>
#include <string>

#include "tests/support/hex.h"

namespace zokecc_test {

// Zero has no used words here; zero_in_one_word() is the other form of zero.
inline mint small(uint32_t value) {
    mint out{};
    out.words[0] = value;
    out.len = value == 0 ? 0 : 1;
    return out;
}
inline mint power_of_two(uint32_t exponent) {
    mint out{};
    out.words[exponent / 32] = 1u << (exponent % 32);
    out.len = exponent / 32 + 1;
    return out;
}
inline mint zero_in_one_word() {
    mint out{};
    out.len = 1;
    return out;
}

// The same value with every word above the used ones set to ones.
inline mint with_garbage(mint value) {
    for (uint32_t i = value.len; i < MINT_WORDS; ++i) value.words[i] = 0xFFFFFFFFu;
    return value;
}
inline ecc_point with_garbage(const ecc_point &P) {
    return {P.infinity, with_garbage(P.x), with_garbage(P.y)};
}
inline ecc_jac_point with_garbage(const ecc_jac_point &P) {
    return {with_garbage(P.X), with_garbage(P.Y), with_garbage(P.Z)};
}

// The same value with one zero word on top.
inline mint untrimmed(mint value) {
    value.words[value.len++] = 0;
    return value;
}

inline ecc_point affine(const mint &x, const mint &y) { return {0, x, y}; }
inline ecc_point affine_infinity() { return {1, small(0), small(0)}; }
inline ecc_jac_point jacobian(const mint &X, const mint &Y, const mint &Z) { return {X, Y, Z}; }
inline ecc_jac_point jacobian_infinity() { return {small(1), small(1), small(0)}; }

// Same flag, same lengths, same used words. Infinity has no used words, so it equals
// only infinity as written by the library.
inline bool same_point(const ecc_point &P, const ecc_point &Q) {
    return P.infinity == Q.infinity && same_value(P.x, Q.x) && same_value(P.y, Q.y);
}
inline bool same_point(const ecc_jac_point &P, const ecc_jac_point &Q) {
    return same_value(P.X, Q.X) && same_value(P.Y, Q.Y) && same_value(P.Z, Q.Z);
}

// All bytes equal.
template <class Record>
bool same_bytes(const Record &a, const Record &b) {
    return std::memcmp(&a, &b, sizeof(Record)) == 0;
}

inline std::string describe(const mint &value) {
    return mint_to_hex(value) + "(" + std::to_string(value.len) + ")";
}

}  // namespace zokecc_test

// Found by the test framework through the types' own (global) namespace.
inline void PrintTo(const ecc_point &P, std::ostream *out) {
    *out << "flag " << P.infinity << " x " << zokecc_test::describe(P.x);
    *out << " y " << zokecc_test::describe(P.y);
}
inline void PrintTo(const ecc_jac_point &P, std::ostream *out) {
    *out << "X " << zokecc_test::describe(P.X) << " Y " << zokecc_test::describe(P.Y) << " Z "
         << zokecc_test::describe(P.Z);
}
inline void PrintTo(const mint &value, std::ostream *out) { *out << zokecc_test::describe(value); }

#endif

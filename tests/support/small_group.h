// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The small curve y^2 = x^3 + 2x + 25 over 1009 elements, whose 991 points are multiples of
// (2, 365), in plain integers: the expected results of the schemes. 991 is prime and below
// 1009, and the quotient of the two is 1.
#ifndef ZOKECC_TESTS_SUPPORT_SMALL_GROUP_H
#define ZOKECC_TESTS_SUPPORT_SMALL_GROUP_H

#include <vector>

#include "tests/support/give_up.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/legacy_curve.h"
#include "tests/support/tiny_curve.h"

namespace zokecc_test {

inline constexpr uint32_t kSmallP = 1009;
inline constexpr uint32_t kSmallN = 991;
inline constexpr unsigned kLegacyLengths[] = {24, 28, 32};

inline Curve small_curve_of(unsigned byte_len) {
    return legacy_curve(byte_len, kSmallP, 2, 25, 2, 365, kSmallN);
}
inline void install_small(unsigned byte_len = 32) { install(small_curve_of(byte_len)); }

inline const TinyCurve &small_group() {
    static const TinyCurve group(kSmallP, 2, 25);
    return group;
}

// k G for every k below n, by repeated addition of G.
inline const TinyPoint &small_multiple(uint32_t k) {
    static const std::vector<TinyPoint> multiples = [] {
        const TinyPoint G{false, 2, 365};
        std::vector<TinyPoint> out{TinyPoint{}};
        while (out.size() < kSmallN) out.push_back(small_group().add(out.back(), G));
        return out;
    }();
    return multiples.at(k);
}

// k P for a point of that group: the hardened build's product by a secret.
inline TinyPoint exact_multiple(uint32_t k, const TinyPoint &P) {
    TinyPoint out{};
    for (uint32_t bit = 1u << 31; bit != 0; bit >>= 1) {
        out = small_group().add(out, out);
        if ((k & bit) != 0) out = small_group().add(out, P);
    }
    return out;
}

inline uint32_t product_modulo(uint32_t x, uint32_t y, uint32_t m) { return x % m * (y % m) % m; }
inline uint32_t negative_modulo(uint32_t x, uint32_t m) { return (m - x % m) % m; }

// 1 / x for a prime m below 2^16; gives up if there is none.
inline uint32_t inverse_modulo(uint32_t x, uint32_t m) {
    for (uint32_t candidate = 1; candidate < m; ++candidate)
        if (product_modulo(x, candidate, m) == 1) return candidate;
    give_up("no inverse");
}

// The numbers of a signature.
struct SmallSignature {
    uint32_t r, s;
};

// A big-endian number of any length modulo m below 2^24.
inline uint32_t residue(const ByteString &bytes, uint32_t m) {
    uint32_t value = 0;
    for (uint8_t byte : bytes) value = (value << 8 | byte) % m;
    return value;
}

// The smallest k in 1..n-1 that satisfies the condition.
template <class Condition>
uint32_t first_scalar(Condition condition) {
    for (uint32_t k = 1; k < kSmallN; ++k)
        if (condition(k)) return k;
    give_up("no such scalar");
}

}  // namespace zokecc_test

#endif

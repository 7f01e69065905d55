// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The tiny curves of the exhaustive tests, with the number of their points.
#ifndef ZOKECC_TESTS_EXHAUSTIVE_CURVES_H
#define ZOKECC_TESTS_EXHAUSTIVE_CURVES_H

#include <string>
#include <vector>

#include "tests/support/tiny_curve.h"

namespace zokecc_test {

struct TinyParameters {
    uint32_t p, a, b;
    uint32_t order;
    uint32_t step;  // between the points that are paired; 1 pairs all with all
};

// Primes of 5 to 11 bits in all three classes: 3 modulo 4, 5 modulo 8 and 1 modulo 8; prime
// orders and composite ones; a = 0, b = 0 (where the origin is a point of order 2), a = -3.
inline const TinyParameters kTinyCurves[] = {
#ifdef __arm__  // under emulation one of each class
    {31, 1, 3, 41, 1},
    {29, 1, 0, 20, 1},
    {97, 94, 4, 100, 5},
#else
    {17, 2, 2, 19, 1},     {17, 1, 0, 16, 1},        {23, 1, 4, 29, 1},       {23, 0, 1, 24, 1},
    {29, 4, 1, 31, 1},     {29, 1, 0, 20, 1},        {31, 1, 3, 41, 1},       {31, 1, 0, 32, 1},
    {37, 2, 8, 31, 1},     {41, 1, 5, 47, 1},        {41, 0, 1, 42, 1},       {97, 1, 4, 89, 5},
    {97, 94, 4, 100, 5},   {101, 6, 9, 83, 5},       {101, 1, 0, 100, 5},     {127, 1, 7, 109, 7},
    {127, 0, 1, 108, 7},   {509, 3, 3, 541, 31},     {521, 0, 1, 522, 31},    {1009, 6, 2, 1021, 61},
    {1021, 0, 5, 975, 61}, {2017, 2, 10, 1999, 127}, {2029, 1, 1, 2083, 127}, {2039, 0, 1, 2040, 127},
#endif
};

inline TinyCurve tiny_curve(const TinyParameters &parameters) {
    return TinyCurve(parameters.p, parameters.a, parameters.b);
}

inline std::string tiny_curve_name(const TinyParameters &parameters) {
    std::string name = "p";
    name.append(std::to_string(parameters.p)).append("a").append(std::to_string(parameters.a));
    return name.append("b").append(std::to_string(parameters.b));
}

// Infinity, and every step-th point starting with the first; with step 1 all points.
inline std::vector<TinyPoint> some_points(const TinyCurve &curve, uint32_t step) {
    std::vector<TinyPoint> out{TinyPoint{}};
    for (size_t i = 1; i < curve.points().size(); i += step) out.push_back(curve.points()[i]);
    return out;
}

// A z for the Jacobian form of the i-th point: 1, and numbers all over the field.
inline std::vector<uint32_t> some_z(const TinyCurve &curve, size_t i) {
    return {1, static_cast<uint32_t>(2 + (i * 7 + 3) % (curve.p - 2))};
}

// A curve's three numbers in the library's form.
struct TinyRecords {
    explicit TinyRecords(const TinyCurve &curve)
        : p(tiny_number(curve.p)), a(tiny_number(curve.a)), b(tiny_number(curve.b)) {}
    mint p, a, b;
};

}  // namespace zokecc_test

#endif

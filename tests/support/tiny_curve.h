// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Curves over primes of a few bits in plain integers: the group by its definition, and the
// library's results where they are known to differ from it.
//
// Nothing here uses the library. One-word numbers never meet the kept rule for equal words
// under a borrow (it needs a second word), so an inverse is the true inverse and 1/0 is p.
#ifndef ZOKECC_TESTS_SUPPORT_TINY_CURVE_H
#define ZOKECC_TESTS_SUPPORT_TINY_CURVE_H

#include <zokecc/ecc.h>

#include <cstdint>
#include <ostream>
#include <vector>

namespace zokecc_test {

struct TinyPoint {
    bool infinite = true;
    uint32_t x = 0;
    uint32_t y = 0;
    bool operator==(const TinyPoint &) const = default;
};
void PrintTo(const TinyPoint &P, std::ostream *out);

class TinyCurve {
public:
    TinyCurve(uint32_t p, uint32_t a, uint32_t b);

    const uint32_t p, a, b;

    // Infinity first, then every solution of the equation.
    const std::vector<TinyPoint> &points() const { return points_; }
    uint32_t order() const { return static_cast<uint32_t>(points_.size()); }
    uint32_t order_of(const TinyPoint &P) const;

    // The group.
    TinyPoint add(const TinyPoint &P, const TinyPoint &Q) const;
    TinyPoint negate(const TinyPoint &P) const;

    // The result of the affine addition. KEPT: opposite points give (-2x, -y), and a
    // computed sum of (0, 0) is treated as infinity.
    TinyPoint library_affine_add(const TinyPoint &P, const TinyPoint &Q) const;
    // The result of the full Jacobian addition of two records. KEPT: equal points give infinity.
    TinyPoint library_jacobian_add(const TinyPoint &P, const TinyPoint &Q) const;
    // The result of wNAF: the recoding is exact, every addition is the one above.
    TinyPoint library_window(const mint &k, const TinyPoint &P) const;
    // The result of the comb for a one-word k: 2^16 G comes from affine doublings, the rest from
    // mixed additions, which are correct for every pair.
    TinyPoint library_comb(uint32_t k, const TinyPoint &G) const;

private:
    uint32_t mod_product(uint32_t x, uint32_t y) const { return x * y % p; }
    TinyPoint along(uint32_t slope, const TinyPoint &P, const TinyPoint &Q) const;
    std::vector<uint32_t> inverse_;
    std::vector<TinyPoint> points_;
};

// Records for the library.
mint tiny_number(uint32_t value);
ecc_point tiny_affine(const TinyPoint &P);
// (x z^2, y z^3, z), or (x, y, 0) for infinity.
ecc_jac_point tiny_jacobian(const TinyCurve &curve, const TinyPoint &P, uint32_t z);
// The point of an affine record; infinity also if the record has flag 1.
TinyPoint tiny_point(const ecc_point &P);

}  // namespace zokecc_test

#endif

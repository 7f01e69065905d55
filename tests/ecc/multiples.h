// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Published multiples of base points, and other Jacobian forms of a point.
#ifndef ZOKECC_TESTS_ECC_MULTIPLES_H
#define ZOKECC_TESTS_ECC_MULTIPLES_H

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/curves.h"
#include "tests/support/points.h"
#include "tests/support/vector_file.h"

namespace zokecc_test {

// multiples(c)[k] is k G for 0 < k <= 20; entry 0 is infinity.
inline const std::vector<ecc_point> &multiples(const Curve &curve) {
    static std::map<std::string, std::vector<ecc_point>> known;
    if (known.empty()) {
        for (const VectorBlock &block : read_vectors("point_mul.rsp")) {
            mint k = block.number("k");
            std::vector<ecc_point> &of_curve = known[block.text("Curve")];
            of_curve.resize(21, affine_infinity());
            if (k.len == 1 && k.words[0] <= 20)
                of_curve[k.words[0]] = affine(block.number("x"), block.number("y"));
        }
    }
    return known.at(curve.name);
}

// (x z^2, y z^3, z) through the library's field operations.
inline ecc_jac_point scaled(const Curve &curve, const ecc_point &P, const mint &z) {
    ecc_jac_point out{P.x, P.y, z};
    mint square{}, cube{};
    mint_mod_mul(&z, &z, &curve.p, &square);
    mint_mod_mul(&square, &z, &curve.p, &cube);
    mint_mod_mul(&out.X, &square, &curve.p, &out.X);
    mint_mod_mul(&out.Y, &cube, &curve.p, &out.Y);
    return out;
}

// A z of the curve's size; its words have no pattern.
inline mint any_z(const Curve &curve) {
    mint z{};
    mint random = mint_from_hex("7d31b5c58e2209fa64cb9035ef1a7746d3908cbe5127fe036a915bb8c4d2e7f1");
    mint_mod(&random, &curve.p, &z);
    return z;
}

// Negation of an affine point with y below p.
inline ecc_point minus(const Curve &curve, const ecc_point &P) {
    ecc_point out = P;
    mint_mod_sub(&curve.p, &P.y, &curve.p, &out.y);
    return out;
}

inline ecc_point to_affine(const Curve &curve, const ecc_jac_point &P) {
    ecc_point out{};
    ecc_jacobin_affine(&out, &curve.p, &P);
    return out;
}

inline std::vector<std::string> all_curve_names() {
    std::vector<std::string> names = session_curve_names();
    names.push_back("secp160r1");
    return names;
}

// Names for tests that run once per curve.
template <class Info>
std::string curve_test_name(const Info &info) {
    return info.param;
}

}  // namespace zokecc_test

#endif

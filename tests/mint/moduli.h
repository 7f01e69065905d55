// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Moduli for the tests of modular arithmetic.
#ifndef ZOKECC_TESTS_MINT_MODULI_H
#define ZOKECC_TESTS_MINT_MODULI_H

#include <string>
#include <vector>

#include "tests/support/naive_int.h"
#include "tests/support/vector_file.h"

namespace zokecc_test {

struct Modulus {
    std::string name;
    Natural value;
};

// Field primes and group orders of the named curves, 160 to 256 bits.
inline std::vector<Modulus> curve_moduli() {
    std::vector<Modulus> out;
    for (const VectorBlock &block : read_vectors("curves.rsp")) {
        out.push_back({block.text("Curve") + " p", Natural::from_hex(block.text("p"))});
        out.push_back({block.text("Curve") + " n", Natural::from_hex(block.text("n"))});
    }
    return out;
}

// Odd moduli of every kind: those of the curves, wide primes, small numbers, composites.
inline std::vector<Modulus> odd_moduli() {
    std::vector<Modulus> out = curve_moduli();
    out.push_back({"2^255 - 19", Natural::power_of_two(255) - Natural(19)});
    out.push_back({"2^285 - 9", Natural::power_of_two(285) - Natural(9)});
    out.push_back({"2^288 - 167", Natural::power_of_two(288) - Natural(167)});
    out.push_back({"2^288 - 1", Natural::power_of_two(288) - Natural(1)});
    out.push_back({"2^256 + 1", Natural::power_of_two(256) + Natural(1)});
    for (uint32_t small :
         {3u, 5u, 7u, 9u, 15u, 21u, 255u, 257u, 65537u, 0x7FFFFFFFu, 0xFFFFFFFBu, 0xFFFFFFFFu})
        out.push_back({std::to_string(small), Natural(small)});
    return out;
}

inline std::vector<Modulus> even_moduli() {
    std::vector<Modulus> out;
    for (uint32_t small : {2u, 4u, 6u, 8u, 10u, 30u, 256u, 0x80000000u, 0xFFFFFFFEu})
        out.push_back({std::to_string(small), Natural(small)});
    out.push_back({"2^64", Natural::power_of_two(64)});
    out.push_back({"2^256", Natural::power_of_two(256)});
    out.push_back({"2^256 - 2", Natural::power_of_two(256) - Natural(2)});
    // So long that a step past its words would reach the record's length.
    out.push_back({"2^576 - 2", Natural::power_of_two(576) - Natural(2)});
    for (const Modulus &odd : curve_moduli()) out.push_back({odd.name + " - 1", odd.value - Natural(1)});
    return out;
}

}  // namespace zokecc_test

#endif

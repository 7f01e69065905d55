// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Numbers of a curve record: lengths, the curve equation, and values that both installations derive.
#ifndef ZOKECC_ECC_CURVE_NUMBERS_H
#define ZOKECC_ECC_CURVE_NUMBERS_H

#include <cstdint>

#include "ecc/curve.h"

namespace zokecc {

// Bytes of a coordinate for a curve type of the session interface; 0 for an unknown type.
inline uint32_t session_byte_length(uint32_t type)
{
    constexpr uint32_t kByteLengths[] = {0, 20, 24, 28, 32, 32, 32};
    return type < sizeof kByteLengths / sizeof kByteLengths[0] ? kByteLengths[type] : 0;
}

// out = x^3 + a x + b (mod p), the right side of the curve's equation; zero for p = 0. out may be an operand.
void curve_right_side(const mint &x, const mint &a, const mint &b, const mint &p, mint &out);

// ceil(t/2) - 1, the width of the key exchange's x-bar, where t is curve_bits minus the leading zero
// bits of the order's highest used word. t differs from the order's bit length if the order has
// fewer words than the curve.
uint32_t exchange_width(uint32_t curve_bits, const mint &n);

// Reads the numbers of a curve record, big-endian in the first byte_len bytes of their fields, into
// a curve, and derives w and h = p / n (0 for n = 0).
template <class Curve, class Record>
void install_numbers(Curve &curve, const Record &record, uint32_t byte_len, uint32_t curve_bits)
{
    octetstring_to_mint(record.p, byte_len, &curve.p);
    octetstring_to_mint(record.a, byte_len, &curve.a);
    octetstring_to_mint(record.b, byte_len, &curve.b);
    octetstring_to_mint(record.Gx, byte_len, &curve.G.x);
    octetstring_to_mint(record.Gy, byte_len, &curve.G.y);
    octetstring_to_mint(record.n, byte_len, &curve.n);
    curve.w = exchange_width(curve_bits, curve.n);
    mint remainder{};
    curve.h = mint{};
    mint_div(&curve.p, &curve.n, &curve.h, &remainder);
}

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The process-wide curve.
#include "base/config.h"
#include "ecc/curve.h"
#include "ecc/curve_numbers.h"
#include "ecc/table.h"
#include "mint/value.h"

using namespace zokecc;

GlobalCurve global_curve;

namespace zokecc {

uint32_t exchange_width(uint32_t curve_bits, const mint &n)
{
    const uint32_t used = used_words(n);
    const uint32_t leading_zeros = used == 0 ? 0 : 32 - bit_length(n.words[used - 1]);
    return (curve_bits - leading_zeros + 1) / 2 - 1;
}

}  // namespace zokecc

namespace {

constexpr int32_t kUnknownType = 1;

// Types 2 and 3, 384 and 512 bits, are refused: their table would be far larger than the record's.
uint32_t byte_length_of_type(uint32_t type)
{
    switch (type) {
    case 0: return 24;
    case 1: return 32;
    case 4: return 28;
    default: return 0;
    }
}

}  // namespace

int32_t Curve_Init(const ecc_curve_bytes *curve)
{
    if (curve == nullptr) return -1;
    const uint32_t byte_len = byte_length_of_type(curve->type);
    if (byte_len == 0) return kUnknownType;

    GlobalCurve &g = global_curve;
    g.byte_len = byte_len;
    g.bits = 8 * byte_len;
    install_numbers(g, *curve, byte_len, g.bits);
    ecc_precomputation_point(&g.G, &g.a, &g.b, &g.p);
    if constexpr (kHardened) fill_exact_table(&g.G, &g.a, &g.b, &g.p, g.table.entry);
    return ecc_test_point(&g.G, &g.a, &g.b, &g.p) != 0 ? -1 : 0;
}

int32_t Curve_Exit(void) { return 0; }

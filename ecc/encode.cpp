// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Octet strings of points (SEC 1 version 2, sections 2.3.3 and 2.3.4; ANSI X9.62 for the hybrid
// form), and point decompression.
#include <cstring>

#include "ecc/curve.h"
#include "ecc/curve_numbers.h"
#include "ecc/point_bytes.h"
#include "mint/value.h"

using namespace zokecc;

namespace {

constexpr uint32_t kUncompressed = 0;
constexpr uint32_t kCompressed = 1;
constexpr uint32_t kHybrid = 2;

constexpr uint8_t kCompressedPrefix = 2;  // plus the parity of y
constexpr uint8_t kUncompressedPrefix = 4;
constexpr uint8_t kHybridPrefix = 6;  // plus the parity of y

bool y_is_odd(const ecc_point_bytes &point)
{
    return point.length > 0 && (point.y[point.length - 1] & 1) != 0;
}

// Prefix 2 or 3. y is written with the curve's length, so x must have that length, too.
bool read_compressed(const uint8_t *in, uint32_t count, ecc_point_bytes &out)
{
    const GlobalCurve &g = global_curve;
    if (count > kPointFieldBytes || count != g.byte_len) return false;
    mint x{};
    mint y{};
    octetstring_to_mint(in + 1, count, &x);
    const uint32_t parity = in[0] - uint32_t{kCompressedPrefix};
    if (ecc_point_unpress(&y, &x, &g.a, &g.b, &g.p, parity) != 0) return false;
    uint32_t written = 0;
    std::memcpy(out.x, in + 1, count);
    mint_to_fixedlen_os(&y, g.byte_len, kPointFieldBytes, &written, out.y);
    out.length = count;
    return true;
}

// Prefix 4, 6 or 7.
//
// KEPT: the parity in a hybrid prefix is not compared with y. Held by
// EccByteToPoint.KeptHybridParityIsNotCompared.
bool read_both(const uint8_t *in, uint32_t count, ecc_point_bytes &out)
{
    const uint32_t half = count / 2;
    if (half > kPointFieldBytes) return false;
    std::memcpy(out.x, in + 1, half);
    std::memcpy(out.y, in + 1 + half, half);
    out.length = half;
    return true;
}

}  // namespace

// KEPT: for root 0 and parity 1 the result is y = p, unreduced. Held by
// EccPointUnpress.KeptRootZeroWithParityOneGivesP.
int32_t ecc_point_unpress(mint *out_y, const mint *x, const mint *a, const mint *b, const mint *p,
                          uint32_t parity)
{
    mint square{};
    mint root{};
    curve_right_side(*x, *a, *b, *p, square);
    mint_mod(&square, p, &square);
    if (mint_sqrt(&square, p, &root) != 1) return -1;
    if ((low_word(root) & 1) == parity)
        mint_copy(out_y, &root);
    else
        mint_sub(p, &root, out_y);
    return 0;
}

int32_t ecc_PointToByte(const ecc_point_bytes *point, uint32_t form, uint8_t *out, int32_t out_size)
{
    if (point == nullptr || out == nullptr || !fits_field(*point)) return -1;
    if (form != kUncompressed && form != kCompressed && form != kHybrid) return -1;
    const uint32_t len = point->length;
    const uint32_t total = form == kCompressed ? 1 + len : 1 + 2 * len;
    if (out_size < static_cast<int32_t>(total)) return -1;

    const uint8_t parity = y_is_odd(*point) ? 1 : 0;
    if (form == kUncompressed)
        out[0] = kUncompressedPrefix;
    else
        out[0] = static_cast<uint8_t>((form == kCompressed ? kCompressedPrefix : kHybridPrefix) + parity);
    std::memcpy(out + 1, point->x, len);
    if (form != kCompressed) std::memcpy(out + 1 + len, point->y, len);
    return static_cast<int32_t>(total);
}

int32_t ecc_ByteToPoint(const uint8_t *in, uint32_t in_len, ecc_point_bytes *out)
{
    const GlobalCurve &g = global_curve;
    if (in == nullptr || out == nullptr) return -1;
    if (is_zero(g.n) || is_zero(g.p)) return -1;
    if (in_len % 2 == 0) return -1;
    switch (in[0]) {
    case 2:
    case 3:
        if (!read_compressed(in, in_len - 1, *out)) return -1;
        break;
    case 4:
    case 6:
    case 7:
        if (!read_both(in, in_len - 1, *out)) return -1;
        break;
    default: return -1;
    }
    ecc_point point{};
    read_point(*out, point);
    return ecc_test_point(&point, &g.a, &g.b, &g.p) != 0 ? -1 : 0;
}

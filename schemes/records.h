// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Reading and writing the records of the legacy interface, over the process-wide curve.
//
// A record is read at its own length and written at the curve's; bytes of a field behind those
// are neither read nor written.
#ifndef ZOKECC_SCHEMES_RECORDS_H
#define ZOKECC_SCHEMES_RECORDS_H

#include <zokecc/schemes.h>

#include "ecc/curve.h"
#include "ecc/point_bytes.h"
#include "ecc/secret_steps.h"

// 2^w + (x mod 2^w) of the point's first coordinate, big-endian, at the end of the curve's L
// bytes of out. The bytes before it are not written: the caller clears them. Returns 0.
ZOKECC_INTERNAL int32_t sm2_x_bar(const ecc_point_bytes *point, uint32_t w, uint8_t *out);

namespace zokecc {

constexpr int32_t kFailed = -1;

// True once a curve with a field prime and an order is installed.
bool curve_is_installed();

CurveView global_view();

// True if the scalar can be read: it is there, its bytes are, and they fit an integer.
bool is_readable(const ecc_scalar *scalar);

// True if the message is there, its bytes included.
inline bool is_readable(const sm3_msg *message)
{
    return message != nullptr && (message->data != nullptr || message->len_low == 0);
}

// True if the point is there and its length lies within its fields.
inline bool is_readable(const ecc_point_bytes *point) { return point != nullptr && fits_field(*point); }

// A private number. False if it must not be used.
inline bool read_scalar(const ecc_scalar &scalar, mint &out)
{
    return read_private(global_view(), scalar.bytes, scalar.length, out);
}

// Two numbers, a point's coordinates or a signature's halves, at the record's own length.
inline void read_pair(const ecc_point_bytes &record, mint &first, mint &second)
{
    octetstring_to_mint(record.x, record.length, &first);
    octetstring_to_mint(record.y, record.length, &second);
}

// Two numbers at the curve's length, and that length.
void write_pair(const mint &first, const mint &second, ecc_point_bytes &record);

inline void write_point_record(const ecc_point &point, ecc_point_bytes &record)
{
    write_pair(point.x, point.y, record);
}

}  // namespace zokecc

#endif

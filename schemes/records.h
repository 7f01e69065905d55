// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Reading and writing the records of the legacy interface, over the process-wide curve.
//
// A record is read with its own length and written with the curve's; the bytes of a field after
// that are neither read nor written.
#ifndef ZOKECC_SCHEMES_RECORDS_H
#define ZOKECC_SCHEMES_RECORDS_H

#include <zokecc/schemes.h>

#include "ecc/curve.h"
#include "ecc/point_bytes.h"
#include "ecc/secret_steps.h"

// Writes 2^w + (x mod 2^w) for the point's x, big-endian, to the end of out, which has the curve's L
// bytes. The bytes before it are not written: the caller must clear them. Returns 0.
ZOKECC_INTERNAL int32_t sm2_x_bar(const ecc_point_bytes *point, uint32_t w, uint8_t *out);

namespace zokecc {

constexpr int32_t kFailed = -1;

// True if the installed curve has a field prime and an order.
bool curve_is_installed();

CurveView global_view();

// True if neither the scalar nor its bytes are missing, and they fit an integer.
bool is_readable(const ecc_scalar *scalar);

// True if neither the message nor its bytes are missing.
inline bool is_readable(const sm3_msg *message)
{
    return message != nullptr && (message->data != nullptr || message->len_low == 0);
}

// True if the point is not null and its length does not exceed its fields.
inline bool is_readable(const ecc_point_bytes *point) { return point != nullptr && fits_field(*point); }

// out = a private number. False if it must not be used.
inline bool read_scalar(const ecc_scalar &scalar, mint &out)
{
    return read_private(global_view(), scalar.bytes, scalar.length, out);
}

// Reads two numbers, a point's coordinates or a signature's halves, with the record's own length.
inline void read_pair(const ecc_point_bytes &record, mint &first, mint &second)
{
    octetstring_to_mint(record.x, record.length, &first);
    octetstring_to_mint(record.y, record.length, &second);
}

// Writes two numbers with the curve's length, and that length.
void write_pair(const mint &first, const mint &second, ecc_point_bytes &record);

inline void write_point_record(const ecc_point &point, ecc_point_bytes &record)
{
    write_pair(point.x, point.y, record);
}

}  // namespace zokecc

#endif

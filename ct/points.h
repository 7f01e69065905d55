// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Scalar multiplication with secret scalars.
//
// A secret number is held in a "wide" mint: len is the number of words of the modulus, and the top words may
// be zero. Never pass such a record to a function of the layers below. A wide point has coordinates of that
// kind.
#ifndef ZOKECC_CT_POINTS_H
#define ZOKECC_CT_POINTS_H

#include "ecc/sm2_steps.h"

namespace zokecc {

// True if the curve allows scalar multiplication with secret scalars: both p and n have a field for secret
// numbers, a and b are below p, and n has no more words than p, or one more with a single bit.
bool has_secret_points(const CurveView &curve);

// True if an outside point may be combined with a secret: its coordinates are below p and on the curve.
bool is_valid_point(const CurveView &view, const ecc_point &P);

// out = k G, wide, using the curve's table. False if that is infinity or not on the curve.
bool multiply_base_in_secret(const CurveView &view, const mint &k, ecc_point &out);

// out = k P, wide, or k P + *addend unless addend is null, for valid points and a wide k below 2^bits. False
// if that is infinity, or undefined because a point has even order.
bool multiply_in_secret(const CurveView &view, const mint &k, uint32_t bits, const ecc_point &P,
                        const ecc_point *addend, ecc_point &out);

// out = the wide point, trimmed; its coordinates are public from here on.
void publish_point(const ecc_point &wide, ecc_point &out);

// x || y, each in len bytes.
void write_wide_point(const ecc_point &wide, uint32_t len, PointBytes &out);

}  // namespace zokecc

#endif

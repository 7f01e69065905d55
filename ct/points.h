// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Products of points with secret scalars.
//
// Secret numbers are kept in a mint, too, but differently: len is the number of words of the modulus, and
// words at the top may be zero. Such a record never goes to a function of the layers below. Points in
// `wide` records have coordinates like that.
#ifndef ZOKECC_CT_POINTS_H
#define ZOKECC_CT_POINTS_H

#include "ecc/sm2_steps.h"

namespace zokecc {

// True if products with secret scalars can be computed on the curve: p and n have fields of that kind, a
// and b are below p, and n is no longer than p.
bool has_secret_points(const CurveView &curve);

// True for a point from outside that may meet a secret: its coordinates are below p and on the curve.
bool is_valid_point(const CurveView &curve, const ecc_point &P);

// out = k G, wide, over the table. False if that is infinity or not on the curve.
bool multiply_base_in_secret(const CurveView &curve, const mint &k, ecc_point &out);

// out = k P, wide, or k P + *addend where there is an addend, for valid points and a wide k below 2^bits.
// False if that is infinity, or not defined for points of even order.
bool multiply_in_secret(const CurveView &curve, const mint &k, uint32_t bits, const ecc_point &P,
                        const ecc_point *addend, ecc_point &out);

// out = point, whose coordinates are public from here on.
void publish_point(const ecc_point &wide, ecc_point &out);

// x || y, each in len bytes.
void write_wide_point(const ecc_point &wide, uint32_t len, PointBytes &out);

}  // namespace zokecc

#endif

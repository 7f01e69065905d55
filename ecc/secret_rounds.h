// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Signing rounds and the key exchange, shared by both generations of calls.
//
// Inline, because the steps they call have two bodies and the hardened build's is in a layer above this
// folder: only code above both may call them.
#ifndef ZOKECC_ECC_SECRET_ROUNDS_H
#define ZOKECC_ECC_SECRET_ROUNDS_H

#include "base/linkage.h"
#include "base/wipe.h"
#include "ecc/secret_steps.h"
#include "mint/value.h"

namespace zokecc {

// ECDSA's r and s for the digest e, below n, and the key d. False if no nonce leads to nonzero r and s. FIPS
// 186-4, section 6.4.
ZOKECC_OWN_FRAME inline bool ecdsa_sign(const CurveView &curve, const mint &d, const mint &e, mint &r,
                                        mint &s)
{
    Wiping<mint> k;
    for (uint32_t draw = 0; draw < kMaxFruitlessDraws; ++draw) {
        if (!draw_nonce(curve, d, e, *k)) return false;
        if (!ecdsa_first_half(curve, *k, r) || is_zero(r)) continue;
        if (ecdsa_second_half(curve, e, d, *k, r, s) && !is_zero(s)) return true;
    }
    return false;
}

// One side's input to the shared point of SM2's key exchange.
struct ExchangeSide {
    const mint &d;          // the private number
    const mint &r;          // the temporary private number
    const uint8_t *own_x;   // x of r G, as long as a coordinate
    const uint8_t *peer_x;  // x of the peer's temporary point
    const ecc_point &peer_key;
    ecc_point &point;  // in: the peer's temporary point; out: the shared point
};

// Computes the shared point, in side.point and as bytes in U. len and w are the curve's. False if a step
// fails. GB/T 32918.3, A4 to A7.
ZOKECC_OWN_FRAME inline bool compute_shared_point(const CurveView &curve, uint32_t len, uint32_t w,
                                                  const ExchangeSide &side, PointBytes &U)
{
    if (len > kMaxCoordinateBytes) return false;  // no such curve can be installed
    mint x_bar{};
    Wiping<mint> ht;
    read_x_bar(side.own_x, len, w, x_bar);
    if (!sm2_exchange_scalar(curve, side.d, side.r, x_bar, *ht)) return false;
    read_x_bar(side.peer_x, len, w, x_bar);
    return sm2_exchange_point(curve, len, *ht, side.peer_key, x_bar, side.point, U) == Step::done;
}

}  // namespace zokecc

#endif

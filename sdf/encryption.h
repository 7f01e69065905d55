// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Common to the two pairs of encryption calls of the session interface.
#ifndef ZOKECC_SDF_ENCRYPTION_H
#define ZOKECC_SDF_ENCRYPTION_H

#include <zokecc/sdf.h>

#include "ecc/secret_steps.h"
#include "hash/sm2_digests.h"

namespace zokecc {

// Q = the public key as a finite point. False if a coordinate is zero.
bool read_recipient(const ECCrefPublicKey &pub, ecc_point &Q);

// False without a prime or an order, and for an unknown hash, with which drawing would never end.
bool can_encrypt(const SessionContext &session);

constexpr uint8_t kFlatPrefix = 0x04;

// Where to write C1: in a byte string after a prefix; in a record there is none, and prefix is null.
struct FirstPart {
    uint8_t *prefix;
    uint8_t *x1;  // L bytes each
    uint8_t *y1;
};

// Draws nonces until the m-byte key stream is not all zero. Writes nothing before the first nonce is drawn.
uint32_t draw_key_stream(const SessionContext &session, const ecc_point &Q, uint32_t m, const FirstPart &C1,
                         PointBytes &shared, uint8_t *stream);

// Computes the m-byte key stream from C1 and the private key.
uint32_t recover_key_stream(const SessionContext &session, const mint &d, const uint8_t *x1,
                            const uint8_t *y1, uint32_t m, PointBytes &shared, uint8_t *stream);

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// What the two encryption pairs of the session interface share.
#ifndef ZOKECC_SDF_ENCRYPTION_H
#define ZOKECC_SDF_ENCRYPTION_H

#include <zokecc/sdf.h>

#include "ecc/secret_steps.h"
#include "hash/sm2_digests.h"

namespace zokecc {

// The public key as a finite point; false if a coordinate is zero.
bool read_recipient(const ECCrefPublicKey &pub, ecc_point &Q);

// False without an order to draw below, and for an unknown hash, which would draw for ever.
bool can_encrypt(const SessionContext &session);

constexpr uint8_t kFlatPrefix = 0x04;

// Where C1 goes: in a byte string with the prefix before it, in a record without (null).
struct FirstPart {
    uint8_t *prefix;
    uint8_t *x1;  // L bytes each
    uint8_t *y1;
};

// Draws nonces until the key stream for m bytes is not all zero. Writes nothing before the first is drawn.
uint32_t draw_key_stream(const SessionContext &session, const ecc_point &Q, uint32_t m, const FirstPart &C1,
                         PointBytes &shared, uint8_t *stream);

// The key stream for m bytes from C1 and the private key.
uint32_t recover_key_stream(const SessionContext &session, const mint &d, const uint8_t *x1,
                            const uint8_t *y1, uint32_t m, PointBytes &shared, uint8_t *stream);

}  // namespace zokecc

#endif

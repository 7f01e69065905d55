// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The steps of SM2 key agreement that both families share (GB/T 32918.3, A4 to A10 and B1 to B10).
#ifndef ZOKECC_SDF_AGREEMENT_STEPS_H
#define ZOKECC_SDF_AGREEMENT_STEPS_H

#include <zokecc/sdf.h>

#include "ecc/curve.h"
#include "hash/bytes.h"

// 2^w + (x mod 2^w) of the coordinate in the session's L bytes at x, big-endian, at the end of
// the L bytes of out. The bytes before it are not written: the caller clears them. Returns 0.
ZOKECC_INTERNAL int32_t sm2_x_bar_session(void *session, const uint8_t *x, uint32_t w, uint8_t *out);

namespace zokecc {

// r = random below n and R = r G. False, with nothing written to R, if no number could be drawn.
bool make_temporary_key(const SessionContext &session, mint &r, ECCrefPublicKey &R_out);

// The two users' Z values.
struct BothZ {
    Bytes A;  // of the initiator
    Bytes B;
};

// The records that a call was given and has tested.
struct AgreementRecords {
    const ECCrefPrivateKey *d;
    const ECCrefPrivateKey *r;  // null for a responder that draws it
    const ECCrefPublicKey *peer_key;
    const ECCrefPublicKey *peer_random;
    KeyAgreementResult *result;
};

// What an initiator's calls do once Z values and own keys are there. klen in bytes.
uint32_t initiate(SessionContext &session, uint32_t klen, const BothZ &Z, const mint &d, const mint &r,
                  const ECCrefPublicKey &RA, const AgreementRecords &records);

// What a responder's calls do once Z values and the private key are there. Without r the temporary key is
// made here, once the peer's has passed, and RB written; with it only RB's bits are.
uint32_t respond(SessionContext &session, uint32_t klen, const BothZ &Z, const mint &d, ECCrefPublicKey &RB,
                 const AgreementRecords &records);

}  // namespace zokecc

#endif

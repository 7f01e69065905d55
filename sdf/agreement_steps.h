// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The steps of SM2 key agreement that both families share (GB/T 32918.3, A4 to A10 and B1 to B10).
#ifndef ZOKECC_SDF_AGREEMENT_STEPS_H
#define ZOKECC_SDF_AGREEMENT_STEPS_H

#include <zokecc/sdf.h>

#include "ecc/curve.h"
#include "hash/bytes.h"

// Writes 2^w + (x mod 2^w) for the coordinate in the session's L bytes at x, big-endian, to the end of
// the L bytes of out. The bytes before it are not written: the caller must clear them. Returns 0.
ZOKECC_INTERNAL int32_t sm2_x_bar_session(void *session, const uint8_t *x, uint32_t w, uint8_t *out);

namespace zokecc {

// r = a random number below n, R = r G. False, with nothing written to R, if no number could be drawn.
bool make_temporary_key(const SessionContext &session, mint &r, ECCrefPublicKey &R_out);

// The two users' Z values.
struct BothZ {
    Bytes A;  // of the initiator
    Bytes B;
};

// The records passed to a call, already checked.
struct AgreementRecords {
    const ECCrefPrivateKey *d;
    const ECCrefPrivateKey *r;  // null if the responder draws it
    const ECCrefPublicKey *peer_key;
    const ECCrefPublicKey *peer_random;
    KeyAgreementResult *result;
};

// The rest of an initiator's call, once Z values and own keys are known. klen is in bytes.
uint32_t initiate(SessionContext &session, uint32_t klen, const BothZ &Z, const mint &d, const mint &r,
                  const ECCrefPublicKey &RA, const AgreementRecords &records);

// The rest of a responder's call, once Z values and the private key are known. If records.r is null, the
// temporary key is drawn after the checks of the peer's points, and RB is written; otherwise only RB.bits is.
uint32_t respond(SessionContext &session, uint32_t klen, const BothZ &Z, const mint &d, ECCrefPublicKey &RB,
                 const AgreementRecords &records);

}  // namespace zokecc

#endif

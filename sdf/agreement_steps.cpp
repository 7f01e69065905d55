// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "sdf/agreement_steps.h"

#include <zokecc/hash.h>

#include "base/linkage.h"
#include "base/wipe.h"
#include "ecc/secret_rounds.h"
#include "hash/key_sink.h"
#include "hash/sm2_digests.h"
#include "mint/value.h"
#include "sdf/records.h"

using namespace zokecc;

namespace {

constexpr size_t kMaxSecretBytes = 300;  // the longest input of the key derivation

bool is_on_curve(const SessionContext &session, const ecc_point &point)
{
    return ecc_test_point(&point, &session.a, &session.b, &session.p) == 0;
}

// The default build accepts every point here.
bool is_accepted(const SessionContext &session, const ecc_point &point)
{
    return may_meet_secrets(view_of(session), point);
}

// The same for our own temporary point, which the caller passes back in. The exchange uses L bytes per
// coordinate.
ZOKECC_OWN_FRAME bool is_accepted(const SessionContext &session, const ECCrefPublicKey &own_random)
{
    ecc_point point{};
    octetstring_to_mint(own_random.x, session.byte_len, &point.x);
    octetstring_to_mint(own_random.y, session.byte_len, &point.y);
    return is_accepted(session, point);
}

// A key is only written if the derivation accepts Z values of these lengths.
int32_t written_len(const SessionContext &session, uint32_t klen, const BothZ &Z)
{
    const bool fits = 2 * session.byte_len + Z.A.size() + Z.B.size() <= kMaxSecretBytes;
    return fits ? static_cast<int32_t>(klen) : 0;
}

// Computes the shared point, the key and both confirmation values.
uint32_t finish(const SessionContext &session, const ExchangeSide &side, const ExchangePublics &publics,
                KeySink &sink, uint8_t *out02, uint8_t *out03)
{
    Wiping<PointBytes> U;
    const CurveView curve = view_of(session);
    if (!compute_shared_point(curve, session.byte_len, session.w, side, *U)) return ZOK_ERR_INTERNAL;
    if (sink.lacks_key()) return ZOK_ERR_ARGUMENT;
    sink.derive(*U, publics.ZA, publics.ZB);
    sm2_exchange_confirmations(session.hash_selector, *U, publics, out02, out03);
    return ZOK_OK;
}

}  // namespace

int32_t sm2_x_bar_session(void *session, const uint8_t *x, uint32_t w, uint8_t *out)
{
    write_x_bar(x, static_cast<const SessionContext *>(session)->byte_len, w, out);
    return 0;
}

namespace zokecc {

// Prefix 02 belongs to SB, which the initiator compares, 03 to SA, which it sends.
uint32_t initiate(SessionContext &session, uint32_t klen, const BothZ &Z, const mint &d, const mint &r,
                  const ECCrefPublicKey &RA, const AgreementRecords &records)
{
    const ECCrefPublicKey &RB = *records.peer_random;
    Wiping<ecc_point> point;
    ecc_point peer_key{};
    read_public_key(*records.peer_key, peer_key);
    read_public_key(RB, *point);
    if (!is_on_curve(session, *point)) return ZOK_ERR_INTERNAL;
    if (!is_accepted(session, peer_key) || !is_accepted(session, *point)) return ZOK_ERR_INTERNAL;
    if (kHardened && !is_accepted(session, RA)) return ZOK_ERR_INTERNAL;
    KeySink sink(records.result->key, written_len(session, klen, Z), session.byte_len, session.hash_selector);
    if (!sink.is_ready()) return ZOK_ERR_INTERNAL;
    return finish(session, {d, r, RA.x, RB.x, peer_key, *point}, {Z.A, Z.B, RA.x, RA.y, RB.x, RB.y}, sink,
                  records.result->check, records.result->send);
}

bool make_temporary_key(const SessionContext &session, mint &r, ECCrefPublicKey &R_out)
{
    ecc_point R{};
    if (!draw_private(view_of(session), r)) return false;
    if (!public_point(view_of(session), r, R)) return false;
    write_public_key(session, R, R_out);
    return true;
}

uint32_t respond(SessionContext &session, uint32_t klen, const BothZ &Z, const mint &d, ECCrefPublicKey &RB,
                 const AgreementRecords &records)
{
    const ECCrefPublicKey &RA = *records.peer_random;
    Wiping<ecc_point> point;
    ecc_point peer_key{};
    read_public_key(*records.peer_key, peer_key);
    read_public_key(RA, *point);
    if (!is_on_curve(session, *point)) return ZOK_ERR_INTERNAL;
    if (!is_accepted(session, peer_key) || !is_accepted(session, *point)) return ZOK_ERR_INTERNAL;
    KeySink sink(records.result->key, written_len(session, klen, Z), session.byte_len, session.hash_selector);
    if (!sink.is_ready()) return ZOK_ERR_INTERNAL;
    Wiping<mint> r;
    if (records.r != nullptr) {
        if (!read_temporary(view_of(session), records.r->K, records.r->bits / 8, *r)) return ZOK_ERR_ARGUMENT;
        if (kHardened && !is_accepted(session, RB)) return ZOK_ERR_INTERNAL;
        RB.bits = 8 * session.byte_len;
    } else if (!make_temporary_key(session, *r, RB)) {
        return ZOK_ERR_INTERNAL;
    }
    return finish(session, {d, *r, RB.x, RA.x, peer_key, *point}, {Z.A, Z.B, RA.x, RA.y, RB.x, RB.y}, sink,
                  records.result->send, records.result->check);
}

}  // namespace zokecc

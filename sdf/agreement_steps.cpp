// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "sdf/agreement_steps.h"

#include <zokecc/hash.h>

#include "base/linkage.h"
#include "base/wipe.h"
#include "ecc/secret_steps.h"
#include "hash/digest.h"
#include "hash/key_sink.h"
#include "hash/sm2_digests.h"
#include "hash/sm2_kdf.h"
#include "mint/value.h"
#include "sdf/records.h"

namespace {

using zokecc::Bytes;
using zokecc::kDigestBytes;
using zokecc::KeySink;
using zokecc::PointBytes;
using zokecc::Wiping;

constexpr uint32_t kXBarArea = 100;
constexpr int32_t kMaxSecretBytes = 300;  // of which the key derivation takes so many

enum class Role { initiator, responder };

// One agreement, once everything has been read and tested.
struct Agreement {
    SessionContext &session;
    Role role;
    uint32_t klen;  // bytes
    Bytes ZA;
    Bytes ZB;
    const mint &d;
    const mint &r;
    const ECCrefPublicKey &own_random;
    const ecc_point &peer_key;
    const ECCrefPublicKey &peer_random;
    ecc_point &point;  // the peer's random one, and then the shared one
    KeyAgreementResult &result;

    int32_t signed_klen() const { return static_cast<int32_t>(klen); }
};

ZOKECC_OUT_OF_LINE void x_bar_of(SessionContext &session, const ECCrefPublicKey &point, mint &out)
{
    uint8_t bytes[kXBarArea] = {};
    sm2_x_bar_session(&session, point.x, session.w, bytes);
    octetstring_to_mint(bytes, session.byte_len, &out);
}

bool is_on_curve(const SessionContext &session, const ecc_point &point)
{
    return ecc_test_point(&point, &session.a, &session.b, &session.p) == 0;
}

// For points that the default build takes as they are.
bool is_accepted(const SessionContext &session, const ecc_point &point)
{
    return zokecc::may_meet_secrets(zokecc::view_of(session), point);
}

// The same for the own temporary point, which is handed back. The exchange takes L bytes of it.
ZOKECC_OUT_OF_LINE bool is_accepted(const SessionContext &session, const ECCrefPublicKey &own_random)
{
    ecc_point point{};
    octetstring_to_mint(own_random.x, session.byte_len, &point.x);
    octetstring_to_mint(own_random.y, session.byte_len, &point.y);
    return is_accepted(session, point);
}

ZOKECC_OUT_OF_LINE uint32_t compute_shared_point(const Agreement &a, PointBytes &U)
{
    mint x_bar{};
    Wiping<mint> ht;
    x_bar_of(a.session, a.own_random, x_bar);
    if (!zokecc::sm2_exchange_scalar(zokecc::view_of(a.session), a.d, a.r, x_bar, *ht))
        return ZOK_ERR_INTERNAL;
    x_bar_of(a.session, a.peer_random, x_bar);
    const zokecc::Step step = zokecc::sm2_exchange_point(zokecc::view_of(a.session), a.session.byte_len, *ht,
                                                         a.peer_key, x_bar, a.point, U);
    return step == zokecc::Step::done ? ZOK_OK : ZOK_ERR_INTERNAL;
}

// K = KDF(xU || yU || ZA || ZB), with room for Z values that the derivation then refuses.
//
// KEPT: the status of the key derivation is not looked at. Z values too long for it, or an unknown
// hash and whole steps, leave the key buffer as it was, with the answer 0. Held by
// ZokGenerateKeyWithEcc.KeptRefusedDerivationIsNotReported.
ZOKECC_OUT_OF_LINE void derive_key(const Agreement &a, const PointBytes &U, KeySink &sink)
{
    zokecc::Transcript secret;
    secret.put(U.xy, 2 * U.len).put(a.ZA).put(a.ZB);
    const int32_t status =
        sm2_kdf_session(secret.data(), static_cast<int32_t>(secret.size()), a.signed_klen(),
                        static_cast<int32_t>(U.len), a.session.hash_selector, sink.target());
    if (status == 0) sink.deliver();
}

ZOKECC_OUT_OF_LINE void write_confirmations(const Agreement &a, const PointBytes &U)
{
    const bool initiates = a.role == Role::initiator;
    const ECCrefPublicKey &RA = initiates ? a.own_random : a.peer_random;
    const ECCrefPublicKey &RB = initiates ? a.peer_random : a.own_random;
    const uint32_t alg = a.session.hash_selector;
    Wiping<uint8_t[kDigestBytes]> H;
    const int32_t H_len = zokecc::sm2_exchange_hash(alg, U, {a.ZA, a.ZB, RA.x, RA.y, RB.x, RB.y}, *H);
    const Bytes tail = {*H, static_cast<size_t>(H_len)};
    // 02 stands in SB, which the initiator compares; 03 in SA, which it sends.
    uint8_t *const out02 = initiates ? a.result.check : a.result.send;
    uint8_t *const out03 = initiates ? a.result.send : a.result.check;
    zokecc::sm2_confirmation(alg, zokecc::kResponderPrefix, U, tail, out02);
    zokecc::sm2_confirmation(alg, zokecc::kInitiatorPrefix, U, tail, out03);
}

// True if the derivation accepts Z values of these lengths.
bool secret_fits(const SessionContext &session, Bytes ZA, Bytes ZB)
{
    return 2 * session.byte_len + ZA.size() + ZB.size() <= size_t{kMaxSecretBytes};
}

KeySink make_sink(const SessionContext &session, uint32_t klen, Bytes ZA, Bytes ZB, uint8_t *key)
{
    const int32_t written = secret_fits(session, ZA, ZB) ? static_cast<int32_t>(klen) : 0;
    return KeySink(key, written, session.byte_len, session.hash_selector);
}

uint32_t finish(const Agreement &a, KeySink &sink)
{
    Wiping<PointBytes> U;
    const uint32_t status = compute_shared_point(a, *U);
    if (status != ZOK_OK) return status;
    const bool key_is_written =
        secret_fits(a.session, a.ZA, a.ZB) &&
        zokecc::derivation_writes(a.signed_klen(), a.session.byte_len, a.session.hash_selector);
    if (key_is_written && a.result.key == nullptr) return ZOK_ERR_ARGUMENT;
    derive_key(a, *U, sink);
    write_confirmations(a, *U);
    return ZOK_OK;
}

}  // namespace

int32_t sm2_x_bar_session(void *session, const uint8_t *x, uint32_t w, uint8_t *out)
{
    zokecc::write_x_bar(x, static_cast<const SessionContext *>(session)->byte_len, w, out);
    return 0;
}

namespace zokecc {

uint32_t initiate(SessionContext &session, uint32_t klen, Bytes ZA, Bytes ZB, const mint &dA, const mint &rA,
                  const ECCrefPublicKey &RA, const ECCrefPublicKey &PB, const ECCrefPublicKey &RB,
                  KeyAgreementResult &result)
{
    Wiping<ecc_point> point;
    ecc_point peer_key{};
    zokecc::read_public_key(PB, peer_key);
    zokecc::read_public_key(RB, *point);
    if (!is_on_curve(session, *point)) return ZOK_ERR_INTERNAL;
    if (!is_accepted(session, peer_key) || !is_accepted(session, *point)) return ZOK_ERR_INTERNAL;
    if (kHardened && !is_accepted(session, RA)) return ZOK_ERR_INTERNAL;
    KeySink sink = make_sink(session, klen, ZA, ZB, result.key);
    if (!sink.is_ready()) return ZOK_ERR_INTERNAL;
    return finish({session, Role::initiator, klen, ZA, ZB, dA, rA, RA, peer_key, RB, *point, result}, sink);
}

bool make_temporary_key(const SessionContext &session, mint &r, ECCrefPublicKey &R_out)
{
    ecc_point R{};
    if (!zokecc::draw_private(zokecc::view_of(session), r)) return false;
    if (!zokecc::public_point(zokecc::view_of(session), r, R)) return false;
    zokecc::write_public_key(session, R, R_out);
    return true;
}

uint32_t respond(SessionContext &session, uint32_t klen, Bytes ZA, Bytes ZB, const mint &dB,
                 const ECCrefPublicKey &PA, const ECCrefPublicKey &RA, const ECCrefPrivateKey *rB,
                 ECCrefPublicKey &RB, KeyAgreementResult &result)
{
    Wiping<ecc_point> point;
    ecc_point peer_key{};
    read_public_key(PA, peer_key);
    read_public_key(RA, *point);
    if (!is_on_curve(session, *point)) return ZOK_ERR_INTERNAL;
    if (!is_accepted(session, peer_key) || !is_accepted(session, *point)) return ZOK_ERR_INTERNAL;
    KeySink sink = make_sink(session, klen, ZA, ZB, result.key);
    if (!sink.is_ready()) return ZOK_ERR_INTERNAL;
    Wiping<mint> r;
    if (rB != nullptr) {
        if (!read_temporary(view_of(session), rB->K, rB->bits / 8, *r)) return ZOK_ERR_ARGUMENT;
        if (kHardened && !is_accepted(session, RB)) return ZOK_ERR_INTERNAL;
        RB.bits = 8 * session.byte_len;
    } else if (!make_temporary_key(session, *r, RB)) {
        return ZOK_ERR_INTERNAL;
    }
    return finish({session, Role::responder, klen, ZA, ZB, dB, *r, RB, peer_key, RA, *point, result}, sink);
}

}  // namespace zokecc

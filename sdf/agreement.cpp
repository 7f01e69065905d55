// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SM2 key agreement on a session's curve (GB/T 32918.3).
//
// Two families: one computes both Z values from the users' identities, the other takes them as
// arguments. Each has a call for the initiator, one for a responder that brings its temporary key, and
// one for a responder whose temporary key is drawn by the call.
#include <zokecc/sdf.h>

#include "base/burn.h"
#include "base/linkage.h"
#include "base/wipe.h"
#include "ecc/secret_steps.h"
#include "hash/digest.h"
#include "hash/sm2_digests.h"
#include "mint/value.h"
#include "sdf/agreement_steps.h"
#include "sdf/records.h"

using namespace zokecc;

namespace {

struct UserZ {
    uint8_t bytes[kDigestBytes];
    Bytes view() const { return {bytes, sizeof bytes}; }
};

bool make_Z(SessionContext &session, const ECCrefPublicKey &key, Octets id, UserZ &Z)
{
    uint32_t length = 0;
    return ZOK_GenerateUserInfo(&session, &key, id.bytes, id.len, Z.bytes, &length) == ZOK_OK;
}

// out = r G
ZOKECC_OWN_FRAME bool make_public_point(const SessionContext &session, const mint &r, ECCrefPublicKey &out)
{
    ecc_point R{};
    if (!public_point(view_of(session), r, R)) return false;
    write_public_key(session, R, out);
    return true;
}

// Z of our own key, from the private scalar.
ZOKECC_OWN_FRAME bool make_own_Z(SessionContext &session, const mint &d, Octets id, UserZ &Z)
{
    ECCrefPublicKey key{};
    return make_public_point(session, d, key) && make_Z(session, key, id, Z);
}

// True if both Z values are there and their transcript fits the working area.
bool are_usable(const SessionContext &session, Octets ZA, Octets ZB)
{
    if (ZA.missing() || ZB.missing()) return false;
    return uint64_t{5} * session.byte_len + ZA.len + ZB.len <= kTranscriptBytes;
}

bool are_there(const AgreementRecords &records)
{
    return records.d != nullptr && records.peer_key != nullptr && records.peer_random != nullptr &&
           records.result != nullptr;
}

// Checks all records except the temporary key, which may be absent.
bool have_lengths_that_fit(const AgreementRecords &records)
{
    return fits_field(*records.d) && fits_field(*records.peer_key) && fits_field(*records.peer_random);
}

// The SM2 family's responders.
uint32_t respond_with_identities(void *session, uint32_t klen_bits, Octets idA, Octets idB,
                                 ECCrefPublicKey *RB, const AgreementRecords &records)
{
    const CallBurn burn;
    if (!are_there(records) || RB == nullptr) return ZOK_ERR_ARGUMENT;
    if (idA.missing() || idB.missing() || !have_lengths_that_fit(records)) return ZOK_ERR_ARGUMENT;
    SessionContext &s = *static_cast<SessionContext *>(session);
    Wiping<mint> d;
    Wiping<UserZ> ZA;
    Wiping<UserZ> ZB;
    if (!read_private_key(s, *records.d, *d)) return ZOK_ERR_ARGUMENT;
    if (!make_own_Z(s, *d, idB, *ZB) || !make_Z(s, *records.peer_key, idA, *ZA)) return ZOK_ERR_ARGUMENT;
    return respond(s, klen_bits / 8, {ZA->view(), ZB->view()}, *d, *RB, records);
}

// The plain family's responders.
uint32_t respond_with_Z(void *session, uint32_t klen_bits, Octets ZA, Octets ZB, ECCrefPublicKey *RB,
                        const AgreementRecords &records)
{
    const CallBurn burn;
    if (!are_there(records) || RB == nullptr) return ZOK_ERR_ARGUMENT;
    SessionContext &s = *static_cast<SessionContext *>(session);
    if (!are_usable(s, ZA, ZB) || !have_lengths_that_fit(records)) return ZOK_ERR_ARGUMENT;
    Wiping<mint> d;
    if (!read_private_key(s, *records.d, *d)) return ZOK_ERR_ARGUMENT;
    return respond(s, klen_bits / 8, {ZA.view(), ZB.view()}, *d, *RB, records);
}

}  // namespace

uint32_t ZOK_SM2_GenerateResponseTmpKeyWithECC(void *session, ECCrefPrivateKey *tmp_priv_out,
                                               ECCrefPublicKey *tmp_pub_out)
{
    const CallBurn burn;
    if (session == nullptr) return ZOK_ERR_SESSION;
    if (tmp_priv_out == nullptr || tmp_pub_out == nullptr) return ZOK_ERR_ARGUMENT;
    const SessionContext &s = *static_cast<const SessionContext *>(session);
    if (is_zero(s.n) || is_zero(s.p)) return ZOK_ERR_ARGUMENT;
    Wiping<mint> r;
    if (!make_temporary_key(s, *r, *tmp_pub_out)) return ZOK_ERR_INTERNAL;
    write_private_key(s, *r, *tmp_priv_out);
    return ZOK_OK;
}

uint32_t ZOK_SM2_GenerateAgreementDataWithECC(void *session, ECCrefPrivateKey *tmp_priv_out,
                                              ECCrefPublicKey *tmp_pub_out)
{
    return ZOK_SM2_GenerateResponseTmpKeyWithECC(session, tmp_priv_out, tmp_pub_out);
}

uint32_t ZOK_GenerateAgreementDataWithECC(void *session, ECCrefPrivateKey *tmp_priv_out,
                                          ECCrefPublicKey *tmp_pub_out)
{
    return ZOK_SM2_GenerateResponseTmpKeyWithECC(session, tmp_priv_out, tmp_pub_out);
}

uint32_t ZOK_GenerateResponseTmpKeyWithECC(void *session, ECCrefPrivateKey *tmp_priv_out,
                                           ECCrefPublicKey *tmp_pub_out)
{
    return ZOK_SM2_GenerateResponseTmpKeyWithECC(session, tmp_priv_out, tmp_pub_out);
}

uint32_t ZOK_SM2_GenerateKeyWithECC(void *session, uint32_t klen_bits, const uint8_t *idA, uint32_t idA_len,
                                    const uint8_t *idB, uint32_t idB_len, const ECCrefPrivateKey *dA,
                                    const ECCrefPrivateKey *rA, const ECCrefPublicKey *RA,
                                    const ECCrefPublicKey *PB, const ECCrefPublicKey *RB,
                                    KeyAgreementResult *result)
{
    const CallBurn burn;
    if (session == nullptr) return ZOK_ERR_SESSION;
    const Octets own_id = {idA, idA_len};
    const Octets peer_id = {idB, idB_len};
    const AgreementRecords records = {dA, rA, PB, RB, result};
    if (!are_there(records) || rA == nullptr || RA == nullptr) return ZOK_ERR_ARGUMENT;
    if (own_id.missing() || peer_id.missing()) return ZOK_ERR_ARGUMENT;
    if (!have_lengths_that_fit(records) || !fits_field(*rA) || !fits_field(*RA)) return ZOK_ERR_ARGUMENT;
    SessionContext &s = *static_cast<SessionContext *>(session);
    Wiping<mint> d;
    Wiping<mint> r;
    Wiping<UserZ> ZA;
    Wiping<UserZ> ZB;
    if (!read_private_key(s, *dA, *d) || !read_private_key(s, *rA, *r)) return ZOK_ERR_ARGUMENT;
    if (!make_own_Z(s, *d, own_id, *ZA) || !make_Z(s, *PB, peer_id, *ZB)) return ZOK_ERR_ARGUMENT;
    return initiate(s, klen_bits / 8, {ZA->view(), ZB->view()}, *d, *r, *RA, records);
}

uint32_t ZOK_SM2_GenerateResponseWithECC(void *session, uint32_t klen_bits, const uint8_t *idA,
                                         uint32_t idA_len, const uint8_t *idB, uint32_t idB_len,
                                         const ECCrefPrivateKey *dB, const ECCrefPublicKey *PA,
                                         const ECCrefPublicKey *RA, const ECCrefPrivateKey *rB,
                                         ECCrefPublicKey *RB, KeyAgreementResult *result)
{
    if (session == nullptr) return ZOK_ERR_SESSION;
    if (rB == nullptr || !fits_field(*rB)) return ZOK_ERR_ARGUMENT;
    return respond_with_identities(session, klen_bits, {idA, idA_len}, {idB, idB_len}, RB,
                                   {dB, rB, PA, RA, result});
}

uint32_t ZOK_SM2_GenerateAgreementDataAndKeyWithECC(void *session, uint32_t klen_bits, const uint8_t *idA,
                                                    uint32_t idA_len, const uint8_t *idB, uint32_t idB_len,
                                                    const ECCrefPrivateKey *dB, const ECCrefPublicKey *PA,
                                                    const ECCrefPublicKey *RA, ECCrefPublicKey *RB_out,
                                                    KeyAgreementResult *result)
{
    if (session == nullptr) return ZOK_ERR_SESSION;
    return respond_with_identities(session, klen_bits, {idA, idA_len}, {idB, idB_len}, RB_out,
                                   {dB, nullptr, PA, RA, result});
}

uint32_t ZOK_GenerateKeyWithECC(void *session, uint32_t klen_bits, const uint8_t *ZA, uint32_t ZA_len,
                                const uint8_t *ZB, uint32_t ZB_len, const ECCrefPrivateKey *dA,
                                const ECCrefPrivateKey *rA, const ECCrefPublicKey *PB,
                                const ECCrefPublicKey *RB, KeyAgreementResult *result)
{
    const CallBurn burn;
    if (session == nullptr) return ZOK_ERR_SESSION;
    const AgreementRecords records = {dA, rA, PB, RB, result};
    if (!are_there(records) || rA == nullptr) return ZOK_ERR_ARGUMENT;
    SessionContext &s = *static_cast<SessionContext *>(session);
    const Octets own_Z = {ZA, ZA_len};
    const Octets peer_Z = {ZB, ZB_len};
    if (!are_usable(s, own_Z, peer_Z)) return ZOK_ERR_ARGUMENT;
    if (!have_lengths_that_fit(records) || !fits_field(*rA)) return ZOK_ERR_ARGUMENT;
    Wiping<mint> d;
    Wiping<mint> r;
    if (!read_private_key(s, *dA, *d) || !read_private_key(s, *rA, *r)) return ZOK_ERR_ARGUMENT;
    ECCrefPublicKey RA{};
    if (!make_public_point(s, *r, RA)) return ZOK_ERR_INTERNAL;
    return initiate(s, klen_bits / 8, {own_Z.view(), peer_Z.view()}, *d, *r, RA, records);
}

uint32_t ZOK_GenerateResponseWithECC(void *session, uint32_t klen_bits, const uint8_t *ZA, uint32_t ZA_len,
                                     const uint8_t *ZB, uint32_t ZB_len, const ECCrefPrivateKey *dB,
                                     const ECCrefPublicKey *PA, const ECCrefPublicKey *RA,
                                     const ECCrefPrivateKey *rB, ECCrefPublicKey *RB,
                                     KeyAgreementResult *result)
{
    if (session == nullptr) return ZOK_ERR_SESSION;
    if (rB == nullptr || !fits_field(*rB)) return ZOK_ERR_ARGUMENT;
    return respond_with_Z(session, klen_bits, {ZA, ZA_len}, {ZB, ZB_len}, RB, {dB, rB, PA, RA, result});
}

uint32_t ZOK_GenerateAgreementDataAndKeyWithECC(void *session, uint32_t klen_bits, const uint8_t *ZA,
                                                uint32_t ZA_len, const uint8_t *ZB, uint32_t ZB_len,
                                                const ECCrefPrivateKey *dB, const ECCrefPublicKey *PA,
                                                const ECCrefPublicKey *RA, ECCrefPublicKey *RB_out,
                                                KeyAgreementResult *result)
{
    if (session == nullptr) return ZOK_ERR_SESSION;
    return respond_with_Z(session, klen_bits, {ZA, ZA_len}, {ZB, ZB_len}, RB_out,
                          {dB, nullptr, PA, RA, result});
}

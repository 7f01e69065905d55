// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Signing and verifying a whole message, which is hashed here; for SM2 after the signer's Z.
#include <zokecc/hash.h>
#include <zokecc/sdf.h>

#include <cstring>

#include "base/burn.h"
#include "base/linkage.h"
#include "base/wipe.h"
#include "base/work_buffer.h"
#include "ecc/secret_steps.h"
#include "hash/digest.h"
#include "sdf/records.h"

using namespace zokecc;

namespace {

// e = H(Z || message), with Z from the key and the identity.
uint32_t hash_for_sm2(SessionContext &session, const ECCrefPublicKey &pub, const Octets &message,
                      const Octets &id, uint8_t *e)
{
    uint8_t Z[kDigestBytes];
    uint32_t Z_len = 0;
    if (ZOK_GenerateUserInfo(&session, &pub, id.bytes, id.len, Z, &Z_len) != ZOK_OK) return ZOK_ERR_ARGUMENT;
    const uint64_t size = uint64_t{Z_len} + message.len + 1;
    if (size > UINT32_MAX) return ZOK_ERR_INTERNAL;
    WorkBuffer buffer(static_cast<uint32_t>(size));
    if (!buffer) return ZOK_ERR_INTERNAL;
    std::memcpy(buffer.data(), Z, Z_len);
    if (message.len > 0) std::memcpy(buffer.data() + Z_len, message.bytes, message.len);
    const hash_msg whole = {session.hash_selector, buffer.data(), 0, static_cast<uint32_t>(size - 1)};
    hash_byte(&whole, e);
    return ZOK_OK;
}

// e = H(message)
uint32_t hash_for_ecdsa(const SessionContext &session, const Octets &message, uint8_t *e)
{
    const hash_msg whole = {session.hash_selector, message.bytes, 0, message.len};
    return hash_byte(&whole, e) != 0 ? ZOK_OK : ZOK_ERR_INTERNAL;
}

// The public key for Z, from a private key whose range is checked later. For a key out of range the hardened
// build computes nothing and leaves the record unchanged.
void derive_public_key(const SessionContext &session, const ECCrefPrivateKey &priv, ECCrefPublicKey &pub)
{
    Wiping<mint> d;
    ecc_point Q{};
    if (!read_temporary(view_of(session), priv.K, priv.bits / 8, *d)) return;
    if (!public_point(view_of(session), *d, Q)) return;
    write_public_key(session, Q, pub);
}

// e as the signer computes it. Not inlined, so that its key material does not stay in the caller's frame.
ZOKECC_OWN_FRAME uint32_t hash_to_sign(SessionContext &session, bool is_sm2, const ECCrefPrivateKey &priv,
                                       const Octets &message, const Octets &id, uint8_t *e)
{
    if (!is_sm2) return hash_for_ecdsa(session, message, e);
    ECCrefPublicKey pub{};
    derive_public_key(session, priv, pub);
    return hash_for_sm2(session, pub, message, id, e);
}

}  // namespace

uint32_t ZOK_ExternalSignHash_ECC(void *session, uint32_t algorithm, const ECCrefPrivateKey *priv,
                                  const uint8_t *message, uint32_t message_len, const uint8_t *id,
                                  uint32_t id_len, ECCSignature *sig_out)
{
    const CallBurn burn;
    if (session == nullptr) return ZOK_ERR_SESSION;
    const bool is_sm2 = algorithm == ZOK_ALG_SM2_SIGN;
    if (!is_sm2 && algorithm != ZOK_ALG_ECDSA_SIGN) return ZOK_ERR_INTERNAL;
    const Octets text = {message, message_len};
    const Octets identity = {id, id_len};
    if (priv == nullptr || sig_out == nullptr || text.missing()) return ZOK_ERR_ARGUMENT;
    if (is_sm2 && identity.missing()) return ZOK_ERR_ARGUMENT;
    if (!fits_field(*priv)) return ZOK_ERR_ARGUMENT;

    SessionContext &s = *static_cast<SessionContext *>(session);
    Wiping<uint8_t[kDigestBytes]> e;
    const uint32_t status = hash_to_sign(s, is_sm2, *priv, text, identity, *e);
    if (status != ZOK_OK) return status;
    return SDF_ExternalSign_ECC(session, algorithm, priv, *e, kDigestBytes, sig_out);
}

uint32_t ZOK_ExternalVerifyHash_ECC(void *session, uint32_t algorithm, const ECCrefPublicKey *pub,
                                    const uint8_t *message, uint32_t message_len, const uint8_t *id,
                                    uint32_t id_len, const ECCSignature *sig)
{
    if (session == nullptr) return ZOK_ERR_SESSION;
    const bool is_sm2 = algorithm == ZOK_ALG_SM2_SIGN;
    if (!is_sm2 && algorithm != ZOK_ALG_ECDSA_SIGN) return ZOK_ERR_INTERNAL;
    const Octets text = {message, message_len};
    const Octets identity = {id, id_len};
    if (pub == nullptr || sig == nullptr || text.missing()) return ZOK_ERR_ARGUMENT;
    if (is_sm2 && identity.missing()) return ZOK_ERR_ARGUMENT;
    if (!fits_field(*pub)) return ZOK_ERR_ARGUMENT;

    SessionContext &s = *static_cast<SessionContext *>(session);
    uint8_t e[kDigestBytes];
    const uint32_t status = is_sm2 ? hash_for_sm2(s, *pub, text, identity, e) : hash_for_ecdsa(s, text, e);
    if (status != ZOK_OK) return status;
    return SDF_ExternalVerify_ECC(session, algorithm, pub, e, kDigestBytes, sig);
}

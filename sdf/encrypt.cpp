// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Encryption of a message as long as a coordinate into an ECCCipher (GM/T 0018), by SM2 or by
// multiplicative masking.
#include <zokecc/hash.h>
#include <zokecc/sdf.h>

#include <cstring>

#include "base/burn.h"
#include "base/wipe.h"
#include "hash/bytes.h"
#include "hash/digest.h"
#include "mint/value.h"
#include "sdf/encryption.h"
#include "sdf/records.h"

using namespace zokecc;

namespace {

using CoordinateBuffer = Wiping<uint8_t[kMaxCoordinateBytes]>;
using CheckInput = Wiping<uint8_t[3 * kMaxCoordinateBytes]>;

uint32_t encrypt_sm2(const SessionContext &session, const ecc_point &Q, const uint8_t *message,
                     ECCCipher &cipher)
{
    if (!can_encrypt(session)) return ZOK_ERR_ARGUMENT;
    const uint32_t L = session.byte_len;
    Wiping<PointBytes> shared;
    CoordinateBuffer stream;
    CheckInput work;
    const uint32_t status = draw_key_stream(session, Q, L, {nullptr, cipher.x, cipher.y}, *shared, *stream);
    if (status != ZOK_OK) return status;
    mask(message, *stream, L, cipher.C);
    sm2_check_value(session.hash_selector, *shared, message, L, *work, cipher.M);
    return ZOK_OK;
}

uint32_t decrypt_sm2(const SessionContext &session, const mint &d, const ECCCipher &cipher,
                     uint8_t *plain_out, uint32_t *plain_len_out)
{
    const uint32_t L = session.byte_len;
    Wiping<PointBytes> shared;
    CoordinateBuffer stream;
    CheckInput work;
    const uint32_t status = recover_key_stream(session, d, cipher.x, cipher.y, L, *shared, *stream);
    if (status != ZOK_OK) return status;
    mask(cipher.C, *stream, L, plain_out);
    *plain_len_out = L;
    Wiping<uint8_t[kDigestBytes]> check;
    sm2_check_value(session.hash_selector, *shared, plain_out, L, *work, *check);
    return are_equal(*check, cipher.M, kDigestBytes) ? ZOK_OK : ZOK_ERR_INTERNAL;
}

// C1 = k G and P2 = k Q with a nonzero x.
uint32_t draw_mask(const SessionContext &session, const ecc_point &Q, ecc_point &C1, ecc_point &P2)
{
    if (is_zero(session.n) || is_zero(session.p)) return ZOK_ERR_ARGUMENT;
    const CurveView curve = view_of(session);
    if (has_only_zero_multiples(curve, Q)) return ZOK_ERR_INTERNAL;  // as if every draw had failed
    Wiping<mint> k;
    for (uint32_t draw = 0; draw < kMaxFruitlessDraws; ++draw) {
        if (!draw_private(curve, *k)) return ZOK_ERR_INTERNAL;
        if (!public_point(curve, *k, C1)) continue;
        const Step step = shared_point(curve, *k, Q, P2);
        if (step == Step::failed) return ZOK_ERR_INTERNAL;
        if (step == Step::done && !is_zero_coordinate(P2.x)) return ZOK_OK;
    }
    return ZOK_ERR_INTERNAL;
}

// C = M x2 mod p; a message that is not below p is reduced.
uint32_t encrypt_by_product(const SessionContext &session, const ecc_point &Q, const uint8_t *message,
                            ECCCipher &cipher)
{
    Wiping<ecc_point> C1;
    Wiping<ecc_point> P2;
    const uint32_t status = draw_mask(session, Q, *C1, *P2);
    if (status != ZOK_OK) return status;
    Wiping<mint> M;
    read_message(view_of(session), message, session.byte_len, *M);
    mask_by_product(view_of(session), *M, P2->x, *M);
    write_field(session, C1->x, cipher.x);
    write_field(session, C1->y, cipher.y);
    write_field(session, *M, cipher.C);
    std::memset(cipher.M, 0, sizeof cipher.M);
    return ZOK_OK;
}

// KEPT: a wrong key or ciphertext goes undetected here, and leading zero bytes of the message are
// lost. Held by SdfExternalDecryptEcc.KeptProductSchemeHasNoIntegrityCheck.
uint32_t decrypt_by_product(const SessionContext &session, const mint &d, const ECCCipher &cipher,
                            uint8_t *plain_out, uint32_t *plain_len_out)
{
    const uint32_t L = session.byte_len;
    ecc_point C1{};
    Wiping<mint> M;
    mint C{};
    octetstring_to_mint(cipher.x, L, &C1.x);
    octetstring_to_mint(cipher.y, L, &C1.y);
    octetstring_to_mint(cipher.C, L, &C);
    const CurveView curve = view_of(session);
    if (!may_meet_secrets(curve, C1)) return ZOK_ERR_ARGUMENT;
    Wiping<ecc_point> P2;
    if (shared_point(curve, d, C1, *P2) != Step::done) return ZOK_ERR_INTERNAL;
    unmask_by_product(curve, C, P2->x, *M);
    *plain_len_out = write_shortest(*M, plain_out);
    return ZOK_OK;
}

}  // namespace

uint32_t SDF_ExternalEncrytp_ECC(void *session, uint32_t algorithm, const ECCrefPublicKey *pub,
                                 const uint8_t *message, uint32_t message_len, ECCCipher *cipher_out)
{
    const CallBurn burn;
    if (session == nullptr) return ZOK_ERR_SESSION;
    if (pub == nullptr || !fits_field(*pub)) return ZOK_ERR_ARGUMENT;
    const SessionContext &s = *static_cast<const SessionContext *>(session);
    ecc_point Q{};
    if (!read_recipient(*pub, Q)) return ZOK_ERR_ARGUMENT;
    if (algorithm != ZOK_ALG_SM2_ENCRYPT && algorithm != ZOK_ALG_MULTIPLICATIVE) return ZOK_ERR_INTERNAL;
    if (!may_meet_secrets(view_of(s), Q)) return ZOK_ERR_ARGUMENT;
    if (message_len != s.byte_len || cipher_out == nullptr || (message == nullptr && message_len > 0))
        return ZOK_ERR_ARGUMENT;
    return algorithm == ZOK_ALG_SM2_ENCRYPT ? encrypt_sm2(s, Q, message, *cipher_out)
                                            : encrypt_by_product(s, Q, message, *cipher_out);
}

// KEPT: the plaintext remains in the output if the check value differs. Held by
// SdfExternalDecryptEcc.KeptPlaintextStaysWrittenAfterAMismatch.
uint32_t SDF_ExternalDecrypt_ECC(void *session, uint32_t algorithm, const ECCrefPrivateKey *priv,
                                 const ECCCipher *cipher, uint8_t *plain_out, uint32_t *plain_len_out)
{
    const CallBurn burn;
    if (session == nullptr) return ZOK_ERR_SESSION;
    if (priv == nullptr || !fits_field(*priv)) return ZOK_ERR_ARGUMENT;
    const SessionContext &s = *static_cast<const SessionContext *>(session);
    Wiping<mint> d;
    if (!read_private_key(s, *priv, *d)) return ZOK_ERR_ARGUMENT;
    if (algorithm != ZOK_ALG_SM2_ENCRYPT && algorithm != ZOK_ALG_MULTIPLICATIVE) return ZOK_ERR_INTERNAL;
    if (cipher == nullptr || plain_out == nullptr || plain_len_out == nullptr) return ZOK_ERR_ARGUMENT;
    return algorithm == ZOK_ALG_SM2_ENCRYPT ? decrypt_sm2(s, *d, *cipher, plain_out, plain_len_out)
                                            : decrypt_by_product(s, *d, *cipher, plain_out, plain_len_out);
}

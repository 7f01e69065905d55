// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "sdf/encryption.h"

#include "base/wipe.h"
#include "hash/bytes.h"
#include "hash/digest.h"
#include "hash/sm2_kdf.h"
#include "mint/value.h"
#include "sdf/records.h"

namespace zokecc {

namespace {

// False if the m bytes are all zero.
bool derive_key_stream(const SessionContext &session, const PointBytes &shared, uint32_t m, uint8_t *stream)
{
    const int32_t L = static_cast<int32_t>(shared.len);
    sm2_kdf_session(shared.xy, 2 * L, static_cast<int32_t>(m), L, session.hash_selector, stream);
    return !is_all_zero(stream, m);
}

}  // namespace

bool read_recipient(const ECCrefPublicKey &pub, ecc_point &Q)
{
    read_public_key(pub, Q);
    return !is_zero(Q.x) && !is_zero(Q.y);
}

bool can_encrypt(const SessionContext &session)
{
    return !is_zero(session.n) && !is_zero(session.p) && is_known_hash(session.hash_selector);
}

uint32_t draw_key_stream(const SessionContext &session, const ecc_point &Q, uint32_t m, const FirstPart &C1,
                         PointBytes &shared, uint8_t *stream)
{
    const CurveView curve = view_of(session);
    Wiping<mint> k;
    for (uint32_t draw = 0; draw < kMaxFruitlessDraws; ++draw) {
        if (!draw_private(curve, *k)) return ZOK_ERR_INTERNAL;
        if (C1.prefix != nullptr) *C1.prefix = kFlatPrefix;
        const Step step = sm2_encryption_points(curve, session.byte_len, *k, Q, C1.x1, C1.y1, shared);
        if (step != Step::done) return step == Step::refused ? ZOK_ERR_ARGUMENT : ZOK_ERR_INTERNAL;
        if (derive_key_stream(session, shared, m, stream)) return ZOK_OK;
    }
    return ZOK_ERR_INTERNAL;
}

uint32_t recover_key_stream(const SessionContext &session, const mint &d, const uint8_t *x1,
                            const uint8_t *y1, uint32_t m, PointBytes &shared, uint8_t *stream)
{
    ecc_point C1{};
    octetstring_to_mint(x1, session.byte_len, &C1.x);
    octetstring_to_mint(y1, session.byte_len, &C1.y);
    const Step step = sm2_decryption_point(view_of(session), session.byte_len, d, C1, shared);
    if (step != Step::done) return step == Step::refused ? ZOK_ERR_ARGUMENT : ZOK_ERR_INTERNAL;
    return derive_key_stream(session, shared, m, stream) ? ZOK_OK : ZOK_ERR_ARGUMENT;
}

}  // namespace zokecc

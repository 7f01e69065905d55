// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Signing and verifying a digest computed by the caller.
#include <zokecc/hash.h>
#include <zokecc/sdf.h>

#include "base/burn.h"
#include "base/wipe.h"
#include "ecc/secret_rounds.h"
#include "mint/plain.h"
#include "mint/value.h"
#include "sdf/records.h"

using namespace zokecc;

namespace {

// Reads e as an integer. One that fills the whole record is reduced, so that sums with it fit.
void read_digest(const uint8_t *e, uint32_t e_len, const mint &n, mint &out)
{
    octetstring_to_mint(e, e_len, &out);
    if (out.len == kMintWords) mint_mod(&out, &n, &out);
}

bool in_range(const mint &value, const mint &n) { return !is_zero(value) && mint_compare(&value, &n) < 0; }

// KEPT: r = 0 starts a new round only directly after a round that ended with r + k = n. Held by
// SdfExternalSignEcc.KeptZeroRIsAccepted.
bool sign_sm2(const CurveView &curve, const mint &d, const mint &e, mint &r, mint &s)
{
    if (is_last_scalar(curve, d)) return false;
    Wiping<mint> k;
    bool was_order = false;
    for (uint32_t draw = 0; draw < kMaxFruitlessDraws; ++draw) {
        if (!draw_nonce(curve, d, e, *k)) return false;
        if (!sm2_first_half(curve, e, *k, r)) continue;
        if (!is_zero(r)) was_order = sum_is_order(curve, r, *k);
        if (was_order) continue;
        if (sm2_second_half(curve, d, *k, r, s) && !is_zero(s)) return true;
    }
    return false;
}

bool sign_ecdsa(const CurveView &curve, const mint &d, const mint &digest, mint &r, mint &s)
{
    mint e{};
    mint_mod(&digest, &curve.n, &e);
    return ecdsa_sign(curve, d, e, r, s);
}

// R = the recomputed r. r and s must be in range.
uint32_t recompute_sm2(const CurveView &curve, const mint &e, const ecc_point &Q, const mint &r,
                       const mint &s, mint &R)
{
    mint t{};
    mod_add(r, s, curve.n, t);
    if (is_zero(t)) return ZOK_ERR_VERIFY;
    return sm2_recomputed_r(curve, e, Q, s, t, R) ? ZOK_OK : ZOK_ERR_INTERNAL;
}

uint32_t recompute_ecdsa(const CurveView &curve, const mint &digest, const ecc_point &Q, const mint &r,
                         const mint &s, mint &R)
{
    mint e{};
    mint_mod(&digest, &curve.n, &e);
    return ecdsa_recomputed_r(curve, e, Q, r, s, R) ? ZOK_OK : ZOK_ERR_INTERNAL;
}

}  // namespace

uint32_t SDF_ExternalSign_ECC(void *session, uint32_t algorithm, const ECCrefPrivateKey *priv,
                              const uint8_t *e, uint32_t e_len, ECCSignature *sig_out)
{
    const CallBurn burn;
    if (session == nullptr) return ZOK_ERR_SESSION;
    if (priv == nullptr || sig_out == nullptr || (e == nullptr && e_len > 0)) return ZOK_ERR_ARGUMENT;
    if (!fits_field(*priv) || e_len > kMintBytes) return ZOK_ERR_ARGUMENT;
    const SessionContext &ctx = *static_cast<const SessionContext *>(session);
    const CurveView curve = view_of(ctx);

    Wiping<mint> d;
    if (!read_private_key(ctx, *priv, *d) || is_zero(*d)) return ZOK_ERR_SIGN;
    mint digest{};
    read_digest(e, e_len, curve.n, digest);

    mint r{};
    mint s{};
    bool signed_ok = false;
    if (algorithm == ZOK_ALG_SM2_SIGN)
        signed_ok = sign_sm2(curve, *d, digest, r, s);
    else if (algorithm == ZOK_ALG_ECDSA_SIGN)
        signed_ok = sign_ecdsa(curve, *d, digest, r, s);
    else
        return ZOK_ERR_INTERNAL;
    if (!signed_ok) return ZOK_ERR_SIGN;
    write_field(ctx, r, sig_out->r);
    write_field(ctx, s, sig_out->s);
    return ZOK_OK;
}

// KEPT: the public key is not checked to be on the curve. Held by
// SdfExternalVerifyEcc.KeptPublicKeyOffTheCurveIsNotRefused.
uint32_t SDF_ExternalVerify_ECC(void *session, uint32_t algorithm, const ECCrefPublicKey *pub,
                                const uint8_t *e, uint32_t e_len, const ECCSignature *sig)
{
    if (session == nullptr) return ZOK_ERR_SESSION;
    if (pub == nullptr || sig == nullptr || (e == nullptr && e_len > 0)) return ZOK_ERR_ARGUMENT;
    if (!fits_field(*pub) || e_len > kMintBytes) return ZOK_ERR_ARGUMENT;
    const SessionContext &ctx = *static_cast<const SessionContext *>(session);
    const CurveView curve = view_of(ctx);

    mint r{};
    mint s{};
    octetstring_to_mint(sig->r, ctx.byte_len, &r);
    octetstring_to_mint(sig->s, ctx.byte_len, &s);
    if (!in_range(r, curve.n) || !in_range(s, curve.n)) return ZOK_ERR_VERIFY;
    ecc_point Q{};
    read_public_key(*pub, Q);
    mint digest{};
    read_digest(e, e_len, curve.n, digest);

    mint R{};
    uint32_t status = ZOK_ERR_INTERNAL;
    if (algorithm == ZOK_ALG_SM2_SIGN)
        status = recompute_sm2(curve, digest, Q, r, s, R);
    else if (algorithm == ZOK_ALG_ECDSA_SIGN)
        status = recompute_ecdsa(curve, digest, Q, r, s, R);
    if (status != ZOK_OK) return status;
    return mint_compare(&R, &r) == 0 ? ZOK_OK : ZOK_ERR_VERIFY;
}

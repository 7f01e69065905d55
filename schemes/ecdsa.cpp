// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// ECDSA on the process-wide curve (FIPS 186-4, section 6.4).
#include "base/burn.h"
#include "base/wipe.h"
#include "ecc/secret_rounds.h"
#include "mint/value.h"
#include "schemes/records.h"

using namespace zokecc;

namespace {

constexpr int32_t kValid = 1;
constexpr int32_t kInvalid = 0;

// SHA-256 hashes a missing message as an empty one and an unknown hash reads nothing, so only SM3
// needs the bytes.
bool message_is_there(const sm3_msg *msg, uint32_t hash_sel)
{
    return msg != nullptr && (hash_sel != HASH_ALG_SM3 || is_readable(msg));
}

// KEPT: e is the whole digest modulo n, without truncation; an unknown hash leaves e = 0, which is
// signed and verified like any other value. Held by
// EcdsaDigitalSign.KeptUnknownSelectorSignsOverZero.
void hash_message(const sm3_msg &msg, uint32_t hash_sel, const mint &n, mint &e)
{
    const hash_msg message = {hash_sel, msg.data, 0, msg.len_low};
    hash_mint_value(&message, &n, &e);
}

}  // namespace

int32_t Ecdsa_DigitalSign(const ecc_scalar *d, const sm3_msg *msg, ecc_point_bytes *sig_out,
                          uint32_t hash_sel)
{
    const CallBurn burn;
    if (!is_readable(d) || !message_is_there(msg, hash_sel) || sig_out == nullptr) return kFailed;
    if (!curve_is_installed()) return kFailed;
    const CurveView curve = global_view();
    mint e{};
    hash_message(*msg, hash_sel, curve.n, e);
    Wiping<mint> key;
    if (!read_scalar(*d, *key) || is_zero(*key)) return kFailed;

    mint r{};
    mint s{};
    if (!ecdsa_sign(curve, *key, e, r, s)) return kFailed;
    write_pair(r, s, *sig_out);
    return 0;
}

// KEPT: r and s are not compared with the order, the key is not checked to be on the curve, and the
// sum's infinity flag is ignored. Only an s that is a multiple of n is refused, because it has no
// inverse. Held by EcdsaDigitalVeriy.KeptSAboveTheOrderIsAccepted.
int32_t Ecdsa_DigitalVeriy(const ecc_point_bytes *Q, const sm3_msg *msg, const ecc_point_bytes *sig,
                           uint32_t hash_sel)
{
    if (!is_readable(Q) || !message_is_there(msg, hash_sel) || !is_readable(sig)) return kInvalid;
    if (!curve_is_installed()) return kInvalid;
    const CurveView curve = global_view();
    mint e{};
    hash_message(*msg, hash_sel, curve.n, e);
    ecc_point key{};
    mint r{};
    mint s{};
    read_point(*Q, key);
    read_pair(*sig, r, s);
    mint s_mod_n{};
    mint_mod(&s, &curve.n, &s_mod_n);
    if (is_zero(s_mod_n)) return kInvalid;

    mint v{};
    if (!ecdsa_recomputed_r(curve, e, key, r, s, v)) return kInvalid;
    return mint_compare(&v, &r) == 0 ? kValid : kInvalid;
}

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SM2 signatures on the process-wide curve (GB/T 32918.2), with Z supplied by the caller.
#include <cstring>

#include "base/burn.h"
#include "base/wipe.h"
#include "base/work_buffer.h"
#include "hash/digest.h"
#include "mint/plain.h"
#include "mint/value.h"
#include "schemes/records.h"

using namespace zokecc;

namespace {

constexpr int32_t kInvalid = 1;
constexpr int32_t kNoMemory = 1;

// e = H(Z || message), not reduced; an unknown hash leaves e unchanged. False if out of memory.
bool hash_message(const sm3_msg &msg, const uint8_t *Z, uint32_t hash_sel, mint &e)
{
    const uint64_t size = uint64_t{msg.len_low} + kDigestBytes + 1;
    if (size > UINT32_MAX) return false;
    WorkBuffer buffer(static_cast<uint32_t>(size));
    if (!buffer) return false;
    std::memcpy(buffer.data(), Z, kDigestBytes);
    if (msg.len_low > 0) std::memcpy(buffer.data() + kDigestBytes, msg.data, msg.len_low);
    const hash_msg whole = {hash_sel, buffer.data(), 0, static_cast<uint32_t>(size - 1)};
    hash_mint_value(&whole, nullptr, &e);
    return true;
}

// KEPT: r = 0 is accepted; only r + k = n leads to another nonce. Held by
// Sm2DigitalSign.KeptZeroRIsAccepted.
bool sign(const CurveView &curve, const mint &d, const mint &e, mint &r, mint &s)
{
    Wiping<mint> k;
    for (uint32_t draw = 0; draw < kMaxFruitlessDraws; ++draw) {
        if (!draw_nonce(curve, d, e, *k)) return false;
        if (!sm2_first_half(curve, e, *k, r)) continue;
        if (sum_is_order(curve, r, *k)) continue;
        if (sm2_second_half(curve, d, *k, r, s) && !is_zero(s)) return true;
    }
    return false;
}

}  // namespace

// A key of zero is not refused here; n - 1 is, because 1 + d then has no inverse.
int32_t sm2_DigitalSign(const ecc_scalar *d, const sm3_msg *msg, const uint8_t *Z, ecc_point_bytes *sig_out,
                        uint32_t hash_sel)
{
    const CallBurn burn;
    if (!is_readable(d) || !is_readable(msg) || Z == nullptr || sig_out == nullptr) return kFailed;
    if (!curve_is_installed()) return kFailed;
    const CurveView curve = global_view();
    Wiping<mint> key;
    if (!read_scalar(*d, *key) || is_last_scalar(curve, *key)) return kFailed;
    mint e{};
    if (!hash_message(*msg, Z, hash_sel, e)) return kNoMemory;

    mint r{};
    mint s{};
    if (!sign(curve, *key, e, r, s)) return kFailed;
    write_pair(r, s, *sig_out);
    return 0;
}

// KEPT: r is compared with the field prime, not with the order, and s has no upper bound at all.
// Held by Sm2DigitalVeriy.KeptRIsBoundedByTheFieldPrime and
// Sm2DigitalVeriy.KeptSHasNoUpperBound.
int32_t sm2_DigitalVeriy(const ecc_point_bytes *Q, const sm3_msg *msg, const ecc_point_bytes *sig,
                         const uint8_t *Z, uint32_t hash_sel)
{
    if (!is_readable(Q) || !is_readable(msg) || !is_readable(sig) || Z == nullptr) return kFailed;
    if (!curve_is_installed()) return kFailed;
    const CurveView curve = global_view();
    ecc_point P{};
    mint r{};
    mint s{};
    read_point(*Q, P);
    read_pair(*sig, r, s);
    if (is_zero(r) || mint_compare(&r, &curve.p) >= 0 || is_zero(s)) return kFailed;
    mint e{};
    if (!hash_message(*msg, Z, hash_sel, e)) return kFailed;
    mint t{};
    mod_add(r, s, curve.n, t);
    if (is_zero(t)) return kInvalid;
    mint R{};
    if (!sm2_recomputed_r(curve, e, P, s, t, R)) return kFailed;
    return mint_compare(&R, &r) == 0 ? 0 : kInvalid;
}

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Key pairs on the process-wide curve.
#include "base/burn.h"
#include "base/wipe.h"
#include "mint/value.h"
#include "schemes/records.h"

using namespace zokecc;

namespace {

constexpr uint32_t kGenerate = 0;
constexpr uint32_t kDerive = 1;

// False, in the hardened build, if the product turns out wrong.
bool write_public_key(const mint &d, ecc_point_bytes &out)
{
    ecc_point Q{};
    if (!is_zero(d) && !public_point(global_view(), d, Q)) return false;
    write_point_record(Q, out);
    return true;
}

// d = the given key. False if it is missing or not below the order.
bool take_key(const ecc_scalar *key, mint &d)
{
    if (!curve_is_installed() || !is_readable(key)) return false;
    return read_scalar(*key, d);
}

// d = a random key. False also if the caller has no buffer for it.
bool make_key(const ecc_scalar *key, mint &d)
{
    if (!curve_is_installed() || key == nullptr) return false;
    if (key->length >= global_curve.byte_len && key->bytes == nullptr) return false;
    return draw_private(global_view(), d);
}

// Writes the drawn key to the caller's buffer; its length is its capacity. A buffer shorter than the curve's
// length is left unchanged and gets length 0.
void write_key(const mint &d, ecc_scalar &key)
{
    const uint32_t L = global_curve.byte_len;
    const bool has_room = key.length >= L;
    if (has_room) write_number(d, L, key.bytes);
    key.length = has_room ? L : 0;
}

}  // namespace

int32_t Ecc_GenPubKey(const ecc_scalar *d, ecc_point_bytes *Q_out)
{
    const CallBurn burn;
    Wiping<mint> scalar;
    if (Q_out == nullptr || !take_key(d, *scalar)) return kFailed;
    return write_public_key(*scalar, *Q_out) ? 0 : kFailed;
}

// KEPT: an unknown mode is not an error; the scalar stays zero and the public key is zero bytes.
// Held by EccKeyPairGen.KeptUnknownModeGivesThePublicKeyOfZero.
int32_t Ecc_KeyPair_Gen(ecc_scalar *key, ecc_point_bytes *Q_out, uint32_t mode)
{
    const CallBurn burn;
    Wiping<mint> d;
    if (Q_out == nullptr) return kFailed;
    if (mode == kGenerate && !make_key(key, *d)) return kFailed;
    if (mode == kDerive && !take_key(key, *d)) return kFailed;
    if (!write_public_key(*d, *Q_out)) return kFailed;
    if (mode == kGenerate) write_key(*d, *key);
    return 0;
}

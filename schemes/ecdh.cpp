// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// ECDH on the process-wide curve (SEC 1 version 2, section 3.3.1, without the checks).
#include "base/burn.h"
#include "base/wipe.h"
#include "schemes/records.h"

using namespace zokecc;

// KEPT, except in the hardened build: the peer's point is not validated, a key of zero is accepted, and the
// status of the multiplication is ignored: without memory the secret is zero bytes and the call succeeds.
// Held by EcdhKeyExChg.KeptPeerPointIsNotValidated and
// EcdhKeyExChg.KeptFailedMultiplicationGivesAZeroSecret.
int32_t Ecdh_KeyExChg(const ecc_scalar *d, const ecc_point_bytes *peer, uint8_t *out, uint32_t out_capacity)
{
    const CallBurn burn;
    const uint32_t L = global_curve.byte_len;
    if (out == nullptr || !is_readable(d) || !is_readable(peer)) return kFailed;
    if (!curve_is_installed() || L > out_capacity) return kFailed;
    Wiping<mint> scalar;
    ecc_point P{};
    if (!read_scalar(*d, *scalar)) return kFailed;
    read_point(*peer, P);
    if (!may_meet_secrets(global_view(), P)) return kFailed;

    Wiping<ecc_point> shared;
    const Step step = shared_point(global_view(), *scalar, P, *shared);
    if (step != Step::done && kHardened) return kFailed;
    write_number(shared->x, L, out);
    return static_cast<int32_t>(L);
}

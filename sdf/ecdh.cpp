// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// ECDH on a session's curve.
#include <zokecc/sdf.h>

#include "base/burn.h"
#include "base/wipe.h"
#include "ecc/secret_steps.h"
#include "mint/value.h"
#include "sdf/records.h"

using namespace zokecc;

// The default build checks neither the peer's point nor the product.
uint32_t ZOK_ExternalEcdhKeyAgreement(void *session, const ECCrefPrivateKey *priv, const ECCrefPublicKey *pub,
                                      uint8_t *out)
{
    const CallBurn burn;
    if (session == nullptr) return ZOK_ERR_SESSION;
    if (priv == nullptr || pub == nullptr || out == nullptr) return ZOK_ERR_ARGUMENT;
    if (!fits_field(*priv) || !fits_field(*pub)) return ZOK_ERR_ARGUMENT;
    const SessionContext &s = *static_cast<const SessionContext *>(session);
    Wiping<mint> d;
    ecc_point P{};
    if (!read_private_key(s, *priv, *d)) return ZOK_ERR_ARGUMENT;
    read_public_key(*pub, P);
    if (!may_meet_secrets(view_of(s), P)) return ZOK_ERR_ARGUMENT;

    Wiping<ecc_point> shared;
    if (shared_point(view_of(s), *d, P, *shared) != Step::done) return ZOK_ERR_INTERNAL;
    write_number(shared->x, s.byte_len, out);
    return ZOK_OK;
}

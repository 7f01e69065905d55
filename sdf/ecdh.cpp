// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Diffie-Hellman over a session's curve.
#include <zokecc/sdf.h>

#include "base/burn.h"
#include "base/wipe.h"
#include "ecc/secret_steps.h"
#include "mint/value.h"
#include "sdf/records.h"

// The default build tests neither the peer's point nor the product.
uint32_t ZOK_ExternalEcdhKeyAgreement(void *session, const ECCrefPrivateKey *priv, const ECCrefPublicKey *pub,
                                      uint8_t *out)
{
    const zokecc::CallBurn burn;
    if (session == nullptr) return ZOK_ERR_SESSION;
    if (priv == nullptr || pub == nullptr || out == nullptr) return ZOK_ERR_ARGUMENT;
    if (!zokecc::fits_field(*priv) || !zokecc::fits_field(*pub)) return ZOK_ERR_ARGUMENT;
    const SessionContext &s = *static_cast<const SessionContext *>(session);
    zokecc::Wiping<mint> d;
    ecc_point P{};
    if (!zokecc::read_private_key(s, *priv, *d)) return ZOK_ERR_ARGUMENT;
    zokecc::read_public_key(*pub, P);
    if (!zokecc::may_meet_secrets(zokecc::view_of(s), P)) return ZOK_ERR_ARGUMENT;

    zokecc::Wiping<ecc_point> shared;
    if (zokecc::shared_point(zokecc::view_of(s), *d, P, *shared) != zokecc::Step::done)
        return ZOK_ERR_INTERNAL;
    zokecc::write_number(shared->x, s.byte_len, out);
    return ZOK_OK;
}

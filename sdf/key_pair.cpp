// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Key pairs.
#include <zokecc/hash.h>
#include <zokecc/sdf.h>

#include "base/burn.h"
#include "base/wipe.h"
#include "ecc/secret_steps.h"
#include "mint/value.h"
#include "sdf/records.h"

using namespace zokecc;

// KEPT: the private key is drawn once and not checked; zero is possible, with a public key of zero
// bytes. Held by SdfGenerateKeyPairEcc.KeptPrivateKeyOfZeroIsPossible.
uint32_t SDF_GenerateKeyPair_ECC(void *session, uint32_t algorithm, uint32_t key_bits,
                                 ECCrefPublicKey *pub_out, ECCrefPrivateKey *priv_out)
{
    const CallBurn burn;
    if (session == nullptr) return ZOK_ERR_SESSION;
    if (pub_out == nullptr || priv_out == nullptr) return ZOK_ERR_ARGUMENT;
    const SessionContext &s = *static_cast<const SessionContext *>(session);
    if (key_bits != 8 * s.byte_len) return ZOK_ERR_ARGUMENT;
    if (is_zero(s.n) || is_zero(s.p)) return ZOK_ERR_ARGUMENT;
    if (algorithm != ZOK_ALG_SM2_KEY && algorithm != ZOK_ALG_ECDSA_KEY) return ZOK_ERR_INTERNAL;

    Wiping<mint> d;
    if (!draw_private(view_of(s), *d)) return ZOK_ERR_INTERNAL;
    ecc_point Q{};
    if (!public_point(view_of(s), *d, Q)) return ZOK_ERR_INTERNAL;
    write_private_key(s, *d, *priv_out);
    write_public_key(s, Q, *pub_out);
    return ZOK_OK;
}

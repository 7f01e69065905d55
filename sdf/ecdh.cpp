// Diffie-Hellman over a session's curve.
#include <zokecc/sdf.h>

#include "base/burn.h"
#include "base/wipe.h"
#include "ecc/sm2_steps.h"
#include "mint/value.h"
#include "sdf/records.h"

// Neither the peer's point nor the product is tested.
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
    zokecc::read_private_key(*priv, *d);
    zokecc::read_public_key(*pub, P);
    if (mint_compare(d.get(), &s.n) >= 0) return ZOK_ERR_ARGUMENT;

    zokecc::Wiping<ecc_point> shared;
    if (!zokecc::multiply(zokecc::view_of(s), *d, P, *shared)) return ZOK_ERR_INTERNAL;
    zokecc::write_field(s, shared->x, out);
    return ZOK_OK;
}

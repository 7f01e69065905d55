// Key pairs on the process-wide curve.
#include "base/burn.h"
#include "base/wipe.h"
#include "schemes/records.h"

namespace {

using zokecc::kFailed;
using zokecc::Wiping;

constexpr uint32_t kGenerate = 0;
constexpr uint32_t kDerive = 1;

void write_public_key(const mint &d, ecc_point_bytes &out)
{
    ecc_point Q{};
    zokecc::multiply_base(zokecc::global_view(), d, Q);
    zokecc::write_point_record(Q, out);
}

// A given key into d. False if there is none below the order.
bool take_key(const ecc_scalar *key, mint &d)
{
    if (!zokecc::curve_is_installed() || !zokecc::is_readable(key)) return false;
    zokecc::read_scalar(*key, d);
    return mint_compare(&d, &global_curve.n) < 0;
}

// A drawn key into d and the caller's buffer, whose count is its capacity. A buffer below the
// curve's length stays as it is and gets the count 0.
bool make_key(ecc_scalar *key, mint &d)
{
    const uint32_t L = global_curve.byte_len;
    if (!zokecc::curve_is_installed() || key == nullptr) return false;
    const bool has_room = key->length >= L;
    if (has_room && key->bytes == nullptr) return false;
    if (gen_random_number(&d, &global_curve.n) != 0) return false;
    if (has_room)
        mint_to_fixedlen_os(&d, L, key->length, &key->length, key->bytes);
    else
        key->length = 0;
    return true;
}

}  // namespace

int32_t Ecc_GenPubKey(const ecc_scalar *d, ecc_point_bytes *Q_out)
{
    const zokecc::CallBurn burn;
    Wiping<mint> scalar;
    if (Q_out == nullptr || !take_key(d, *scalar)) return kFailed;
    write_public_key(*scalar, *Q_out);
    return 0;
}

// KEPT: a mode that does not exist is no failure; the scalar stays zero and the public key is
// zero bytes. Held by EccKeyPairGen.KeptUnknownModeGivesThePublicKeyOfZero.
int32_t Ecc_KeyPair_Gen(ecc_scalar *key, ecc_point_bytes *Q_out, uint32_t mode)
{
    const zokecc::CallBurn burn;
    Wiping<mint> d;
    if (Q_out == nullptr) return kFailed;
    if (mode == kGenerate && !make_key(key, *d)) return kFailed;
    if (mode == kDerive && !take_key(key, *d)) return kFailed;
    write_public_key(*d, *Q_out);
    return 0;
}

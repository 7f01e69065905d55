// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "hash/key_sink.h"

namespace zokecc {

// KEPT: a failed derivation is not reported. An unknown hash gives a key of zero bytes, or leaves the key
// unchanged if klen is a multiple of the step length; Z values that are too long for the derivation leave it
// unchanged, too. Held by Sm2KeyExChg.KeptUnknownSelectorGivesAZeroKey and
// ZokGenerateKeyWithEcc.KeptRefusedDerivationIsNotReported.
void KeySink::derive(const PointBytes &U, Bytes ZA, Bytes ZB)
{
    Transcript secret;
    secret.put(U.xy, 2 * U.len).put(ZA).put(ZB);
    const int32_t status = sm2_kdf(secret.data(), static_cast<int32_t>(secret.size()), klen_,
                                   static_cast<int32_t>(step_len_), alg_, target());
    if (status == 0) deliver();
}

}  // namespace zokecc

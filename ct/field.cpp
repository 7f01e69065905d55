// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The fields for secret numbers, written out once.
#include "ct/choice.h"

namespace zokecc {

#ifdef __SIZEOF_INT128__
template class SecretField<FullLimbs<3>>;
template class SecretField<FullLimbs<4>>;
template class SecretField<FullLimbs<5>>;
#else
template class SecretField<SmallModulus>;
#endif

bool has_secret_field(const mint &p)
{
    const uint32_t words = used_words(p);
    if (words < kMinSecretWords || words > kMaxSecretWords) return false;
    return on_secret_field(p, [&](auto *field) { return field->serves(p); });
}

}  // namespace zokecc

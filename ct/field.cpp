// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The fields for secret numbers, instantiated once.
#include "ct/choice.h"
#include "ct/look_up.h"

namespace zokecc {

// NOLINTNEXTLINE(bugprone-macro-parentheses): the argument is a type
#define ZOKECC_SECRET_FIELD(Modulus) template class SecretField<Modulus>;
ZOKECC_MODULI(ZOKECC_SECRET_FIELD)
template void look_up(const uint32_t *, size_t, unsigned, uint32_t, unsigned, uint32_t *);

bool has_secret_field(const mint &p)
{
    const uint32_t words = used_words(p);
    if (words < kMinSecretWords || words > kMaxSecretWords) return false;
    return on_secret_field(p, [&](auto *field) { return field->serves(p); });
}

}  // namespace zokecc

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The fields for secret numbers that are compiled, and the choice between them.
#ifndef ZOKECC_CT_CHOICE_H
#define ZOKECC_CT_CHOICE_H

#include "ct/field.h"

namespace zokecc {

// The tests of the schemes have a copy of this folder that serves tiny curves as well.
#if defined(ZOKECC_TINY_SECRET_FIELDS) && defined(__SIZEOF_INT128__)
constexpr unsigned kMinSecretWords = 1;
#else
constexpr unsigned kMinSecretWords = 5;
#endif

// True if there is a field for secret numbers modulo p.
bool has_secret_field(const mint &p);

#ifdef __SIZEOF_INT128__
extern template class SecretField<FullLimbs<3>>;
extern template class SecretField<FullLimbs<4>>;
extern template class SecretField<FullLimbs<5>>;

// Returns work(tag) for the tag of p's field, whose type is the field's; work has to return a bool.
template <class Work>
bool on_secret_field(const mint &p, const Work &work)
{
    switch (used_words(p)) {
#ifdef ZOKECC_TINY_SECRET_FIELDS
    case 1:
    case 2: return work(static_cast<SecretField<FullLimbs<1, PortableSum>> *>(nullptr));
    case 3:
    case 4: return work(static_cast<SecretField<FullLimbs<2, PortableSum>> *>(nullptr));
#endif
    case 5:
    case 6: return work(static_cast<SecretField<FullLimbs<3>> *>(nullptr));
    case 7:
    case 8: return work(static_cast<SecretField<FullLimbs<4>> *>(nullptr));
    default: return work(static_cast<SecretField<FullLimbs<5>> *>(nullptr));
    }
}
#else
extern template class SecretField<SmallModulus>;

template <class Work>
bool on_secret_field(const mint &, const Work &work)
{
    return work(static_cast<SecretField<SmallModulus> *>(nullptr));
}
#endif

}  // namespace zokecc

#endif

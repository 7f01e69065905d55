// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The fields for secret numbers that are compiled in, and the choice between them.
#ifndef ZOKECC_CT_CHOICE_H
#define ZOKECC_CT_CHOICE_H

#include "ct/field.h"

namespace zokecc {

// The scheme tests compile this folder a second time, with fields for tiny curves, too.
#if defined(ZOKECC_TINY_SECRET_FIELDS) && defined(__SIZEOF_INT128__)
constexpr unsigned kMinSecretWords = 1;
using OneLimb = FullLimbs<1, PortableSteps<uint64_t>>;
using TwoLimbs = FullLimbs<2, PortableSteps<uint64_t>>;
#define ZOKECC_SECRET_MODULI(each) each(OneLimb) each(TwoLimbs) ZOKECC_MODULI(each)
#else
constexpr unsigned kMinSecretWords = 5;
#define ZOKECC_SECRET_MODULI ZOKECC_MODULI
#endif

// NOLINTNEXTLINE(bugprone-macro-parentheses): the argument is a type
#define ZOKECC_SECRET_FIELD(Modulus) extern template class SecretField<Modulus>;
ZOKECC_MODULI(ZOKECC_SECRET_FIELD)
#undef ZOKECC_SECRET_FIELD

// True if there is a field for secret numbers modulo p.
bool has_secret_field(const mint &p);

// Returns work(tag), where the tag is a null pointer to the type of p's field; work must return a bool. p
// must have a field: if one modulus serves every width, p is not checked.
template <class Work>
bool on_secret_field(const mint &p, const Work &work)
{
    const uint32_t words = used_words(p);
#define ZOKECC_TRY(Modulus) \
    if (!kWideLimbs || Modulus::fits(p.words, words)) \
        return work(static_cast<SecretField<Modulus> *>(nullptr));
    ZOKECC_SECRET_MODULI(ZOKECC_TRY)
#undef ZOKECC_TRY
    return false;
}

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The choice of the field that a calculation with points runs over.
//
// An operation is a record of its arguments with a member template
//
//     template <class Field> bool over(const Field &f) const;
//
// which returns false, with nothing promised of its output, if the field does not take one of its
// numbers. ReferenceField takes every number.
#ifndef ZOKECC_ECC_FIELDS_H
#define ZOKECC_ECC_FIELDS_H

#include "base/config.h"
#include "ecc/fast_field.h"
#include "ecc/reference_field.h"

namespace zokecc {

// NOLINTNEXTLINE(bugprone-macro-parentheses): the argument is a type
#define ZOKECC_FAST_FIELD(Modulus) extern template class FastField<Modulus>;
ZOKECC_SHARED_MODULI(ZOKECC_FAST_FIELD)
#undef ZOKECC_FAST_FIELD

// Runs the operation over the fast field that serves p. False if no field serves p or the field refuses
// one of the numbers; the caller then recomputes everything. A frame of its own, so that the reference
// path does not go deeper for the fast fields' constants.
template <class Operation>
ZOKECC_OWN_FRAME bool run_over_fast_field(const mint &p, const Operation &operation)
{
    return run_over_first<FastField>(p, operation);
}

// Runs the operation over the fastest field that takes its numbers. Every field gives the same bits.
template <class Operation>
void run_over_best_field(const mint &p, const Operation &operation)
{
    if constexpr (!kSmall) {
        if (run_over_fast_field(p, operation)) return;
    }
    operation.over(ReferenceField{p});
}

}  // namespace zokecc

#endif

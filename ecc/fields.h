// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Chooses the field for a computation with points.
//
// An operation is a structure of its arguments with a member template
//
//     template <class Field> bool over(const Field &f) const;
//
// which returns false, leaving its output undefined, if the field refuses one of the numbers.
// ReferenceField accepts every number.
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
// one of the numbers; the caller then recomputes everything. It has its own frame, so that the fast field's
// constants add nothing to the reference path's stack.
template <class Operation>
ZOKECC_OWN_FRAME bool run_over_fast_field(const mint &p, const Operation &operation)
{
    return run_over_first<FastField>(p, operation);
}

// Runs the operation over the fastest field that accepts its numbers. All fields give the same bits.
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

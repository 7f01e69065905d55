// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The point formulas over the library's fields: instantiated once for the reference, in points.cpp, and once
// for the fast field of 32-bit machines, in fast_points.cpp. On wide limbs each algorithm has its own copies.
#ifndef ZOKECC_ECC_POINTS_H
#define ZOKECC_ECC_POINTS_H

#include "ecc/fields.h"
#include "ecc/jacobian_formulas.h"

namespace zokecc {

// NOLINTBEGIN(bugprone-macro-parentheses): the arguments are a keyword and a type
#define ZOKECC_POINT_FORMULAS(linkage, Field) \
    linkage template void jacobian_to_affine(const Field &, const Field::Jacobian &, Field::Affine &); \
    linkage template void affine_add(const Field &, const Field::Affine &, const Field::Affine &, \
                                     const Field::Element &, Field::Affine &); \
    linkage template void jacobian_double(const Field &, const Field::Jacobian &, const Field::Element &, \
                                          Field::Jacobian &); \
    linkage template void jacobian_add_affine(const Field &, const Field::Jacobian &, const Field::Affine &, \
                                              const Field::Element &, Field::Jacobian &); \
    linkage template void jacobian_add(const Field &, const Field::Jacobian &, const Field::Jacobian &, \
                                       const Field::Element &, Field::Jacobian &);
// NOLINTEND(bugprone-macro-parentheses)

ZOKECC_POINT_FORMULAS(extern, ReferenceField)
#define ZOKECC_FAST_FORMULAS(Modulus) ZOKECC_POINT_FORMULAS(extern, FastField<Modulus>)
ZOKECC_SHARED_MODULI(ZOKECC_FAST_FORMULAS)
#undef ZOKECC_FAST_FORMULAS

}  // namespace zokecc

#endif

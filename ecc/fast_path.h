// The choice between the fast fields and the definition.
#ifndef ZOKECC_ECC_FAST_PATH_H
#define ZOKECC_ECC_FAST_PATH_H

#include "ecc/comb.h"
#include "ecc/exact_field.h"
#include "ecc/fast_field.h"
#include "ecc/point_formulas.h"
#include "ecc/table_builder.h"
#include "ecc/wnaf.h"

namespace zokecc {

// The bodies that are written out once, in exact_path.cpp and fast_path.cpp.
// NOLINTBEGIN(bugprone-macro-parentheses): the arguments are a keyword and a type
#define ZOKECC_POINT_ARITHMETIC(linkage, Field) \
    linkage template void jacobian_to_affine(const Field &, const Field::Jacobian &, Field::Affine &); \
    linkage template void affine_add(const Field &, const Field::Affine &, const Field::Affine &, \
                                     const Field::Element &, Field::Affine &); \
    linkage template void jacobian_double(const Field &, const Field::Jacobian &, const Field::Element &, \
                                          Field::Jacobian &); \
    linkage template void jacobian_add_affine(const Field &, const Field::Jacobian &, const Field::Affine &, \
                                              const Field::Element &, Field::Jacobian &); \
    linkage template void jacobian_add(const Field &, const Field::Jacobian &, const Field::Jacobian &, \
                                       const Field::Element &, Field::Jacobian &); \
    linkage template bool comb_multiple(const Field &, const mint &, uint32_t, const ecc_point *, \
                                        const mint &, ecc_point &); \
    linkage template bool window_multiple(const Field &, const WindowDigits &, const ecc_point &, \
                                          const mint &, ecc_point &); \
    linkage template class TableBuilder<Field>;
// NOLINTEND(bugprone-macro-parentheses)

ZOKECC_POINT_ARITHMETIC(extern, ExactField)
#ifndef __SIZEOF_INT128__
using SmallField = FastField<SmallModulus>;
extern template class FastField<SmallModulus>;
ZOKECC_POINT_ARITHMETIC(extern, SmallField)
#endif

// Runs work(field) over the fast field that serves p. False if there is none, or if work says that
// it met a number which such a field does not take; what it has written by then is written again. A
// body of its own, so that the definition does not go deeper for the fast fields' constants.
template <class Work>
ZOKECC_OUT_OF_LINE bool on_fast_field(const mint &p, const Work &work)
{
#ifdef __SIZEOF_INT128__
    if (FastField<FullLimbs<4>>::serves(p)) return work(FastField<FullLimbs<4>>(p));
    if (FastField<FullLimbs<3>>::serves(p)) return work(FastField<FullLimbs<3>>(p));
    if (FastField<FullLimbs<5>>::serves(p)) return work(FastField<FullLimbs<5>>(p));
#else
    if (SmallField::serves(p)) return work(SmallField(p));
#endif
    return false;
}

// Runs work over the fastest field that can: the results are the same, bit for bit.
template <class Work>
void on_best_field(const mint &p, const Work &work)
{
#ifndef ZOKECC_SMALL
    if (on_fast_field(p, work)) return;
#endif
    work(ExactField{p});
}

}  // namespace zokecc

#endif

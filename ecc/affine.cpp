// Affine points: addition, doubling and the curve equation.
#include "ecc/exact_field.h"
#include "ecc/point_formulas.h"

int32_t ecc_point_add(const ecc_point *P, const ecc_point *Q, const mint *a, const mint *, const mint *p,
                      ecc_point *out)
{
    zokecc::affine_add(zokecc::ExactField{*p}, *P, *Q, *a, *out);
    return 0;
}

int32_t ecc_point_double(const ecc_point *P, const mint *a, const mint *b, const mint *p, ecc_point *out)
{
    return ecc_point_add(P, P, a, b, p, out);
}

// The infinity flag is not looked at, and coordinates of p and above are taken as they are.
int32_t ecc_test_point(const ecc_point *P, const mint *a, const mint *b, const mint *p)
{
    const zokecc::ExactField f{*p};
    mint left{};
    mint right{};
    mint t{};
    f.mul(P->y, P->y, left);  // y^2
    f.mul(P->x, P->x, t);
    f.mul(t, P->x, right);  // x^3
    f.mul(*a, P->x, t);
    f.add(right, t, right);   // x^3 + a x
    f.add(right, *b, right);  // x^3 + a x + b
    return mint_compare(&left, &right) != 0 ? 1 : 0;
}

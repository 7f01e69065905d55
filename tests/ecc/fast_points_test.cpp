// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Points over the fast fields, compared with the same formulas over the reference.
#include "ecc/jacobian_formulas.h"
#include "tests/ecc/field_pairs.h"
#include "tests/support/emulated.h"
#include "tests/support/points.h"

namespace zokecc_test::fast_points_test {
namespace {

using zokecc::ReferenceField;

template <class Field>
class FastPoints : public testing::Test {
protected:
    using Element = typename Field::Element;
    using Affine = typename Field::Affine;
    using Jacobian = typename Field::Jacobian;

    static Element loaded(const Field &f, const mint &value) {
        Element out;
        EXPECT_TRUE(f.load(value, out));
        return out;
    }
    static Affine loaded(const Field &f, const ecc_point &P) {
        Affine out{};
        EXPECT_TRUE(f.load(P, out));
        return out;
    }
    static Jacobian loaded(const Field &f, const ecc_jac_point &P) {
        return {loaded(f, P.X), loaded(f, P.Y), loaded(f, P.Z)};
    }
    static ecc_point stored(const Field &f, const Affine &P) {
        ecc_point out{};
        f.store(P, out);
        return out;
    }
    static ecc_jac_point stored(const Field &f, const Jacobian &P) {
        ecc_jac_point out{};
        f.store(P.X, out.X);
        f.store(P.Y, out.Y);
        f.store(P.Z, out.Z);
        return out;
    }

    // z is often 0 or 1.
    ecc_jac_point jacobian_point(const mint &p) {
        const uint32_t z = draw.below(6);
        return jacobian(loadable(draw, p), loadable(draw, p), z < 2 ? small(z) : loadable(draw, p));
    }

    static void check_affine(const mint &p, const mint &a, const ecc_point &P, const ecc_point &Q);
    static void check_jacobian(const mint &p, const mint &a, const ecc_jac_point &P, const ecc_jac_point &Q);
    static void check_mixed(const mint &p, const mint &a, const ecc_jac_point &P, const ecc_point &Q);

    HardWords draw{8101};
};
TYPED_TEST_SUITE(FastPoints, AllFields);

template <class Field>
void FastPoints<Field>::check_affine(const mint &p, const mint &a, const ecc_point &P, const ecc_point &Q) {
    const Field f(p);
    ecc_point want{};
    zokecc::affine_add(ReferenceField{p}, P, Q, a, want);
    Affine x = loaded(f, P);
    const Affine y = loaded(f, Q);
    zokecc::affine_add(f, x, y, loaded(f, a), x);
    EXPECT_TRUE(same_point(want, stored(f, x)));
}

template <class Field>
void FastPoints<Field>::check_jacobian(const mint &p, const mint &a, const ecc_jac_point &P,
                                       const ecc_jac_point &Q) {
    const Field f(p);
    const Element slope = loaded(f, a);
    ecc_jac_point want{};
    Jacobian x = loaded(f, P);
    const Jacobian y = loaded(f, Q);
    Jacobian out{};
    zokecc::jacobian_add(ReferenceField{p}, P, Q, a, want);
    zokecc::jacobian_add(f, x, y, slope, out);
    EXPECT_TRUE(same_point(want, stored(f, out))) << "sum";
    zokecc::jacobian_double(ReferenceField{p}, P, a, want);
    zokecc::jacobian_double(f, x, slope, out);
    EXPECT_TRUE(same_point(want, stored(f, out))) << "double";
    zokecc::jacobian_double(f, x, slope, x);
    EXPECT_TRUE(same_point(want, stored(f, x))) << "double in place";
    want = P;
    x = loaded(f, P);
    zokecc::jacobian_negate(ReferenceField{p}, want);
    zokecc::jacobian_negate(f, x);
    EXPECT_TRUE(same_point(want, stored(f, x))) << "negative";
    ecc_point want_affine{};
    Affine flat{};
    zokecc::jacobian_to_affine(ReferenceField{p}, P, want_affine);
    zokecc::jacobian_to_affine(f, loaded(f, P), flat);
    EXPECT_TRUE(same_point(want_affine, stored(f, flat))) << "affine";
}

template <class Field>
void FastPoints<Field>::check_mixed(const mint &p, const mint &a, const ecc_jac_point &P,
                                    const ecc_point &Q) {
    const Field f(p);
    ecc_jac_point want{};
    zokecc::jacobian_add_affine(ReferenceField{p}, P, Q, a, want);
    Jacobian x = loaded(f, P);
    zokecc::jacobian_add_affine(f, x, loaded(f, Q), loaded(f, a), x);
    EXPECT_TRUE(same_point(want, stored(f, x)));
}

TYPED_TEST(FastPoints, FormulasOnHardCoordinates) {
    for (const mint &p : served_moduli<TypeParam>(this->draw, rounds(12)))
        for (int round = 0; round < rounds(12); ++round) {
            const mint a = loadable(this->draw, p);
            const ecc_point P = loadable_point(this->draw, p);
            ecc_point Q = loadable_point(this->draw, p);
            ecc_jac_point J = this->jacobian_point(p);
            if (this->draw.below(4) == 0) Q = P;
            if (this->draw.below(4) == 0) Q.x = P.x;
            this->check_affine(p, a, P, Q);
            this->check_affine(p, a, P, P);
            this->check_mixed(p, a, J, Q);
            this->check_jacobian(p, a, J, this->jacobian_point(p));
            if (this->draw.below(2) == 0) J = jacobian(Q.x, Q.y, small(1));
            this->check_mixed(p, a, J, Q);
            this->check_jacobian(p, a, J, jacobian(P.x, P.y, small(1)));
            ASSERT_FALSE(this->HasFailure()) << mint_to_hex(p) << ", " << this->draw.where();
        }
}

}  // namespace
}  // namespace zokecc_test::fast_points_test

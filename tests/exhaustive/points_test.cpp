// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Every point with every point of tiny curves, in both forms, compared with plain integers.
#include <gtest/gtest.h>

#include "tests/exhaustive/curves.h"

namespace zokecc_test::points_test {

namespace {

std::string text(const TinyPoint &P) { return testing::PrintToString(P); }

class TinyPoints : public testing::TestWithParam<TinyParameters> {
protected:
    // Calls check(P, Q) for all chosen pairs, and for each chosen P with -P.
    template <class Check>
    void for_each_pair(Check check) {
        for (const TinyPoint &P : points) {
            for (const TinyPoint &Q : points)
                if (!HasFailure()) check(P, Q);
            if (!HasFailure()) check(P, curve.negate(P));
        }
    }

    // The affine point of a Jacobian result, by the library's own conversion, which
    // EveryJacobianFormConverts tests.
    TinyPoint converted(const ecc_jac_point &P) {
        ecc_point out{};
        ecc_jacobin_affine(&out, &c.p, &P);
        return tiny_point(out);
    }

    const TinyCurve curve = tiny_curve(GetParam());
    const TinyRecords c{curve};
    const std::vector<TinyPoint> points = some_points(curve, GetParam().step);
};

TEST_P(TinyPoints, CurveHasTheStatedNumberOfPoints) { EXPECT_EQ(GetParam().order, curve.order()); }

TEST_P(TinyPoints, PointsOnTheCurveAndTheirNeighboursAreToldApart) {
    for (const TinyPoint &P : points) {
        if (P.infinite) continue;
        ecc_point record = tiny_affine(P);
        EXPECT_EQ(0, ecc_test_point(&record, &c.a, &c.b, &c.p)) << text(P);
        uint32_t other_y = (P.y + 1) % curve.p;
        bool also_on = (other_y + P.y) % curve.p == 0;
        record = tiny_affine({false, P.x, other_y});
        EXPECT_EQ(also_on ? 0 : 1, ecc_test_point(&record, &c.a, &c.b, &c.p)) << text(P);
    }
}

TEST_P(TinyPoints, EveryAffineSum) {
    for_each_pair([this](const TinyPoint &P, const TinyPoint &Q) {
        ecc_point left = tiny_affine(P), right = tiny_affine(Q), out{};
        EXPECT_EQ(0, ecc_point_add(&left, &right, &c.a, &c.b, &c.p, &out));
        EXPECT_EQ(curve.library_affine_add(P, Q), tiny_point(out)) << text(P) << " + " << text(Q);
    });
}

TEST_P(TinyPoints, EveryAffineDoubling) {
    for (const TinyPoint &P : curve.points()) {
        ecc_point record = tiny_affine(P);
        EXPECT_EQ(0, ecc_point_double(&record, &c.a, &c.b, &c.p, &record));
        EXPECT_EQ(curve.library_affine_add(P, P), tiny_point(record)) << text(P);
    }
}

TEST_P(TinyPoints, EveryJacobianFormConverts) {
    for (const TinyPoint &P : points) {
        for (uint32_t z = 1; z < curve.p; z += GetParam().step) {
            ecc_jac_point record = tiny_jacobian(curve, P, z);
            EXPECT_EQ(P, converted(record)) << text(P) << " z " << z;
            EXPECT_EQ(P.infinite || P.y == 0 ? 1 : 0, ecc_invert_point(&c.p, &record));
            EXPECT_EQ(curve.negate(P), converted(record)) << text(P) << " z " << z;
        }
    }
}

TEST_P(TinyPoints, EveryJacobianDoubling) {
    for (size_t i = 0; i < curve.points().size(); ++i)
        for (uint32_t z : some_z(curve, i)) {
            const TinyPoint &P = curve.points()[i];
            ecc_jac_point record = tiny_jacobian(curve, P, z);
            EXPECT_EQ(1, ecc_jac_point_double(&record, &c.a, &c.b, &c.p, &record));
            EXPECT_EQ(curve.add(P, P), converted(record)) << text(P) << " z " << z;
        }
}

TEST_P(TinyPoints, EveryMixedSum) {
    size_t count = 0;
    for_each_pair([&](const TinyPoint &P, const TinyPoint &Q) {
        for (uint32_t z : some_z(curve, ++count)) {
            ecc_jac_point left = tiny_jacobian(curve, P, z), out{};
            ecc_point right = tiny_affine(Q);
            ecc_jac_point_add(&left, &right, &c.a, &c.b, &c.p, &out);
            EXPECT_EQ(curve.add(P, Q), converted(out)) << text(P) << " z " << z << " + " << text(Q);
        }
    });
}

// KEPT: equal points in two records give infinity.
TEST_P(TinyPoints, EveryJacobianSum) {
    size_t count = 0;
    for_each_pair([&](const TinyPoint &P, const TinyPoint &Q) {
        ++count;
        for (uint32_t z1 : some_z(curve, count))
            for (uint32_t z2 : some_z(curve, count + 1)) {
                ecc_jac_point left = tiny_jacobian(curve, P, z1), right = tiny_jacobian(curve, Q, z2), out{};
                EXPECT_EQ(1, ecc_jac_point_add_1(&left, &right, &c.a, &c.b, &c.p, &out));
                EXPECT_EQ(curve.library_jacobian_add(P, Q), converted(out))
                    << text(P) << " z " << z1 << " + " << text(Q) << " z " << z2;
            }
    });
}

TEST_P(TinyPoints, EveryJacobianRecordTwiceDoubles) {
    for (size_t i = 0; i < points.size(); ++i)
        for (uint32_t z : some_z(curve, i)) {
            ecc_jac_point record = tiny_jacobian(curve, points[i], z), out{};
            EXPECT_EQ(1, ecc_jac_point_add_1(&record, &record, &c.a, &c.b, &c.p, &out));
            EXPECT_EQ(curve.add(points[i], points[i]), converted(out)) << text(points[i]) << " z " << z;
        }
}

INSTANTIATE_TEST_SUITE_P(Curves, TinyPoints, testing::ValuesIn(kTinyCurves),
                         [](const auto &tested) { return tiny_curve_name(tested.param); });

}  // namespace

}  // namespace zokecc_test::points_test

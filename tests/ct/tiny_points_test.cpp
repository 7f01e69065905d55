// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// All additions and multiplications with secret scalars on tiny curves, compared with plain integers.
#include <gtest/gtest.h>

#include <bit>

#include "ct/multiples.h"
#include "tests/exhaustive/curves.h"

#ifdef __SIZEOF_INT128__

namespace zokecc_test::ct_tiny_points_test {

namespace {

using zokecc::Mask;
using Field = zokecc::SecretField<zokecc::FullLimbs<1, zokecc::PortableSteps<uint64_t>>>;
using Curve = zokecc::SecretCurve<Field>;
using Affine = Curve::Affine;
using Point = Curve::Point;

// A point, as found by the test.
enum class Kind { finite, infinite, undefined };

class TinySecretPoints : public testing::TestWithParam<TinyParameters> {
protected:
    Field::Element element(uint32_t value) const {
        Field::Element out;
        s.f.set_small(value, out);
        return out;
    }
    uint32_t value(const Field::Element &in) const { return static_cast<uint32_t>(in.limb[0]); }

    Affine affine(const TinyPoint &P) const {
        Affine out;
        out.x = element(P.x);
        out.y = element(P.y);
        return out;
    }
    // Different coordinates for every factor.
    Point projective(const TinyPoint &P, uint32_t factor) const {
        Point out;
        if (P.infinite)
            s.set_infinity(out);
        else
            s.set(affine(P), out);
        for (auto *coordinate : {&out.X, &out.Y, &out.Z}) s.f.mul(*coordinate, element(factor), *coordinate);
        return out;
    }

    Kind kind(const Point &P) const {
        if (value(P.Z) != 0) return Kind::finite;
        return value(P.Y) != 0 && value(P.X) == 0 ? Kind::infinite : Kind::undefined;
    }
    TinyPoint point(const Point &P) const {
        Affine out;
        const Mask found = s.to_affine(P, out);
        EXPECT_EQ(found == 0, value(P.Z) == 0);
        if (found == 0) return TinyPoint{};
        EXPECT_EQ(~Mask{0}, s.is_on_curve(out));
        return TinyPoint{false, value(out.x), value(out.y)};
    }

    // The point, or for one that is not defined that there is reason to.
    void expect(const TinyPoint &wanted, const Point &out, bool may_be_undefined, const std::string &what) {
        if (kind(out) == Kind::undefined) {
            EXPECT_TRUE(may_be_undefined) << what;
            EXPECT_EQ(0u, value(out.X)) << what;
            ++undefined;
            return;
        }
        EXPECT_EQ(wanted, point(out)) << what;
    }

    // The sum is not defined for points whose difference has order 2.
    bool differ_by_order_two(const TinyPoint &P, const TinyPoint &Q) const {
        const TinyPoint difference = curve.add(P, curve.negate(Q));
        return !difference.infinite && difference.y == 0;
    }

    const TinyCurve curve = tiny_curve(GetParam());
    const TinyRecords records{curve};
    const Curve s{records.p, records.a, records.b};
    const std::vector<TinyPoint> points = some_points(curve, GetParam().step);
    const bool is_odd_order = curve.order() % 2 == 1;
    int undefined = 0;
};

TEST_P(TinySecretPoints, EverySum) {
    for (const TinyPoint &P : points)
        for (const TinyPoint &Q : points) {
            const std::string what = testing::PrintToString(P) + " + " + testing::PrintToString(Q);
            const bool exception = differ_by_order_two(P, Q);
            if (Q.infinite) continue;
            const Point left = projective(P, 2);
            Point out;
            s.add(left, affine(Q), out);
            EXPECT_EQ(exception, kind(out) == Kind::undefined) << what;
            expect(curve.add(P, Q), out, exception, what);
            out = left;
            s.add(out, affine(Q), out);
            expect(curve.add(P, Q), out, exception, what + ", over the first");
        }
    if (GetParam().step == 1 || is_odd_order) {
        EXPECT_EQ(!is_odd_order, undefined > 0);
    }
}

// Sums without the complete formulas: empty, of one point, and with masked-out points.
TEST_P(TinySecretPoints, EveryRunningSum) {
    const Field::Element factor = element(3);
    for (const TinyPoint &P : points)
        for (const TinyPoint &Q : points) {
            if (P.infinite || Q.infinite) continue;
            const std::string what = testing::PrintToString(P) + " + " + testing::PrintToString(Q);
            Point out;
            zokecc::RunningSum<Field> sum(s, factor);
            sum.add(0, affine(Q));
            sum.store(out);
            EXPECT_EQ(Kind::infinite, kind(out)) << what;
            sum.double_times(2);
            sum.add(~Mask{0}, affine(P));
            sum.add(0, affine(Q));
            sum.store(out);
            EXPECT_EQ(P, point(out)) << what;
            sum.add(~Mask{0}, affine(Q));
            sum.store(out);
            EXPECT_EQ(P == Q, kind(out) == Kind::undefined) << what;
            if (P == Q) continue;
            EXPECT_EQ(curve.add(P, Q), point(out)) << what;
            sum.double_times(3);
            sum.store(out);
            TinyPoint wanted = curve.add(P, Q);
            for (int i = 0; i < 3; ++i) wanted = curve.add(wanted, wanted);
            EXPECT_EQ(wanted, point(out)) << what;
        }
}

TEST_P(TinySecretPoints, EveryDoubling) {
    for (const TinyPoint &P : points) {
        TinyPoint wanted = P;
        for (unsigned times = 1; times <= 6; ++times) {
            wanted = curve.add(wanted, wanted);
            Point out = projective(P, 5);
            s.double_times(times, out);
            expect(wanted, out, false, testing::PrintToString(P) + ", doubled");
        }
    }
    Point nothing;
    for (auto *coordinate : {&nothing.X, &nothing.Y, &nothing.Z}) s.f.set_zero(*coordinate);
    s.double_times(3, nothing);
    EXPECT_EQ(Kind::undefined, kind(nothing));
}

// With the complete formulas for any point, and without them for points of sufficiently large order.
TEST_P(TinySecretPoints, EveryMultiple) {
    constexpr unsigned kBits = 13;
    constexpr uint32_t kLeastOrder = 32, kWindowOrder = 8;
    const uint32_t step = GetParam().step;
    for (const TinyPoint &P : points) {
        if (P.infinite) continue;
        const uint32_t order = curve.order_of(P);
        const unsigned bits = static_cast<unsigned>(std::bit_width(order));
        TinyPoint wanted{};
        for (uint32_t k = 0; k <= curve.order() + 40; ++k, wanted = curve.add(wanted, P)) {
            if (k % step != 0 && k >= 40) continue;
            const std::string what = std::to_string(k) + " " + testing::PrintToString(P);
            Point out;
            const bool done = zokecc::any_multiple(s, &k, 1, kBits, affine(P), true, element(3), out);
            ASSERT_EQ(order > kWindowOrder, done) << what;
            if (!done) break;
            expect(wanted, out, !is_odd_order, what);
            if (order < kLeastOrder || k >> bits != 0) continue;
            ASSERT_TRUE(zokecc::any_multiple(s, &k, 1, bits, affine(P), false, element(3), out));
            expect(wanted, out, order % 2 == 0, what + ", without small orders");
        }
        if (HasFailure()) return;
    }
}

TEST_P(TinySecretPoints, MembershipOfEveryPair) {
    const uint32_t step = curve.p > 200 ? 17 : 1;
    for (uint32_t x = 0; x < curve.p; x += step)
        for (uint32_t y = 0; y < curve.p; ++y) {
            const uint64_t right =
                (uint64_t{x} * x % curve.p * x + uint64_t{curve.a} * x + curve.b) % curve.p;
            EXPECT_EQ(uint64_t{y} * y % curve.p == right, s.is_on_curve(affine({false, x, y})) != 0);
        }
}

INSTANTIATE_TEST_SUITE_P(Tiny, TinySecretPoints, testing::ValuesIn(kTinyCurves),
                         [](const auto &tested) { return tiny_curve_name(tested.param); });

}  // namespace

}  // namespace zokecc_test::ct_tiny_points_test

#endif

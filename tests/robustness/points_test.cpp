// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Bad inputs of the point calls: infinity, (0, 0), opposite and equal points, coordinates of p and
// above, scalars of 0 and of all ones, byte strings of every wrong length.
#include <zokecc/ecc.h>

#include "tests/robustness/bad_inputs.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/legacy_records.h"
#include "tests/support/model_curve.h"
#include "tests/support/small_group.h"

namespace zokecc_test::points_test {

using robustness::bad;

namespace {

const mint kA = small(2), kB = small(25), kP = small(kSmallP);
const ModelCurve kModel(kA, kB, kP);

struct Odd {
    const char *what;
    ecc_point point;
};

std::vector<Odd> odd_points() {
    return {{"infinity", affine_infinity()},
            {"(0, 0)", affine(small(0), small(0))},
            {"(0, 0) in one word each", affine(zero_in_one_word(), zero_in_one_word())},
            {"a point off the curve", affine(small(2), small(366))},
            {"x = p", affine(small(kSmallP), small(5))},
            {"x = p + 2, y = p + 365", affine(small(kSmallP + 2), small(kSmallP + 365))},
            {"coordinates of eight words of ones", affine(mint_from_hex(std::string(64, 'f')), small(365))},
            {"the base point", affine(small(2), small(365))},
            {"its opposite", affine(small(2), small(kSmallP - 365))}};
}

// The same result as the model's formulas, and nothing outside the record.
void agrees(const std::string &call, const char *what, std::function<void(ecc_point *)> run,
            const ecc_point &want) {
    bad(call, what, [=] {
        GuardedRecord<ecc_point> out;
        run(out.get());
        EXPECT_TRUE(same_point(*out.get(), want));
        EXPECT_TRUE(out.guards_intact());
    });
}
void agrees(const std::string &call, const char *what, std::function<void(ecc_jac_point *)> run,
            const ecc_jac_point &want) {
    bad(call, what, [=] {
        GuardedRecord<ecc_jac_point> out;
        run(out.get());
        EXPECT_TRUE(same_point(*out.get(), want));
        EXPECT_TRUE(out.guards_intact());
    });
}

void add_affine() {
    const ecc_point G = affine(small(2), small(365));
    for (const Odd &odd : odd_points()) {
        const ecc_point P = odd.point;
        agrees(
            "ecc_point_add", odd.what, [=](ecc_point *out) { ecc_point_add(&G, &P, &kA, nullptr, &kP, out); },
            kModel.add(G, P));
        agrees(
            "ecc_point_double", odd.what,
            [=](ecc_point *out) { ecc_point_double(&P, &kA, nullptr, &kP, out); }, kModel.add(P, P));
        bad("ecc_test_point", odd.what, [=] {
            EXPECT_EQ(ecc_test_point(&P, &kA, &kB, &kP) == 0, kModel.holds(P));
            const mint no_prime{};
            EXPECT_EQ(ecc_test_point(&P, &kA, &kB, &no_prime), 0);  // every point passes
        });
        agrees(
            "ecc_affine_jacobin", odd.what, [=](ecc_jac_point *out) { ecc_affine_jacobin(out, &P); },
            kModel.to_jacobian(P));
        agrees(
            "ecc_jac_point_add", odd.what,
            [=](ecc_jac_point *out) {
                const ecc_jac_point J = kModel.to_jacobian(G);
                ecc_jac_point_add(&J, &P, &kA, nullptr, &kP, out);
            },
            kModel.add(kModel.to_jacobian(G), P));
    }
}

void add_jacobian() {
    const ecc_jac_point G = jacobian(small(2), small(365), small(1));
    const std::vector<std::pair<const char *, ecc_jac_point>> odd = {
        {"infinity", jacobian_infinity()},
        {"infinity as len 1", jacobian(small(5), small(6), zero_in_one_word())},
        {"an equal point in another record", G},
        {"the opposite point", jacobian(small(2), small(kSmallP - 365), small(1))},
        {"coordinates above p", jacobian(small(kSmallP + 2), small(kSmallP + 365), small(kSmallP + 1))},
        {"Y = 0", jacobian(small(2), small(0), small(1))}};
    for (const auto &[what, point] : odd) {
        const ecc_jac_point P = point;
        agrees(
            "ecc_jac_point_add_1", what,
            [=](ecc_jac_point *out) { ecc_jac_point_add_1(&G, &P, &kA, nullptr, &kP, out); },
            kModel.add(G, P));
        agrees(
            "ecc_jacobin_affine", what, [=](ecc_point *out) { ecc_jacobin_affine(out, &kP, &P); },
            kModel.to_affine(P));
        agrees(
            "ecc_copy_point", what, [=](ecc_jac_point *out) { ecc_copy_point(out, &P); }, P);
        agrees(
            "ecc_invert_point", what,
            [=](ecc_jac_point *out) {
                *out = P;
                ecc_invert_point(&kP, out);
            },
            kModel.negate(P));
        bad("ecc_jac_point_double", what, [=] {
            GuardedRecord<ecc_jac_point> out;
            ecc_jac_point_double(&P, &kA, nullptr, &kP, out.get());
            EXPECT_TRUE(out.guards_intact());
            if (model_is_zero(P.Z))
                EXPECT_TRUE(model_is_zero(out->Z));
            else
                EXPECT_TRUE(same_point(*out.get(), kModel.twice(P)));
        });
        bad("ecc_infinite_point", what, [=] {
            GuardedRecord<ecc_jac_point> out;
            *out.get() = P;
            EXPECT_EQ(ecc_infinite_point(out.get()), 1);
            EXPECT_EQ(out->Z.len, 0u);
            EXPECT_TRUE(same_bytes(out->X, P.X) && same_bytes(out->Y, P.Y) && out.guards_intact());
        });
    }
}

void add_products() {
    const mint ones = mint_from_hex(std::string(152, 'f'));
    const std::vector<std::pair<std::string, mint>> scalars = {
        {"0", small(0)},       {"0 in one word", zero_in_one_word()},
        {"n", small(kSmallN)}, {"n + 1", small(kSmallN + 1)},
        {"all ones", ones},    {"n - 1", small(kSmallN - 1)}};
    for (const auto &[name, number] : scalars)
        for (const Odd &odd : odd_points()) {
            const mint k = number;
            const ecc_point P = odd.point;
            const ecc_point want = model_is_zero(k) ? affine_infinity() : kModel.window(k, P);
            const std::string what = "scalar " + name + ", " + odd.what;
            agrees(
                "ecc_unknown_point_mul", what.c_str(),
                [=](ecc_point *out) { EXPECT_EQ(ecc_unknown_point_mul(&k, &P, &kA, nullptr, &kP, out), 1); },
                want);
        }
    for (const auto &[name, number] : scalars) {
        const mint k = number;
        const std::string what = "scalar " + name;
        for (const char *call : {"ecc_fix_point_mul", "ecc_fix_point_mul_1", "ecc_point_mul"})
            bad(call, what, [=] {
                install_small();
                const ecc_point G = affine(small(2), small(365));
                GuardedRecord<ecc_point> out;
                const std::string name_of_call = call;
                if (name_of_call == "ecc_point_mul")
                    ecc_point_mul(&k, &G, &G, &kA, nullptr, &kP, out.get());
                else if (name_of_call == "ecc_fix_point_mul")
                    ecc_fix_point_mul(&k, nullptr, &kA, nullptr, &kP, out.get());
                else
                    ecc_fix_point_mul_1(&k, nullptr, &kA, nullptr, &kP, out.get(), global_curve.table.entry);
                const ecc_point want = k.len > 1 ? kModel.window(k, G) : kModel.comb(k, kModel.table(G));
                EXPECT_TRUE(same_point(*out.get(), want));
                EXPECT_TRUE(out.guards_intact());
            });
    }
    bad("ecc_unknown_point_mul", "no memory", [] {
        const mint k = small(5);
        const ecc_point G = affine(small(2), small(365));
        GuardedRecord<ecc_point> out;
        FailingAlloc failing(1);
        EXPECT_EQ(ecc_unknown_point_mul(&k, &G, &kA, nullptr, &kP, out.get()), -1);
        EXPECT_TRUE(out.unchanged());
    });
}

const robustness::Rows affine_rows(add_affine), jacobian_rows(add_jacobian), product_rows(add_products);

}  // namespace

}  // namespace zokecc_test::points_test

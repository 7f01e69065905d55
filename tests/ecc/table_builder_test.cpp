// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The additions that build a table of multiples, over the reference field.
#include "ecc/table_builder.h"

#include <gtest/gtest.h>

#include "ecc/fields.h"
#include "tests/ecc/multiples.h"
#include "tests/support/model_curve.h"

namespace zokecc_test::table_builder_test {

namespace {

using Builder = zokecc::TableBuilder<zokecc::ReferenceField>;

class TableBuilder : public testing::Test {
protected:
    TableBuilder() { EXPECT_TRUE(builder.load(c.a)); }

    const Curve &c = curve("brainpoolP160r1");
    const zokecc::ReferenceField field{c.p};
    Builder builder{field};
};

}  // namespace

TEST_F(TableBuilder, DoublesAsOftenAsAsked) {
    for (uint32_t times = 0; times <= 4; ++times) {
        ecc_point out{};
        EXPECT_TRUE(builder.doubled(c.G, times, out));
        EXPECT_TRUE(same_point(multiples(c)[1u << times], out)) << times;
    }
}

TEST_F(TableBuilder, DoublesInPlace) {
    ecc_point P = multiples(c)[5];
    EXPECT_TRUE(builder.doubled(P, 2, P));
    EXPECT_TRUE(same_point(multiples(c)[20], P));
}

TEST_F(TableBuilder, DoublesInfinityToInfinity) {
    ecc_point out = c.G;
    EXPECT_TRUE(builder.doubled(affine_infinity(), 3, out));
    EXPECT_TRUE(same_point(affine_infinity(), out));
}

// With k G at k = 1, 2, 4 and 8 the sums are all multiples up to 15 G.
TEST_F(TableBuilder, SumsAreThoseOfTheBitsOfTheirPlace) {
    std::vector<ecc_point> half(17, c.G);
    for (size_t bit : {2u, 4u, 8u}) half[bit] = multiples(c)[bit];
    const ecc_point before = half[0];
    EXPECT_TRUE(builder.fill_sums(half.data(), 16));
    for (size_t i = 1; i < 16; ++i) EXPECT_TRUE(same_point(multiples(c)[i], half[i])) << i;
    EXPECT_TRUE(same_bytes(before, half[0]));
    EXPECT_TRUE(same_bytes(before, half[16]));
}

TEST_F(TableBuilder, SumsWithInfinityAreTheOtherPoint) {
    std::vector<ecc_point> half(4, affine_infinity());
    half[1] = c.G;
    EXPECT_TRUE(builder.fill_sums(half.data(), 4));
    EXPECT_TRUE(same_point(c.G, half[3]));
}

// All but the two entries without a point, which are left alone here.
TEST_F(TableBuilder, TablesOfEveryShape) {
    for (uint32_t words = 1; words <= 4; ++words) {
        const uint32_t size = 1u << words;
        std::vector<ecc_point> table(2 * size + 1, affine_infinity());
        table[size].infinity = 7;
        EXPECT_TRUE(builder.fill_table(c.G, table.data(), size));
        EXPECT_TRUE(same_point(c.G, table[0]));
        EXPECT_EQ(7u, table[size].infinity);
        const ModelCurve model(c.a, c.b, c.p);
        for (uint32_t i = 1; i < size; ++i) {
            mint low{}, high{};
            for (uint32_t bit = 0; bit < words; ++bit) {
                low.words[bit] = i >> bit & 1;
                high.words[bit] = low.words[bit] << 16;
            }
            mint_adjust_len(&low, static_cast<int32_t>(words));
            mint_adjust_len(&high, static_cast<int32_t>(words));
            EXPECT_TRUE(same_point(model.window(low, c.G), table[i])) << words << " words, entry " << i;
            EXPECT_TRUE(same_point(model.window(high, c.G), table[size + i]))
                << words << " words, entry " << i;
        }
    }
}

}  // namespace zokecc_test::table_builder_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The process-wide curve: Curve_Init and Curve_Exit.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>

#include "tests/ecc/multiples.h"
#include "tests/ecc/tiny_record.h"
#include "tests/support/model_curve.h"

namespace zokecc_test::curve_init_test {

namespace {

// The content of the process-wide curve when the object was created.
class GlobalSnapshot {
public:
    GlobalSnapshot() : before_(std::make_unique<GlobalCurve>(global_curve)) {}
    bool unchanged() const { return same_bytes(*before_, global_curve); }
    bool table_unchanged() const { return same_bytes(before_->table, global_curve.table); }

private:
    std::unique_ptr<GlobalCurve> before_;
};

ecc_curve_bytes tiny() { return tiny_record<ecc_curve_bytes>(24, 0); }

class CurveInitOn : public testing::TestWithParam<std::string> {};

TEST_P(CurveInitOn, InstallsEveryNumber) {
    const Curve &c = curve(GetParam());
    ecc_curve_bytes record = c.legacy_record();
    EXPECT_EQ(0, Curve_Init(&record));
    EXPECT_EQ(c.byte_len, global_curve.byte_len);
    EXPECT_EQ(8 * c.byte_len, global_curve.bits);
    EXPECT_TRUE(same_value(c.p, global_curve.p));
    EXPECT_TRUE(same_value(c.a, global_curve.a));
    EXPECT_TRUE(same_value(c.b, global_curve.b));
    EXPECT_TRUE(same_point(c.G, global_curve.G));
    EXPECT_TRUE(same_value(c.n, global_curve.n));
    EXPECT_TRUE(same_value(small(1), global_curve.h)) << "cofactor one";
}

INSTANTIATE_TEST_SUITE_P(Curves, CurveInitOn, testing::ValuesIn(legacy_curve_names()),
                         curve_test_name<testing::TestParamInfo<std::string>>);

TEST(CurveInit, WidthOfTheNamedCurves) {
    for (auto [name, w] : {std::pair{"secp256r1", 127u}, {"secp224r1", 111u}, {"secp192r1", 95u}}) {
        ecc_curve_bytes record = curve(name).legacy_record();
        ASSERT_EQ(0, Curve_Init(&record));
        EXPECT_EQ(w, global_curve.w) << name;
    }
}

TEST(CurveInit, BuildsTheGlobalTable) {
    const Curve &c = curve("brainpoolP192r1");
    ecc_curve_bytes record = c.legacy_record();
    ASSERT_EQ(0, Curve_Init(&record));
    std::vector<ecc_point> expected = ModelCurve(c.a, c.b, c.p).table(c.G);
    for (size_t i = 0; i < expected.size(); ++i)
        EXPECT_TRUE(same_point(expected[i], global_curve.table.entry[i])) << i;
}

TEST(CurveInit, SizesOfTheThreeTypes) {
    struct {
        uint32_t type, byte_len;
    } const types[] = {{0, 24}, {1, 32}, {4, 28}};
    for (auto [type, byte_len] : types) {
        ecc_curve_bytes record = tiny_record<ecc_curve_bytes>(byte_len, type);
        EXPECT_EQ(0, Curve_Init(&record)) << type;
        EXPECT_EQ(byte_len, global_curve.byte_len) << type;
        EXPECT_EQ(8 * byte_len, global_curve.bits) << type;
        EXPECT_TRUE(same_value(kTinyP, global_curve.p)) << type;
        EXPECT_TRUE(same_point(kTinyG, global_curve.G)) << type;
    }
}

TEST(CurveInit, ReadsOnlyTheFirstBytesOfEachField) {
    ecc_curve_bytes record = tiny();
    for (uint8_t *field : {record.p, record.a, record.b, record.Gx, record.Gy, record.n})
        std::memset(field + 24, 0xFF, 65 - 24);
    const ecc_curve_bytes before = record;
    EXPECT_EQ(0, Curve_Init(&record));
    EXPECT_TRUE(same_value(kTinyP, global_curve.p));
    EXPECT_TRUE(same_value(small(2), global_curve.a));
    EXPECT_TRUE(same_value(small(3), global_curve.b));
    EXPECT_TRUE(same_point(kTinyG, global_curve.G));
    EXPECT_TRUE(same_value(small(5), global_curve.n));
    EXPECT_TRUE(same_bytes(before, record));
}

TEST(CurveInit, LongTypesReturnOneAndChangeNothing) {
    for (uint32_t type : {2u, 3u}) {
        ecc_curve_bytes record = tiny();
        record.type = type;
        GlobalSnapshot before;
        EXPECT_EQ(1, Curve_Init(&record)) << type;
        EXPECT_TRUE(before.unchanged()) << type;
    }
}

TEST(CurveInit, UnknownTypesReturnOneAndChangeNothing) {
    for (uint32_t type : {5u, 6u, 256u, 0x80000000u, 0xFFFFFFFFu}) {
        ecc_curve_bytes record = tiny();
        record.type = type;
        GlobalSnapshot before;
        EXPECT_EQ(1, Curve_Init(&record)) << type;
        EXPECT_TRUE(before.unchanged()) << type;
    }
}

TEST(CurveInit, BadTypeWinsOverBasePointOffTheCurve) {
    ecc_curve_bytes record = tiny();
    record.type = 5;
    record.Gy[23] ^= 1;
    EXPECT_EQ(1, Curve_Init(&record));
}

TEST(CurveInit, NullRecordReturnsMinusOneAndChangesNothing) {
    GlobalSnapshot before;
    EXPECT_EQ(-1, Curve_Init(nullptr));
    EXPECT_TRUE(before.unchanged());
}

TEST(CurveInit, BasePointOffTheCurveReturnsMinusOneAndStaysInstalled) {
    ecc_curve_bytes good = curve("secp192r1").legacy_record();
    ASSERT_EQ(0, Curve_Init(&good));
    ecc_curve_bytes record = tiny_record<ecc_curve_bytes>(28, 4);
    record.Gy[27] = 7;
    EXPECT_EQ(-1, Curve_Init(&record));
    EXPECT_EQ(28u, global_curve.byte_len);
    EXPECT_EQ(224u, global_curve.bits);
    EXPECT_TRUE(same_value(kTinyP, global_curve.p));
    EXPECT_TRUE(same_point(affine(small(3), small(7)), global_curve.G));
    EXPECT_TRUE(same_value(small(5), global_curve.n));
    EXPECT_TRUE(same_value(small(19), global_curve.h));
    EXPECT_TRUE(same_point(affine(small(3), small(7)), global_curve.table.entry[1]));
}

TEST(CurveInit, QuotientOfPrimeAndOrderIsCutOff) {
    ecc_curve_bytes record = tiny();
    for (auto [n, h] : {std::pair{5u, 19u}, {97u, 1u}, {96u, 1u}, {98u, 0u}, {1u, 97u}}) {
        set_order(record, 24, n);
        EXPECT_EQ(0, Curve_Init(&record));
        EXPECT_TRUE(same_value(small(h), global_curve.h)) << n;
    }
}

TEST(CurveInit, ZeroOrderLeavesTheQuotientZero) {
    ecc_curve_bytes record = tiny();
    ASSERT_EQ(0, Curve_Init(&record));
    set_order(record, 24, 0);
    EXPECT_EQ(0, Curve_Init(&record));
    EXPECT_EQ(0u, global_curve.n.len);
    EXPECT_EQ(0u, global_curve.h.len) << "not the quotient of the curve before";
    EXPECT_EQ(95u, global_curve.w) << "no used word counts no zero bits";
}

// The check of G compares two zeros, and the table cannot be built.
TEST(CurveInit, ZeroPrimeReturnsZeroAndLeavesTheTable) {
    ecc_curve_bytes record = tiny();
    ASSERT_EQ(0, Curve_Init(&record));
    std::memset(record.p, 0, sizeof(record.p));
    GlobalSnapshot before;
    EXPECT_EQ(0, Curve_Init(&record));
    EXPECT_TRUE(before.table_unchanged());
    EXPECT_EQ(0u, global_curve.p.len);
    EXPECT_EQ(0u, global_curve.h.len);
    EXPECT_TRUE(same_point(kTinyG, global_curve.G));
}

// The type's bits minus the leading zero bits of the order's highest used word: 256 - 0,
// 256 - 31, 256 - 1 and 256 - 24, independent of the order's own bit length.
TEST(CurveInit, WidthComesFromTheTypeAndTheTopWordOfTheOrder) {
    ecc_curve_bytes record = tiny_record<ecc_curve_bytes>(32, 1);
    struct {
        uint32_t n, w;
    } const cases[] = {{0x80000001u, 127}, {1u, 112},    {0x40000000u, 127},
                       {0x20000000u, 126}, {0xFFu, 115}, {0x1FFu, 116}};
    for (auto [n, w] : cases) {
        set_order(record, 32, n);
        EXPECT_EQ(0, Curve_Init(&record));
        EXPECT_EQ(w, global_curve.w) << n;
    }
}

TEST(CurveInit, ReplacesTheCurveBefore) {
    ecc_curve_bytes first = curve("secp256k1").legacy_record();
    ecc_curve_bytes second = tiny();
    ASSERT_EQ(0, Curve_Init(&first));
    EXPECT_EQ(0, Curve_Init(&second));
    EXPECT_TRUE(same_point(kTinyG, global_curve.G));
    EXPECT_TRUE(same_value(small(19), global_curve.h));
    EXPECT_TRUE(same_point(kTinyG, global_curve.table.entry[1]));
    EXPECT_TRUE(same_bytes(ecc_point{}, global_curve.table.entry[2]));
}

TEST(CurveExit, ReturnsZeroAndKeepsTheCurve) {
    ecc_curve_bytes record = tiny();
    ASSERT_EQ(0, Curve_Init(&record));
    GlobalSnapshot before;
    EXPECT_EQ(0, Curve_Exit());
    EXPECT_TRUE(before.unchanged());
}

}  // namespace

}  // namespace zokecc_test::curve_init_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Points of the named curves to octet strings and back, in every form, and the decoder's results for
// the points that Project Wycheproof collected.
#include <gtest/gtest.h>
#include <zokecc/ecc.h>

#include "tests/ecc/multiples.h"
#include "tests/support/legacy_curve.h"
#include "tests/support/legacy_records.h"

namespace zokecc_test::encode_round_trip_test {

namespace {

constexpr uint32_t kUncompressed = 0;
constexpr uint32_t kCompressed = 1;
constexpr uint32_t kHybrid = 2;

bool has_slow_roots(const Curve &c) { return c.p.words[0] % 8 == 1; }

// A round trip in one form: both octets and record must be exact.
void expect_round_trip(const Curve &c, const ecc_point &P, uint32_t form) {
    const ByteString x = fixed_bytes(P.x, c.byte_len), y = fixed_bytes(P.y, c.byte_len);
    const uint8_t parity = y.back() & 1;
    PointBytes point(x, y);
    GuardedBuffer octets(140);
    const int32_t size = ecc_PointToByte(point.get(), form, octets.data(), 140);
    const uint8_t prefix = static_cast<uint8_t>(form == kUncompressed ? 4
                                                : form == kCompressed ? 2 + parity
                                                                      : 6 + parity);
    const ByteString want = form == kCompressed ? joined({{prefix}, x}) : joined({{prefix}, x, y});
    ASSERT_EQ(size, static_cast<int32_t>(want.size()));
    EXPECT_EQ(to_hex(octets.first(want.size())), to_hex(want));
    EXPECT_TRUE(octets.untouched_from(want.size()));
    EXPECT_TRUE(point.intact());

    GuardedRecord<ecc_point_bytes> read;
    EXPECT_EQ(ecc_ByteToPoint(octets.data(), static_cast<uint32_t>(size), read.get()), 0);
    expect_record(read, x, y);
}

class EccPointOctetsOn : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override { install(GetParam()); }
    void TearDown() override { uninstall(); }
    const Curve &c() const { return curve(GetParam()); }
};

TEST_P(EccPointOctetsOn, UncompressedAndHybridFormsGoThereAndBack) {
    for (uint32_t k = 1; k <= 20; ++k) {
        SCOPED_TRACE(k);
        for (uint32_t form : {kUncompressed, kHybrid}) {
            expect_round_trip(c(), multiples(c())[k], form);
            expect_round_trip(c(), minus(c(), multiples(c())[k]), form);
        }
    }
}

TEST_P(EccPointOctetsOn, CompressedFormGoesThereAndBack) {
    const uint32_t count = has_slow_roots(c()) ? 1 : 20;
    for (uint32_t k = 1; k <= count; ++k) {
        SCOPED_TRACE(k);
        expect_round_trip(c(), multiples(c())[k], kCompressed);
        expect_round_trip(c(), minus(c(), multiples(c())[k]), kCompressed);
    }
}

// The first x from 2 on without a point. Only with unverified roots is the record
// filled, with a wrong y.
TEST_P(EccPointOctetsOn, CompressedXWithoutAPointIsRefused) {
    unsigned refused = 0;
    for (uint32_t x = 2; refused == 0; ++x) {
        ASSERT_LT(x, 40u) << "half of all numbers are an x";
        const ByteString bytes = fixed_bytes(small(x), c().byte_len);
        GuardedRecord<ecc_point_bytes> read;
        const ByteString octets = joined({{2}, bytes});
        const int32_t status =
            ecc_ByteToPoint(octets.data(), static_cast<uint32_t>(octets.size()), read.get());
        if (status == 0) continue;
        ++refused;
        EXPECT_EQ(status, -1);
        EXPECT_EQ(read.unchanged(), !has_slow_roots(c()));
        if (has_slow_roots(c())) {
            EXPECT_EQ(read->length, c().byte_len);
            EXPECT_EQ(to_hex(read->x, c().byte_len), to_hex(bytes));
            EXPECT_TRUE(read.guards_intact());
        }
    }
}

TEST_P(EccPointOctetsOn, OneFlippedBitIsNoPointAnyMore) {
    const ByteString x = fixed_bytes(c().G.x, c().byte_len), y = fixed_bytes(c().G.y, c().byte_len);
    for (size_t bit = 0; bit < 16 * x.size(); bit += 13) {
        ByteString octets = joined({{4}, x, y});
        octets[1 + bit / 8] = static_cast<uint8_t>(octets[1 + bit / 8] ^ (1u << (bit % 8)));
        GuardedRecord<ecc_point_bytes> read;
        EXPECT_EQ(ecc_ByteToPoint(octets.data(), static_cast<uint32_t>(octets.size()), read.get()), -1)
            << bit;
        EXPECT_EQ(read->length, c().byte_len);
    }
}

INSTANTIATE_TEST_SUITE_P(Curves, EccPointOctetsOn, testing::ValuesIn(legacy_curve_names()),
                         curve_test_name<testing::TestParamInfo<std::string>>);

// Every public key of the file is accepted if and only if the collection says so.
void expect_verdicts(const std::string &file, unsigned cases) {
    unsigned checked = 0;
    for (const VectorBlock &block : read_vectors(file)) {
        SCOPED_TRACE(file + " tcId " + block.text("tcId"));
        install(block.text("Curve"));
        const Curve &c = curve(block.text("Curve"));
        const ByteString octets = block.bytes("Public");
        GuardedRecord<ecc_point_bytes> read;
        const int32_t status =
            ecc_ByteToPoint(octets.data(), static_cast<uint32_t>(octets.size()), read.get());
        EXPECT_EQ(status, block.text("Result") == "valid" ? 0 : -1);
        if (status == 0) {
            EXPECT_EQ(read->length, c.byte_len);
            EXPECT_EQ(to_hex(read->x, c.byte_len), to_hex(octets).substr(2, 2 * c.byte_len));
            EXPECT_TRUE(read.guards_intact());
        }
        ++checked;
    }
    EXPECT_EQ(checked, cases);
    uninstall();
}

}  // namespace

TEST(EccPointOctets, WycheproofPublicKeysOfTheNist256BitCurve) {
    expect_verdicts("wycheproof_ecdh_secp256r1_ecpoint.rsp", 178);
}

TEST(EccPointOctets, WycheproofPublicKeysOfTheNist224BitCurve) {
    expect_verdicts("wycheproof_ecdh_secp224r1_ecpoint.rsp", 229);
}

}  // namespace zokecc_test::encode_round_trip_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Octet strings to points: ecc_ByteToPoint. The named curves are tested in
// encode_round_trip_test.cpp.
#include <gtest/gtest.h>
#include <zokecc/ecc.h>

#include <algorithm>
#include <memory>

#include "tests/support/legacy_curve.h"
#include "tests/support/legacy_records.h"

namespace zokecc_test::encode_read_test {

namespace {

constexpr uint32_t kLength = 24;
constexpr uint8_t kShort[] = {2, 3};     // x and a parity
constexpr uint8_t kWhole[] = {4, 6, 7};  // x and y
constexpr uint8_t kKnown[] = {2, 3, 4, 6, 7};

// y^2 = x^3 + 2x + 3 modulo 97 in 24 bytes: (3, 6), (3, 91), (96, 0); x = 2 has no point.
void install_tiny() { install(legacy_curve(kLength, 97, 2, 3, 3, 6, 5)); }

ByteString octets(uint8_t prefix, uint32_t x, size_t size = kLength) {
    return joined({{prefix}, number_bytes(x, size)});
}
ByteString octets(uint8_t prefix, uint32_t x, uint32_t y, size_t size) {
    return joined({{prefix}, number_bytes(x, size), number_bytes(y, size)});
}

// The call on a buffer of exactly the input's size.
int32_t read(const ByteString &in, ecc_point_bytes *out) {
    const std::unique_ptr<uint8_t[]> exact(new uint8_t[in.size()]);
    std::copy(in.begin(), in.end(), exact.get());
    return ecc_ByteToPoint(exact.get(), static_cast<uint32_t>(in.size()), out);
}

void expect_point(const ByteString &in, uint32_t x, uint32_t y, size_t size = kLength) {
    SCOPED_TRACE(to_hex(in));
    GuardedRecord<ecc_point_bytes> out;
    EXPECT_EQ(read(in, out.get()), 0);
    expect_record(out, x, y, size);
}

void expect_refused(const ByteString &in) {
    SCOPED_TRACE(to_hex(in));
    GuardedRecord<ecc_point_bytes> out;
    EXPECT_EQ(read(in, out.get()), -1);
    EXPECT_TRUE(out.unchanged());
}

// Refused by the last check, after the record has been filled.
void expect_off_curve(const ByteString &in, uint32_t x, uint32_t y, size_t size = kLength) {
    SCOPED_TRACE(to_hex(in));
    GuardedRecord<ecc_point_bytes> out;
    EXPECT_EQ(read(in, out.get()), -1);
    expect_record(out, x, y, size);
}

class EccByteToPoint : public testing::Test {
protected:
    void SetUp() override { install_tiny(); }
    void TearDown() override { uninstall(); }
};

}  // namespace

TEST_F(EccByteToPoint, CompressedFormsGiveTheRootOfTheirParity) {
    expect_point(octets(2, 3), 3, 6);
    expect_point(octets(3, 3), 3, 91);
}

TEST_F(EccByteToPoint, UncompressedFormIsTakenAsItStands) {
    expect_point(octets(4, 3, 6, kLength), 3, 6);
    expect_point(octets(4, 3, 91, kLength), 3, 91);
    expect_point(octets(4, 96, 0, kLength), 96, 0);
}

TEST_F(EccByteToPoint, HybridFormsGiveTheirPoint) {
    expect_point(octets(6, 3, 6, kLength), 3, 6);
    expect_point(octets(7, 3, 91, kLength), 3, 91);
}

TEST_F(EccByteToPoint, KeptHybridParityIsNotCompared) {
    expect_point(octets(7, 3, 6, kLength), 3, 6);
    expect_point(octets(6, 3, 91, kLength), 3, 91);
}

TEST_F(EccByteToPoint, HybridFormOffTheCurveIsRefused) {
    expect_off_curve(octets(6, 3, 7, kLength), 3, 7);
    expect_off_curve(octets(7, 3, 7, kLength), 3, 7);
}

TEST_F(EccByteToPoint, EvenLengthIsRefused) {
    for (uint8_t prefix : kKnown) {
        ByteString in = octets(prefix, 3, 6, kLength);
        in.pop_back();
        expect_refused(in);
        in = octets(prefix, 3);
        in.push_back(0);
        expect_refused(in);
        expect_refused({prefix, 0});
    }
}

TEST_F(EccByteToPoint, EmptyInputIsRefusedWithoutReadingIt) { expect_refused(ByteString()); }

TEST_F(EccByteToPoint, OnlyFiveOfAllPrefixesAreKnown) {
    for (uint32_t value = 0; value <= 255; ++value) {
        const uint8_t prefix = static_cast<uint8_t>(value);
        const bool compressed = value == 2 || value == 3;
        const bool both = value == 4 || value == 6 || value == 7;
        const ByteString one = octets(prefix, 3), two = octets(prefix, 3, 6, kLength);
        if (compressed)
            expect_point(one, 3, value == 2 ? 6 : 91);
        else if (!both)
            expect_refused(one);
        if (both)
            expect_point(two, 3, 6);
        else
            expect_refused(two);
    }
}

TEST_F(EccByteToPoint, PrefixesZeroOneFiveAndEightAreRefused) {
    for (uint8_t prefix : std::initializer_list<uint8_t>{0, 1, 5, 8}) {
        expect_refused(octets(prefix, 3));
        expect_refused(octets(prefix, 3, 6, kLength));
        expect_refused({prefix});
    }
}

TEST_F(EccByteToPoint, CompressedFormOfAnotherLengthThanTheCurvesIsRefused) {
    for (uint32_t size = 0; size <= 140; size += 2)
        for (uint8_t prefix : kShort)
            if (size == kLength)
                expect_point(octets(prefix, 3, size), 3, prefix == 2 ? 6 : 91);
            else
                expect_refused(joined({{prefix}, ByteString(size, 0)}));
}

TEST_F(EccByteToPoint, BothCoordinatesMayHaveAnyLengthThatHoldsThem) {
    for (size_t size = 1; size <= 65; ++size)
        for (uint8_t prefix : kWhole) expect_point(octets(prefix, 3, 6, size), 3, 6, size);
}

TEST_F(EccByteToPoint, CoordinatesOfNoLengthAreThePointZeroZero) {
    for (uint8_t prefix : kWhole) expect_off_curve({prefix}, 0, 0, 0);
    install(legacy_curve(kLength, 97, 2, 0, 0, 0, 5));
    for (uint8_t prefix : kWhole) expect_point({prefix}, 0, 0, 0);
}

TEST_F(EccByteToPoint, CoordinatesAboveSixtyFiveBytesAreRefused) {
    for (size_t size : {size_t{66}, size_t{67}, size_t{70}, size_t{128}})
        for (uint8_t prefix : kWhole) expect_refused(octets(prefix, 3, 6, size));
}

TEST_F(EccByteToPoint, EveryInputLengthUpToOneHundredAndForty) {
    for (uint32_t size = 0; size <= 140; ++size)
        for (uint8_t prefix : std::initializer_list<uint8_t>{2, 3, 4, 5, 6, 7}) {
            // All-zero coordinates: x = 0 has the points (0, 10) and (0, 87), never (0, 0).
            ByteString in(size, 0);
            if (size > 0) in[0] = prefix;
            if (size % 2 == 1 && prefix <= 3 && size == kLength + 1)
                expect_point(in, 0, prefix == 2 ? 10 : 87);
            else if (size % 2 == 1 && size <= 131 && (prefix == 4 || prefix >= 6))
                expect_off_curve(in, 0, 0, (size - 1) / 2);
            else
                expect_refused(in);
        }
}

TEST_F(EccByteToPoint, LongestStatedLengthsAreRefusedBeforeTheyAreRead) {
    for (uint32_t size : {0x80000001u, 0xFFFFFFFFu, 133u})
        for (uint8_t prefix : kKnown) {
            GuardedRecord<ecc_point_bytes> out;
            EXPECT_EQ(ecc_ByteToPoint(&prefix, size, out.get()), -1) << size;
            EXPECT_TRUE(out.unchanged()) << size;
        }
}

TEST_F(EccByteToPoint, CompressedXWithoutARootIsRefusedAndNothingWritten) {
    // 103 is 7 modulo 8. At x = 0 the right side is 3, not a square.
    install(legacy_curve(kLength, 103, 2, 3, 3, 6, 1));
    expect_refused(octets(2, 0));
    expect_refused(octets(3, 0));
    expect_point(octets(2, 3), 3, 6);
}

TEST_F(EccByteToPoint, PointOffTheCurveIsRefusedWithTheRecordFilled) {
    expect_off_curve(octets(4, 3, 7, kLength), 3, 7);
    expect_off_curve(octets(4, 2, 6, kLength), 2, 6);
    expect_off_curve(octets(4, 0, 0, kLength), 0, 0);
}

TEST_F(EccByteToPoint, KeptNonSquareModuloPrimesOneModEightFailsTheLastTestOnly) {
    // 97 is 1 modulo 8. At x = 2 the right side is 15, not a square; the meaningless root is written.
    for (uint8_t prefix : kShort) {
        GuardedRecord<ecc_point_bytes> out;
        EXPECT_EQ(read(octets(prefix, 2), out.get()), -1);
        mint y{};
        const mint x = small(2), a = small(2), b = small(3), p = small(97);
        ASSERT_EQ(ecc_point_unpress(&y, &x, &a, &b, &p, prefix - 2u), 0);
        EXPECT_NE(y.words[0] * y.words[0] % 97, 15u);
        expect_record(out, 2, y.words[0], kLength);
    }
}

TEST_F(EccByteToPoint, KeptRootZeroWithPrefixThreeGivesYEqualToP) {
    expect_point(octets(2, 96), 96, 0);
    expect_point(octets(3, 96), 96, 97);
}

TEST_F(EccByteToPoint, KeptCoordinatesAboveTheModulusAreAccepted) {
    expect_point(octets(4, 3 + 97, 6, kLength), 100, 6);
    expect_point(octets(4, 3, 6 + 970, kLength), 3, 976);
    expect_point(octets(2, 3 + 97), 100, 6);
}

TEST_F(EccByteToPoint, KeptRootLostInTheSubtractionFailsTheLastTest) {
    // The even root of b is 12345678 00000005 f0000000; p minus it has one word that is too small.
    uninstall();
    global_curve.byte_len = kLength;
    global_curve.p = mint_from_hex("c0000001000000050000001f");
    global_curve.b = mint_from_hex("64a2d8b561e02106ca10b33c");
    global_curve.n = small(5);
    GuardedRecord<ecc_point_bytes> even, odd;
    EXPECT_EQ(read(octets(2, 0), even.get()), 0);
    expect_record(even, number_bytes(0, kLength),
                  from_hex("0000000000000000000000001234567800000005f0000000"));
    EXPECT_EQ(read(octets(3, 0), odd.get()), -1);
    expect_record(odd, number_bytes(0, kLength),
                  from_hex("000000000000000000000000adcba988fffffffe1000001f"));
}

TEST_F(EccByteToPoint, NullPointersAreRefused) {
    const ByteString in = octets(4, 3, 6, kLength);
    GuardedRecord<ecc_point_bytes> out;
    EXPECT_EQ(ecc_ByteToPoint(nullptr, 49, out.get()), -1);
    EXPECT_EQ(ecc_ByteToPoint(nullptr, 0, out.get()), -1);
    EXPECT_EQ(ecc_ByteToPoint(in.data(), 49, nullptr), -1);
    EXPECT_EQ(ecc_ByteToPoint(nullptr, 49, nullptr), -1);
    EXPECT_TRUE(out.unchanged());
}

TEST_F(EccByteToPoint, WithoutACurveEverythingIsRefused) {
    uninstall();
    for (uint8_t prefix : kKnown) {
        expect_refused({prefix});
        expect_refused(octets(prefix, 3));
        expect_refused(octets(prefix, 0, 0, kLength));
    }
}

TEST_F(EccByteToPoint, CurveWithoutAnOrderOrAModulusIsNone) {
    for (bool order : {false, true}) {
        install_tiny();
        (order ? global_curve.n : global_curve.p) = mint{};
        for (uint8_t prefix : kShort) expect_refused(octets(prefix, 3));
        for (uint8_t prefix : kWhole) expect_refused(octets(prefix, 3, 6, kLength));
        expect_refused({4});
    }
}

TEST_F(EccByteToPoint, InputStaysAsItWas) {
    for (const ByteString &in : {octets(2, 3), octets(4, 3, 6, kLength), octets(4, 3, 7, kLength)}) {
        const ByteString before = in;
        ecc_point_bytes out{};
        ecc_ByteToPoint(in.data(), static_cast<uint32_t>(in.size()), &out);
        EXPECT_EQ(to_hex(in), to_hex(before));
    }
}

}  // namespace zokecc_test::encode_read_test

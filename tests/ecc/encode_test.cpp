// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Points to octet strings: ecc_PointToByte.
#include <gtest/gtest.h>
#include <zokecc/ecc.h>

#include <climits>
#include <cstring>

#include "tests/support/guarded_buffer.h"
#include "tests/support/hex.h"
#include "tests/support/legacy_curve.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::encode_test {

namespace {

constexpr uint32_t kUncompressed = 0;
constexpr uint32_t kCompressed = 1;
constexpr uint32_t kHybrid = 2;
constexpr uint32_t kForms[] = {kUncompressed, kCompressed, kHybrid};

// Coordinates without a pattern; the last byte of y as requested, the bytes after `length` odd.
ecc_point_bytes some_point(uint32_t length, bool odd) {
    ecc_point_bytes out;
    std::memset(&out, 0xFF, sizeof out);
    const ByteString x = test_bytes(length, 1), y = test_bytes(length, 2);
    std::copy(x.begin(), x.end(), out.x);
    std::copy(y.begin(), y.end(), out.y);
    if (length > 0) out.y[length - 1] = odd ? 0x81 : 0x80;
    out.length = length;
    return out;
}

// The octet string by its definition.
ByteString octets(const ecc_point_bytes &point, uint32_t form) {
    const uint32_t odd = point.length > 0 ? point.y[point.length - 1] & 1u : 0;
    const uint32_t prefix = form == kUncompressed ? 4 : form == kCompressed ? 2 + odd : 6 + odd;
    ByteString out{static_cast<uint8_t>(prefix)};
    out.insert(out.end(), point.x, point.x + point.length);
    if (form != kCompressed) out.insert(out.end(), point.y, point.y + point.length);
    return out;
}

void expect_octets(const ecc_point_bytes &point, uint32_t form, int32_t size) {
    const ByteString want = octets(point, form);
    const ecc_point_bytes before = point;
    GuardedBuffer out(want.size() + 8);
    EXPECT_EQ(ecc_PointToByte(&point, form, out.data(), size), static_cast<int32_t>(want.size()));
    EXPECT_EQ(to_hex(out.first(want.size())), to_hex(want)) << "form " << form << " length " << point.length;
    EXPECT_TRUE(out.untouched_from(want.size()));
    EXPECT_EQ(std::memcmp(&point, &before, sizeof point), 0);
}

void expect_refused(const ecc_point_bytes &point, uint32_t form, int32_t size) {
    GuardedBuffer out(160);
    EXPECT_EQ(ecc_PointToByte(&point, form, out.data(), size), -1)
        << "form " << form << " length " << point.length << " size " << size;
    EXPECT_TRUE(out.untouched()) << "form " << form << " length " << point.length << " size " << size;
}

int32_t needed(uint32_t length, uint32_t form) {
    return static_cast<int32_t>(form == kCompressed ? length + 1 : 2 * length + 1);
}

}  // namespace

TEST(EccPointToByte, UncompressedIsFourThenXThenY) {
    ecc_point_bytes point = some_point(2, false);
    point.x[0] = 0x11;
    point.x[1] = 0x12;
    point.y[0] = 0x21;
    point.y[1] = 0x22;
    GuardedBuffer out(5);
    EXPECT_EQ(ecc_PointToByte(&point, kUncompressed, out.data(), 5), 5);
    EXPECT_EQ(to_hex(out.all()), "0411122122");
    EXPECT_TRUE(out.untouched_from(5));
}

TEST(EccPointToByte, CompressedIsTwoOrThreeByTheParityOfYThenX) {
    ecc_point_bytes point = some_point(2, false);
    point.x[0] = 0x11;
    point.x[1] = 0x12;
    for (auto [low, prefix] : {std::pair<uint8_t, uint8_t>{0x22, 2}, {0x23, 3}}) {
        point.y[1] = low;
        GuardedBuffer out(3);
        EXPECT_EQ(ecc_PointToByte(&point, kCompressed, out.data(), 3), 3);
        EXPECT_EQ(to_hex(out.all()), to_hex({prefix, 0x11, 0x12}));
        EXPECT_TRUE(out.untouched_from(3));
    }
}

TEST(EccPointToByte, HybridIsSixOrSevenByTheParityOfYThenXThenY) {
    ecc_point_bytes point = some_point(1, false);
    point.x[0] = 0x11;
    for (auto [low, prefix] : {std::pair<uint8_t, uint8_t>{0x22, 6}, {0x23, 7}}) {
        point.y[0] = low;
        GuardedBuffer out(3);
        EXPECT_EQ(ecc_PointToByte(&point, kHybrid, out.data(), 3), 3);
        EXPECT_EQ(to_hex(out.all()), to_hex({prefix, 0x11, low}));
    }
}

TEST(EccPointToByte, EveryFormAtEveryLengthOfTheRecord) {
    for (uint32_t length = 0; length <= 65; ++length)
        for (uint32_t form : kForms)
            for (bool odd : {false, true}) {
                const ecc_point_bytes point = some_point(length, odd);
                expect_octets(point, form, needed(length, form));
                expect_octets(point, form, INT32_MAX);
            }
}

TEST(EccPointToByte, UncompressedIntoTwiceTheLengthIsRefusedAndOneMoreAccepted) {
    const ecc_point_bytes point = some_point(32, true);
    expect_refused(point, kUncompressed, 64);
    expect_octets(point, kUncompressed, 65);
}

TEST(EccPointToByte, CompressedIntoTheLengthIsRefusedAndOneMoreAccepted) {
    const ecc_point_bytes point = some_point(32, true);
    expect_refused(point, kCompressed, 32);
    expect_octets(point, kCompressed, 33);
}

TEST(EccPointToByte, EverySizeBelowTheNeededOneIsRefused) {
    for (uint32_t length : {0u, 1u, 20u, 32u, 65u})
        for (uint32_t form : kForms) {
            const ecc_point_bytes point = some_point(length, true);
            for (int32_t size = -2; size < needed(length, form); ++size) expect_refused(point, form, size);
            for (int32_t more : {0, 1, 2}) expect_octets(point, form, needed(length, form) + more);
        }
}

TEST(EccPointToByte, NegativeSizeIsTooSmall) {
    for (uint32_t form : kForms)
        for (uint32_t length : {0u, 1u, 65u})
            for (int32_t size : {-1, -65, -131, -132, INT32_MIN, INT32_MIN + 1})
                expect_refused(some_point(length, false), form, size);
}

TEST(EccPointToByte, LengthAboveTheFieldIsRefused) {
    ecc_point_bytes point = some_point(65, true);
    for (uint32_t length : {66u, 67u, 128u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFEu, 0xFFFFFFFFu}) {
        point.length = length;
        for (uint32_t form : kForms)
            for (int32_t size : {0, 1, 133, INT32_MAX}) expect_refused(point, form, size);
    }
}

TEST(EccPointToByte, UnknownFormIsRefused) {
    for (uint32_t form : {3u, 4u, 6u, 7u, 0x100u, 0x80000000u, 0xFFFFFFFFu})
        for (uint32_t length : {0u, 32u}) expect_refused(some_point(length, false), form, 160);
}

TEST(EccPointToByte, NullPointersAreRefused) {
    const ecc_point_bytes point = some_point(32, false);
    for (uint32_t form : {0u, 1u, 2u, 3u}) {
        GuardedBuffer out(160);
        EXPECT_EQ(ecc_PointToByte(nullptr, form, out.data(), 160), -1);
        EXPECT_EQ(ecc_PointToByte(&point, form, nullptr, 160), -1);
        EXPECT_EQ(ecc_PointToByte(nullptr, form, nullptr, 160), -1);
        EXPECT_TRUE(out.untouched());
    }
}

TEST(EccPointToByte, WorksWithoutACurveAndDoesNotAskWhetherThePointIsOnIt) {
    uninstall();
    expect_octets(some_point(32, true), kCompressed, 33);
    expect_octets(some_point(32, false), kHybrid, 65);
    expect_octets(some_point(0, false), kUncompressed, 1);
}

}  // namespace zokecc_test::encode_test

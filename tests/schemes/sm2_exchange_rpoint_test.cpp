// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// sm2_RPoint, which never reads its scalar.
#include <gtest/gtest.h>

#include "tests/support/legacy_exchange.h"

namespace zokecc_test::sm2_exchange_rpoint_test {

using namespace exchange;

namespace {

// x as it was, L zero bytes at the start of y, and the length L.
ByteString expected_record(uint32_t byte_len) {
    ecc_point_bytes out = point_record({}, ByteString{});
    std::memset(out.y, 0, byte_len);
    out.length = byte_len;
    const uint8_t *bytes = reinterpret_cast<const uint8_t *>(&out);
    return ByteString(bytes, bytes + sizeof out);
}

void expect_zero_bytes_in_y(const uint8_t *scalar, uint32_t count, uint32_t byte_len) {
    GuardedRecord<ecc_point_bytes> out;
    EXPECT_EQ(sm2_RPoint(scalar, count, out.get()), 0);
    EXPECT_EQ(to_hex(out.bytes()), to_hex(expected_record(byte_len)));
    EXPECT_TRUE(out.guards_intact());
}

}  // namespace

TEST(Sm2RPoint, KeptWritesZeroBytesToYOnly) {
    const ByteString scalar(32, 0x01);
    for (unsigned byte_len : {24u, 28u, 32u}) {
        install(prime_group().curve(byte_len));
        expect_zero_bytes_in_y(scalar.data(), 32, byte_len);
    }
    install(curve("sm2p256v1"));
    expect_zero_bytes_in_y(scalar.data(), 32, 32);
}

TEST(Sm2RPoint, KeptCountIsIgnored) {
    install(prime_group().curve(32));
    const ByteString scalar = {0x07};  // nothing behind it may be read
    for (uint32_t count : {0u, 1u, 77u, 0x80000000u, 0xFFFFFFFFu})
        expect_zero_bytes_in_y(scalar.data(), count, 32);
}

TEST(Sm2RPoint, KeptEarlierContentOfYBehindTheCoordinateStays) {
    install(prime_group().curve(24));
    ecc_point_bytes record = point_record(ByteString(65, 0x11), ByteString(65, 0x22));
    const ByteString scalar = {0x07};
    EXPECT_EQ(sm2_RPoint(scalar.data(), 1, &record), 0);
    EXPECT_EQ(to_hex(record.x, 65), to_hex(ByteString(65, 0x11)));
    EXPECT_EQ(to_hex(record.y, 65), to_hex(joined({ByteString(24, 0x00), ByteString(41, 0x22)})));
    EXPECT_EQ(record.length, 24u);
}

TEST(Sm2RPoint, KeptWithoutACurveOnlyTheLengthIsWritten) {
    uninstall();
    const ByteString scalar = {0x07};
    expect_zero_bytes_in_y(scalar.data(), 1, 0);
}

TEST(Sm2RPoint, NullPointersReturnOneWithoutACurveToo) {
    uninstall();
    GuardedRecord<ecc_point_bytes> out;
    EXPECT_EQ(sm2_RPoint(nullptr, 1, out.get()), 1);
    EXPECT_TRUE(out.unchanged());
}

}  // namespace zokecc_test::sm2_exchange_rpoint_test

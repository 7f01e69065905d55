// x-bar on the process-wide curve: 2^w and the low w bits of the coordinate, at the end of the
// curve's length.
#include <gtest/gtest.h>

#include "schemes/sm2_x_bar.h"
#include "tests/support/legacy_exchange.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::sm2_exchange_x_bar_test {

using namespace exchange;

namespace {

constexpr size_t kArea = 40;  // longer than any coordinate

// What the call leaves in an area that it finds filled with the pattern.
ByteString x_bar(const ecc_point_bytes &point, uint32_t w) {
    GuardedBuffer out(kArea);
    EXPECT_EQ(sm2_x_bar(&point, w, out.data()), 0);
    EXPECT_TRUE(out.untouched_from(kArea));
    return out.all();
}
ByteString x_bar(const ByteString &x, uint32_t w) { return x_bar(point_record(x, x), w); }

// The last w / 8 + 1 of the L bytes written, everything else as it was.
ByteString only_written_at_the_end(const ByteString &x, unsigned w) {
    ByteString out(kArea, kPattern);
    const ByteString value = model_x_bar_bytes(x, w);
    for (size_t i = x.size() - 1 - w / 8; i < x.size(); ++i) out[i] = value[i];
    return out;
}

void expect_modelled(unsigned byte_len, unsigned w) {
    install(prime_group().curve(byte_len));
    for (uint32_t seed = 1; seed <= 20; ++seed) {
        const ByteString x = test_bytes(byte_len, seed);
        EXPECT_EQ(to_hex(x_bar(x, w)), to_hex(only_written_at_the_end(x, w)))
            << "L " << byte_len << " w " << w;
    }
    for (uint8_t fill : ByteString{0x00, 0x7F, 0x80, 0xFF}) {
        const ByteString x(byte_len, fill);
        EXPECT_EQ(to_hex(x_bar(x, w)), to_hex(only_written_at_the_end(x, w)))
            << "L " << byte_len << " w " << w;
    }
}

ecc_point_bytes with_length(ecc_point_bytes point, uint32_t length) {
    point.length = length;
    return point;
}

const ByteString kX = from_hex("000102030405060708090a0b0c0d0e0ff0f1f2f3f4f5f6f7f8f9fafbfcfdfeff");
const ByteString kUntouched16(16, kPattern);
const ByteString kUntouched8(8, kPattern);

}  // namespace

TEST(Sm2XBar, Width127KeepsSevenBitsOfByte16AndSetsItsTopBit) {
    install(prime_group().curve(32));
    const ByteString low = from_hex("f1f2f3f4f5f6f7f8f9fafbfcfdfeff");
    // 0xF0 AND 0x7F, and 0x80 on top: bit 127 of x is not part of the low 127 bits.
    EXPECT_EQ(to_hex(x_bar(kX, 127)), to_hex(joined({kUntouched16, {0xF0}, low, kUntouched8})));
    ByteString clear = kX;
    clear[16] = 0x12;
    EXPECT_EQ(to_hex(x_bar(clear, 127)), to_hex(joined({kUntouched16, {0x92}, low, kUntouched8})));
}

TEST(Sm2XBar, KeptTopByteIsExactlyOneForAWidthOfWholeBytes) {
    install(prime_group().curve(32));
    EXPECT_EQ(
        to_hex(x_bar(kX, 120)),
        to_hex(joined({kUntouched16, {0x01}, from_hex("f1f2f3f4f5f6f7f8f9fafbfcfdfeff"), kUntouched8})));
    EXPECT_EQ(
        to_hex(x_bar(kX, 128)),
        to_hex(joined(
            {ByteString(15, kPattern), {0x01}, from_hex("f0f1f2f3f4f5f6f7f8f9fafbfcfdfeff"), kUntouched8})));
    EXPECT_EQ(x_bar(ByteString(32, 0xFF), 120)[16], 1);
    EXPECT_EQ(x_bar(ByteString(32, 0x00), 120)[16], 1);
}

TEST(Sm2XBar, WidthsOfTheCurveLengthsAgreeWithTheModel) {
    expect_modelled(24, 95);
    expect_modelled(28, 111);
    expect_modelled(32, 127);
}

TEST(Sm2XBar, OtherWidthsAgreeWithTheModel) {
    for (unsigned byte_len : {24u, 28u, 32u})
        for (unsigned w : {0u, 1u, 7u, 8u, 9u, 79u, 80u, 112u, 120u, 128u, 8 * byte_len - 1})
            expect_modelled(byte_len, w);
}

TEST(Sm2XBar, WidthBeyondTheCoordinateWritesNothing) {
    for (unsigned byte_len : {24u, 28u, 32u}) {
        install(prime_group().curve(byte_len));
        for (unsigned w : {8 * byte_len, 8 * byte_len + 1, 8 * byte_len + 8, 1000u, 0xFFFFFFFFu})
            EXPECT_EQ(x_bar(kX, w), ByteString(kArea, kPattern)) << "L " << byte_len << " w " << w;
    }
}

TEST(Sm2XBar, LengthComesFromTheCurveAndNotFromTheRecord) {
    for (unsigned byte_len : {24u, 28u, 32u}) {
        install(prime_group().curve(byte_len));
        ByteString x = kX;
        x.resize(byte_len);
        const ByteString expected = only_written_at_the_end(x, 95);
        for (uint32_t length : {0u, 1u, 20u, 24u, 32u, 65u, 66u, 0xFFFFFFFFu})
            EXPECT_EQ(x_bar(with_length(point_record(kX, kX), length), 95), expected) << "length " << length;
    }
}

TEST(Sm2XBar, OnlyTheFirstCoordinateCounts) {
    install(prime_group().curve(32));
    EXPECT_EQ(x_bar(point_record(kX, ByteString(32, 0x00)), 127),
              x_bar(point_record(kX, ByteString(32, 0xFF)), 127));
}

TEST(Sm2XBar, WithoutACurveNothingIsWritten) {
    uninstall();
    EXPECT_EQ(x_bar(kX, 127), ByteString(kArea, kPattern));
    EXPECT_EQ(x_bar(kX, 0), ByteString(kArea, kPattern));
}

}  // namespace zokecc_test::sm2_exchange_x_bar_test

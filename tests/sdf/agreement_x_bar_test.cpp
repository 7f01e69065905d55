// x-bar on a session's curve: 2^w and the low w bits of the coordinate, at the end of the session's
// length.
#include <gtest/gtest.h>

#include "sdf/sm2_x_bar_session.h"
#include "tests/support/model_hash.h"
#include "tests/support/session_exchange.h"

namespace zokecc_test::agreement_x_bar_test {

using namespace exchange;

namespace {

constexpr size_t kArea = 40;  // longer than any coordinate
constexpr unsigned kLengths[] = {20, 24, 28, 32};

// What the call leaves in an area that it finds filled with the pattern.
ByteString x_bar(unsigned byte_len, const ByteString &x, uint32_t w) {
    GuardedBuffer out(kArea);
    EXPECT_EQ(sm2_x_bar_session(session_on(prime_group().curve(byte_len), 0), x.data(), w, out.data()), 0);
    EXPECT_TRUE(out.untouched_from(kArea));
    return out.all();
}

// The last w / 8 + 1 of the L bytes written, everything else as it was.
ByteString only_written_at_the_end(const ByteString &x, unsigned w) {
    ByteString out(kArea, kUnused);
    const ByteString value = model_x_bar_bytes(x, w);
    for (size_t i = x.size() - 1 - w / 8; i < x.size(); ++i) out[i] = value[i];
    return out;
}

void expect_modelled(unsigned byte_len, unsigned w) {
    for (uint32_t seed = 1; seed <= 20; ++seed) {
        const ByteString x = test_bytes(byte_len, seed);
        EXPECT_EQ(to_hex(x_bar(byte_len, x, w)), to_hex(only_written_at_the_end(x, w)))
            << byte_len << " w " << w;
    }
    for (uint8_t fill : ByteString{0x00, 0x7F, 0x80, 0xFF}) {
        const ByteString x(byte_len, fill);
        EXPECT_EQ(to_hex(x_bar(byte_len, x, w)), to_hex(only_written_at_the_end(x, w)))
            << byte_len << " w " << w;
    }
}

const ByteString kX = from_hex("000102030405060708090a0b0c0d0e0ff0f1f2f3f4f5f6f7f8f9fafbfcfdfeff");

}  // namespace

TEST(Sm2XBarSession, Width127KeepsSevenBitsOfByte16AndSetsItsTopBit) {
    const ByteString before(16, kUnused);
    const ByteString behind(8, kUnused);
    const ByteString low = from_hex("f1f2f3f4f5f6f7f8f9fafbfcfdfeff");
    EXPECT_EQ(to_hex(x_bar(32, kX, 127)), to_hex(joined({before, {0xF0}, low, behind})));
    ByteString clear = kX;
    clear[16] = 0x12;
    EXPECT_EQ(to_hex(x_bar(32, clear, 127)), to_hex(joined({before, {0x92}, low, behind})));
}

TEST(Sm2XBarSession, KeptTopByteIsExactlyOneForAWidthOfWholeBytes) {
    for (uint8_t fill : ByteString{0x00, 0x55, 0xFF}) {
        const ByteString x(32, fill);
        EXPECT_EQ(
            to_hex(x_bar(32, x, 120)),
            to_hex(joined({ByteString(16, kUnused), {0x01}, ByteString(15, fill), ByteString(8, kUnused)})));
        EXPECT_EQ(
            to_hex(x_bar(32, x, 128)),
            to_hex(joined({ByteString(15, kUnused), {0x01}, ByteString(16, fill), ByteString(8, kUnused)})));
    }
}

TEST(Sm2XBarSession, WidthsOfTheCurveLengthsAgreeWithTheModel) {
    expect_modelled(20, 79);
    expect_modelled(24, 95);
    expect_modelled(28, 111);
    expect_modelled(32, 127);
}

TEST(Sm2XBarSession, OtherWidthsAgreeWithTheModel) {
    for (unsigned byte_len : kLengths)
        for (unsigned w : {0u, 1u, 7u, 8u, 9u, 79u, 80u, 112u, 120u, 128u, 8 * byte_len - 1}) {
            ASSERT_LT(w, 8 * byte_len);
            expect_modelled(byte_len, w);
        }
}

TEST(Sm2XBarSession, WidthBeyondTheCoordinateWritesNothing) {
    for (unsigned byte_len : kLengths)
        for (unsigned w : {8 * byte_len, 8 * byte_len + 1, 8 * byte_len + 8, 1000u, 0xFFFFFFFFu})
            EXPECT_EQ(x_bar(byte_len, kX, w), ByteString(kArea, kUnused)) << "L " << byte_len << " w " << w;
}

TEST(Sm2XBarSession, LengthComesFromTheSession) {
    for (unsigned byte_len : kLengths) {
        ByteString x = kX;
        x.resize(byte_len);
        EXPECT_EQ(x_bar(byte_len, kX, 79), only_written_at_the_end(x, 79)) << byte_len;
    }
}

TEST(Sm2XBarSession, CoordinateNeedsNoAlignment) {
    const ByteString shifted = joined({{0x77}, kX});
    GuardedBuffer out(kArea);
    sm2_x_bar_session(session_on(prime_group().curve(32), 0), shifted.data() + 1, 127, out.data());
    EXPECT_EQ(out.all(), x_bar(32, kX, 127));
}

}  // namespace zokecc_test::agreement_x_bar_test

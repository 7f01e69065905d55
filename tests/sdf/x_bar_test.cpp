// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// x-bar in both generations of calls: 2^w and the low w bits of the coordinate, at the end of the curve's
// length.
#include <gtest/gtest.h>

#include "schemes/records.h"
#include "sdf/agreement_steps.h"
#include "tests/support/legacy_exchange.h"
#include "tests/support/model_hash.h"
#include "tests/support/session_exchange.h"

namespace zokecc_test::x_bar_test {

using namespace exchange;

namespace {

constexpr size_t kArea = 40;  // longer than any coordinate

const ByteString kX = from_hex("000102030405060708090a0b0c0d0e0ff0f1f2f3f4f5f6f7f8f9fafbfcfdfeff");
const ByteString kUntouched8(8, kFill), kUntouched15(15, kFill), kUntouched16(16, kFill);

// The result of a call in a buffer filled with the pattern, on a curve of byte_len bytes.
struct Process {
    static constexpr unsigned kLengths[] = {24, 28, 32};
    static ByteString x_bar(const ecc_point_bytes &point, uint32_t w) {
        GuardedBuffer out(kArea);
        EXPECT_EQ(sm2_x_bar(&point, w, out.data()), 0);
        EXPECT_TRUE(out.untouched_from(kArea));
        return out.all();
    }
    static ByteString x_bar(unsigned byte_len, const ByteString &x, uint32_t w) {
        install(prime_group().curve(byte_len));
        return x_bar(point_record(x, x), w);
    }
};
struct OfSession {
    static constexpr unsigned kLengths[] = {20, 24, 28, 32};
    static ByteString x_bar(unsigned byte_len, const uint8_t *x, uint32_t w) {
        GuardedBuffer out(kArea);
        EXPECT_EQ(sm2_x_bar_session(shared_session(prime_group().curve(byte_len), 0), x, w, out.data()), 0);
        EXPECT_TRUE(out.untouched_from(kArea));
        return out.all();
    }
    static ByteString x_bar(unsigned byte_len, const ByteString &x, uint32_t w) {
        return x_bar(byte_len, x.data(), w);
    }
};

template <class G>
class XBar : public testing::Test {};
using BothXBars = testing::Types<Process, OfSession>;
TYPED_TEST_SUITE(XBar, BothXBars);

// Only the last w / 8 + 1 of the L bytes are written.
ByteString only_written_at_the_end(const ByteString &x, unsigned w) {
    ByteString out(kArea, kFill);
    const ByteString value = model_x_bar_bytes(x, w);
    for (size_t i = x.size() - 1 - w / 8; i < x.size(); ++i) out[i] = value[i];
    return out;
}

template <class G>
void expect_top_byte_of_one() {
    for (const ByteString &x : {kX, ByteString(32, 0x00), ByteString(32, 0x55), ByteString(32, 0xFF)}) {
        const ByteString last15(x.end() - 15, x.end()), last16(x.end() - 16, x.end());
        EXPECT_EQ(to_hex(G::x_bar(32, x, 120)), to_hex(joined({kUntouched16, {0x01}, last15, kUntouched8})));
        EXPECT_EQ(to_hex(G::x_bar(32, x, 128)), to_hex(joined({kUntouched15, {0x01}, last16, kUntouched8})));
    }
}

}  // namespace

// 0xF0 AND 0x7F, plus 0x80: bit 127 of x is not one of the low 127 bits.
TYPED_TEST(XBar, Width127KeepsSevenBitsOfByte16AndSetsItsTopBit) {
    const ByteString low = from_hex("f1f2f3f4f5f6f7f8f9fafbfcfdfeff");
    EXPECT_EQ(to_hex(TypeParam::x_bar(32, kX, 127)),
              to_hex(joined({kUntouched16, {0xF0}, low, kUntouched8})));
    ByteString clear = kX;
    clear[16] = 0x12;
    EXPECT_EQ(to_hex(TypeParam::x_bar(32, clear, 127)),
              to_hex(joined({kUntouched16, {0x92}, low, kUntouched8})));
}

TEST(Sm2XBar, KeptTopByteIsExactlyOneForAWidthOfWholeBytes) { expect_top_byte_of_one<Process>(); }
TEST(Sm2XBarSession, KeptTopByteIsExactlyOneForAWidthOfWholeBytes) { expect_top_byte_of_one<OfSession>(); }

// The widths of the curves' lengths, and others.
TYPED_TEST(XBar, WidthsAgreeWithTheModel) {
    for (unsigned byte_len : TypeParam::kLengths)
        for (unsigned w :
             {4 * byte_len - 1, 0u, 1u, 7u, 8u, 9u, 79u, 80u, 112u, 120u, 128u, 8 * byte_len - 1}) {
            SCOPED_TRACE("L " + std::to_string(byte_len) + " w " + std::to_string(w));
            for (uint32_t seed = 1; seed <= 20; ++seed) {
                const ByteString x = test_bytes(byte_len, seed);
                EXPECT_EQ(to_hex(TypeParam::x_bar(byte_len, x, w)), to_hex(only_written_at_the_end(x, w)));
            }
            for (uint8_t fill : ByteString{0x00, 0x7F, 0x80, 0xFF}) {
                const ByteString x(byte_len, fill);
                EXPECT_EQ(to_hex(TypeParam::x_bar(byte_len, x, w)), to_hex(only_written_at_the_end(x, w)));
            }
        }
}

TYPED_TEST(XBar, WidthBeyondTheCoordinateWritesNothing) {
    for (unsigned byte_len : TypeParam::kLengths)
        for (unsigned w : {8 * byte_len, 8 * byte_len + 1, 8 * byte_len + 8, 1000u, 0xFFFFFFFFu})
            EXPECT_EQ(TypeParam::x_bar(byte_len, kX, w), ByteString(kArea, kFill))
                << "L " << byte_len << " w " << w;
}

TEST(Sm2XBar, LengthComesFromTheCurveAndNotFromTheRecord) {
    for (unsigned byte_len : Process::kLengths) {
        install(prime_group().curve(byte_len));
        ByteString x = kX;
        x.resize(byte_len);
        for (uint32_t length : {0u, 1u, 20u, 24u, 32u, 65u, 66u, 0xFFFFFFFFu}) {
            ecc_point_bytes point = point_record(kX, kX);
            point.length = length;
            EXPECT_EQ(Process::x_bar(point, 95), only_written_at_the_end(x, 95)) << "length " << length;
        }
    }
}

TEST(Sm2XBarSession, LengthComesFromTheSession) {
    for (unsigned byte_len : OfSession::kLengths) {
        ByteString x = kX;
        x.resize(byte_len);
        EXPECT_EQ(OfSession::x_bar(byte_len, kX, 79), only_written_at_the_end(x, 79)) << byte_len;
    }
}

TEST(Sm2XBar, OnlyTheFirstCoordinateCounts) {
    install(prime_group().curve(32));
    EXPECT_EQ(Process::x_bar(point_record(kX, ByteString(32, 0x00)), 127),
              Process::x_bar(point_record(kX, ByteString(32, 0xFF)), 127));
}

TEST(Sm2XBar, WithoutACurveNothingIsWritten) {
    uninstall();
    EXPECT_EQ(Process::x_bar(point_record(kX, kX), 127), ByteString(kArea, kFill));
    EXPECT_EQ(Process::x_bar(point_record(kX, kX), 0), ByteString(kArea, kFill));
}

TEST(Sm2XBarSession, CoordinateNeedsNoAlignment) {
    const ByteString shifted = joined({{0x77}, kX});
    EXPECT_EQ(OfSession::x_bar(32, shifted.data() + 1, 127), OfSession::x_bar(32, kX, 127));
}

}  // namespace zokecc_test::x_bar_test

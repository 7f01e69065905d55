// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The diagnostic dump, character by character.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace zokecc_test::dump_test {
namespace {

// Dumps the bytes 0xA0, 0xA1, ... and returns what was printed.
std::string dump(const char *label, int32_t count) {
    uint8_t bytes[128];
    for (unsigned i = 0; i < sizeof bytes; ++i) bytes[i] = static_cast<uint8_t>(0xA0 + i);
    testing::internal::CaptureStdout();
    print_str_array(label, bytes, count);
    std::fflush(stdout);
    return testing::internal::GetCapturedStdout();
}

const std::string kFirstLine = "A0A1A2A3 A4A5A6A7 A8A9AAAB ACADAEAF B0B1B2B3 B4B5B6B7 B8B9BABB BCBDBEBF \n";
const std::string kSecondLine = "C0C1C2C3 C4C5C6C7 C8C9CACB CCCDCECF D0D1D2D3 D4D5D6D7 D8D9DADB DCDDDEDF \n";

TEST(PrintStrArray, NoBytesPrintTheLabelLineAlone) { EXPECT_EQ("key(0) :\n", dump("key", 0)); }

TEST(PrintStrArray, NullLabelAndNoBytesPrintNothing) {
    EXPECT_EQ("", dump(nullptr, 0));
    testing::internal::CaptureStdout();
    print_str_array(nullptr, nullptr, 0);
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
}

TEST(PrintStrArray, EmptyLabelStillPrintsItsLine) { EXPECT_EQ("(1) :\nA0\n", dump("", 1)); }

TEST(PrintStrArray, NullLabelPrintsOnlyTheBytes) { EXPECT_EQ("A0\n", dump(nullptr, 1)); }

TEST(PrintStrArray, ThreeBytesHaveNoSpace) { EXPECT_EQ("A0A1A2\n", dump(nullptr, 3)); }

TEST(PrintStrArray, FourthByteIsFollowedByASpace) {
    EXPECT_EQ("A0A1A2A3 \n", dump(nullptr, 4));
    EXPECT_EQ("A0A1A2A3 A4\n", dump(nullptr, 5));
}

TEST(PrintStrArray, ThirtyOneBytesEndInOneNewline) {
    EXPECT_EQ("x(31) :\n" + kFirstLine.substr(0, 69) + "\n", dump("x", 31));
}

TEST(PrintStrArray, FullLineHasNoSecondNewline) { EXPECT_EQ("x(32) :\n" + kFirstLine, dump("x", 32)); }

TEST(PrintStrArray, ThirtyThirdByteStartsALine) {
    EXPECT_EQ("x(33) :\n" + kFirstLine + "C0\n", dump("x", 33));
}

TEST(PrintStrArray, TwoFullLines) { EXPECT_EQ("x(64) :\n" + kFirstLine + kSecondLine, dump("x", 64)); }

TEST(PrintStrArray, SixtyFiveBytesTakeThreeLines) {
    EXPECT_EQ("x(65) :\n" + kFirstLine + kSecondLine + "E0\n", dump("x", 65));
}

TEST(PrintStrArray, SmallBytesHaveTwoDigits) {
    const uint8_t bytes[] = {0x00, 0x01, 0x0F, 0xFF};
    testing::internal::CaptureStdout();
    print_str_array("low", bytes, 4);
    EXPECT_EQ("low(4) :\n00010FFF \n", testing::internal::GetCapturedStdout());
}

TEST(PrintStrArray, PercentSignsOfTheLabelArePrinted) {
    EXPECT_EQ("100%d %s(1) :\nA0\n", dump("100%d %s", 1));
}

TEST(PrintStrArray, NegativeCountPrintsNoByte) { EXPECT_EQ("n(-1) :\n\n", dump("n", -1)); }

}  // namespace
}  // namespace zokecc_test::dump_test

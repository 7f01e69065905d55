// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Conversions between integers and big-endian byte strings.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/numbers.h"
#include "tests/support/guarded_buffer.h"

namespace zokecc_test::octets_test {
namespace {

constexpr uint32_t kUnset = 0xDEADBEEFu;

mint read(const ByteString &bytes) {
    GuardedRecord<mint> out;
    EXPECT_EQ(0, octetstring_to_mint(bytes.data(), static_cast<uint32_t>(bytes.size()), out.get()));
    EXPECT_TRUE(out.guards_intact());
    return *out.get();
}

// The result of a conversion to bytes, in a buffer of 100 bytes.
struct Written {
    int32_t returned;
    uint32_t len = kUnset;
    GuardedBuffer buffer{100};

    std::string hex(size_t count) const { return to_hex(buffer.first(count)); }
};

Written minimal(const mint &value, uint32_t capacity) {
    Written w{};
    mint given = value;
    w.returned = mint_to_octetstring(&value, capacity, w.buffer.data(), &w.len);
    EXPECT_TRUE(same_record(given, value));
    return w;
}

Written fixed(const mint &value, uint32_t fixed_len, uint32_t capacity) {
    Written w{};
    mint given = value;
    w.returned = mint_to_fixedlen_os(&value, fixed_len, capacity, &w.len, w.buffer.data());
    EXPECT_TRUE(same_record(given, value));
    return w;
}

TEST(OctetstringToMint, ThirtyTwoZeroBytesGiveLenZero) {
    EXPECT_TRUE(same_record(mint{}, read(ByteString(32, 0))));
}

TEST(OctetstringToMint, FourBytesGiveOneWord) {
    EXPECT_TRUE(same_record(mint{{1}, 1}, read(from_hex("00000001"))));
}

TEST(OctetstringToMint, FiveBytesReachTheSecondWord) {
    EXPECT_TRUE(same_record(mint{{0x02030405u, 0x01u}, 2}, read(from_hex("0102030405"))));
}

TEST(OctetstringToMint, EmptyStringNeedsNoPointer) {
    GuardedRecord<mint> out;
    EXPECT_EQ(0, octetstring_to_mint(nullptr, 0, out.get()));
    EXPECT_TRUE(same_record(mint{}, *out.get()));
    EXPECT_TRUE(out.guards_intact());
}

TEST(OctetstringToMint, LeadingZeroBytesVanish) {
    EXPECT_TRUE(same_record(mint{{0x80000000u}, 1}, read(from_hex("000000000000000080000000"))));
}

TEST(OctetstringToMint, EveryLengthUpToACapacityFullOfBytes) {
    HardWords draw(101);
    ByteString bytes;
    for (uint32_t n = 0; n <= 76; ++n) {
        EXPECT_TRUE(same_record(mint_from_hex(to_hex(bytes)), read(bytes))) << n << " bytes";
        bytes.push_back(static_cast<uint8_t>(draw.word() >> 24));
    }
}

TEST(OctetstringToMint, LongerStringKeepsTheLastSeventySixBytes) {
    for (size_t n : {77u, 78u, 79u, 80u, 81u, 200u}) {
        ByteString bytes(n, 0xEE), tail;
        for (size_t i = n - 76; i < n; ++i) bytes[i] = static_cast<uint8_t>(n - i);
        tail.assign(bytes.end() - 76, bytes.end());
        EXPECT_TRUE(same_record(mint_from_hex(to_hex(tail)), read(bytes))) << n << " bytes";
    }
}

TEST(OctetstringToMint, LongerStringWithZeroTailGivesLenZero) {
    ByteString bytes(90, 0);
    for (size_t i = 0; i < 14; ++i) bytes[i] = 0xFF;
    EXPECT_TRUE(same_record(mint{}, read(bytes)));
}

TEST(MintToOctetstring, ZeroWithoutWordsWritesNothing) {
    for (uint32_t capacity : {0u, 1u, 32u}) {
        Written w = minimal(empty_zero(), capacity);
        EXPECT_EQ(0, w.returned);
        EXPECT_EQ(0u, w.len);
        EXPECT_TRUE(w.buffer.untouched());
    }
}

TEST(MintToOctetstring, ZeroInOneWordWritesOneZeroByte) {
    Written w = minimal(word_zero(), 1);
    EXPECT_EQ(0, w.returned);
    EXPECT_EQ(1u, w.len);
    EXPECT_EQ("00", w.hex(1));
    EXPECT_TRUE(w.buffer.untouched_from(1));
}

TEST(MintToOctetstring, NegativeLenWritesNothing) {
    Written w = minimal(counting_words(0xFFFFFFFFu), 100);
    EXPECT_EQ(0, w.returned);
    EXPECT_EQ(0u, w.len);
    EXPECT_TRUE(w.buffer.untouched());
}

TEST(MintToOctetstring, TopWordLosesItsLeadingZeroBytes) {
    const char *expected[] = {"1189abcdef", "112289abcdef", "11223389abcdef", "1122334489abcdef"};
    for (size_t k = 0; k < 4; ++k) {
        mint value = of_words({0x89ABCDEFu, 0x11223344u >> (24 - 8 * k)});
        Written w = minimal(value, 100);
        EXPECT_EQ(0, w.returned);
        EXPECT_EQ(5 + k, w.len);
        EXPECT_EQ(expected[k], w.hex(5 + k));
        EXPECT_TRUE(w.buffer.untouched_from(5 + k));
    }
}

TEST(MintToOctetstring, CapacityOneByteShortFailsAndLeavesTheLength) {
    for (unsigned shift : {0u, 8u, 16u, 24u}) {
        mint value = of_words({0x89ABCDEFu, 0xFFu << shift});
        uint32_t needed = 5 + shift / 8;
        Written w = minimal(value, needed - 1);
        EXPECT_EQ(1, w.returned);
        EXPECT_EQ(kUnset, w.len);
        EXPECT_TRUE(w.buffer.untouched());
        EXPECT_EQ(0, minimal(value, needed).returned);
    }
}

TEST(MintToOctetstring, ZeroCapacityTakesOnlyTheEmptyString) {
    EXPECT_EQ(1, minimal(one_word(1), 0).returned);
    EXPECT_EQ(1, minimal(word_zero(), 0).returned);
}

TEST(MintToOctetstring, ZeroTopWordCountsOneByte) {
    Written w = minimal(of_words({0x12345678u, 0}), 5);
    EXPECT_EQ(0, w.returned);
    EXPECT_EQ(5u, w.len);
    EXPECT_EQ("0012345678", w.hex(5));
    EXPECT_TRUE(w.buffer.untouched_from(5));
    EXPECT_EQ(1, minimal(of_words({0x12345678u, 0}), 4).returned);
}

TEST(MintToOctetstring, LenAboveTheRecordReadsNineteenWords) {
    Written w = minimal(counting_words(1000), 100);
    EXPECT_EQ(0, w.returned);
    EXPECT_EQ(73u, w.len);
    EXPECT_EQ("13"
              "00000012"
              "00000011",
              w.hex(9));
    EXPECT_TRUE(w.buffer.untouched_from(73));
}

TEST(MintToOctetstring, EveryTrimmedNumberComesBack) {
    HardWords draw(102);
    for (int round = 0; round < 300; ++round) {
        mint value = draw.trimmed(MINT_WORDS);
        Written w = minimal(value, 76);
        ASSERT_EQ(0, w.returned) << draw.where();
        ASSERT_EQ((Natural(value).bit_length() + 7) / 8, w.len) << draw.where();
        ASSERT_TRUE(w.buffer.untouched_from(w.len)) << draw.where();
        ASSERT_TRUE(is_value(read(w.buffer.first(w.len)), value)) << draw.where();
    }
}

TEST(MintToFixedlenOs, OneIsPaddedToThirtyTwoBytes) {
    Written w = fixed(one_word(1), 32, 32);
    EXPECT_EQ(0, w.returned);
    EXPECT_EQ(32u, w.len);
    EXPECT_EQ(std::string(62, '0') + "01", w.hex(32));
    EXPECT_TRUE(w.buffer.untouched_from(32));
}

TEST(MintToFixedlenOs, ValueWiderThanTheFieldGivesTwo) {
    std::string wide = "01" + std::string(62, '0') + "7f";
    Written w = fixed(of_hex(wide), 32, 100);
    EXPECT_EQ(2, w.returned);
    EXPECT_EQ(0u, w.len);
    EXPECT_EQ(wide, w.hex(33));  // the minimal encoding remains in the buffer
    EXPECT_TRUE(w.buffer.untouched_from(33));
}

TEST(MintToFixedlenOs, CapacityBelowTheValueGivesOne) {
    Written w = fixed(of_hex("010203"), 32, 2);
    EXPECT_EQ(1, w.returned);
    EXPECT_EQ(0u, w.len);
    EXPECT_TRUE(w.buffer.untouched());
}

TEST(MintToFixedlenOs, CapacityIsTestedBeforeTheFixedLength) {
    Written w = fixed(of_hex("0102030405"), 4, 4);
    EXPECT_EQ(1, w.returned);
    EXPECT_EQ(0u, w.len);
    EXPECT_TRUE(w.buffer.untouched());
}

TEST(MintToFixedlenOs, KeptCapacityBelowTheFixedLengthStillPads) {
    Written w = fixed(of_hex("010203"), 8, 3);
    EXPECT_EQ(0, w.returned);
    EXPECT_EQ(8u, w.len);
    EXPECT_EQ("0000000000010203", w.hex(8));
    EXPECT_TRUE(w.buffer.untouched_from(8));
}

TEST(MintToFixedlenOs, EveryFormOfZeroFillsTheField) {
    for (const mint &zero : {empty_zero(), word_zero(), counting_words(0x80000000u)}) {
        Written w = fixed(zero, 20, 20);
        EXPECT_EQ(0, w.returned);
        EXPECT_EQ(20u, w.len);
        EXPECT_EQ(std::string(40, '0'), w.hex(20));
        EXPECT_TRUE(w.buffer.untouched_from(20));
    }
}

TEST(MintToFixedlenOs, FieldOfNoBytesTakesOnlyTheEmptyString) {
    Written w = fixed(empty_zero(), 0, 100);
    EXPECT_EQ(0, w.returned);
    EXPECT_EQ(0u, w.len);
    EXPECT_TRUE(w.buffer.untouched());
    w = fixed(word_zero(), 0, 100);
    EXPECT_EQ(2, w.returned);
    EXPECT_EQ(0u, w.len);
}

TEST(MintToFixedlenOs, ExactWidthIsNotPadded) {
    Written w = fixed(of_hex("8102030405"), 5, 5);
    EXPECT_EQ(0, w.returned);
    EXPECT_EQ(5u, w.len);
    EXPECT_EQ("8102030405", w.hex(5));
    EXPECT_TRUE(w.buffer.untouched_from(5));
}

TEST(MintToFixedlenOs, EveryWidthOfFieldAndValue) {
    std::string digits = "8182838485868788898a8b8c8d8e8f9091929394";
    for (uint32_t bytes = 1; bytes <= 20; ++bytes)
        for (uint32_t field = bytes; field <= 24; ++field) {
            std::string value = digits.substr(0, 2 * bytes);
            Written w = fixed(of_hex(value), field, field);
            ASSERT_EQ(0, w.returned);
            ASSERT_EQ(field, w.len);
            ASSERT_EQ(std::string(2 * (field - bytes), '0') + value, w.hex(field));
            ASSERT_TRUE(w.buffer.untouched_from(field));
        }
}

}  // namespace
}  // namespace zokecc_test::octets_test

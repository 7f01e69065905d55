// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// DER: only the one valid form is accepted, and what is written can be read back.
#include "der.h"

#include <gtest/gtest.h>

#include "tests/support/hex.h"

namespace {

using zokecc_test::ByteString;
using zokecc_test::from_hex;
using zokecc_test::to_hex;

der_reader reader_of(const ByteString &bytes) { return {bytes.data(), bytes.size()}; }

TEST(DerRead, TakesOneElementAndLeavesTheRest) {
    const ByteString bytes = from_hex("0403010203ff");
    der_reader in = reader_of(bytes), content{};
    ASSERT_EQ(1, der_read(&in, DER_OCTET_STRING, &content));
    EXPECT_EQ(1, der_equals(&content, bytes.data() + 2, 3));
    EXPECT_EQ(1u, in.left);
    EXPECT_EQ(0xff, in.at[0]);
}

TEST(DerRead, RefusesEveryOtherFormOfALength) {
    for (const char *bad :
         {"", "04", "0480", "048000000000", "048100", "04810100", "04817f", "0481ff", "04820080", "04820100",
          "0483000100", "0484ffffffff", "048500000000010a", "04fe", "04ff01", "0402aa", "0301aa"}) {
        const ByteString bytes = from_hex(bad);
        der_reader in = reader_of(bytes), content{};
        EXPECT_EQ(0, der_read(&in, DER_OCTET_STRING, &content)) << bad;
        EXPECT_EQ(bytes.size(), in.left) << bad;
    }
}

TEST(DerRead, RefusesLongFormsOfALengthAlsoWhereAllOfItIsThere) {
    for (const char *bad :
         {"0480", "048100", "04817f", "04820080", "048200ff", "0483000100", "048400000100"}) {
        ByteString bytes = from_hex(bad);
        bytes.resize(600);
        der_reader in = reader_of(bytes), content{};
        EXPECT_EQ(0, der_read(&in, DER_OCTET_STRING, &content)) << bad;
    }
    ByteString shortest = from_hex("048180");
    shortest.resize(3 + 128);
    der_reader in = reader_of(shortest), content{};
    EXPECT_EQ(1, der_read(&in, DER_OCTET_STRING, &content));
}

TEST(DerReadUint, PadsOnTheLeft) {
    for (auto [text, want] : {std::pair{"020100", "00000000"},
                              {"02017f", "0000007f"},
                              {"02020080", "00000080"},
                              {"0204010203aa", "010203aa"},
                              {"020500ffffffff", "ffffffff"}}) {
        const ByteString bytes = from_hex(text);
        der_reader in = reader_of(bytes);
        uint8_t out[4] = {9, 9, 9, 9};
        ASSERT_EQ(1, der_read_uint(&in, out, sizeof out)) << text;
        EXPECT_EQ(want, to_hex(out, sizeof out)) << text;
        EXPECT_EQ(0u, in.left) << text;
    }
}

TEST(DerReadUint, RefusesNegativeEmptyPaddedAndTooLongNumbers) {
    for (const char *bad : {"0200", "020180", "0201ff", "02020001", "0202007f", "0203000080",
                            "02050100000000", "02060000ffffffff", "040101", "0202ff"}) {
        const ByteString bytes = from_hex(bad);
        der_reader in = reader_of(bytes);
        uint8_t out[4] = {9, 9, 9, 9};
        EXPECT_EQ(0, der_read_uint(&in, out, sizeof out)) << bad;
        EXPECT_EQ("09090909", to_hex(out, sizeof out)) << bad;
        EXPECT_EQ(bytes.size(), in.left) << bad;
    }
}

TEST(DerReadBits, RefusesUnusedBitsAndNothing) {
    for (const char *bad : {"0300", "03020180", "030208ff", "0403000102"}) {
        const ByteString bytes = from_hex(bad);
        der_reader in = reader_of(bytes), content{};
        EXPECT_EQ(0, der_read_bits(&in, &content)) << bad;
    }
    const ByteString good = from_hex("03020004");
    der_reader in = reader_of(good), content{};
    ASSERT_EQ(1, der_read_bits(&in, &content));
    EXPECT_EQ(1u, content.left);
}

TEST(DerWriter, WritesNumbersInTheirShortestForm) {
    for (auto [number, want] : {std::pair{"", "020100"},
                                {"0000", "020100"},
                                {"007f", "02017f"},
                                {"80", "02020080"},
                                {"0001ff", "020201ff"}}) {
        uint8_t buffer[8];
        der_writer w;
        const ByteString bytes = from_hex(number);
        der_begin(&w, buffer, sizeof buffer);
        der_put_uint(&w, bytes.data(), bytes.size());
        EXPECT_EQ(want, to_hex(buffer, der_finish(&w))) << number;
    }
}

TEST(DerWriter, EveryLengthIsReadAgainAndOneByteLessDoesNotFit) {
    for (size_t size : {0u, 1u, 127u, 128u, 255u, 256u, 65535u, 65536u}) {
        const ByteString content(size, 0x5a);
        const size_t header = size < 128 ? 2 : size < 256 ? 3 : size < 65536 ? 4 : 5;
        for (size_t room : {header + size, header + size - 1}) {
            ByteString buffer(room + 1, 0xee);
            der_writer w;
            der_begin(&w, buffer.data(), room);
            der_put_value(&w, DER_OCTET_STRING, content.data(), size);
            const size_t written = der_finish(&w);
            EXPECT_EQ(0xee, buffer[room]);
            ASSERT_EQ(room == header + size ? room : 0, written) << size;
            if (written == 0) continue;
            der_reader in{buffer.data(), written}, read{};
            ASSERT_EQ(1, der_read(&in, DER_OCTET_STRING, &read)) << size;
            EXPECT_EQ(1, der_equals(&read, content.data(), size)) << size;
        }
    }
}

TEST(DerWriter, StaysFailedAfterAnOverflow) {
    uint8_t buffer[8];
    der_writer w;
    const uint8_t nine[9] = {};
    der_begin(&w, buffer, sizeof buffer);
    der_put(&w, nine, sizeof nine);
    der_put(&w, nine, 1);
    der_wrap(&w, DER_SEQUENCE, 0);
    EXPECT_EQ(0u, der_finish(&w));
}

}  // namespace

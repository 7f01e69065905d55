// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Signatures and ciphertexts in all forms.
#include "formats.h"

#include <gtest/gtest.h>

#include <cstring>

#include "tests/support/hex.h"

namespace {

using zokecc_test::ByteString;
using zokecc_test::from_hex;
using zokecc_test::to_hex;

const named_curve &sm2() { return *curve_by_name("sm2"); }

TEST(SignatureForms, DerTrimsAndPadsTheNumbers) {
    ECCSignature sig{}, again{};
    sig.r[31] = 0x7f;
    sig.s[0] = 0x80;
    uint8_t out[MAX_SIGNATURE_BYTES];
    const size_t size = write_signature(&sm2(), SIGNATURE_DER, &sig, out);
    EXPECT_EQ("302602017f022100"
              "80" +
                  std::string(62, '0'),
              to_hex(out, size));
    ASSERT_EQ(nullptr, read_signature(&sm2(), SIGNATURE_DER, out, size, &again));
    EXPECT_EQ(0, std::memcmp(&sig, &again, sizeof sig));
}

TEST(SignatureForms, LongestOneFitsAndNoPartOfItIsRead) {
    ECCSignature sig{}, again{};
    std::memset(sig.r, 0xff, 32);
    std::memset(sig.s, 0xff, 32);
    uint8_t out[MAX_SIGNATURE_BYTES];
    const size_t size = write_signature(&sm2(), SIGNATURE_DER, &sig, out);
    EXPECT_EQ(72u, size);
    for (size_t part = 0; part < size; ++part)
        ASSERT_NE(nullptr, read_signature(&sm2(), SIGNATURE_DER, out, part, &again)) << part;
    EXPECT_EQ(nullptr, read_signature(&sm2(), SIGNATURE_DER, out, size, &again));
    EXPECT_EQ(64u, write_signature(&sm2(), SIGNATURE_RAW, &sig, out));
    EXPECT_EQ(nullptr, read_signature(&sm2(), SIGNATURE_RAW, out, 64, &again));
    EXPECT_NE(nullptr, read_signature(&sm2(), SIGNATURE_RAW, out, 63, &again));
    EXPECT_NE(nullptr, read_signature(&sm2(), SIGNATURE_RAW, out, 65, &again));
}

// 33 bytes that do not start with 00 are a number too large for the curve.
TEST(SignatureForms, NumbersThatAreTooLongAreRefused) {
    ByteString der = from_hex("30260201010221"
                              "01" +
                              std::string(64, '0'));
    ECCSignature sig;
    EXPECT_NE(nullptr, read_signature(&sm2(), SIGNATURE_DER, der.data(), der.size(), &sig));
    der[7] = 0;
    der[8] = 0x80;
    EXPECT_EQ(nullptr, read_signature(&sm2(), SIGNATURE_DER, der.data(), der.size(), &sig));
}

struct Case {
    ByteString c2, c3 = ByteString(CHECK_BYTES, 0xc3);
    cipher_parts parts{};
    explicit Case(size_t size) : c2(size, 0xc2) {
        parts.x[5] = 0x11;
        std::memset(parts.y, 0xff, 32);
        parts.c2 = c2.data();
        parts.c2_size = size;
        parts.c3 = c3.data();
    }
};

TEST(CipherForms, StandAsTheyAreDescribed) {
    const Case one(2);
    const std::string x = "0000000000"
                          "11" +
                          std::string(52, '0'),
                      y(64, 'f');
    std::string c3;
    for (int i = 0; i < CHECK_BYTES; ++i) c3 += "c3";
    const std::string want[] = {"3066"
                                "021b11" +
                                    std::string(52, '0') + "022100" + y + "0420" + c3 + "0402c2c2",
                                "04" + x + y + c3 + "c2c2", "04" + x + y + "c2c2" + c3, x + y + c3 + "c2c2",
                                x + y + "c2c2" + c3};
    for (int form = CIPHER_DER; form <= CIPHER_C1C2C3_NO04; ++form) {
        uint8_t out[256];
        const size_t size = write_cipher(&sm2(), static_cast<cipher_form>(form), &one.parts, out, sizeof out);
        EXPECT_EQ(want[form], to_hex(out, size)) << cipher_forms[form];
    }
}

TEST(CipherForms, AreReadAgainAndNoPartOfThemIs) {
    for (int i = CIPHER_DER; i <= CIPHER_C1C2C3_NO04; ++i) {
        const cipher_form form = static_cast<cipher_form>(i);
        for (size_t size : {1u, 30u, 31u, 200u, 70000u}) {
            const Case one(size);
            ByteString out(size + CIPHER_OVERHEAD);
            out.resize(write_cipher(&sm2(), form, &one.parts, out.data(), out.size()));
            ASSERT_NE(0u, out.size());
            cipher_parts got;
            ASSERT_EQ(nullptr, read_cipher(&sm2(), form, out.data(), out.size(), &got));
            EXPECT_EQ(to_hex(one.parts.x, 32) + to_hex(one.parts.y, 32),
                      to_hex(got.x, 32) + to_hex(got.y, 32));
            EXPECT_EQ(one.c2, ByteString(got.c2, got.c2 + got.c2_size));
            EXPECT_EQ(one.c3, ByteString(got.c3, got.c3 + CHECK_BYTES));
            ByteString small(out.size() - 1);
            EXPECT_EQ(0u, write_cipher(&sm2(), form, &one.parts, small.data(), small.size()));
            // A raw one contains no length: it is refused only if there is no message left.
            const size_t least = form == CIPHER_DER ? out.size() : out.size() - size + 1;
            for (size_t part = 0; part < least && part < 300; ++part)
                ASSERT_NE(nullptr, read_cipher(&sm2(), form, out.data(), part, &got)) << part;
        }
    }
}

TEST(CipherForms, DerWithoutMessageOrWithAnotherCheckValueIsRefused) {
    const std::string C1 = "020101"
                           "020101";
    std::string c3;
    for (int i = 0; i < CHECK_BYTES; ++i) c3 += "c3";
    cipher_parts got;
    for (const std::string &bad :
         {"302a" + C1 + "0420" + c3 + "0400", "302a" + C1 + "041f" + c3.substr(2) + "0401c2",
          "302b" + C1 + "0401c2" + "0420" + c3, "302d" + C1 + "0420" + c3 + "0401c20400"}) {
        const ByteString bytes = from_hex(bad);
        EXPECT_NE(nullptr, read_cipher(&sm2(), CIPHER_DER, bytes.data(), bytes.size(), &got)) << bad;
    }
    const ByteString good = from_hex("302b" + C1 + "0420" + c3 + "0401c2");
    EXPECT_EQ(nullptr, read_cipher(&sm2(), CIPHER_DER, good.data(), good.size(), &got));
}

}  // namespace

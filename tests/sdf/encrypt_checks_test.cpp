// What SDF_ExternalEncrytp_ECC and SDF_ExternalDecrypt_ECC refuse, one reason at a time. Pairs of
// reasons are in encrypt_order_test.cpp, curves that refuse in encrypt_degenerate_test.cpp.
#include "tests/support/encryption_case.h"

namespace zokecc_test::encrypt_checks_test {

namespace {

const ByteString kMessage = test_bytes(kSmallL, 21);

Encrypted good_parts() { return small_encryption(HASH_ALG_SM3, 77, kMessage); }

}  // namespace

TEST(SdfExternalEncrytpEcc, NullSessionReturns1000026) {
    for (uint32_t algorithm : kEncryptions)
        expect_no_cipher(nullptr, algorithm, small_public_key(), kMessage, ZOK_ERR_SESSION);
}

TEST(SdfExternalEncrytpEcc, NullKeyReturns1000027) {
    for (uint32_t algorithm : kEncryptions) {
        FakeEntropy entropy;
        GuardedRecord<ECCCipher> out;
        EXPECT_EQ(
            SDF_ExternalEncrytp_ECC(small_session(), algorithm, nullptr, kMessage.data(), kSmallL, out.get()),
            ZOK_ERR_ARGUMENT);
        EXPECT_EQ(entropy.number_calls, 0u);
        EXPECT_TRUE(out.unchanged());
    }
}

TEST(SdfExternalEncrytpEcc, KeyWiderThanItsFieldReturns1000027) {
    for (uint32_t bits : {520u, 521u, 1024u, 0x80000000u, 0xFFFFFFFFu}) {
        ECCrefPublicKey key = small_public_key();
        key.bits = bits;
        for (uint32_t algorithm : kEncryptions)
            expect_no_cipher(small_session(), algorithm, key, kMessage, ZOK_ERR_ARGUMENT);
    }
}

TEST(SdfExternalEncrytpEcc, KeyWithAZeroCoordinateReturns1000027) {
    ECCrefPublicKey without_size = small_public_key();
    without_size.bits = 7;
    for (uint32_t algorithm : kEncryptions) {
        expect_no_cipher(small_session(), algorithm, small_public_key(0, 763), kMessage, ZOK_ERR_ARGUMENT);
        expect_no_cipher(small_session(), algorithm, small_public_key(346, 0), kMessage, ZOK_ERR_ARGUMENT);
        expect_no_cipher(small_session(), algorithm, small_public_key(0, 0), kMessage, ZOK_ERR_ARGUMENT);
        expect_no_cipher(small_session(), algorithm, without_size, kMessage, ZOK_ERR_ARGUMENT);
    }
}

TEST(SdfExternalEncrytpEcc, UnknownIdentifierReturnsMinusOne) {
    for (uint32_t algorithm : kUnknownIdentifiers)
        expect_no_cipher(small_session(), algorithm, small_public_key(), kMessage, ZOK_ERR_INTERNAL);
}

TEST(SdfExternalEncrytpEcc, MessageOfSixteenBytesOnA32ByteCurveReturns1000027) {
    const Curve &c = curve("sm2p256v1");
    const ECCrefPublicKey key = public_key(fixed_bytes(c.G.x, 32), fixed_bytes(c.G.y, 32));
    expect_no_cipher(sm2_session(), kSm2, key, test_bytes(16), ZOK_ERR_ARGUMENT);
}

TEST(SdfExternalEncrytpEcc, MessageOfAnotherLengthThanACoordinateReturns1000027) {
    for (uint32_t algorithm : kEncryptions)
        for (size_t size : {size_t{0}, size_t{1}, kSmallL - 1, kSmallL + 1, size_t{32}, size_t{64}})
            expect_no_cipher(small_session(), algorithm, small_public_key(), test_bytes(size),
                             ZOK_ERR_ARGUMENT);
}

TEST(SdfExternalEncrytpEcc, NullMessageOrOutputReturns1000027) {
    for (uint32_t algorithm : kEncryptions) {
        FakeEntropy entropy;
        GuardedRecord<ECCCipher> out;
        const ECCrefPublicKey key = small_public_key();
        EXPECT_EQ(SDF_ExternalEncrytp_ECC(small_session(), algorithm, &key, nullptr, kSmallL, out.get()),
                  ZOK_ERR_ARGUMENT);
        EXPECT_EQ(
            SDF_ExternalEncrytp_ECC(small_session(), algorithm, &key, kMessage.data(), kSmallL, nullptr),
            ZOK_ERR_ARGUMENT);
        EXPECT_EQ(entropy.number_calls, 0u);
        EXPECT_TRUE(out.unchanged());
    }
}

TEST(SdfExternalDecryptEcc, NullSessionReturns1000026) {
    for (uint32_t algorithm : kEncryptions)
        expect_no_plain(decrypt(nullptr, algorithm, small_private_key(), cipher_record(good_parts())),
                        ZOK_ERR_SESSION);
}

TEST(SdfExternalDecryptEcc, NullKeyReturns1000027) {
    const ECCCipher cipher = cipher_record(good_parts());
    for (uint32_t algorithm : kEncryptions) {
        GuardedBuffer plain(64);
        uint32_t length = kUntouchedLength;
        EXPECT_EQ(
            SDF_ExternalDecrypt_ECC(small_session(), algorithm, nullptr, &cipher, plain.data(), &length),
            ZOK_ERR_ARGUMENT);
        EXPECT_TRUE(plain.untouched());
        EXPECT_EQ(length, kUntouchedLength);
    }
}

TEST(SdfExternalDecryptEcc, KeyWiderThanItsFieldReturns1000027) {
    for (uint32_t bits : {520u, 1024u, 0xFFFFFFFFu}) {
        ECCrefPrivateKey key = small_private_key();
        key.bits = bits;
        for (uint32_t algorithm : kEncryptions)
            expect_no_plain(decrypt(small_session(), algorithm, key, cipher_record(good_parts())),
                            ZOK_ERR_ARGUMENT);
    }
}

TEST(SdfExternalDecryptEcc, KeyNotBelowTheOrderReturns1000027) {
    for (uint32_t algorithm : kEncryptions) {
        const ECCCipher cipher = cipher_record(good_parts());
        for (uint32_t d : {kSmallN, kSmallN + 1, kSmallN + kSmallD, 0xFFFFFFFFu})
            expect_no_plain(decrypt(small_session(), algorithm, small_private_key(d), cipher),
                            ZOK_ERR_ARGUMENT);
        expect_no_plain(decrypt(small_session(), algorithm, private_key(ByteString(64, 0xFF)), cipher),
                        ZOK_ERR_ARGUMENT);
        EXPECT_EQ(decrypt(small_session(), kProduct, small_private_key(kSmallN - 1), cipher).status, ZOK_OK);
    }
}

TEST(SdfExternalDecryptEcc, UnknownIdentifierReturnsMinusOne) {
    for (uint32_t algorithm : kUnknownIdentifiers)
        expect_no_plain(decrypt(small_session(), algorithm, small_private_key(), cipher_record(good_parts())),
                        ZOK_ERR_INTERNAL);
}

TEST(SdfExternalDecryptEcc, NullCipherOrOutputReturns1000027) {
    const ECCrefPrivateKey key = small_private_key();
    const ECCCipher cipher = cipher_record(good_parts());
    for (uint32_t algorithm : kEncryptions) {
        GuardedBuffer plain(64);
        uint32_t length = kUntouchedLength;
        EXPECT_EQ(SDF_ExternalDecrypt_ECC(small_session(), algorithm, &key, nullptr, plain.data(), &length),
                  ZOK_ERR_ARGUMENT);
        EXPECT_EQ(SDF_ExternalDecrypt_ECC(small_session(), algorithm, &key, &cipher, nullptr, &length),
                  ZOK_ERR_ARGUMENT);
        EXPECT_EQ(SDF_ExternalDecrypt_ECC(small_session(), algorithm, &key, &cipher, plain.data(), nullptr),
                  ZOK_ERR_ARGUMENT);
        EXPECT_TRUE(plain.untouched());
        EXPECT_EQ(length, kUntouchedLength);
    }
}

}  // namespace zokecc_test::encrypt_checks_test

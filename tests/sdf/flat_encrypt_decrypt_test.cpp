// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// ZOK_ExternalDecrypt_ECC: ciphertexts of any length, changed ones, and refusals.
#include <zokecc/schemes.h>

#include "tests/support/emulated.h"
#include "tests/support/encryption_case.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::flat_encrypt_decrypt_test {

namespace {

constexpr size_t kOverhead = 1 + 2 * kSmallL + 32;  // of a ciphertext beyond its message

Decrypted decrypt_small(const ByteString &cipher, uint32_t d = kSmallD, uint32_t selector = HASH_ALG_SM3) {
    return flat_decrypt(small_session(selector), small_private_key(d), cipher);
}

ByteString good_cipher(size_t size, uint32_t selector = HASH_ALG_SM3) {
    return small_encryption(selector, 77, test_bytes(size, 71)).flat();
}

}  // namespace

TEST(ZokExternalDecryptEcc, EveryLengthUpToTwoHundredAndSixtyFourKibibytes) {
    for (uint32_t selector : kKnownHashes)
        for (const size_t size : message_lengths()) {
            SCOPED_TRACE(size);
            expect_plain(decrypt_small(good_cipher(size, selector), kSmallD, selector), ZOK_OK,
                         test_bytes(size, 71));
        }
}

TEST(ZokExternalDecryptEcc, CiphertextsOfTheProcessWideCallAreTheSameAndDecrypt) {
    for (const char *name : {"secp192r1", "secp224r1", "sm2p256v1"}) {
        SCOPED_TRACE(name);
        const Curve &c = curve(name);
        install(c);
        const size_t L = c.byte_len;
        const ByteString x = fixed_bytes(c.G.x, L), y = fixed_bytes(c.G.y, L);
        ecc_point_bytes recipient{};
        std::copy(x.begin(), x.end(), recipient.x);
        std::copy(y.begin(), y.end(), recipient.y);
        recipient.length = c.byte_len;
        ByteString message = test_bytes(100, 76), legacy(1 + 2 * L + 100 + 32);
        const sm3_msg text = {message.data(), 0, 100};
        sm3_msg cipher = {legacy.data(), 0, 0};
        GuardedBuffer out(legacy.size());
        uint32_t length = 0;
        FakeEntropy entropy;
        queue_numbers(entropy, {0xC0FFEE, 0xC0FFEE});
        ASSERT_EQ(sm2_Encry(&recipient, &text, &cipher, HASH_ALG_SM3), 0);
        ASSERT_EQ(flat_encrypt(shared_session(c), public_key(x, y), message, out.data(), &length), ZOK_OK);
        EXPECT_EQ(to_hex(out.all()), to_hex(legacy));
        expect_plain(flat_decrypt(shared_session(c), private_key({1}), legacy), ZOK_OK, message);
    }
    uninstall();
}

TEST(ZokExternalDecryptEcc, KeptPlaintextStaysWrittenAfterAMismatch) {
    const ByteString cipher = good_cipher(45);
    expect_plain(decrypt_small(flipped(cipher, 8 * (cipher.size() - 1))), ZOK_ERR_INTERNAL,
                 test_bytes(45, 71));
}

TEST(ZokExternalDecryptEcc, EveryOtherFirstByteReturns1000027) {
    ByteString cipher = good_cipher(45);
    for (uint32_t value = 0; value <= 255; ++value) {
        cipher[0] = static_cast<uint8_t>(value);
        if (value == 4)
            expect_plain(decrypt_small(cipher), ZOK_OK, test_bytes(45, 71));
        else
            expect_no_plain(decrypt_small(cipher), ZOK_ERR_ARGUMENT);
    }
}

TEST(ZokExternalDecryptEcc, EveryLengthWithoutAMessageByteReturns1000027) {
    const ByteString cipher = good_cipher(1);
    for (size_t size = 0; size <= kOverhead; ++size) {
        SCOPED_TRACE(size);
        expect_no_plain(
            decrypt_small(ByteString(cipher.begin(), cipher.begin() + static_cast<std::ptrdiff_t>(size))),
            ZOK_ERR_ARGUMENT);
    }
    expect_plain(decrypt_small(cipher), ZOK_OK, test_bytes(1, 71));
}

TEST(ZokExternalDecryptEcc, NinetySevenBytesOnA32ByteCurveReturn1000027) {
    ByteString cipher(97, 0);
    cipher[0] = 4;
    expect_no_plain(flat_decrypt(sm2_session(), private_key({1}), cipher), ZOK_ERR_ARGUMENT);
    cipher.push_back(0);
    EXPECT_EQ(flat_decrypt(sm2_session(), private_key({1}), cipher).status,
              kHardened ? ZOK_ERR_ARGUMENT : ZOK_ERR_INTERNAL);
}

TEST(ZokExternalDecryptEcc, ByteMoreOrLessIsAMismatch) {
    ByteString cipher = good_cipher(45);
    cipher.push_back(0);
    EXPECT_EQ(decrypt_small(cipher).status, ZOK_ERR_INTERNAL);
    cipher.resize(cipher.size() - 2);
    EXPECT_EQ(decrypt_small(cipher).status, ZOK_ERR_INTERNAL);
}

TEST(ZokExternalDecryptEcc, KeyStreamOfZeroReturns1000027) {
    for (uint32_t selector : kKnownHashes) {
        const Encrypted parts = small_encryption(selector, nonce_of_zero_stream(selector), {0x3C});
        ASSERT_EQ(to_hex(parts.C2), "3c");
        expect_no_plain(decrypt_small(parts.flat(), kSmallD, selector), ZOK_ERR_ARGUMENT);
    }
}

TEST(ZokExternalDecryptEcc, KeyStreamThatOnlyStartsWithZeroIsUsed) {
    const ByteString message = test_bytes(2, 74);
    const Encrypted parts = small_encryption(HASH_ALG_SM3, nonce_of_zero_stream(HASH_ALG_SM3), message);
    expect_plain(decrypt_small(parts.flat()), ZOK_OK, message);
}

TEST(ZokExternalDecryptEcc, KeptC1OfZerosDecryptsUnderEveryKey) {
    const ByteString zero(kSmallL, 0), message = test_bytes(45, 75);
    const ByteString cipher = model_encryption(HASH_ALG_SM3, zero, zero, zero, zero, message).flat();
    for (uint32_t d : {0u, 1u, 2u, kSmallD}) expect_plain(decrypt_small(cipher, d), ZOK_OK, message);
}

}  // namespace zokecc_test::flat_encrypt_decrypt_test

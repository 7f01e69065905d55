// Two reasons to refuse at once: which of them the encryption and decryption calls answer.
#include "tests/support/encryption_case.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::encrypt_order_test {

namespace {

constexpr uint32_t kUnknown = 0x20100;

const ByteString kMessage = test_bytes(kSmallL, 81);

ECCrefPublicKey wide_public_key() {
    ECCrefPublicKey out = small_public_key();
    out.bits = 520;
    return out;
}
ECCrefPrivateKey wide_private_key() {
    ECCrefPrivateKey out = small_private_key();
    out.bits = 520;
    return out;
}
ByteString good_flat() { return small_encryption(HASH_ALG_SM3, 77, kMessage).flat(); }

// ZOK_ExternalEncrytp_ECC while the first allocation fails.
uint32_t flat_encrypt_without_memory(void *session, const ECCrefPublicKey &key, unsigned &allocations) {
    GuardedBuffer out(200);
    uint32_t length = kUntouchedLength;
    FakeEntropy entropy;
    FailingAlloc failing(1);
    const uint32_t status = flat_encrypt(session, key, kMessage, out.data(), &length);
    allocations = failing.allocations;
    EXPECT_EQ(entropy.number_calls, 0u);
    EXPECT_TRUE(out.untouched());
    EXPECT_EQ(length, kUntouchedLength);
    return status;
}

uint32_t flat_decrypt_without_memory(void *session, const ECCrefPrivateKey &key, const ByteString &cipher,
                                     unsigned &allocations) {
    GuardedBuffer plain(200);
    uint32_t length = kUntouchedLength;
    FailingAlloc failing(1);
    const uint32_t status = ZOK_ExternalDecrypt_ECC(
        session, &key, cipher.data(), static_cast<uint32_t>(cipher.size()), plain.data(), &length);
    allocations = failing.allocations;
    EXPECT_TRUE(plain.untouched());
    EXPECT_EQ(length, kUntouchedLength);
    return status;
}

}  // namespace

TEST(SdfExternalEncrytpEccOrder, NullSessionWinsOverEverything) {
    EXPECT_EQ(SDF_ExternalEncrytp_ECC(nullptr, kUnknown, nullptr, nullptr, 0, nullptr), ZOK_ERR_SESSION);
    expect_no_cipher(nullptr, kUnknown, small_public_key(0, 0), kMessage, ZOK_ERR_SESSION);
    expect_no_cipher(nullptr, kSm2, wide_public_key(), kMessage, ZOK_ERR_SESSION);
}

TEST(SdfExternalEncrytpEccOrder, BadKeyWinsOverAnUnknownIdentifier) {
    GuardedRecord<ECCCipher> out;
    EXPECT_EQ(
        SDF_ExternalEncrytp_ECC(small_session(), kUnknown, nullptr, kMessage.data(), kSmallL, out.get()),
        ZOK_ERR_ARGUMENT);
    EXPECT_TRUE(out.unchanged());
    expect_no_cipher(small_session(), kUnknown, wide_public_key(), kMessage, ZOK_ERR_ARGUMENT);
    expect_no_cipher(small_session(), kUnknown, small_public_key(0, 763), kMessage, ZOK_ERR_ARGUMENT);
    expect_no_cipher(small_session(), kUnknown, small_public_key(346, 0), kMessage, ZOK_ERR_ARGUMENT);
}

TEST(SdfExternalEncrytpEccOrder, UnknownIdentifierWinsOverLengthAndPointers) {
    const ECCrefPublicKey key = small_public_key();
    GuardedRecord<ECCCipher> out;
    expect_no_cipher(small_session(), kUnknown, key, test_bytes(16), ZOK_ERR_INTERNAL);
    EXPECT_EQ(SDF_ExternalEncrytp_ECC(small_session(), kUnknown, &key, nullptr, kSmallL, out.get()),
              ZOK_ERR_INTERNAL);
    EXPECT_EQ(SDF_ExternalEncrytp_ECC(small_session(), kUnknown, &key, kMessage.data(), kSmallL, nullptr),
              ZOK_ERR_INTERNAL);
    EXPECT_EQ(SDF_ExternalEncrytp_ECC(small_session(), kUnknown, &key, nullptr, 3, nullptr),
              ZOK_ERR_INTERNAL);
    EXPECT_TRUE(out.unchanged());
}

TEST(SdfExternalEncrytpEccOrder, UnknownIdentifierWinsOverTheCurveAndTheHash) {
    Session without_order(small_curve_with_order(0)), without_h(small_curve_with_order(kSmallP + 1));
    expect_no_cipher(without_order.handle(), kUnknown, small_public_key(), kMessage, ZOK_ERR_INTERNAL);
    expect_no_cipher(without_h.handle(), kUnknown, small_public_key(), kMessage, ZOK_ERR_INTERNAL);
    expect_no_cipher(small_session(kUnknownSelector), kUnknown, small_public_key(), kMessage,
                     ZOK_ERR_INTERNAL);
}

TEST(SdfExternalEncrytpEccOrder, LengthAndHashAreTestedBeforeANonceIsDrawn) {
    // With a quotient h of zero as well, which shows only after C1 was written.
    Session session(small_curve_with_order(kSmallP + 1), kUnknownSelector);
    expect_no_cipher(session.handle(), kSm2, small_public_key(), kMessage, ZOK_ERR_ARGUMENT);
    Session known(small_curve_with_order(kSmallP + 1));
    expect_no_cipher(known.handle(), kSm2, small_public_key(), test_bytes(16), ZOK_ERR_ARGUMENT);
}

TEST(SdfExternalDecryptEccOrder, NullSessionWinsOverEverything) {
    EXPECT_EQ(SDF_ExternalDecrypt_ECC(nullptr, kUnknown, nullptr, nullptr, nullptr, nullptr),
              ZOK_ERR_SESSION);
    expect_no_plain(decrypt(nullptr, kUnknown, small_private_key(kSmallN), ECCCipher{}), ZOK_ERR_SESSION);
}

TEST(SdfExternalDecryptEccOrder, BadKeyWinsOverAnUnknownIdentifier) {
    GuardedBuffer plain(64);
    uint32_t length = kUntouchedLength;
    const ECCCipher cipher{};
    EXPECT_EQ(SDF_ExternalDecrypt_ECC(small_session(), kUnknown, nullptr, &cipher, plain.data(), &length),
              ZOK_ERR_ARGUMENT);
    EXPECT_TRUE(plain.untouched());
    expect_no_plain(decrypt(small_session(), kUnknown, wide_private_key(), cipher), ZOK_ERR_ARGUMENT);
    expect_no_plain(decrypt(small_session(), kUnknown, small_private_key(kSmallN), cipher), ZOK_ERR_ARGUMENT);
}

TEST(SdfExternalDecryptEccOrder, UnknownIdentifierWinsOverPointersAndTheCurve) {
    const ECCrefPrivateKey key = small_private_key();
    const ECCCipher cipher{};
    GuardedBuffer plain(64);
    uint32_t length = kUntouchedLength;
    EXPECT_EQ(SDF_ExternalDecrypt_ECC(small_session(), kUnknown, &key, nullptr, plain.data(), &length),
              ZOK_ERR_INTERNAL);
    EXPECT_EQ(SDF_ExternalDecrypt_ECC(small_session(), kUnknown, &key, &cipher, nullptr, &length),
              ZOK_ERR_INTERNAL);
    EXPECT_EQ(SDF_ExternalDecrypt_ECC(small_session(), kUnknown, &key, &cipher, plain.data(), nullptr),
              ZOK_ERR_INTERNAL);
    EXPECT_TRUE(plain.untouched());
    Session without_h(small_curve_with_order(kSmallP + 1));
    expect_no_plain(decrypt(without_h.handle(), kUnknown, key, cipher), ZOK_ERR_INTERNAL);
}

TEST(SdfExternalDecryptEccOrder, CurveAndHashWinOverAMismatch) {
    Encrypted parts = small_encryption(HASH_ALG_SM3, 77, kMessage);
    parts.C3 = ByteString(32, 0);
    Session without_h(small_curve_with_order(kSmallP + 1));
    expect_no_plain(decrypt(without_h.handle(), kSm2, small_private_key(), cipher_record(parts)),
                    ZOK_ERR_ARGUMENT);
    expect_no_plain(decrypt(small_session(kUnknownSelector), kSm2, small_private_key(), cipher_record(parts)),
                    ZOK_ERR_ARGUMENT);
}

TEST(ZokExternalEncrytpEccOrder, NullSessionWinsOverEverything) {
    EXPECT_EQ(ZOK_ExternalEncrytp_ECC(nullptr, nullptr, nullptr, -1, nullptr, nullptr), ZOK_ERR_SESSION);
}

TEST(ZokExternalEncrytpEccOrder, KeyRecordPointersAndLengthWinOverMissingMemory) {
    const ECCrefPublicKey key = small_public_key(), wide = wide_public_key();
    GuardedBuffer out(200);
    uint32_t length = kUntouchedLength;
    void *session = small_session();
    FailingAlloc failing(1);
    const uint8_t *data = kMessage.data();
    EXPECT_EQ(ZOK_ExternalEncrytp_ECC(session, nullptr, data, 5, out.data(), &length), ZOK_ERR_ARGUMENT);
    EXPECT_EQ(ZOK_ExternalEncrytp_ECC(session, &wide, data, 5, out.data(), &length), ZOK_ERR_ARGUMENT);
    EXPECT_EQ(ZOK_ExternalEncrytp_ECC(session, &key, nullptr, 5, out.data(), &length), ZOK_ERR_ARGUMENT);
    EXPECT_EQ(ZOK_ExternalEncrytp_ECC(session, &key, data, 5, nullptr, &length), ZOK_ERR_ARGUMENT);
    EXPECT_EQ(ZOK_ExternalEncrytp_ECC(session, &key, data, 5, out.data(), nullptr), ZOK_ERR_ARGUMENT);
    EXPECT_EQ(ZOK_ExternalEncrytp_ECC(session, &key, data, 0, out.data(), &length), ZOK_ERR_ARGUMENT);
    EXPECT_EQ(failing.allocations, 0u);
    EXPECT_TRUE(out.untouched());
}

TEST(ZokExternalEncrytpEccOrder, MissingMemoryWinsOverAZeroCoordinateTheCurveAndTheHash) {
    unsigned allocations = 0;
    EXPECT_EQ(flat_encrypt_without_memory(small_session(), small_public_key(0, 763), allocations),
              ZOK_ERR_INTERNAL);
    EXPECT_GE(allocations, 1u);
    Session without_order(small_curve_with_order(0));
    EXPECT_EQ(flat_encrypt_without_memory(without_order.handle(), small_public_key(), allocations),
              ZOK_ERR_INTERNAL);
    EXPECT_EQ(flat_encrypt_without_memory(small_session(kUnknownSelector), small_public_key(), allocations),
              ZOK_ERR_INTERNAL);
}

TEST(ZokExternalEncrytpEccOrder, ZeroCoordinateAndHashAreTestedBeforeANonceIsDrawn) {
    Session session(small_curve_with_order(kSmallP + 1), kUnknownSelector);
    expect_no_flat_cipher(session.handle(), small_public_key(), kMessage, ZOK_ERR_ARGUMENT);
    Session known(small_curve_with_order(kSmallP + 1));
    expect_no_flat_cipher(known.handle(), small_public_key(0, 763), kMessage, ZOK_ERR_ARGUMENT);
}

TEST(ZokExternalDecryptEccOrder, NullSessionWinsOverEverything) {
    EXPECT_EQ(ZOK_ExternalDecrypt_ECC(nullptr, nullptr, nullptr, 0, nullptr, nullptr), ZOK_ERR_SESSION);
}

TEST(ZokExternalDecryptEccOrder, KeyLengthAndPrefixWinOverMissingMemory) {
    unsigned allocations = 0;
    ByteString other_prefix = good_flat();
    other_prefix[0] = 2;
    EXPECT_EQ(flat_decrypt_without_memory(small_session(), wide_private_key(), good_flat(), allocations),
              ZOK_ERR_ARGUMENT);
    EXPECT_EQ(allocations, 0u);
    EXPECT_EQ(
        flat_decrypt_without_memory(small_session(), small_private_key(kSmallN), good_flat(), allocations),
        ZOK_ERR_ARGUMENT);
    EXPECT_EQ(allocations, 0u);
    EXPECT_EQ(flat_decrypt_without_memory(small_session(), small_private_key(), other_prefix, allocations),
              ZOK_ERR_ARGUMENT);
    EXPECT_EQ(allocations, 0u);
    EXPECT_EQ(
        flat_decrypt_without_memory(small_session(), small_private_key(), ByteString(73, 4), allocations),
        ZOK_ERR_ARGUMENT);
    EXPECT_EQ(allocations, 0u);
}

TEST(ZokExternalDecryptEccOrder, MissingMemoryWinsOverTheCurveTheHashAndAMismatch) {
    unsigned allocations = 0;
    ByteString changed = good_flat();
    changed.back() = static_cast<uint8_t>(changed.back() ^ 1);
    Session without_h(small_curve_with_order(kSmallP + 1));
    EXPECT_EQ(flat_decrypt_without_memory(without_h.handle(), small_private_key(), good_flat(), allocations),
              ZOK_ERR_INTERNAL);
    EXPECT_GE(allocations, 1u);
    EXPECT_EQ(flat_decrypt_without_memory(small_session(kUnknownSelector), small_private_key(), good_flat(),
                                          allocations),
              ZOK_ERR_INTERNAL);
    EXPECT_EQ(flat_decrypt_without_memory(small_session(), small_private_key(), changed, allocations),
              ZOK_ERR_INTERNAL);
}

TEST(ZokExternalDecryptEccOrder, CurveAndHashWinOverAMismatch) {
    ByteString changed = good_flat();
    changed.back() = static_cast<uint8_t>(changed.back() ^ 1);
    Session without_h(small_curve_with_order(kSmallP + 1));
    expect_no_plain(flat_decrypt(without_h.handle(), small_private_key(), changed), ZOK_ERR_ARGUMENT);
    expect_no_plain(flat_decrypt(small_session(kUnknownSelector), small_private_key(), changed),
                    ZOK_ERR_ARGUMENT);
}

}  // namespace zokecc_test::encrypt_order_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// ZOK_ExternalEncrytp_ECC: 0x04 || x1 || y1 || C2 || C3 for messages of any length.
#include "tests/support/encryption_case.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::flat_encrypt_test {

namespace {

// One encryption on the small curve with the given nonces, which writes `want` and nothing more.
void expect_encryption(uint32_t selector, std::initializer_list<uint32_t> nonces, const ByteString &message,
                       const Encrypted &want) {
    FakeEntropy entropy;
    queue_numbers(entropy, nonces);
    const ByteString flat = want.flat();
    GuardedBuffer out(flat.size() + 64);
    uint32_t length = kUntouchedLength;
    EXPECT_EQ(flat_encrypt(small_session(selector), small_public_key(), message, out.data(), &length),
              ZOK_OK);
    EXPECT_EQ(entropy.number_calls, nonces.size());
    EXPECT_EQ(length, 1 + 2 * kSmallL + message.size() + 32);
    EXPECT_EQ(to_hex(out.first(flat.size())), to_hex(flat));
    EXPECT_TRUE(out.untouched_from(flat.size()));
}

}  // namespace

TEST(ZokExternalEncrytpEcc, EveryLengthUpToTwoHundredAndSixtyFourKibibytes) {
    for (uint32_t selector : kKnownHashes)
        for (size_t size = 1; size <= 65536; size += size < 200 ? 1 : 65336) {
            SCOPED_TRACE(size);
            const ByteString message = test_bytes(size, 61);
            expect_encryption(selector, {77}, message, small_encryption(selector, 77, message));
        }
}

TEST(ZokExternalEncrytpEcc, HundredBytesOnA32ByteCurveAreHundredNinetySevenBytes) {
    const Curve &c = curve("sm2p256v1");
    const ByteString message = test_bytes(100, 63);
    const ECCrefPublicKey key = base_point_key(c);
    GuardedBuffer out(197);
    uint32_t length = kUntouchedLength;
    FakeEntropy entropy;
    queue_numbers(entropy, {0xC0FFEE});
    EXPECT_EQ(flat_encrypt(sm2_session(), key, message, out.data(), &length), ZOK_OK);
    EXPECT_EQ(length, 197u);
    EXPECT_TRUE(out.untouched_from(197));
    expect_plain(flat_decrypt(sm2_session(), private_key({1}), out.all()), ZOK_OK, message);
}

TEST(ZokExternalEncrytpEcc, KeyStreamOfZeroIsDrawnAgain) {
    for (uint32_t selector : kKnownHashes) {
        const uint32_t zero = nonce_of_zero_stream(selector), good = nonce_of_nonzero_stream(selector);
        const ByteString message = {0x3C};
        expect_encryption(selector, {zero, good}, message, small_encryption(selector, good, message));
        expect_encryption(selector, {zero, zero, zero, good}, message,
                          small_encryption(selector, good, message));
    }
}

TEST(ZokExternalEncrytpEcc, KeyStreamThatOnlyStartsWithZeroIsUsed) {
    const uint32_t k = nonce_of_zero_stream(HASH_ALG_SM3);
    for (size_t size : {size_t{2}, size_t{33}}) {
        const ByteString message = test_bytes(size, 64);
        expect_encryption(HASH_ALG_SM3, {k}, message, small_encryption(HASH_ALG_SM3, k, message));
    }
}

TEST(ZokExternalEncrytpEcc, ThousandAndTwentyFourFruitlessNoncesEndWithMinusOne) {
    const uint32_t k = nonce_of_zero_stream(HASH_ALG_SM3);
    const ByteString message = {0x3C};
    FakeEntropy entropy;
    entropy.queued_numbers.assign(1024, small_number(k));
    entropy.queued_numbers.push_back(small_number(nonce_of_nonzero_stream(HASH_ALG_SM3)));
    GuardedBuffer out(128);
    uint32_t length = kUntouchedLength;
    EXPECT_EQ(flat_encrypt(small_session(), small_public_key(), message, out.data(), &length),
              ZOK_ERR_INTERNAL);
    EXPECT_EQ(entropy.number_calls, 1024u);
    EXPECT_EQ(length, kUntouchedLength);
    EXPECT_TRUE(out.untouched_from(1 + 2 * kSmallL));
}

TEST(ZokExternalEncrytpEcc, LastOfThousandAndTwentyFourNoncesCounts) {
    const uint32_t zero = nonce_of_zero_stream(HASH_ALG_SM3), good = nonce_of_nonzero_stream(HASH_ALG_SM3);
    const ByteString message = {0x3C};
    FakeEntropy entropy;
    entropy.queued_numbers.assign(1023, small_number(zero));
    entropy.queued_numbers.push_back(small_number(good));
    GuardedBuffer out(1 + 2 * kSmallL + 1 + 32);
    uint32_t length = kUntouchedLength;
    EXPECT_EQ(flat_encrypt(small_session(), small_public_key(), message, out.data(), &length), ZOK_OK);
    EXPECT_EQ(entropy.number_calls, 1024u);
    EXPECT_EQ(to_hex(out.all()), to_hex(small_encryption(HASH_ALG_SM3, good, message).flat()));
}

TEST(ZokExternalEncrytpEcc, KeptNonceOfZeroIsNotDrawnAgain) {
    const ByteString zero(kSmallL, 0), message = test_bytes(45, 65);
    expect_encryption(HASH_ALG_SHA256, {0}, message,
                      model_encryption(HASH_ALG_SHA256, zero, zero, zero, zero, message));
}

TEST(ZokExternalEncrytpEcc, InputsStayAsTheyWere) {
    const ECCrefPublicKey key = small_public_key(), before = key;
    const ByteString message = test_bytes(45, 66), copy = message;
    GuardedBuffer out(200);
    uint32_t length = 0;
    EXPECT_EQ(flat_encrypt(small_session(), key, message, out.data(), &length), ZOK_OK);
    EXPECT_EQ(to_hex(image(key)), to_hex(image(before)));
    EXPECT_TRUE(message == copy);
}

}  // namespace zokecc_test::flat_encrypt_test

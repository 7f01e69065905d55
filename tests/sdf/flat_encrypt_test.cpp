// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// ZOK_ExternalEncrytp_ECC: 0x04 || x1 || y1 || C2 || C3 for messages of any length.
#include "tests/support/emulated.h"
#include "tests/support/encryption_case.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::flat_encrypt_test {

namespace {

// One encryption on the small curve.
void expect_encryption(uint32_t selector, const Nonces &nonces, const ByteString &message,
                       const Encrypted &want, uint32_t status = ZOK_OK) {
    expect_flat_encrypted(small_session(selector), small_public_key(), message, nonces, want, status);
}

}  // namespace

TEST(ZokExternalEncrytpEcc, EveryLengthUpToTwoHundredAndSixtyFourKibibytes) {
    for (uint32_t selector : kKnownHashes)
        for (const size_t size : message_lengths()) {
            SCOPED_TRACE(size);
            const ByteString message = test_bytes(size, 61);
            expect_encryption(selector, {77}, message, small_encryption(selector, 77, message));
        }
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

TEST(ZokExternalEncrytpEcc, ThousandAndTwentyFourFruitlessNoncesEndWithMinusOneAndC1) {
    const uint32_t k = nonce_of_zero_stream(HASH_ALG_SM3), good = nonce_of_nonzero_stream(HASH_ALG_SM3);
    std::vector<uint32_t> nonces(1024, k);
    const Encrypted last = small_encryption(HASH_ALG_SM3, k, {0x3C});
    expect_encryption(HASH_ALG_SM3, nonces, {0x3C}, {last.x1, last.y1, {}, {}}, ZOK_ERR_INTERNAL);
    nonces.back() = good;
    expect_encryption(HASH_ALG_SM3, nonces, {0x3C}, small_encryption(HASH_ALG_SM3, good, {0x3C}));
}

TEST(ZokExternalEncrytpEcc, KeptNonceOfZeroIsNotDrawnAgain) {
    const ByteString zero(kSmallL, 0), message = test_bytes(45, 65);
    expect_encryption(HASH_ALG_SHA256, {0}, message,
                      model_encryption(HASH_ALG_SHA256, zero, zero, zero, zero, message));
}

}  // namespace zokecc_test::flat_encrypt_test

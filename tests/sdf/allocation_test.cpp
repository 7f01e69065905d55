// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Sizes of the allocations of signing and verifying calls, and what is never freed. Each allocation failing
// in turn is in tests/robustness/allocations_test.cpp, opening and closing in device_test.cpp and
// session_*_test.cpp.
#include "tests/sdf/fixtures.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::allocation_test {

namespace {

void expect_outcome(const FailingAlloc &counter, unsigned allocations, int digit_buffers, size_t last_size) {
    EXPECT_EQ(counter.allocations, allocations);
    EXPECT_EQ(counter.outstanding, kept_digit_buffers(digit_buffers));
    EXPECT_EQ(counter.last_size, last_size);
}

// An SM2 signature of a message with the fail_at-th allocation failing, and the expected outcome.
void expect_sign_hash(const ECCrefPrivateKey &key, unsigned fail_at, uint32_t status, unsigned allocations,
                      int digit_buffers, size_t last_size) {
    const ByteString message = text_bytes("hello"), id = text_bytes("ALICE");
    void *session = small_session();
    GuardedRecord<ECCSignature> sig;
    FakeEntropy entropy;
    queue_numbers(entropy, {77});
    FailingAlloc counter(fail_at);
    EXPECT_EQ(sign_message(session, ZOK_ALG_SM2_SIGN, key, message, id, sig.get()), status);
    expect_outcome(counter, allocations, digit_buffers, last_size);
    EXPECT_EQ(sig.unchanged(), status != ZOK_OK);
}

constexpr size_t kIdentity = 6 * 20 + 5 + 3, kMessage = 32 + 5 + 1;

}  // namespace

TEST(SdfExternalVerifyEcc, KeptEveryVerificationKeepsOneDigitBuffer) {
    const ECCrefPublicKey key = small_public_key();
    const ECCSignature sig = small_signature(226, 216);
    const ByteString e = small_bytes(456);
    for (uint32_t algorithm : {ZOK_ALG_SM2_SIGN, ZOK_ALG_ECDSA_SIGN}) {
        const bool sm2 = algorithm == ZOK_ALG_SM2_SIGN;
        void *session = small_session();
        FailingAlloc counter;
        EXPECT_EQ(verify_e(session, algorithm, key, e, sig), sm2 ? ZOK_OK : ZOK_ERR_VERIFY);
        expect_outcome(counter, 1, 1, sm2 ? 10 : counter.last_size);  // t = 442 has nine bits
    }
}

TEST(ZokExternalSignHashEcc, Sm2FreesTheIdentityAndTheMessageBuffer) {
    expect_sign_hash(small_private_key(), 0, ZOK_OK, 2, 0, kMessage);
    expect_sign_hash(small_private_key(), 1, ZOK_ERR_ARGUMENT, 1, 0, kIdentity);
}

TEST(ZokExternalSignHashEcc, KeptSm2KeyWiderThanTheCombKeepsOneDigitBuffer) {
    expect_sign_hash(private_key(ByteString(64, 0x55)), 0, ZOK_ERR_SIGN, 3, 1, kMessage);
}

}  // namespace zokecc_test::allocation_test

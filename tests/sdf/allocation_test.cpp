// What the signing and verifying calls allocate, what is given back, and what they answer when
// any one of the allocations fails. Opening and closing is in device_test.cpp and
// session_test.cpp.
#include "tests/sdf/fixtures.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::allocation_test {

namespace {

constexpr unsigned kNone = 0;

// The arguments of one call, made before the counting starts.
struct Call {
    void *session = small_session();
    ECCrefPrivateKey priv = small_private_key();
    ECCrefPublicKey pub = small_public_key();
    ECCSignature given = small_signature(226, 216);
    ByteString e = small_bytes(456);
    ByteString message = text_bytes("hello");
    ByteString id = text_bytes("ALICE");
    GuardedRecord<ECCSignature> sig;
};

// What one run of a call did.
struct Outcome {
    uint32_t status;
    unsigned allocations;
    int outstanding;
    size_t last_size;
    bool written;
};

template <class Function>
Outcome run(unsigned fail_at, Function function) {
    Call call;
    FakeEntropy entropy;
    queue_numbers(entropy, {77});
    FailingAlloc counter(fail_at);
    uint32_t status = function(call);
    return {status, counter.allocations, counter.outstanding, counter.last_size, !call.sig.unchanged()};
}

template <uint32_t Algorithm>
uint32_t sign_value(Call &call) {
    return sign_e(call.session, Algorithm, call.priv, call.e, call.sig.get());
}
template <uint32_t Algorithm>
uint32_t verify_value(Call &call) {
    return verify_e(call.session, Algorithm, call.pub, call.e, call.given);
}
template <uint32_t Algorithm>
uint32_t sign_hash(Call &call) {
    return sign_message(call.session, Algorithm, call.priv, call.message, call.id, call.sig.get());
}
template <uint32_t Algorithm>
uint32_t verify_hash(Call &call) {
    return verify_message(call.session, Algorithm, call.pub, call.message, call.id, call.given);
}

// A private key of 64 bytes whose value needs more words than the modulus has.
uint32_t sign_hash_with_wide_key(Call &call) {
    std::memset(call.priv.K, 0x55, sizeof call.priv.K);
    call.priv.bits = 512;
    return sign_hash<ZOK_ALG_SM2_SIGN>(call);
}

void expect_outcome(const Outcome &outcome, uint32_t status, unsigned allocations, int digit_buffers) {
    EXPECT_EQ(outcome.status, status);
    EXPECT_EQ(outcome.allocations, allocations);
    EXPECT_EQ(outcome.outstanding, kept_digit_buffers(digit_buffers));
}

}  // namespace

TEST(SdfExternalSignEcc, AllocatesNothing) {
    expect_outcome(run(kNone, sign_value<ZOK_ALG_SM2_SIGN>), ZOK_OK, 0, 0);
    expect_outcome(run(kNone, sign_value<ZOK_ALG_ECDSA_SIGN>), ZOK_OK, 0, 0);
}

TEST(SdfGenerateKeyPairEcc, AllocatesNothing) {
    expect_outcome(run(kNone,
                       [](Call &call) {
                           return SDF_GenerateKeyPair_ECC(call.session, ZOK_ALG_SM2_KEY, 160, &call.pub,
                                                          &call.priv);
                       }),
                   ZOK_OK, 0, 0);
}

TEST(SdfExternalVerifyEcc, FailedDigitBufferReturnsMinusOne) {
    expect_outcome(run(1, verify_value<ZOK_ALG_SM2_SIGN>), ZOK_ERR_INTERNAL, 1, 0);
    expect_outcome(run(1, verify_value<ZOK_ALG_ECDSA_SIGN>), ZOK_ERR_INTERNAL, 1, 0);
}

TEST(SdfExternalVerifyEcc, KeptEveryVerificationKeepsOneDigitBuffer) {
    Outcome sm2 = run(kNone, verify_value<ZOK_ALG_SM2_SIGN>);
    expect_outcome(sm2, ZOK_OK, 1, 1);
    EXPECT_EQ(sm2.last_size, 10u);  // t = 442 has nine bits
    Outcome refused = run(kNone, verify_value<ZOK_ALG_ECDSA_SIGN>);
    expect_outcome(refused, ZOK_ERR_VERIFY, 1, 1);
}

TEST(SdfExternalVerifyEcc, NumberOutOfRangeAllocatesNothing) {
    expect_outcome(run(kNone,
                       [](Call &call) {
                           call.given = small_signature(991, 216);
                           return verify_value<ZOK_ALG_SM2_SIGN>(call);
                       }),
                   ZOK_ERR_VERIFY, 0, 0);
}

TEST(ZokExternalSignHashEcc, Sm2FreesTheIdentityAndTheMessageBuffer) {
    Outcome outcome = run(kNone, sign_hash<ZOK_ALG_SM2_SIGN>);
    expect_outcome(outcome, ZOK_OK, 2, 0);
    EXPECT_EQ(outcome.last_size, 32u + 5 + 1);
}

TEST(ZokExternalSignHashEcc, Sm2FailedIdentityBufferReturns1000027) {
    Outcome outcome = run(1, sign_hash<ZOK_ALG_SM2_SIGN>);
    expect_outcome(outcome, ZOK_ERR_ARGUMENT, 1, 0);
    EXPECT_EQ(outcome.last_size, 6u * 20 + 5 + 3);
    EXPECT_FALSE(outcome.written);
}

TEST(ZokExternalSignHashEcc, Sm2FailedMessageBufferReturnsMinusOne) {
    Outcome outcome = run(2, sign_hash<ZOK_ALG_SM2_SIGN>);
    expect_outcome(outcome, ZOK_ERR_INTERNAL, 2, 0);
    EXPECT_FALSE(outcome.written);
}

TEST(ZokExternalSignHashEcc, Sm2FailedBuffersWinOverAKeyOutOfRange) {
    auto with_zero_key = [](Call &call) {
        call.priv = small_private_key(0);
        return sign_hash<ZOK_ALG_SM2_SIGN>(call);
    };
    expect_outcome(run(1, with_zero_key), ZOK_ERR_ARGUMENT, 1, 0);
    expect_outcome(run(2, with_zero_key), ZOK_ERR_INTERNAL, 2, 0);
    expect_outcome(run(kNone, with_zero_key), ZOK_ERR_SIGN, 2, 0);
}

TEST(ZokExternalSignHashEcc, KeptSm2KeyWiderThanTheCombKeepsOneDigitBuffer) {
    Outcome outcome = run(kNone, sign_hash_with_wide_key);
    expect_outcome(outcome, ZOK_ERR_SIGN, 3, 1);
    EXPECT_FALSE(outcome.written);
}

TEST(ZokExternalSignHashEcc, Sm2KeyWiderThanTheCombWithoutMemory) {
    // Without digits the public key is infinity, and the range of the key is looked at later.
    expect_outcome(run(1, sign_hash_with_wide_key), ZOK_ERR_SIGN, 3, 0);
    expect_outcome(run(2, sign_hash_with_wide_key), ZOK_ERR_ARGUMENT, 2, 1);
    expect_outcome(run(3, sign_hash_with_wide_key), ZOK_ERR_INTERNAL, 3, 1);
}

TEST(ZokExternalSignHashEcc, EcdsaAllocatesNothing) {
    expect_outcome(run(kNone, sign_hash<ZOK_ALG_ECDSA_SIGN>), ZOK_OK, 0, 0);
}

TEST(ZokExternalVerifyHashEcc, Sm2FailedIdentityBufferReturns1000027) {
    expect_outcome(run(1, verify_hash<ZOK_ALG_SM2_SIGN>), ZOK_ERR_ARGUMENT, 1, 0);
}

TEST(ZokExternalVerifyHashEcc, Sm2FailedMessageBufferReturnsMinusOne) {
    expect_outcome(run(2, verify_hash<ZOK_ALG_SM2_SIGN>), ZOK_ERR_INTERNAL, 2, 0);
}

TEST(ZokExternalVerifyHashEcc, Sm2FailedDigitBufferReturnsMinusOne) {
    expect_outcome(run(3, verify_hash<ZOK_ALG_SM2_SIGN>), ZOK_ERR_INTERNAL, 3, 0);
}

TEST(ZokExternalVerifyHashEcc, Sm2FreesBothBuffersAndKeepsTheDigits) {
    expect_outcome(run(kNone, verify_hash<ZOK_ALG_SM2_SIGN>), ZOK_ERR_VERIFY, 3, 1);
}

TEST(ZokExternalVerifyHashEcc, EcdsaFailedDigitBufferReturnsMinusOne) {
    expect_outcome(run(1, verify_hash<ZOK_ALG_ECDSA_SIGN>), ZOK_ERR_INTERNAL, 1, 0);
    expect_outcome(run(kNone, verify_hash<ZOK_ALG_ECDSA_SIGN>), ZOK_ERR_VERIFY, 1, 1);
}

TEST(ZokExternalVerifyHashEcc, Sm2FailedBuffersWinOverANumberOutOfRange) {
    auto with_zero_r = [](Call &call) {
        call.given = small_signature(0, 216);
        return verify_hash<ZOK_ALG_SM2_SIGN>(call);
    };
    expect_outcome(run(1, with_zero_r), ZOK_ERR_ARGUMENT, 1, 0);
    expect_outcome(run(2, with_zero_r), ZOK_ERR_INTERNAL, 2, 0);
    expect_outcome(run(kNone, with_zero_r), ZOK_ERR_VERIFY, 2, 0);
}

}  // namespace zokecc_test::allocation_test

// What the ECDSA and key calls allocate, what is given back, and what they answer when an
// allocation fails. The exchange and the encryption schemes have these tests with their own.
#include "tests/schemes/ecdsa_calls.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/fake_entropy.h"

namespace zokecc_test::allocation_test {

namespace {

constexpr uint32_t kD = 123;
const ByteString kText = text_bytes("message digest");

SmallSignature good_signature() { return small_ecdsa(small_e(kText, HASH_ALG_SM3), kD, 77); }

}  // namespace

TEST(EcdsaDigitalSign, AllocatesNothing) {
    install_small(32);
    EcdsaSigning call(number_bytes(kD, 32), kText);
    FailingAlloc failing(1);
    EXPECT_EQ(call.run(HASH_ALG_SM3), 0);
    EXPECT_EQ(failing.allocations, 0u);
}

TEST(EcdsaDigitalVeriy, FailedMultiplicationReturnsZero) {
    install_small(32);
    EcdsaVerification call(small_multiple(kD), good_signature(), kText);
    FailingAlloc failing(1);
    EXPECT_EQ(call.run(HASH_ALG_SM3), 0);
    EXPECT_EQ(failing.allocations, 1u);
    EXPECT_EQ(failing.outstanding, 0);
}

TEST(EcdsaDigitalVeriy, FailedMultiplicationReturnsZeroAlsoWhereEverythingIsZero) {
    // An infinite sum would equal this r.
    install_small(32);
    EcdsaVerification call(small_multiple(kD), SmallSignature{0, 1}, kText);
    FailingAlloc failing(1);
    EXPECT_EQ(call.run(kUnknownHash), 0);
    EXPECT_EQ(failing.allocations, 1u);
}

TEST(EcdsaDigitalVeriy, KeptOneDigitBufferStaysAllocated) {
    install_small(32);
    EcdsaVerification call(small_multiple(kD), good_signature(), kText);
    FailingAlloc counter;
    EXPECT_EQ(call.run(HASH_ALG_SM3), 1);
    EXPECT_EQ(counter.allocations, 1u);
    EXPECT_EQ(counter.outstanding, kept_digit_buffers(1));
}

TEST(EcdsaDigitalVeriy, SMultipleOfTheOrderAllocatesNothing) {
    install_small(32);
    EcdsaVerification call(small_multiple(kD), SmallSignature{5, kSmallN}, kText);
    FailingAlloc counter;
    EXPECT_EQ(call.run(HASH_ALG_SM3), 0);
    EXPECT_EQ(counter.allocations, 0u);
}

TEST(EccGenPubKey, AllocatesNothing) {
    install_small(32);
    Scalar d(kD, 32);
    GuardedRecord<ecc_point_bytes> Q;
    FailingAlloc failing(1);
    EXPECT_EQ(Ecc_GenPubKey(d.get(), Q.get()), 0);
    EXPECT_EQ(failing.allocations, 0u);
}

TEST(EccKeyPairGen, AllocatesNothing) {
    install_small(32);
    for (uint32_t mode : {0u, 1u, 2u}) {
        Scalar d(kD, 32);
        GuardedRecord<ecc_point_bytes> Q;
        FailingAlloc failing(1);
        EXPECT_EQ(Ecc_KeyPair_Gen(d.get(), Q.get(), mode), 0);
        EXPECT_EQ(failing.allocations, 0u);
    }
}

TEST(EcesFormat, AllocatesNothing) {
    install_small(32);
    uint8_t block[32] = {};
    const uint8_t message[20] = {};
    uint8_t back[32] = {};  // a random byte of the filling that is zero makes what comes back longer
    uint32_t length = 0;
    FakeEntropy entropy;
    FailingAlloc failing(1);
    EXPECT_EQ(eces_format(32, message, 20, block, &length), 0);
    EXPECT_EQ(eces_deformat(block + 1, 31, back, &length), 0);
    EXPECT_EQ(failing.allocations, 0u);
}

}  // namespace zokecc_test::allocation_test

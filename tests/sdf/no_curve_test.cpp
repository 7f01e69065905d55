// What every call answers in a session that has no curve, and in one whose order or modulus
// is zero.
#include "tests/sdf/fixtures.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::no_curve_test {

namespace {

// The ways to a session without a curve.
enum class Kind { kDeviceWithoutRecord, kUnknownType, kNoMemoryForTheRecord };

class WithoutCurve : public ::testing::TestWithParam<Kind> {
protected:
    void SetUp() override {
        CurvePara record = small_curve().record(HASH_ALG_SM3);
        if (GetParam() == Kind::kDeviceWithoutRecord) {
            ASSERT_EQ(SDF_OpenDevice(&device_), ZOK_OK);
            ASSERT_EQ(SDF_OpenSession(device_, &session_), ZOK_OK);
        } else if (GetParam() == Kind::kUnknownType) {
            record.type = 9;
            ASSERT_EQ(ZOK_OpenSession(&session_, &record), ZOK_OK);
        } else {
            FailingAlloc second(2);
            ASSERT_EQ(ZOK_OpenSession(&session_, &record), ZOK_OK);
        }
    }
    void TearDown() override {
        EXPECT_EQ(SDF_CloseSession(session_), ZOK_OK);
        if (device_ != nullptr) {
            EXPECT_EQ(SDF_CloseDevice(device_), ZOK_OK);
        }
    }

    void *device_ = nullptr;
    void *session_ = nullptr;
    ByteString e_ = small_bytes(456);
    ByteString message_ = text_bytes("message");
    ByteString id_ = text_bytes("ALICE");
};

// A session of its own on the small curve with the given order and modulus.
class OwnSession {
public:
    OwnSession(uint32_t n, uint32_t p) {
        Curve changed = small_curve();
        changed.n = small_number(n);
        changed.p = small_number(p);
        CurvePara record = changed.record(HASH_ALG_SM3);
        EXPECT_EQ(ZOK_OpenSession(&handle_, &record), ZOK_OK);
    }
    ~OwnSession() { ZOK_CloseSession(handle_); }
    OwnSession(const OwnSession &) = delete;
    OwnSession &operator=(const OwnSession &) = delete;
    void *handle() { return handle_; }

private:
    void *handle_ = nullptr;
};

void expect_no_key_pair(void *session, uint32_t algorithm, uint32_t bits, uint32_t status) {
    GuardedRecord<ECCrefPublicKey> pub;
    GuardedRecord<ECCrefPrivateKey> priv;
    FakeEntropy entropy;
    EXPECT_EQ(SDF_GenerateKeyPair_ECC(session, algorithm, bits, pub.get(), priv.get()), status);
    EXPECT_EQ(entropy.number_calls, 0u);
    EXPECT_TRUE(pub.unchanged());
    EXPECT_TRUE(priv.unchanged());
}

}  // namespace

TEST_P(WithoutCurve, KeyGenerationReturns1000027ForAnySize) {
    for (uint32_t bits : {0u, 160u, 256u}) {
        expect_no_key_pair(session_, ZOK_ALG_SM2_KEY, bits, ZOK_ERR_ARGUMENT);
        expect_no_key_pair(session_, ZOK_ALG_ECDSA_KEY, bits, ZOK_ERR_ARGUMENT);
    }
}

TEST_P(WithoutCurve, SigningReturns100000D) {
    GuardedRecord<ECCSignature> sig;
    for (uint32_t algorithm : {ZOK_ALG_SM2_SIGN, ZOK_ALG_ECDSA_SIGN}) {
        EXPECT_EQ(sign_e(session_, algorithm, small_private_key(), e_, sig.get()), ZOK_ERR_SIGN);
        EXPECT_EQ(sign_e(session_, algorithm, small_private_key(0), e_, sig.get()), ZOK_ERR_SIGN);
    }
    EXPECT_TRUE(sig.unchanged());
}

TEST_P(WithoutCurve, VerifyingReturns100000E) {
    for (uint32_t algorithm : {ZOK_ALG_SM2_SIGN, ZOK_ALG_ECDSA_SIGN}) {
        EXPECT_EQ(verify_e(session_, algorithm, small_public_key(), e_, small_signature(226, 216)),
                  ZOK_ERR_VERIFY);
        EXPECT_EQ(verify_e(session_, algorithm, small_public_key(), e_, small_signature(0, 0)),
                  ZOK_ERR_VERIFY);
    }
}

TEST_P(WithoutCurve, UserInformationReturns1000027) {
    ECCrefPublicKey key = small_public_key();
    GuardedBuffer z(32);
    uint32_t z_len = 77;
    EXPECT_EQ(ZOK_GenerateUserInfo(session_, &key, id_.data(), 5, z.data(), &z_len), ZOK_ERR_ARGUMENT);
    EXPECT_TRUE(z.untouched());
    EXPECT_EQ(z_len, 77u);
}

TEST_P(WithoutCurve, SigningAMessageReturns1000027ForSm2And100000DForEcdsa) {
    GuardedRecord<ECCSignature> sig;
    EXPECT_EQ(sign_message(session_, ZOK_ALG_SM2_SIGN, small_private_key(), message_, id_, sig.get()),
              ZOK_ERR_ARGUMENT);
    EXPECT_EQ(sign_message(session_, ZOK_ALG_ECDSA_SIGN, small_private_key(), message_, id_, sig.get()),
              ZOK_ERR_SIGN);
    EXPECT_TRUE(sig.unchanged());
}

TEST_P(WithoutCurve, VerifyingAMessageReturns1000027ForSm2And100000EForEcdsa) {
    ECCSignature sig = small_signature(226, 216);
    EXPECT_EQ(verify_message(session_, ZOK_ALG_SM2_SIGN, small_public_key(), message_, id_, sig),
              ZOK_ERR_ARGUMENT);
    EXPECT_EQ(verify_message(session_, ZOK_ALG_ECDSA_SIGN, small_public_key(), message_, id_, sig),
              ZOK_ERR_VERIFY);
}

TEST_P(WithoutCurve, DeviceInformationAndRandomBytesWork) {
    GuardedRecord<DEVICEINFO> info;
    EXPECT_EQ(SDF_GetDeviceInfo(session_, info.get()), ZOK_OK);
    GuardedBuffer random(16);
    EXPECT_EQ(SDF_GenerateRandom(session_, 16, random.data()), ZOK_OK);
    EXPECT_TRUE(random.untouched_from(16));
}

INSTANTIATE_TEST_SUITE_P(Session, WithoutCurve,
                         ::testing::Values(Kind::kDeviceWithoutRecord, Kind::kUnknownType,
                                           Kind::kNoMemoryForTheRecord));

TEST(SdfGenerateKeyPairEcc, OrderZeroReturns1000027AfterTheSizeTest) {
    OwnSession session(0, 1009);
    expect_no_key_pair(session.handle(), ZOK_ALG_SM2_KEY, 160, ZOK_ERR_ARGUMENT);
    expect_no_key_pair(session.handle(), ZOK_ALG_ECDSA_KEY, 160, ZOK_ERR_ARGUMENT);
    expect_no_key_pair(session.handle(), kUnknownAlgorithm, 160, ZOK_ERR_ARGUMENT);
    expect_no_key_pair(session.handle(), ZOK_ALG_SM2_KEY, 152, ZOK_ERR_ARGUMENT);
}

TEST(SdfGenerateKeyPairEcc, ModulusZeroReturns1000027) {
    OwnSession session(991, 0);
    expect_no_key_pair(session.handle(), ZOK_ALG_SM2_KEY, 160, ZOK_ERR_ARGUMENT);
    expect_no_key_pair(session.handle(), ZOK_ALG_ECDSA_KEY, 160, ZOK_ERR_ARGUMENT);
}

TEST(SdfExternalSignEcc, OrderZeroReturns100000DForEveryKey) {
    OwnSession session(0, 1009);
    GuardedRecord<ECCSignature> sig;
    FakeEntropy entropy;
    for (uint32_t d : {0u, 1u, 123u})
        for (uint32_t algorithm : {ZOK_ALG_SM2_SIGN, ZOK_ALG_ECDSA_SIGN})
            EXPECT_EQ(sign_e(session.handle(), algorithm, small_private_key(d), small_bytes(1), sig.get()),
                      ZOK_ERR_SIGN);
    EXPECT_TRUE(sig.unchanged());
    EXPECT_EQ(entropy.number_calls, 0u);
}

TEST(SdfExternalVerifyEcc, OrderZeroReturns100000EForEverySignature) {
    OwnSession session(0, 1009);
    for (uint32_t r : {0u, 1u, 2u})
        for (uint32_t s : {0u, 1u, 2u})
            for (uint32_t algorithm : {ZOK_ALG_SM2_SIGN, ZOK_ALG_ECDSA_SIGN})
                EXPECT_EQ(verify_e(session.handle(), algorithm, small_public_key(), small_bytes(r),
                                   small_signature(r, s)),
                          ZOK_ERR_VERIFY);
}

TEST(SdfExternalSignEcc, ModulusZeroMakesEveryEcdsaRoundFruitless) {
    OwnSession session(991, 0);
    GuardedRecord<ECCSignature> sig;
    FakeEntropy entropy;
    EXPECT_EQ(sign_e(session.handle(), ZOK_ALG_ECDSA_SIGN, small_private_key(), small_bytes(1), sig.get()),
              ZOK_ERR_SIGN);
    EXPECT_EQ(entropy.number_calls, 1024u);
    EXPECT_TRUE(sig.unchanged());
}

}  // namespace zokecc_test::no_curve_test

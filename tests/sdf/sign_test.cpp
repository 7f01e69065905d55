// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SDF_ExternalSign_ECC: values with fixed nonces, and e of every length. The range of the key
// is in sign_range_test.cpp, rounds that start again are in sign_retry_test.cpp.
#include "tests/sdf/example.h"

namespace zokecc_test::sign_test {

namespace {

const char kSm2NMinus1[] = "fffffffeffffffffffffffffffffffff7203df6b21c6052b53bbf40939d54122";

}  // namespace

TEST(SdfExternalSignEcc, Sm2SignatureOfTheExample) {
    Sm2Signing signing;
    ASSERT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, example::priv(), example::e()), ZOK_OK);
    signing.expect(example::kR, example::kS);
}

TEST(SdfExternalSignEcc, EcdsaSignatureWithTheSameNumbers) {
    Sm2Signing signing;
    ASSERT_EQ(signing.sign(ZOK_ALG_ECDSA_SIGN, example::priv(), example::e()), ZOK_OK);
    signing.expect(example::kX, "5e828cf33c53c70b40b2e3fbf0009ff50a88cf76b24d4e9629a26e47a371d2b8");
}

TEST(SdfExternalSignEcc, WritesTwentyBytesPerNumberOnTheSmallCurve) {
    SmallSigning signing;
    ASSERT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, small_private_key()), ZOK_OK);
    expect_small_signature(signing.sig, 226, 216);
    ASSERT_EQ(signing.sign(ZOK_ALG_ECDSA_SIGN, small_private_key()), ZOK_OK);
    expect_small_signature(signing.sig, 761, 681);
}

TEST(SdfExternalSignEcc, DrawsOneNonceThroughTheGenerator) {
    GuardedRecord<ECCSignature> sig;
    FakeEntropy entropy;  // its first number below 991 is 694
    ASSERT_EQ(sign_e(small_session(), ZOK_ALG_SM2_SIGN, small_private_key(), small_bytes(456), sig.get()),
              ZOK_OK);
    expect_small_signature(sig, 418, 550);
    EXPECT_EQ(entropy.number_calls, 1u);
    EXPECT_EQ(entropy.seedings(), 2u);
}

TEST(SdfExternalSignEcc, InputsStayAsTheyWere) {
    ECCrefPrivateKey key = small_private_key();
    ByteString e = small_bytes(456);
    ByteString key_before = image(key);
    ByteString e_before = e;
    ByteString session_before = image(*static_cast<SessionContext *>(small_session()));
    SmallSigning signing;
    ASSERT_EQ(signing.sign(ZOK_ALG_ECDSA_SIGN, key, e), ZOK_OK);
    EXPECT_EQ(image(key), key_before);
    EXPECT_EQ(e, e_before);
    EXPECT_EQ(image(*static_cast<SessionContext *>(small_session())), session_before);
}

TEST(SdfExternalSignEcc, EmptyEIsZero) {
    ECCrefPrivateKey key = example::priv();
    {
        Sm2Signing signing;
        ASSERT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, key, ByteString()), ZOK_OK);
        signing.expect(example::kX, "740f494c6b9dcca0758fd4cf0eaa8ba8cd76e9b7e4fd916f7c484168f6a4b38f");
    }
    Sm2Signing signing;
    ASSERT_EQ(signing.sign(ZOK_ALG_ECDSA_SIGN, key, ByteString()), ZOK_OK);
    signing.expect(example::kX, "77780f2b77a9382c922c4e389554b378b86b304219e117a6ea5cca6991f09f66");
    const ECCrefPrivateKey small = small_private_key();
    GuardedRecord<ECCSignature> sig;
    FakeEntropy entropy;
    queue_numbers(entropy, {77});
    EXPECT_EQ(SDF_ExternalSign_ECC(small_session(), ZOK_ALG_SM2_SIGN, &small, nullptr, 0, sig.get()), ZOK_OK);
    expect_small_signature(sig, 761, 988);
}

TEST(SdfExternalSignEcc, EOfNineteenFullWordsIsReduced) {
    ECCrefPrivateKey key = example::priv();
    ByteString e(76, 0xFF);
    {
        Sm2Signing signing;
        ASSERT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, key, e), ZOK_OK);
        signing.expect("62dcc6dfd3f9d576af789568c67968a22f18a5b19c80292840bff55f94b29064",
                       "75d2cf99c3ac2046bbc785f90cb1216f2e3e5c5819d2d3fee3842a55bb358487");
    }
    Sm2Signing signing;
    ASSERT_EQ(signing.sign(ZOK_ALG_ECDSA_SIGN, key, e), ZOK_OK);
    signing.expect(example::kX, "3e51be952ec81ed1e02db62dcba46e7e30622b84e87ec81e13589be9d6d790ad");
}

TEST(SdfExternalSignEcc, EveryLengthOfEUpTo76IsTakenAsItStands) {
    for (size_t count = 2; count <= 76; ++count) {
        for (uint32_t algorithm : {ZOK_ALG_SM2_SIGN, ZOK_ALG_ECDSA_SIGN}) {
            SmallSigning signing;
            ASSERT_EQ(signing.sign(algorithm, small_private_key(), fixed_bytes(small_number(456), count)),
                      ZOK_OK);
            if (algorithm == ZOK_ALG_SM2_SIGN)
                expect_small_signature(signing.sig, 226, 216);
            else
                expect_small_signature(signing.sig, 761, 681);
        }
    }
}

// One half modulo the SM2 order comes out wrong, because subtraction turns equal words under a
// borrow into FFFFFFFE; so do other inverses of structured numbers. r is right, s is not.
TEST(SdfExternalSignEcc, KeptKeyOneOnTheSm2CurveGivesASignatureThatDoesNotVerify) {
    Sm2Signing signing;
    ByteString e = example::e();
    ASSERT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, private_key(fixed_bytes(small_number(1), 32)), e), ZOK_OK);
    signing.expect(example::kR, "deb59d783af6e6c97ba492c476ae5c7d9274852606384ea8ef1e7741bd72979e");
    ECCrefPublicKey base_point =
        public_key(fixed_bytes(curve("sm2p256v1").G.x, 32), fixed_bytes(curve("sm2p256v1").G.y, 32));
    EXPECT_EQ(verify_e(sm2_session(), ZOK_ALG_SM2_SIGN, base_point, e, *signing.sig.get()), ZOK_ERR_VERIFY);
}

TEST(SdfExternalSignEcc, KeptKeyNMinusTwoOnTheSm2CurveGivesTheWrongS) {
    Sm2Signing signing;
    ByteString d = from_hex(kSm2NMinus1);
    d[31] = static_cast<uint8_t>(d[31] - 1);
    ASSERT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, private_key(d), example::e()), ZOK_OK);
    signing.expect(example::kR, "48f5e11f0e58e182088e68f2155d85c270e17e6c765ac6d30c1d262aaa1ef45d");
}

TEST(SdfExternalSignEcc, KeptNonceTwoOnP256GivesTheWrongEcdsaS) {
    void *session = shared_session(curve("secp256r1"));
    FakeEntropy entropy;
    queue_numbers(entropy, {2});
    GuardedRecord<ECCSignature> sig;
    ASSERT_EQ(sign_e(session, ZOK_ALG_ECDSA_SIGN, example::priv(), example::e(), sig.get()), ZOK_OK);
    EXPECT_EQ(to_hex(sig->s, 32), "b55e7be80268a69800697da99e499ac867291cdc1697b3519a3ef4e29c9a913c");
}

}  // namespace zokecc_test::sign_test

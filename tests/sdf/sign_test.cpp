// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SDF_ExternalSign_ECC: values with fixed nonces, the range and the length of the key. Rounds that
// are repeated are in sign_retry_test.cpp.
#include "tests/sdf/example.h"

namespace zokecc_test::sign_test {

namespace {

const char kSm2NMinus1[] = "fffffffeffffffffffffffffffffffff7203df6b21c6052b53bbf40939d54122";

// The small key with its 20 bytes at the end of `count` bytes.
ECCrefPrivateKey wide_key(size_t count) { return private_key(fixed_bytes(small_number(123), count)); }

}  // namespace

// The signatures of the example's value, of no bytes, which are zero, and of nineteen full words, which are
// reduced.
TEST(SdfExternalSignEcc, ValuesWithTheKeyAndTheNonceOfTheExample) {
    struct Case {
        ByteString e;
        const char *sm2_r, *sm2_s, *ecdsa_s;
    };
    const Case cases[] = {
        {example::e(), example::kR, example::kS,
         "5e828cf33c53c70b40b2e3fbf0009ff50a88cf76b24d4e9629a26e47a371d2b8"},
        {{},
         example::kX,
         "740f494c6b9dcca0758fd4cf0eaa8ba8cd76e9b7e4fd916f7c484168f6a4b38f",
         "77780f2b77a9382c922c4e389554b378b86b304219e117a6ea5cca6991f09f66"},
        {ByteString(76, 0xFF), "62dcc6dfd3f9d576af789568c67968a22f18a5b19c80292840bff55f94b29064",
         "75d2cf99c3ac2046bbc785f90cb1216f2e3e5c5819d2d3fee3842a55bb358487",
         "3e51be952ec81ed1e02db62dcba46e7e30622b84e87ec81e13589be9d6d790ad"},
    };
    for (const Case &c : cases) {
        ExampleSigning sm2;
        ASSERT_EQ(sm2.sign(ZOK_ALG_SM2_SIGN, example::priv(), c.e), ZOK_OK);
        sm2.expect(c.sm2_r, c.sm2_s);
    }
    for (const Case &c : cases) {
        ExampleSigning ecdsa;
        ASSERT_EQ(ecdsa.sign(ZOK_ALG_ECDSA_SIGN, example::priv(), c.e), ZOK_OK);
        ecdsa.expect(example::kX, c.ecdsa_s);
    }
}

TEST(SdfExternalSignEcc, NullEOfNoBytesIsZero) {
    const ECCrefPrivateKey small = small_private_key();
    GuardedRecord<ECCSignature> sig;
    FakeEntropy entropy;
    queue_numbers(entropy, {77});
    EXPECT_EQ(SDF_ExternalSign_ECC(small_session(), ZOK_ALG_SM2_SIGN, &small, nullptr, 0, sig.get()), ZOK_OK);
    expect_small_signature(sig, 761, 988);
}

// One half modulo the SM2 order is computed wrong, because subtraction turns equal words under a
// borrow into FFFFFFFE; so are other inverses of structured numbers. r is right, s is not.
TEST(SdfExternalSignEcc, KeptKeyOneOnTheSm2CurveGivesASignatureThatDoesNotVerify) {
    ExampleSigning signing;
    ByteString e = example::e();
    ASSERT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, private_key(fixed_bytes(small_number(1), 32)), e), ZOK_OK);
    signing.expect(example::kR, "deb59d783af6e6c97ba492c476ae5c7d9274852606384ea8ef1e7741bd72979e");
    ECCrefPublicKey base_point = base_point_key(curve("sm2p256v1"));
    EXPECT_EQ(verify_e(sm2_session(), ZOK_ALG_SM2_SIGN, base_point, e, *signing.sig.get()), ZOK_ERR_VERIFY);
}

TEST(SdfExternalSignEcc, KeptKeyNMinusTwoOnTheSm2CurveGivesTheWrongS) {
    ExampleSigning signing;
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

TEST(SdfExternalSignEcc, KeyNMinusOneReturns100000DForSm2) {
    SmallSigning signing;
    EXPECT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, small_private_key(990)), ZOK_ERR_SIGN);
    signing.expect_refused();
    EXPECT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, small_private_key(989)), ZOK_OK);
    expect_small_signature(signing.sig, 226, 462);
}

TEST(SdfExternalSignEcc, KeyNMinusOneSignsWithEcdsa) {
    SmallSigning signing;
    EXPECT_EQ(signing.sign(ZOK_ALG_ECDSA_SIGN, small_private_key(990)), ZOK_OK);
    expect_small_signature(signing.sig, 761, 99);
    EXPECT_EQ(verify_e(small_session(), ZOK_ALG_ECDSA_SIGN, small_public_key(2, 644), small_bytes(456),
                       *signing.sig.get()),
              ZOK_OK);
}

TEST(SdfExternalSignEcc, KeyNMinusOneOnTheSm2Curve) {
    ECCrefPrivateKey key = private_key(from_hex(kSm2NMinus1));
    ExampleSigning signing;
    ASSERT_EQ(signing.sign(ZOK_ALG_ECDSA_SIGN, key, example::e()), ZOK_OK);
    signing.expect(example::kX, "7aaa342bda47c5eb397d242a0d3ee4155eb5b47f41f0abd3c0ba7d6ca990b4a5");
    EXPECT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, key, example::e()), ZOK_ERR_SIGN);
    EXPECT_EQ(signing.entropy.number_calls, 1u);
}

TEST(SdfExternalSignEcc, KeyLengthIsTheWholeBytesOfItsBits) {
    struct Case {
        uint32_t bits;
        uint32_t status;
    };
    // 123 is the last byte of the 20; whole bytes before it are zero.
    for (Case c : {Case{160, ZOK_OK}, Case{167, ZOK_OK}, Case{159, ZOK_ERR_SIGN}, Case{152, ZOK_ERR_SIGN},
                   Case{0, ZOK_ERR_SIGN}, Case{7, ZOK_ERR_SIGN}}) {
        ECCrefPrivateKey key = small_private_key();
        key.bits = c.bits;
        SmallSigning signing;
        EXPECT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, key), c.status) << c.bits;
        if (c.status == ZOK_OK)
            expect_small_signature(signing.sig, 226, 216);
        else
            signing.expect_refused();
    }
}

TEST(SdfExternalSignEcc, EightBitsReadTheFirstByteOfTheKey) {
    for (uint32_t bits : {8u, 15u}) {
        ECCrefPrivateKey key = private_key(ByteString{123});
        key.bits = bits;
        SmallSigning signing;
        EXPECT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, key), ZOK_OK);
        expect_small_signature(signing.sig, 226, 216);
    }
}

TEST(SdfExternalSignEcc, KeyMayBeWiderThanTheCurveUpTo64Bytes) {
    for (size_t count : {size_t{21}, size_t{33}, size_t{64}}) {
        SmallSigning signing;
        EXPECT_EQ(signing.sign(ZOK_ALG_ECDSA_SIGN, wide_key(count)), ZOK_OK) << count;
        expect_small_signature(signing.sig, 761, 681);
    }
    ECCrefPrivateKey key = wide_key(64);
    key.bits = 519;
    SmallSigning signing;
    EXPECT_EQ(signing.sign(ZOK_ALG_ECDSA_SIGN, key), ZOK_OK);
    key.K[0] = 1;
    SmallSigning too_large;
    EXPECT_EQ(too_large.sign(ZOK_ALG_ECDSA_SIGN, key), ZOK_ERR_SIGN);
    too_large.expect_refused();
}

TEST(SdfExternalSignEcc, Bits255OnA256BitCurveReadOneByteLess) {
    // The 31 bytes of the key that are read, then the last byte: 1 and 0.
    ByteString d(31, 0);
    d[30] = 1;
    ECCrefPrivateKey key = private_key(d);
    key.bits = 255;
    GuardedRecord<ECCSignature> sig;
    ECCrefPrivateKey one = private_key(fixed_bytes(small_number(1), 32));
    for (const ECCrefPrivateKey *used : {&key, &one}) {
        FakeEntropy entropy;
        entropy.queued_numbers.push_back(mint_from_hex(example::kK));
        ASSERT_EQ(sign_e(sm2_session(), ZOK_ALG_ECDSA_SIGN, *used, ByteString(), sig.get()), ZOK_OK);
        // With e = 0 and d = 1, s = x / k.
        expect_signature(sig, from_hex(example::kX),
                         from_hex("6c60499aea62c8f3750971994d6d0866656bca2078419046d2471a7aa1c5bfd0"));
    }
}

}  // namespace zokecc_test::sign_test

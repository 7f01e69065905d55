// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// ZOK_ExternalVerifyHash_ECC: what makes a signature of a message good or bad, and the order
// of the checks.
#include "tests/sdf/example.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::message_verify_test {

namespace {

ByteString alice() { return text_bytes("ALICE"); }
ByteString bob() { return text_bytes("BOB"); }
ByteString hello() { return text_bytes("hello"); }

// A signature of "hello" by ALICE on the SM2 curve.
ECCSignature signed_hello(uint32_t algorithm, uint32_t selector) {
    FakeEntropy entropy;
    ECCSignature sig{};
    EXPECT_EQ(sign_message(sm2_session(selector), algorithm, example::priv(), hello(), alice(), &sig),
              ZOK_OK);
    return sig;
}

struct Kind {
    uint32_t algorithm;
    uint32_t selector;
};
const Kind kKinds[] = {{ZOK_ALG_SM2_SIGN, HASH_ALG_SM3},
                       {ZOK_ALG_SM2_SIGN, HASH_ALG_SHA256},
                       {ZOK_ALG_ECDSA_SIGN, HASH_ALG_SM3},
                       {ZOK_ALG_ECDSA_SIGN, HASH_ALG_SHA256}};

}  // namespace

TEST(ZokExternalVerifyHashEcc, AcceptsWhatTheSigningCallMakes) {
    for (const Kind &kind : kKinds)
        EXPECT_EQ(verify_message(sm2_session(kind.selector), kind.algorithm, example::pub(), hello(), alice(),
                                 signed_hello(kind.algorithm, kind.selector)),
                  ZOK_OK);
}

TEST(ZokExternalVerifyHashEcc, AcceptsMessagesAroundTheBlockBorders) {
    for (const Kind &kind : kKinds)
        for (size_t size : {0u, 1u, 23u, 24u, 31u, 32u, 55u, 56u, 64u, 119u, 120u, 200u}) {
            FakeEntropy entropy;
            ByteString text(size, 0x61);
            ECCSignature sig{};
            ASSERT_EQ(sign_message(small_session(kind.selector), kind.algorithm, small_private_key(), text,
                                   alice(), &sig),
                      ZOK_OK);
            EXPECT_EQ(verify_message(small_session(kind.selector), kind.algorithm, small_public_key(), text,
                                     alice(), sig),
                      ZOK_OK)
                << size;
        }
}

TEST(ZokExternalVerifyHashEcc, RefusesAnotherMessage) {
    for (const Kind &kind : kKinds) {
        ECCSignature sig = signed_hello(kind.algorithm, kind.selector);
        for (const char *text : {"hellp", "hell", "hello ", ""})
            EXPECT_EQ(verify_message(sm2_session(kind.selector), kind.algorithm, example::pub(),
                                     text_bytes(text), alice(), sig),
                      ZOK_ERR_VERIFY);
    }
}

TEST(ZokExternalVerifyHashEcc, Sm2RefusesAnotherIdentity) {
    ECCSignature sig = signed_hello(ZOK_ALG_SM2_SIGN, HASH_ALG_SM3);
    for (const ByteString &id : {bob(), text_bytes("ALIC"), ByteString()})
        EXPECT_EQ(verify_message(sm2_session(), ZOK_ALG_SM2_SIGN, example::pub(), hello(), id, sig),
                  ZOK_ERR_VERIFY);
}

TEST(ZokExternalVerifyHashEcc, EcdsaIgnoresTheIdentity) {
    ECCSignature sig = signed_hello(ZOK_ALG_ECDSA_SIGN, HASH_ALG_SM3);
    ECCrefPublicKey key = example::pub();
    ByteString text = hello();
    EXPECT_EQ(verify_message(sm2_session(), ZOK_ALG_ECDSA_SIGN, key, text, bob(), sig), ZOK_OK);
    EXPECT_EQ(ZOK_ExternalVerifyHash_ECC(sm2_session(), ZOK_ALG_ECDSA_SIGN, &key, text.data(), 5, nullptr,
                                         0xFFFFFFFFu, &sig),
              ZOK_OK);
}

TEST(ZokExternalVerifyHashEcc, RefusesASignatureOverTheOtherHash) {
    for (const Kind &kind : kKinds)
        EXPECT_EQ(verify_message(sm2_session(1 - kind.selector), kind.algorithm, example::pub(), hello(),
                                 alice(), signed_hello(kind.algorithm, kind.selector)),
                  ZOK_ERR_VERIFY);
}

TEST(ZokExternalVerifyHashEcc, RefusesASignatureOfTheOtherAlgorithm) {
    EXPECT_EQ(verify_message(sm2_session(), ZOK_ALG_ECDSA_SIGN, example::pub(), hello(), alice(),
                             signed_hello(ZOK_ALG_SM2_SIGN, HASH_ALG_SM3)),
              ZOK_ERR_VERIFY);
    EXPECT_EQ(verify_message(sm2_session(), ZOK_ALG_SM2_SIGN, example::pub(), hello(), alice(),
                             signed_hello(ZOK_ALG_ECDSA_SIGN, HASH_ALG_SM3)),
              ZOK_ERR_VERIFY);
}

TEST(ZokExternalVerifyHashEcc, RefusesAnotherPublicKey) {
    ECCrefPublicKey base =
        public_key(fixed_bytes(curve("sm2p256v1").G.x, 32), fixed_bytes(curve("sm2p256v1").G.y, 32));
    for (const Kind &kind : kKinds)
        EXPECT_EQ(verify_message(sm2_session(kind.selector), kind.algorithm, base, hello(), alice(),
                                 signed_hello(kind.algorithm, kind.selector)),
                  ZOK_ERR_VERIFY);
}

TEST(ZokExternalVerifyHashEcc, BitsOfTheKeyChangeThePointAndNotZ) {
    ECCSignature sig = signed_hello(ZOK_ALG_SM2_SIGN, HASH_ALG_SM3);
    ECCrefPublicKey key = example::pub();
    key.bits = 263;
    EXPECT_EQ(verify_message(sm2_session(), ZOK_ALG_SM2_SIGN, key, hello(), alice(), sig), ZOK_OK);
    key.bits = 255;
    EXPECT_EQ(verify_message(sm2_session(), ZOK_ALG_SM2_SIGN, key, hello(), alice(), sig), ZOK_ERR_VERIFY);
}

TEST(ZokExternalVerifyHashEcc, NullMessageOfLengthZeroIsTheEmptyMessage) {
    ECCrefPublicKey key = example::pub();
    ByteString id = alice();
    for (const Kind &kind : kKinds) {
        FakeEntropy entropy;
        ECCSignature sig{};
        ASSERT_EQ(
            sign_message(sm2_session(kind.selector), kind.algorithm, example::priv(), ByteString(), id, &sig),
            ZOK_OK);
        EXPECT_EQ(ZOK_ExternalVerifyHash_ECC(sm2_session(kind.selector), kind.algorithm, &key, nullptr, 0,
                                             id.data(), 5, &sig),
                  ZOK_OK);
    }
}

TEST(ZokExternalVerifyHashEcc, InputsStayAsTheyWereAndNothingIsDrawn) {
    for (const Kind &kind : kKinds) {
        ECCSignature sig = signed_hello(kind.algorithm, kind.selector);
        ECCrefPublicKey key = example::pub();
        ByteString before = image(sig);
        ByteString key_before = image(key);
        FakeEntropy entropy;
        EXPECT_EQ(verify_message(sm2_session(kind.selector), kind.algorithm, key, hello(), alice(), sig),
                  ZOK_OK);
        EXPECT_EQ(image(sig), before);
        EXPECT_EQ(image(key), key_before);
        EXPECT_TRUE(entropy.call_order.empty());
    }
}

}  // namespace zokecc_test::message_verify_test

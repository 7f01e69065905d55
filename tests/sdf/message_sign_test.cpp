// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// ZOK_ExternalSignHash_ECC and ZOK_ExternalVerifyHash_ECC: the bytes that are hashed, and what else a
// signature depends on.
#include "tests/sdf/example.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/model_exchange.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::message_sign_test {

namespace {

ByteString alice() { return text_bytes("ALICE"); }
ByteString bob() { return text_bytes("BOB"); }
ByteString hello() { return text_bytes("hello"); }

// One signature with nonce 77, of a message or of a value hashed by the test.
struct Signing {
    GuardedRecord<ECCSignature> sig;
    FakeEntropy entropy;

    Signing() { queue_numbers(entropy, {77}); }
    uint32_t message(void *session, uint32_t algorithm, const ByteString &text, const ByteString &id,
                     const ECCrefPrivateKey &key = small_private_key()) {
        return sign_message(session, algorithm, key, text, id, sig.get());
    }
    uint32_t value(void *session, uint32_t algorithm, const ByteString &e) {
        return sign_e(session, algorithm, small_private_key(), e, sig.get());
    }
    void expect_refused() const {
        EXPECT_TRUE(sig.unchanged());
        EXPECT_EQ(entropy.number_calls, 0u);
    }
};

// A signature of "hello" by ALICE on the SM2 curve.
ECCSignature signed_hello(uint32_t algorithm, uint32_t selector) {
    FakeEntropy entropy;
    ECCSignature sig{};
    EXPECT_EQ(sign_message(sm2_session(selector), algorithm, example::priv(), hello(), alice(), &sig),
              ZOK_OK);
    return sig;
}

}  // namespace

TEST(ZokExternalSignHashEcc, EcdsaIgnoresTheIdentity) {
    ECCrefPrivateKey key = small_private_key();
    ByteString text = hello();
    Signing with_alice;
    Signing with_bob;
    ASSERT_EQ(with_alice.message(small_session(), ZOK_ALG_ECDSA_SIGN, text, alice()), ZOK_OK);
    {
        FakeEntropy entropy;
        queue_numbers(entropy, {77});
        ASSERT_EQ(ZOK_ExternalSignHash_ECC(small_session(), ZOK_ALG_ECDSA_SIGN, &key, text.data(), 5, nullptr,
                                           0xFFFFFFFFu, with_bob.sig.get()),
                  ZOK_OK);
    }
    EXPECT_EQ(with_alice.sig.bytes(), with_bob.sig.bytes());
}

TEST(ZokExternalSignHashEcc, NullIdentityOfLengthZeroIsTheEmptyIdentity) {
    ECCrefPrivateKey key = small_private_key();
    ByteString text = hello();
    const ByteString z = exchange::model_user_z(small_curve(), 0, {}, small_bytes(346), small_bytes(763));
    Signing null_id;
    ASSERT_EQ(ZOK_ExternalSignHash_ECC(small_session(), ZOK_ALG_SM2_SIGN, &key, text.data(), 5, nullptr, 0,
                                       null_id.sig.get()),
              ZOK_OK);
    Signing by_value;
    ASSERT_EQ(by_value.value(small_session(), ZOK_ALG_SM2_SIGN, model_sm3(joined({z, text}))), ZOK_OK);
    EXPECT_EQ(null_id.sig.bytes(), by_value.sig.bytes());
}

// Here the standard takes the leftmost 192 bits of the digest; the library reduces all 256.
TEST(ZokExternalSignHashEcc, KeptEcdsaReducesTheWholeDigestOnShortCurves) {
    FakeEntropy entropy;
    entropy.queued_numbers.push_back(mint_from_hex("a5c817a236a5f7faa329b8ecc3c596687c71aaaf86c7703e"));
    ByteString text = from_hex(
        "5c868fedb8026979ebd26f1ba07c27eedf4ff6d10443505a96ecaf21ba8c4f0937b3cd23ffdc3dd429d4cd1905fb8dbc"
        "ceeff1350020e18b58d2ba70887baa3a9b783ad30d3fbf210331cdd7df8d77defa398cdacdfc2e359c7ba4cae46bb744"
        "01deb417f8b912a1aa966aeeba9c39c7dd22479ae2b30719dca2f2206c5eb4b7");
    GuardedRecord<ECCSignature> sig;
    ASSERT_EQ(sign_message(shared_session(curve("secp192r1"), HASH_ALG_SHA256), ZOK_ALG_ECDSA_SIGN,
                           private_key(from_hex("24edd22f7ddd6fa5bc61fc0653479aa40809ef865cf27a47")), text,
                           ByteString(), sig.get()),
              ZOK_OK);
    expect_signature(sig, from_hex("354abaecf4361fea90c29b9199882edf8573e686a813eff8"),
                     from_hex("3d8389206645eb17d02647f6542a9a593e032e5138cec44b"));
}

TEST(ZokExternalSignHashEcc, RefusedConfigurationDecidesTheHash) {
    Session session(small_curve(), HASH_ALG_SM3);
    CurvePara refused = small_curve().record(HASH_ALG_SHA256);
    refused.Gy[19] ^= 3;
    ASSERT_EQ(ZOK_CurveParaCfg(session.handle(), refused.type, &refused), ZOK_ERR_INTERNAL);
    Signing by_message;
    ASSERT_EQ(by_message.message(session.handle(), ZOK_ALG_ECDSA_SIGN, hello(), bob()), ZOK_OK);
    Signing by_value;
    ASSERT_EQ(by_value.value(session.handle(), ZOK_ALG_ECDSA_SIGN, model_sha256(hello())), ZOK_OK);
    EXPECT_EQ(by_message.sig.bytes(), by_value.sig.bytes());
}

TEST(ZokExternalSignHashEcc, LargestMessageIsAskedFor) {
    ECCrefPrivateKey key = small_private_key();
    uint8_t byte = 0;
    Signing signing;
    FailingAlloc counter(2);
    EXPECT_EQ(ZOK_ExternalSignHash_ECC(small_session(), ZOK_ALG_SM2_SIGN, &key, &byte, 0xFFFFFFFFu - 33u,
                                       &byte, 1, signing.sig.get()),
              ZOK_ERR_INTERNAL);
    EXPECT_EQ(counter.last_size, size_t{0xFFFFFFFFu});
    EXPECT_EQ(counter.outstanding, 0);
    signing.expect_refused();
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

TEST(ZokExternalVerifyHashEcc, RefusesASignatureOfTheOtherAlgorithm) {
    EXPECT_EQ(verify_message(sm2_session(), ZOK_ALG_ECDSA_SIGN, example::pub(), hello(), alice(),
                             signed_hello(ZOK_ALG_SM2_SIGN, HASH_ALG_SM3)),
              ZOK_ERR_VERIFY);
    EXPECT_EQ(verify_message(sm2_session(), ZOK_ALG_SM2_SIGN, example::pub(), hello(), alice(),
                             signed_hello(ZOK_ALG_ECDSA_SIGN, HASH_ALG_SM3)),
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

}  // namespace zokecc_test::message_sign_test

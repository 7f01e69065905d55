// ZOK_ExternalSignHash_ECC: the range of the key, sizes near 4 GiB, unknown identifiers, and the
// order of the checks.
#include "tests/sdf/fixtures.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::message_sign_range_test {

namespace {

ByteString alice() { return text_bytes("ALICE"); }
ByteString hello() { return text_bytes("hello"); }

// One signature of a message with nonce 77.
struct Signing {
    GuardedRecord<ECCSignature> sig;
    FakeEntropy entropy;

    Signing() { queue_numbers(entropy, {77}); }
    uint32_t message(void *session, uint32_t algorithm, const ByteString &text, const ByteString &id,
                     const ECCrefPrivateKey &key) {
        return sign_message(session, algorithm, key, text, id, sig.get());
    }
    void expect_refused() const {
        EXPECT_TRUE(sig.unchanged());
        EXPECT_EQ(entropy.number_calls, 0u);
    }
};

}  // namespace

TEST(ZokExternalSignHashEcc, KeyNotBelowTheOrderReturns100000DWhateverItsWidth) {
    std::vector<ECCrefPrivateKey> keys = {
        small_private_key(0), small_private_key(991), private_key(ByteString(20, 0xFF)),
        private_key(ByteString(32, 0xFF)), private_key(ByteString(64, 0xFF))};
    for (const ECCrefPrivateKey &key : keys)
        for (uint32_t algorithm : {ZOK_ALG_SM2_SIGN, ZOK_ALG_ECDSA_SIGN}) {
            Signing signing;
            EXPECT_EQ(signing.message(small_session(), algorithm, hello(), alice(), key), ZOK_ERR_SIGN);
            signing.expect_refused();
        }
}

TEST(ZokExternalSignHashEcc, KeyOf64BytesOnTheSm2CurveReturns100000D) {
    Signing signing;
    EXPECT_EQ(
        signing.message(sm2_session(), ZOK_ALG_SM2_SIGN, hello(), alice(), private_key(ByteString(64, 0xFF))),
        ZOK_ERR_SIGN);
    signing.expect_refused();
}

TEST(ZokExternalSignHashEcc, KeyNMinusOneReturns100000DForSm2AndSignsWithEcdsa) {
    Signing sm2;
    EXPECT_EQ(sm2.message(small_session(), ZOK_ALG_SM2_SIGN, hello(), alice(), small_private_key(990)),
              ZOK_ERR_SIGN);
    sm2.expect_refused();
    Signing ecdsa;
    EXPECT_EQ(ecdsa.message(small_session(), ZOK_ALG_ECDSA_SIGN, hello(), alice(), small_private_key(990)),
              ZOK_OK);
}

TEST(ZokExternalSignHashEcc, KeyOfMoreThan64BytesReturns1000027) {
    ECCrefPrivateKey key = small_private_key();
    key.bits = 520;
    for (uint32_t algorithm : {ZOK_ALG_SM2_SIGN, ZOK_ALG_ECDSA_SIGN}) {
        Signing signing;
        EXPECT_EQ(signing.message(small_session(), algorithm, hello(), alice(), key), ZOK_ERR_ARGUMENT);
        signing.expect_refused();
    }
}

TEST(ZokExternalSignHashEcc, UnknownAlgorithmReturnsMinusOneAndReadsNothing) {
    ECCrefPrivateKey key = small_private_key();
    key.bits = 0xFFFFFFFF;
    for (uint32_t algorithm : {0u, ZOK_ALG_SM2_KEY, ZOK_ALG_ECDSA_KEY, kUnknownAlgorithm}) {
        Signing signing;
        EXPECT_EQ(signing.message(small_session(), algorithm, hello(), alice(), key), ZOK_ERR_INTERNAL);
        EXPECT_EQ(signing.message(small_session(), algorithm, hello(), alice(), small_private_key(0)),
                  ZOK_ERR_INTERNAL);
        signing.expect_refused();
        EXPECT_EQ(
            ZOK_ExternalSignHash_ECC(small_session(), algorithm, nullptr, nullptr, 1, nullptr, 1, nullptr),
            ZOK_ERR_INTERNAL);
    }
}

TEST(ZokExternalSignHashEcc, UnknownSelectorReturns1000027ForSm2AndMinusOneForEcdsa) {
    Session session(small_curve(), 2);
    // Both come before the range of the key is looked at, and after the length of the key.
    for (uint32_t d : {0u, 123u, 991u}) {
        Signing signing;
        EXPECT_EQ(signing.message(session.handle(), ZOK_ALG_SM2_SIGN, hello(), alice(), small_private_key(d)),
                  ZOK_ERR_ARGUMENT);
        EXPECT_EQ(
            signing.message(session.handle(), ZOK_ALG_ECDSA_SIGN, hello(), alice(), small_private_key(d)),
            ZOK_ERR_INTERNAL);
        signing.expect_refused();
    }
    ECCrefPrivateKey key = small_private_key();
    key.bits = 520;
    Signing signing;
    EXPECT_EQ(signing.message(session.handle(), ZOK_ALG_ECDSA_SIGN, hello(), alice(), key), ZOK_ERR_ARGUMENT);
    signing.expect_refused();
}

TEST(ZokExternalSignHashEcc, IdentityOfNearly4GiBReturns1000027) {
    ECCrefPrivateKey key = small_private_key();
    uint8_t byte = 0;
    Signing signing;
    FailingAlloc counter;
    EXPECT_EQ(ZOK_ExternalSignHash_ECC(small_session(), ZOK_ALG_SM2_SIGN, &key, &byte, 0xFFFFFFFFu, &byte,
                                       0xFFFFFFFFu, signing.sig.get()),
              ZOK_ERR_ARGUMENT);
    EXPECT_EQ(counter.allocations, 0u);
    signing.expect_refused();
}

TEST(ZokExternalSignHashEcc, MessageOfNearly4GiBReturnsMinusOneForSm2) {
    uint8_t byte = 0;
    ByteString id = alice();
    // Z, the message and one more byte are 2^32 bytes and more; also with a key out of range.
    for (uint32_t d : {123u, 0u})
        for (uint32_t size : {0xFFFFFFFFu - 32u, 0xFFFFFFFFu}) {
            ECCrefPrivateKey key = small_private_key(d);
            Signing signing;
            FailingAlloc counter;
            EXPECT_EQ(ZOK_ExternalSignHash_ECC(small_session(), ZOK_ALG_SM2_SIGN, &key, &byte, size,
                                               id.data(), 5, signing.sig.get()),
                      ZOK_ERR_INTERNAL);
            EXPECT_EQ(counter.allocations, 1u);
            signing.expect_refused();
        }
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

}  // namespace zokecc_test::message_sign_range_test

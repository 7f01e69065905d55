// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SDF_ExternalSign_ECC: rounds that are repeated with another nonce, the r = 0 that is
// kept in SM2 signing, and the end after 1,024 rounds without success.
//
// On the small curve with d = 123 and e = 1 a nonce of
//   73 gives r + k = n,   219 gives r = 0,   957 gives s = 0,   77 gives (762, 4).
#include "tests/sdf/example.h"

namespace zokecc_test::sign_retry_test {

namespace {

constexpr uint32_t kSumIsOrder = 73;
constexpr uint32_t kRIsZero = 219;
constexpr uint32_t kSIsZero = 957;
constexpr uint32_t kGood = 77;

// Every nonce of the list is drawn, and the last one gives r and s.
void expect_sm2(std::initializer_list<uint32_t> nonces, uint32_t r, uint32_t s, uint32_t e = 1) {
    SmallSigning signing;
    ASSERT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, small_private_key(), small_bytes(e), nonces), ZOK_OK);
    expect_small_signature(signing.sig, r, s);
    EXPECT_EQ(signing.entropy.number_calls, nonces.size());
    EXPECT_TRUE(signing.entropy.queued_numbers.empty());
}

// b = 0 and G = (0, 0): the base point is on the curve, and every multiple has x = 0.
Curve useless_curve() {
    Curve out = small_curve();
    out.name = "useless";
    out.b = mint{};
    out.G = ecc_point{};
    return out;
}

}  // namespace

TEST(SdfExternalSignEcc, Sm2SEqualToZeroStartsAgain) {
    expect_sm2({kSIsZero, kGood}, 762, 4);
    expect_sm2({kSIsZero, kSumIsOrder, kSIsZero, kGood}, 762, 4);
}

TEST(SdfExternalSignEcc, KeptZeroRIsAccepted) { expect_sm2({kRIsZero}, 0, 761); }

TEST(SdfExternalSignEcc, KeptSm2AcceptsREqualToZeroAfterSEqualToZero) {
    expect_sm2({kSIsZero, kRIsZero}, 0, 761);
}

TEST(SdfExternalSignEcc, KeptSm2REqualToZeroStartsAgainRightAfterRPlusKEqualToTheOrder) {
    expect_sm2({kSumIsOrder, kRIsZero, kGood}, 762, 4);
    expect_sm2({kSumIsOrder, kRIsZero, kRIsZero, kRIsZero, kGood}, 762, 4);
    expect_sm2({kSIsZero, kSumIsOrder, kRIsZero, kGood}, 762, 4);
}

TEST(SdfExternalSignEcc, KeptSm2SEqualToZeroForgetsAnEarlierRPlusKEqualToTheOrder) {
    expect_sm2({kSumIsOrder, kSIsZero, kRIsZero}, 0, 761);
    expect_sm2({kSumIsOrder, kRIsZero, kSIsZero, kRIsZero}, 0, 761);
    expect_sm2({kSumIsOrder, kSIsZero, kSumIsOrder, kRIsZero, kGood}, 762, 4);
}

TEST(SdfExternalSignEcc, KeptSm2NonceZeroIsUsed) {
    expect_sm2({0}, 1, 7);  // r = e, s = -r d / (1 + d)
}

TEST(SdfExternalSignEcc, Sm2NonceZeroWithEZeroGivesSZeroAndStartsAgain) {
    expect_sm2({0, kGood}, 761, 988, 0);
}

TEST(SdfExternalSignEcc, KeptSm2REqualToZeroOnTheSm2Curve) {
    // e = n - x of k G; s = k / (1 + d).
    const ByteString e = from_hex("fb14038d7172e8679dfbcdd97188014930a5b08d13bec91c0457e53c0bc0a6b0");
    ExampleSigning signing;
    ASSERT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, example::priv(), e), ZOK_OK);
    signing.expect("0000000000000000000000000000000000000000000000000000000000000000",
                   "0e9ed3f9384552871c05b57813f956a96dd20d7477d19424de3e842851f9d5ab");
    EXPECT_EQ(verify_e(sm2_session(), ZOK_ALG_SM2_SIGN, example::pub(), e, *signing.sig.get()),
              ZOK_ERR_VERIFY);
}

TEST(SdfExternalSignEcc, Sm2OverABasePointZeroSignsWithREqualToE) {
    Session session(useless_curve());
    FakeEntropy entropy;
    queue_numbers(entropy, {77});
    GuardedRecord<ECCSignature> sig;
    ASSERT_EQ(sign_e(session.handle(), ZOK_ALG_SM2_SIGN, small_private_key(), small_bytes(456), sig.get()),
              ZOK_OK);
    EXPECT_EQ(to_hex(sig->r, 20), to_hex(small_bytes(456)));
}

TEST(SdfExternalSignEcc, ModulusZeroMakesEveryEcdsaRoundFruitless) {
    Curve changed = small_curve();
    changed.p = mint{};
    Session session(changed);
    GuardedRecord<ECCSignature> sig;
    FakeEntropy entropy;
    EXPECT_EQ(sign_e(session.handle(), ZOK_ALG_ECDSA_SIGN, small_private_key(), small_bytes(1), sig.get()),
              ZOK_ERR_SIGN);
    EXPECT_EQ(entropy.number_calls, kHardened ? 0u : 1024u);
    EXPECT_TRUE(sig.unchanged());
}

}  // namespace zokecc_test::sign_retry_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// sm2_DigitalSign: its output, the keys it refuses, the nonces it rejects. On the
// small curve plain integers predict every signature.
#include "tests/schemes/sm2_sign_calls.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/give_up.h"

namespace zokecc_test::sm2_sign_test {

namespace {

constexpr uint32_t kD = 123;

const ByteString kText = text_bytes("message digest");
const ByteString kZ = test_bytes(32, 7);

// Signs on the small curve with the given nonces, the last of which must be the one used.
void expect_nonce_used(uint32_t d, const ByteString &text, uint32_t hash,
                       std::initializer_list<uint32_t> nonces) {
    FakeEntropy entropy;
    for (uint32_t k : nonces) queue_number(entropy, k);
    Sm2Signing call(number_bytes(d, 32), text, kZ);
    EXPECT_EQ(call.run(hash), 0);
    SmallSignature expected = small_sm2(small_sm2_e(kZ, text, hash), d, *(nonces.end() - 1));
    expect_record(call.sig, expected.r, expected.s, 32);
    EXPECT_EQ(entropy.number_calls, nonces.size());
}

void expect_signs(uint32_t d, const ByteString &text, uint32_t hash) {
    expect_nonce_used(d, text, hash, {usable_nonce(small_sm2_e(kZ, text, hash), d)});
}

// A nonce and its message.
struct KeptRound {
    uint32_t k;
    ByteString text;
};
// The first numbered message and nonce that satisfy the condition on e and k.
template <class Condition>
KeptRound find_round(Condition condition) {
    for (uint32_t number = 0; number < 100; ++number) {
        ByteString text = number_bytes(number, 4);
        uint32_t e = small_sm2_e(kZ, text, HASH_ALG_SM3);
        for (uint32_t k = 1; k < kSmallN; ++k)
            if (condition(e, k)) return {k, text};
    }
    give_up("no such message");
}

}  // namespace

TEST(Sm2DigitalSign, KeyOfZeroSigns) {
    install_small(32);
    for (uint32_t hash : kHashes) expect_signs(0, kText, hash);
    FakeEntropy entropy;
    uint32_t k = usable_nonce(small_sm2_e(kZ, kText, HASH_ALG_SM3), 0);
    queue_number(entropy, k);
    Sm2Signing call(ByteString(), kText, kZ);
    EXPECT_EQ(call.run(HASH_ALG_SM3), 0);
    SmallSignature expected = small_sm2(small_sm2_e(kZ, kText, HASH_ALG_SM3), 0, k);
    EXPECT_EQ(expected.s, k);
    expect_record(call.sig, expected.r, expected.s, 32);
}

TEST(Sm2DigitalSign, KeptZeroRIsAccepted) {
    install_small(32);
    KeptRound round = find_round([](uint32_t e, uint32_t k) {
        SmallSignature made = small_sm2(e, kD, k);
        return made.r == 0 && made.s != 0;
    });
    expect_nonce_used(kD, round.text, HASH_ALG_SM3, {round.k});
    EXPECT_EQ(small_sm2(small_sm2_e(kZ, round.text, HASH_ALG_SM3), kD, round.k).r, 0u);
}

TEST(Sm2DigitalSign, KeptNonceOfZeroIsUsed) {
    // k G is infinite and counts as x = 0, so that r = e and s = -r d / (1 + d).
    install_small(32);
    for (uint32_t hash : kHashes) {
        ASSERT_NE(small_sm2_e(kZ, kText, hash), 0u);
        expect_nonce_used(kD, kText, hash, {0});
    }
}

TEST(Sm2DigitalSign, ZeroKeyWithNonceZeroIsDrawnAgain) {
    install_small(32);
    uint32_t usable = usable_nonce(small_sm2_e(kZ, kText, HASH_ALG_SM3), 0);
    expect_nonce_used(0, kText, HASH_ALG_SM3, {0, usable});
}

TEST(Sm2DigitalSign, KeptUnknownSelectorSignsOverZero) {
    install_small(32);
    for (uint32_t hash : {2u, kUnknownHash, 0xFFFFFFFFu}) {
        uint32_t k = usable_nonce(0, kD);
        FakeEntropy entropy;
        queue_number(entropy, k);
        Sm2Signing call(number_bytes(kD, 32), kText, kZ);
        EXPECT_EQ(call.run(hash), 0);
        SmallSignature made = small_sm2(0, kD, k);
        expect_record(call.sig, made.r, made.s, 32);
        TinyPoint Q = small_multiple(kD);
        Sm2Verification verification(PointBytes(Q.x, Q.y, 32), kText, PointBytes(made.r, made.s, 32), kZ);
        EXPECT_EQ(verification.run(hash), 0);
        EXPECT_EQ(verification.run(kUnknownHash), 0);
        EXPECT_EQ(verification.run(HASH_ALG_SM3), 1);
    }
}

TEST(Sm2DigitalSign, FailedAllocationReturnsOneAndWritesNothing) {
    install_small(32);
    for (uint32_t hash : {HASH_ALG_SM3, HASH_ALG_SHA256, kUnknownHash}) {
        FakeEntropy entropy;
        Sm2Signing call(number_bytes(kD, 32), kText, kZ);
        FailingAlloc failing(1);
        EXPECT_EQ(call.run(hash), 1);
        EXPECT_TRUE(call.sig.unchanged());
        EXPECT_EQ(failing.allocations, 1u);
        EXPECT_EQ(failing.last_size, kText.size() + 33);
        EXPECT_EQ(entropy.number_calls, 0u);
    }
}

TEST(Sm2DigitalSign, KeyOutOfRangeWinsOverAFailedAllocation) {
    install_small(32);
    for (uint32_t d : {kSmallN - 1, kSmallN}) {
        Sm2Signing call(number_bytes(d, 32), kText, kZ);
        FailingAlloc failing(1);
        EXPECT_EQ(call.run(HASH_ALG_SM3), -1);
        EXPECT_EQ(failing.allocations, 0u);
    }
}

TEST(Sm2DigitalSign, LongestMessageIsRefusedOnlyByItsAllocation) {
    install_small(32);
    Sm2Signing call(number_bytes(kD, 32), kText, kZ);
    sm3_msg claims_more = *call.msg.get();
    claims_more.len_low = 0xFFFFFFDEu;
    FailingAlloc failing(1);
    EXPECT_EQ(sm2_DigitalSign(call.d.get(), &claims_more, call.Z.data(), call.sig.get(), HASH_ALG_SM3), 1);
    EXPECT_EQ(failing.last_size, 0xFFFFFFFFu);
}

}  // namespace zokecc_test::sm2_sign_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// sm2_Encry: the ciphertext for every short length, refusals and how much has been written
// and drawn by then, and its buffers.
#include "tests/schemes/sm2_encrypt_calls.h"
#include "tests/support/emulated.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::sm2_encrypt_test {

namespace {

constexpr uint32_t kD = 123;
constexpr uint32_t kK = 77;

const ByteString kText = text_bytes("ten bytes.");

// All nonces are drawn and the last one is used.
void expect_encrypted(const PointBytes &Q, const ByteString &text, const ByteString &expected,
                      uint32_t hash = HASH_ALG_SM3, std::initializer_list<uint32_t> nonces = {kK}) {
    FakeEntropy entropy;
    for (uint32_t k : nonces) queue_number(entropy, k);
    Sm2Encryption call(Q, text);
    EXPECT_EQ(call.run(hash), 0);
    call.expect_written(expected);
    EXPECT_EQ(entropy.number_calls, nonces.size());
}
PointBytes recipient(size_t size = 32) {
    return PointBytes(small_multiple(kD).x, small_multiple(kD).y, size);
}

// Refused before the loop: no draw, nothing written, nothing left allocated.
void expect_refused_before_the_loop(Sm2Encryption &call, uint32_t hash) {
    FakeEntropy entropy;
    FailingAlloc counter;
    EXPECT_EQ(call.run(hash), -1);
    call.expect_nothing_written();
    EXPECT_EQ(entropy.number_calls, 0u);
    EXPECT_EQ(counter.outstanding, 0);
}

// Refused in the loop: by then k is drawn and C1 is written. The hardened build checks the key first and has
// written only the 04.
void expect_refused_after_c1(Sm2Encryption &call, const TinyPoint &C1) {
    FakeEntropy entropy;
    queue_number(entropy, kK);
    EXPECT_EQ(call.run(HASH_ALG_SM3), -1);
    call.expect_descriptor_untouched();
    if (kHardened) {
        EXPECT_TRUE(call.area.untouched_from(1));
        return;
    }
    EXPECT_EQ(to_hex(call.area.first(65)), "04" + to_hex(Coordinates(C1, 32).both()));
    EXPECT_TRUE(call.area.untouched_from(65));
    EXPECT_EQ(entropy.number_calls, 1u);
}

}  // namespace

TEST(Sm2Encry, EveryLengthUpTo200AndOf64KiBOnEveryCurveLengthWithBothHashes) {
    const ByteString text = test_bytes(65536);
    for (unsigned L : kLegacyLengths) {
        install_small(L);
        for (uint32_t hash : kHashes)
            for (const size_t length : message_lengths()) {
                SCOPED_TRACE("L " + std::to_string(L) + " length " + std::to_string(length));
                const ByteString part(text.data(), text.data() + length);
                expect_encrypted(recipient(L), part, small_sm2_cipher(kD, kK, L, part, hash), hash);
            }
    }
}

TEST(Sm2Encry, TenBytesOnA32ByteCurveGive107) {
    install("sm2p256v1");
    PointBytes G(fixed_bytes(global_curve.G.x, 32), fixed_bytes(global_curve.G.y, 32));
    FakeEntropy entropy;
    Sm2Encryption call(G, kText);
    EXPECT_EQ(call.run(HASH_ALG_SM3), 0);
    EXPECT_EQ(call.cipher.len_low, 107u);
    EXPECT_EQ(call.cipher.len_high, 0u);
    EXPECT_TRUE(call.area.untouched_from(107));
    EXPECT_EQ(entropy.number_calls, 1u);
    EXPECT_EQ(entropy.seedings(), 2u);
}

TEST(Sm2Encry, PublicKeyIsReadAtItsOwnLength) {
    install_small(32);
    for (size_t length : {2u, 31u, 65u})
        expect_encrypted(recipient(length), kText, small_sm2_cipher(kD, kK, 32, kText, HASH_ALG_SM3));
}

TEST(Sm2Encry, NonceWhoseKeyStreamIsZeroIsDrawnAgain) {
    for (unsigned L : kLegacyLengths) {
        install_small(L);
        for (uint32_t hash : kHashes) {
            uint32_t fruitless =
                first_scalar([=](uint32_t k) { return first_stream_byte(kD, k, L, hash) == 0; });
            ASSERT_NE(first_stream_byte(kD, kK, L, hash), 0);
            expect_encrypted(recipient(L), {0x5A}, small_sm2_cipher(kD, kK, L, ByteString{0x5A}, hash), hash,
                             {fruitless, fruitless, kK});
        }
    }
}

TEST(Sm2Encry, Draws1024TimesWithoutSuccessAndReturnsMinusOne) {
    install_small(32);
    uint32_t fruitless =
        first_scalar([](uint32_t k) { return first_stream_byte(kD, k, 32, HASH_ALG_SM3) == 0; });
    FakeEntropy entropy;
    queue_number(entropy, fruitless, 1100);
    Sm2Encryption call(small_multiple(kD), 32, ByteString{0x5A});
    EXPECT_EQ(call.run(HASH_ALG_SM3), -1);
    EXPECT_EQ(entropy.number_calls, 1024u);
    call.expect_descriptor_untouched();
    EXPECT_TRUE(call.area.untouched_from(65));
}

TEST(Sm2Encry, NonceOfZeroIsUsed) {
    // C1 and the shared point are infinite and count as zeros.
    install_small(32);
    expect_encrypted(recipient(), kText, sm2_cipher(TinyPoint{}, TinyPoint{}, 32, kText, HASH_ALG_SM3),
                     HASH_ALG_SM3, {0});
}

TEST(Sm2Encry, UnknownSelectorReturnsMinusOneAndWritesNothing) {
    install_small(32);
    for (uint32_t hash : {2u, kUnknownHash, 0xFFFFFFFFu}) {
        Sm2Encryption call(small_multiple(kD), 32, kText);
        expect_refused_before_the_loop(call, hash);
        Sm2Encryption whole_steps(small_multiple(kD), 32, test_bytes(64));
        expect_refused_before_the_loop(whole_steps, hash);
    }
}

TEST(Sm2Encry, PublicKeyWithAZeroCoordinateReturnsMinusOneAndWritesNothing) {
    install_small(32);
    PointBytes x_zero(0, 5, 32);
    PointBytes y_zero(5, 0, 32);
    PointBytes of_length_zero{ByteString(), ByteString()};
    for (const PointBytes &key : {x_zero, y_zero, of_length_zero}) {
        Sm2Encryption call(key, kText);
        expect_refused_before_the_loop(call, HASH_ALG_SM3);
    }
}

TEST(Sm2Encry, CofactorZeroReturnsMinusOneAfterC1) {
    install_with_order(1013);  // above the prime
    Sm2Encryption call(small_multiple(kD), 32, kText);
    expect_refused_after_c1(call, small_multiple(kK));
}

TEST(Sm2Encry, CofactorMultipleWithAZeroCoordinateReturnsMinusOneAfterC1) {
    install_with_order(501);
    Sm2Encryption x_zero({false, 243, 140}, 32, kText);  // doubles to (0, 5)
    expect_refused_after_c1(x_zero, small_multiple(kK));
    Sm2Encryption y_zero({false, 911, 162}, 32, kText);  // on b = 1; doubles to (121, 0)
    expect_refused_after_c1(y_zero, small_multiple(kK));
}

TEST(Sm2Encry, CofactorMultipleAtInfinityReturnsMinusOneAfterC1) {
    install_with_order(335);
    Sm2Encryption call({false, 841, 163}, 32, kText);  // on b = 3, of order 3
    expect_refused_after_c1(call, small_multiple(kK));
}

TEST(Sm2Encry, CofactorAboveOneDoesNotEnterTheSharedPoint) {
    install_with_order(501);
    expect_encrypted(recipient(), kText, small_sm2_cipher(kD, kK, 32, kText, HASH_ALG_SM3));
}

TEST(Sm2Encry, KeptPublicKeyOffTheCurveIsUsed) {
    install_small(32);
    const TinyCurve other(kSmallP, 2, 26);
    const TinyPoint Q = other.points().at(50);
    expect_encrypted(
        PointBytes(Q.x, Q.y, 32), kText,
        sm2_cipher(small_multiple(kK), other.library_window(small(kK), Q), 32, kText, HASH_ALG_SM3));
}

TEST(Sm2Encry, KeyStreamBufferHoldsAWholeDigestPerStepOfTheCurveLength) {
    struct Case {
        unsigned L;
        size_t m, largest;
    };
    // Each step of L bytes of the message fills 32. If L is 32 the other buffer, for both
    // coordinates and the message, is the larger one.
    for (const Case &row : {Case{24, 1000, 41 * 32 + 1}, Case{28, 1000, 35 * 32 + 1}, Case{32, 1000, 1065}}) {
        install_small(row.L);
        FakeEntropy entropy;
        queue_number(entropy, kK);
        Sm2Encryption call(small_multiple(kD), row.L, test_bytes(row.m));
        FailingAlloc counter;
        EXPECT_EQ(call.run(HASH_ALG_SM3), 0);
        EXPECT_EQ(counter.largest_size, row.largest);
    }
}

TEST(Sm2Encry, FailedMultiplicationReturnsMinusOneAfterC1) {
    // The third allocation is for h Q, the fourth for k Q.
    install_small(32);
    for (unsigned fail_at : {3u, 4u}) {
        Sm2Encryption call(small_multiple(kD), 32, kText);
        FailingAlloc failing(fail_at);
        expect_refused_after_c1(call, small_multiple(kK));
        EXPECT_EQ(failing.allocations, fail_at);
        EXPECT_EQ(failing.outstanding, kept_digit_buffers(static_cast<int>(fail_at) - 3));
    }
}

TEST(Sm2Encry, KeptDigitBuffersStayAllocated) {
    install_small(32);
    FakeEntropy entropy;
    queue_number(entropy, kK);
    Sm2Encryption call(small_multiple(kD), 32, kText);
    FailingAlloc counter;
    EXPECT_EQ(call.run(HASH_ALG_SM3), 0);
    EXPECT_EQ(counter.allocations, 4u);
    EXPECT_EQ(counter.outstanding, kept_digit_buffers(2));
}

}  // namespace zokecc_test::sm2_encrypt_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Eces_Encry: the ciphertext, its capacities, and the nonces it rejects.
#include "tests/schemes/eces_calls.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::eces_test {

namespace {

constexpr uint32_t kRecipient = 123;  // the recipient's private key
constexpr uint32_t kK = 77;
constexpr int32_t kWholeSize = 12;

const ByteString kText = text_bytes("some message");

ByteString cipher_of(const ByteString &text, uint32_t k = kK) {
    return small_cipher(kRecipient, residue(text, kSmallP), k);
}

PointBytes recipient(size_t size = 32) {
    return PointBytes(small_multiple(kRecipient).x, small_multiple(kRecipient).y, size);
}

// All nonces are drawn and the last one is used; the length counts the whole numbers that fit the
// capacity.
void expect_encrypted(const ByteString &text, const PointBytes &Q, const ByteString &expected,
                      int32_t capacity = kWholeSize, std::vector<uint32_t> nonces = {kK}) {
    SCOPED_TRACE("message of " + std::to_string(text.size()) + ", capacity " + std::to_string(capacity));
    FakeEntropy entropy;
    for (uint32_t k : nonces) queue_number(entropy, k);
    EcesEncryption call(Q, text);
    EXPECT_EQ(call.run(capacity), static_cast<int32_t>(expected.size()) - 1);
    call.expect_written(expected);
    EXPECT_EQ(entropy.number_calls, nonces.size());
}
void expect_encrypted(const ByteString &text) { expect_encrypted(text, recipient(), cipher_of(text)); }
void expect_encrypted(int32_t capacity, std::vector<uint32_t> nonces = {kK}) {
    expect_encrypted(kText, recipient(), cipher_of(kText), capacity, std::move(nonces));
}

}  // namespace

TEST(EcesEncry, NumbersAreAsWideAsThePrimesWordsNotAsTheCurve) {
    for (unsigned byte_len : kLegacyLengths) {
        install_small(byte_len);
        expect_encrypted(kText);
    }
}

TEST(EcesEncry, MessagesOfEveryLengthAreReducedModuloThePrime) {
    install_small(32);
    const ByteString text = test_bytes(65536);
    for (std::ptrdiff_t length = 0; length <= 65536; length += length < 200 ? 1 : 65336)
        expect_encrypted(ByteString(text.begin(), text.begin() + length));
}

TEST(EcesEncry, MessageAtAndAboveThePrimeIsReduced) {
    install_small(32);
    for (uint32_t value : {0u, 1u, kSmallP - 1, kSmallP, kSmallP + 5, 0xFFFFFFFFu})
        expect_encrypted(number_bytes(value, 4));
    expect_encrypted(ByteString(45, 0xFF));
    expect_encrypted(ByteString(76, 0xFF));
    expect_encrypted(ByteString(77, 0xFF));
}

TEST(EcesEncry, NullMessageOfLengthZeroIsZero) {
    install_small(32);
    FakeEntropy entropy;
    queue_number(entropy, kK);
    EcesEncryption call(recipient(), ByteString());
    EXPECT_EQ(Eces_Encry(call.Q.get(), nullptr, 0, call.out.data(), kWholeSize), kWholeSize);
    call.expect_written(cipher_of(ByteString()));
}

TEST(EcesEncry, CapacityAdmitsWholeNumbersOnly) {
    install_small(32);
    for (int32_t capacity :
         {-1, -12, INT32_MIN, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 15, INT32_MAX}) {
        ByteString expected = cipher_of(kText);
        expected.resize(static_cast<size_t>(std::clamp(capacity / 4 * 4, 0, kWholeSize)) + 1);
        expect_encrypted(kText, recipient(), expected, capacity);
    }
}

TEST(EcesEncry, CapacityOnA256BitCurveAdmitsWholeNumbersOnly) {
    // 1 as a number of 32 bytes needs 32 bytes of room, although its shortest form needs one.
    install("sm2p256v1");
    const ByteString x = fixed_bytes(global_curve.G.x, 32), y = fixed_bytes(global_curve.G.y, 32);
    for (int32_t capacity : {0, 1, 31, 32, 33, 63, 64, 95, 96, 97}) {
        ByteString expected = joined({ByteString(1, 4), x, y, ByteString(32, 0)});
        expected.resize(static_cast<size_t>(std::min(capacity / 32 * 32, 96)) + 1);
        expect_encrypted(ByteString(), PointBytes(x, y), expected, capacity, {1});
    }
}

TEST(EcesEncry, NonceThatMasksWithZeroIsDrawnAgain) {
    // k Q is infinity for k = 0, and has x = 0 at two more nonces.
    install_small(32);
    uint32_t at_zero = first_scalar(
        [](uint32_t k) { return small_multiple(product_modulo(k, kRecipient, kSmallN)).x == 0; });
    expect_encrypted(kWholeSize, {0, at_zero, kSmallN - at_zero, kK});
}

TEST(EcesEncry, SucceedsAtThe1024thDraw) {
    install_small(32);
    std::vector<uint32_t> nonces(1023, 0);
    nonces.push_back(kK);
    expect_encrypted(kWholeSize, nonces);
}

// With an attacker's record 1,024 nonces would cost a device half a minute.
TEST(EcesEncry, RecipientWithoutAMultipleIsRefusedBeforeAnyDraw) {
    install_small(32);
    PointBytes zeros(0, 0, 32);
    PointBytes of_length_zero{ByteString(), ByteString()};
    PointBytes at_p(kSmallP, 0, 32), at_twice_p(2 * kSmallP, 0, 32);
    for (const PointBytes &Q : {zeros, of_length_zero, at_p, at_twice_p}) {
        FakeEntropy entropy;
        EcesEncryption call(Q, kText);
        EXPECT_EQ(call.run(kWholeSize), -1);
        EXPECT_EQ(entropy.calls() + entropy.number_calls, 0u);
        EXPECT_TRUE(call.out.untouched());
    }
}

// Their neighbours have usable multiples: the first draw is used.
TEST(EcesEncry, RecipientWithOneCoordinateZeroIsServed) {
    install_small(32);
    for (const PointBytes &Q : {PointBytes(0, 5, 32), PointBytes(kHardened ? 0 : kSmallP, 5, 32)}) {
        FakeEntropy entropy;
        queue_number(entropy, kK);
        EcesEncryption call(Q, kText);
        EXPECT_EQ(call.run(kWholeSize), kWholeSize);
        EXPECT_EQ(entropy.number_calls, 1u);
    }
}

// With a = 0 a point with x = 0 has the order 3.
TEST(EcesEncry, RecipientWithXZeroOnACurveWithAZeroIsRefusedBeforeAnyDraw) {
    const Curve &koblitz = curve("secp256k1");
    ecc_curve_bytes record = koblitz.legacy_record();
    ASSERT_EQ(Curve_Init(&record), 0);
    ecc_point_bytes Q{};
    Q.length = 32;
    Q.y[31] = 5;
    for (bool at_p : {false, true}) {
        if (at_p) std::copy(record.p, record.p + 32, Q.x);
        for (uint32_t k = 1; k < 400; ++k) {
            ecc_point point{}, multiple{};
            octetstring_to_mint(Q.x, 32, &point.x);
            octetstring_to_mint(Q.y, 32, &point.y);
            const mint scalar = small(k);
            ecc_unknown_point_mul(&scalar, &point, &koblitz.a, &koblitz.b, &koblitz.p, &multiple);
            EXPECT_EQ(multiple.x.len == 0 || (multiple.x.len == 1 && multiple.x.words[0] == 0), true) << k;
        }
        FakeEntropy entropy;
        uint8_t out[200] = {};
        EXPECT_EQ(Eces_Encry(&Q, kText.data(), 1, out, sizeof out), -1);
        EXPECT_EQ(entropy.calls(), 0u);
    }
}

TEST(EcesEncry, FailedMultiplicationDrawsAgain) {
    install_small(32);
    FakeEntropy entropy;
    queue_number(entropy, kK + 1);
    queue_number(entropy, kK);
    EcesEncryption call(recipient(), kText);
    {
        FailingAlloc failing(1);
        EXPECT_EQ(call.run(kWholeSize), kWholeSize);
        EXPECT_EQ(failing.allocations, 2u);
        EXPECT_EQ(failing.outstanding, kept_digit_buffers(1));
    }
    EXPECT_EQ(entropy.number_calls, 2u);
    call.expect_written(cipher_of(kText));
}

TEST(EcesEncry, KeptRecipientOffTheCurveIsUsed) {
    install_small(32);
    const TinyCurve other(kSmallP, 2, 26);
    const TinyPoint Q = other.points().at(50);
    TinyPoint S = other.library_window(small(kK), Q);
    ASSERT_FALSE(S.infinite || S.x == 0);
    expect_encrypted(
        kText, PointBytes(Q.x, Q.y, 32),
        small_cipher_image(small_multiple(kK), product_modulo(residue(kText, kSmallP), S.x, kSmallP)));
}

TEST(EcesEncry, RecipientIsReadAtItsOwnLength) {
    install_small(32);
    for (size_t length : {2u, 31u, 65u}) expect_encrypted(kText, recipient(length), cipher_of(kText));
}

TEST(EcesEncry, PublishedSecretsMaskTheMessage) {
    // With the private key of a published exchange as nonce, the point is its public key and the mask
    // the published secret.
    auto test = [number = 0u](const VectorBlock &block) mutable {
        install(block.text("Curve"));
        FakeEntropy entropy;
        queue_number(entropy, block.number("d"));
        ByteString text = test_bytes(number % 100, number);
        ++number;
        EcesEncryption call(PointBytes(block.bytes("Px"), block.bytes("Py")), text);
        const size_t size = block.bytes("Z").size();
        EXPECT_EQ(call.run(static_cast<int32_t>(3 * size)), static_cast<int32_t>(3 * size));
        Natural c = mod_mul(Natural::from_hex(to_hex(text)), Natural::from_hex(block.text("Z")),
                            Natural(global_curve.p));
        call.expect_written(
            joined({ByteString(1, 4), block.bytes("Qx"), block.bytes("Qy"), fixed_bytes(c.to_mint(), size)}));
    };
    EXPECT_EQ(on_blocks("ecdh.rsp", is_legacy, test), 93u);
}

}  // namespace zokecc_test::eces_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Ecdsa_DigitalSign: what it writes, which keys it refuses, which nonces it draws again. On the
// small curve plain integers predict every signature.
#include "tests/schemes/ecdsa_calls.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::ecdsa_test {

namespace {

constexpr uint32_t kD = 123;
constexpr uint32_t kK = 77;

const ByteString kText = text_bytes("message digest");

// The nonces for which x of k G is 0 modulo n, so that r would be 0: x is 0 or 991.
bool gives_zero_r(uint32_t k) { return small_multiple(k).x % kSmallN == 0; }

// Signs on the small curve with the nonces given, the last of which has to be the one used.
void expect_nonce_used(uint32_t d, uint32_t e, const ByteString &text, uint32_t hash,
                       std::initializer_list<uint32_t> nonces) {
    FakeEntropy entropy;
    for (uint32_t k : nonces) queue_number(entropy, k);
    EcdsaSigning signing(number_bytes(d, 32), text);
    EXPECT_EQ(signing.run(hash), 0);
    expect_small_signature(signing.sig, small_ecdsa(e, d, *(nonces.end() - 1)), 32);
    EXPECT_EQ(entropy.number_calls, nonces.size());
}

}  // namespace

TEST(EcdsaDigitalSign, WritesRAndSAtTheCurveLengthAndNothingElse) {
    for (unsigned byte_len : kLegacyLengths) {
        for (uint32_t hash : kHashes) {
            install_small(byte_len);
            FakeEntropy entropy;
            queue_number(entropy, kK);
            EcdsaSigning signing(number_bytes(kD, byte_len), kText);
            EXPECT_EQ(signing.run(hash), 0);
            expect_small_signature(signing.sig, small_ecdsa(small_e(kText, hash), kD, kK), byte_len);
            EXPECT_EQ(entropy.number_calls, 1u);
        }
    }
}

TEST(EcdsaDigitalSign, LengthFieldIsTheCurveLengthWithLeadingZeroBytes) {
    install_small(32);
    FakeEntropy entropy;
    queue_number(entropy, kK);
    EcdsaSigning signing(number_bytes(kD, 1), kText);
    EXPECT_EQ(signing.run(HASH_ALG_SM3), 0);
    EXPECT_EQ(signing.sig->length, 32u);
    EXPECT_EQ(to_hex(signing.sig->x, 30), std::string(60, '0'));
    EXPECT_EQ(to_hex(signing.sig->y, 30), std::string(60, '0'));
}

TEST(EcdsaDigitalSign, MessagesOfEveryLengthUpTo200) {
    install_small(32);
    const ByteString text = test_bytes(200);
    for (size_t length = 0; length <= text.size(); ++length) {
        const ByteString part(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length));
        for (uint32_t hash : kHashes) {
            SCOPED_TRACE("length " + std::to_string(length) + " hash " + std::to_string(hash));
            uint32_t e = small_e(part, hash);
            expect_nonce_used(kD, e, part, hash, {small_ecdsa(e, kD, kK).s != 0 ? kK : kK + 1});
        }
    }
}

TEST(EcdsaDigitalSign, MessageOf64KiB) {
    install_small(32);
    const ByteString text = test_bytes(65536);
    for (uint32_t hash : kHashes) expect_nonce_used(kD, small_e(text, hash), text, hash, {kK});
}

TEST(EcdsaDigitalSign, KeyOneBelowTheOrderSigns) {
    install_small(32);
    expect_nonce_used(kSmallN - 1, small_e(kText, HASH_ALG_SM3), kText, HASH_ALG_SM3, {kK});
}

TEST(EcdsaDigitalSign, KeyLengthIsTheScalarsOwn) {
    install_small(32);
    for (size_t length : {2u, 31u, 33u, 75u, 76u}) {
        FakeEntropy entropy;
        queue_number(entropy, kK);
        EcdsaSigning signing(number_bytes(kD, length), kText);
        EXPECT_EQ(signing.run(HASH_ALG_SM3), 0) << length;
        expect_small_signature(signing.sig, small_ecdsa(small_e(kText, HASH_ALG_SM3), kD, kK), 32);
    }
}

TEST(EcdsaDigitalSign, NonceOfZeroIsDrawnAgain) {
    install_small(32);
    expect_nonce_used(kD, small_e(kText, HASH_ALG_SM3), kText, HASH_ALG_SM3, {0, kK});
}

TEST(EcdsaDigitalSign, NonceThatGivesRZeroIsDrawnAgain) {
    install_small(32);
    uint32_t at_zero = first_scalar([](uint32_t k) { return small_multiple(k).x == 0; });
    expect_nonce_used(kD, small_e(kText, HASH_ALG_SM3), kText, HASH_ALG_SM3,
                      {at_zero, kSmallN - at_zero, kK});
}

TEST(EcdsaDigitalSign, NonceWhoseXIsTheOrderIsDrawnAgain) {
    // The small curve has no point with x = 991; this one begins there.
    install(legacy_curve(32, kSmallP, 2, 824, 991, 1, kSmallN));
    FakeEntropy entropy;
    queue_number(entropy, 1u);
    queue_number(entropy, 2u);
    EcdsaSigning signing(number_bytes(kD, 32), kText);
    EXPECT_EQ(signing.run(HASH_ALG_SM3), 0);
    EXPECT_EQ(entropy.number_calls, 2u);
    const TinyCurve group(kSmallP, 2, 824);
    const TinyPoint G{false, 991, 1};
    expect_legacy_field(signing.sig->x, number_bytes(group.add(G, G).x % kSmallN, 32));
}

TEST(EcdsaDigitalSign, NonceThatGivesSZeroIsDrawnAgain) {
    install_small(32);
    for (uint32_t hash : kHashes) {
        // The key for which e + d r is 0 with this nonce.
        uint32_t e = small_e(kText, hash);
        uint32_t r = small_multiple(kK).x % kSmallN;
        uint32_t d = product_modulo(negative_modulo(e, kSmallN), inverse_modulo(r, kSmallN), kSmallN);
        ASSERT_NE(d, 0u);
        ASSERT_EQ(small_ecdsa(e, d, kK).s, 0u);
        expect_nonce_used(d, e, kText, hash, {kK, kK + 1});
    }
}

TEST(EcdsaDigitalSign, Draws1024TimesWithoutSuccessAndReturnsMinusOne) {
    install_small(32);
    FakeEntropy entropy;
    queue_number(entropy, 0u, 1100);
    EcdsaSigning signing(number_bytes(kD, 32), kText);
    EXPECT_EQ(signing.run(HASH_ALG_SM3), -1);
    EXPECT_EQ(entropy.number_calls, 1024u);
    EXPECT_TRUE(signing.sig.unchanged());
}

TEST(EcdsaDigitalSign, SucceedsAtThe1024thDraw) {
    install_small(32);
    FakeEntropy entropy;
    queue_number(entropy, 0u, 1023);
    queue_number(entropy, kK);
    EcdsaSigning signing(number_bytes(kD, 32), kText);
    EXPECT_EQ(signing.run(HASH_ALG_SM3), 0);
    EXPECT_EQ(entropy.number_calls, 1024u);
    expect_small_signature(signing.sig, small_ecdsa(small_e(kText, HASH_ALG_SM3), kD, kK), 32);
}

TEST(EcdsaDigitalSign, BasePointZeroZeroEndsWithMinusOne) {
    // (0, 0) is on every curve with b = 0, and every r is 0.
    install(legacy_curve(32, kSmallP, 2, 0, 0, 0, kSmallN));
    FakeEntropy entropy;
    EcdsaSigning signing(number_bytes(kD, 32), kText);
    EXPECT_EQ(signing.run(HASH_ALG_SM3), -1);
    EXPECT_EQ(entropy.number_calls, 1024u);
    EXPECT_TRUE(signing.sig.unchanged());
}

TEST(EcdsaDigitalSign, KeptUnknownSelectorSignsOverZero) {
    install_small(32);
    for (uint32_t hash : {2u, kUnknownHash, 0xFFFFFFFFu}) {
        FakeEntropy entropy;
        queue_number(entropy, kK);
        EcdsaSigning signing(number_bytes(kD, 32), kText);
        EXPECT_EQ(signing.run(hash), 0);
        expect_small_signature(signing.sig, small_ecdsa(0, kD, kK), 32);
        EcdsaVerification verification(small_multiple(kD), small_ecdsa(0, kD, kK), kText);
        EXPECT_EQ(verification.run(hash), 1);
        EXPECT_EQ(verification.run(kUnknownHash), 1);
        EXPECT_EQ(verification.run(HASH_ALG_SM3), 0);
        EXPECT_EQ(verification.run(HASH_ALG_SHA256), 0);
    }
}

TEST(EcdsaDigitalSign, NullMessageHashesAsTheEmptyOne) {
    install_small(32);
    for (uint32_t length : {0u, 5u, 0xFFFFFFFFu}) {
        FakeEntropy entropy;
        queue_number(entropy, kK);
        EcdsaSigning signing(number_bytes(kD, 32), kText);
        sm3_msg nothing{nullptr, 0, length};
        EXPECT_EQ(Ecdsa_DigitalSign(signing.d.get(), &nothing, signing.sig.get(), HASH_ALG_SHA256), 0);
        expect_small_signature(signing.sig, small_ecdsa(small_e(ByteString(), HASH_ALG_SHA256), kD, kK), 32);
    }
}

TEST(EcdsaDigitalSign, NullMessageIsNotReadWithAnUnknownSelector) {
    install_small(32);
    FakeEntropy entropy;
    queue_number(entropy, kK);
    EcdsaSigning signing(number_bytes(kD, 32), kText);
    sm3_msg nothing{nullptr, 0, 100};
    EXPECT_EQ(Ecdsa_DigitalSign(signing.d.get(), &nothing, signing.sig.get(), kUnknownHash), 0);
    expect_small_signature(signing.sig, small_ecdsa(0, kD, kK), 32);
}

TEST(EcdsaDigitalSign, NullMessageOfLengthZeroIsTheEmptyOneForSm3) {
    install_small(32);
    FakeEntropy entropy;
    queue_number(entropy, kK);
    EcdsaSigning signing(number_bytes(kD, 32), kText);
    sm3_msg nothing{nullptr, 0, 0};
    EXPECT_EQ(Ecdsa_DigitalSign(signing.d.get(), &nothing, signing.sig.get(), HASH_ALG_SM3), 0);
    expect_small_signature(signing.sig, small_ecdsa(small_e(ByteString(), HASH_ALG_SM3), kD, kK), 32);
}

TEST(EcdsaDigitalSign, DrawsItsNonceBelowTheOrder) {
    // The same clock and the same rand give the nonce that the generator itself hands out.
    install_small(32);
    mint k{};
    {
        FakeEntropy entropy;
        gen_random_number(&k, &global_curve.n);
    }
    FakeEntropy entropy;
    EcdsaSigning signing(number_bytes(kD, 32), kText);
    EXPECT_EQ(signing.run(HASH_ALG_SM3), 0);
    ASSERT_FALSE(gives_zero_r(k.words[0]));
    expect_small_signature(signing.sig, small_ecdsa(small_e(kText, HASH_ALG_SM3), kD, k.words[0]), 32);
    EXPECT_EQ(entropy.seedings(), 2u);
}

}  // namespace zokecc_test::ecdsa_test

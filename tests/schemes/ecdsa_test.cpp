// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// ECDSA on the process-wide curve, except what all signatures have in common: unknown hashes,
// curves without signatures, and the kept leniency of the verification: r and s are not compared with the
// order, the key need not be on the curve, and a sum at infinity counts as x = 0.
#include "tests/schemes/ecdsa_calls.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::ecdsa_test {

namespace {

constexpr uint32_t kD = 123;
constexpr uint32_t kK = 77;

const ByteString kText = text_bytes("message digest");

SmallSignature signature_of(const ByteString &text, uint32_t hash) {
    return small_ecdsa(small_e(text, hash), kD, kK);
}

int32_t verify(const SmallSignature &signature, uint32_t hash = HASH_ALG_SM3,
               const ByteString &text = kText) {
    return EcdsaVerification(small_multiple(kD), signature, text).run(hash);
}

// The s for which the key is multiplied by u2 = r / s.
uint32_t s_for(uint32_t r, uint32_t u2) { return product_modulo(r, inverse_modulo(u2, kSmallN), kSmallN); }

}  // namespace

TEST(EcdsaDigitalSign, NonceWhoseXIsTheOrderIsDrawnAgain) {
    // The small curve has no point with x = 991; this curve does.
    install(legacy_curve(32, kSmallP, 2, 824, 991, 1, kSmallN));
    FakeEntropy entropy;
    queue_number(entropy, 1u);
    queue_number(entropy, 2u);
    EcdsaSigning signing(number_bytes(kD, 32), kText);
    EXPECT_EQ(signing.run(HASH_ALG_SM3), 0);
    EXPECT_EQ(entropy.number_calls, 2u);
    const TinyCurve group(kSmallP, 2, 824);
    const TinyPoint G{false, 991, 1};
    EXPECT_EQ(to_hex(signing.sig->x, 32), to_hex(number_bytes(group.add(G, G).x % kSmallN, 32)));
}

TEST(EcdsaDigitalSign, KeptUnknownSelectorSignsOverZero) {
    install_small(32);
    for (uint32_t hash : {2u, kUnknownHash, 0xFFFFFFFFu}) {
        FakeEntropy entropy;
        queue_number(entropy, kK);
        EcdsaSigning signing(number_bytes(kD, 32), kText);
        EXPECT_EQ(signing.run(hash), 0);
        expect_record(signing.sig, small_ecdsa(0, kD, kK).r, small_ecdsa(0, kD, kK).s, 32);
        EcdsaVerification verification(small_multiple(kD), small_ecdsa(0, kD, kK), kText);
        EXPECT_EQ(verification.run(hash), 1);
        EXPECT_EQ(verification.run(kUnknownHash), 1);
        EXPECT_EQ(verification.run(HASH_ALG_SM3), 0);
        EXPECT_EQ(verification.run(HASH_ALG_SHA256), 0);
    }
}

TEST(EcdsaDigitalSign, NullMessageHashesAsTheEmptyOneAndIsNotReadWithAnUnknownSelector) {
    install_small(32);
    for (uint32_t hash : {HASH_ALG_SHA256, kUnknownHash})
        for (uint32_t length : {0u, 5u, 0xFFFFFFFFu}) {
            FakeEntropy entropy;
            queue_number(entropy, kK);
            EcdsaSigning signing(number_bytes(kD, 32), kText);
            sm3_msg nothing{nullptr, 0, length};
            EXPECT_EQ(Ecdsa_DigitalSign(signing.d.get(), &nothing, signing.sig.get(), hash), 0);
            const uint32_t e = hash == kUnknownHash ? 0 : small_e(ByteString(), hash);
            expect_record(signing.sig, small_ecdsa(e, kD, kK).r, small_ecdsa(e, kD, kK).s, 32);
        }
}

TEST(EcdsaDigitalVeriy, NegatedSIsAccepted) {
    // k and -k have the same x.
    install_small(32);
    SmallSignature good = signature_of(kText, HASH_ALG_SM3);
    EXPECT_EQ(verify({good.r, kSmallN - good.s}), 1);
}

TEST(EcdsaDigitalVeriy, SMultipleOfALargeOrderReturnsZero) {
    install("secp256r1");
    ByteString n = fixed_bytes(global_curve.n, 33);
    ByteString zero(33, 0);
    ByteString twice = fixed_bytes(global_curve.n, 33);
    unsigned carry = 0;
    for (size_t i = twice.size(); i-- > 0;) {
        unsigned doubled = 2u * twice[i] + carry;
        twice[i] = static_cast<uint8_t>(doubled);
        carry = doubled >> 8;
    }
    PointBytes key(fixed_bytes(global_curve.G.x, 33), fixed_bytes(global_curve.G.y, 33));
    for (const ByteString &s : {zero, n, twice})
        for (uint32_t hash : {HASH_ALG_SM3, kUnknownHash})
            EXPECT_EQ(EcdsaVerification(key, PointBytes(zero, s), kText).run(hash), 0) << to_hex(s);
}

TEST(EcdsaDigitalVeriy, KeptSAboveTheOrderIsAccepted) {
    install_small(32);
    SmallSignature good = signature_of(kText, HASH_ALG_SM3);
    EXPECT_EQ(verify({good.r, good.s + kSmallN}), 1);
    EXPECT_EQ(verify({good.r, good.s + 4000000 * kSmallN}), 1);
}

TEST(EcdsaDigitalVeriy, RAboveTheOrderNeverEqualsAReducedX) {
    install_small(32);
    SmallSignature good = signature_of(kText, HASH_ALG_SM3);
    EXPECT_EQ(verify({good.r + kSmallN, good.s}), 0);
    EXPECT_EQ(verify({kSmallN, good.s}), 0);
}

TEST(EcdsaDigitalVeriy, RZeroReturnsZeroForAnOrdinaryMessage) {
    install_small(32);
    for (uint32_t s : {1u, 2u, kSmallN - 1}) {
        // u2 is 0, so that the sum is u1 G.
        uint32_t u1 = product_modulo(small_e(kText, HASH_ALG_SM3), inverse_modulo(s, kSmallN), kSmallN);
        ASSERT_NE(small_multiple(u1).x, 0u);
        EXPECT_EQ(verify({0, s}), 0);
    }
}

TEST(EcdsaDigitalVeriy, KeptRZeroIsNotRefused) {
    // u1 G = (0, 5) for this s, and u2 is 0.
    install_small(32);
    uint32_t at_zero = first_scalar([](uint32_t k) { return small_multiple(k).x == 0; });
    uint32_t e = small_e(kText, HASH_ALG_SM3);
    ASSERT_NE(e, 0u);
    EXPECT_EQ(verify({0, product_modulo(e, inverse_modulo(at_zero, kSmallN), kSmallN)}), 1);
}

TEST(EcdsaDigitalVeriy, KeptInfiniteSumCountsAsXZero) {
    // e is 0 for an unknown hash, and r is 0: both products are infinite, and so is the sum.
    install_small(32);
    EXPECT_EQ(verify({0, 1}, kUnknownHash), 1);
    EXPECT_EQ(verify({0, 990}, kUnknownHash), 1);
    EXPECT_EQ(verify({1, 1}, kUnknownHash), small_multiple(kD).x % kSmallN == 1 ? 1 : 0);
}

TEST(EcdsaDigitalVeriy, KeptOppositeProductsAddToAFinitePoint) {
    // u1 G = -(u2 Q) should be infinity; the addition returns x = -2 x1, and a signature
    // made for that x is accepted.
    install_small(32);
    unsigned found = 0;
    const uint32_t inverse = inverse_modulo(kD, kSmallN);
    for (uint32_t number = 0; number < 20; ++number) {
        ByteString text = number_bytes(number, 4);
        uint32_t e = small_e(text, HASH_ALG_SM3);
        for (uint32_t u1 = 1; u1 < kSmallN; ++u1) {
            uint32_t u2 = negative_modulo(product_modulo(u1, inverse, kSmallN), kSmallN);
            uint32_t r = negative_modulo(2 * small_multiple(u1).x, kSmallP) % kSmallN;
            if (r == 0) continue;
            uint32_t s = s_for(r, u2);
            if (product_modulo(u1, s, kSmallN) != e) continue;
            EXPECT_EQ(verify({r, s}, HASH_ALG_SM3, text), 1);
            ++found;
        }
    }
    EXPECT_GE(found, 5u);
}

TEST(EcdsaDigitalVeriy, KeptPublicKeyOffTheCurveIsUsed) {
    // With e = 0 the sum is u2 Q, computed on the curve that Q is on.
    install_small(32);
    const TinyCurve other(kSmallP, 2, 26);
    const TinyPoint Q = other.points().at(7);
    ASSERT_NE(Q.y, 0u);
    for (uint32_t u2 : {2u, 3u, 100u}) {
        TinyPoint product = other.library_window(small(u2), Q);
        uint32_t r = product.x % kSmallN;
        ASSERT_NE(r, 0u);
        EcdsaVerification verification(Q, {r, s_for(r, u2)}, kText);
        EXPECT_EQ(verification.run(kUnknownHash), 1);
    }
}

TEST(EcdsaDigitalVeriy, EveryRecordIsReadAtItsOwnLength) {
    install_small(32);
    TinyPoint Q = small_multiple(kD);
    SmallSignature good = signature_of(kText, HASH_ALG_SM3);
    for (size_t key_length : {2u, 31u, 65u})
        for (size_t sig_length : {2u, 33u, 64u, 65u})
            EXPECT_EQ(EcdsaVerification(PointBytes(Q.x, Q.y, key_length),
                                        PointBytes(good.r, good.s, sig_length), kText)
                          .run(HASH_ALG_SM3),
                      1)
                << key_length << ' ' << sig_length;
}

TEST(EcdsaDigitalVeriy, RecordsOfLengthZeroAreZeros) {
    install_small(32);
    TinyPoint Q = small_multiple(kD);
    PointBytes nothing{ByteString(), ByteString()};
    EXPECT_EQ(EcdsaVerification(PointBytes(Q.x, Q.y, 32), nothing, kText).run(HASH_ALG_SM3), 0);
    // A key of (0, 0): u2 Q has x = 0 for any u2, and with e = 0 the only possible r is 0.
    EXPECT_EQ(EcdsaVerification(nothing, PointBytes(1, 1, 32), kText).run(kUnknownHash), 0);
}

TEST(EcdsaDigitalVeriy, NullMessageHashesAsTheEmptyOne) {
    install_small(32);
    SmallSignature good = signature_of(ByteString(), HASH_ALG_SHA256);
    EcdsaVerification verification(small_multiple(kD), good, kText);
    sm3_msg nothing{nullptr, 0, 17};
    EXPECT_EQ(Ecdsa_DigitalVeriy(verification.Q.get(), &nothing, verification.sig.get(), HASH_ALG_SHA256), 1);
    nothing.len_low = 0;
    EcdsaVerification empty(small_multiple(kD), signature_of(ByteString(), HASH_ALG_SM3), kText);
    EXPECT_EQ(Ecdsa_DigitalVeriy(empty.Q.get(), &nothing, empty.sig.get(), HASH_ALG_SM3), 1);
}

TEST(EcdsaDigitalVeriy, FailedMultiplicationReturnsZeroAlsoWhereEverythingIsZero) {
    // An infinite sum would equal this r.
    install_small(32);
    EcdsaVerification call(small_multiple(kD), SmallSignature{0, 1}, kText);
    FailingAlloc failing(1);
    EXPECT_EQ(call.run(kUnknownHash), 0);
    EXPECT_EQ(failing.allocations, 1u);
}

TEST(EcdsaDigitalVeriy, KeptOneDigitBufferStaysAllocated) {
    install_small(32);
    EcdsaVerification call(small_multiple(kD), signature_of(kText, HASH_ALG_SM3), kText);
    FailingAlloc counter;
    EXPECT_EQ(call.run(HASH_ALG_SM3), 1);
    EXPECT_EQ(counter.allocations, 1u);
    EXPECT_EQ(counter.outstanding, kept_digit_buffers(1));
}

}  // namespace zokecc_test::ecdsa_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SDF_ExternalEncrytp_ECC with SM2: its output and its draws. Vectors are in
// encrypt_vectors_test.cpp, refusals in the table of bad inputs.
#include "tests/support/emulated.h"
#include "tests/support/encryption_case.h"

namespace zokecc_test::encrypt_test {

namespace {

const ByteString kMessage = test_bytes(kSmallL, 11);

// One encryption on the small curve.
void expect_encryption(uint32_t selector, uint32_t nonce, const ByteString &message, const Encrypted &want) {
    expect_encrypted(small_session(selector), kSm2, small_public_key(), message, {nonce}, want);
}

}  // namespace

TEST(SdfExternalEncrytpEcc, WritesC1ThenTheMaskedMessageAndTheCheckValue) {
    for (uint32_t selector : kKnownHashes)
        expect_encryption(selector, 77, kMessage, small_encryption(selector, 77, kMessage));
}

TEST(SdfExternalEncrytpEcc, EveryNonceOnTheSmallCurve) {
    for (uint32_t k = kLeastKey; k < kSmallN; k += kStride) {
        SCOPED_TRACE(k);
        expect_encryption(HASH_ALG_SM3, k, kMessage, small_encryption(HASH_ALG_SM3, k, kMessage));
    }
}

TEST(SdfExternalEncrytpEcc, OneNonceBelowTheOrderIsDrawnAndNothingElse) {
    // Without a queue the generator is used; it gives the same for the same clock.
    mint k{};
    const mint n = small_number(kSmallN);
    unsigned seedings = 0;
    {
        FakeEntropy entropy;
        gen_random_number(&k, &n);
        seedings = entropy.seedings();
    }
    FakeEntropy entropy;
    GuardedRecord<ECCCipher> out;
    EXPECT_EQ(encrypt(small_session(), kSm2, small_public_key(), kMessage, out.get()), ZOK_OK);
    EXPECT_EQ(entropy.number_calls, 1u);
    EXPECT_EQ(entropy.seedings(), seedings);
    expect_cipher(out, small_encryption(HASH_ALG_SM3, k.len == 0 ? 0 : k.words[0], kMessage));
}

TEST(SdfExternalEncrytpEcc, KeptNonceOfZeroIsNotDrawnAgain) {
    // C1 and the shared point are infinite and written as zero bytes; anyone can read the message.
    const ByteString zero(kSmallL, 0);
    expect_encryption(HASH_ALG_SM3, 0, kMessage,
                      model_encryption(HASH_ALG_SM3, zero, zero, zero, zero, kMessage));
}

TEST(SdfExternalEncrytpEcc, KeptNonceSixBelowTheOrderSharesThePointOfZeros) {
    // On this curve wNAF gives infinity for n - 6, while C1 comes from the comb.
    const Curve &c = curve("sm2p256v1");
    mint k{};
    const mint six = small_number(6);
    mint_sub(&c.n, &six, &k);
    ecc_point C1{};
    ecc_fix_point_mul_1(&k, nullptr, &c.a, &c.b, &c.p, &C1,
                        static_cast<SessionContext *>(sm2_session())->table.entry);
    const ByteString message = test_bytes(32, 5), zero(32, 0);
    expect_encrypted(
        sm2_session(), kSm2, base_point_key(c), message, k,
        model_encryption(HASH_ALG_SM3, fixed_bytes(C1.x, 32), fixed_bytes(C1.y, 32), zero, zero, message));
}

TEST(SdfExternalEncrytpEcc, KeptKeyOffTheCurveIsAccepted) {
    // (5, 7) is on another curve with the same a; the formulas do not use b.
    const TinyCurve other(kSmallP, 2, (7 * 7 + 2 * kSmallP - 5 * 5 * 5 - 2 * 5) % kSmallP);
    const TinyPoint shared = other.library_window(small_number(77), {false, 5, 7});
    ASSERT_FALSE(shared.infinite);
    const TinyPoint C1 = small_multiple(77);
    expect_encrypted(small_session(), kSm2, small_public_key(5, 7), kMessage, {77},
                     model_encryption(HASH_ALG_SM3, small_bytes(C1.x), small_bytes(C1.y),
                                      small_bytes(shared.x), small_bytes(shared.y), kMessage));
}

TEST(SdfExternalEncrytpEcc, KeyIsReadAtItsOwnSize) {
    const Encrypted want = small_encryption(HASH_ALG_SM3, 9, kMessage);
    for (size_t size : {size_t{2}, size_t{19}, size_t{21}, size_t{64}})
        for (uint32_t spare_bits : {0u, 7u}) {
            ECCrefPublicKey key =
                public_key(fixed_bytes(small_number(346), size), fixed_bytes(small_number(763), size));
            key.bits += spare_bits;
            SCOPED_TRACE(key.bits);
            expect_encrypted(small_session(), kSm2, key, kMessage, {9}, want);
        }
}

}  // namespace zokecc_test::encrypt_test

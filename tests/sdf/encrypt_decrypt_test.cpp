// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SDF_ExternalDecrypt_ECC with SM2: the plaintext, the results for changed records, and what is written
// nevertheless.
#include "tests/support/emulated.h"
#include "tests/support/encryption_case.h"

namespace zokecc_test::encrypt_decrypt_test {

namespace {

const ByteString kMessage = test_bytes(kSmallL, 31);

// By both pairs of calls; the record is only for messages as long as a coordinate.
std::vector<Decrypted> decrypt_small(const Encrypted &parts, uint32_t d = kSmallD,
                                     uint32_t selector = HASH_ALG_SM3) {
    void *session = small_session(selector);
    std::vector<Decrypted> out = {flat_decrypt(session, small_private_key(d), parts.flat())};
    if (parts.C2.size() == kSmallL)
        out.push_back(decrypt(session, kSm2, small_private_key(d), cipher_record(parts)));
    return out;
}
void expect_decrypted(const Encrypted &parts, uint32_t status, const ByteString &plain, uint32_t d = kSmallD,
                      uint32_t selector = HASH_ALG_SM3) {
    for (const Decrypted &got : decrypt_small(parts, d, selector)) expect_plain(got, status, plain);
}
void expect_mismatch(const Encrypted &parts, uint32_t d, uint32_t selector = HASH_ALG_SM3) {
    for (const Decrypted &got : decrypt_small(parts, d, selector)) {
        EXPECT_EQ(got.status, ZOK_ERR_INTERNAL) << d;
        EXPECT_EQ(got.length, parts.C2.size()) << d;
        EXPECT_TRUE(got.clean) << d;
    }
}

}  // namespace

TEST(SdfExternalDecryptEcc, GivesTheMessageForEveryNonce) {
    for (uint32_t k = 1; k < kSmallN; k += kStride) {
        SCOPED_TRACE(k);
        expect_decrypted(small_encryption(HASH_ALG_SM3, k, kMessage), ZOK_OK, kMessage);
    }
}

TEST(SdfExternalDecryptEcc, GivesTheMessageForEveryKey) {
    // C1 is 77 G, so d C1 follows the wNAF of that point.
    for (uint32_t d = 1; d < kSmallN; d += kStride) {
        SCOPED_TRACE(d);
        const TinyPoint C1 = small_multiple(77), shared = small_product(d, C1);
        const Encrypted parts =
            model_encryption(HASH_ALG_SHA256, coordinate(C1, &TinyPoint::x), coordinate(C1, &TinyPoint::y),
                             coordinate(shared, &TinyPoint::x), coordinate(shared, &TinyPoint::y), kMessage);
        expect_decrypted(parts, ZOK_OK, kMessage, d, HASH_ALG_SHA256);
    }
}

TEST(SdfExternalDecryptEcc, DrawsNoNumber) {
    FakeEntropy entropy;
    expect_decrypted(small_encryption(HASH_ALG_SM3, 77, kMessage), ZOK_OK, kMessage);
    EXPECT_EQ(entropy.number_calls, 0u);
    EXPECT_EQ(entropy.calls(), 0u);
}

TEST(SdfExternalDecryptEcc, BytesBehindThePartsAreNotRead) {
    ECCCipher cipher = cipher_record(small_encryption(HASH_ALG_SM3, 77, kMessage));
    for (uint8_t *field : {cipher.x, cipher.y, cipher.C}) std::memset(field + kSmallL, 0x5A, 64 - kSmallL);
    std::memset(cipher.M + 32, 0x5A, 32);
    expect_plain(decrypt(small_session(), kSm2, small_private_key(), cipher), ZOK_OK, kMessage);
}

TEST(SdfExternalDecryptEcc, KeyIsReadAtItsOwnSize) {
    const ECCCipher cipher = cipher_record(small_encryption(HASH_ALG_SM3, 77, kMessage));
    for (size_t size : {size_t{1}, size_t{19}, size_t{64}}) {
        ECCrefPrivateKey key = private_key(fixed_bytes(small_number(kSmallD), size));
        key.bits += 7;
        expect_plain(decrypt(small_session(), kSm2, key, cipher), ZOK_OK, kMessage);
    }
}

TEST(SdfExternalDecryptEcc, KeptPlaintextStaysWrittenAfterAMismatch) {
    Encrypted parts = small_encryption(HASH_ALG_SM3, 77, kMessage);
    parts.C3 = ByteString(32, 0);
    expect_decrypted(parts, ZOK_ERR_INTERNAL, kMessage);
}

TEST(SdfExternalDecryptEcc, EveryFlippedBitOfTheCheckValueIsAMismatch) {
    for (size_t size : {kSmallL, size_t{45}}) {
        const Encrypted good = small_encryption(HASH_ALG_SHA256, 77, test_bytes(size));
        for (size_t bit = 0; bit < 256; ++bit) {
            Encrypted parts = good;
            parts.C3 = flipped(good.C3, bit);
            SCOPED_TRACE(bit);
            expect_decrypted(parts, ZOK_ERR_INTERNAL, test_bytes(size), kSmallD, HASH_ALG_SHA256);
        }
    }
}

TEST(SdfExternalDecryptEcc, EveryFlippedBitOfTheMaskedMessageFlipsThePlaintextAndIsAMismatch) {
    for (size_t size : {kSmallL, size_t{45}}) {
        const Encrypted good = small_encryption(HASH_ALG_SM3, 77, test_bytes(size));
        for (size_t bit = 0; bit < 8 * size; ++bit) {
            Encrypted parts = good;
            parts.C2 = flipped(good.C2, bit);
            SCOPED_TRACE(bit);
            expect_decrypted(parts, ZOK_ERR_INTERNAL, flipped(test_bytes(size), bit));
        }
    }
}

TEST(SdfExternalDecryptEcc, FlippedBitOfC1IsAMismatch) {
    const ByteString message = test_bytes(32, 6);
    const Curve &c = curve("sm2p256v1");
    GuardedRecord<ECCCipher> good;
    // The base point is the public key of d = 1.
    const ECCrefPublicKey key = base_point_key(c);
    const ECCrefPrivateKey priv = private_key({1});
    FakeEntropy entropy;
    queue_numbers(entropy, {0xC0FFEE});
    ASSERT_EQ(encrypt(sm2_session(), kSm2, key, message, good.get()), ZOK_OK);
    expect_plain(decrypt(sm2_session(), kSm2, priv, *good.get()), ZOK_OK, message);
    for (size_t bit = 0; bit < 256; bit += 29)
        for (bool in_y : {false, true}) {
            ECCCipher cipher = *good.get();
            uint8_t *const field = in_y ? cipher.y : cipher.x;
            field[bit / 8] = static_cast<uint8_t>(field[bit / 8] ^ (1u << (bit % 8)));
            const ByteString flat = joined({{0x04},
                                            ByteString(cipher.x, cipher.x + 32),
                                            ByteString(cipher.y, cipher.y + 32),
                                            ByteString(cipher.C, cipher.C + 32),
                                            ByteString(cipher.M, cipher.M + 32)});
            for (const Decrypted &got :
                 {decrypt(sm2_session(), kSm2, priv, cipher), flat_decrypt(sm2_session(), priv, flat)}) {
                if (kHardened) {
                    expect_no_plain(got, ZOK_ERR_ARGUMENT);
                    continue;
                }
                EXPECT_EQ(got.status, ZOK_ERR_INTERNAL) << bit;
                EXPECT_EQ(got.length, 32u);
                EXPECT_TRUE(got.clean);
                EXPECT_NE(to_hex(got.plain), to_hex(message)) << bit;
            }
        }
}

TEST(SdfExternalDecryptEcc, AnotherKeyIsAMismatch) {
    const Encrypted parts = small_encryption(HASH_ALG_SM3, 77, kMessage);
    for (uint32_t d : {1u, kSmallD - 1, kSmallD + 1, kSmallN - 1}) expect_mismatch(parts, d);
}

TEST(SdfExternalDecryptEcc, AnotherHashIsAMismatch) {
    for (uint32_t selector : kKnownHashes)
        expect_mismatch(small_encryption(selector, 77, kMessage), kSmallD, 1 - selector);
}

TEST(SdfExternalDecryptEcc, KeptKeyOfZeroSharesThePointOfZeros) {
    // A message encrypted for a shared point of zero bytes is decrypted for any C1.
    const ByteString zero(kSmallL, 0);
    const TinyPoint C1 = small_multiple(77);
    const Encrypted parts =
        model_encryption(HASH_ALG_SM3, small_bytes(C1.x), small_bytes(C1.y), zero, zero, kMessage);
    expect_decrypted(parts, ZOK_OK, kMessage, 0);
    expect_mismatch(small_encryption(HASH_ALG_SM3, 77, kMessage), 0);
}

TEST(SdfExternalDecryptEcc, KeptC1OfZerosDecryptsUnderEveryKey) {
    // (0, 0) is not treated as infinity here, and every multiple of it is written as zero bytes.
    const ByteString zero(kSmallL, 0);
    const Encrypted parts = model_encryption(HASH_ALG_SM3, zero, zero, zero, zero, kMessage);
    for (uint32_t d : {0u, 1u, 2u, 3u, kSmallD, kSmallN - 1}) {
        SCOPED_TRACE(d);
        expect_decrypted(parts, ZOK_OK, kMessage, d);
    }
}

TEST(SdfExternalDecryptEcc, KeptC1OffTheCurveIsMultipliedAllTheSame) {
    const TinyCurve other(kSmallP, 2, (7 * 7 + 2 * kSmallP - 5 * 5 * 5 - 2 * 5) % kSmallP);
    const TinyPoint shared = other.library_window(small_number(kSmallD), {false, 5, 7});
    ASSERT_FALSE(shared.infinite);
    expect_decrypted(model_encryption(HASH_ALG_SM3, small_bytes(5), small_bytes(7), small_bytes(shared.x),
                                      small_bytes(shared.y), kMessage),
                     ZOK_OK, kMessage);
}

}  // namespace zokecc_test::encrypt_decrypt_test

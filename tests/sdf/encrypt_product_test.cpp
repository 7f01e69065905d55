// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The multiplicative scheme of SDF_ExternalEncrytp_ECC and SDF_ExternalDecrypt_ECC:
// C = M x2 mod p.
#include "tests/support/emulated.h"
#include "tests/support/encryption_case.h"
#include "tests/support/naive_int.h"

namespace zokecc_test::encrypt_product_test {

namespace {

const ByteString kMessage = test_bytes(kSmallL, 41);
const ByteString kNoCheck(64, 0);

// C1 and M x2 mod p for the nonce k, with the message as one number.
Encrypted product(uint32_t k, const ByteString &message) {
    const TinyPoint C1 = small_multiple(k), shared = small_product(k, small_key_point());
    const uint32_t C = product_modulo(residue(message, kSmallP), shared.x, kSmallP);
    return {small_bytes(C1.x), small_bytes(C1.y), small_bytes(C), kNoCheck};
}

void expect_encryption(const Nonces &nonces, uint32_t k, const ByteString &message) {
    expect_encrypted(small_session(), kProduct, small_public_key(), message, nonces, product(k, message));
}

// A number as the decryption writes it: no leading zero byte, and nothing for zero.
ByteString shortest(uint32_t value) {
    ByteString out = small_bytes(value);
    while (!out.empty() && out.front() == 0) out.erase(out.begin());
    return out;
}

// A record whose masked message is C, for the nonce k.
ECCCipher record_of(uint32_t k, const ByteString &C) {
    const TinyPoint C1 = small_multiple(k);
    return cipher_record(small_bytes(C1.x), small_bytes(C1.y), C, kNoCheck);
}

Decrypted decrypt_small(const ECCCipher &cipher, uint32_t d = kSmallD) {
    return decrypt(small_session(), kProduct, small_private_key(d), cipher);
}

}  // namespace

TEST(SdfExternalEncrytpEccProduct, WritesC1TheProductAndSixtyFourZeroBytes) {
    expect_encryption({77}, 77, kMessage);
}

TEST(SdfExternalEncrytpEccProduct, EveryNonceOnTheSmallCurve) {
    for (uint32_t k = 1; k < kSmallN; k += kStride) {
        SCOPED_TRACE(k);
        if (small_product(k, small_key_point()).x != 0) expect_encryption({k}, k, kMessage);
    }
}

TEST(SdfExternalEncrytpEccProduct, MessagesOfAnyValue) {
    for (uint32_t value : {0u, 1u, 2u, 255u, 256u, 1000u, kSmallP - 1}) {
        SCOPED_TRACE(value);
        expect_encryption({300}, 300, small_bytes(value));
    }
}

TEST(SdfExternalEncrytpEccProduct, MessageOfTheModulusAndAboveIsReduced) {
    for (uint32_t value : {kSmallP, kSmallP + 1, kSmallP + 5, 0xFFFFFFFFu}) {
        SCOPED_TRACE(value);
        expect_encryption({300}, 300, small_bytes(value));
    }
    expect_encryption({300}, 300, ByteString(kSmallL, 0xFF));
}

TEST(SdfExternalEncrytpEccProduct, NonceWithAnInfiniteSharedPointIsDrawnAgain) {
    expect_encryption({0, 77}, 77, kMessage);
    expect_encryption({0, 0, 0, 5}, 5, kMessage);
}

TEST(SdfExternalEncrytpEccProduct, NonceWithASharedXOfZeroIsDrawnAgain) {
    // (0, 5) and (0, 1004) are on the curve.
    const uint32_t k = first_scalar([](uint32_t candidate) {
        const TinyPoint shared = small_product(candidate, small_key_point());
        return !shared.infinite && shared.x == 0;
    });
    expect_encryption({k, 77}, 77, kMessage);
}

TEST(SdfExternalEncrytpEccProduct, ThousandAndTwentyFourFruitlessNoncesEndWithMinusOne) {
    std::vector<uint32_t> nonces(1024, 0);
    expect_encrypted(small_session(), kProduct, small_public_key(), kMessage, nonces, {}, ZOK_ERR_INTERNAL);
    nonces.back() = 77;
    expect_encryption(nonces, 77, kMessage);
}

// With a = 0 a point with x = p has the order 3. An x of zero is refused as an argument.
TEST(SdfExternalEncrytpEccProduct, RecipientWithoutAMultipleIsRefusedBeforeAnyDraw) {
    const Curve &koblitz = curve("secp256k1");
    Session session(koblitz);
    ECCrefPublicKey Q{};
    Q.bits = 256;
    const ByteString p = fixed_bytes(koblitz.p, 32);
    std::copy(p.begin(), p.end(), Q.x);
    Q.y[31] = 5;
    FakeEntropy entropy;
    GuardedRecord<ECCCipher> out;
    EXPECT_EQ(encrypt(session.handle(), kProduct, Q, test_bytes(32, 41), out.get()),
              kHardened ? ZOK_ERR_ARGUMENT : ZOK_ERR_INTERNAL);
    EXPECT_EQ(entropy.calls(), 0u);
    EXPECT_TRUE(out.unchanged());
}

TEST(SdfExternalEncrytpEccProduct, HashOfTheSessionHasNoPartInIt) {
    for (uint32_t selector : {HASH_ALG_SHA256, kUnknownSelector})
        expect_encrypted(small_session(selector), kProduct, small_public_key(), kMessage, {77},
                         product(77, kMessage));
}

TEST(SdfExternalEncrytpEccProduct, LargeNumbersFollowPlainArithmetic) {
    for (const char *name : {"sm2p256v1", "brainpoolP160r1"}) {
        const Curve &c = curve(name);
        const size_t L = c.byte_len;
        const mint k = mint_from_hex("384f30353073aeece7a1654330a96204d37982a3");
        ecc_point shared{};
        ecc_unknown_point_mul(&k, &c.G, &c.a, &c.b, &c.p, &shared);
        // The recipient is G itself, so C1 equals the shared point.
        const ByteString message = test_bytes(L, 42);
        const Natural M = Natural::from_hex(to_hex(message)), p(c.p);
        const Encrypted parts = {fixed_bytes(shared.x, L), fixed_bytes(shared.y, L),
                                 fixed_bytes(mod_mul(M % p, Natural(shared.x), p).to_mint(), L), kNoCheck};
        expect_encrypted(shared_session(c), kProduct, base_point_key(c), message, k, parts);

        const Decrypted got = decrypt(shared_session(c), kProduct, private_key({1}), cipher_record(parts));
        const Natural back = Natural::from_hex(to_hex(got.plain));
        EXPECT_EQ(got.status, ZOK_OK);
        EXPECT_EQ(back, M % p) << name;
    }
}

TEST(SdfExternalDecryptEccProduct, DividesByTheSharedX) {
    for (uint32_t d : {kSmallD, kSmallN - 1})
        for (uint32_t k : {1u, 77u, 500u, kSmallN - 1})
            for (uint32_t C : {1u, 2u, 500u, kSmallP - 1}) {
                const uint32_t x2 = small_product(d, small_multiple(k)).x;
                const uint32_t M = product_modulo(C, inverse_modulo(x2, kSmallP), kSmallP);
                expect_plain(decrypt_small(record_of(k, small_bytes(C)), d), ZOK_OK, shortest(M));
            }
}

TEST(SdfExternalDecryptEccProduct, GivesBackEveryMessageBelowTheModulus) {
    for (uint32_t M = 0; M < kSmallP; M += M < 260 ? kStride : 7) {
        SCOPED_TRACE(M);
        expect_encryption({77}, 77, small_bytes(M));
        expect_plain(decrypt_small(cipher_record(product(77, small_bytes(M)))), ZOK_OK, shortest(M));
    }
}

TEST(SdfExternalDecryptEccProduct, LeadingZeroBytesAreLostAndTheLengthIsTheShorterOne) {
    const Curve &c = curve("sm2p256v1");
    ByteString message = test_bytes(32, 43);
    message[0] = 0;
    message[1] = 0;
    message[2] = 0x7F;
    const ECCrefPublicKey key = base_point_key(c);
    FakeEntropy entropy;
    queue_numbers(entropy, {0xC0FFEE});
    GuardedRecord<ECCCipher> out;
    ASSERT_EQ(encrypt(sm2_session(), kProduct, key, message, out.get()), ZOK_OK);
    expect_plain(decrypt(sm2_session(), kProduct, private_key({1}), *out.get()), ZOK_OK,
                 ByteString(message.begin() + 2, message.end()));
}

TEST(SdfExternalDecryptEccProduct, MessageAboveTheModulusComesBackReduced) {
    const ByteString message = small_bytes(kSmallP + 5);
    expect_encryption({77}, 77, message);
    expect_plain(decrypt_small(cipher_record(product(77, message))), ZOK_OK, {5});
}

TEST(SdfExternalDecryptEccProduct, MaskedMessageOfZeroGivesNoByte) {
    expect_plain(decrypt_small(record_of(77, small_bytes(0))), ZOK_OK, ByteString());
    expect_plain(decrypt_small(record_of(77, small_bytes(kSmallP))), ZOK_OK, ByteString());
}

TEST(SdfExternalDecryptEccProduct, MaskedMessageAboveTheModulusIsReduced) {
    const Decrypted small = decrypt_small(record_of(77, small_bytes(400)));
    expect_plain(decrypt_small(record_of(77, small_bytes(400 + 3 * kSmallP))), ZOK_OK, small.plain);
    EXPECT_EQ(small.status, ZOK_OK);
}

TEST(SdfExternalDecryptEccProduct, KeptSharedXOfZeroGivesNoByteAndNoError) {
    const ByteString zero(kSmallL, 0);
    // d = 0, C1 = (0, 0), and a C1 that d takes to (0, 5) or (0, 1004).
    expect_plain(decrypt_small(record_of(77, small_bytes(400)), 0), ZOK_OK, ByteString());
    expect_plain(decrypt_small(cipher_record(zero, zero, small_bytes(400), kNoCheck)), ZOK_OK, ByteString());
    const uint32_t k = first_scalar([](uint32_t candidate) {
        const TinyPoint shared = small_product(kSmallD, small_multiple(candidate));
        return !shared.infinite && shared.x == 0;
    });
    expect_plain(decrypt_small(record_of(k, small_bytes(400))), ZOK_OK, ByteString());
}

TEST(SdfExternalDecryptEcc, KeptProductSchemeHasNoIntegrityCheck) {
    // A changed record, another key and a point off the curve all give some number and 0.
    const TinyPoint C1 = small_multiple(77);
    const uint32_t x2 = small_product(kSmallD, C1).x;
    const uint32_t M = product_modulo(401, inverse_modulo(x2, kSmallP), kSmallP);
    expect_plain(decrypt_small(record_of(77, small_bytes(401))), ZOK_OK, shortest(M));

    const uint32_t other_x2 = small_product(kSmallD + 1, C1).x;
    const uint32_t other_M = product_modulo(401, inverse_modulo(other_x2, kSmallP), kSmallP);
    ASSERT_NE(M, other_M);
    expect_plain(decrypt_small(record_of(77, small_bytes(401)), kSmallD + 1), ZOK_OK, shortest(other_M));

    const TinyCurve off(kSmallP, 2, (7 * 7 + 2 * kSmallP - 5 * 5 * 5 - 2 * 5) % kSmallP);
    const uint32_t off_x2 = off.library_window(small_number(kSmallD), {false, 5, 7}).x;
    const uint32_t off_M = product_modulo(401, inverse_modulo(off_x2, kSmallP), kSmallP);
    expect_plain(decrypt_small(cipher_record(small_bytes(5), small_bytes(7), small_bytes(401), kNoCheck)),
                 ZOK_OK, shortest(off_M));
}

TEST(SdfExternalDecryptEccProduct, CheckFieldAndBytesBehindTheNumbersAreNotRead) {
    ECCCipher cipher = record_of(77, small_bytes(400));
    const Decrypted want = decrypt_small(cipher);
    for (uint8_t *field : {cipher.x, cipher.y, cipher.C}) std::memset(field + kSmallL, 0x5A, 64 - kSmallL);
    std::memset(cipher.M, 0x5A, sizeof cipher.M);
    expect_plain(decrypt_small(cipher), ZOK_OK, want.plain);
    EXPECT_FALSE(want.plain.empty());
}

}  // namespace zokecc_test::encrypt_product_test

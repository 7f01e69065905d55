// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Encryption and decryption on unsuitable curves: no modulus, a quotient h of zero, points
// whose h-fold has no coordinates. Refusals before a nonce is drawn are in the table of bad inputs.
#include "tests/support/encryption_case.h"
#include "tests/support/give_up.h"

namespace zokecc_test::encrypt_degenerate_test {

namespace {

const ByteString kMessage = test_bytes(kSmallL, 51);

// y^2 = x^3 + 2x + 3 modulo 97, on which (3, 6) has order 5.
const TinyCurve &group97() {
    static const TinyCurve group(97, 2, 3);
    return group;
}
constexpr TinyPoint kOrderFive = {false, 3, 6};
Curve curve97(uint32_t n) { return small_variant(97, 2, 3, kOrderFive, n); }

ECCrefPublicKey key_of(const TinyPoint &P) { return small_public_key(P.x, P.y); }

// The first point that satisfies the condition.
template <class Condition>
TinyPoint find_point(const TinyCurve &group, Condition condition) {
    for (const TinyPoint &P : group.points())
        if (!P.infinite && P.x != 0 && P.y != 0 && condition(P)) return P;
    give_up("no such point");
}
TinyPoint twice(const TinyCurve &group, const TinyPoint &P) {
    return group.library_window(small_number(2), P);
}

// (0, 5) or (0, 1004) halved, on the small curve.
TinyPoint half_of_x_zero() {
    return find_point(small_group(), [](const TinyPoint &P) { return twice(small_group(), P).x == 0; });
}
// y^2 = x^3 + 2x + 4 modulo 97: (7, 19) has order 88, and (73, 10) order 4 with the double (37, 0).
const TinyCurve &group88() {
    static const TinyCurve group(97, 2, 4);
    return group;
}
constexpr TinyPoint kOrder88 = {false, 7, 19};
constexpr TinyPoint kOrderFour = {false, 73, 10};

// SM2 encryption draws k, writes C1 = k G and is then refused; after C1 nothing is written. The hardened
// build checks the key first and writes only the 04 of a flat ciphertext.
void expect_refused_after_c1(void *session, const ECCrefPublicKey &key, uint32_t k, const TinyPoint &C1) {
    const Encrypted written =
        kHardened ? Encrypted{} : Encrypted{small_bytes(C1.x), small_bytes(C1.y), {}, {}};
    expect_encrypted(session, kSm2, key, kMessage, {k}, written, ZOK_ERR_ARGUMENT);
    expect_flat_encrypted(session, key, kMessage, {k}, written, ZOK_ERR_ARGUMENT);
}

// SM2 decryption of parts by both pairs.
void expect_sm2_decryption(void *session, uint32_t d, const Encrypted &parts, uint32_t status,
                           const ByteString *plain) {
    for (const Decrypted &got : {decrypt(session, kSm2, small_private_key(d), cipher_record(parts)),
                                 flat_decrypt(session, small_private_key(d), parts.flat())})
        if (plain != nullptr)
            expect_plain(got, status, *plain);
        else
            expect_no_plain(got, status);
}

Encrypted parts_for(const TinyPoint &C1, const TinyPoint &shared) {
    return model_encryption(HASH_ALG_SM3, coordinate(C1, &TinyPoint::x), coordinate(C1, &TinyPoint::y),
                            coordinate(shared, &TinyPoint::x), coordinate(shared, &TinyPoint::y), kMessage);
}

}  // namespace

TEST(EncryptionWithoutAModulus, Sm2DecryptionReturns1000027) {
    Session session(small_variant(0, 2, 25, {false, 2, 365}, kSmallN));
    // 0 / n is a quotient h of zero.
    expect_sm2_decryption(session.handle(), kSmallD, small_encryption(HASH_ALG_SM3, 77, kMessage),
                          ZOK_ERR_ARGUMENT, nullptr);
}

TEST(EncryptionWithoutAModulus, ProductDecryptionGivesNoByte) {
    Session session(small_variant(0, 2, 25, {false, 2, 365}, kSmallN));
    expect_plain(decrypt(session.handle(), kProduct, small_private_key(),
                         cipher_record(small_encryption(HASH_ALG_SM3, 77, kMessage))),
                 ZOK_OK, ByteString());
}

TEST(EncryptionWithHOfZero, Sm2IsRefusedAfterC1) {
    // An order above the modulus makes h = 0.
    Session session(small_curve_with_order(kSmallP + 2));
    ASSERT_EQ(session.context()->h.len, 0u);
    expect_refused_after_c1(session.handle(), small_public_key(), 77, small_multiple(77));
}

TEST(EncryptionWithHOfZero, Sm2DecryptionReturns1000027) {
    Session session(small_curve_with_order(kSmallP + 2));
    expect_sm2_decryption(session.handle(), kSmallD, small_encryption(HASH_ALG_SM3, 77, kMessage),
                          ZOK_ERR_ARGUMENT, nullptr);
}

TEST(EncryptionWithHOfZero, ProductSchemeDoesNotLookAtIt) {
    Session session(small_curve_with_order(kSmallP + 2));
    FakeEntropy entropy;
    queue_numbers(entropy, {77});
    GuardedRecord<ECCCipher> out;
    EXPECT_EQ(encrypt(session.handle(), kProduct, small_public_key(), small_bytes(1000), out.get()), ZOK_OK);
    expect_plain(decrypt(session.handle(), kProduct, small_private_key(), *out.get()), ZOK_OK, {0x03, 0xE8});
}

TEST(EncryptionWithHOfTwo, HFoldOfTheKeyWithXOfZeroIsRefusedAfterC1) {
    Session session(small_curve_with_order(501));
    expect_refused_after_c1(session.handle(), key_of(half_of_x_zero()), 77, small_multiple(77));
}

TEST(EncryptionWithHOfTwo, HFoldOfTheKeyWithYOfZeroIsRefusedAfterC1) {
    Session session(small_variant(97, 2, 4, kOrder88, 41));
    ASSERT_EQ(twice(group88(), kOrderFour), (TinyPoint{false, 37, 0}));
    expect_refused_after_c1(session.handle(), key_of(kOrderFour), 2, group88().add(kOrder88, kOrder88));
}

TEST(EncryptionWithHOfTwo, OtherKeysAreServed) {
    Session session(small_curve_with_order(501));
    expect_encrypted(session.handle(), kSm2, small_public_key(), kMessage, {77},
                     small_encryption(HASH_ALG_SM3, 77, kMessage));
}

TEST(EncryptionWithHOfTwo, KeptZeroCoordinateOfTheHFoldIsNoReasonToRefuseC1) {
    // Decryption checks only whether h C1 is infinite.
    Session wide(small_curve_with_order(500)), narrow(small_variant(97, 2, 4, kOrder88, 40));
    const TinyPoint C1 = half_of_x_zero();
    expect_sm2_decryption(wide.handle(), kSmallD, parts_for(C1, small_product(kSmallD, C1)), ZOK_OK,
                          &kMessage);
    expect_sm2_decryption(narrow.handle(), 1, parts_for(kOrderFour, kOrderFour), ZOK_OK, &kMessage);
}

TEST(EncryptionWithHOfFive, KeyOfThatOrderIsRefusedAfterC1) {
    Session session(curve97(19));
    ASSERT_TRUE(group97().library_window(small_number(5), kOrderFive).infinite);
    expect_refused_after_c1(session.handle(), key_of(kOrderFive), 1, kOrderFive);
}

TEST(EncryptionWithHOfFive, C1OfThatOrderReturns1000027) {
    Session session(curve97(19));
    expect_sm2_decryption(session.handle(), 1, parts_for(kOrderFive, kOrderFive), ZOK_ERR_ARGUMENT, nullptr);
    // The same ciphertext with h = 1.
    Session other(curve97(60));
    expect_sm2_decryption(other.handle(), 1, parts_for(kOrderFive, kOrderFive),
                          kHardened ? ZOK_ERR_ARGUMENT : ZOK_OK, kHardened ? nullptr : &kMessage);
}

TEST(EncryptionWithHOfFive, ProductSchemeServesPointsOfThatOrder) {
    Session session(curve97(19));
    FakeEntropy entropy;
    queue_numbers(entropy, {1});
    GuardedRecord<ECCCipher> out;
    EXPECT_EQ(encrypt(session.handle(), kProduct, key_of(kOrderFive), small_bytes(50), out.get()), ZOK_OK);
    expect_field(out->C, small_bytes(50 * 3 % 97));
    expect_plain(decrypt(session.handle(), kProduct, small_private_key(1), *out.get()), ZOK_OK, {50});
}

}  // namespace zokecc_test::encrypt_degenerate_test

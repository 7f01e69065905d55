// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SDF_ExternalVerify_ECC: inputs it accepts although the standards would not. The public key is
// not checked in any way, a sum of opposite points is a finite point, and an infinite sum
// counts as x = 0. Callers must check a key from outside first.
//
// Every e below is r minus the x coordinate from the library's formulas, computed with a
// model of them in plain integers.
#include "tests/sdf/example.h"

namespace zokecc_test::verify_kept_test {

namespace {

// Valid for this e, invalid for the next one.
void expect_only(uint32_t e, const ECCrefPublicKey &key, uint32_t algorithm, uint32_t r, uint32_t s,
                 void *session = small_session()) {
    EXPECT_EQ(verify_e(session, algorithm, key, small_bytes(e), small_signature(r, s)), ZOK_OK);
    EXPECT_EQ(verify_e(session, algorithm, key, small_bytes(e + 1), small_signature(r, s)), ZOK_ERR_VERIFY);
}

}  // namespace

TEST(SdfExternalVerifyEcc, KeptPublicKeyOffTheCurveIsNotRefused) {
    expect_only(989, small_public_key(5, 7), ZOK_ALG_SM2_SIGN, 10, 20);
}

TEST(SdfExternalVerifyEcc, KeptPublicKeyOffTheSm2CurveIsUsed) {
    ByteString y = example::pub_y();
    y[31] = static_cast<uint8_t>(y[31] + 1);
    ByteString e = from_hex("bf21ab5d372662e7ff07dcabf2b92fdd6d152f77ae10e24df5504f22d34d0385");
    EXPECT_EQ(verify_e(sm2_session(), ZOK_ALG_SM2_SIGN, public_key(example::pub_x(), y), e, example::sig()),
              ZOK_OK);
}

TEST(SdfExternalVerifyEcc, KeptZeroPublicKeyWithAnEvenTLeavesSG) {
    // The point (0, 0) has order two in the formulas: x of 20 G is 565.
    expect_only(436, small_public_key(0, 0), ZOK_ALG_SM2_SIGN, 10, 20);
}

TEST(SdfExternalVerifyEcc, KeptZeroPublicKeyWithAnOddTIsAddedAsAPoint) {
    expect_only(325, small_public_key(0, 0), ZOK_ALG_SM2_SIGN, 10, 21);
}

TEST(SdfExternalVerifyEcc, KeptZeroBitsReadTheZeroPublicKey) {
    ECCrefPublicKey key = small_public_key();
    for (uint32_t bits : {0u, 7u}) {
        key.bits = bits;
        expect_only(436, key, ZOK_ALG_SM2_SIGN, 10, 20);
    }
}

TEST(SdfExternalVerifyEcc, KeptEightBitsReadOneBytePerCoordinate) {
    ECCrefPublicKey key = public_key(ByteString{17}, ByteString{23});
    for (uint32_t bits : {8u, 15u}) {
        key.bits = bits;
        expect_only(686, key, ZOK_ALG_SM2_SIGN, 10, 20);
    }
}

TEST(SdfExternalVerifyEcc, KeptCoordinatesAboveTheModulusAreUsed) {
    expect_only(737, small_public_key(346, 763), ZOK_ALG_SM2_SIGN, 10, 20);
    expect_only(737, small_public_key(346 + 1009, 763 + 1009), ZOK_ALG_SM2_SIGN, 10, 20);
}

TEST(SdfExternalVerifyEcc, KeptCoordinatesOf64BytesAreUsed) {
    ECCrefPublicKey key =
        public_key(from_hex("4bf5122f344554c53bde2ebb8cd2b7e3d1600ad631c385a5d7cce23c7785459a"
                            "dbc1b4c900ffe48d575b5da5c638040125f65db0fe3e24494b76ea986457d986"),
                   from_hex("084fed08b978af4d7d196a7446a86b58009e636b611db16211b65a9aadff29c5"
                            "e52d9c508c502347344d8c07ad91cbd6068afc75ff6292f062a09ca381c89e71"));
    expect_only(337, key, ZOK_ALG_SM2_SIGN, 10, 20);
}

TEST(SdfExternalVerifyEcc, KeptCoordinatesAboveTheModulusOnTheSm2Curve) {
    // x + p and y + p, in 33 bytes.
    ECCrefPublicKey key =
        public_key(from_hex("0109f9df301e5421a150dd7d161e4bc5c672179fac1833fc086bb08ff356f3501f"),
                   from_hex("01ccea490be26775a52dc6ea718cc1aa600aed05faf35e084b6632f6072da9ad12"));
    EXPECT_EQ(verify_e(sm2_session(), ZOK_ALG_SM2_SIGN, key, example::e(), example::sig()), ZOK_OK);
}

TEST(SdfExternalVerifyEcc, EqualPointsAreDoubled) {
    expect_only(504, small_public_key(), ZOK_ALG_SM2_SIGN, 65, 300);   // s = t d
    expect_only(123, small_public_key(), ZOK_ALG_ECDSA_SIGN, 1, 220);  // e = r d
}

TEST(SdfExternalVerifyEcc, KeptOppositePointsGiveAFinitePoint) {
    // s = -t d: the standards have infinity here. x of 300 G is 272, and -2 * 272 = 465.
    expect_only(852, small_public_key(), ZOK_ALG_SM2_SIGN, 326, 300);
    expect_only(868, small_public_key(), ZOK_ALG_ECDSA_SIGN, 1, 121);  // e = -r d
}

TEST(SdfExternalVerifyEcc, KeptOppositePointsOnTheSm2CurveGiveAFinitePoint) {
    ByteString r = from_hex("6c24ae4d0d635bda993c96791d00df357e588044ffe4403ab5168b30a2963487");
    ByteString e = from_hex("c35e70e9867d9bd326e9be6d33aac4b079611451edb91020cd23a8a56fa5e437");
    EXPECT_EQ(
        verify_e(sm2_session(), ZOK_ALG_SM2_SIGN, example::pub(), e, signature(r, from_hex(example::kS))),
        ZOK_OK);
}

TEST(SdfExternalVerifyEcc, KeptInfiniteSumCountsAsXZero) {
    // The record claims three times the true order, so s G and t P are both infinity.
    Curve claimed = small_curve();
    claimed.n = small_number(3 * 991);
    Session session(claimed);
    expect_only(991, small_public_key(), ZOK_ALG_SM2_SIGN, 991, 991, session.handle());
}

TEST(SdfExternalVerifyEcc, EcdsaRefusesAnInfiniteSum) {
    // e = 0 leaves u2 Q with an even u2 = 798, and the zero key has order two.
    EXPECT_EQ(verify_e(small_session(), ZOK_ALG_ECDSA_SIGN, small_public_key(0, 0), small_bytes(0),
                       small_signature(4, 77)),
              ZOK_ERR_VERIFY);
}

}  // namespace zokecc_test::verify_kept_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SDF_ExternalSign_ECC: the range and the length of the key.
#include "tests/sdf/example.h"

namespace zokecc_test::sign_range_test {

namespace {

const char kSm2NMinus1[] = "fffffffeffffffffffffffffffffffff7203df6b21c6052b53bbf40939d54122";

// The small key with its 20 bytes at the end of `count` bytes.
ECCrefPrivateKey wide_key(size_t count) { return private_key(fixed_bytes(small_number(123), count)); }

}  // namespace

TEST(SdfExternalSignEcc, KeyNMinusOneReturns100000DForSm2) {
    SmallSigning signing;
    EXPECT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, small_private_key(990)), ZOK_ERR_SIGN);
    signing.expect_refused();
    EXPECT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, small_private_key(989)), ZOK_OK);
    expect_small_signature(signing.sig, 226, 462);
}

TEST(SdfExternalSignEcc, KeyNMinusOneSignsWithEcdsa) {
    SmallSigning signing;
    EXPECT_EQ(signing.sign(ZOK_ALG_ECDSA_SIGN, small_private_key(990)), ZOK_OK);
    expect_small_signature(signing.sig, 761, 99);
    EXPECT_EQ(verify_e(small_session(), ZOK_ALG_ECDSA_SIGN, small_public_key(2, 644), small_bytes(456),
                       *signing.sig.get()),
              ZOK_OK);
}

TEST(SdfExternalSignEcc, KeyNMinusOneOnTheSm2Curve) {
    ECCrefPrivateKey key = private_key(from_hex(kSm2NMinus1));
    Sm2Signing signing;
    ASSERT_EQ(signing.sign(ZOK_ALG_ECDSA_SIGN, key, example::e()), ZOK_OK);
    signing.expect(example::kX, "7aaa342bda47c5eb397d242a0d3ee4155eb5b47f41f0abd3c0ba7d6ca990b4a5");
    EXPECT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, key, example::e()), ZOK_ERR_SIGN);
    EXPECT_EQ(signing.entropy.number_calls, 1u);
}

TEST(SdfExternalSignEcc, KeyLengthIsTheWholeBytesOfItsBits) {
    struct Case {
        uint32_t bits;
        uint32_t status;
    };
    // 123 is the last byte of the 20; whole bytes before it are zero.
    for (Case c : {Case{160, ZOK_OK}, Case{167, ZOK_OK}, Case{159, ZOK_ERR_SIGN}, Case{152, ZOK_ERR_SIGN},
                   Case{0, ZOK_ERR_SIGN}, Case{7, ZOK_ERR_SIGN}}) {
        ECCrefPrivateKey key = small_private_key();
        key.bits = c.bits;
        SmallSigning signing;
        EXPECT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, key), c.status) << c.bits;
        if (c.status == ZOK_OK)
            expect_small_signature(signing.sig, 226, 216);
        else
            signing.expect_refused();
    }
}

TEST(SdfExternalSignEcc, EightBitsReadTheFirstByteOfTheKey) {
    for (uint32_t bits : {8u, 15u}) {
        ECCrefPrivateKey key = private_key(ByteString{123});
        key.bits = bits;
        SmallSigning signing;
        EXPECT_EQ(signing.sign(ZOK_ALG_SM2_SIGN, key), ZOK_OK);
        expect_small_signature(signing.sig, 226, 216);
    }
}

TEST(SdfExternalSignEcc, KeyMayBeWiderThanTheCurveUpTo64Bytes) {
    for (size_t count : {size_t{21}, size_t{33}, size_t{64}}) {
        SmallSigning signing;
        EXPECT_EQ(signing.sign(ZOK_ALG_ECDSA_SIGN, wide_key(count)), ZOK_OK) << count;
        expect_small_signature(signing.sig, 761, 681);
    }
    ECCrefPrivateKey key = wide_key(64);
    key.bits = 519;
    SmallSigning signing;
    EXPECT_EQ(signing.sign(ZOK_ALG_ECDSA_SIGN, key), ZOK_OK);
    key.K[0] = 1;
    SmallSigning too_large;
    EXPECT_EQ(too_large.sign(ZOK_ALG_ECDSA_SIGN, key), ZOK_ERR_SIGN);
    too_large.expect_refused();
}

TEST(SdfExternalSignEcc, Bits255OnA256BitCurveReadOneByteLess) {
    // The 31 bytes of the key that are read, then the last byte: 1 and 0.
    ByteString d(31, 0);
    d[30] = 1;
    ECCrefPrivateKey key = private_key(d);
    key.bits = 255;
    GuardedRecord<ECCSignature> sig;
    ECCrefPrivateKey one = private_key(fixed_bytes(small_number(1), 32));
    for (const ECCrefPrivateKey *used : {&key, &one}) {
        FakeEntropy entropy;
        entropy.queued_numbers.push_back(mint_from_hex(example::kK));
        ASSERT_EQ(sign_e(sm2_session(), ZOK_ALG_ECDSA_SIGN, *used, ByteString(), sig.get()), ZOK_OK);
        // With e = 0 and d = 1, s = x / k.
        expect_signature(sig, from_hex(example::kX),
                         from_hex("6c60499aea62c8f3750971994d6d0866656bca2078419046d2471a7aa1c5bfd0"));
    }
}

}  // namespace zokecc_test::sign_range_test

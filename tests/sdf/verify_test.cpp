// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SDF_ExternalVerify_ECC: the ranges of r and s, the lengths used, and the order of
// the checks. Intended leniency is tested in verify_kept_test.cpp.
#include "tests/sdf/example.h"

namespace zokecc_test::verify_test {

namespace {

// (226, 216) is the SM2 signature and (761, 681) the ECDSA signature of e = 456 with nonce 77.
struct Scheme {
    uint32_t algorithm;
    uint32_t r;
    uint32_t s;
};
const Scheme kSchemes[] = {{ZOK_ALG_SM2_SIGN, 226, 216}, {ZOK_ALG_ECDSA_SIGN, 761, 681}};

uint32_t verify(const Scheme &scheme, uint32_t r, uint32_t s, uint32_t e = 456) {
    return verify_e(small_session(), scheme.algorithm, small_public_key(), small_bytes(e),
                    small_signature(r, s));
}

}  // namespace

TEST(SdfExternalVerifyEcc, RefusesTheSignatureOfTheOtherAlgorithm) {
    EXPECT_EQ(verify(kSchemes[0], 761, 681), ZOK_ERR_VERIFY);
    EXPECT_EQ(verify(kSchemes[1], 226, 216), ZOK_ERR_VERIFY);
}

TEST(SdfExternalVerifyEcc, TakesEveryRAndSUpToTheOrderMinusOne) {
    // Signatures with r or s of 1 and n - 1; e is chosen to make each of them valid.
    struct Case {
        Scheme scheme;
        uint32_t e;
    };
    const Case cases[] = {
        {{ZOK_ALG_SM2_SIGN, 1, 200}, 659},   {{ZOK_ALG_SM2_SIGN, 990, 200}, 632},
        {{ZOK_ALG_SM2_SIGN, 200, 1}, 87},    {{ZOK_ALG_SM2_SIGN, 200, 990}, 471},
        {{ZOK_ALG_SM2_SIGN, 1, 1}, 46},      {{ZOK_ALG_SM2_SIGN, 990, 990}, 44},
        {{ZOK_ALG_ECDSA_SIGN, 1, 200}, 284}, {{ZOK_ALG_ECDSA_SIGN, 990, 200}, 319},
        {{ZOK_ALG_ECDSA_SIGN, 761, 1}, 619}, {{ZOK_ALG_ECDSA_SIGN, 761, 990}, 465},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(verify(c.scheme, c.scheme.r, c.scheme.s, c.e), ZOK_OK) << c.scheme.r << ' ' << c.scheme.s;
        EXPECT_EQ(verify(c.scheme, c.scheme.r, c.scheme.s, c.e + 1), ZOK_ERR_VERIFY);
    }
}

TEST(SdfExternalVerifyEcc, EcdsaTakesRPlusSEqualToTheOrder) {
    EXPECT_EQ(verify(kSchemes[1], 761, 230, 414), ZOK_OK);
}

TEST(SdfExternalVerifyEcc, BytesBehindTheCurveLengthAreNotRead) {
    for (const Scheme &scheme : kSchemes) {
        ECCSignature sig = small_signature(scheme.r, scheme.s);
        ECCrefPublicKey key = small_public_key();
        for (uint8_t *field : {sig.r, sig.s, key.x, key.y}) std::memset(field + 20, 0x3C, 44);
        EXPECT_EQ(verify_e(small_session(), scheme.algorithm, key, small_bytes(456), sig), ZOK_OK);
    }
}

TEST(SdfExternalVerifyEcc, KeyLengthIsTheWholeBytesOfItsBits) {
    for (const Scheme &scheme : kSchemes)
        for (uint32_t bits : {167u, 159u}) {
            ECCrefPublicKey key = small_public_key();
            key.bits = bits;
            EXPECT_EQ(verify_e(small_session(), scheme.algorithm, key, small_bytes(456),
                               small_signature(scheme.r, scheme.s)),
                      bits == 167 ? ZOK_OK : ZOK_ERR_VERIFY);
        }
}

TEST(SdfExternalVerifyEcc, EveryLengthOfEUpTo76IsTakenAsItStands) {
    for (size_t count = 2; count <= 76; ++count)
        for (const Scheme &scheme : kSchemes)
            EXPECT_EQ(verify_e(small_session(), scheme.algorithm, small_public_key(),
                               fixed_bytes(small_number(456), count), small_signature(scheme.r, scheme.s)),
                      ZOK_OK)
                << count;
}

TEST(SdfExternalVerifyEcc, EmptyEIsZero) {
    const ECCrefPublicKey key = small_public_key();
    const ECCSignature sig = small_signature(761, 988);
    const uint8_t byte = 1;
    for (const uint8_t *e : {&byte, static_cast<const uint8_t *>(nullptr)})
        EXPECT_EQ(SDF_ExternalVerify_ECC(small_session(), ZOK_ALG_SM2_SIGN, &key, e, 0, &sig), ZOK_OK);
}

TEST(SdfExternalVerifyEcc, RangesOnTheSm2Curve) {
    const Curve &sm2 = curve("sm2p256v1");
    ByteString n = fixed_bytes(sm2.n, 32);
    ByteString n_minus_1 = n;
    ByteString n_plus_1 = n;
    n_minus_1[31] = static_cast<uint8_t>(n[31] - 1);
    n_plus_1[31] = static_cast<uint8_t>(n[31] + 1);
    ByteString r = from_hex(example::kR);
    ByteString s = from_hex(example::kS);
    ECCrefPublicKey key = example::pub();
    ByteString e = example::e();
    EXPECT_EQ(verify_e(sm2_session(), ZOK_ALG_SM2_SIGN, key, e, signature(r, s)), ZOK_OK);
    for (const ByteString &bad : {ByteString(32, 0), n, n_plus_1, n_minus_1, ByteString(32, 0xFF)})
        for (uint32_t algorithm : {ZOK_ALG_SM2_SIGN, ZOK_ALG_ECDSA_SIGN}) {
            EXPECT_EQ(verify_e(sm2_session(), algorithm, key, e, signature(bad, s)), ZOK_ERR_VERIFY);
            EXPECT_EQ(verify_e(sm2_session(), algorithm, key, e, signature(r, bad)), ZOK_ERR_VERIFY);
        }
}

}  // namespace zokecc_test::verify_test

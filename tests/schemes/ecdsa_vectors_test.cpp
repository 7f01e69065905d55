// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Published ECDSA signatures. On 256-bit curves the calls follow the standard. On shorter ones
// the standard cuts the digest to the size of the order and these calls do not: there the
// signatures are held against the equation s k = e + d r with the whole digest as e.
#include "tests/schemes/ecdsa_calls.h"
#include "tests/support/legacy_vectors.h"
#include "tests/support/naive_int.h"

namespace zokecc_test::ecdsa_vectors_test {

namespace {

std::string describe(const VectorBlock &block) {
    std::string out = block.text("Curve") + ' ' + block.text("Hash") + " r = " + block.text("r");
    return block.has("Reason") ? out + " (" + block.text("Reason") + ')' : out;
}

int32_t verify(const VectorBlock &block, const ByteString &r, const ByteString &s) {
    install(block.text("Curve"));
    EcdsaVerification verification(PointBytes(block.bytes("Qx"), block.bytes("Qy")), PointBytes(r, s),
                                   block.bytes("Msg"));
    return verification.run(hash_of(block));
}

// Signs with the nonce of the block.
struct Signed {
    explicit Signed(const VectorBlock &block) : call(block.bytes("d"), block.bytes("Msg")) {
        install(block.text("Curve"));
        queue_number(entropy, block.number("k"));
        EXPECT_EQ(call.run(hash_of(block)), 0);
        EXPECT_EQ(entropy.number_calls, 1u);
    }
    FakeEntropy entropy;
    EcdsaSigning call;
};

}  // namespace

TEST(EcdsaVectors, SigningOn256BitCurves) {
    unsigned checked = 0;
    for (const VectorBlock &block : vectors_where(is_legacy_of_256_bits, "ecdsa.rsp")) {
        if (!block.has("k")) continue;
        SCOPED_TRACE(describe(block));
        Signed made(block);
        expect_record(made.call.sig, block.bytes("r"), block.bytes("s"));
        ++checked;
    }
    EXPECT_EQ(checked, 32u);
}

TEST(EcdsaVectors, VerifyingOn256BitCurves) {
    unsigned checked = 0;
    for (const VectorBlock &block : vectors_where(is_legacy_of_256_bits, "ecdsa.rsp")) {
        SCOPED_TRACE(describe(block));
        EXPECT_EQ(verify(block, block.bytes("r"), block.bytes("s")), block.text("Result") == "valid" ? 1 : 0);
        ++checked;
    }
    EXPECT_EQ(checked, 88u);
}

TEST(EcdsaVectors, KeptWholeDigestIsSignedOnShorterCurves) {
    unsigned checked = 0;
    for (const VectorBlock &block : vectors_where(is_shorter_legacy, "ecdsa.rsp")) {
        if (!block.has("k")) continue;
        SCOPED_TRACE(describe(block));
        Signed made(block);
        unsigned byte_len = curve(block.text("Curve")).byte_len;
        ByteString s(made.call.sig->y, made.call.sig->y + byte_len);
        expect_record(made.call.sig, block.bytes("r"), s);
        const Natural n(global_curve.n);
        Natural e = Natural::from_hex(to_hex(model_digest_of(block.bytes("Msg"), hash_of(block)))) % n;
        Natural d = Natural::from_hex(block.text("d"));
        Natural r = Natural::from_hex(block.text("r"));
        EXPECT_EQ(mod_mul(Natural::from_hex(to_hex(s)), Natural::from_hex(block.text("k")), n),
                  (e + mod_mul(d, r, n)) % n);
        EXPECT_LT(Natural::from_hex(to_hex(s)), n);
        EXPECT_NE(to_hex(s), block.text("s"));
        EXPECT_EQ(verify(block, block.bytes("r"), s), 1);
        ++checked;
    }
    EXPECT_EQ(checked, 44u);
}

TEST(EcdsaVectors, KeptWholeDigestRefusesStandardSignaturesOnShorterCurves) {
    unsigned checked = 0;
    for (const VectorBlock &block : vectors_where(is_shorter_legacy, "ecdsa.rsp")) {
        SCOPED_TRACE(describe(block));
        EXPECT_EQ(verify(block, block.bytes("r"), block.bytes("s")), 0);
        ++checked;
    }
    EXPECT_EQ(checked, 78u);
}

TEST(EcdsaDigitalSign, DigestWithALeadingZeroWord) {
    // Both digests begin with four zero bytes, found by search. s k = e + d r and the signature
    // verifies, although the value of the SHA-256 digest is not trimmed.
    struct Case {
        uint32_t hash;
        const char *text;
    };
    install("secp256r1");
    const Natural n(global_curve.n);
    const ByteString d = test_bytes(31, 2);
    const ByteString k = test_bytes(32, 3);
    ecc_point_bytes Q{};
    Scalar key(d);
    ASSERT_EQ(Ecc_GenPubKey(key.get(), &Q), 0);
    for (const Case &row :
         {Case{HASH_ALG_SHA256, "zero digest fff22752"}, Case{HASH_ALG_SM3, "zero digest cca5dd2d"}}) {
        FakeEntropy entropy;
        queue_number(entropy, mint_from_hex(to_hex(k)));
        EcdsaSigning call(d, text_bytes(row.text));
        ASSERT_EQ(call.run(row.hash), 0);
        const ByteString digest = model_digest_of(text_bytes(row.text), row.hash);
        ASSERT_EQ(to_hex(digest.data(), 4), "00000000");
        const Natural r = Natural::from_hex(to_hex(call.sig->x, 32));
        const Natural s = Natural::from_hex(to_hex(call.sig->y, 32));
        const Natural e = Natural::from_hex(to_hex(digest));
        EXPECT_EQ(mod_mul(s, Natural::from_hex(to_hex(k)), n),
                  (e + mod_mul(Natural::from_hex(to_hex(d)), r, n)) % n);
        EXPECT_EQ(Ecdsa_DigitalVeriy(&Q, call.msg.get(), call.sig.get(), row.hash), 1);
    }
}

}  // namespace zokecc_test::ecdsa_vectors_test

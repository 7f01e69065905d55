// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The published SM2 and ECDSA signatures, through both pairs of calls: valid and invalid ones
// are verified, and those with a known nonce are made again byte for byte.
#include "tests/sdf/fixtures.h"
#include "tests/support/vector_file.h"

namespace zokecc_test::vectors_test {

namespace {

uint32_t hash_selector(const VectorBlock &block) {
    return block.text("Hash") == "SM3" ? HASH_ALG_SM3 : HASH_ALG_SHA256;
}

void *session_of(const VectorBlock &block) {
    return shared_session(curve(block.text("Curve")), hash_selector(block));
}

// secp160r1 has an order of 161 bits, which its 20-byte record cannot hold.
std::vector<VectorBlock> session_vectors(const std::string &file) {
    std::vector<VectorBlock> out;
    for (const VectorBlock &block : read_vectors(file))
        if (block.text("Curve") != "secp160r1") out.push_back(block);
    return out;
}

std::string describe(const VectorBlock &block) {
    std::string out = block.text("Curve") + ' ' + block.text("Hash") + " r = " + block.text("r");
    return block.has("Reason") ? out + " (" + block.text("Reason") + ')' : out;
}

uint32_t expected_status(const VectorBlock &block) {
    return block.text("Result") == "valid" ? ZOK_OK : ZOK_ERR_VERIFY;
}

// Private keys 1 and n - 2, for which 1 / (1 + d) comes out wrong: their signatures are pinned
// in SdfExternalSignEcc.KeptKey...
bool meets_the_kept_inverse(const VectorBlock &block) {
    const std::string &d = block.text("d");
    return d == "0000000000000000000000000000000000000000000000000000000000000001" ||
           d == "fffffffeffffffffffffffffffffffff7203df6b21c6052b53bbf40939d54121";
}

struct NonceOf {
    explicit NonceOf(const VectorBlock &block) { entropy.queued_numbers.push_back(block.number("k")); }
    FakeEntropy entropy;
};

// The message call reduces the whole digest, which the standard does for 256-bit orders only.
bool digest_fits(const VectorBlock &block) { return curve(block.text("Curve")).byte_len == 32; }

}  // namespace

TEST(Sm2Vectors, VerifyingTheHashedValue) {
    unsigned checked = 0;
    for (const VectorBlock &block : session_vectors("sm2_sign.rsp")) {
        SCOPED_TRACE(describe(block));
        EXPECT_EQ(verify_e(session_of(block), ZOK_ALG_SM2_SIGN,
                           public_key(block.bytes("Px"), block.bytes("Py")), block.bytes("e"),
                           signature(block.bytes("r"), block.bytes("s"))),
                  expected_status(block));
        ++checked;
    }
    EXPECT_EQ(checked, 79u);
}

TEST(Sm2Vectors, VerifyingTheMessage) {
    unsigned checked = 0;
    for (const VectorBlock &block : session_vectors("sm2_sign.rsp")) {
        SCOPED_TRACE(describe(block));
        EXPECT_EQ(verify_message(session_of(block), ZOK_ALG_SM2_SIGN,
                                 public_key(block.bytes("Px"), block.bytes("Py")), block.bytes("M"),
                                 block.bytes("ID"), signature(block.bytes("r"), block.bytes("s"))),
                  expected_status(block));
        ++checked;
    }
    EXPECT_EQ(checked, 79u);
}

TEST(Sm2Vectors, SigningTheHashedValueAndTheMessage) {
    unsigned checked = 0;
    for (const VectorBlock &block : session_vectors("sm2_sign.rsp")) {
        if (!block.has("k") || meets_the_kept_inverse(block)) continue;
        SCOPED_TRACE(describe(block));
        ECCrefPrivateKey key = private_key(block.bytes("d"));
        GuardedRecord<ECCSignature> by_value;
        GuardedRecord<ECCSignature> by_message;
        {
            NonceOf nonce(block);
            ASSERT_EQ(sign_e(session_of(block), ZOK_ALG_SM2_SIGN, key, block.bytes("e"), by_value.get()),
                      ZOK_OK);
        }
        NonceOf nonce(block);
        ASSERT_EQ(sign_message(session_of(block), ZOK_ALG_SM2_SIGN, key, block.bytes("M"), block.bytes("ID"),
                               by_message.get()),
                  ZOK_OK);
        EXPECT_EQ(nonce.entropy.number_calls, 1u);
        expect_signature(by_value, block.bytes("r"), block.bytes("s"));
        expect_signature(by_message, block.bytes("r"), block.bytes("s"));
        ++checked;
    }
    EXPECT_EQ(checked, 33u);
}

TEST(Sm2Vectors, KeptInverseChangesTheSignaturesOfTwoKeys) {
    unsigned checked = 0;
    for (const VectorBlock &block : session_vectors("sm2_sign.rsp")) {
        if (!block.has("k") || !meets_the_kept_inverse(block)) continue;
        SCOPED_TRACE(describe(block));
        NonceOf nonce(block);
        GuardedRecord<ECCSignature> sig;
        ASSERT_EQ(sign_message(session_of(block), ZOK_ALG_SM2_SIGN, private_key(block.bytes("d")),
                               block.bytes("M"), block.bytes("ID"), sig.get()),
                  ZOK_OK);
        EXPECT_EQ(to_hex(sig->r, 32), block.text("r"));
        EXPECT_NE(to_hex(sig->s, 32), block.text("s"));
        ++checked;
    }
    EXPECT_EQ(checked, 2u);
}

TEST(EcdsaVectors, VerifyingTheHashedValue) {
    unsigned checked = 0;
    for (const VectorBlock &block : session_vectors("ecdsa.rsp")) {
        SCOPED_TRACE(describe(block));
        EXPECT_EQ(verify_e(session_of(block), ZOK_ALG_ECDSA_SIGN,
                           public_key(block.bytes("Qx"), block.bytes("Qy")), block.bytes("e"),
                           signature(block.bytes("r"), block.bytes("s"))),
                  expected_status(block));
        ++checked;
    }
    EXPECT_EQ(checked, 169u);
}

TEST(EcdsaVectors, VerifyingTheMessageOn256BitCurves) {
    unsigned checked = 0;
    for (const VectorBlock &block : session_vectors("ecdsa.rsp")) {
        if (!digest_fits(block)) continue;
        SCOPED_TRACE(describe(block));
        EXPECT_EQ(verify_message(session_of(block), ZOK_ALG_ECDSA_SIGN,
                                 public_key(block.bytes("Qx"), block.bytes("Qy")), block.bytes("Msg"),
                                 ByteString(), signature(block.bytes("r"), block.bytes("s"))),
                  expected_status(block));
        ++checked;
    }
    EXPECT_EQ(checked, 88u);
}

TEST(EcdsaVectors, KeptWholeDigestRefusesStandardSignaturesOnShorterCurves) {
    unsigned checked = 0;
    for (const VectorBlock &block : session_vectors("ecdsa.rsp")) {
        if (digest_fits(block) || block.text("Result") == "invalid" || checked >= 40) continue;
        SCOPED_TRACE(describe(block));
        EXPECT_EQ(verify_message(session_of(block), ZOK_ALG_ECDSA_SIGN,
                                 public_key(block.bytes("Qx"), block.bytes("Qy")), block.bytes("Msg"),
                                 ByteString(), signature(block.bytes("r"), block.bytes("s"))),
                  ZOK_ERR_VERIFY);
        ++checked;
    }
    EXPECT_EQ(checked, 40u);
}

TEST(EcdsaVectors, SigningTheHashedValue) {
    unsigned checked = 0;
    for (const VectorBlock &block : session_vectors("ecdsa.rsp")) {
        if (!block.has("k")) continue;
        SCOPED_TRACE(describe(block));
        NonceOf nonce(block);
        GuardedRecord<ECCSignature> sig;
        ASSERT_EQ(sign_e(session_of(block), ZOK_ALG_ECDSA_SIGN, private_key(block.bytes("d")),
                         block.bytes("e"), sig.get()),
                  ZOK_OK);
        expect_signature(sig, block.bytes("r"), block.bytes("s"));
        EXPECT_EQ(nonce.entropy.number_calls, 1u);
        ++checked;
    }
    EXPECT_EQ(checked, 78u);
}

TEST(EcdsaVectors, SigningTheMessageOn256BitCurves) {
    unsigned checked = 0;
    for (const VectorBlock &block : session_vectors("ecdsa.rsp")) {
        if (!block.has("k") || !digest_fits(block)) continue;
        SCOPED_TRACE(describe(block));
        NonceOf nonce(block);
        GuardedRecord<ECCSignature> sig;
        ASSERT_EQ(sign_message(session_of(block), ZOK_ALG_ECDSA_SIGN, private_key(block.bytes("d")),
                               block.bytes("Msg"), text_bytes("ignored"), sig.get()),
                  ZOK_OK);
        expect_signature(sig, block.bytes("r"), block.bytes("s"));
        ++checked;
    }
    EXPECT_EQ(checked, 32u);
}

}  // namespace zokecc_test::vectors_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The published SM2 and ECDSA signatures, through both pairs of calls: valid and invalid ones
// are verified, and those with a known nonce are reproduced byte for byte.
#include "tests/sdf/fixtures.h"
#include "tests/support/vector_file.h"

namespace zokecc_test::vectors_test {

namespace {

// One block with the calls' arguments. Field names differ between the files.
struct Published {
    explicit Published(const VectorBlock &from, bool is_sm2)
        : block(from),
          algorithm(is_sm2 ? ZOK_ALG_SM2_SIGN : ZOK_ALG_ECDSA_SIGN),
          session(shared_session(curve(block.text("Curve")), block.hash())),
          pub(public_key(block.bytes(is_sm2 ? "Px" : "Qx"), block.bytes(is_sm2 ? "Py" : "Qy"))),
          sig(signature(block.bytes("r"), block.bytes("s"))),
          message(block.bytes(is_sm2 ? "M" : "Msg")),
          id(is_sm2 ? block.bytes("ID") : text_bytes("ignored")) {}

    uint32_t expected() const { return block.is_valid() ? ZOK_OK : ZOK_ERR_VERIFY; }
    uint32_t verify_value() const { return verify_e(session, algorithm, pub, block.bytes("e"), sig); }
    uint32_t verify_text() const { return verify_message(session, algorithm, pub, message, id, sig); }
    // With the nonce of the block.
    void sign(bool whole_message, GuardedRecord<ECCSignature> &out) const {
        const ECCrefPrivateKey key = private_key(block.bytes("d"));
        FakeEntropy entropy;
        entropy.queued_numbers.push_back(block.number("k"));
        EXPECT_EQ(whole_message ? sign_message(session, algorithm, key, message, id, out.get())
                                : sign_e(session, algorithm, key, block.bytes("e"), out.get()),
                  ZOK_OK);
        EXPECT_EQ(entropy.number_calls, 1u);
    }
    void expect_signs(bool whole_message) const {
        GuardedRecord<ECCSignature> out;
        sign(whole_message, out);
        expect_signature(out, block.bytes("r"), block.bytes("s"));
    }

    const VectorBlock &block;
    uint32_t algorithm;
    void *session;
    ECCrefPublicKey pub;
    ECCSignature sig;
    ByteString message, id;
};

// secp160r1 has an order of 161 bits, which its 20-byte record cannot hold.
bool fits(const VectorBlock &block) { return block.text("Curve") != "secp160r1"; }
bool fits_with_nonce(const VectorBlock &block) { return fits(block) && block.has("k"); }
// Private keys 1 and n - 2, for which 1 / (1 + d) is computed wrong: their signatures are pinned
// in SdfExternalSignEcc.KeptKey...
bool meets_the_kept_inverse(const VectorBlock &block) {
    if (!fits_with_nonce(block)) return false;
    const std::string &d = block.text("d");
    return d == "0000000000000000000000000000000000000000000000000000000000000001" ||
           d == "fffffffeffffffffffffffffffffffff7203df6b21c6052b53bbf40939d54121";
}
bool signs_by_the_standard(const VectorBlock &block) {
    return fits_with_nonce(block) && !meets_the_kept_inverse(block);
}
// The message call reduces the whole digest, which the standard does for 256-bit orders only.
bool digest_fits(const VectorBlock &block) {
    return fits(block) && curve(block.text("Curve")).byte_len == 32;
}
bool digest_fits_with_nonce(const VectorBlock &block) { return digest_fits(block) && block.has("k"); }

unsigned on_sm2(bool (*wanted)(const VectorBlock &), void (*test)(const Published &)) {
    return on_blocks("sm2_sign.rsp", wanted, [&](const VectorBlock &block) { test(Published(block, true)); });
}
unsigned on_ecdsa(bool (*wanted)(const VectorBlock &), void (*test)(const Published &)) {
    return on_blocks("ecdsa.rsp", wanted, [&](const VectorBlock &block) { test(Published(block, false)); });
}

void expect_value(const Published &made) { EXPECT_EQ(made.verify_value(), made.expected()); }
void expect_text(const Published &made) { EXPECT_EQ(made.verify_text(), made.expected()); }
void expect_value_signed(const Published &made) { made.expect_signs(false); }
void expect_text_signed(const Published &made) { made.expect_signs(true); }

}  // namespace

TEST(Sm2Vectors, VerifyingTheHashedValue) { EXPECT_EQ(on_sm2(fits, expect_value), 79u); }
TEST(Sm2Vectors, VerifyingTheMessage) { EXPECT_EQ(on_sm2(fits, expect_text), 79u); }
TEST(Sm2Vectors, SigningTheHashedValue) {
    EXPECT_EQ(on_sm2(signs_by_the_standard, expect_value_signed), 33u);
}
TEST(Sm2Vectors, SigningTheMessage) { EXPECT_EQ(on_sm2(signs_by_the_standard, expect_text_signed), 33u); }

TEST(Sm2Vectors, KeptInverseChangesTheSignaturesOfTwoKeys) {
    EXPECT_EQ(on_sm2(meets_the_kept_inverse,
                     [](const Published &made) {
                         GuardedRecord<ECCSignature> out;
                         made.sign(true, out);
                         EXPECT_EQ(to_hex(out->r, 32), made.block.text("r"));
                         EXPECT_NE(to_hex(out->s, 32), made.block.text("s"));
                     }),
              2u);
}

TEST(EcdsaVectors, VerifyingTheHashedValue) { EXPECT_EQ(on_ecdsa(fits, expect_value), 169u); }
TEST(EcdsaVectors, VerifyingTheMessageOn256BitCurves) { EXPECT_EQ(on_ecdsa(digest_fits, expect_text), 88u); }
TEST(EcdsaVectors, SigningTheHashedValue) { EXPECT_EQ(on_ecdsa(fits_with_nonce, expect_value_signed), 78u); }
TEST(EcdsaVectors, SigningTheMessageOn256BitCurves) {
    EXPECT_EQ(on_ecdsa(digest_fits_with_nonce, expect_text_signed), 32u);
}

TEST(EcdsaVectors, KeptWholeDigestRefusesStandardSignaturesOnShorterCurves) {
    EXPECT_GE(
        on_ecdsa(
            [](const VectorBlock &block) { return fits(block) && !digest_fits(block) && block.is_valid(); },
            [](const Published &made) { EXPECT_EQ(made.verify_text(), ZOK_ERR_VERIFY); }),
        40u);
}

}  // namespace zokecc_test::vectors_test

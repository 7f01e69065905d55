// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// A valid C1 for which the default build refuses the ciphertext of one key and decrypts that of another
// key, which differs only in the leading digit; found by tests/oracle. The hardened build decrypts both.
#include <zokecc/schemes.h>

#include "tests/support/encryption_case.h"
#include "tests/support/legacy_curve.h"
#include "tests/support/model_curve.h"
#include "tests/support/vector_file.h"

namespace zokecc_test::borrow_rule_oracle_test {

namespace {

// One of the two keys with its ciphertext.
struct Recorded {
    explicit Recorded(const VectorBlock &block)
        : d(block.bytes("d")),
          message(block.bytes("M")),
          shared(joined({block.bytes("x2"), block.bytes("y2")})),
          parts{block.bytes("C1x"), block.bytes("C1y"), block.bytes("C2"), block.bytes("C3")},
          is_refused(block.text("Default") == "refused") {}

    // The default build's product, from the model, which includes the borrow rule.
    ByteString product() const {
        const Curve &c = curve("sm2p256v1");
        const ModelCurve model(c.a, c.b, c.p);
        const ecc_point C1 = affine(mint_from_hex(to_hex(parts.x1)), mint_from_hex(to_hex(parts.y1)));
        const ecc_point out = model.window(mint_from_hex(to_hex(d)), C1);
        return joined({fixed_bytes(out.x, 32), fixed_bytes(out.y, 32)});
    }
    // The plaintext with that product.
    ByteString unmasked() const {
        ByteString out = standard_stream(HASH_ALG_SM3, product(), message.size());
        for (size_t i = 0; i < out.size(); ++i) out[i] = static_cast<uint8_t>(out[i] ^ parts.C2[i]);
        return out;
    }

    ByteString d, message, shared;
    Encrypted parts;
    bool is_refused;
};

std::vector<Recorded> recorded() {
    std::vector<Recorded> out;
    for (const VectorBlock &block : read_vectors("sm2_borrow_rule.rsp")) out.emplace_back(block);
    EXPECT_EQ(out.size(), 2u);
    return out;
}

}  // namespace

TEST(BorrowRuleOracle, KeysDifferInTheLeadingDigitAlone) {
    const std::vector<Recorded> both = recorded();
    std::vector<int> first = model_digits(mint_from_hex(to_hex(both[0].d))).digit;
    std::vector<int> second = model_digits(mint_from_hex(to_hex(both[1].d))).digit;
    EXPECT_NE(first.back(), second.back());
    second.back() = first.back();
    EXPECT_EQ(first, second);
    EXPECT_EQ(to_hex(both[0].parts.x1), to_hex(both[1].parts.x1));
    EXPECT_EQ(to_hex(both[0].parts.y1), to_hex(both[1].parts.y1));
    EXPECT_TRUE(both[0].is_refused);
    EXPECT_FALSE(both[1].is_refused);
}

TEST(BorrowRuleOracle, RuleActsInTheProductOfTheFirstKeyAlone) {
    for (const Recorded &one : recorded()) {
        EXPECT_EQ(one.product() == one.shared, !one.is_refused);
        EXPECT_EQ(one.unmasked() == one.message, !one.is_refused);
    }
}

TEST(BorrowRuleOracle, KeptSessionsRefuseTheValidCiphertextOfOneKey) {
    for (const Recorded &one : recorded()) {
        const bool refuses = one.is_refused && !kHardened;
        const uint32_t status = refuses ? ZOK_ERR_INTERNAL : ZOK_OK;
        const ByteString plain = refuses ? one.unmasked() : one.message;
        const ECCrefPrivateKey priv = private_key(one.d);
        expect_plain(flat_decrypt(sm2_session(), priv, one.parts.flat()), status, plain);
        expect_plain(decrypt(sm2_session(), kSm2, priv, cipher_record(one.parts)), status, plain);
    }
}

// The result is -1 for every regular ciphertext, so the plaintext decides.
TEST(BorrowRuleOracle, KeptProcessWideCallDecryptsTheValidCiphertextOfOneKeyWrongly) {
    install(curve("sm2p256v1"));
    for (const Recorded &one : recorded()) {
        ByteString d = one.d, flat = one.parts.flat(), plain(one.message.size());
        const ecc_scalar priv = {d.data(), static_cast<uint32_t>(d.size())};
        const sm3_msg cipher = {flat.data(), 0, static_cast<uint32_t>(flat.size())};
        sm3_msg out = {plain.data(), 0, 0};
        EXPECT_EQ(sm2_Decry(&priv, &cipher, &out, HASH_ALG_SM3), -1);
        EXPECT_EQ(to_hex(plain), to_hex(one.is_refused && !kHardened ? one.unmasked() : one.message));
    }
    uninstall();
}

}  // namespace zokecc_test::borrow_rule_oracle_test

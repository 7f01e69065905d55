// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Published SM2 encryptions on every session curve with both hashes, byte for byte, through both
// pairs of calls, and the multiplicative scheme with their shared points.
#include "tests/support/encryption_case.h"
#include "tests/support/naive_int.h"
#include "tests/support/vector_file.h"

namespace zokecc_test::encrypt_vectors_test {

namespace {

// One block with the data that every test needs.
class Case {
public:
    explicit Case(const VectorBlock &block) : block_(block), curve_(curve(block.text("Curve"))) {
        selector = block.hash();
        message = block.bytes("M");
        parts = {block.bytes("C1x"), block.bytes("C1y"), block.bytes("C2"), block.bytes("C3")};
    }

    uint32_t selector = 0;
    ByteString message;
    Encrypted parts;

    const Curve &on() const { return curve_; }
    size_t L() const { return curve_.byte_len; }
    void *session() const { return shared_session(curve_, selector); }
    ECCrefPublicKey pub() const { return public_key(block_.bytes("Px"), block_.bytes("Py")); }
    ECCrefPrivateKey priv() const { return private_key(block_.bytes("d")); }
    bool has_nonce() const { return block_.has("k"); }
    bool is_valid() const { return block_.text("Result") == "valid"; }
    bool is_off_the_curve() const {
        const std::string reason = block_.text("Reason");
        return reason == "C1 = (0, 0)" || reason == "C1 not on the curve";
    }
    mint nonce() const { return block_.number("k"); }
    mint shared_x() const { return block_.number("x2"); }
    // The parts for another message with the same nonce.
    Encrypted parts_for(const ByteString &other) const {
        return model_encryption(selector, parts.x1, parts.y1, block_.bytes("x2"), block_.bytes("y2"), other);
    }
    std::string name() const {
        return block_.text("Curve") + " " + block_.text("Hash") + " " + std::to_string(message.size()) +
               " bytes, C1x " + block_.text("C1x");
    }

private:
    VectorBlock block_;
    const Curve &curve_;
};

class EncryptionVectorsOn : public testing::TestWithParam<std::string> {
protected:
    std::vector<Case> cases() const {
        std::vector<Case> out;
        for (const VectorBlock &block : read_vectors("sm2_encrypt.rsp"))
            if (block.text("Curve") == GetParam()) out.emplace_back(block);
        EXPECT_GE(out.size(), 4u);
        return out;
    }
};

void expect_flat_encryption(const Case &c, const ByteString &message, const Encrypted &want) {
    expect_flat_encrypted(c.session(), c.pub(), message, c.nonce(), want);
}
void expect_encryption(const Case &c, const ByteString &message, const Encrypted &want,
                       uint32_t algorithm = kSm2) {
    expect_encrypted(c.session(), algorithm, c.pub(), message, c.nonce(), want);
}

}  // namespace

TEST_P(EncryptionVectorsOn, FlatPairGivesTheCiphertextAndTheMessage) {
    for (const Case &c : cases()) {
        SCOPED_TRACE(c.name());
        if (c.has_nonce()) expect_flat_encryption(c, c.message, c.parts);
        if (c.is_valid())
            expect_plain(flat_decrypt(c.session(), c.priv(), c.parts.flat()), ZOK_OK, c.message);
    }
}

TEST_P(EncryptionVectorsOn, RecordPairServesMessagesOfACoordinatesLength) {
    unsigned served = 0;
    for (const Case &c : cases()) {
        SCOPED_TRACE(c.name());
        if (!c.is_valid() || c.message.size() != c.L()) continue;
        ++served;
        if (c.has_nonce()) expect_encryption(c, c.message, c.parts);
        expect_plain(decrypt(c.session(), kSm2, c.priv(), cipher_record(c.parts)), ZOK_OK, c.message);
    }
    // The example curve of 256 bits has none.
    EXPECT_EQ(served == 0, GetParam() == "sm2test256");
}

TEST_P(EncryptionVectorsOn, EveryNonceMasksACoordinatesLengthAndAHundredBytes) {
    for (const Case &c : cases()) {
        SCOPED_TRACE(c.name());
        if (!c.has_nonce()) continue;
        const ByteString one = test_bytes(c.L(), 101), hundred = test_bytes(100, 102);
        expect_encryption(c, one, c.parts_for(one));
        expect_flat_encryption(c, hundred, c.parts_for(hundred));
        expect_plain(flat_decrypt(c.session(), c.priv(), c.parts_for(hundred).flat()), ZOK_OK, hundred);
    }
}

TEST_P(EncryptionVectorsOn, ProductSchemeMultipliesByTheSharedX) {
    for (const Case &c : cases()) {
        SCOPED_TRACE(c.name());
        if (!c.has_nonce()) continue;
        const ByteString message = test_bytes(c.L(), 103);
        const Natural p(c.on().p), M = Natural::from_hex(to_hex(message)) % p;
        const ByteString C = fixed_bytes(mod_mul(M, Natural(c.shared_x()), p).to_mint(), c.L());
        const Encrypted parts = {c.parts.x1, c.parts.y1, C, ByteString(64, 0)};
        expect_encryption(c, message, parts, kProduct);

        const Decrypted got = decrypt(c.session(), kProduct, c.priv(), cipher_record(parts));
        EXPECT_EQ(got.status, ZOK_OK);
        EXPECT_TRUE(got.clean);
        EXPECT_TRUE(got.plain.empty() || got.plain.front() != 0) << "no leading zero byte";
        EXPECT_EQ(Natural::from_hex(to_hex(got.plain)), M);
    }
}

TEST_P(EncryptionVectorsOn, InvalidCiphertextsAreMismatchesWithThePlaintextWritten) {
    unsigned invalid = 0;
    for (const Case &c : cases()) {
        SCOPED_TRACE(c.name());
        if (c.is_valid()) continue;
        ++invalid;
        const Decrypted got = flat_decrypt(c.session(), c.priv(), c.parts.flat());
        if (kHardened && c.is_off_the_curve()) {
            expect_no_plain(got, ZOK_ERR_ARGUMENT);
            continue;
        }
        EXPECT_EQ(got.status, ZOK_ERR_INTERNAL);
        EXPECT_EQ(got.length, c.message.size());
        EXPECT_TRUE(got.clean);
    }
    EXPECT_EQ(invalid, GetParam() == "sm2p256v1" ? 8u : 0u);
}

TEST_P(EncryptionVectorsOn, SixtyFourKibibytes) {
    const std::vector<Case> all = cases();
    const Case &c = all.front();
    ASSERT_TRUE(c.has_nonce());
    const ByteString message = test_bytes(65536, 104);
    const Encrypted want = c.parts_for(message);
    expect_flat_encryption(c, message, want);
    expect_plain(flat_decrypt(c.session(), c.priv(), want.flat()), ZOK_OK, message);
}

INSTANTIATE_TEST_SUITE_P(Curves, EncryptionVectorsOn, testing::ValuesIn(session_curve_names()),
                         [](const auto &name_of) { return name_of.param; });

}  // namespace zokecc_test::encrypt_vectors_test

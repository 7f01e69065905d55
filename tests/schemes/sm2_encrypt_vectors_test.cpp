// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Published SM2 ciphertexts, including the examples of GB/T 32918.4 and GM/T 0003.5,
// on the curves that Curve_Init supports. On curves shorter than 32 bytes the messages are no
// longer than a coordinate. Decryption returns -1 for all of them: the check value is after
// C2, not where it is expected. The plaintext is written nevertheless.
#include "tests/schemes/sm2_encrypt_calls.h"
#include "tests/support/legacy_records.h"

namespace zokecc_test::sm2_encrypt_vectors_test {

namespace {

ByteString cipher_of(const VectorBlock &block) {
    return joined(
        {ByteString(1, 4), block.bytes("C1x"), block.bytes("C1y"), block.bytes("C2"), block.bytes("C3")});
}

bool is_legacy_and(const VectorBlock &block, const char *key) { return is_legacy(block) && block.has(key); }

// Decryption must return -1; returns the plaintext written.
ByteString decrypted(const VectorBlock &block) {
    install(block.text("Curve"));
    Sm2Decryption call(block.bytes("d"), cipher_of(block));
    EXPECT_EQ(call.run(block.hash()), -1);
    const ByteString written = call.area.first(block.bytes("M").size());
    call.expect_plain(written);
    return written;
}

}  // namespace

TEST(Sm2EncryptVectors, Encrypting) {
    auto test = [](const VectorBlock &block) {
        install(block.text("Curve"));
        FakeEntropy entropy;
        queue_number(entropy, block.number("k"));
        Sm2Encryption call(PointBytes(block.bytes("Px"), block.bytes("Py")), block.bytes("M"));
        EXPECT_EQ(call.run(block.hash()), 0);
        call.expect_written(cipher_of(block));
        EXPECT_EQ(entropy.number_calls, 1u);
    };
    EXPECT_EQ(
        on_blocks(
            "sm2_encrypt.rsp", [](const VectorBlock &block) { return is_legacy_and(block, "k"); }, test),
        59u);
}

TEST(Sm2EncryptVectors, PublishedIntermediatesAreThoseOfTheCiphertext) {
    // The shared point from the exchange call, the key stream from M and C2, and C3 over both.
    auto test = [](const VectorBlock &block) {
        install(block.text("Curve"));
        const ByteString x2 = block.bytes("x2"), y2 = block.bytes("y2"), M = block.bytes("M");
        Scalar d(block.bytes("d"));
        PointBytes C1(block.bytes("C1x"), block.bytes("C1y"));
        GuardedBuffer shared(x2.size());
        EXPECT_EQ(Ecdh_KeyExChg(d.get(), C1.get(), shared.data(), static_cast<uint32_t>(x2.size())),
                  static_cast<int32_t>(x2.size()));
        EXPECT_EQ(to_hex(shared.all()), to_hex(x2));
        EXPECT_EQ(to_hex(standard_stream(block.hash(), joined({x2, y2}), M.size())), block.text("t"));
        EXPECT_EQ(to_hex(exclusive_or(M, block.bytes("t"))), block.text("C2"));
        EXPECT_EQ(to_hex(selected_digest(block.hash(), joined({x2, M, y2}))), block.text("C3"));
    };
    EXPECT_EQ(
        on_blocks(
            "sm2_encrypt.rsp", [](const VectorBlock &block) { return is_legacy_and(block, "t"); }, test),
        69u);
}

TEST(Sm2EncryptVectors, KeptDecryptingGivesThePlaintextAndMinusOne) {
    EXPECT_EQ(on_blocks(
                  "sm2_encrypt.rsp",
                  [](const VectorBlock &block) { return is_legacy(block) && block.is_valid(); },
                  [](const VectorBlock &block) { EXPECT_EQ(to_hex(decrypted(block)), block.text("M")); }),
              69u);
}

TEST(Sm2EncryptVectors, KeptInvalidCiphertextsLeaveWhatTheyDecryptTo) {
    // A changed C3 does not affect the plaintext, a changed C2 changes its own byte, and a
    // changed C1 all of it.
    auto test = [](const VectorBlock &block) {
        const std::string written = to_hex(decrypted(block)), reason = block.text("Reason");
        ByteString M = block.bytes("M");
        if (reason.compare(0, 2, "C2") == 0) M[reason == "C2 first byte changed" ? 0 : M.size() - 1] ^= 1;
        if (reason.compare(0, 2, "C1") == 0)
            EXPECT_NE(written, to_hex(M));
        else
            EXPECT_EQ(written, to_hex(M));
    };
    EXPECT_EQ(on_blocks(
                  "sm2_encrypt.rsp",
                  [](const VectorBlock &block) { return is_legacy(block) && !block.is_valid(); }, test),
              8u);
}

}  // namespace zokecc_test::sm2_encrypt_vectors_test

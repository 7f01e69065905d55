// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Published SM2 ciphertexts, the worked examples of GB/T 32918.4 and GM/T 0003.5 among them,
// over the curves that Curve_Init takes. On curves shorter than 32 bytes the messages are no
// longer than a coordinate. Decryption answers -1 for all of them: the check value stands behind
// C2 and not where it is looked for. The plaintext is there all the same.
#include "tests/schemes/sm2_encrypt_calls.h"
#include "tests/support/legacy_vectors.h"

namespace zokecc_test::sm2_encrypt_vectors_test {

namespace {

std::string describe(const VectorBlock &block) {
    std::string out = block.text("Curve") + ' ' + block.text("Hash") + " M = " + block.text("M");
    return block.has("Reason") ? out + " (" + block.text("Reason") + ')' : out;
}

ByteString cipher_of(const VectorBlock &block) {
    return joined(
        {ByteString(1, 4), block.bytes("C1x"), block.bytes("C1y"), block.bytes("C2"), block.bytes("C3")});
}

}  // namespace

TEST(Sm2EncryptVectors, Encrypting) {
    unsigned checked = 0;
    for (const VectorBlock &block : vectors_where(is_legacy, "sm2_encrypt.rsp")) {
        if (!block.has("k")) continue;
        SCOPED_TRACE(describe(block));
        install(block.text("Curve"));
        FakeEntropy entropy;
        queue_number(entropy, block.number("k"));
        Sm2Encryption call(PointBytes(block.bytes("Px"), block.bytes("Py")), block.bytes("M"));
        EXPECT_EQ(call.run(hash_of(block)), 0);
        call.expect_written(cipher_of(block));
        EXPECT_EQ(entropy.number_calls, 1u);
        ++checked;
    }
    EXPECT_EQ(checked, 59u);
}

TEST(Sm2EncryptVectors, PublishedIntermediatesAreThoseOfTheCiphertext) {
    // The shared point by the exchange call, the key stream between M and C2, and C3 over both.
    unsigned checked = 0;
    for (const VectorBlock &block : vectors_where(is_legacy, "sm2_encrypt.rsp")) {
        if (!block.has("t")) continue;
        SCOPED_TRACE(describe(block));
        install(block.text("Curve"));
        const ByteString x2 = block.bytes("x2");
        const ByteString y2 = block.bytes("y2");
        Scalar d(block.bytes("d"));
        PointBytes C1(block.bytes("C1x"), block.bytes("C1y"));
        GuardedBuffer shared(x2.size());
        EXPECT_EQ(Ecdh_KeyExChg(d.get(), C1.get(), shared.data(), static_cast<uint32_t>(x2.size())),
                  static_cast<int32_t>(x2.size()));
        EXPECT_EQ(to_hex(shared.all()), to_hex(x2));
        const ByteString M = block.bytes("M");
        EXPECT_EQ(to_hex(key_stream(joined({x2, y2}), M.size(), hash_of(block))), block.text("t"));
        EXPECT_EQ(to_hex(exclusive_or(M, block.bytes("t"))), block.text("C2"));
        EXPECT_EQ(to_hex(hash_bytes(joined({x2, M, y2}), hash_of(block))), block.text("C3"));
        ++checked;
    }
    EXPECT_EQ(checked, 69u);
}

TEST(Sm2EncryptVectors, KeptDecryptingGivesThePlaintextAndMinusOne) {
    unsigned checked = 0;
    for (const VectorBlock &block : vectors_where(is_legacy, "sm2_encrypt.rsp")) {
        if (block.text("Result") != "valid") continue;
        SCOPED_TRACE(describe(block));
        install(block.text("Curve"));
        Sm2Decryption call(block.bytes("d"), cipher_of(block));
        EXPECT_EQ(call.run(hash_of(block)), -1);
        call.expect_plain(block.bytes("M"));
        ++checked;
    }
    EXPECT_EQ(checked, 69u);
}

TEST(Sm2EncryptVectors, KeptInvalidCiphertextsLeaveWhatTheyDecryptTo) {
    // A changed C3 is not noticed in the plaintext, a changed C2 changes its own byte, and a
    // changed C1 all of it.
    unsigned checked = 0;
    for (const VectorBlock &block : vectors_where(is_legacy, "sm2_encrypt.rsp")) {
        if (block.text("Result") == "valid") continue;
        SCOPED_TRACE(describe(block));
        install(block.text("Curve"));
        Sm2Decryption call(block.bytes("d"), cipher_of(block));
        EXPECT_EQ(call.run(hash_of(block)), -1);
        ByteString M = block.bytes("M");
        const ByteString written = call.area.first(M.size());
        call.expect_plain(written);
        const std::string reason = block.text("Reason");
        if (reason.compare(0, 2, "C3") == 0) {
            EXPECT_EQ(to_hex(written), to_hex(M));
        } else if (reason.compare(0, 2, "C2") == 0) {
            M[reason == "C2 first byte changed" ? 0 : M.size() - 1] ^= 1;
            EXPECT_EQ(to_hex(written), to_hex(M));
        } else {
            EXPECT_NE(to_hex(written), to_hex(M));
        }
        ++checked;
    }
    EXPECT_EQ(checked, 8u);
}

}  // namespace zokecc_test::sm2_encrypt_vectors_test

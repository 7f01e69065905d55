// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Project Wycheproof's ECDSA signatures over SHA-256 and its Diffie-Hellman exchanges, with the
// cases that this library decides differently on purpose listed beside their reason. A case that
// leaves or joins the lists is a changed kept rule.
#include <set>

#include "tests/schemes/ecdsa_calls.h"
#include "tests/support/legacy_vectors.h"
#include "tests/support/model_curve.h"

namespace zokecc_test::wycheproof_test {

namespace {

struct Departures {
    // Valid, and refused: subtraction keeps turning equal words under a borrow into FFFFFFFE, so
    // that the inverse of s, or the last step of the affine sum, comes out wrong.
    std::set<unsigned> refused;
    // Invalid, and accepted: s is larger than n, and congruent to a good one.
    std::set<unsigned> accepted;
};

const Departures kSecp256r1 = {{115, 117, 119, 143, 171, 175, 177, 179, 181, 183, 185, 187, 189, 191,
                                193, 195, 197, 199, 201, 203, 209, 211, 213, 215, 217, 219, 253, 257},
                               {137}};

const Departures kSecp256k1 = {{115, 117, 119, 139, 167, 171, 173, 175, 177, 179, 181, 183, 185, 187, 189,
                                191, 193, 195, 197, 199, 201, 205, 207, 209, 211, 213, 215, 243, 247},
                               {133}};

int32_t verify(const VectorBlock &block) {
    const ByteString sig = block.bytes("Sig");
    const auto middle = sig.begin() + 32;
    return EcdsaVerification(PointBytes(block.bytes("Qx"), block.bytes("Qy")),
                             PointBytes(ByteString(sig.begin(), middle), ByteString(middle, sig.end())),
                             block.bytes("Msg"))
        .run(HASH_ALG_SHA256);
}

void run_signatures(const std::string &name, const Departures &departures, unsigned expected_count) {
    install(name);
    unsigned checked = 0;
    std::set<unsigned> refused, accepted;
    for (const VectorBlock &block : read_vectors("wycheproof_ecdsa_" + name + "_sha256_p1363.rsp")) {
        SCOPED_TRACE("tcId " + block.text("tcId") + ": " + block.text("Comment"));
        const bool valid = block.text("Result") == "valid";
        // Other lengths are a matter of encoding, which a record does not have.
        if (block.bytes("Sig").size() != 64) {
            EXPECT_FALSE(valid);
            continue;
        }
        const int32_t answer = verify(block);
        EXPECT_TRUE(answer == 0 || answer == 1);
        if (valid && answer == 0) refused.insert(block.decimal("tcId"));
        if (!valid && answer == 1) accepted.insert(block.decimal("tcId"));
        ++checked;
    }
    EXPECT_EQ(refused, departures.refused);
    EXPECT_EQ(accepted, departures.accepted);
    EXPECT_EQ(checked, expected_count);
}

struct Exchanged {
    bool decoded;
    ByteString secret;
};

Exchanged exchange(const VectorBlock &block) {
    const ByteString encoded = block.bytes("Public");
    ecc_point_bytes peer{};
    if (ecc_ByteToPoint(encoded.data(), static_cast<uint32_t>(encoded.size()), &peer) != 0)
        return {false, {}};
    Scalar d(block.bytes("d"));
    ByteString secret(global_curve.byte_len);
    EXPECT_EQ(Ecdh_KeyExChg(d.get(), &peer, secret.data(), global_curve.byte_len),
              static_cast<int32_t>(secret.size()));
    return {true, secret};
}

// What the signed window gives, in a second statement of its steps.
ByteString modelled_secret(const VectorBlock &block) {
    const ByteString encoded = block.bytes("Public");
    const size_t L = global_curve.byte_len;
    const std::string digits = to_hex(encoded);
    const ecc_point P =
        affine(mint_from_hex(digits.substr(2, 2 * L)), mint_from_hex(digits.substr(2 + 2 * L)));
    const ModelCurve model(global_curve.a, global_curve.b, global_curve.p);
    return fixed_bytes(model.window(block.number("d"), P).x, L);
}

void run_exchanges(const std::string &name, const std::set<unsigned> &departures, unsigned expected_count,
                   unsigned expected_undecoded) {
    install(name);
    unsigned checked = 0, undecoded = 0;
    std::set<unsigned> departed;
    for (const VectorBlock &block : read_vectors("wycheproof_ecdh_" + name + "_ecpoint.rsp")) {
        SCOPED_TRACE("tcId " + block.text("tcId") + ": " + block.text("Comment"));
        const bool valid = block.text("Result") == "valid";
        const Exchanged made = exchange(block);
        EXPECT_EQ(made.decoded, valid);
        if (!made.decoded) {
            ++undecoded;
        } else if (to_hex(made.secret) != block.text("Shared")) {
            departed.insert(block.decimal("tcId"));
            EXPECT_EQ(to_hex(made.secret), to_hex(modelled_secret(block)));
        }
        ++checked;
    }
    EXPECT_EQ(departed, departures);
    EXPECT_EQ(checked, expected_count);
    EXPECT_EQ(undecoded, expected_undecoded);
}

}  // namespace

TEST(WycheproofEcdsa, KeptDeparturesOnSecp256r1AreExactlyTheListedOnes) {
    run_signatures("secp256r1", kSecp256r1, 114);
}

TEST(WycheproofEcdsa, KeptDeparturesOnSecp256k1AreExactlyTheListedOnes) {
    run_signatures("secp256k1", kSecp256k1, 112);
}

// 75: the multiplication meets equal words under a borrow. 329: the private key is n - 2, where
// the last addition of the signed window meets an equal point and the secret is zero.
TEST(WycheproofEcdh, KeptDeparturesOnSecp256r1AreExactlyTheListedOnes) {
    run_exchanges("secp256r1", {75, 329}, 178, 12);
}

// 51: the multiplication meets equal words under a borrow.
TEST(WycheproofEcdh, KeptDeparturesOnSecp224r1AreExactlyTheListedOnes) {
    run_exchanges("secp224r1", {51}, 229, 9);
}

}  // namespace zokecc_test::wycheproof_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Project Wycheproof's ECDSA signatures with SHA-256 and its ECDH exchanges, in both generations of
// calls; cases that this library deliberately decides differently are listed with the reason. A case
// that leaves or joins the lists means that a kept rule has changed.
#include <set>

#include "tests/sdf/fixtures.h"
#include "tests/support/legacy_curve.h"
#include "tests/support/legacy_records.h"
#include "tests/support/model_curve.h"

namespace zokecc_test::wycheproof_test {

namespace {

using Cases = std::set<unsigned>;

// Valid signatures are refused because subtraction keeps turning equal words under a borrow into FFFFFFFE,
// and these cases are full of such words.
struct Departures {
    Cases inverse;        // the inverse of s is wrong
    Cases sum;            // x of the sum has words of all ones, which the last subtractions cannot produce
    Cases public_key;     // y is so large that its doubling modulo p is wrong
    Cases accepted = {};  // by the process-wide calls: s is larger than n, and congruent to a valid one

    Cases refused() const {
        Cases out = inverse;
        out.insert(sum.begin(), sum.end());
        out.insert(public_key.begin(), public_key.end());
        return out;
    }
};

const Departures kSecp256r1 = {
    {115, 117, 119, 143, 171, 175, 199, 201, 209, 211, 213, 215, 217, 219, 253, 257},
    {177, 179, 181, 183, 185, 187, 189, 191, 193, 195, 197, 203},
    {},
    {137}};

const Departures kSecp256k1 = {
    {115, 117, 119, 139, 167, 171, 187, 191, 193, 195, 197, 199, 205, 207, 209, 211, 213, 215, 243, 247},
    {173, 175, 177, 179, 181, 183, 185, 189, 201},
    {},
    {133}};

const Departures kSecp224r1 = {
    {119, 125, 169, 173, 185, 189, 191, 193, 199, 201, 203, 205, 207, 209, 249, 253},
    {175, 177, 179, 181, 183, 187, 195},
    {235, 247}};

struct Halves {
    explicit Halves(const ByteString &bytes, size_t first = 0)
        : x(bytes.begin() + static_cast<std::ptrdiff_t>(first), middle(bytes, first)),
          y(middle(bytes, first), bytes.end()) {}
    static ByteString::const_iterator middle(const ByteString &bytes, size_t first) {
        return bytes.begin() + static_cast<std::ptrdiff_t>(first + (bytes.size() - first) / 2);
    }
    ByteString x, y;
};

// Both results are 1 for a valid signature and 0 for an invalid one.
int32_t by_process(const VectorBlock &block, const Halves &sig) {
    PointBytes key(block.bytes("Qx"), block.bytes("Qy")), pair(sig.x, sig.y);
    Message msg(block.bytes("Msg"));
    return Ecdsa_DigitalVeriy(key.get(), msg.get(), pair.get(), HASH_ALG_SHA256);
}
int32_t by_session(const VectorBlock &block, const Halves &sig) {
    void *session = shared_session(curve(block.text("Curve")), HASH_ALG_SHA256);
    const ECCrefPublicKey key = public_key(block.bytes("Qx"), block.bytes("Qy"));
    const ByteString text = block.bytes("Msg");
    uint32_t status = 0;
    if (sig.x.size() == 32) {
        status = verify_message(session, ZOK_ALG_ECDSA_SIGN, key, text, {}, signature(sig.x, sig.y));
    } else {
        // The standard's e on a shorter curve: the leftmost bytes of the digest.
        ByteString digest(32, 0);
        EXPECT_EQ(mhash_sha256(text.data(), static_cast<uint32_t>(text.size()), digest.data()), 0u);
        digest.resize(sig.x.size());
        status = verify_e(session, ZOK_ALG_ECDSA_SIGN, key, digest, signature(sig.x, sig.y));
    }
    EXPECT_TRUE(status == ZOK_OK || status == ZOK_ERR_VERIFY);
    return status == ZOK_OK;
}

void run_signatures(int32_t (*verify)(const VectorBlock &, const Halves &), const std::string &name,
                    const Cases &refused, const Cases &accepted, unsigned expected_count) {
    const unsigned L = curve(name).byte_len;
    Cases found_refused, found_accepted;
    auto test = [&](const VectorBlock &block) {
        const int32_t answer = verify(block, Halves(block.bytes("Sig")));
        EXPECT_TRUE(answer == 0 || answer == 1);
        if (block.is_valid() && answer == 0) found_refused.insert(block.decimal("tcId"));
        if (!block.is_valid() && answer == 1) found_accepted.insert(block.decimal("tcId"));
    };
    // Other lengths concern the encoding, which a record does not have.
    auto fits = [&](const VectorBlock &block) {
        const bool right = block.bytes("Sig").size() == 2 * L;
        EXPECT_TRUE(right || !block.is_valid());
        return right;
    };
    EXPECT_EQ(on_blocks("wycheproof_ecdsa_" + name + "_sha256_p1363.rsp", fits, test), expected_count);
    EXPECT_EQ(found_refused, refused);
    EXPECT_EQ(found_accepted, accepted);
}
void run_both(const std::string &name, const Departures &departures, unsigned expected_count) {
    install(name);
    run_signatures(by_process, name, departures.refused(), departures.accepted, expected_count);
    run_signatures(by_session, name, departures.refused(), {}, expected_count);
}

// The result of wNAF, from a second implementation of its steps.
ByteString modelled_secret(const VectorBlock &block, const Halves &point) {
    const ModelCurve model(global_curve.a, global_curve.b, global_curve.p);
    const ecc_point P = affine(mint_from_hex(to_hex(point.x)), mint_from_hex(to_hex(point.y)));
    return fixed_bytes(model.window(block.number("d"), P).x, global_curve.byte_len);
}

ByteString secret_by_process(const VectorBlock &block, const Halves &point) {
    Scalar d(block.bytes("d"));
    PointBytes peer(point.x, point.y);
    ByteString secret(global_curve.byte_len);
    EXPECT_EQ(Ecdh_KeyExChg(d.get(), peer.get(), secret.data(), global_curve.byte_len),
              static_cast<int32_t>(secret.size()));
    return secret;
}
ByteString secret_by_session(const VectorBlock &block, const Halves &point) {
    const ECCrefPrivateKey priv = private_key(block.bytes("d"));
    const ECCrefPublicKey pub = public_key(point.x, point.y);
    GuardedBuffer out(point.x.size());
    EXPECT_EQ(
        ZOK_ExternalEcdhKeyAgreement(shared_session(curve(block.text("Curve"))), &priv, &pub, out.data()),
        ZOK_OK);
    EXPECT_TRUE(out.untouched_from(out.size()));
    return out.all();
}

// The departing cases give a different secret. Cases marked invalid are off the curve or badly
// encoded, which concerns reading the point.
void run_exchanges(ByteString (*secret)(const VectorBlock &, const Halves &), const std::string &name,
                   const Cases &departures, unsigned expected_count, unsigned expected_undecoded) {
    install(name);
    unsigned undecoded = 0;
    Cases departed;
    auto test = [&](const VectorBlock &block) {
        const ByteString encoded = block.bytes("Public");
        ecc_point_bytes peer{};
        const bool decoded =
            ecc_ByteToPoint(encoded.data(), static_cast<uint32_t>(encoded.size()), &peer) == 0;
        EXPECT_EQ(decoded, block.is_valid());
        undecoded += !decoded;
        if (!decoded) return;
        const Halves point{ByteString(encoded), 1};
        const ByteString got = secret(block, point);
        if (to_hex(got) == block.text("Shared")) return;
        departed.insert(block.decimal("tcId"));
        EXPECT_EQ(to_hex(got), to_hex(modelled_secret(block, point)));
    };
    auto any = [](const VectorBlock &) { return true; };
    EXPECT_EQ(on_blocks("wycheproof_ecdh_" + name + "_ecpoint.rsp", any, test), expected_count);
    EXPECT_EQ(departed, kHardened ? Cases{} : departures);
    EXPECT_EQ(undecoded, expected_undecoded);
}

// secp256r1, 75: the multiplication meets equal words under a borrow. 329: the private key is n - 2, where
// the last addition of wNAF meets an equal point and the secret is zero. secp224r1, 51: as 75.
void run_secp256r1(ByteString (*secret)(const VectorBlock &, const Halves &)) {
    run_exchanges(secret, "secp256r1", {75, 329}, 178, 12);
}
void run_secp224r1(ByteString (*secret)(const VectorBlock &, const Halves &)) {
    run_exchanges(secret, "secp224r1", {51}, 229, 9);
}

}  // namespace

TEST(WycheproofEcdsa, KeptDeparturesOnSecp256r1AreExactlyTheListedOnes) {
    run_both("secp256r1", kSecp256r1, 114);
}
TEST(WycheproofEcdsa, KeptDeparturesOnSecp256k1AreExactlyTheListedOnes) {
    run_both("secp256k1", kSecp256k1, 112);
}
TEST(WycheproofEcdsa, KeptDeparturesOnSecp224r1AreExactlyTheListedOnes) {
    run_signatures(by_session, "secp224r1", kSecp224r1.refused(), {}, 125);
}

TEST(WycheproofEcdh, KeptDeparturesOnSecp256r1AreExactlyTheListedOnes) { run_secp256r1(secret_by_process); }
TEST(ZokExternalEcdhKeyAgreement, KeptWycheproofSecretsOfTheNist256BitCurve) {
    run_secp256r1(secret_by_session);
}

TEST(WycheproofEcdh, KeptDeparturesOnSecp224r1AreExactlyTheListedOnes) { run_secp224r1(secret_by_process); }
TEST(ZokExternalEcdhKeyAgreement, KeptWycheproofSecretsOfTheNist224BitCurve) {
    run_secp224r1(secret_by_session);
}

}  // namespace zokecc_test::wycheproof_test

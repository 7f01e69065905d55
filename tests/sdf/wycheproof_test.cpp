// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Project Wycheproof's ECDSA signatures over SHA-256, with the cases that this library decides
// differently on purpose listed beside their reason. All of them are valid signatures that are
// refused: subtraction keeps turning equal words under a borrow into FFFFFFFE, and these cases
// are full of such words. A case that leaves or joins the lists is a changed kept rule.
#include <set>

#include "tests/sdf/fixtures.h"
#include "tests/support/vector_file.h"

namespace zokecc_test::wycheproof_test {

namespace {

struct Departures {
    // The inverse of s comes out wrong.
    std::set<unsigned> inverse;
    // s has a right inverse, and x of the sum has words of all ones, which the last
    // subtractions of the affine addition cannot produce.
    std::set<unsigned> sum;
    // y of the public key is so large that its doubling modulo p comes out wrong.
    std::set<unsigned> public_key_multiple;

    bool has(unsigned id) const {
        return inverse.count(id) != 0 || sum.count(id) != 0 || public_key_multiple.count(id) != 0;
    }
    size_t size() const { return inverse.size() + sum.size() + public_key_multiple.size(); }
};

const Departures kSecp256r1 = {
    {115, 117, 119, 143, 171, 175, 199, 201, 209, 211, 213, 215, 217, 219, 253, 257},
    {177, 179, 181, 183, 185, 187, 189, 191, 193, 195, 197, 203},
    {}};

const Departures kSecp256k1 = {
    {115, 117, 119, 139, 167, 171, 187, 191, 193, 195, 197, 199, 205, 207, 209, 211, 213, 215, 243, 247},
    {173, 175, 177, 179, 181, 183, 185, 189, 201},
    {}};

const Departures kSecp224r1 = {
    {119, 125, 169, 173, 185, 189, 191, 193, 199, 201, 203, 205, 207, 209, 249, 253},
    {175, 177, 179, 181, 183, 187, 195},
    {235, 247}};

// r and s of the right length, or nothing that could be put into a signature record.
bool right_length(const VectorBlock &block, unsigned byte_len) {
    return block.bytes("Sig").size() == 2 * byte_len;
}

// The call under test gives the status of one case.
template <class Verify>
void run(const std::string &file, const Departures &departures, unsigned byte_len, unsigned expected_count,
         Verify verify) {
    unsigned checked = 0;
    unsigned departed = 0;
    for (const VectorBlock &block : read_vectors(file)) {
        unsigned id = block.decimal("tcId");
        SCOPED_TRACE("tcId " + block.text("tcId") + ": " + block.text("Comment"));
        bool valid = block.text("Result") == "valid";
        if (!right_length(block, byte_len)) {
            EXPECT_FALSE(valid);
            continue;
        }
        ByteString sig = block.bytes("Sig");
        auto middle = sig.begin() + static_cast<std::ptrdiff_t>(byte_len);
        uint32_t status = verify(block, public_key(block.bytes("Qx"), block.bytes("Qy")),
                                 signature(ByteString(sig.begin(), middle), ByteString(middle, sig.end())));
        if (departures.has(id)) {
            EXPECT_TRUE(valid);
            ++departed;
        }
        EXPECT_EQ(status, valid && !departures.has(id) ? ZOK_OK : ZOK_ERR_VERIFY);
        ++checked;
    }
    EXPECT_EQ(checked, expected_count);
    EXPECT_EQ(departed, departures.size());
}

uint32_t verify_whole_message(const VectorBlock &block, const ECCrefPublicKey &key, const ECCSignature &sig) {
    return verify_message(shared_session(curve(block.text("Curve")), HASH_ALG_SHA256), ZOK_ALG_ECDSA_SIGN,
                          key, block.bytes("Msg"), ByteString(), sig);
}

// The standard's e on a 224-bit curve: the leftmost 28 bytes of the digest.
uint32_t verify_truncated(const VectorBlock &block, const ECCrefPublicKey &key, const ECCSignature &sig) {
    ByteString text = block.bytes("Msg");
    ByteString digest(32, 0);
    EXPECT_EQ(mhash_sha256(text.data(), static_cast<uint32_t>(text.size()), digest.data()), 0u);
    digest.resize(28);
    return verify_e(shared_session(curve("secp224r1"), HASH_ALG_SHA256), ZOK_ALG_ECDSA_SIGN, key, digest,
                    sig);
}

}  // namespace

TEST(WycheproofEcdsa, KeptDeparturesOnSecp256r1AreExactlyTheListedOnes) {
    run("wycheproof_ecdsa_secp256r1_sha256_p1363.rsp", kSecp256r1, 32, 114, verify_whole_message);
}

TEST(WycheproofEcdsa, KeptDeparturesOnSecp256k1AreExactlyTheListedOnes) {
    run("wycheproof_ecdsa_secp256k1_sha256_p1363.rsp", kSecp256k1, 32, 112, verify_whole_message);
}

TEST(WycheproofEcdsa, KeptDeparturesOnSecp224r1AreExactlyTheListedOnes) {
    run("wycheproof_ecdsa_secp224r1_sha256_p1363.rsp", kSecp224r1, 28, 125, verify_truncated);
}

}  // namespace zokecc_test::wycheproof_test

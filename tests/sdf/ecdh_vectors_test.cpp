// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Published Diffie-Hellman secrets on every session curve.
#include "tests/sdf/fixtures.h"
#include "tests/support/vector_file.h"

namespace zokecc_test::ecdh_vectors_test {

namespace {

class EcdhVectorsOn : public testing::TestWithParam<std::string> {
protected:
    std::vector<VectorBlock> blocks() const {
        std::vector<VectorBlock> out;
        for (const VectorBlock &block : read_vectors("ecdh.rsp"))
            if (block.text("Curve") == GetParam()) out.push_back(block);
        EXPECT_GE(out.size(), 2u);
        return out;
    }
};

}  // namespace

TEST_P(EcdhVectorsOn, SharedSecretsInExactlyTheirLength) {
    void *session = shared_session(curve(GetParam()));
    for (const VectorBlock &block : blocks()) {
        SCOPED_TRACE(block.text("Source") + " d = " + block.text("d"));
        const ECCrefPrivateKey priv = private_key(block.bytes("d"));
        const ECCrefPublicKey pub = public_key(block.bytes("Px"), block.bytes("Py"));
        const ByteString want = block.bytes("Z");
        ASSERT_EQ(want.size(), curve(GetParam()).byte_len);
        GuardedBuffer out(want.size());
        EXPECT_EQ(ZOK_ExternalEcdhKeyAgreement(session, &priv, &pub, out.data()), ZOK_OK);
        EXPECT_EQ(to_hex(out.all()), to_hex(want));
        EXPECT_TRUE(out.untouched_from(want.size()));
    }
}

INSTANTIATE_TEST_SUITE_P(Curves, EcdhVectorsOn, testing::ValuesIn(session_curve_names()),
                         [](const auto &name_of) { return name_of.param; });

// Project Wycheproof's, with secrets and multiples at the edges. Where the collection calls a key
// invalid the point is off the curve or badly encoded, which this call does not look at.
namespace {

// Every valid case with an uncompressed point; the departing ones give another secret.
void expect_wycheproof(const std::string &file, std::initializer_list<const char *> departing,
                       unsigned cases) {
    unsigned checked = 0;
    for (const VectorBlock &block : read_vectors(file)) {
        const Curve &c = curve(block.text("Curve"));
        const ByteString point = block.bytes("Public");
        if (block.text("Result") != "valid" || point.size() != 1 + 2 * c.byte_len) continue;
        SCOPED_TRACE(file + " tcId " + block.text("tcId"));
        ++checked;
        const auto middle = point.begin() + 1 + static_cast<std::ptrdiff_t>(c.byte_len);
        const ECCrefPublicKey pub =
            public_key(ByteString(point.begin() + 1, middle), ByteString(middle, point.end()));
        const ECCrefPrivateKey priv = private_key(block.bytes("d"));
        GuardedBuffer out(c.byte_len);
        EXPECT_EQ(ZOK_ExternalEcdhKeyAgreement(shared_session(c), &priv, &pub, out.data()), ZOK_OK);
        bool departs = false;
        for (const char *id : departing) departs = departs || block.text("tcId") == id;
        EXPECT_EQ(to_hex(out.all()) != block.text("Shared"), departs);
        EXPECT_TRUE(out.untouched_from(c.byte_len));
    }
    EXPECT_EQ(checked, cases);
}

}  // namespace

TEST(ZokExternalEcdhKeyAgreement, KeptWycheproofSecretsOfTheNist256BitCurve) {
    // Kept rules of the addition and of the inverse show in 75 and 329.
    expect_wycheproof("wycheproof_ecdh_secp256r1_ecpoint.rsp", {"75", "329"}, 166);
}

TEST(ZokExternalEcdhKeyAgreement, KeptWycheproofSecretsOfTheNist224BitCurve) {
    expect_wycheproof("wycheproof_ecdh_secp224r1_ecpoint.rsp", {"51"}, 220);
}

}  // namespace zokecc_test::ecdh_vectors_test

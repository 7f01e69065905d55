// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Published ECDH secrets on every session curve.
#include "tests/sdf/fixtures.h"
#include "tests/support/vector_file.h"

namespace zokecc_test::ecdh_vectors_test {

namespace {

class EcdhVectorsOn : public testing::TestWithParam<std::string> {};

}  // namespace

TEST_P(EcdhVectorsOn, SharedSecretsInExactlyTheirLength) {
    void *session = shared_session(curve(GetParam()));
    auto test = [&](const VectorBlock &block) {
        const ECCrefPrivateKey priv = private_key(block.bytes("d"));
        const ECCrefPublicKey pub = public_key(block.bytes("Px"), block.bytes("Py"));
        const ByteString want = block.bytes("Z");
        ASSERT_EQ(want.size(), curve(GetParam()).byte_len);
        GuardedBuffer out(want.size());
        EXPECT_EQ(ZOK_ExternalEcdhKeyAgreement(session, &priv, &pub, out.data()), ZOK_OK);
        EXPECT_EQ(to_hex(out.all()), to_hex(want));
        EXPECT_TRUE(out.untouched_from(want.size()));
    };
    auto on_it = [](const VectorBlock &block) { return block.text("Curve") == GetParam(); };
    EXPECT_GE(on_blocks("ecdh.rsp", on_it, test), 2u);
}

INSTANTIATE_TEST_SUITE_P(Curves, EcdhVectorsOn, testing::ValuesIn(session_curve_names()),
                         [](const auto &name_of) { return name_of.param; });

}  // namespace zokecc_test::ecdh_vectors_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Published ECDH secrets and public keys, on every curve that Curve_Init supports.
#include "tests/support/legacy_curve.h"
#include "tests/support/legacy_records.h"

namespace zokecc_test::ecdh_vectors_test {

TEST(EcdhVectors, SharedSecretsAndPublicKeys) {
    auto test = [](const VectorBlock &block) {
        install(block.text("Curve"));
        const ByteString expected = block.bytes("Z");
        Scalar d(block.bytes("d"));
        PointBytes peer(block.bytes("Px"), block.bytes("Py"));
        GuardedBuffer out(expected.size() + 8);
        EXPECT_EQ(Ecdh_KeyExChg(d.get(), peer.get(), out.data(), static_cast<uint32_t>(expected.size())),
                  static_cast<int32_t>(expected.size()));
        EXPECT_EQ(to_hex(out.first(expected.size())), to_hex(expected));
        EXPECT_TRUE(out.untouched_from(expected.size()));

        GuardedRecord<ecc_point_bytes> by_scalar, by_mode;
        EXPECT_EQ(Ecc_GenPubKey(d.get(), by_scalar.get()), 0);
        EXPECT_EQ(Ecc_KeyPair_Gen(d.get(), by_mode.get(), 1), 0);
        expect_record(by_scalar, block.bytes("Qx"), block.bytes("Qy"));
        expect_record(by_mode, block.bytes("Qx"), block.bytes("Qy"));
        EXPECT_TRUE(d.intact());
    };
    EXPECT_EQ(on_blocks("ecdh.rsp", is_legacy, test), 93u);
}

}  // namespace zokecc_test::ecdh_vectors_test

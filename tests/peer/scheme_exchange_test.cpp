// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// ECDH on the process-wide curve, and key generation, compared with OpenSSL.
#include "tests/peer/scheme_peer.h"

namespace zokecc_test::scheme_exchange_test {

namespace {

constexpr int kRounds = 15;

const PeerCurve kCurves[] = {{"secp256r1", "prime256v1", NID_X9_62_prime256v1},
                             {"secp256k1", "secp256k1", NID_secp256k1},
                             {"brainpoolP256r1", "brainpoolP256r1", NID_brainpoolP256r1},
                             {"secp224r1", "secp224r1", NID_secp224r1},
                             {"brainpoolP224r1", "brainpoolP224r1", NID_brainpoolP224r1},
                             {"secp192r1", "prime192v1", NID_X9_62_prime192v1},
                             {"brainpoolP192r1", "brainpoolP192r1", NID_brainpoolP192r1}};

ByteString peer_secret(const PeerKeyPair &own, const PeerKeyPair &other, size_t L) {
    PeerKeyContext context(EVP_PKEY_CTX_new(own.peer.get(), nullptr));
    EXPECT_EQ(EVP_PKEY_derive_init(context.get()), 1);
    EXPECT_EQ(EVP_PKEY_derive_set_peer(context.get(), other.peer.get()), 1);
    ByteString out(L);
    size_t size = L;
    EXPECT_EQ(EVP_PKEY_derive(context.get(), out.data(), &size), 1);
    EXPECT_EQ(size, L);
    return out;
}

}  // namespace

TEST(PeerLegacyExchange, SecretsAgreeBothWays) {
    PeerDraws draws;
    for (const PeerCurve &on : kCurves) {
        install(on.name);
        for (int round = 0; round < kRounds; ++round) {
            PeerKeyPair ours(on, draws);
            PeerKeyPair theirs(on, draws);
            SCOPED_TRACE("seed " + std::to_string(kPeerSeed) + ' ' + on.name + " d " + to_hex(ours.d) +
                         " other d " + to_hex(theirs.d));
            Scalar d(ours.d);
            PointBytes Q = theirs.point();
            ByteString out(on.L());
            EXPECT_EQ(Ecdh_KeyExChg(d.get(), Q.get(), out.data(), static_cast<uint32_t>(out.size())),
                      static_cast<int32_t>(out.size()));
            EXPECT_EQ(to_hex(out), to_hex(peer_secret(theirs, ours, on.L())));
            EXPECT_EQ(to_hex(out), to_hex(peer_secret(ours, theirs, on.L())));
        }
    }
}

TEST(PeerLegacyExchange, PublicKeysAgree) {
    PeerDraws draws;
    for (const PeerCurve &on : kCurves) {
        install(on.name);
        for (int round = 0; round < kRounds; ++round) {
            PeerKeyPair keys(on, draws);
            SCOPED_TRACE("seed " + std::to_string(kPeerSeed) + ' ' + on.name + " d " + to_hex(keys.d));
            Scalar d(keys.d);
            GuardedRecord<ecc_point_bytes> Q;
            EXPECT_EQ(Ecc_GenPubKey(d.get(), Q.get()), 0);
            expect_record(Q, keys.x, keys.y);
        }
    }
}

}  // namespace zokecc_test::scheme_exchange_test

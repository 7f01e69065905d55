// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SDF_GenerateKeyPair_ECC: its draws, its output, and the order of its checks.
#include <deque>

#include "tests/sdf/fixtures.h"
#include "tests/support/vector_file.h"

namespace zokecc_test::key_pair_test {

namespace {

struct Written {
    GuardedRecord<ECCrefPublicKey> pub;
    GuardedRecord<ECCrefPrivateKey> priv;

    uint32_t generate(void *session, uint32_t algorithm, uint32_t bits) {
        return SDF_GenerateKeyPair_ECC(session, algorithm, bits, pub.get(), priv.get());
    }
    bool unchanged() const { return pub.unchanged() && priv.unchanged(); }
    void expect(const ByteString &d, const ByteString &x, const ByteString &y) {
        EXPECT_EQ(priv->bits, 8 * d.size());
        EXPECT_EQ(pub->bits, 8 * d.size());
        expect_field(priv->K, d);
        expect_field(pub->x, x);
        expect_field(pub->y, y);
        EXPECT_TRUE(pub.guards_intact());
        EXPECT_TRUE(priv.guards_intact());
    }
};

// A successful call with the numbers to draw; without any, the fake generator delivers one.
void expect_pair(void *session, uint32_t algorithm, const std::deque<mint> &numbers, const ByteString &d,
                 const ByteString &x, const ByteString &y) {
    FakeEntropy entropy;
    entropy.queued_numbers = numbers;
    Written written;
    ASSERT_EQ(written.generate(session, algorithm, static_cast<uint32_t>(8 * d.size())), ZOK_OK);
    written.expect(d, x, y);
    EXPECT_EQ(entropy.number_calls, 1u);
}

// The pair from the fake generator right after its start. The draw is the same for
// every curve of one length; the values come from a model of the generator, reduced modulo
// the order.
struct FirstPair {
    const char *curve;
    uint32_t type;
    const char *d;
    const char *x;
    const char *y;
};

const FirstPair kFirstPairs[] = {
    {"brainpoolP160r1", 1, "4052ac3d6bdbdff744ae27ed40009c1ce46c0ac5",
     "7afd69b807e408094a280bf0cec6808d0b8ff911", "488ebd6b29f9c8676d9d8c8f5a01b56d89973b84"},
    {"secp192r1", 2, "54e3d1624052ac3d6bdbdff744ae27ed40009c1ce46c0ac5",
     "495368fc4f982189ac93a9194edef9ec685e59906b266cb1", "16d5bfdc27299a37450a350468439bb6ed9739ae9b3c2a15"},
    {"secp224r1", 3, "62bd0af054e3d1624052ac3d6bdbdff744ae27ed40009c1ce46c0ac5",
     "f39a5e86572d2f65e32e923d9aed08b8bccf9fec0ccccf38271c2120",
     "0774fe883cfb6de2645846d3c5113a7c1d9bcf020eb0b8a8adcc4d5c"},
    {"sm2p256v1", 4, "9982630a62bd0af054e3d1624052ac3d6bdbdff744ae27ed40009c1ce46c0ac5",
     "aac61cf067f845ab380c6f5271e00d983a32db8ce6185a5c115bc74eb4e71121",
     "18a83f733053b4201474770fdb9f5569f6cc1f7f95aa5b3fdea45ef26ad5ca1f"},
    {"secp256k1", 5, "9982630a62bd0af054e3d1624052ac3d6bdbdff744ae27ed40009c1ce46c0ac5",
     "d1566699d7e35e03fd10ff97c69cfd1aab865bd9fcdfba2907a8d876b203886a",
     "a857e0aabf162e2b0853ea4ac7a22a6a3637db8aa30d6b3985abbccfc681d5dc"},
    {"brainpoolP256r1", 6, "9982630a62bd0af054e3d1624052ac3d6bdbdff744ae27ed40009c1ce46c0ac5",
     "6f1cfe3eb7df422c9ea2ce0b46a408e796fc87f4087b9ea812b75d3f7a0564b1",
     "8708ef8756f2413ab715e8f501f2a2f67876040741b6a40ae281d6afc1f87ec9"},
};

}  // namespace

TEST(SdfGenerateKeyPairEcc, EveryCurveTypeGivesThePairOfTheDrawnNumber) {
    for (const FirstPair &pair : kFirstPairs) {
        SCOPED_TRACE(pair.curve);
        Curve typed = curve(pair.curve);
        typed.session_type = pair.type;
        Session session(typed);
        expect_pair(session.handle(), ZOK_ALG_SM2_KEY, {}, from_hex(pair.d), from_hex(pair.x),
                    from_hex(pair.y));
    }
}

TEST(SdfGenerateKeyPairEcc, DrawsOneNumberBelowTheOrder) {
    FakeEntropy entropy;
    Written written;
    ASSERT_EQ(written.generate(small_session(), ZOK_ALG_SM2_KEY, 160), ZOK_OK);
    EXPECT_EQ(entropy.number_calls, 1u);
    EXPECT_EQ(entropy.seedings(), 2u);  // one for the state, one for the four bytes
    written.expect(small_bytes(0x2b6), small_bytes(0x3b9), small_bytes(0x111));
}

TEST(SdfGenerateKeyPairEcc, BothAlgorithmsGiveTheSamePair) {
    for (uint32_t algorithm : {ZOK_ALG_SM2_KEY, ZOK_ALG_ECDSA_KEY})
        expect_pair(small_session(), algorithm, {small_number(123)}, small_bytes(123), small_bytes(346),
                    small_bytes(763));
}

TEST(SdfGenerateKeyPairEcc, PublicKeyIsThePublishedMultiple) {
    unsigned checked = 0;
    unsigned seen = 0;
    for (const VectorBlock &block : read_vectors("point_mul.rsp")) {
        const std::string &name = block.text("Curve");
        if (name == "secp160r1" || seen++ % 9 != 0) continue;
        SCOPED_TRACE(name + " k = " + block.text("k"));
        expect_pair(shared_session(curve(name)), ZOK_ALG_ECDSA_KEY, {block.number("k")}, block.bytes("k"),
                    block.bytes("x"), block.bytes("y"));
        ++checked;
    }
    EXPECT_GT(checked, 50u);
}

TEST(SdfGenerateKeyPairEcc, KeptPrivateKeyOfZeroIsPossible) {
    const ByteString zeros(32, 0);
    expect_pair(sm2_session(), ZOK_ALG_SM2_KEY, {small_number(0)}, zeros, zeros, zeros);
}

TEST(SdfGenerateKeyPairEcc, RefusedConfigurationStillDecidesTheSize) {
    Session session(small_curve());
    CurvePara refused = curve("sm2p256v1").record(HASH_ALG_SM3);
    refused.Gy[31] ^= 1;
    ASSERT_EQ(ZOK_CurveParaCfg(session.handle(), refused.type, &refused), ZOK_ERR_INTERNAL);
    Written written;
    EXPECT_EQ(written.generate(session.handle(), ZOK_ALG_SM2_KEY, 160), ZOK_ERR_ARGUMENT);
    EXPECT_TRUE(written.unchanged());
    EXPECT_EQ(written.generate(session.handle(), ZOK_ALG_SM2_KEY, 256),
              kHardened ? ZOK_ERR_INTERNAL : ZOK_OK);
}

}  // namespace zokecc_test::key_pair_test

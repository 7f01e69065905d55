// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// ZOK_GenerateUserInfo: the value Z of a public key and an identity.
#include "tests/sdf/fixtures.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/vector_file.h"

namespace zokecc_test::user_info_test {

namespace {

// Z of the identity ALICE and the key 123 G on the small curve.
const char kSmallZ[] = "0b41dde392ef30d430f882651b0b826e734c5bda035e36fa7f275354092cd9de";
const char kSmallZSha256[] = "9f2517278af5f1f614e417745a2b4b873073d43a72072eb3d02427a3f4e81830";

struct UserInfo {
    GuardedBuffer z{40};
    GuardedRecord<uint32_t> z_len;

    uint32_t generate(void *session, const ECCrefPublicKey &key, const ByteString &id) {
        return ZOK_GenerateUserInfo(session, &key, id.data(), static_cast<uint32_t>(id.size()), z.data(),
                                    z_len.get());
    }
    void expect(const std::string &value) {
        EXPECT_EQ(to_hex(z.first(32)), value);
        EXPECT_TRUE(z.untouched_from(32));
        EXPECT_EQ(*z_len.get(), 32u);
        EXPECT_TRUE(z_len.guards_intact());
    }
    bool unchanged() const { return z.untouched() && z_len.unchanged(); }
};

ByteString alice() { return text_bytes("ALICE"); }

// Its arguments are not changed.
void expect_Z(void *session, const ECCrefPublicKey &key, const ByteString &id, const std::string &value) {
    const ByteString key_before = image(key), id_before = id;
    UserInfo info;
    ASSERT_EQ(info.generate(session, key, id), ZOK_OK);
    info.expect(value);
    EXPECT_TRUE(image(key) == key_before && id == id_before);
}

}  // namespace

TEST(ZokGenerateUserInfo, ValuesOfTheStandardsAndOfEveryCurve) {
    unsigned checked = 0;
    for (const VectorBlock &block : read_vectors("sm2_sign.rsp")) {
        if (block.text("Curve") == "secp160r1") continue;
        SCOPED_TRACE(block.text("Curve") + " Z = " + block.text("Z"));
        expect_Z(shared_session(curve(block.text("Curve")), block.hash()),
                 public_key(block.bytes("Px"), block.bytes("Py")), block.bytes("ID"), block.text("Z"));
        ++checked;
    }
    EXPECT_EQ(checked, 79u);
}

TEST(ZokGenerateUserInfo, SmallCurveWithBothHashes) {
    expect_Z(small_session(HASH_ALG_SM3), small_public_key(), alice(), kSmallZ);
    expect_Z(small_session(HASH_ALG_SHA256), small_public_key(), alice(), kSmallZSha256);
}

TEST(ZokGenerateUserInfo, EmptyIdentityMayBeNull) {
    ECCrefPublicKey key = small_public_key();
    UserInfo info;
    EXPECT_EQ(ZOK_GenerateUserInfo(small_session(), &key, nullptr, 1, info.z.data(), info.z_len.get()),
              ZOK_ERR_ARGUMENT);
    EXPECT_TRUE(info.unchanged());
    ASSERT_EQ(ZOK_GenerateUserInfo(small_session(), &key, nullptr, 0, info.z.data(), info.z_len.get()),
              ZOK_OK);
    info.expect("b48b5010daca3cb0c608f06baf0bc44035757eb426c633da11600cdab84b2964");
}

TEST(ZokGenerateUserInfo, IdentityOf8192BytesHasBitLengthZeroInSixteenBits) {
    ByteString id;
    for (unsigned i = 0; i < 8192; ++i) id.push_back(static_cast<uint8_t>(7 * i + 3));
    expect_Z(small_session(), small_public_key(), id,
             "904ea0e139786ccc265c0a0508f494a7d44fee8083393dec53a63d3ad91a45c0");

    id.push_back(0);
    expect_Z(small_session(), small_public_key(), id,
             "bacf21d528eb00785652635ebb1f3aaf3949556e257ae5b573a25cb43d61c852");

    id.resize(8191);
    expect_Z(small_session(), small_public_key(), id,
             "1d5707a7e7b7966c01794c6054b1192634f0dbb70c45065c7bee7161f3d1284d");
}

TEST(ZokGenerateUserInfo, BitsOfTheKeyAreNotRead) {
    for (uint32_t bits : {0u, 8u, 520u, 0xFFFFFFFFu}) {
        ECCrefPublicKey key = small_public_key();
        key.bits = bits;
        expect_Z(small_session(), key, alice(), kSmallZ);
    }
}

TEST(ZokGenerateUserInfo, AllocatesTheHashedBytesAndOneMoreAndFreesThem) {
    ECCrefPublicKey key = small_public_key();
    ByteString id = alice();
    UserInfo info;
    FailingAlloc counter;
    ASSERT_EQ(info.generate(small_session(), key, id), ZOK_OK);
    EXPECT_EQ(counter.allocations, 1u);
    EXPECT_EQ(counter.last_size, 6u * 20 + 5 + 3);
    EXPECT_EQ(counter.outstanding, 0);
}

TEST(ZokGenerateUserInfo, LargestSizeIsAskedFor) {
    ECCrefPublicKey key = small_public_key();
    uint8_t id = 0;
    UserInfo info;
    FailingAlloc counter(1);
    EXPECT_EQ(
        ZOK_GenerateUserInfo(small_session(), &key, &id, 0xFFFFFFFFu - 123u, info.z.data(), info.z_len.get()),
        ZOK_ERR_INTERNAL);
    EXPECT_EQ(counter.last_size, size_t{0xFFFFFFFFu});
    EXPECT_TRUE(info.unchanged());
}

TEST(ZokGenerateUserInfo, ReadsTheRecordAndNotTheConvertedNumbers) {
    Session session(small_curve());
    session.context()->a = small_number(900);
    session.context()->G.x = small_number(901);
    session.context()->n = small_number(902);
    expect_Z(session.handle(), small_public_key(), alice(), kSmallZ);

    session.context()->record->b[19] ^= 1;
    UserInfo changed;
    ASSERT_EQ(changed.generate(session.handle(), small_public_key(), alice()), ZOK_OK);
    EXPECT_NE(to_hex(changed.z.first(32)), kSmallZ);
}

TEST(ZokGenerateUserInfo, RefusedConfigurationStillReplacesTheRecord) {
    Session session(curve("secp192r1"), HASH_ALG_SHA256);
    CurvePara refused = small_curve().record(HASH_ALG_SM3);
    refused.Gy[19] ^= 3;  // 366, off the curve
    ASSERT_EQ(ZOK_CurveParaCfg(session.handle(), refused.type, &refused), ZOK_ERR_INTERNAL);
    expect_Z(session.handle(), small_public_key(), alice(),
             "dfe580a8a195c955212072f0a556be5efa824726964be5524799dd577243197e");
}

TEST(ZokGenerateUserInfo, RefusedTypeKeepsTheRecord) {
    Session session(small_curve());
    CurvePara other = curve("sm2p256v1").record(HASH_ALG_SHA256);
    ASSERT_EQ(ZOK_CurveParaCfg(session.handle(), 7, &other), ZOK_ERR_ARGUMENT);
    expect_Z(session.handle(), small_public_key(), alice(), kSmallZ);
}

}  // namespace zokecc_test::user_info_test

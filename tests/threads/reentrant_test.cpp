// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Calls that may run on several threads at once run on eight: calls that work only on their arguments,
// on separate sessions, or only read the process-wide curve. ThreadSanitizer looks
// for data races when this program is built with it; the results are compared in every build.
//
// The caller must serialise draws, devices, installing a curve and calls on one session, so they
// are not tested here. Nor is a square root modulo a prime that is 1 modulo 8.
#include <gtest/gtest.h>
#include <zokecc/zokecc.h>

#include <cstring>

#include "tests/support/curves.h"
#include "tests/support/give_up.h"
#include "tests/support/model_hash.h"
#include "tests/support/points.h"
#include "tests/support/vector_file.h"
#include "tests/threads/support.h"

namespace zokecc_test::reentrant_test {

using zokecc_test::threads::kThreads;
using zokecc_test::threads::on_eight_threads;

namespace {

constexpr unsigned kRounds = 4;
constexpr size_t kL = 32;

// The example for the curve in sm2_sign.rsp.
VectorBlock signature_over(const std::string &curve_name) {
    for (const VectorBlock &block : read_vectors("sm2_sign.rsp"))
        if (block.text("Curve") == curve_name && block.text("Result") == "valid") return block;
    give_up(curve_name);
}

mint scalar(unsigned index) {
    const ByteString bytes = test_bytes(31, 100 + index);
    return mint_from_hex(to_hex(bytes));
}

ByteString digest_of(const ByteString &message, bool sm3) {
    ByteString out(32);
    if (sm3) {
        ByteString copy = message;
        const sm3_msg record{copy.data(), 0, static_cast<uint32_t>(copy.size())};
        sm3_hash(&record, out.data());
    } else {
        mhash_sha256(message.data(), static_cast<uint32_t>(message.size()), out.data());
    }
    return out;
}

// k G by wNAF, without a table.
ecc_point window_product(const Curve &c, const mint &k) {
    ecc_point out{};
    ecc_unknown_point_mul(&k, &c.G, &c.a, nullptr, &c.p, &out);
    return out;
}

ECCrefPublicKey public_key_of(const Curve &c, const mint &d) {
    const ecc_point P = window_product(c, d);
    ECCrefPublicKey out{};
    out.bits = 8 * kL;
    const ByteString x = fixed_bytes(P.x, kL), y = fixed_bytes(P.y, kL);
    std::copy(x.begin(), x.end(), out.x);
    std::copy(y.begin(), y.end(), out.y);
    return out;
}
ECCrefPrivateKey private_key_of(const mint &d) {
    ECCrefPrivateKey out{};
    out.bits = 8 * kL;
    const ByteString bytes = fixed_bytes(d, kL);
    std::copy(bytes.begin(), bytes.end(), out.K);
    return out;
}

}  // namespace

TEST(Threads, IntegersHashesAndPointsOnTheirOwnArguments) {
    const Curve &c = curve("sm2p256v1");
    on_eight_threads([&](unsigned index) {
        for (unsigned round = 0; round < kRounds; ++round) {
            const mint k = scalar(index);
            mint inverse{}, one{}, square{}, root{};
            mint_EEA_algo(&k, &c.n, &inverse);
            mint_mod_mul(&k, &inverse, &c.n, &one);
            EXPECT_EQ(mint_to_hex(one), "1");
            mint_mod_mul(&k, &k, &c.p, &square);
            EXPECT_EQ(mint_sqrt(&square, &c.p, &root), 1);  // p is 3 modulo 4
            mint_mod_mul(&root, &root, &c.p, &root);
            EXPECT_TRUE(same_value(root, square));
            const ByteString message = test_bytes(300 + index, index + 1);
            EXPECT_EQ(digest_of(message, true), model_sm3(message));
            EXPECT_EQ(digest_of(message, false), model_sha256(message));
            const ecc_point P = window_product(c, k);
            EXPECT_EQ(ecc_test_point(&P, &c.a, &c.b, &c.p), 0);
        }
    });
}

TEST(Threads, KeysAreDerivedOnAllThreadsAlike) {
    const ByteString key = test_bytes(40, 1), text = test_bytes(60, 2), want = model_hmac_sm3(key, text);
    on_eight_threads([&](unsigned) {
        int any_session = 0;
        ByteString out(64);
        EXPECT_EQ(ZOK_KD_HMAC_SM3(&any_session, text.data(), 60, key.data(), 40, out.data(), 64), ZOK_OK);
        EXPECT_EQ(ByteString(out.begin(), out.begin() + 32), want);
        uint32_t length = 64;
        EXPECT_EQ(ZOK_KdHmacSha256(&any_session, key.data(), 40, text.data(), 60, out.data(), &length),
                  ZOK_OK);
        EXPECT_EQ(ByteString(out.begin(), out.begin() + 32), model_hmac_sha256(key, text));
    });
}

TEST(Threads, SessionsOfTheirOwnVerifyAndDecideAlike) {
    const VectorBlock given = signature_over("sm2p256v1");
    const Curve &c = curve("sm2p256v1");
    ECCrefPublicKey pub{};
    pub.bits = 8 * kL;
    ECCSignature sig{};
    auto put = [&given](const char *name, uint8_t *field) {
        const ByteString bytes = fixed_bytes(given.number(name), kL);
        std::copy(bytes.begin(), bytes.end(), field);
    };
    put("Px", pub.x);
    put("Py", pub.y);
    put("r", sig.r);
    put("s", sig.s);
    const ByteString e = fixed_bytes(given.number("e"), kL);
    on_eight_threads([&](unsigned index) {
        const Session session(c, given.text("Hash") == "SM3" ? HASH_ALG_SM3 : HASH_ALG_SHA256);
        ECCSignature mine = sig;
        if (index % 2 == 1) mine.s[31] ^= 1;
        for (unsigned round = 0; round < kRounds; ++round)
            EXPECT_EQ(SDF_ExternalVerify_ECC(session.handle(), ZOK_ALG_SM2_SIGN, &pub, e.data(), kL, &mine),
                      index % 2 == 1 ? ZOK_ERR_VERIFY : ZOK_OK);
    });
}

TEST(Threads, DevicesOfTheirOwn) {
    const CurvePara record = curve("secp192r1").record(HASH_ALG_SM3);
    on_eight_threads([&](unsigned) {
        void *device = nullptr, *session = nullptr;
        EXPECT_EQ(SDF_OpenDevice(&device), ZOK_OK);
        EXPECT_EQ(SDF_OpenSession(device, &session), ZOK_OK);
        EXPECT_EQ(ZOK_CurveParaCfg(session, record.type, &record), ZOK_OK);
        DEVICEINFO info;
        EXPECT_EQ(SDF_GetDeviceInfo(session, &info), ZOK_OK);
        EXPECT_EQ(ZOK_CurveVerify(record.type, &record), ZOK_OK);
        EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
        EXPECT_EQ(SDF_CloseDevice(device), ZOK_OK);
    });
}

TEST(Threads, SessionsOfTheirOwnAgreeOnSecrets) {
    const Curve &c = curve("secp256r1");
    const mint d = scalar(0), r = scalar(1);
    const ECCrefPublicKey P = public_key_of(c, d), R = public_key_of(c, r);
    std::vector<ByteString> secrets(kThreads, ByteString(kL)), keys(kThreads, ByteString(48));
    on_eight_threads([&](unsigned index) {
        const Session session(c);
        const ECCrefPrivateKey own = private_key_of(d), temporary = private_key_of(r);
        EXPECT_EQ(ZOK_ExternalEcdhKeyAgreement(session.handle(), &own, &R, secrets[index].data()), ZOK_OK);
        ByteString Z(32, 7);
        KeyAgreementResult result{};
        result.key = keys[index].data();
        EXPECT_EQ(ZOK_GenerateKeyWithECC(session.handle(), 384, Z.data(), 32, Z.data(), 32, &own, &temporary,
                                         &P, &R, &result),
                  ZOK_OK);
    });
    for (unsigned index = 1; index < kThreads; ++index) {
        EXPECT_EQ(secrets[index], secrets[0]);
        EXPECT_EQ(keys[index], keys[0]);
    }
    EXPECT_NE(secrets[0], ByteString(kL));
}

TEST(Threads, DecryptionOnSessionsOfTheirOwn) {
    const Curve &c = curve("sm2p256v1");
    const mint d = scalar(2);
    const ECCrefPublicKey pub = public_key_of(c, d);
    const ByteString message = test_bytes(50, 9);
    ByteString cipher(message.size() + 2 * kL + 33);
    uint32_t length = 0;
    {
        const Session session(c);
        ASSERT_EQ(ZOK_ExternalEncrytp_ECC(session.handle(), &pub, message.data(), 50, cipher.data(), &length),
                  ZOK_OK);
    }
    on_eight_threads([&](unsigned) {
        const Session session(c);
        const ECCrefPrivateKey priv = private_key_of(d);
        ByteString plain(message.size());
        uint32_t size = 0;
        EXPECT_EQ(
            ZOK_ExternalDecrypt_ECC(session.handle(), &priv, cipher.data(), length, plain.data(), &size),
            ZOK_OK);
        EXPECT_EQ(plain, message);
    });
}

TEST(Threads, TheCurveOfTheProcessIsReadByAll) {
    const Curve &c = curve("sm2p256v1");
    const ecc_curve_bytes record = c.legacy_record();
    ASSERT_EQ(Curve_Init(&record), 0);
    on_eight_threads([&](unsigned index) {
        ByteString d = fixed_bytes(scalar(index), kL);
        const ecc_scalar key{d.data(), kL};
        ecc_point_bytes Q{}, back{};
        EXPECT_EQ(Ecc_GenPubKey(&key, &Q), 0);
        const ecc_point want = window_product(c, scalar(index));
        EXPECT_EQ(ByteString(Q.x, Q.x + kL), fixed_bytes(want.x, kL));
        uint8_t octets[33];
        EXPECT_EQ(ecc_PointToByte(&Q, 1, octets, 33), 33);
        EXPECT_EQ(ecc_ByteToPoint(octets, 33, &back), 0);
        EXPECT_EQ(std::memcmp(&back, &Q, sizeof Q), 0);
        ByteString secret(kL), text = test_bytes(32, index);
        EXPECT_EQ(Ecdh_KeyExChg(&key, &Q, secret.data(), kL), 32);
        const sm3_msg message{text.data(), 0, 32};
        EXPECT_EQ(Ecdsa_DigitalVeriy(&Q, &message, &Q, HASH_ALG_SM3), 0);
        EXPECT_NE(sm2_DigitalVeriy(&Q, &message, &Q, text.data(), HASH_ALG_SM3), 0);
    });
}

}  // namespace zokecc_test::reentrant_test

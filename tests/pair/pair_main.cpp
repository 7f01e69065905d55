// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The default and the hardened build work together: what one signs, encrypts or agrees on the other
// verifies, decrypts and agrees on, in both directions, on all curves.
//
//     pair_tests DEFAULT.so HARDENED.so [OPTIONS OF GOOGLETEST]
#include <gtest/gtest.h>
#include <sys/random.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>
#include <tuple>
#include <utility>

#include "tests/pair/build.h"

namespace zokecc_test::pair {

namespace {

constexpr int kRounds = 4;
constexpr uint32_t kKeyBytes = 48;
constexpr uint8_t kId[] = "1234567812345678";
constexpr uint8_t kPeerId[] = "the other one";
constexpr uint32_t kIdBytes = sizeof kId - 1, kPeerIdBytes = sizeof kPeerId - 1;
constexpr uint32_t kHashes[] = {HASH_ALG_SM3, HASH_ALG_SHA256};

std::unique_ptr<Build> builds[2];

std::string hex(const uint8_t *bytes, size_t count) {
    std::string out;
    for (size_t i = 0; i < count; ++i) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", bytes[i]);
        out += digits;
    }
    return out;
}

// One build acts, the other responds.
class PairOf : public testing::TestWithParam<std::tuple<int, bool>> {
protected:
    // Starts with a number below p without a leading zero byte, which the multiplicative schemes would lose.
    void SetUp() override {
        for (size_t i = 0; i < sizeof message; ++i) message[i] = static_cast<uint8_t>(0x35 + 61 * i);
    }

    const ReadyCurve &curve = kReadyCurves[std::get<0>(GetParam())];
    const uint32_t L = curve.L();
    const bool is_reversed = std::get<1>(GetParam());
    const Side first{*builds[is_reversed ? 1 : 0], curve}, second{*builds[is_reversed ? 0 : 1], curve};
    const Key own{first, L}, peer{second, L};
    uint8_t message[70];
};

class SessionPair : public PairOf {};
class ProcessPair : public PairOf {
protected:
    bool has_curve() const { return curve.process != nullptr; }
    sm3_msg text() { return {message, 0, sizeof message}; }
};

TEST_P(SessionPair, SignatureOfADigestVerifies) {
    for (int i = 0; i < kRounds; ++i)
        for (const uint32_t algorithm : {ZOK_ALG_SM2_SIGN, ZOK_ALG_ECDSA_SIGN})
            for (const Key *key : {&own, &peer}) {
                ECCSignature sig{};
                ASSERT_EQ(first.calls.SDF_ExternalSign_ECC(first.session, algorithm, &key->priv, message + i,
                                                           L, &sig),
                          ZOK_OK);
                EXPECT_EQ(second.calls.SDF_ExternalVerify_ECC(second.session, algorithm, &key->pub,
                                                              message + i, L, &sig),
                          ZOK_OK)
                    << hex(key->priv.K, L) << ' ' << hex(sig.r, L) << ' ' << hex(sig.s, L);
            }
}

TEST_P(SessionPair, SignatureOfAMessageVerifies) {
    for (const uint32_t algorithm : {ZOK_ALG_SM2_SIGN, ZOK_ALG_ECDSA_SIGN})
        for (const Key *key : {&own, &peer}) {
            ECCSignature sig{};
            ASSERT_EQ(first.calls.ZOK_ExternalSignHash_ECC(first.session, algorithm, &key->priv, message,
                                                           sizeof message, kId, kIdBytes, &sig),
                      ZOK_OK);
            EXPECT_EQ(second.calls.ZOK_ExternalVerifyHash_ECC(second.session, algorithm, &key->pub, message,
                                                              sizeof message, kId, kIdBytes, &sig),
                      ZOK_OK);
        }
}

TEST_P(SessionPair, CiphertextIsDecrypted) {
    for (int i = 0; i < kRounds; ++i) {
        uint8_t flat[sizeof message + 97], plain[sizeof message + 32];
        uint32_t size = 0, plain_size = 0;
        ASSERT_EQ(first.calls.ZOK_ExternalEncrytp_ECC(first.session, &peer.pub, message, sizeof message, flat,
                                                      &size),
                  ZOK_OK);
        EXPECT_EQ(
            second.calls.ZOK_ExternalDecrypt_ECC(second.session, &peer.priv, flat, size, plain, &plain_size),
            ZOK_OK);
        EXPECT_EQ(hex(plain, plain_size), hex(message, sizeof message));
    }
}

TEST_P(SessionPair, RecordIsDecrypted) {
    for (const uint32_t algorithm : {ZOK_ALG_SM2_ENCRYPT, ZOK_ALG_MULTIPLICATIVE}) {
        ECCCipher cipher{};
        uint8_t plain[64];
        uint32_t size = 0;
        ASSERT_EQ(
            first.calls.SDF_ExternalEncrytp_ECC(first.session, algorithm, &peer.pub, message, L, &cipher),
            ZOK_OK);
        EXPECT_EQ(second.calls.SDF_ExternalDecrypt_ECC(second.session, algorithm, &peer.priv, &cipher, plain,
                                                       &size),
                  ZOK_OK);
        EXPECT_EQ(hex(plain, size), hex(message, L));
    }
}

TEST_P(SessionPair, SecretsAreTheSame) {
    uint8_t one[32], other[32];
    ASSERT_EQ(first.calls.ZOK_ExternalEcdhKeyAgreement(first.session, &own.priv, &peer.pub, one), ZOK_OK);
    ASSERT_EQ(second.calls.ZOK_ExternalEcdhKeyAgreement(second.session, &peer.priv, &own.pub, other), ZOK_OK);
    EXPECT_EQ(hex(one, L), hex(other, L));
}

// The results of both sides of an agreement.
struct Agreed {
    uint8_t key_of_initiator[kKeyBytes] = {}, key_of_responder[kKeyBytes] = {};
    KeyAgreementResult initiator{{}, {}, key_of_initiator}, responder{{}, {}, key_of_responder};

    void expect_same() const {
        EXPECT_EQ(hex(key_of_initiator, kKeyBytes), hex(key_of_responder, kKeyBytes));
        EXPECT_EQ(hex(initiator.check, 32), hex(responder.send, 32));
        EXPECT_EQ(hex(initiator.send, 32), hex(responder.check, 32));
        EXPECT_NE(hex(key_of_initiator, kKeyBytes), std::string(2 * kKeyBytes, '0'));
    }
};

TEST_P(SessionPair, AgreementWithIdentitiesGivesOneKey) {
    for (const bool at_once : {false, true}) {
        Agreed agreed;
        ECCrefPrivateKey rA{}, rB{};
        ECCrefPublicKey RA{}, RB{};
        ASSERT_EQ(first.calls.ZOK_SM2_GenerateAgreementDataWithECC(first.session, &rA, &RA), ZOK_OK);
        if (at_once) {
            ASSERT_EQ(second.calls.ZOK_SM2_GenerateAgreementDataAndKeyWithECC(
                          second.session, 8 * kKeyBytes, kId, kIdBytes, kPeerId, kPeerIdBytes, &peer.priv,
                          &own.pub, &RA, &RB, &agreed.responder),
                      ZOK_OK);
        } else {
            ASSERT_EQ(second.calls.ZOK_SM2_GenerateResponseTmpKeyWithECC(second.session, &rB, &RB), ZOK_OK);
            ASSERT_EQ(second.calls.ZOK_SM2_GenerateResponseWithECC(
                          second.session, 8 * kKeyBytes, kId, kIdBytes, kPeerId, kPeerIdBytes, &peer.priv,
                          &own.pub, &RA, &rB, &RB, &agreed.responder),
                      ZOK_OK);
        }
        ASSERT_EQ(first.calls.ZOK_SM2_GenerateKeyWithECC(first.session, 8 * kKeyBytes, kId, kIdBytes, kPeerId,
                                                         kPeerIdBytes, &own.priv, &rA, &RA, &peer.pub, &RB,
                                                         &agreed.initiator),
                  ZOK_OK);
        agreed.expect_same();
    }
}

TEST_P(SessionPair, AgreementWithGivenZGivesOneKey) {
    const uint8_t *const ZA = message, *const ZB = message + 32;
    for (const bool at_once : {false, true}) {
        Agreed agreed;
        ECCrefPrivateKey rA{}, rB{};
        ECCrefPublicKey RA{}, RB{};
        ASSERT_EQ(first.calls.ZOK_GenerateAgreementDataWithECC(first.session, &rA, &RA), ZOK_OK);
        if (at_once) {
            ASSERT_EQ(second.calls.ZOK_GenerateAgreementDataAndKeyWithECC(second.session, 8 * kKeyBytes, ZA,
                                                                          32, ZB, 32, &peer.priv, &own.pub,
                                                                          &RA, &RB, &agreed.responder),
                      ZOK_OK);
        } else {
            ASSERT_EQ(second.calls.ZOK_GenerateResponseTmpKeyWithECC(second.session, &rB, &RB), ZOK_OK);
            ASSERT_EQ(second.calls.ZOK_GenerateResponseWithECC(second.session, 8 * kKeyBytes, ZA, 32, ZB, 32,
                                                               &peer.priv, &own.pub, &RA, &rB, &RB,
                                                               &agreed.responder),
                      ZOK_OK);
        }
        ASSERT_EQ(first.calls.ZOK_GenerateKeyWithECC(first.session, 8 * kKeyBytes, ZA, 32, ZB, 32, &own.priv,
                                                     &rA, &peer.pub, &RB, &agreed.initiator),
                  ZOK_OK);
        agreed.expect_same();
    }
}

// ---- The curve of the process

TEST_P(ProcessPair, PublicKeysAreTheSame) {
    for (int i = 0; i < kRounds; ++i) {
        uint8_t bytes[32];
        ecc_scalar made{bytes, L};
        ecc_point_bytes one{}, other{}, of_first{}, of_second{};
        ASSERT_EQ(first.calls.Ecc_KeyPair_Gen(&made, &one, 0), 0);
        ASSERT_EQ(second.calls.Ecc_GenPubKey(&made, &other), 0);
        EXPECT_EQ(hex(one.x, L) + hex(one.y, L), hex(other.x, L) + hex(other.y, L));
        ASSERT_EQ(first.calls.sm2_RPoint(bytes, made.length, &of_first), 0);
        ASSERT_EQ(second.calls.sm2_RPoint(bytes, made.length, &of_second), 0);
        EXPECT_EQ(std::memcmp(&of_first, &of_second, sizeof of_first), 0);
    }
}

TEST_P(ProcessPair, SignaturesVerify) {
    const sm3_msg signed_text = text();
    for (int i = 0; i < kRounds; ++i)
        for (const uint32_t hash : kHashes) {
            ecc_point_bytes sig{};
            ASSERT_EQ(first.calls.Ecdsa_DigitalSign(&own.scalar, &signed_text, &sig, hash), 0);
            EXPECT_EQ(second.calls.Ecdsa_DigitalVeriy(&own.point, &signed_text, &sig, hash), 1);
            ASSERT_EQ(first.calls.sm2_DigitalSign(&own.scalar, &signed_text, message, &sig, hash), 0);
            EXPECT_EQ(second.calls.sm2_DigitalVeriy(&own.point, &signed_text, &sig, message, hash), 0);
        }
}

// sm2_Decry returns -1 with the plaintext written.
TEST_P(ProcessPair, CiphertextsAreDecrypted) {
    const sm3_msg plain = text();
    for (const uint32_t hash : kHashes) {
        uint8_t cipher_bytes[sizeof message + 97], out_bytes[sizeof message];
        sm3_msg cipher{cipher_bytes, 0, 0}, out{out_bytes, 0, 0};
        ASSERT_EQ(first.calls.sm2_Encry(&peer.point, &plain, &cipher, hash), 0);
        EXPECT_EQ(second.calls.sm2_Decry(&peer.scalar, &cipher, &out, hash), -1);
        EXPECT_EQ(hex(out_bytes, out.len_low), hex(message, sizeof message));
    }
    uint8_t cipher[96], number[33];
    const int32_t size = first.calls.Eces_Encry(&peer.point, message, L, cipher, sizeof cipher);
    ASSERT_GT(size, 0);
    const int32_t length = second.calls.Eces_Decry(&peer.scalar, cipher, static_cast<uint32_t>(size), number);
    ASSERT_GT(length, 0);
    EXPECT_EQ(hex(number, static_cast<size_t>(length)), hex(message, L));
}

TEST_P(ProcessPair, SecretsAreTheSame) {
    uint8_t one[32], other[32];
    ASSERT_EQ(first.calls.Ecdh_KeyExChg(&own.scalar, &peer.point, one, L), static_cast<int32_t>(L));
    ASSERT_EQ(second.calls.Ecdh_KeyExChg(&peer.scalar, &own.point, other, L), static_cast<int32_t>(L));
    EXPECT_EQ(hex(one, L), hex(other, L));
}

TEST_P(ProcessPair, ExchangeGivesOneKey) {
    constexpr int32_t kSize = kKeyBytes;
    const Key temporary(first, L), answer(second, L);
    const uint8_t *const ZA = message, *const ZB = message + 32;
    for (const uint32_t hash : kHashes) {
        ecc_point_bytes RA{}, RB{};
        uint8_t S1[32], SA[32], S2[32], SB[32], K[3][kKeyBytes];
        ASSERT_EQ(first.calls.sm2_KeyExChg_A1_3(&temporary.scalar, &RA), 0);
        ASSERT_EQ(second.calls.sm2_KeyExChg_B1_10(&peer.scalar, &own.point, &RA, ZA, ZB, kSize, &RB, S2, SB,
                                                  K[0], hash),
                  0);
        ASSERT_EQ(first.calls.sm2_KeyExChg_A4_10(&temporary.scalar, &RA, &own.scalar, &peer.point, &RB, ZA,
                                                 ZB, kSize, S1, SA, K[1], hash),
                  0);
        EXPECT_EQ(hex(K[0], kKeyBytes), hex(K[1], kKeyBytes));
        EXPECT_EQ(hex(S1, 32), hex(SB, 32));
        EXPECT_EQ(hex(SA, 32), hex(S2, 32));
        // The call for either side.
        ASSERT_EQ(first.calls.sm2_KeyExChg(SM2_ROLE_INITIATOR, &temporary.scalar, &RA, &answer.point,
                                           &own.scalar, &peer.point, ZA, ZB, kSize, S1, SA, K[1], hash),
                  0);
        ASSERT_EQ(second.calls.sm2_KeyExChg(SM2_ROLE_RESPONDER, &answer.scalar, &answer.point, &RA,
                                            &peer.scalar, &own.point, ZA, ZB, kSize, S2, SB, K[2], hash),
                  0);
        EXPECT_EQ(hex(K[1], kKeyBytes), hex(K[2], kKeyBytes));
    }
}

std::string name_of(const testing::TestParamInfo<std::tuple<int, bool>> &tested) {
    return std::string(kReadyCurves[std::get<0>(tested.param)].name) +
           (std::get<1>(tested.param) ? "_hardened_first" : "_default_first");
}

// brainpoolP160r1 has no process-wide record.
const int kOfSessions[] = {0, 1, 2, 3, 4, 5, 6, 7, 8}, kOfTheProcess[] = {0, 1, 2, 3, 4, 6, 7, 8};
INSTANTIATE_TEST_SUITE_P(Curves, SessionPair,
                         testing::Combine(testing::ValuesIn(kOfSessions), testing::Bool()), name_of);
INSTANTIATE_TEST_SUITE_P(Curves, ProcessPair,
                         testing::Combine(testing::ValuesIn(kOfTheProcess), testing::Bool()), name_of);

// The two are not the same file: only the default build accepts the key 0.
TEST(BothBuilds, AreTwo) {
    uint8_t zero[32] = {};
    const ecc_scalar key{zero, sizeof zero};
    ecc_point_bytes out{};
    for (const auto &build : builds) ASSERT_EQ(build->Curve_Init(&zokecc_sm2p256v1_process), 0);
    EXPECT_EQ(builds[0]->Ecc_GenPubKey(&key, &out), 0);
    EXPECT_EQ(builds[1]->Ecc_GenPubKey(&key, &out), -1);
}

}  // namespace

}  // namespace zokecc_test::pair

// Both builds draw from these, the same in every run: otherwise one product in some hundred thousand of the
// default build would be wrong by chance.
namespace {

uint64_t state = 1;

uint64_t drawn() {
    uint64_t x = state += 0x9E3779B97F4A7C15u;
    x = (x ^ x >> 30) * 0xBF58476D1CE4E5B9u;
    x = (x ^ x >> 27) * 0x94D049BB133111EBu;
    return x ^ x >> 31;
}

}  // namespace

extern "C" {

int rand() noexcept { return static_cast<int>(drawn() >> 33); }
void srand(unsigned) noexcept {}
time_t time(time_t *out) noexcept {
    if (out != nullptr) *out = 1700000000;
    return 1700000000;
}
ssize_t getrandom(void *out, size_t size, unsigned) {
    for (size_t i = 0; i < size; ++i) static_cast<uint8_t *>(out)[i] = static_cast<uint8_t>(drawn());
    return static_cast<ssize_t>(size);
}

}  // extern "C"

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    if (argc != 3) {
        std::fputs("usage: pair_tests DEFAULT.so HARDENED.so\n", stderr);
        return 2;
    }
    using zokecc_test::pair::Build;
    for (int i = 0; i < 2; ++i) zokecc_test::pair::builds[i] = std::make_unique<Build>(argv[i + 1]);
    return RUN_ALL_TESTS();
}

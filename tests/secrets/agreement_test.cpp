// What Diffie-Hellman and the key exchange leave behind.
#include "tests/secrets/scene.h"

namespace zokecc_test::agreement_test {

using namespace secrets;

namespace {

constexpr int32_t kKeyBytes = 48;
constexpr uint32_t kInitiator = 1;
const uint8_t ZA[32] = {1, 2, 3}, ZB[32] = {4, 5, 6};
const uint8_t identity[] = "1234567812345678";
constexpr uint32_t kIdentityBytes = 16;

uint8_t shared_secret[64];
uint8_t first_value[32], second_value[32];
uint8_t key[kKeyBytes];
ecc_point_bytes R_written;
ECCrefPublicKey R_record;
KeyAgreementResult result;

}  // namespace

class Agreement : public Secrecy {
protected:
    // The secrets of the own side: its keys, the point, and the key that was made of it.
    Secrets secrets_of(const KeyPair &used) const {
        Secrets out = s.shared(s.exchanged(used));
        out.push_back(s.private_key());
        out.push_back(secret("the temporary key", used.d));
        out.push_back({"the agreed key", ByteString(key, key + kKeyBytes)});
        return out;
    }
    Secrets own_secrets() const { return secrets_of(s.own_temporary); }
    Secrets secrets_of(const mint &drawn) const {
        KeyPair used = s.own_temporary;
        used.d = drawn;
        used.Q = s.multiple(drawn, s.curve.G);
        return secrets_of(used);
    }
    // A call of the session, with the area for the key in place.
    void expect_call_clean(const std::string &name, const std::function<uint32_t()> &call,
                           bool draws = false) {
        uint32_t status = 1;
        expect_nothing_left(
            name,
            [&] {
                result.key = key;
                R_record = s.own_temporary.public_record;
                status = call();
            },
            [&](const auto &drawn) { return draws ? secrets_of(drawn.at(0)) : own_secrets(); });
        EXPECT_EQ(status, ZOK_OK) << name;
    }
    void expect_legacy_clean(const std::string &name, const std::function<int32_t()> &call,
                             bool draws = false) {
        int32_t status = -1;
        expect_nothing_left(
            name, [&] { status = call(); },
            [&](const auto &drawn) { return draws ? secrets_of(drawn.at(0)) : own_secrets(); });
        EXPECT_EQ(status, 0) << name;
    }
    const KeyPair &own = s.own, &temporary = s.own_temporary, &peer = s.peer, &theirs = s.peer_temporary;
};

TEST_P(Agreement, LegacyDiffieHellman) {
    int32_t size = -1;
    expect_nothing_left(
        "Ecdh_KeyExChg",
        [&] { size = Ecdh_KeyExChg(&own.scalar, &peer.point, shared_secret, sizeof shared_secret); },
        [&](const auto &) {
            Secrets out = s.shared(s.multiple(own.d, peer.Q));
            out.push_back(s.private_key());
            return out;
        });
    EXPECT_EQ(size, static_cast<int32_t>(s.L));
}

TEST_P(Agreement, SessionDiffieHellman) {
    uint32_t status = 1;
    expect_nothing_left(
        "ZOK_ExternalEcdhKeyAgreement",
        [&] {
            status = ZOK_ExternalEcdhKeyAgreement(s.handle(), &own.private_record, &peer.public_record,
                                                  shared_secret);
        },
        [&](const auto &) {
            Secrets out = s.shared(s.multiple(own.d, peer.Q));
            out.push_back(s.private_key());
            return out;
        });
    EXPECT_EQ(status, ZOK_OK);
}

TEST_P(Agreement, LegacyExchange) {
    expect_nothing_left(
        "sm2_KeyExChg_A1_3", [&] { sm2_KeyExChg_A1_3(&temporary.scalar, &R_written); },
        [&](const auto &) { return Secrets{s.temporary_key()}; });
    expect_legacy_clean("sm2_KeyExChg_A4_10", [&] {
        return sm2_KeyExChg_A4_10(&temporary.scalar, &temporary.point, &own.scalar, &peer.point,
                                  &theirs.point, ZA, ZB, kKeyBytes, first_value, second_value, key,
                                  HASH_ALG_SM3);
    });
    expect_legacy_clean("sm2_KeyExChg", [&] {
        return sm2_KeyExChg(kInitiator, &temporary.scalar, &temporary.point, &theirs.point, &own.scalar,
                            &peer.point, ZA, ZB, kKeyBytes, first_value, second_value, key, HASH_ALG_SM3);
    });
    expect_legacy_clean(
        "sm2_KeyExChg_B1_10",
        [&] {
            return sm2_KeyExChg_B1_10(&own.scalar, &peer.point, &theirs.point, ZA, ZB, kKeyBytes, &R_written,
                                      first_value, second_value, key, HASH_ALG_SM3);
        },
        true);
}

TEST_P(Agreement, SessionWithGivenZ) {
    expect_call_clean("ZOK_GenerateKeyWithECC", [&] {
        return ZOK_GenerateKeyWithECC(s.handle(), 8 * kKeyBytes, ZA, 32, ZB, 32, &own.private_record,
                                      &temporary.private_record, &peer.public_record, &theirs.public_record,
                                      &result);
    });
    expect_call_clean("ZOK_GenerateResponseWithECC", [&] {
        return ZOK_GenerateResponseWithECC(s.handle(), 8 * kKeyBytes, ZA, 32, ZB, 32, &own.private_record,
                                           &peer.public_record, &theirs.public_record,
                                           &temporary.private_record, &R_record, &result);
    });
    expect_call_clean(
        "ZOK_GenerateAgreementDataAndKeyWithECC",
        [&] {
            return ZOK_GenerateAgreementDataAndKeyWithECC(s.handle(), 8 * kKeyBytes, ZA, 32, ZB, 32,
                                                          &own.private_record, &peer.public_record,
                                                          &theirs.public_record, &R_record, &result);
        },
        true);
}

TEST_P(Agreement, SessionWithIdentities) {
    expect_call_clean("ZOK_SM2_GenerateKeyWithECC", [&] {
        return ZOK_SM2_GenerateKeyWithECC(s.handle(), 8 * kKeyBytes, identity, kIdentityBytes, identity,
                                          kIdentityBytes, &own.private_record, &temporary.private_record,
                                          &temporary.public_record, &peer.public_record,
                                          &theirs.public_record, &result);
    });
    expect_call_clean("ZOK_SM2_GenerateResponseWithECC", [&] {
        return ZOK_SM2_GenerateResponseWithECC(s.handle(), 8 * kKeyBytes, identity, kIdentityBytes, identity,
                                               kIdentityBytes, &own.private_record, &peer.public_record,
                                               &theirs.public_record, &temporary.private_record, &R_record,
                                               &result);
    });
    expect_call_clean(
        "ZOK_SM2_GenerateAgreementDataAndKeyWithECC",
        [&] {
            return ZOK_SM2_GenerateAgreementDataAndKeyWithECC(
                s.handle(), 8 * kKeyBytes, identity, kIdentityBytes, identity, kIdentityBytes,
                &own.private_record, &peer.public_record, &theirs.public_record, &R_record, &result);
        },
        true);
}

INSTANTIATE_TEST_SUITE_P(Agreeing, Agreement, testing::ValuesIn(scene_curves()));

}  // namespace zokecc_test::agreement_test

// What signatures and key pairs leave behind.
#include "tests/secrets/scene.h"

namespace zokecc_test::signing_test {

using namespace secrets;

namespace {

uint8_t text[] = "message digest";
const sm3_msg message = {text, 0, sizeof text - 1};
uint8_t Z[32] = {1, 2, 3};
uint8_t digest[32] = {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88, 0x99};
const uint8_t identity[] = "1234567812345678";

ecc_point_bytes legacy_signature;
ECCSignature signature;
ecc_point_bytes point;
ecc_scalar made;
uint8_t made_bytes[32];
ECCrefPublicKey public_key;
ECCrefPrivateKey private_key;

mint number(const uint8_t *bytes, size_t size) {
    mint out{};
    octetstring_to_mint(bytes, static_cast<uint32_t>(size), &out);
    return out;
}

}  // namespace

TEST_P(Secrecy, LegacySm2Signature) {
    int32_t status = -1;
    expect_nothing_left(
        "sm2_DigitalSign",
        [&] { status = sm2_DigitalSign(&s.own.scalar, &message, Z, &legacy_signature, HASH_ALG_SM3); },
        [&](const auto &drawn) { return s.sm2_nonce(drawn.at(0), number(legacy_signature.x, s.L)); });
    EXPECT_EQ(status, 0);
}

TEST_P(Secrecy, LegacyEcdsaSignature) {
    int32_t status = -1;
    expect_nothing_left(
        "Ecdsa_DigitalSign",
        [&] { status = Ecdsa_DigitalSign(&s.own.scalar, &message, &legacy_signature, HASH_ALG_SHA256); },
        [&](const auto &drawn) { return s.ecdsa_nonce(drawn.at(0)); });
    EXPECT_EQ(status, 0);
}

TEST_P(Secrecy, SessionSm2Signature) {
    uint32_t status = 1;
    expect_nothing_left(
        "SDF_ExternalSign_ECC, SM2",
        [&] {
            status = SDF_ExternalSign_ECC(s.handle(), ZOK_ALG_SM2_SIGN, &s.own.private_record, digest,
                                          sizeof digest, &signature);
        },
        [&](const auto &drawn) { return s.sm2_nonce(drawn.at(0), number(signature.r, s.L)); });
    EXPECT_EQ(status, ZOK_OK);
}

TEST_P(Secrecy, SessionEcdsaSignature) {
    uint32_t status = 1;
    expect_nothing_left(
        "SDF_ExternalSign_ECC, ECDSA",
        [&] {
            status = SDF_ExternalSign_ECC(s.handle(), ZOK_ALG_ECDSA_SIGN, &s.own.private_record, digest,
                                          sizeof digest, &signature);
        },
        [&](const auto &drawn) { return s.ecdsa_nonce(drawn.at(0)); });
    EXPECT_EQ(status, ZOK_OK);
}

TEST_P(Secrecy, SessionSignatureOfAMessage) {
    uint32_t status = 1;
    expect_nothing_left(
        "ZOK_ExternalSignHash_ECC",
        [&] {
            status = ZOK_ExternalSignHash_ECC(s.handle(), ZOK_ALG_SM2_SIGN, &s.own.private_record, text,
                                              sizeof text, identity, 16, &signature);
        },
        [&](const auto &drawn) { return s.sm2_nonce(drawn.at(0), number(signature.r, s.L)); });
    EXPECT_EQ(status, ZOK_OK);
}

TEST_P(Secrecy, LegacyKeyPair) {
    int32_t status = -1;
    expect_nothing_left(
        "Ecc_KeyPair_Gen",
        [&] {
            made = {made_bytes, sizeof made_bytes};
            status = Ecc_KeyPair_Gen(&made, &point, 0);
        },
        [&](const auto &drawn) { return Secrets{secret("the new key", drawn.at(0))}; });
    EXPECT_EQ(status, 0);
}

TEST_P(Secrecy, LegacyPublicKey) {
    int32_t status = -1;
    expect_nothing_left(
        "Ecc_GenPubKey", [&] { status = Ecc_GenPubKey(&s.own.scalar, &point); },
        [&](const auto &) { return Secrets{s.private_key()}; });
    EXPECT_EQ(status, 0);
}

TEST_P(Secrecy, SessionKeyPair) {
    uint32_t status = 1;
    expect_nothing_left(
        "SDF_GenerateKeyPair_ECC",
        [&] {
            status = SDF_GenerateKeyPair_ECC(s.handle(), ZOK_ALG_SM2_KEY, static_cast<uint32_t>(8 * s.L),
                                             &public_key, &private_key);
        },
        [&](const auto &drawn) { return Secrets{secret("the new key", drawn.at(0))}; });
    EXPECT_EQ(status, ZOK_OK);
}

TEST_P(Secrecy, SessionTemporaryKeyPair) {
    uint32_t status = 1;
    expect_nothing_left(
        "ZOK_SM2_GenerateAgreementDataWithECC",
        [&] { status = ZOK_SM2_GenerateAgreementDataWithECC(s.handle(), &private_key, &public_key); },
        [&](const auto &drawn) { return Secrets{secret("the temporary key", drawn.at(0))}; });
    EXPECT_EQ(status, ZOK_OK);
}

INSTANTIATE_TEST_SUITE_P(Signing, Secrecy, testing::ValuesIn(scene_curves()));

}  // namespace zokecc_test::signing_test

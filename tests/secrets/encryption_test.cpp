// What encryption and decryption leave behind.
#include <cstring>

#include "tests/secrets/scene.h"

namespace zokecc_test::encryption_test {

using namespace secrets;

namespace {

constexpr uint32_t kMessageBytes = 40;
uint8_t text[kMessageBytes + 1] = "a message of forty bytes, not one less..";

uint8_t ciphertext[400], plaintext[400];
sm3_msg message = {text, 0, kMessageBytes};
sm3_msg cipher, plain;
ECCCipher record;
uint32_t length;

}  // namespace

// Secrets of encryption: the nonce, and the shared point. The recipient is the peer.
class Encryption : public Secrecy {
protected:
    Secrets secrets_of(const mint &k) const {
        Secrets out = s.shared(s.multiple(k, s.peer.Q));
        out.push_back(secret("the nonce", k));
        return out;
    }
    // Those of decryption, by the peer, of what begins with the point (x, y).
    Secrets secrets_of(const uint8_t *x, const uint8_t *y) const {
        ecc_point C1{};
        octetstring_to_mint(x, static_cast<uint32_t>(s.L), &C1.x);
        octetstring_to_mint(y, static_cast<uint32_t>(s.L), &C1.y);
        Secrets out = s.shared(s.multiple(s.peer.d, C1));
        out.push_back(secret("the private key", s.peer.d));
        return out;
    }
    void encrypt_and_decrypt_record(uint32_t algorithm);
};

TEST_P(Encryption, LegacySm2) {
    int32_t status = -1;
    expect_nothing_left(
        "sm2_Encry",
        [&] {
            cipher = {ciphertext, 0, sizeof ciphertext};
            status = sm2_Encry(&s.peer.point, &message, &cipher, HASH_ALG_SM3);
        },
        [&](const auto &drawn) { return secrets_of(drawn.at(0)); });
    EXPECT_EQ(status, 0);
    expect_nothing_left(
        "sm2_Decry",
        [&] {
            plain = {plaintext, 0, sizeof plaintext};
            sm2_Decry(&s.peer.scalar, &cipher, &plain, HASH_ALG_SM3);
        },
        [&](const auto &) { return secrets_of(ciphertext + 1, ciphertext + 1 + s.L); });
    EXPECT_EQ(std::memcmp(plaintext, text, kMessageBytes), 0);
}

TEST_P(Encryption, LegacyProduct) {
    const size_t width = 4 * s.curve.p.len;
    int32_t size = -1;
    expect_nothing_left(
        "Eces_Encry", [&] { size = Eces_Encry(&s.peer.point, text, 10, ciphertext, sizeof ciphertext); },
        [&](const auto &drawn) { return secrets_of(drawn.at(0)); });
    ASSERT_EQ(size, static_cast<int32_t>(3 * width));
    ecc_point C1{};
    octetstring_to_mint(ciphertext + 1, static_cast<uint32_t>(width), &C1.x);
    octetstring_to_mint(ciphertext + 1 + width, static_cast<uint32_t>(width), &C1.y);
    expect_nothing_left(
        "Eces_Decry",
        [&] { size = Eces_Decry(&s.peer.scalar, ciphertext, static_cast<uint32_t>(3 * width), plaintext); },
        [&](const auto &) {
            Secrets out = s.shared(s.multiple(s.peer.d, C1));
            out.push_back(secret("the private key", s.peer.d));
            return out;
        });
    EXPECT_EQ(size, 10);
    EXPECT_EQ(std::memcmp(plaintext, text, 10), 0);
}

void Encryption::encrypt_and_decrypt_record(uint32_t algorithm) {
    uint32_t status = 1;
    expect_nothing_left(
        "SDF_ExternalEncrytp_ECC",
        [&] {
            status = SDF_ExternalEncrytp_ECC(s.handle(), algorithm, &s.peer.public_record, text,
                                             static_cast<uint32_t>(s.L), &record);
        },
        [&](const auto &drawn) { return secrets_of(drawn.at(0)); });
    EXPECT_EQ(status, ZOK_OK);
    expect_nothing_left(
        "SDF_ExternalDecrypt_ECC",
        [&] {
            status = SDF_ExternalDecrypt_ECC(s.handle(), algorithm, &s.peer.private_record, &record,
                                             plaintext, &length);
        },
        [&](const auto &) { return secrets_of(record.x, record.y); });
    EXPECT_EQ(status, ZOK_OK);
}

TEST_P(Encryption, SessionSm2Record) { encrypt_and_decrypt_record(ZOK_ALG_SM2_ENCRYPT); }
TEST_P(Encryption, SessionProductRecord) { encrypt_and_decrypt_record(ZOK_ALG_MULTIPLICATIVE); }

TEST_P(Encryption, SessionByteString) {
    uint32_t status = 1;
    expect_nothing_left(
        "ZOK_ExternalEncrytp_ECC",
        [&] {
            status = ZOK_ExternalEncrytp_ECC(s.handle(), &s.peer.public_record, text, kMessageBytes,
                                             ciphertext, &length);
        },
        [&](const auto &drawn) { return secrets_of(drawn.at(0)); });
    EXPECT_EQ(status, ZOK_OK);
    const uint32_t size = length;
    expect_nothing_left(
        "ZOK_ExternalDecrypt_ECC",
        [&] {
            status = ZOK_ExternalDecrypt_ECC(s.handle(), &s.peer.private_record, ciphertext, size, plaintext,
                                             &length);
        },
        [&](const auto &) { return secrets_of(ciphertext + 1, ciphertext + 1 + s.L); });
    EXPECT_EQ(status, ZOK_OK);
    EXPECT_EQ(std::memcmp(plaintext, text, kMessageBytes), 0);
}

INSTANTIATE_TEST_SUITE_P(Encrypting, Encryption, testing::ValuesIn(scene_curves()));

}  // namespace zokecc_test::encryption_test

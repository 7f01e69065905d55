// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Arguments with which every session call except key agreement succeeds, on the small
// curve, with all outputs between guards.
#ifndef ZOKECC_TESTS_ROBUSTNESS_SESSION_ARGUMENTS_H
#define ZOKECC_TESTS_ROBUSTNESS_SESSION_ARGUMENTS_H

#include "tests/support/encryption_case.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::robustness {

struct SessionArguments {
    SessionArguments() = default;
    SessionArguments(const SessionArguments &) = delete;
    SessionArguments &operator=(const SessionArguments &) = delete;

    void *session = small_session();
    uint32_t key_algorithm = ZOK_ALG_SM2_KEY;
    uint32_t algorithm = ZOK_ALG_SM2_SIGN;
    uint32_t encryption = ZOK_ALG_SM2_ENCRYPT;
    uint32_t key_bits = 160;
    ByteString e_bytes = small_bytes(456), text = test_bytes(kSmallL), name = text_bytes("ALICE");
    ECCrefPrivateKey private_record = small_private_key();
    ECCrefPublicKey public_record = small_public_key();
    ECCSignature numbers = small_signature(226, 216);
    Encrypted encrypted = small_encryption(HASH_ALG_SM3, 77, text);
    ECCCipher cipher_record = zokecc_test::cipher_record(encrypted);
    ByteString flat_bytes = encrypted.flat();

    GuardedRecord<ECCrefPublicKey> pub_written;
    GuardedRecord<ECCrefPrivateKey> priv_written;
    GuardedRecord<ECCSignature> sig_written;
    GuardedRecord<ECCCipher> cipher_written;
    GuardedBuffer bytes_written{200};
    GuardedRecord<uint32_t> length_written;

    const ECCrefPrivateKey *priv = &private_record;
    const ECCrefPublicKey *pub = &public_record;
    const ECCSignature *sig = &numbers;
    const ECCCipher *cipher = &cipher_record;
    const uint8_t *flat = flat_bytes.data();
    uint32_t flat_len = static_cast<uint32_t>(flat_bytes.size());
    const uint8_t *e = e_bytes.data();
    uint32_t e_len = 20;
    const uint8_t *message = text.data();
    uint32_t message_len = kSmallL;
    const uint8_t *id = name.data();
    uint32_t id_len = 5;
    ECCrefPublicKey *pub_out = pub_written.get();
    ECCrefPrivateKey *priv_out = priv_written.get();
    ECCSignature *sig_out = sig_written.get();
    ECCCipher *cipher_out = cipher_written.get();
    uint8_t *out = bytes_written.data();
    uint32_t *out_len = length_written.get();

    // Arguments are those of SM2; this makes them ECDSA's and those of the multiplicative scheme.
    void use_other_algorithms() {
        key_algorithm = ZOK_ALG_ECDSA_KEY;
        algorithm = ZOK_ALG_ECDSA_SIGN;
        encryption = ZOK_ALG_MULTIPLICATIVE;
    }
    void use_digest(const ByteString &digest) {
        e_bytes = digest;
        e = e_bytes.data();
    }
    // Every value is bad, but no pointer is null.
    void spoil_values() {
        key_algorithm = algorithm = kUnknownAlgorithm;
        key_bits = 159;
        private_record = private_key(ByteString(64, 0xFF));
        numbers = small_signature(0, 0);
        id_len = message_len = 0xFFFFFFFFu;
        flat_len = 0;
    }
    void take_everything() {
        spoil_values();
        encryption = kUnknownAlgorithm;
        session = nullptr;
        priv = nullptr;
        pub = nullptr;
        sig = nullptr;
        cipher = nullptr;
        e = flat = message = id = nullptr;
        e_len = 77;
        pub_out = nullptr;
        priv_out = nullptr;
        sig_out = nullptr;
        cipher_out = nullptr;
        out = nullptr;
        out_len = nullptr;
    }

    uint32_t generate() {
        return SDF_GenerateKeyPair_ECC(session, key_algorithm, key_bits, pub_out, priv_out);
    }
    uint32_t sign() { return SDF_ExternalSign_ECC(session, algorithm, priv, e, e_len, sig_out); }
    uint32_t verify() { return SDF_ExternalVerify_ECC(session, algorithm, pub, e, e_len, sig); }
    uint32_t user_info() { return ZOK_GenerateUserInfo(session, pub, id, id_len, out, out_len); }
    uint32_t sign_hash() {
        return ZOK_ExternalSignHash_ECC(session, algorithm, priv, message, message_len, id, id_len, sig_out);
    }
    uint32_t verify_hash() {
        return ZOK_ExternalVerifyHash_ECC(session, algorithm, pub, message, message_len, id, id_len, sig);
    }
    uint32_t encrypt() {
        return SDF_ExternalEncrytp_ECC(session, encryption, pub, message, message_len, cipher_out);
    }
    uint32_t decrypt() { return SDF_ExternalDecrypt_ECC(session, encryption, priv, cipher, out, out_len); }
    uint32_t flat_encrypt() {
        return ZOK_ExternalEncrytp_ECC(session, pub, message, static_cast<int32_t>(message_len), out,
                                       out_len);
    }
    uint32_t flat_decrypt() { return ZOK_ExternalDecrypt_ECC(session, priv, flat, flat_len, out, out_len); }
    uint32_t ecdh() { return ZOK_ExternalEcdhKeyAgreement(session, priv, pub, out); }
    uint32_t temporary_1() { return ZOK_SM2_GenerateResponseTmpKeyWithECC(session, priv_out, pub_out); }
    uint32_t temporary_2() { return ZOK_SM2_GenerateAgreementDataWithECC(session, priv_out, pub_out); }
    uint32_t temporary_3() { return ZOK_GenerateResponseTmpKeyWithECC(session, priv_out, pub_out); }
    uint32_t temporary_4() { return ZOK_GenerateAgreementDataWithECC(session, priv_out, pub_out); }

    bool nothing_written() const {
        return pub_written.unchanged() && priv_written.unchanged() && sig_written.unchanged() &&
               cipher_written.unchanged() && bytes_written.untouched() && length_written.unchanged();
    }
};

using SessionCall = uint32_t (SessionArguments::*)();

struct NamedSessionCall {
    const char *name;
    SessionCall call;
};
inline constexpr NamedSessionCall kGenerate = {"SDF_GenerateKeyPair_ECC", &SessionArguments::generate};
inline constexpr NamedSessionCall kSign = {"SDF_ExternalSign_ECC", &SessionArguments::sign};
inline constexpr NamedSessionCall kVerify = {"SDF_ExternalVerify_ECC", &SessionArguments::verify};
inline constexpr NamedSessionCall kUserInfo = {"ZOK_GenerateUserInfo", &SessionArguments::user_info};
inline constexpr NamedSessionCall kSignHash = {"ZOK_ExternalSignHash_ECC", &SessionArguments::sign_hash};
inline constexpr NamedSessionCall kVerifyHash = {"ZOK_ExternalVerifyHash_ECC",
                                                 &SessionArguments::verify_hash};
inline constexpr NamedSessionCall kEncrypt = {"SDF_ExternalEncrytp_ECC", &SessionArguments::encrypt};
inline constexpr NamedSessionCall kDecrypt = {"SDF_ExternalDecrypt_ECC", &SessionArguments::decrypt};
inline constexpr NamedSessionCall kFlatEncrypt = {"ZOK_ExternalEncrytp_ECC", &SessionArguments::flat_encrypt};
inline constexpr NamedSessionCall kFlatDecrypt = {"ZOK_ExternalDecrypt_ECC", &SessionArguments::flat_decrypt};
inline constexpr NamedSessionCall kEcdh = {"ZOK_ExternalEcdhKeyAgreement", &SessionArguments::ecdh};
inline constexpr NamedSessionCall kTemporary[] = {
    {"ZOK_SM2_GenerateResponseTmpKeyWithECC", &SessionArguments::temporary_1},
    {"ZOK_SM2_GenerateAgreementDataWithECC", &SessionArguments::temporary_2},
    {"ZOK_GenerateResponseTmpKeyWithECC", &SessionArguments::temporary_3},
    {"ZOK_GenerateAgreementDataWithECC", &SessionArguments::temporary_4}};

inline std::vector<NamedSessionCall> all_session_calls() {
    return {kGenerate,   kSign,         kVerify,       kUserInfo,     kSignHash,
            kVerifyHash, kEncrypt,      kDecrypt,      kFlatEncrypt,  kFlatDecrypt,
            kEcdh,       kTemporary[0], kTemporary[1], kTemporary[2], kTemporary[3]};
}

}  // namespace zokecc_test::robustness

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "tests/secrets/calls.h"
#include "tests/secrets/scene.h"

namespace zokecc_test::secrets {

namespace {

const uint8_t identity[] = "1234567812345678";
constexpr uint32_t kIdentityBytes = 16;

Scene &s = scene;

template <uint32_t algorithm>
uint32_t sign(const Party &signer) {
    return SDF_ExternalSign_ECC(s.session, algorithm, &signer.private_record, s.text, 32, &s.out.signature);
}

template <uint32_t algorithm>
uint32_t sign_message(const Party &signer) {
    return ZOK_ExternalSignHash_ECC(s.session, algorithm, &signer.private_record, s.text, kMessageBytes,
                                    identity, kIdentityBytes, &s.out.signature);
}

template <uint32_t algorithm>
uint32_t encrypt() {
    return SDF_ExternalEncrytp_ECC(s.session, algorithm, &s.peer.public_record, s.message, s.L,
                                   &s.out.cipher);
}

uint32_t decrypt(uint32_t algorithm, const Party &reader, const ECCCipher &cipher) {
    return SDF_ExternalDecrypt_ECC(s.session, algorithm, &reader.private_record, &cipher, s.hidden.bytes,
                                   &s.hidden.length);
}

uint32_t decrypt_flat(const Party &reader, const uint8_t *cipher) {
    return ZOK_ExternalDecrypt_ECC(s.session, &reader.private_record, cipher, s.flat_length, s.hidden.bytes,
                                   &s.hidden.length);
}

uint32_t agree(const Party &own) {
    return ZOK_ExternalEcdhKeyAgreement(s.session, &own.private_record, &s.peer.public_record,
                                        s.hidden.bytes);
}

template <uint32_t algorithm>
uint32_t make_pair() {
    return SDF_GenerateKeyPair_ECC(s.session, algorithm, 8 * s.L, &s.out.public_record,
                                   &s.hidden.private_record);
}

}  // namespace

std::vector<Call> session_calls() {
    return {
        {"SDF_GenerateKeyPair_ECC, SM2", make_pair<ZOK_ALG_SM2_KEY>, ZOK_OK},
        {"SDF_GenerateKeyPair_ECC, ECDSA", make_pair<ZOK_ALG_ECDSA_KEY>, ZOK_OK},
        {"SDF_ExternalSign_ECC, SM2", [] { return sign<ZOK_ALG_SM2_SIGN>(s.own); }, ZOK_OK},
        {"SDF_ExternalSign_ECC, SM2, key above n", [] { return sign<ZOK_ALG_SM2_SIGN>(s.above); },
         ZOK_ERR_SIGN},
        {"SDF_ExternalSign_ECC, ECDSA", [] { return sign<ZOK_ALG_ECDSA_SIGN>(s.own); }, ZOK_OK},
        {"SDF_ExternalSign_ECC, unknown algorithm", [] { return sign<1>(s.own); }, ZOK_ERR_INTERNAL},
        {"ZOK_ExternalSignHash_ECC, SM2", [] { return sign_message<ZOK_ALG_SM2_SIGN>(s.own); }, ZOK_OK},
        {"ZOK_ExternalSignHash_ECC, SM2, key above n", [] { return sign_message<ZOK_ALG_SM2_SIGN>(s.above); },
         ZOK_ERR_SIGN},
        {"ZOK_ExternalSignHash_ECC, ECDSA", [] { return sign_message<ZOK_ALG_ECDSA_SIGN>(s.own); }, ZOK_OK},
        {"SDF_ExternalEncrytp_ECC, SM2", encrypt<ZOK_ALG_SM2_ENCRYPT>, ZOK_OK},
        {"SDF_ExternalEncrytp_ECC, product", encrypt<ZOK_ALG_MULTIPLICATIVE>, ZOK_OK},
        {"SDF_ExternalDecrypt_ECC, SM2", [] { return decrypt(ZOK_ALG_SM2_ENCRYPT, s.own, s.sm2_record); },
         ZOK_OK},
        {"SDF_ExternalDecrypt_ECC, SM2, changed",
         [] { return decrypt(ZOK_ALG_SM2_ENCRYPT, s.own, s.changed_record); }, ZOK_ERR_INTERNAL},
        {"SDF_ExternalDecrypt_ECC, key above n",
         [] { return decrypt(ZOK_ALG_SM2_ENCRYPT, s.above, s.sm2_record); }, ZOK_ERR_ARGUMENT},
        {"SDF_ExternalDecrypt_ECC, product",
         [] { return decrypt(ZOK_ALG_MULTIPLICATIVE, s.own, s.product_record); }, ZOK_OK},
        {"ZOK_ExternalEncrytp_ECC",
         [] {
             return ZOK_ExternalEncrytp_ECC(s.session, &s.peer.public_record, s.message, kMessageBytes,
                                            s.out.bytes, &s.out.length);
         },
         ZOK_OK},
        {"ZOK_ExternalDecrypt_ECC", [] { return decrypt_flat(s.own, s.flat_sm2); }, ZOK_OK},
        {"ZOK_ExternalDecrypt_ECC, changed", [] { return decrypt_flat(s.own, s.changed_flat); },
         ZOK_ERR_INTERNAL},
        {"ZOK_ExternalDecrypt_ECC, key above n", [] { return decrypt_flat(s.above, s.flat_sm2); },
         ZOK_ERR_ARGUMENT},
        {"ZOK_ExternalEcdhKeyAgreement", [] { return agree(s.own); }, ZOK_OK},
        {"ZOK_ExternalEcdhKeyAgreement, key above n", [] { return agree(s.above); }, ZOK_ERR_ARGUMENT},
    };
}

}  // namespace zokecc_test::secrets

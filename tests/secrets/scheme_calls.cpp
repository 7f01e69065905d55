// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "tests/secrets/calls.h"
#include "tests/secrets/scene.h"

namespace zokecc_test::secrets {

namespace {

constexpr uint32_t kFailed = 0xFFFFFFFFu;
constexpr uint32_t kInitiator = 1, kResponder = 0;
const uint8_t ZA[32] = {1, 2, 3}, ZB[32] = {4, 5, 6};

Scene &s = scene;
const sm3_msg text = {scene.text, 0, kMessageBytes};

uint32_t sign_ecdsa(const Party &signer) {
    return static_cast<uint32_t>(Ecdsa_DigitalSign(&signer.scalar, &text, &s.out.point, HASH_ALG_SHA256));
}

uint32_t sign_sm2(const Party &signer) {
    return static_cast<uint32_t>(sm2_DigitalSign(&signer.scalar, &text, ZA, &s.out.point, HASH_ALG_SM3));
}

uint32_t decrypt_sm2(const Party &reader) {
    return static_cast<uint32_t>(
        sm2_Decry(&reader.scalar, &s.legacy_cipher, &s.hidden.message, HASH_ALG_SM3));
}

uint32_t decrypt_product(const Party &reader) {
    return static_cast<uint32_t>(
        Eces_Decry(&reader.scalar, s.legacy_product, s.product_length, s.hidden.bytes));
}

uint32_t agree(const Party &own) {
    return static_cast<uint32_t>(
               Ecdh_KeyExChg(&own.scalar, &s.peer.point, s.hidden.bytes, sizeof s.hidden.bytes)) == s.L
               ? 0
               : kFailed;
}

uint32_t exchange(uint32_t role, const Party &own) {
    return static_cast<uint32_t>(sm2_KeyExChg(
        role, &s.own_temporary.scalar, &s.own_temporary.point, &s.peer_temporary.point, &own.scalar,
        &s.peer.point, ZA, ZB, kKeyBytes, s.hidden.bytes, s.hidden.more_bytes, s.hidden.key, HASH_ALG_SM3));
}

uint32_t initiate(const Party &own) {
    return static_cast<uint32_t>(sm2_KeyExChg_A4_10(
        &s.own_temporary.scalar, &s.own_temporary.point, &own.scalar, &s.peer.point, &s.peer_temporary.point,
        ZA, ZB, kKeyBytes, s.hidden.bytes, s.hidden.more_bytes, s.hidden.key, HASH_ALG_SHA256));
}

uint32_t respond(const Party &own) {
    return static_cast<uint32_t>(sm2_KeyExChg_B1_10(&own.scalar, &s.peer.point, &s.peer_temporary.point, ZA,
                                                    ZB, kKeyBytes, &s.out.point, s.hidden.bytes,
                                                    s.hidden.more_bytes, s.hidden.key, HASH_ALG_SM3));
}

}  // namespace

std::vector<Call> scheme_calls() {
    return {
        {"Ecdsa_DigitalSign", [] { return sign_ecdsa(s.own); }, 0},
        {"Ecdsa_DigitalSign, key above n", [] { return sign_ecdsa(s.above); }, kFailed},
        {"sm2_DigitalSign", [] { return sign_sm2(s.own); }, 0},
        {"sm2_DigitalSign, key above n", [] { return sign_sm2(s.above); }, kFailed},
        {"Ecc_GenPubKey", [] { return static_cast<uint32_t>(Ecc_GenPubKey(&s.own.scalar, &s.out.point)); },
         0},
        {"Ecc_GenPubKey, key above n",
         [] { return static_cast<uint32_t>(Ecc_GenPubKey(&s.above.scalar, &s.out.point)); }, kFailed},
        {"Ecc_KeyPair_Gen",
         [] { return static_cast<uint32_t>(Ecc_KeyPair_Gen(&s.hidden.scalar, &s.out.point, 0)); }, 0},
        {"Ecc_KeyPair_Gen, given key",
         [] { return static_cast<uint32_t>(Ecc_KeyPair_Gen(&s.own.scalar, &s.out.point, 1)); }, 0},
        {"Ecdh_KeyExChg", [] { return agree(s.own); }, 0},
        {"Ecdh_KeyExChg, key above n", [] { return agree(s.above); }, kFailed},
        {"Eces_Encry",
         [] {
             return static_cast<uint32_t>(Eces_Encry(&s.peer.point, s.message, 12, s.out.bytes,
                                                     sizeof s.out.bytes)) == s.product_length
                        ? 0
                        : kFailed;
         },
         0},
        {"Eces_Decry", [] { return decrypt_product(s.own); }, 12},
        {"Eces_Decry, key above n", [] { return decrypt_product(s.above); }, kFailed},
        {"eces_format",
         [] {
             return static_cast<uint32_t>(eces_format(32, s.message, 12, s.hidden.bytes, &s.hidden.length));
         },
         0},
        {"sm2_Encry",
         [] {
             const sm3_msg message = {s.message, 0, kMessageBytes};
             return static_cast<uint32_t>(
                 sm2_Encry(&s.peer.point, &message, &s.out.message, HASH_ALG_SHA256));
         },
         0},
        {"sm2_Decry", [] { return decrypt_sm2(s.own); }, kFailed},
        {"sm2_Decry, key above n", [] { return decrypt_sm2(s.above); }, kFailed},
        {"sm2_KeyExChg_A1_3",
         [] { return static_cast<uint32_t>(sm2_KeyExChg_A1_3(&s.own_temporary.scalar, &s.out.point)); }, 0},
        {"sm2_KeyExChg_A4_10", [] { return initiate(s.own); }, 0},
        {"sm2_KeyExChg_A4_10, key above n", [] { return initiate(s.above); }, kFailed},
        {"sm2_KeyExChg_B1_10", [] { return respond(s.own); }, 0},
        {"sm2_KeyExChg_B1_10, key above n", [] { return respond(s.above); }, kFailed},
        {"sm2_KeyExChg, initiator", [] { return exchange(kInitiator, s.own); }, 0},
        {"sm2_KeyExChg, responder", [] { return exchange(kResponder, s.own); }, 0},
        {"sm2_KeyExChg, key above n", [] { return exchange(kInitiator, s.above); }, kFailed},
    };
}

}  // namespace zokecc_test::secrets

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "tests/secrets/calls.h"
#include "tests/secrets/scene.h"

namespace zokecc_test::secrets {

namespace {

constexpr int32_t kShortKey = 20, kLongKey = kLongKeyBytes, kMessage = kMessageBytes;
constexpr uint32_t kTwoBlocksAndMore = 80;

Scene &s = scene;

template <uint32_t alg>
uint32_t digest() {
    const hash_msg message = {alg, s.message, 0, kMessageBytes};
    return static_cast<uint32_t>(hash_byte(&message, s.hidden.bytes));
}

template <uint32_t alg>
uint32_t digest_number() {
    const hash_msg message = {alg, s.message, 0, kMessageBytes};
    return static_cast<uint32_t>(hash_mint_value(&message, &s.n, &s.hidden.number));
}

}  // namespace

std::vector<Call> hash_calls() {
    return {
        {"mhash_sha256", [] { return mhash_sha256(s.message, kMessageBytes, s.hidden.bytes); }, 0},
        {"sm3_hash",
         [] {
             const sm3_msg message = {s.message, 0, kMessageBytes};
             return static_cast<uint32_t>(sm3_hash(&message, s.hidden.bytes));
         },
         0},
        {"hash_byte, SM3", digest<HASH_ALG_SM3>, 32},
        {"hash_byte, SHA-256", digest<HASH_ALG_SHA256>, 32},
        {"hash_mint_value, SM3", digest_number<HASH_ALG_SM3>, 0},
        {"hash_mint_value, SHA-256", digest_number<HASH_ALG_SHA256>, 0},
        {"ZOK_Sha256",
         [] { return ZOK_Sha256(s.session, s.message, kMessageBytes, s.hidden.bytes, &s.hidden.length); },
         ZOK_OK},
        {"ZOK_SM3",
         [] { return ZOK_SM3(s.session, s.message, kMessageBytes, s.hidden.bytes, &s.hidden.length); },
         ZOK_OK},
        {"mhmac_sha256",
         [] {
             return static_cast<uint32_t>(
                 mhmac_sha256(s.message, kMessage, s.long_key, kShortKey, s.hidden.bytes, 32));
         },
         0},
        {"mhmac_sha256, long key",
         [] {
             return static_cast<uint32_t>(
                 mhmac_sha256(s.message, kMessage, s.long_key, kLongKey, s.hidden.bytes, 32));
         },
         0},
        {"KD_hmac_sha256",
         [] {
             return static_cast<uint32_t>(KD_hmac_sha256(s.message, kMessage, s.long_key, kShortKey,
                                                         s.hidden.bytes, kTwoBlocksAndMore));
         },
         0},
        {"ZOK_HmacSha256",
         [] {
             return ZOK_HmacSha256(s.session, s.long_key, kLongKey, s.message, kMessage, s.hidden.bytes, 32);
         },
         ZOK_OK},
        {"ZOK_KdHmacSha256",
         [] {
             s.hidden.length = kTwoBlocksAndMore;
             return ZOK_KdHmacSha256(s.session, s.long_key, kLongKey, s.message, kMessage, s.hidden.bytes,
                                     &s.hidden.length);
         },
         ZOK_OK},
        {"ZOK_HMAC_SM3",
         [] {
             return ZOK_HMAC_SM3(s.session, s.message, kMessageBytes, s.long_key, kShortKey, s.hidden.bytes,
                                 32);
         },
         ZOK_OK},
        {"ZOK_HMAC_SM3, long key",
         [] {
             return ZOK_HMAC_SM3(s.session, s.message, kMessageBytes, s.long_key, kLongKey, s.hidden.bytes,
                                 32);
         },
         ZOK_OK},
        {"ZOK_KD_HMAC_SM3",
         [] {
             return ZOK_KD_HMAC_SM3(s.session, s.message, kMessageBytes, s.long_key, kShortKey,
                                    s.hidden.bytes, kTwoBlocksAndMore);
         },
         ZOK_OK},
        {"gen_random", [] { return static_cast<uint32_t>(gen_random(s.hidden.bytes, kTwoBlocksAndMore)); },
         0},
        {"gen_random_number", [] { return static_cast<uint32_t>(gen_random_number(&s.hidden.number, &s.n)); },
         0},
        {"SDF_GenerateRandom", [] { return SDF_GenerateRandom(s.session, 33, s.hidden.bytes); }, ZOK_OK},
    };
}

}  // namespace zokecc_test::secrets

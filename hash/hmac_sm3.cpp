// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// HMAC-SM3 (RFC 2104, GM/T 0042) and the key derivation chained from it.
#include <zokecc/hash.h>

#include <cstring>

#include "base/burn.h"
#include "base/wipe.h"
#include "base/work_buffer.h"
#include "hash/hmac.h"

using namespace zokecc;

namespace {

constexpr uint32_t kWorkBytes = 2 * kHmacBlockBytes + 1;  // allocated in addition to the data

void hash_whole(uint8_t *data, uint32_t len, uint8_t *digest)
{
    const sm3_msg message = {data, 0, len};
    sm3_hash(&message, digest);
}

// key_block[64] = the key padded with zero bytes, or its digest if the key is longer.
void prepare_key(const uint8_t *key, uint32_t key_len, uint8_t *key_block)
{
    if (key_len > kHmacBlockBytes) {
        hash_whole(const_cast<uint8_t *>(key), key_len, key_block);
    } else if (key_len > 0) {
        std::memcpy(key_block, key, key_len);
    }
}

}  // namespace

uint32_t ZOK_HMAC_SM3(void *session, const uint8_t *data, uint32_t data_len, const uint8_t *key,
                      uint32_t key_len, uint8_t *out, uint32_t out_len)
{
    const HashBurn burn;
    if (session == nullptr) return ZOK_ERR_SESSION;
    if (out_len > kDigestBytes) return ZOK_ERR_ARGUMENT;
    if (data_len > UINT32_MAX - kWorkBytes) return ZOK_ERR_INTERNAL;
    WorkBuffer work(data_len + kWorkBytes);
    if (!work) return ZOK_ERR_INTERNAL;

    Wiping<uint8_t[kHmacBlockBytes]> key_block;
    Wiping<uint8_t[kDigestBytes]> digest;
    prepare_key(key, key_len, *key_block);

    build_pad(*key_block, kHmacBlockBytes, kInnerPad, work.data());
    if (data_len > 0) std::memcpy(work.data() + kHmacBlockBytes, data, data_len);
    hash_whole(work.data(), kHmacBlockBytes + data_len, *digest);

    build_pad(*key_block, kHmacBlockBytes, kOuterPad, work.data());
    std::memcpy(work.data() + kHmacBlockBytes, *digest, kDigestBytes);
    hash_whole(work.data(), kHmacBlockBytes + kDigestBytes, *digest);

    if (out_len > 0) std::memcpy(out, *digest, out_len);
    return ZOK_OK;
}

// KEPT: the status of the MACs is ignored; a block whose MAC failed keeps its old bytes and the
// result is still 0. Held by ZokKdHmacSm3.KeptInnerFailureIsNotReported.
uint32_t ZOK_KD_HMAC_SM3(void *session, const uint8_t *data, uint32_t data_len, const uint8_t *key,
                         uint32_t key_len, uint8_t *out, uint32_t out_len)
{
    const HashBurn burn;
    if (session == nullptr) return ZOK_ERR_SESSION;
    const auto mac = [=](const uint8_t *message, uint32_t message_len, uint8_t *to, uint32_t to_len) {
        ZOK_HMAC_SM3(session, message, message_len, key, key_len, to, to_len);
    };
    derive_chained(data, data_len, out, out_len, out_len % kDigestBytes, mac);
    return ZOK_OK;
}

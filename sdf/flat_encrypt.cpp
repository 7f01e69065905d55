// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SM2 encryption of messages of any length (GB/T 32918.4): 0x04 || x1 || y1 || C2 || C3.
#include <zokecc/sdf.h>

#include "base/burn.h"
#include "base/wipe.h"
#include "base/work_buffer.h"
#include "hash/bytes.h"
#include "hash/digest.h"
#include "hash/sm2_kdf.h"
#include "sdf/encryption.h"
#include "sdf/records.h"

using namespace zokecc;

namespace {

// Buffer sizes for an m-byte message: the key stream, which may be written past m, and x2 || M || y2.
size_t key_stream_size(uint32_t m, uint32_t L) { return static_cast<size_t>(kdf_written_bytes(m, L) + 1); }
size_t check_input_size(uint32_t m, uint32_t L) { return static_cast<size_t>(uint64_t{m} + 2 * L + 1); }

// Sizes that do not fit a 32-bit length are treated as failed allocations.
bool sizes_fit(uint32_t m, uint32_t L) { return kdf_written_bytes(m, L) < UINT32_MAX; }

}  // namespace

uint32_t ZOK_ExternalEncrytp_ECC(void *session, const ECCrefPublicKey *pub, const uint8_t *message,
                                 int32_t message_len, uint8_t *cipher_out, uint32_t *cipher_len_out)
{
    const CallBurn burn;
    if (session == nullptr) return ZOK_ERR_SESSION;
    if (pub == nullptr || !fits_field(*pub)) return ZOK_ERR_ARGUMENT;
    if (message == nullptr || cipher_out == nullptr || cipher_len_out == nullptr) return ZOK_ERR_ARGUMENT;
    if (message_len < 1) return ZOK_ERR_ARGUMENT;
    const SessionContext &s = *static_cast<const SessionContext *>(session);
    const uint32_t L = s.byte_len;
    const uint32_t m = static_cast<uint32_t>(message_len);
    if (!sizes_fit(m, L)) return ZOK_ERR_INTERNAL;
    WorkBuffer stream(key_stream_size(m, L));
    if (!stream) return ZOK_ERR_INTERNAL;
    WorkBuffer check_input(check_input_size(m, L));
    if (!check_input) return ZOK_ERR_INTERNAL;
    ecc_point Q{};
    if (!read_recipient(*pub, Q) || !can_encrypt(s)) return ZOK_ERR_ARGUMENT;
    if (!may_meet_secrets(view_of(s), Q)) return ZOK_ERR_ARGUMENT;

    Wiping<PointBytes> shared;
    uint8_t *const C2 = cipher_out + 1 + 2 * L;
    const uint32_t status =
        draw_key_stream(s, Q, m, {cipher_out, cipher_out + 1, cipher_out + 1 + L}, *shared, stream.data());
    if (status != ZOK_OK) return status;
    mask(message, stream.data(), m, C2);
    const int32_t C3_len = sm2_check_value(s.hash_selector, *shared, message, m, check_input.data(), C2 + m);
    *cipher_len_out = 1 + 2 * L + m + static_cast<uint32_t>(C3_len);
    return ZOK_OK;
}

uint32_t ZOK_ExternalDecrypt_ECC(void *session, const ECCrefPrivateKey *priv, const uint8_t *cipher,
                                 uint32_t cipher_len, uint8_t *plain_out, uint32_t *plain_len_out)
{
    const CallBurn burn;
    if (session == nullptr) return ZOK_ERR_SESSION;
    if (priv == nullptr || !fits_field(*priv)) return ZOK_ERR_ARGUMENT;
    if (cipher == nullptr || plain_out == nullptr || plain_len_out == nullptr) return ZOK_ERR_ARGUMENT;
    const SessionContext &s = *static_cast<const SessionContext *>(session);
    const uint32_t L = s.byte_len;
    const int64_t message_len = int64_t{cipher_len} - (2 * L + 1) - kDigestBytes;
    if (message_len < 1 || message_len > INT32_MAX) return ZOK_ERR_ARGUMENT;
    const uint32_t m = static_cast<uint32_t>(message_len);
    Wiping<mint> d;
    if (!read_private_key(s, *priv, *d) || cipher[0] != kFlatPrefix) return ZOK_ERR_ARGUMENT;
    if (!sizes_fit(m, L)) return ZOK_ERR_INTERNAL;
    WorkBuffer stream(key_stream_size(m, L));
    if (!stream) return ZOK_ERR_INTERNAL;
    WorkBuffer check_input(check_input_size(m, L));
    if (!check_input) return ZOK_ERR_INTERNAL;

    Wiping<PointBytes> shared;
    const uint8_t *const C2 = cipher + 1 + 2 * L;
    const uint32_t status = recover_key_stream(s, *d, cipher + 1, cipher + 1 + L, m, *shared, stream.data());
    if (status != ZOK_OK) return status;
    mask(C2, stream.data(), m, plain_out);
    *plain_len_out = m;
    Wiping<uint8_t[kDigestBytes]> check;
    sm2_check_value(s.hash_selector, *shared, plain_out, m, check_input.data(), *check);
    return are_equal(*check, C2 + m, kDigestBytes) ? ZOK_OK : ZOK_ERR_INTERNAL;
}

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SM2 encryption on the process-wide curve (GB/T 32918.4): 0x04 || x1 || y1 || C2 || C3.
#include "base/burn.h"
#include "base/wipe.h"
#include "base/work_buffer.h"
#include "hash/bytes.h"
#include "hash/digest.h"
#include "hash/sm2_digests.h"
#include "hash/sm2_kdf.h"
#include "mint/value.h"
#include "schemes/records.h"

using namespace zokecc;

namespace {

constexpr uint8_t kPrefix = 0x04;

// Buffer sizes for an m-byte message: the key stream, which may be written past m, and x2 || M || y2.
uint64_t key_stream_size(uint32_t m, uint32_t L) { return kdf_written_bytes(m, L) + 1; }
uint64_t hash_input_size(uint32_t m, uint32_t L) { return uint64_t{m} + 2 * L + 1; }

bool derive_key_stream(const PointBytes &shared, uint32_t m, uint32_t alg, WorkBuffer &stream)
{
    const int32_t L = static_cast<int32_t>(shared.len);
    sm2_kdf(shared.xy, 2 * L, static_cast<int32_t>(m), L, alg, stream.data());
    return !is_all_zero(stream.data(), m);
}

// Draws nonces until the key stream is not all zero; writes C1 to the ciphertext.
bool draw_key_stream(const CurveView &curve, const ecc_point &Q, uint32_t m, uint32_t alg, uint8_t *cipher,
                     PointBytes &shared, WorkBuffer &stream)
{
    const uint32_t L = global_curve.byte_len;
    Wiping<mint> k;
    for (uint32_t draw = 0; draw < kMaxFruitlessDraws; ++draw) {
        if (!draw_private(curve, *k)) return false;
        cipher[0] = kPrefix;
        if (sm2_encryption_points(curve, L, *k, Q, cipher + 1, cipher + 1 + L, shared) != Step::done)
            return false;
        if (derive_key_stream(shared, m, alg, stream)) return true;
    }
    return false;
}

}  // namespace

int32_t sm2_Encry(const ecc_point_bytes *pub, const sm3_msg *msg, sm3_msg *cipher, uint32_t alg)
{
    const CallBurn burn;
    if (pub == nullptr || msg == nullptr || cipher == nullptr) return kFailed;
    if (msg->data == nullptr || cipher->data == nullptr) return kFailed;
    if (!curve_is_installed() || !fits_field(*pub)) return kFailed;
    // With an empty message or an unknown hash there is no key stream, and drawing would never end.
    const uint32_t m = msg->len_low;
    if (static_cast<int32_t>(m) < 1 || !is_known_hash(alg)) return kFailed;
    const CurveView curve = global_view();
    const uint32_t L = global_curve.byte_len;
    if (key_stream_size(m, L) > UINT32_MAX) return kFailed;
    WorkBuffer stream(static_cast<size_t>(key_stream_size(m, L)));
    if (!stream) return kFailed;
    WorkBuffer work(static_cast<size_t>(hash_input_size(m, L)));
    if (!work) return kFailed;

    ecc_point Q{};
    read_point(*pub, Q);
    if (is_zero(Q.x) || is_zero(Q.y) || !may_meet_secrets(curve, Q)) return kFailed;
    Wiping<PointBytes> shared;
    if (!draw_key_stream(curve, Q, m, alg, cipher->data, *shared, stream)) return kFailed;

    uint8_t *const C2 = cipher->data + 1 + 2 * L;
    mask(msg->data, stream.data(), m, C2);
    const int32_t C3_len = sm2_check_value(alg, *shared, msg->data, m, work.data(), C2 + m);
    cipher->len_high = 0;
    cipher->len_low = 1 + 2 * L + m + static_cast<uint32_t>(C3_len);
    return 0;
}

// KEPT: the check value is expected at the start of C2, not after it. Deployed callers use the
// plaintext and expect -1 here. A key of zero is not refused. Held by
// Sm2Decry.KeptCheckReadAtStartOfC2 and Sm2Decry.KeptZeroKeyIsNotRefused.
int32_t sm2_Decry(const ecc_scalar *priv, const sm3_msg *cipher, sm3_msg *plain, uint32_t alg)
{
    const CallBurn burn;
    if (!is_readable(priv) || cipher == nullptr || plain == nullptr) return kFailed;
    if (cipher->data == nullptr || plain->data == nullptr || !curve_is_installed()) return kFailed;
    const CurveView curve = global_view();
    const uint32_t L = global_curve.byte_len;
    Wiping<mint> d;
    if (!read_scalar(*priv, *d)) return kFailed;
    const int64_t message_len = int64_t{cipher->len_low} - kDigestBytes - (2 * L + 1);
    if (message_len < 1 || message_len > INT32_MAX || cipher->data[0] != kPrefix) return kFailed;
    const uint32_t m = static_cast<uint32_t>(message_len);
    if (key_stream_size(m, L) > UINT32_MAX) return kFailed;
    WorkBuffer stream(static_cast<size_t>(key_stream_size(m, L)));
    if (!stream) return kFailed;
    WorkBuffer work(static_cast<size_t>(hash_input_size(m, L)));
    if (!work) return kFailed;

    ecc_point C1{};
    octetstring_to_mint(cipher->data + 1, L, &C1.x);
    octetstring_to_mint(cipher->data + 1 + L, L, &C1.y);
    Wiping<PointBytes> shared;
    if (sm2_decryption_point(curve, L, *d, C1, *shared) != Step::done) return kFailed;
    if (!derive_key_stream(*shared, m, alg, stream)) return kFailed;

    const uint8_t *const C2 = cipher->data + 1 + 2 * L;
    mask(C2, stream.data(), m, plain->data);
    plain->len_low = m;
    plain->len_high = 0;
    Wiping<uint8_t[kDigestBytes]> check;
    const int32_t length = sm2_check_value(alg, *shared, plain->data, m, work.data(), *check);
    return are_equal(*check, C2, static_cast<uint32_t>(length)) ? 0 : kFailed;
}

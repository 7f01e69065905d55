// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "hash/sm2_digests.h"

namespace zokecc {

Transcript &Transcript::put(const uint8_t *bytes, uint32_t count)
{
    // Callers limit their parts so that the total fits; nothing is ever written past the end.
    if (count == 0 || count > kTranscriptBytes - used_) return *this;
    std::memcpy(bytes_ + used_, bytes, count);
    used_ += count;
    return *this;
}

int32_t Transcript::hash(uint32_t alg, uint8_t *out) const
{
    const hash_msg message = {alg, bytes_, 0, used_};
    return hash_byte(&message, out);
}

int32_t sm2_check_value(uint32_t alg, const PointBytes &point, const uint8_t *message, uint32_t count,
                        uint8_t *work, uint8_t *out)
{
    std::memcpy(work, point.x(), point.len);
    std::memcpy(work + point.len, message, count);
    std::memcpy(work + point.len + count, point.y(), point.len);
    const hash_msg whole = {alg, work, 0, 2 * point.len + count};
    return hash_byte(&whole, out);
}

int32_t sm2_exchange_hash(uint32_t alg, const PointBytes &U, const ExchangePublics &publics, uint8_t *out)
{
    Transcript transcript;
    transcript.put(U.x(), U.len).put(publics.ZA).put(publics.ZB);
    transcript.put(publics.x1, U.len).put(publics.y1, U.len);
    transcript.put(publics.x2, U.len).put(publics.y2, U.len);
    return transcript.hash(alg, out);
}

void sm2_confirmation(uint32_t alg, uint8_t prefix, const PointBytes &U, Bytes tail, uint8_t *out)
{
    Transcript transcript;
    transcript.put(&prefix, 1).put(U.y(), U.len).put(tail).hash(alg, out);
}

void sm2_confirmations(uint32_t alg, const PointBytes &U, Bytes tail, uint8_t *out02, uint8_t *out03)
{
    sm2_confirmation(alg, kResponderPrefix, U, tail, out02);
    sm2_confirmation(alg, kInitiatorPrefix, U, tail, out03);
}

void sm2_exchange_confirmations(uint32_t alg, const PointBytes &U, const ExchangePublics &publics,
                                uint8_t *out02, uint8_t *out03)
{
    Wiping<uint8_t[kDigestBytes]> H;
    const int32_t H_len = sm2_exchange_hash(alg, U, publics, *H);
    sm2_confirmations(alg, U, {*H, static_cast<size_t>(H_len)}, out02, out03);
}

}  // namespace zokecc

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Blocks for multiplicative encryption: random padding bytes, a zero byte, the message.
#include <cstring>

#include "schemes/records.h"

namespace {

constexpr int32_t kMissing = 1;
constexpr int32_t kTooLong = 1;
constexpr int32_t kNoRandomness = 1;
constexpr int32_t kBadBlock = 1;

}  // namespace

// KEPT: zeros among the random bytes are not replaced; for the reader such a zero ends the padding
// early. One byte is drawn even if there is room for the separator only. Held by
// EcesFormat.KeptZeroBytesAmongThePaddingAreNotReplaced.
int32_t eces_format(uint32_t block_len, const uint8_t *message, uint32_t message_len, uint8_t *out,
                    uint32_t *out_len)
{
    if (uint64_t{message_len} + 2 > block_len) return kTooLong;
    if (out == nullptr || out_len == nullptr || (message == nullptr && message_len > 0)) return kMissing;
    const uint32_t separator = block_len - message_len - 1;
    if (gen_random(out + 1, separator) != 0) return kNoRandomness;
    out[separator] = 0;
    if (message_len > 0) std::memcpy(out + separator + 1, message, message_len);
    *out_len = block_len;
    return 0;
}

int32_t eces_deformat(const uint8_t *block, uint32_t block_len, uint8_t *out, uint32_t *out_len)
{
    const uint32_t L = global_curve.byte_len;
    if (L < 2 || block_len >= L || out_len == nullptr || (block == nullptr && block_len > 0))
        return kBadBlock;
    const uint32_t field = L - 2;
    if (block_len <= field) {
        // Any other length: copied to the right end of the field.
        if (block_len > 0 && out == nullptr) return kBadBlock;
        if (block_len > 0) std::memmove(out + (field - block_len), block, block_len);
        *out_len = field;
        return 0;
    }
    // A block without its leading zero byte: the message follows the first zero.
    uint32_t separator = 0;
    while (separator < block_len && block[separator] != 0) ++separator;
    if (separator == block_len) return kBadBlock;
    const uint32_t count = field - separator;
    if (count > 0 && out == nullptr) return kBadBlock;
    if (count > 0) std::memmove(out, block + separator + 1, count);
    *out_len = count;
    return 0;
}

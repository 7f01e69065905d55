// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Eces_Encry with its arguments, and ciphertexts on the small curve in plain integers.
#ifndef ZOKECC_TESTS_SCHEMES_ECES_CALLS_H
#define ZOKECC_TESTS_SCHEMES_ECES_CALLS_H

#include <algorithm>
#include <cstdint>

#include "tests/support/legacy_records.h"
#include "tests/support/model_hash.h"
#include "tests/support/naive_int.h"
#include "tests/support/small_group.h"

namespace zokecc_test {

// The prefix and three numbers of `width` bytes each; on the small curve the calls write four.
inline ByteString small_cipher_image(const TinyPoint &C1, uint32_t c, size_t width = 4) {
    return joined(
        {ByteString(1, 4), number_bytes(C1.x, width), number_bytes(C1.y, width), number_bytes(c, width)});
}

// The message M (a number below p) for the private key d, with the nonce k.
inline ByteString small_cipher(uint32_t d, uint32_t M, uint32_t k, size_t width = 4) {
    const uint32_t mask = small_multiple(product_modulo(k, d, kSmallN)).x;
    return small_cipher_image(small_multiple(k), product_modulo(M, mask, kSmallP), width);
}

struct EcesEncryption {
    EcesEncryption(const PointBytes &recipient, const ByteString &message) : Q(recipient), text(message) {}
    EcesEncryption(const TinyPoint &recipient, const ByteString &message)
        : EcesEncryption(PointBytes(recipient.x, recipient.y, 32), message) {}

    int32_t run(int32_t capacity) {
        const ByteString before = text;
        int32_t written =
            Eces_Encry(Q.get(), text.data(), static_cast<uint32_t>(text.size()), out.data(), capacity);
        EXPECT_TRUE(Q.intact() && text == before);
        return written;
    }
    void expect_written(const ByteString &expected) {
        EXPECT_EQ(to_hex(out.first(expected.size())), to_hex(expected));
        EXPECT_TRUE(out.untouched_from(expected.size()));
    }

    PointBytes Q;
    ByteString text;
    GuardedBuffer out{120};
};

}  // namespace zokecc_test

#endif

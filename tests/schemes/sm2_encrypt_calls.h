// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The two SM2 encryption calls with their arguments, and the standard's ciphertext on the small
// curve: its points in plain integers, its hashes by the models.
#ifndef ZOKECC_TESTS_SCHEMES_SM2_ENCRYPT_CALLS_H
#define ZOKECC_TESTS_SCHEMES_SM2_ENCRYPT_CALLS_H

#include "tests/support/kdf_model.h"
#include "tests/support/legacy_records.h"
#include "tests/support/small_group.h"

namespace zokecc_test {

inline constexpr uint32_t kDescriptorFill = 0xDEADBEEFu;

inline ByteString exclusive_or(ByteString a, const ByteString &b) {
    for (size_t i = 0; i < a.size(); ++i) a[i] = static_cast<uint8_t>(a[i] ^ b.at(i));
    return a;
}

// Two coordinates of a point on a small curve, L bytes each; infinity has zeros.
struct Coordinates {
    Coordinates(const TinyPoint &P, size_t L)
        : x(number_bytes(P.infinite ? 0 : P.x, L)), y(number_bytes(P.infinite ? 0 : P.y, L)) {}
    ByteString both() const { return joined({x, y}); }
    ByteString x, y;
};

// The ciphertext of a message with C1 and the shared point given.
inline ByteString sm2_cipher(const TinyPoint &C1, const TinyPoint &shared, size_t L, const ByteString &text,
                             uint32_t hash) {
    const Coordinates secret(shared, L);
    return joined({ByteString(1, 4), Coordinates(C1, L).both(),
                   exclusive_or(text, standard_stream(hash, secret.both(), text.size())),
                   selected_digest(hash, joined({secret.x, text, secret.y}))});
}
// For the private key d, with the nonce k.
inline ByteString small_sm2_cipher(uint32_t d, uint32_t k, size_t L, const ByteString &text, uint32_t hash) {
    return sm2_cipher(small_multiple(k), small_multiple(product_modulo(k, d, kSmallN)), L, text, hash);
}

// The first byte of the key stream there.
inline uint8_t first_stream_byte(uint32_t d, uint32_t k, size_t L, uint32_t hash) {
    const Coordinates secret(small_multiple(product_modulo(k, d, kSmallN)), L);
    return standard_stream(hash, secret.both(), 1)[0];
}

struct Sm2Encryption {
    Sm2Encryption(const PointBytes &key, const ByteString &text)
        : pub(key), msg(text), area(text.size() + 120) {
        cipher = {area.data(), kDescriptorFill, kDescriptorFill};
    }
    Sm2Encryption(const TinyPoint &Q, size_t L, const ByteString &text)
        : Sm2Encryption(PointBytes(Q.x, Q.y, L), text) {}

    int32_t run(uint32_t hash) {
        int32_t status = sm2_Encry(pub.get(), msg.get(), &cipher, hash);
        EXPECT_TRUE(pub.intact() && msg.intact());
        EXPECT_EQ(cipher.data, area.data());
        return status;
    }
    void expect_written(const ByteString &expected) {
        EXPECT_EQ(cipher.len_high, 0u);
        EXPECT_EQ(cipher.len_low, expected.size());
        EXPECT_EQ(to_hex(area.first(expected.size())), to_hex(expected));
        EXPECT_TRUE(area.untouched_from(expected.size()));
    }
    void expect_descriptor_untouched() const {
        EXPECT_EQ(cipher.len_high, kDescriptorFill);
        EXPECT_EQ(cipher.len_low, kDescriptorFill);
    }
    void expect_nothing_written() const {
        expect_descriptor_untouched();
        EXPECT_TRUE(area.untouched());
    }

    PointBytes pub;
    Message msg;
    GuardedBuffer area;
    sm3_msg cipher;
};

struct Sm2Decryption {
    Sm2Decryption(const ByteString &key, const ByteString &bytes)
        : priv(key), cipher(bytes), area(bytes.size() + 64) {
        plain = {area.data(), kDescriptorFill, kDescriptorFill};
    }
    Sm2Decryption(uint32_t key, const ByteString &bytes) : Sm2Decryption(number_bytes(key, 32), bytes) {}

    int32_t run(uint32_t hash) {
        int32_t status = sm2_Decry(priv.get(), cipher.get(), &plain, hash);
        EXPECT_TRUE(priv.intact() && cipher.intact());
        EXPECT_EQ(plain.data, area.data());
        return status;
    }
    void expect_plain(const ByteString &expected) {
        EXPECT_EQ(plain.len_high, 0u);
        EXPECT_EQ(plain.len_low, expected.size());
        EXPECT_EQ(to_hex(area.first(expected.size())), to_hex(expected));
        EXPECT_TRUE(area.untouched_from(expected.size()));
    }
    void expect_nothing_written() const {
        EXPECT_EQ(plain.len_high, kDescriptorFill);
        EXPECT_EQ(plain.len_low, kDescriptorFill);
        EXPECT_TRUE(area.untouched());
    }
    void expect_refused(uint32_t hash) {
        EXPECT_EQ(run(hash), -1);
        expect_nothing_written();
    }

    Scalar priv;
    Message cipher;
    GuardedBuffer area;
    sm3_msg plain;
};

// The small curve with a different number as its order, which makes h = 1009 / n.
inline void install_with_order(uint32_t n, unsigned byte_len = 32) {
    install(legacy_curve(byte_len, kSmallP, 2, 25, 2, 365, n));
}

}  // namespace zokecc_test

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Encryption on the small curve of tests/sdf/fixtures.h in plain integers with model hashes, and the
// calls of the session interface with their outputs between guards.
#ifndef ZOKECC_TESTS_SUPPORT_ENCRYPTION_CASE_H
#define ZOKECC_TESTS_SUPPORT_ENCRYPTION_CASE_H

#include <algorithm>
#include <deque>
#include <initializer_list>
#include <memory>
#include <vector>

#include "tests/sdf/fixtures.h"
#include "tests/support/kdf_model.h"
#include "tests/support/small_group.h"

namespace zokecc_test {

inline constexpr uint32_t kSm2 = ZOK_ALG_SM2_ENCRYPT;
inline constexpr uint32_t kProduct = ZOK_ALG_MULTIPLICATIVE;
inline constexpr uint32_t kEncryptions[] = {kSm2, kProduct};
inline constexpr uint32_t kKnownHashes[] = {HASH_ALG_SM3, HASH_ALG_SHA256};
inline constexpr uint32_t kUnknownSelector = 2;
inline constexpr uint32_t kUntouchedLength = 0xDECADE01u;
inline constexpr size_t kSmallL = 20;

// The key pair of the small curve and its multiples. d = 123.
inline constexpr uint32_t kSmallD = 123;
inline TinyPoint small_key_point() { return {false, 346, 763}; }
// The library's product of a point other than G.
inline TinyPoint small_product(uint32_t k, const TinyPoint &P) {
    return kHardened ? exact_multiple(k, P) : small_group().library_window(small_number(k), P);
}

// The parts of one encrypted message.
struct Encrypted {
    ByteString x1, y1, C2, C3;

    ByteString flat() const { return joined({{0x04}, x1, y1, C2, C3}); }
    bool operator==(const Encrypted &) const = default;
};

// The parts by GB/T 32918.4, from C1 and the shared point.
inline Encrypted model_encryption(uint32_t selector, const ByteString &x1, const ByteString &y1,
                                  const ByteString &x2, const ByteString &y2, const ByteString &message) {
    ByteString C2 = standard_stream(selector, joined({x2, y2}), message.size());
    for (size_t i = 0; i < C2.size(); ++i) C2[i] = static_cast<uint8_t>(C2[i] ^ message[i]);
    return {x1, y1, C2, selected_digest(selector, joined({x2, message, y2}))};
}

inline ByteString coordinate(const TinyPoint &P, uint32_t TinyPoint::*which) {
    return small_bytes(P.infinite ? 0 : P.*which);
}

// The same on the small curve, for the nonce k and the recipient Q.
inline Encrypted small_encryption(uint32_t selector, uint32_t k, const ByteString &message,
                                  const TinyPoint &Q = small_key_point()) {
    const TinyPoint C1 = small_multiple(k), shared = small_product(k, Q);
    return model_encryption(selector, coordinate(C1, &TinyPoint::x), coordinate(C1, &TinyPoint::y),
                            coordinate(shared, &TinyPoint::x), coordinate(shared, &TinyPoint::y), message);
}

// A nonce for which the key stream of one byte is zero.
inline uint32_t nonce_of_zero_stream(uint32_t selector) {
    return first_scalar([selector](uint32_t k) { return small_encryption(selector, k, {0x00}).C2[0] == 0; });
}

// A nonce for which it is not zero.
inline uint32_t nonce_of_nonzero_stream(uint32_t selector) {
    return first_scalar([selector](uint32_t k) { return small_encryption(selector, k, {0x00}).C2[0] != 0; });
}

inline ECCCipher cipher_record(const ByteString &x, const ByteString &y, const ByteString &C,
                               const ByteString &M) {
    ECCCipher out{};
    put_field(out.x, x);
    put_field(out.y, y);
    put_field(out.C, C);
    put_field(out.M, M);
    return out;
}
inline ECCCipher cipher_record(const Encrypted &parts) {
    return cipher_record(parts.x1, parts.y1, parts.C2, parts.C3);
}

// A record into which the SM2 parts were written, and nothing else.
inline void expect_cipher(GuardedRecord<ECCCipher> &written, const Encrypted &parts) {
    expect_field(written->x, parts.x1);
    expect_field(written->y, parts.y1);
    expect_field(written->C, parts.C2);
    expect_field(written->M, parts.C3);
    EXPECT_TRUE(written.guards_intact());
}

// The inputs of a call, which it must not change.
template <class Key>
class Inputs {
public:
    Inputs(void *session, const Key &key, const ByteString &bytes)
        : session_(static_cast<SessionContext *>(session)), key_(key), bytes_(bytes) {}
    ~Inputs() {
        EXPECT_TRUE(image(*session_) == session_before_);
        EXPECT_EQ(to_hex(image(key_)), to_hex(key_before_));
        EXPECT_TRUE(bytes_ == bytes_before_);
    }

private:
    const SessionContext *session_;
    const Key &key_;
    const ByteString &bytes_;
    const ByteString session_before_ = image(*session_), key_before_ = image(key_), bytes_before_ = bytes_;
};

// SDF_ExternalEncrytp_ECC with the message as a byte string.
inline uint32_t encrypt(void *session, uint32_t algorithm, const ECCrefPublicKey &pub,
                        const ByteString &message, ECCCipher *out) {
    const Inputs inputs(session, pub, message);
    return SDF_ExternalEncrytp_ECC(session, algorithm, &pub, message.data(),
                                   static_cast<uint32_t>(message.size()), out);
}

inline uint32_t flat_encrypt(void *session, const ECCrefPublicKey &pub, const ByteString &message,
                             uint8_t *out, uint32_t *length) {
    const Inputs inputs(session, pub, message);
    return ZOK_ExternalEncrytp_ECC(session, &pub, message.data(), static_cast<int32_t>(message.size()), out,
                                   length);
}

// The numbers that an encryption must draw, exactly these.
struct Nonces {
    Nonces(std::initializer_list<uint32_t> values) : Nonces(std::vector<uint32_t>(values)) {}
    Nonces(const std::vector<uint32_t> &values) {
        for (uint32_t value : values) list.push_back(small_number(value));
    }
    Nonces(const mint &value) : list{value} {}
    std::deque<mint> list;
};

// An encryption into a record must return the status and write these parts and nothing else.
inline void expect_encrypted(void *session, uint32_t algorithm, const ECCrefPublicKey &pub,
                             const ByteString &message, const Nonces &nonces, const Encrypted &want,
                             uint32_t status = ZOK_OK) {
    FakeEntropy entropy;
    entropy.queued_numbers = nonces.list;
    GuardedRecord<ECCCipher> out;
    EXPECT_EQ(encrypt(session, algorithm, pub, message, out.get()), status);
    EXPECT_EQ(entropy.number_calls, nonces.list.size());
    expect_cipher(out, want);
}
// The same into bytes: on failure the length is not written.
inline void expect_flat_encrypted(void *session, const ECCrefPublicKey &pub, const ByteString &message,
                                  const Nonces &nonces, const Encrypted &want, uint32_t status = ZOK_OK) {
    FakeEntropy entropy;
    entropy.queued_numbers = nonces.list;
    const ByteString flat = want.flat();
    GuardedBuffer out(flat.size() + 64);
    uint32_t length = kUntouchedLength;
    EXPECT_EQ(flat_encrypt(session, pub, message, out.data(), &length), status);
    EXPECT_EQ(entropy.number_calls, nonces.list.size());
    EXPECT_EQ(length, status == ZOK_OK ? flat.size() : kUntouchedLength);
    EXPECT_EQ(to_hex(out.first(flat.size())), to_hex(flat));
    EXPECT_TRUE(out.untouched_from(flat.size()));
}

// A decryption's status, what it wrote and the length it reported.
struct Decrypted {
    uint32_t status;
    uint32_t length;
    ByteString plain;  // up to `length`; all of it if no length was reported
    bool clean;        // nothing else was written
};

inline Decrypted collected(uint32_t status, uint32_t length, const GuardedBuffer &plain) {
    const bool reported = length <= plain.size();
    return {status, length, reported ? plain.first(length) : plain.all(),
            plain.untouched_from(reported ? length : 0)};
}

inline Decrypted decrypt(void *session, uint32_t algorithm, const ECCrefPrivateKey &priv,
                         const ECCCipher &cipher) {
    const ByteString before = image(cipher);
    const Inputs inputs(session, priv, before);
    GuardedBuffer plain(64);
    uint32_t length = kUntouchedLength;
    const uint32_t status =
        SDF_ExternalDecrypt_ECC(session, algorithm, &priv, &cipher, plain.data(), &length);
    EXPECT_EQ(to_hex(image(cipher)), to_hex(before));
    return collected(status, length, plain);
}

// The ciphertext is passed in a buffer of exactly its size.
inline Decrypted flat_decrypt(void *session, const ECCrefPrivateKey &priv, const ByteString &cipher) {
    const Inputs inputs(session, priv, cipher);
    const std::unique_ptr<uint8_t[]> exact(new uint8_t[cipher.size()]);
    std::copy(cipher.begin(), cipher.end(), exact.get());
    GuardedBuffer plain(cipher.size() + 64);
    uint32_t length = kUntouchedLength;
    const uint32_t status = ZOK_ExternalDecrypt_ECC(
        session, &priv, exact.get(), static_cast<uint32_t>(cipher.size()), plain.data(), &length);
    EXPECT_TRUE(std::equal(cipher.begin(), cipher.end(), exact.get()));
    return collected(status, length, plain);
}

inline void expect_plain(const Decrypted &got, uint32_t status, const ByteString &plain) {
    EXPECT_EQ(got.status, status);
    EXPECT_EQ(got.length, plain.size());
    EXPECT_EQ(to_hex(got.plain), to_hex(plain));
    EXPECT_TRUE(got.clean);
}

// Refused: neither the length nor any byte was written.
inline void expect_no_plain(const Decrypted &got, uint32_t status) {
    EXPECT_EQ(got.status, status);
    EXPECT_EQ(got.length, kUntouchedLength);
    EXPECT_TRUE(got.clean);
}

// Flips one bit of a byte string.
inline ByteString flipped(ByteString bytes, size_t bit) {
    bytes[bit / 8] = static_cast<uint8_t>(bytes[bit / 8] ^ (1u << (bit % 8)));
    return bytes;
}

// Sessions on curves made for one test, in records of 20 bytes.
inline Curve small_variant(uint32_t p, uint32_t a, uint32_t b, const TinyPoint &G, uint32_t n) {
    Curve out = small_curve();
    out.name = "variant";
    out.p = small_number(p);
    out.a = small_number(a);
    out.b = small_number(b);
    out.G = affine(small_number(G.x), small_number(G.y));
    out.n = small_number(n);
    return out;
}
// The small curve with a different order, hence h = 1009 / n.
inline Curve small_curve_with_order(uint32_t n) { return small_variant(kSmallP, 2, 25, {false, 2, 365}, n); }

}  // namespace zokecc_test

#endif

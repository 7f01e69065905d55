// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Shared by the tests of the session layer: a curve that opens instantly, sessions that stay
// open between tests, and the key and signature records.
#ifndef ZOKECC_TESTS_SDF_FIXTURES_H
#define ZOKECC_TESTS_SDF_FIXTURES_H

#include <gtest/gtest.h>
#include <zokecc/sdf.h>

#include <cstring>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "tests/support/curves.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/fake_entropy.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/hex.h"

namespace zokecc_test {

inline constexpr uint32_t kUnknownAlgorithm = 0x00020400u;

inline mint small_number(uint32_t value) {
    mint out{};
    out.words[0] = value;
    out.len = value != 0;
    return out;
}

// y^2 = x^3 + 2x + 25 over the field of 1009 elements, with 991 points, in 20-byte records.
// Numbers of one word never meet an equal word under a borrow: results here follow
// the standards, unless a test says otherwise. Every value for this curve in the tests
// comes from plain integer arithmetic outside the library.
inline const Curve &small_curve() {
    static const Curve curve = [] {
        Curve out{};
        out.name = "small";
        out.byte_len = 20;
        out.session_type = 1;
        out.legacy_type = kNoType;
        out.p = small_number(1009);
        out.a = small_number(2);
        out.b = small_number(25);
        out.n = small_number(991);
        out.G.x = small_number(2);
        out.G.y = small_number(365);
        return out;
    }();
    return curve;
}

// Opened on first use and closed at the end of the program. Not for tests that change it.
inline void *shared_session(const Curve &curve, uint32_t hash_selector = HASH_ALG_SM3) {
    static std::map<std::pair<std::string, uint32_t>, std::unique_ptr<Session>> sessions;
    std::unique_ptr<Session> &slot = sessions[{curve.name, hash_selector}];
    if (!slot) {
        AllocPause prepares_the_test;
        slot = std::make_unique<Session>(curve, hash_selector);
    }
    return slot->handle();
}
inline void *small_session(uint32_t hash_selector = HASH_ALG_SM3) {
    return shared_session(small_curve(), hash_selector);
}
inline void *sm2_session(uint32_t hash_selector = HASH_ALG_SM3) {
    return shared_session(curve("sm2p256v1"), hash_selector);
}

// A device that is closed when the test ends, unless the test did it.
class Device {
public:
    Device() { EXPECT_EQ(SDF_OpenDevice(&handle_), ZOK_OK); }
    ~Device() {
        if (handle_ != nullptr) close();
    }
    Device(const Device &) = delete;
    Device &operator=(const Device &) = delete;

    void close() {
        EXPECT_EQ(SDF_CloseDevice(handle_), ZOK_OK);
        handle_ = nullptr;
    }
    void *handle() { return handle_; }
    DeviceContext *context() { return static_cast<DeviceContext *>(handle_); }

private:
    void *handle_ = nullptr;
};

inline void *open_on(Device &device) {
    void *session = nullptr;
    EXPECT_EQ(SDF_OpenSession(device.handle(), &session), ZOK_OK);
    return session;
}

inline uint32_t configure(void *session, const CurvePara &record) {
    return ZOK_CurveParaCfg(session, record.type, &record);
}

// A session from a device without a record: it has no curve.
class CurvelessSession {
public:
    CurvelessSession() : session_(open_on(device_)) {}
    ~CurvelessSession() { EXPECT_EQ(SDF_CloseSession(session_), ZOK_OK); }
    CurvelessSession(const CurvelessSession &) = delete;
    CurvelessSession &operator=(const CurvelessSession &) = delete;
    void *handle() const { return session_; }

private:
    Device device_;
    void *session_;
};

inline void put_field(uint8_t *field, const ByteString &value) {
    std::memset(field, kFill, 64);
    if (!value.empty()) std::memcpy(field, value.data(), value.size());
}

inline ECCrefPrivateKey private_key(const ByteString &d) {
    ECCrefPrivateKey out{};
    out.bits = static_cast<uint32_t>(8 * d.size());
    put_field(out.K, d);
    return out;
}

inline ECCrefPublicKey public_key(const ByteString &x, const ByteString &y) {
    ECCrefPublicKey out{};
    out.bits = static_cast<uint32_t>(8 * x.size());
    put_field(out.x, x);
    put_field(out.y, y);
    return out;
}

// G as a key, whose private key is 1.
inline ECCrefPublicKey base_point_key(const Curve &c) {
    return public_key(fixed_bytes(c.G.x, c.byte_len), fixed_bytes(c.G.y, c.byte_len));
}

inline ECCSignature signature(const ByteString &r, const ByteString &s) {
    ECCSignature out{};
    put_field(out.r, r);
    put_field(out.s, s);
    return out;
}

// The same for the small curve, where every number has 20 bytes.
inline ByteString small_bytes(uint32_t value) { return fixed_bytes(small_number(value), 20); }
inline ECCrefPrivateKey small_private_key(uint32_t d) { return private_key(small_bytes(d)); }
inline ECCrefPublicKey small_public_key(uint32_t x, uint32_t y) {
    return public_key(small_bytes(x), small_bytes(y));
}
inline ECCSignature small_signature(uint32_t r, uint32_t s) {
    return signature(small_bytes(r), small_bytes(s));
}

// The key pair of most tests on the small curve: 123 G = (346, 763).
inline ECCrefPrivateKey small_private_key() { return small_private_key(123); }
inline ECCrefPublicKey small_public_key() { return small_public_key(346, 763); }

// A 64-byte field has the value at its start and the fill pattern after it.
inline void expect_field(const uint8_t *field, const ByteString &value) {
    size_t rest = 64 - value.size();
    EXPECT_EQ(to_hex(field, value.size()), to_hex(value));
    EXPECT_EQ(to_hex(field + value.size(), rest), to_hex(ByteString(rest, kFill)));
}

inline void expect_signature(GuardedRecord<ECCSignature> &written, const ByteString &r, const ByteString &s) {
    expect_field(written->r, r);
    expect_field(written->s, s);
    EXPECT_TRUE(written.guards_intact());
}
inline void expect_small_signature(GuardedRecord<ECCSignature> &written, uint32_t r, uint32_t s) {
    expect_signature(written, small_bytes(r), small_bytes(s));
}

inline void queue_numbers(FakeEntropy &entropy, std::initializer_list<uint32_t> values) {
    for (uint32_t value : values) entropy.queued_numbers.push_back(small_number(value));
}

// SDF_ExternalSign_ECC and SDF_ExternalVerify_ECC with e as a byte string.
inline uint32_t sign_e(void *session, uint32_t algorithm, const ECCrefPrivateKey &key, const ByteString &e,
                       ECCSignature *out) {
    return SDF_ExternalSign_ECC(session, algorithm, &key, e.data(), static_cast<uint32_t>(e.size()), out);
}
inline uint32_t verify_e(void *session, uint32_t algorithm, const ECCrefPublicKey &key, const ByteString &e,
                         const ECCSignature &sig) {
    return SDF_ExternalVerify_ECC(session, algorithm, &key, e.data(), static_cast<uint32_t>(e.size()), &sig);
}

// ZOK_ExternalSignHash_ECC and ZOK_ExternalVerifyHash_ECC with byte strings.
inline uint32_t sign_message(void *session, uint32_t algorithm, const ECCrefPrivateKey &key,
                             const ByteString &message, const ByteString &id, ECCSignature *out) {
    return ZOK_ExternalSignHash_ECC(session, algorithm, &key, message.data(),
                                    static_cast<uint32_t>(message.size()), id.data(),
                                    static_cast<uint32_t>(id.size()), out);
}
inline uint32_t verify_message(void *session, uint32_t algorithm, const ECCrefPublicKey &key,
                               const ByteString &message, const ByteString &id, const ECCSignature &sig) {
    return ZOK_ExternalVerifyHash_ECC(session, algorithm, &key, message.data(),
                                      static_cast<uint32_t>(message.size()), id.data(),
                                      static_cast<uint32_t>(id.size()), &sig);
}

}  // namespace zokecc_test

#endif

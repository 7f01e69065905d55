// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The arguments of the key exchange calls over the process-wide curve, for one side of an
// exchange, with every output between guards.
#ifndef ZOKECC_TESTS_SUPPORT_LEGACY_EXCHANGE_H
#define ZOKECC_TESTS_SUPPORT_LEGACY_EXCHANGE_H

#include <gtest/gtest.h>
#include <zokecc/schemes.h>

#include "tests/support/exchange_case.h"
#include "tests/support/fake_entropy.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/hex.h"
#include "tests/support/legacy_curve.h"
#include "tests/support/legacy_records.h"

namespace zokecc_test::exchange {

// A test sets up its case by changing a pointer, a record or a number before the call. The
// curve must be installed.
struct LegacyExchange {
    LegacyExchange(const ExchangeCase &exchange, Role side, int32_t key_length = 16)
        : d_bytes(exchange.own(side).d),
          r_bytes(exchange.own(side).r),
          R_record(point_record(exchange.own(side).Rx, exchange.own(side).Ry)),
          peerR_record(point_record(exchange.peer(side).Rx, exchange.peer(side).Ry)),
          peerP_record(point_record(exchange.peer(side).x, exchange.peer(side).y)),
          peer_x(exchange.peer(side).x),
          peer_y(exchange.peer(side).y),
          ZA_bytes(exchange.A.Z),
          ZB_bytes(exchange.B.Z),
          key(key_length > 0 ? static_cast<size_t>(key_length) : 0),
          klen(key_length),
          selector(exchange.selector),
          role(side == Role::kInitiator ? 1 : 0) {}
    LegacyExchange(const LegacyExchange &) = delete;
    LegacyExchange &operator=(const LegacyExchange &) = delete;

    Scalar d_bytes, r_bytes;
    ecc_point_bytes R_record, peerR_record, peerP_record;
    ByteString peer_x, peer_y;  // the peer's key, hashed by the call for both roles
    ByteString ZA_bytes, ZB_bytes;
    GuardedRecord<ecc_point_bytes> R_written;
    GuardedBuffer value02{32}, value03{32}, key;

    ecc_scalar *d = d_bytes.get();
    ecc_scalar *r = r_bytes.get();
    const ecc_point_bytes *R = &R_record;
    const ecc_point_bytes *peerR = &peerR_record;
    const ecc_point_bytes *peerP = &peerP_record;
    const uint8_t *ZA = ZA_bytes.data();
    const uint8_t *ZB = ZB_bytes.data();
    ecc_point_bytes *R_out = R_written.get();
    uint8_t *out02 = value02.data();
    uint8_t *out03 = value03.data();
    uint8_t *K = key.data();
    int32_t klen;
    uint32_t selector;
    uint32_t role;

    void set_Z(const ByteString &A, const ByteString &B) {
        ZA_bytes = A;
        ZB_bytes = B;
        ZA = ZA_bytes.data();
        ZB = ZB_bytes.data();
    }
    void set_peer_key(const ByteString &x, const ByteString &y) {
        peerP_record = point_record(x, y);
        peer_x = x;
        peer_y = y;
    }

    int32_t a1_3() { return sm2_KeyExChg_A1_3(r, R_out); }
    int32_t a4_10() {
        return sm2_KeyExChg_A4_10(r, R, d, peerP, peerR, ZA, ZB, klen, out02, out03, K, selector);
    }
    // Draws rB: see with_r() below.
    int32_t b1_10() {
        return sm2_KeyExChg_B1_10(d, peerP, peerR, ZA, ZB, klen, R_out, out03, out02, K, selector);
    }
    int32_t whole() {
        return sm2_KeyExChg(role, r, R, peerR, d, peerP, ZA, ZB, klen, out03, out02, K, selector);
    }
    // b1_10() with the case's own r as the drawn number.
    int32_t b1_10_with_r() {
        FakeEntropy entropy;
        entropy.queued_numbers.push_back(mint_from_hex(to_hex(r->bytes, r->length)));
        const int32_t status = b1_10();
        EXPECT_LE(entropy.number_calls, 1u);
        return status;
    }

    bool values_untouched() const { return value02.untouched() && value03.untouched(); }
    bool results_untouched() const { return values_untouched() && key.untouched(); }
    bool nothing_written() const { return results_untouched() && R_written.unchanged(); }
};

using LegacyCall = int32_t (LegacyExchange::*)();

// One of the three calls that derive a key, with its side of the case.
struct LegacyKeyCall {
    const char *name;
    LegacyCall call;
    Role role;
};
inline constexpr LegacyKeyCall kInitiatorCall = {"A4_10", &LegacyExchange::a4_10, Role::kInitiator};
inline constexpr LegacyKeyCall kResponderCall = {"B1_10", &LegacyExchange::b1_10_with_r, Role::kResponder};
inline constexpr LegacyKeyCall kWholeInitiator = {"whole, role 1", &LegacyExchange::whole, Role::kInitiator};
inline constexpr LegacyKeyCall kWholeResponder = {"whole, role 0", &LegacyExchange::whole, Role::kResponder};
inline constexpr LegacyKeyCall kLegacyKeyCalls[] = {kInitiatorCall, kResponderCall, kWholeInitiator,
                                                    kWholeResponder};

inline uint32_t run(LegacyExchange &side, const LegacyKeyCall &call) {
    return static_cast<uint32_t>((side.*call.call)());
}

inline std::string text_of(const GuardedBuffer &buffer) { return to_hex(buffer.all()); }

// Exactly klen bytes of key and 32 bytes of each value. The values of the call for both roles cover the
// peer's key, too.
inline void expect_results(const LegacyExchange &side, const LegacyKeyCall &call,
                           const ExchangeHashes &expected) {
    auto confirmation = [&](uint8_t prefix) {
        return to_hex(call.call == &LegacyExchange::whole
                          ? expected.whole_call_confirmation(prefix, side.peer_x, side.peer_y)
                          : expected.confirmation(prefix));
    };
    EXPECT_EQ(text_of(side.key), to_hex(expected.key(side.key.size()))) << call.name;
    EXPECT_EQ(text_of(side.value02), confirmation(0x02)) << call.name;
    EXPECT_EQ(text_of(side.value03), confirmation(0x03)) << call.name;
    EXPECT_TRUE(side.key.untouched_from(side.key.size())) << call.name;
    EXPECT_TRUE(side.value02.untouched_from(32) && side.value03.untouched_from(32)) << call.name;
}

}  // namespace zokecc_test::exchange

#endif

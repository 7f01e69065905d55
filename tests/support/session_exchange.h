// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The arguments of the key agreement calls over a session's curve, for one side of an exchange,
// with every output between guards.
#ifndef ZOKECC_TESTS_SUPPORT_SESSION_EXCHANGE_H
#define ZOKECC_TESTS_SUPPORT_SESSION_EXCHANGE_H

#include <gtest/gtest.h>
#include <zokecc/sdf.h>

#include <algorithm>
#include <cstddef>

#include "tests/sdf/fixtures.h"
#include "tests/support/exchange_case.h"
#include "tests/support/fake_entropy.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/hex.h"

namespace zokecc_test::exchange {

// A test sets up its case by changing a pointer, a record or a number before the call.
struct SessionExchange {
    SessionExchange(const ExchangeCase &exchange, Role side, int key_length = 16)
        : d_record(private_key(exchange.own(side).d)),
          r_record(private_key(exchange.own(side).r)),
          R_record(public_key(exchange.own(side).Rx, exchange.own(side).Ry)),
          peerR_record(public_key(exchange.peer(side).Rx, exchange.peer(side).Ry)),
          peerP_record(public_key(exchange.peer(side).x, exchange.peer(side).y)),
          idA(exchange.A.id),
          idB(exchange.B.id),
          ZA(exchange.A.Z),
          ZB(exchange.B.Z),
          key(key_length > 0 ? static_cast<size_t>(key_length) : 0),
          klen_bits(static_cast<uint32_t>(8 * key.size())),
          session(shared_session(exchange.curve, exchange.selector)) {
        written->key = key.data();
    }
    SessionExchange(const SessionExchange &) = delete;
    SessionExchange &operator=(const SessionExchange &) = delete;

    ECCrefPrivateKey d_record, r_record;
    ECCrefPublicKey R_record, peerR_record, peerP_record;
    ByteString idA, idB, ZA, ZB;
    GuardedRecord<ECCrefPublicKey> R_written;
    GuardedRecord<KeyAgreementResult> written;
    GuardedBuffer key;

    uint32_t klen_bits;
    void *session;
    const uint8_t *idA_bytes = idA.data();
    uint32_t idA_len = static_cast<uint32_t>(idA.size());
    const uint8_t *idB_bytes = idB.data();
    uint32_t idB_len = static_cast<uint32_t>(idB.size());
    const uint8_t *ZA_bytes = ZA.data();
    uint32_t ZA_len = static_cast<uint32_t>(ZA.size());
    const uint8_t *ZB_bytes = ZB.data();
    uint32_t ZB_len = static_cast<uint32_t>(ZB.size());
    const ECCrefPrivateKey *d = &d_record;
    const ECCrefPrivateKey *r = &r_record;
    ECCrefPublicKey *R = &R_record;
    const ECCrefPublicKey *peerR = &peerR_record;
    const ECCrefPublicKey *peerP = &peerP_record;
    ECCrefPublicKey *R_out = R_written.get();
    KeyAgreementResult *result = written.get();

    void set_Z(const ByteString &A, const ByteString &B) {
        ZA = A;
        ZB = B;
        ZA_bytes = ZA.data();
        ZB_bytes = ZB.data();
        ZA_len = static_cast<uint32_t>(ZA.size());
        ZB_len = static_cast<uint32_t>(ZB.size());
    }
    void set_peer_key(const ByteString &x, const ByteString &y) { peerP_record = public_key(x, y); }

    uint32_t sm2_initiate() {
        return ZOK_SM2_GenerateKeyWithECC(session, klen_bits, idA_bytes, idA_len, idB_bytes, idB_len, d, r, R,
                                          peerP, peerR, result);
    }
    uint32_t sm2_respond() {
        return ZOK_SM2_GenerateResponseWithECC(session, klen_bits, idA_bytes, idA_len, idB_bytes, idB_len, d,
                                               peerP, peerR, r, R, result);
    }
    uint32_t sm2_respond_at_once() {
        return ZOK_SM2_GenerateAgreementDataAndKeyWithECC(session, klen_bits, idA_bytes, idA_len, idB_bytes,
                                                          idB_len, d, peerP, peerR, R_out, result);
    }
    uint32_t initiate() {
        return ZOK_GenerateKeyWithECC(session, klen_bits, ZA_bytes, ZA_len, ZB_bytes, ZB_len, d, r, peerP,
                                      peerR, result);
    }
    uint32_t respond() {
        return ZOK_GenerateResponseWithECC(session, klen_bits, ZA_bytes, ZA_len, ZB_bytes, ZB_len, d, peerP,
                                           peerR, r, R, result);
    }
    uint32_t respond_at_once() {
        return ZOK_GenerateAgreementDataAndKeyWithECC(session, klen_bits, ZA_bytes, ZA_len, ZB_bytes, ZB_len,
                                                      d, peerP, peerR, R_out, result);
    }
    uint32_t ecdh(uint8_t *out) const { return ZOK_ExternalEcdhKeyAgreement(session, d, peerP, out); }

    bool values_untouched() const {
        static_assert(offsetof(KeyAgreementResult, key) == 128);
        const ByteString bytes = written.bytes();
        return written.guards_intact() &&
               std::all_of(bytes.begin(), bytes.begin() + 128, [](uint8_t b) { return b == kFill; });
    }
    bool results_untouched() const { return values_untouched() && key.untouched(); }
    bool nothing_written() const { return results_untouched() && R_written.unchanged(); }
};

using SessionCall = uint32_t (SessionExchange::*)();

struct SessionKeyCall {
    const char *name;
    SessionCall call;
    Role role;
    bool makes_Z;  // from identities
    bool draws;    // its random scalar; otherwise it takes r
};
inline constexpr SessionKeyCall kSm2Initiate = {"SM2 initiator", &SessionExchange::sm2_initiate,
                                                Role::kInitiator, true, false};
inline constexpr SessionKeyCall kSm2Respond = {"SM2 responder", &SessionExchange::sm2_respond,
                                               Role::kResponder, true, false};
inline constexpr SessionKeyCall kSm2RespondAtOnce = {
    "SM2 one-call responder", &SessionExchange::sm2_respond_at_once, Role::kResponder, true, true};
inline constexpr SessionKeyCall kInitiate = {"initiator", &SessionExchange::initiate, Role::kInitiator, false,
                                             false};
inline constexpr SessionKeyCall kRespond = {"responder", &SessionExchange::respond, Role::kResponder, false,
                                            false};
inline constexpr SessionKeyCall kRespondAtOnce = {"one-call responder", &SessionExchange::respond_at_once,
                                                  Role::kResponder, false, true};
inline constexpr SessionKeyCall kSm2Family[] = {kSm2Initiate, kSm2Respond, kSm2RespondAtOnce};
inline constexpr SessionKeyCall kPlainFamily[] = {kInitiate, kRespond, kRespondAtOnce};
inline constexpr SessionKeyCall kSessionKeyCalls[] = {kSm2Initiate, kSm2Respond, kSm2RespondAtOnce,
                                                      kInitiate,    kRespond,    kRespondAtOnce};

// The call, with the case's own r as the drawn number for those that draw.
inline uint32_t run(SessionExchange &side, const SessionKeyCall &call) {
    FakeEntropy entropy;
    if (side.r != nullptr && side.r->bits <= 512)
        entropy.queued_numbers.push_back(mint_from_hex(to_hex(side.r->K, side.r->bits / 8)));
    const uint32_t status = (side.*call.call)();
    EXPECT_LE(entropy.number_calls, call.draws ? 1u : 0u) << call.name;
    return status;
}

// The key, and 32 bytes in each slot: the initiator compares S1 (02) and sends SA (03), the
// responder compares S2 (03) and sends SB (02). Nothing else.
inline void expect_results(SessionExchange &side, const SessionKeyCall &call,
                           const ExchangeHashes &expected) {
    const ByteString unused(32, kFill);
    const bool initiates = call.role == Role::kInitiator;
    const KeyAgreementResult &got = *side.written.get();
    EXPECT_EQ(to_hex(side.key.all()), to_hex(expected.key(side.key.size()))) << call.name;
    EXPECT_TRUE(side.key.untouched_from(side.key.size())) << call.name;
    EXPECT_EQ(to_hex(got.check, 64), to_hex(joined({expected.confirmation(initiates ? 0x02 : 0x03), unused})))
        << call.name;
    EXPECT_EQ(to_hex(got.send, 64), to_hex(joined({expected.confirmation(initiates ? 0x03 : 0x02), unused})))
        << call.name;
    EXPECT_EQ(got.key, side.key.data()) << call.name;
    EXPECT_TRUE(side.written.guards_intact()) << call.name;
}

// x and y in L bytes at the start of their fields, bits, and nothing else.
inline void expect_public_written(const GuardedRecord<ECCrefPublicKey> &written, const ByteString &x,
                                  const ByteString &y) {
    EXPECT_EQ(to_hex(written.bytes()), to_hex(image(public_key(x, y))));
    EXPECT_TRUE(written.guards_intact());
}

}  // namespace zokecc_test::exchange

#endif

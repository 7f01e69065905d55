// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// One interface to the key exchange on the process-wide curve and on a session's curve, for tests of
// their common behaviour.
#ifndef ZOKECC_TESTS_SUPPORT_EXCHANGE_GENERATIONS_H
#define ZOKECC_TESTS_SUPPORT_EXCHANGE_GENERATIONS_H

#include <string>
#include <type_traits>
#include <utility>

#include "tests/support/legacy_exchange.h"
#include "tests/support/session_exchange.h"

namespace zokecc_test::exchange {

// The calls on the process-wide curve.
struct Legacy {
    using Side = LegacyExchange;
    using Call = LegacyKeyCall;
    static constexpr unsigned kLengths[] = {24, 28, 32};
    static constexpr size_t kMostScalarBytes = 76;
    static constexpr const Call &kInitiator = kInitiatorCall;
    static constexpr auto &kCalls = kLegacyKeyCalls;
    static constexpr auto &kGivenZ = kLegacyKeyCalls;
    static constexpr Call kDrawing[] = {{"B1_10", &LegacyExchange::b1_10, Role::kResponder}};
    static constexpr Call kOthers[] = {kInitiatorCall, kWholeInitiator, kWholeResponder};
    static constexpr auto &kGivenPoint = kOthers;  // of their own
    static constexpr auto &kReducing = kOthers;    // a random scalar of the order and above

    static void use(const Curve &curve) { install(curve); }
    static ecc_point_bytes point(const ByteString &x, const ByteString &y) { return point_record(x, y); }
    static void set_length(ecc_point_bytes &record, uint32_t bytes) { record.length = bytes; }
    static void set_d(Side &side, const ByteString &d) { side.d_bytes.set(d); }
    static void set_r(Side &side, const ByteString &r) { side.r_bytes.set(r); }
    static void set_selector(Side &side, const ExchangeCase &, uint32_t value) { side.selector = value; }
    static void set_session(Side &, const ExchangeCase &) {}
    static void take_no_key(Side &side) { side.K = nullptr; }
    static void take_Z(Side &side, const uint8_t *ZA, const uint8_t *ZB) {
        side.ZA = ZA;
        side.ZB = ZB;
    }
    static bool writes_point(const Call &call) {
        return call.call == kResponderCall.call || call.call == kDrawing[0].call;
    }
    static bool sets_bits(const Call &) { return false; }  // of a given random point
    // The plain call, if a test prepares the drawn number itself.
    static const Call &bare(const Call &call) { return writes_point(call) ? kDrawing[0] : call; }
    static void expect_point(const Side &side, const ByteString &x, const ByteString &y) {
        expect_record(side.R_written, x, y);
    }
    // The values with 02 and 03.
    static std::pair<std::string, std::string> values(Side &side, const Call &) {
        return {text_of(side.value02), text_of(side.value03)};
    }
    // All inputs of the call.
    static std::string inputs(const Side &side) {
        return to_hex(side.d->bytes, side.d->length) + to_hex(side.r->bytes, side.r->length) +
               to_hex(image(side.R_record)) + to_hex(image(side.peerR_record)) +
               to_hex(image(side.peerP_record)) + to_hex(side.ZA_bytes) + to_hex(side.ZB_bytes);
    }
    // The role's key, if the call computes Z from a key.
    static ByteString *Z_of(ExchangeHashes &, const Call &, Role) { return nullptr; }
    static void mark_point(Side &, const Call &) {}
    static void expect_marked_point(const Side &, const Call &, const ExchangeCase &) {}
};

// The calls on a session's curve.
struct Sessions {
    using Side = SessionExchange;
    using Call = SessionKeyCall;
    static constexpr unsigned kLengths[] = {20, 24, 28, 32};
    static constexpr size_t kMostScalarBytes = 64;
    static constexpr const Call &kInitiator = kInitiate;
    static constexpr auto &kCalls = kSessionKeyCalls;
    static constexpr auto &kGivenZ = kPlainFamily;
    static constexpr Call kDrawing[] = {kSm2RespondAtOnce, kRespondAtOnce};
    static constexpr Call kOthers[] = {kSm2Initiate, kSm2Respond, kInitiate, kRespond};
    static constexpr Call kGivenPoint[] = {kSm2Initiate, kSm2Respond, kRespond};
    static constexpr Call kReducing[] = {kSm2Respond, kRespond};

    static void use(const Curve &) {}
    static ECCrefPublicKey point(const ByteString &x, const ByteString &y) { return public_key(x, y); }
    static void set_length(ECCrefPublicKey &record, uint32_t bytes) { record.bits = 8 * bytes; }
    static void set_d(Side &side, const ByteString &d) { side.d_record = private_key(d); }
    static void set_r(Side &side, const ByteString &r) { side.r_record = private_key(r); }
    static void set_selector(Side &side, const ExchangeCase &exchange, uint32_t value) {
        side.session = shared_session(exchange.curve, value);
    }
    static void set_session(Side &side, const ExchangeCase &exchange) {
        set_selector(side, exchange, exchange.selector);
    }
    static void take_no_key(Side &side) { side.result->key = nullptr; }
    static void take_Z(Side &side, const uint8_t *ZA, const uint8_t *ZB) {
        side.ZA_bytes = ZA;
        side.ZB_bytes = ZB;
    }
    static bool writes_point(const Call &call) { return call.draws; }
    static bool sets_bits(const Call &call) { return call.role == Role::kResponder && !call.draws; }
    static const Call &bare(const Call &call) { return call; }
    static void expect_point(const Side &side, const ByteString &x, const ByteString &y) {
        expect_public_written(side.R_written, x, y);
    }
    static std::pair<std::string, std::string> values(Side &side, const Call &call) {
        const std::string check = to_hex(side.result->check, 32), send = to_hex(side.result->send, 32);
        return call.role == Role::kInitiator ? std::pair{check, send} : std::pair{send, check};
    }
    static std::string inputs(const Side &side) {
        return to_hex(image(side.d_record)) + to_hex(image(side.r_record)) + to_hex(image(side.R_record)) +
               to_hex(image(side.peerR_record)) + to_hex(image(side.peerP_record)) + to_hex(side.ZA) +
               to_hex(side.ZB) + to_hex(side.idA) + to_hex(side.idB);
    }
    static ByteString *Z_of(ExchangeHashes &hashes, const Call &call, Role role) {
        if (!call.makes_Z) return nullptr;
        return role == Role::kInitiator ? &hashes.ZA : &hashes.ZB;
    }
    // Only the bits field of a responder's given random point is set.
    static void mark_point(Side &side, const Call &call) {
        if (call.role == Role::kResponder) side.R_record.bits = 0xDEADBEEF;
    }
    static void expect_marked_point(const Side &side, const Call &call, const ExchangeCase &exchange) {
        ECCrefPublicKey expected = public_key(exchange.own(call.role).Rx, exchange.own(call.role).Ry);
        if (call.draws) expected.bits = 0xDEADBEEF;
        EXPECT_EQ(to_hex(image(side.R_record)), to_hex(image(expected))) << call.name;
    }
};

// The test suites for both, as SUITE/Legacy and SUITE/Sessions.
using Generations = testing::Types<Legacy, Sessions>;
struct GenerationName {
    template <class G>
    static std::string GetName(int) {
        return std::is_same_v<G, Legacy> ? "Legacy" : "Sessions";
    }
};

// An exchange on the curve of 991 points, which the generation uses from now on.
template <class G>
ExchangeCase small_exchange(unsigned byte_len = 32, uint32_t selector = 0) {
    ExchangeCase out = tiny_case(prime_group(), byte_len, selector);
    G::use(out.curve);
    return out;
}

// The call must succeed, with exactly these results.
template <class Side, class Call>
void expect_gives(Side &side, const Call &call, const ExchangeHashes &expected) {
    ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
    expect_results(side, call, expected);
}

// The random point that the call draws, if any.
template <class G>
void expect_random_point(const typename G::Side &side, const typename G::Call &call,
                         const ExchangeCase &exchange) {
    if (G::writes_point(call))
        G::expect_point(side, exchange.B.Rx, exchange.B.Ry);
    else
        EXPECT_TRUE(side.R_written.unchanged()) << call.name;
}

}  // namespace zokecc_test::exchange

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Key agreement over a session against the exchange over the process-wide curve: the same curve and
// the same numbers give the same bytes.
#include <gtest/gtest.h>

#include "tests/support/legacy_exchange.h"
#include "tests/support/session_exchange.h"

namespace zokecc_test::agreement_legacy_test {

using namespace exchange;

namespace {

struct Pair {
    LegacyKeyCall legacy;
    SessionKeyCall session;
};
constexpr Pair kPairs[] = {{kInitiatorCall, kInitiate},      {kInitiatorCall, kSm2Initiate},
                           {kResponderCall, kRespondAtOnce}, {kResponderCall, kSm2RespondAtOnce},
                           {kResponderCall, kRespond},       {kResponderCall, kSm2Respond}};

void expect_same_bytes(const ExchangeCase &exchange, const Pair &pair, uint32_t klen) {
    LegacyExchange legacy(exchange, pair.legacy.role, static_cast<int32_t>(klen));
    SessionExchange session(exchange, pair.session.role, klen);
    ASSERT_EQ((legacy.*pair.legacy.call)(), 0) << pair.legacy.name;
    ASSERT_EQ(run(session, pair.session), ZOK_OK) << pair.session.name;
    EXPECT_EQ(key_text(session), text_of(legacy.key)) << pair.session.name;
    const bool initiates = pair.session.role == Role::kInitiator;
    const uint8_t *const session02 = initiates ? session.result->check : session.result->send;
    const uint8_t *const session03 = initiates ? session.result->send : session.result->check;
    EXPECT_EQ(to_hex(session02, 32), text_of(legacy.value02)) << pair.session.name;
    EXPECT_EQ(to_hex(session03, 32), text_of(legacy.value03)) << pair.session.name;
    if (!pair.session.draws) return;
    EXPECT_EQ(to_hex(session.R_out->x, 32), to_hex(legacy.R_out->x, 32));
    EXPECT_EQ(to_hex(session.R_out->y, 32), to_hex(legacy.R_out->y, 32));
}

}  // namespace

TEST(ZokAgreement, GivesTheBytesOfTheLegacyCallsOnNamedCurves) {
    for (const char *name : {"sm2p256v1", "secp224r1", "brainpoolP192r1"})
        for (const VectorBlock &block : exchange_vectors()) {
            if (block.text("Curve") != name || block.decimal("KLen") != 16) continue;
            const ExchangeCase exchange = vector_case(block);
            install(exchange.curve);
            for (const Pair &pair : kPairs) expect_same_bytes(exchange, pair, 45);
        }
}

TEST(ZokAgreement, GivesTheBytesOfTheLegacyCallsOnSmallCurves) {
    for (const TinyGroup *group : {&prime_group(), &cofactor_group()})
        for (unsigned byte_len : {24u, 28u, 32u})
            for (uint32_t selector : {0u, 1u}) {
                const ExchangeCase exchange = tiny_case(*group, byte_len, selector);
                install(exchange.curve);
                for (const Pair &pair : kPairs) expect_same_bytes(exchange, pair, 100);
            }
}

TEST(ZokAgreement, ConfirmsASideThatUsesTheLegacyCalls) {
    const ExchangeCase exchange = vector_case(worked_example("GM/T 0003.5-2012 B.2"));
    install(exchange.curve);
    LegacyExchange initiator(exchange, Role::kInitiator);
    SessionExchange responder(exchange, Role::kResponder);
    ASSERT_EQ(initiator.a4_10(), 0);
    ASSERT_EQ(run(responder, kSm2RespondAtOnce), ZOK_OK);
    EXPECT_EQ(text_of(initiator.key), key_text(responder));
    EXPECT_EQ(text_of(initiator.value02), to_hex(responder.result->send, 32));
    EXPECT_EQ(text_of(initiator.value03), to_hex(responder.result->check, 32));
}

TEST(ZokAgreement, KeyIsThatOfTheLegacyCallForBothRolesToo) {
    const ExchangeCase exchange = vector_case(worked_example("GM/T 0003.5-2012 B.2"));
    install(exchange.curve);
    SessionExchange session(exchange, Role::kInitiator, 48);
    ASSERT_EQ(run(session, kInitiate), ZOK_OK);
    for (const LegacyKeyCall &call : {kWholeInitiator, kWholeResponder}) {
        LegacyExchange legacy(exchange, call.role, 48);
        ASSERT_EQ((legacy.*call.call)(), 0);
        EXPECT_EQ(text_of(legacy.key), key_text(session));
    }
}

TEST(ZokAgreement, ProcessWideCurveHasNoPartInASession) {
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    uninstall();
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
        expect_results(side, call, exchange.hashes());
    }
}

}  // namespace zokecc_test::agreement_legacy_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SM2 key agreement over a session's curve: both sides, both families, both kinds of responder,
// against the model and against each other.
#include <gtest/gtest.h>

#include "tests/support/model_hash.h"
#include "tests/support/session_exchange.h"

namespace zokecc_test::agreement_test {

using namespace exchange;

namespace {

constexpr unsigned kLengths[] = {20, 24, 28, 32};

// The other side's calls with the same numbers.
void expect_sides_agree(const ExchangeCase &exchange, const SessionKeyCall &initiator_call,
                        const SessionKeyCall &responder_call) {
    SessionExchange initiator(exchange, Role::kInitiator, 45);
    SessionExchange responder(exchange, Role::kResponder, 45);
    ASSERT_EQ(run(responder, responder_call), ZOK_OK);
    if (responder_call.draws) initiator.peerR = responder.R_out;
    ASSERT_EQ(run(initiator, initiator_call), ZOK_OK);
    EXPECT_EQ(key_text(initiator), key_text(responder));
    EXPECT_EQ(to_hex(initiator.result->check, 32), to_hex(responder.result->send, 32)) << "S1 and SB";
    EXPECT_EQ(to_hex(initiator.result->send, 32), to_hex(responder.result->check, 32)) << "SA and S2";
    EXPECT_NE(to_hex(initiator.result->check, 32), to_hex(initiator.result->send, 32));
}

// Z values made by the library's own call.
ByteString generated_Z(const ExchangeCase &exchange, const ExchangeParty &party) {
    const ECCrefPublicKey key = public_record(party.x, party.y);
    ByteString Z(32);
    uint32_t length = 0;
    EXPECT_EQ(ZOK_GenerateUserInfo(session_on(exchange.curve, exchange.selector), &key, party.id.data(),
                                   static_cast<uint32_t>(party.id.size()), Z.data(), &length),
              ZOK_OK);
    EXPECT_EQ(length, 32u);
    return Z;
}

}  // namespace

TEST(ZokAgreement, EveryCallGivesTheModelsResultsForAllLengthsAndBothHashes) {
    for (unsigned byte_len : kLengths)
        for (uint32_t selector : {0u, 1u}) {
            const ExchangeCase exchange = tiny_case(prime_group(), byte_len, selector);
            for (const SessionKeyCall &call : kSessionKeyCalls) {
                SessionExchange side(exchange, call.role, 45);
                ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
                expect_results(side, call, exchange.hashes());
            }
        }
}

TEST(ZokSm2GenerateKeyWithEcc, AgreesWithTheOneCallResponder) {
    for (const TinyGroup *group : {&prime_group(), &cofactor_group()})
        for (unsigned byte_len : kLengths)
            expect_sides_agree(tiny_case(*group, byte_len, 0), kSm2Initiate, kSm2RespondAtOnce);
}

TEST(ZokSm2GenerateKeyWithEcc, AgreesWithTheResponderWithATemporaryKey) {
    for (unsigned byte_len : kLengths)
        expect_sides_agree(tiny_case(prime_group(), byte_len, 1), kSm2Initiate, kSm2Respond);
}

TEST(ZokGenerateKeyWithEcc, AgreesWithTheOneCallResponder) {
    for (const TinyGroup *group : {&prime_group(), &cofactor_group()})
        for (unsigned byte_len : kLengths)
            expect_sides_agree(tiny_case(*group, byte_len, 0), kInitiate, kRespondAtOnce);
}

TEST(ZokGenerateKeyWithEcc, AgreesWithTheResponderWithATemporaryKey) {
    for (unsigned byte_len : kLengths)
        expect_sides_agree(tiny_case(prime_group(), byte_len, 1), kInitiate, kRespond);
}

TEST(ZokAgreement, FamiliesAgreeOnZValuesFromTheUserInformationCall) {
    for (uint32_t selector : {0u, 1u}) {
        ExchangeCase exchange = tiny_case(prime_group(), 32, selector);
        exchange.A.Z = generated_Z(exchange, exchange.A);
        exchange.B.Z = generated_Z(exchange, exchange.B);
        const std::pair<SessionKeyCall, SessionKeyCall> pairs[] = {
            {kSm2Initiate, kInitiate}, {kSm2Respond, kRespond}, {kSm2RespondAtOnce, kRespondAtOnce}};
        for (const auto &[from_identities, from_Z] : pairs) {
            SessionExchange one(exchange, from_identities.role, 45);
            SessionExchange other(exchange, from_Z.role, 45);
            ASSERT_EQ(run(one, from_identities), ZOK_OK) << from_identities.name;
            ASSERT_EQ(run(other, from_Z), ZOK_OK) << from_Z.name;
            EXPECT_EQ(key_text(one), key_text(other));
            EXPECT_EQ(to_hex(one.result->check, 64), to_hex(other.result->check, 64));
            EXPECT_EQ(to_hex(one.result->send, 64), to_hex(other.result->send, 64));
        }
        expect_sides_agree(exchange, kSm2Initiate, kRespondAtOnce);
        expect_sides_agree(exchange, kInitiate, kSm2Respond);
    }
}

TEST(ZokAgreement, GivenTemporaryKeyAndDrawnOneGiveTheSame) {
    const ExchangeCase exchange = tiny_case(prime_group(), 28, 0);
    const std::pair<SessionKeyCall, SessionKeyCall> pairs[] = {{kSm2Respond, kSm2RespondAtOnce},
                                                               {kRespond, kRespondAtOnce}};
    for (const auto &[given, drawn] : pairs) {
        SessionExchange with_key(exchange, Role::kResponder, 45);
        SessionExchange at_once(exchange, Role::kResponder, 45);
        ASSERT_EQ(run(with_key, given), ZOK_OK);
        ASSERT_EQ(run(at_once, drawn), ZOK_OK);
        EXPECT_EQ(key_text(with_key), key_text(at_once));
        EXPECT_EQ(to_hex(with_key.result->check, 64), to_hex(at_once.result->check, 64));
        EXPECT_EQ(to_hex(with_key.result->send, 64), to_hex(at_once.result->send, 64));
        expect_public_written(at_once.R_written, exchange.B.Rx, exchange.B.Ry);
        EXPECT_TRUE(with_key.R_written.unchanged());
    }
}

TEST(ZokAgreement, InitiatorFirstInBothPairsOfValuesWhicheverSideCalls) {
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    ExchangeHashes swapped = exchange.hashes();
    std::swap(swapped.ZA, swapped.ZB);
    for (const SessionKeyCall &call : kPlainFamily) {
        SessionExchange side(exchange, call.role);
        std::swap(side.ZA_bytes, side.ZB_bytes);
        ASSERT_EQ(run(side, call), ZOK_OK);
        expect_results(side, call, swapped);
    }
}

TEST(ZokAgreement, IdentitiesEnterTheResultsOfTheSm2Family) {
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    const ByteString other = test_bytes(300);
    for (const SessionKeyCall &call : kSm2Family) {
        SessionExchange side(exchange, call.role);
        side.idA_bytes = other.data();
        side.idA_len = 300;
        side.idB_bytes = nullptr;
        side.idB_len = 0;
        ExchangeHashes expected = exchange.hashes();
        expected.ZA = model_user_z(exchange.curve, 0, other, exchange.A.x, exchange.A.y);
        expected.ZB = model_user_z(exchange.curve, 0, {}, exchange.B.x, exchange.B.y);
        ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
        expect_results(side, call, expected);
    }
}

TEST(ZokAgreement, RespondersThatDrawTakeOneNumberBelowTheOrder) {
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    for (const SessionKeyCall &call : {kSm2RespondAtOnce, kRespondAtOnce}) {
        SessionExchange side(exchange, Role::kResponder);
        FakeEntropy entropy;
        ASSERT_EQ((side.*call.call)(), ZOK_OK) << call.name;
        EXPECT_EQ(entropy.number_calls, 1u);
        // The same start of the generator gives the number that the call drew.
        FakeEntropy again;
        mint r{};
        gen_random_number(&r, &exchange.curve.n);
        EXPECT_EQ(entropy.call_order, again.call_order);
        const TinyPoint R = prime_group().multiple(r.words[0]);
        expect_public_written(side.R_written, tiny_bytes(R.x, 32), tiny_bytes(R.y, 32));
    }
}

TEST(ZokAgreement, OtherCallsDrawNothing) {
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    for (const SessionKeyCall &call : {kSm2Initiate, kSm2Respond, kInitiate, kRespond}) {
        SessionExchange side(exchange, call.role);
        FakeEntropy entropy;
        ASSERT_EQ((side.*call.call)(), ZOK_OK) << call.name;
        EXPECT_TRUE(entropy.call_order.empty()) << call.name;
        EXPECT_EQ(entropy.number_calls, 0u) << call.name;
    }
}

TEST(ZokAgreementNull, ValuesWithoutBytesNeedNoPointer) {
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
        SessionExchange side(exchange, call.role);
        side.idA_bytes = side.idB_bytes = side.ZA_bytes = side.ZB_bytes = nullptr;
        side.idA_len = side.idB_len = side.ZA_len = side.ZB_len = 0;
        ExchangeHashes expected = exchange.hashes();
        expected.ZA =
            call.makes_Z ? model_user_z(exchange.curve, 0, {}, exchange.A.x, exchange.A.y) : ByteString{};
        expected.ZB =
            call.makes_Z ? model_user_z(exchange.curve, 0, {}, exchange.B.x, exchange.B.y) : ByteString{};
        ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
        expect_results(side, call, expected);
    }
}

TEST(ZokAgreement, WorksOnceACurveIsInstalled) {
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    Curve unknown = exchange.curve;
    unknown.session_type = 7;
    const AnySession session(unknown.record(0));
    CurvePara record = exchange.curve.record(0);
    record.type = 4;
    ASSERT_EQ(ZOK_CurveParaCfg(session.handle(), 4, &record), ZOK_OK);
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        side.session = session.handle();
        ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
        expect_results(side, call, exchange.hashes());
    }
}

}  // namespace zokecc_test::agreement_test

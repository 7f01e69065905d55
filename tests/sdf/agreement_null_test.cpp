// Every pointer of the key agreement calls null in turn: the session before everything else, the
// other pointers before every value, and those that are not needed.
#include <gtest/gtest.h>

#include <functional>

#include "tests/support/session_exchange.h"

namespace zokecc_test::agreement_null_test {

using namespace exchange;

namespace {

using Change = std::function<void(SessionExchange &)>;

const ExchangeCase &small_exchange() {
    static const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    return exchange;
}

void spoil_values(SessionExchange &s) {
    s.d_record = private_record(ByteString(64, 0xFF));
    s.r_record.bits = 4000;
    s.peerR_record.y[31] ^= 1;
    s.peerP_record.bits = 520;
    s.R_record.bits = 520;
}

void expect_status(const SessionKeyCall &call, uint32_t status, const Change &change) {
    SessionExchange side(small_exchange(), call.role);
    change(side);
    const ECCrefPublicKey before = side.R_record;
    FakeEntropy entropy;
    EXPECT_EQ((side.*call.call)(), status) << call.name;
    EXPECT_TRUE(side.nothing_written()) << call.name;
    EXPECT_EQ(record_text(side.R_record), record_text(before)) << call.name;
    EXPECT_EQ(entropy.number_calls, 0u) << call.name;
}

// Refused with 0x1000027, also when the values are bad as well.
void expect_null_refused(const SessionKeyCall &call, const Change &change) {
    expect_status(call, ZOK_ERR_ARGUMENT, change);
    expect_status(call, ZOK_ERR_ARGUMENT, [&](SessionExchange &s) {
        spoil_values(s);
        change(s);
    });
}

void take_everything(SessionExchange &s) {
    spoil_values(s);
    s.session = nullptr;
    s.d = s.r = nullptr;
    s.R = s.R_out = nullptr;
    s.peerR = s.peerP = nullptr;
    s.idA_bytes = s.idB_bytes = s.ZA_bytes = s.ZB_bytes = nullptr;
    s.result = nullptr;
}

const Change kNoResult = [](SessionExchange &s) { s.result = nullptr; };
const Change kNoD = [](SessionExchange &s) { s.d = nullptr; };
const Change kNoR = [](SessionExchange &s) { s.r = nullptr; };
const Change kNoOwnPoint = [](SessionExchange &s) { s.R = nullptr; };
const Change kNoPeerPoint = [](SessionExchange &s) { s.peerR = nullptr; };
const Change kNoPeerKey = [](SessionExchange &s) { s.peerP = nullptr; };
const Change kNoPointOutput = [](SessionExchange &s) { s.R_out = nullptr; };

}  // namespace

TEST(ZokAgreementNull, SessionReturns1000026WhateverElseIsWrong) {
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        expect_status(call, ZOK_ERR_SESSION, [](SessionExchange &s) { s.session = nullptr; });
        expect_status(call, ZOK_ERR_SESSION, take_everything);
        expect_status(call, ZOK_ERR_SESSION, [](SessionExchange &s) {
            s.session = nullptr;
            s.ZA_len = s.ZB_len = s.idA_len = s.idB_len = 0xFFFFFFFF;
        });
    }
}

TEST(ZokAgreementNull, RecordsThatEveryCallNeedsReturn1000027) {
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        expect_null_refused(call, kNoD);
        expect_null_refused(call, kNoPeerPoint);
        expect_null_refused(call, kNoPeerKey);
        expect_null_refused(call, kNoResult);
    }
}

TEST(ZokAgreementNull, OwnRandomScalarReturns1000027WhereItIsGiven) {
    for (const SessionKeyCall &call : {kSm2Initiate, kSm2Respond, kInitiate, kRespond})
        expect_null_refused(call, kNoR);
}

TEST(ZokAgreementNull, OwnRandomPointReturns1000027WhereItIsGiven) {
    for (const SessionKeyCall &call : {kSm2Initiate, kSm2Respond, kRespond})
        expect_null_refused(call, kNoOwnPoint);
}

TEST(ZokAgreementNull, RandomPointOutputReturns1000027BeforeADraw) {
    for (const SessionKeyCall &call : {kSm2RespondAtOnce, kRespondAtOnce})
        expect_null_refused(call, kNoPointOutput);
}

TEST(ZokAgreementNull, IdentityWithALengthReturns1000027) {
    for (const SessionKeyCall &call : kSm2Family) {
        expect_null_refused(call, [](SessionExchange &s) { s.idA_bytes = nullptr; });
        expect_null_refused(call, [](SessionExchange &s) { s.idB_bytes = nullptr; });
    }
}

TEST(ZokAgreementNull, ZValueWithALengthReturns1000027) {
    for (const SessionKeyCall &call : kPlainFamily) {
        expect_null_refused(call, [](SessionExchange &s) { s.ZA_bytes = nullptr; });
        expect_null_refused(call, [](SessionExchange &s) { s.ZB_bytes = nullptr; });
        expect_null_refused(call, [](SessionExchange &s) {
            s.ZB_bytes = nullptr;
            s.ZB_len = 1;
        });
    }
}

TEST(ZokAgreementNull, ValuesWithoutBytesNeedNoPointer) {
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        const ExchangeCase &exchange = small_exchange();
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

TEST(ZokExternalEcdhKeyAgreement, NullSessionReturns1000026BeforeOtherNullPointers) {
    SessionExchange side(small_exchange(), Role::kInitiator);
    GuardedBuffer out(32);
    side.session = nullptr;
    EXPECT_EQ(side.ecdh(out.data()), ZOK_ERR_SESSION);
    spoil_values(side);
    side.d = nullptr;
    side.peerP = nullptr;
    EXPECT_EQ(side.ecdh(nullptr), ZOK_ERR_SESSION);
    EXPECT_TRUE(out.untouched());
}

TEST(ZokExternalEcdhKeyAgreement, NullPointerReturns1000027BeforeTheValuesAreRead) {
    for (bool spoiled : {false, true}) {
        GuardedBuffer out(32);
        SessionExchange no_output(small_exchange(), Role::kInitiator);
        SessionExchange no_key(small_exchange(), Role::kInitiator);
        SessionExchange no_peer(small_exchange(), Role::kInitiator);
        if (spoiled)
            for (SessionExchange *side : {&no_output, &no_key, &no_peer}) spoil_values(*side);
        no_key.d = nullptr;
        no_peer.peerP = nullptr;
        EXPECT_EQ(no_output.ecdh(nullptr), ZOK_ERR_ARGUMENT);
        EXPECT_EQ(no_key.ecdh(out.data()), ZOK_ERR_ARGUMENT);
        EXPECT_EQ(no_peer.ecdh(out.data()), ZOK_ERR_ARGUMENT);
        EXPECT_TRUE(out.untouched());
    }
}

}  // namespace zokecc_test::agreement_null_test

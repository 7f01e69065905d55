// What the key agreement calls refuse before they compute, with which code, and which of two faults
// decides. Nothing is written and nothing drawn.
#include <gtest/gtest.h>

#include <functional>

#include "tests/support/failing_alloc.h"
#include "tests/support/session_exchange.h"

namespace zokecc_test::agreement_refusals_test {

using namespace exchange;

namespace {

using Change = std::function<void(SessionExchange &)>;

const ExchangeCase &small_exchange() {
    static const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    return exchange;
}

void expect_refused(const SessionKeyCall &call, uint32_t status, const Change &change) {
    SessionExchange side(small_exchange(), call.role);
    change(side);
    const ECCrefPublicKey before = side.R_record;
    FakeEntropy entropy;
    EXPECT_EQ((side.*call.call)(), status) << call.name;
    EXPECT_TRUE(side.nothing_written()) << call.name;
    EXPECT_EQ(record_text(side.R_record), record_text(before)) << call.name;
    EXPECT_EQ(entropy.number_calls, 0u) << call.name;
    EXPECT_TRUE(entropy.call_order.empty()) << call.name;
}

void expect_refused_by_all(uint32_t status, const Change &change) {
    for (const SessionKeyCall &call : kSessionKeyCalls) expect_refused(call, status, change);
}

void set_key(ECCrefPrivateKey &key, uint32_t value) { key = private_record(tiny_bytes(value, 32)); }
void take_point_off_the_curve(SessionExchange &side) { side.peerR_record.y[31] ^= 1; }
void spoil_private_key(SessionExchange &side) { set_key(side.d_record, 991); }

Change both(const Change &first, const Change &second) {
    return [=](SessionExchange &side) {
        first(side);
        second(side);
    };
}

// One call with the fail_at-th allocation failing, after a change.
struct Outcome {
    uint32_t status;
    size_t last_size;
};
Outcome run_failing(const SessionKeyCall &call, unsigned fail_at, const Change &change) {
    SessionExchange side(small_exchange(), call.role);
    change(side);
    FakeEntropy entropy;
    FailingAlloc counter(fail_at);
    const uint32_t status = (side.*call.call)();
    return {status, counter.last_size};
}

}  // namespace

TEST(ZokAgreementRefusals, NothingIsRefusedWithAllArguments) {
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(small_exchange(), call.role);
        EXPECT_EQ(run(side, call), ZOK_OK) << call.name;
    }
}

TEST(ZokAgreementRefusals, PrivateKeyNotBelowTheOrderReturns1000027) {
    for (uint32_t d : {991u, 992u, 0x80000000u, 0xFFFFFFFFu})
        expect_refused_by_all(ZOK_ERR_ARGUMENT, [=](SessionExchange &s) { set_key(s.d_record, d); });
    expect_refused_by_all(ZOK_ERR_ARGUMENT,
                          [](SessionExchange &s) { s.d_record = private_record(ByteString(64, 0xFF)); });
}

TEST(ZokAgreementRefusals, PrivateKeyEqualToTheOrderOfTheSm2CurveReturns1000027) {
    const ExchangeCase exchange = vector_case(worked_example("GM/T 0003.5-2012 B.2"));
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        side.d_record = private_record(fixed_bytes(exchange.curve.n, 32));
        EXPECT_EQ(run(side, call), ZOK_ERR_ARGUMENT) << call.name;
        EXPECT_TRUE(side.nothing_written()) << call.name;
    }
}

TEST(ZokAgreementRefusals, RandomScalarOfTheInitiatorNotBelowTheOrderReturns1000027) {
    for (const SessionKeyCall &call : {kSm2Initiate, kInitiate}) {
        for (uint32_t r : {991u, 992u, 0xFFFFFFFFu})
            expect_refused(call, ZOK_ERR_ARGUMENT, [=](SessionExchange &s) { set_key(s.r_record, r); });
        expect_refused(call, ZOK_ERR_ARGUMENT,
                       [](SessionExchange &s) { s.r_record = private_record(ByteString(64, 0xFF)); });
    }
}

TEST(ZokAgreementRefusals, ReceivedRandomPointOffTheCurveReturnsMinusOne) {
    expect_refused_by_all(ZOK_ERR_INTERNAL, [](SessionExchange &s) { s.peerR_record.x[31] ^= 1; });
    expect_refused_by_all(ZOK_ERR_INTERNAL, [](SessionExchange &s) { s.peerR_record.y[31] ^= 1; });
    expect_refused_by_all(ZOK_ERR_INTERNAL, [](SessionExchange &s) { s.peerR_record.bits = 0; });
    expect_refused_by_all(ZOK_ERR_INTERNAL, [](SessionExchange &s) { s.peerR_record.bits = 248; });
}

TEST(ZokAgreementRefusals, ReceivedRandomPointOffTheSm2CurveReturnsMinusOne) {
    const ExchangeCase exchange = vector_case(worked_example("GM/T 0003.5-2012 B.2"));
    for (const SessionKeyCall &call : kSessionKeyCalls)
        for (int coordinate : {0, 1}) {
            SessionExchange side(exchange, call.role);
            (coordinate == 0 ? side.peerR_record.x : side.peerR_record.y)[31] ^= 1;
            EXPECT_EQ(run(side, call), ZOK_ERR_INTERNAL) << call.name;
            EXPECT_TRUE(side.nothing_written()) << call.name;
        }
}

TEST(ZokAgreementRefusals, RecordLongerThanItsFieldsReturns1000027) {
    for (uint32_t bits : {520u, 527u, 0x80000000u, 0xFFFFFFFFu}) {
        expect_refused_by_all(ZOK_ERR_ARGUMENT, [=](SessionExchange &s) { s.d_record.bits = bits; });
        expect_refused_by_all(ZOK_ERR_ARGUMENT, [=](SessionExchange &s) { s.peerR_record.bits = bits; });
        expect_refused_by_all(ZOK_ERR_ARGUMENT, [=](SessionExchange &s) { s.peerP_record.bits = bits; });
        for (const SessionKeyCall &call : {kSm2Initiate, kSm2Respond, kInitiate, kRespond})
            expect_refused(call, ZOK_ERR_ARGUMENT, [=](SessionExchange &s) { s.r_record.bits = bits; });
        expect_refused(kSm2Initiate, ZOK_ERR_ARGUMENT, [=](SessionExchange &s) { s.R_record.bits = bits; });
    }
}

TEST(ZokAgreementRefusals, UnknownSelectorOfTheSessionReturns1000027InTheSm2Family) {
    for (uint32_t selector : {2u, 0xFFFFFFFFu}) {
        void *session = session_on(small_exchange().curve, selector);
        for (const SessionKeyCall &call : kSm2Family)
            expect_refused(call, ZOK_ERR_ARGUMENT, [=](SessionExchange &s) { s.session = session; });
    }
}

TEST(ZokAgreementRefusals, IdentityTooLongFor32BitsReturns1000027) {
    // Refused by its length alone: behind the pointer there is one byte.
    const ByteString one = {0x41};
    for (const SessionKeyCall &call : kSm2Family)
        for (uint32_t length : {0xFFFFFFFFu, 0xFFFFFFFFu - 6 * 32 - 2}) {
            expect_refused(call, ZOK_ERR_ARGUMENT, [&](SessionExchange &s) {
                s.idA_bytes = one.data();
                s.idA_len = length;
            });
            expect_refused(call, ZOK_ERR_ARGUMENT, [&](SessionExchange &s) {
                s.idB_bytes = one.data();
                s.idB_len = length;
            });
        }
}

TEST(ZokAgreementOrder, PrivateKeyNotBelowTheOrderWinsOverAPointOffTheCurve) {
    expect_refused_by_all(ZOK_ERR_ARGUMENT, both(spoil_private_key, take_point_off_the_curve));
}

TEST(ZokAgreementOrder, RandomScalarNotBelowTheOrderWinsOverAPointOffTheCurve) {
    for (const SessionKeyCall &call : {kSm2Initiate, kInitiate})
        expect_refused(call, ZOK_ERR_ARGUMENT,
                       both([](SessionExchange &s) { set_key(s.r_record, 991); }, take_point_off_the_curve));
}

TEST(ZokAgreementOrder, FailedUserInformationWinsOverAPointOffTheCurve) {
    void *session = session_on(small_exchange().curve, 2);
    for (const SessionKeyCall &call : kSm2Family)
        expect_refused(call, ZOK_ERR_ARGUMENT,
                       both([=](SessionExchange &s) { s.session = session; }, take_point_off_the_curve));
}

TEST(ZokAgreementOrder, UnknownSelectorOfThePlainFamilyIsNoticedAfterAPointOffTheCurve) {
    void *session = session_on(small_exchange().curve, 2);
    for (const SessionKeyCall &call : kPlainFamily)
        expect_refused(call, ZOK_ERR_INTERNAL,
                       both([=](SessionExchange &s) { s.session = session; }, take_point_off_the_curve));
}

TEST(ZokAgreementOrder, RecordTooLongWinsOverAPointOffTheCurve) {
    expect_refused_by_all(ZOK_ERR_ARGUMENT, both([](SessionExchange &s) { s.peerP_record.bits = 520; },
                                                 take_point_off_the_curve));
    for (const SessionKeyCall &call : {kSm2Initiate, kSm2Respond, kInitiate, kRespond})
        expect_refused(call, ZOK_ERR_ARGUMENT,
                       both([](SessionExchange &s) { s.r_record.bits = 520; }, take_point_off_the_curve));
}

TEST(ZokAgreementOrder, PointOffTheCurveWinsOverANullKeyBuffer) {
    expect_refused_by_all(ZOK_ERR_INTERNAL, both([](SessionExchange &s) { s.result->key = nullptr; },
                                                 take_point_off_the_curve));
}

TEST(ZokAgreementOrder, OwnUserInformationComesFirst) {
    // A is named by 5 bytes and B by 4, so that the size shows whose value is being made.
    const Change none = [](SessionExchange &) {};
    EXPECT_EQ(run_failing(kSm2Initiate, 1, none).last_size, 6u * 32 + 5 + 3);
    EXPECT_EQ(run_failing(kSm2Initiate, 2, none).last_size, 6u * 32 + 4 + 3);
    for (const SessionKeyCall &call : {kSm2Respond, kSm2RespondAtOnce}) {
        EXPECT_EQ(run_failing(call, 1, none).last_size, 6u * 32 + 4 + 3) << call.name;
        EXPECT_EQ(run_failing(call, 2, none).last_size, 6u * 32 + 5 + 3) << call.name;
    }
}

TEST(ZokAgreementOrder, FailedUserInformationBufferWinsOverAPointOffTheCurve) {
    for (const SessionKeyCall &call : kSm2Family)
        for (unsigned fail_at : {1u, 2u})
            EXPECT_EQ(run_failing(call, fail_at, take_point_off_the_curve).status, ZOK_ERR_ARGUMENT)
                << call.name;
}

TEST(ZokAgreementOrder, PrivateKeyNotBelowTheOrderMakesNoUserInformation) {
    for (const SessionKeyCall &call : kSm2Family) {
        const Outcome outcome = run_failing(call, 1, spoil_private_key);
        EXPECT_EQ(outcome.status, ZOK_ERR_ARGUMENT) << call.name;
        EXPECT_EQ(outcome.last_size, 0u) << call.name;
    }
}

}  // namespace zokecc_test::agreement_refusals_test

// Key agreement in a session that has no curve, and in one whose order or modulus is zero.
#include <gtest/gtest.h>

#include "tests/support/session_exchange.h"

namespace zokecc_test::agreement_no_curve_test {

using namespace exchange;

namespace {

// A session of its own, closed at the end of the test.
class OwnSession {
public:
    explicit OwnSession(const CurvePara &record) { EXPECT_EQ(ZOK_OpenSession(&handle_, &record), ZOK_OK); }
    ~OwnSession() { ZOK_CloseSession(handle_); }
    OwnSession(const OwnSession &) = delete;
    OwnSession &operator=(const OwnSession &) = delete;
    void *handle() const { return handle_; }

private:
    void *handle_ = nullptr;
};

CurvePara small_record(mint Curve::*zero = nullptr) {
    Curve out = prime_group().curve(32);
    if (zero != nullptr) out.*zero = tiny_number(0);
    return out.record(0);
}

void expect_all(void *session, uint32_t status, uint32_t d) {
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        side.session = session;
        side.d_record = private_record(tiny_bytes(d, 32));
        FakeEntropy entropy;
        EXPECT_EQ((side.*call.call)(), status) << call.name;
        EXPECT_TRUE(side.nothing_written()) << call.name;
        EXPECT_EQ(entropy.number_calls, 0u) << call.name;
    }
}

}  // namespace

TEST(ZokAgreementNoCurve, SessionOfADeviceReturns1000027) {
    void *device = nullptr;
    void *session = nullptr;
    ASSERT_EQ(SDF_OpenDevice(&device), ZOK_OK);
    ASSERT_EQ(SDF_OpenSession(device, &session), ZOK_OK);
    for (uint32_t d : {0u, 1u, 123u}) expect_all(session, ZOK_ERR_ARGUMENT, d);
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
    EXPECT_EQ(SDF_CloseDevice(device), ZOK_OK);
}

TEST(ZokAgreementNoCurve, SessionWithAnUnknownTypeReturns1000027) {
    CurvePara record = small_record();
    for (uint32_t type : {0u, 7u}) {
        record.type = type;
        const OwnSession session(record);
        for (uint32_t d : {0u, 1u, 123u}) expect_all(session.handle(), ZOK_ERR_ARGUMENT, d);
    }
}

TEST(ZokAgreementNoCurve, PointOffTheCurveDoesNotChangeTheAnswer) {
    CurvePara record = small_record();
    record.type = 7;
    const OwnSession session(record);
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        side.session = session.handle();
        side.peerR_record.y[31] ^= 1;
        EXPECT_EQ(run(side, call), ZOK_ERR_ARGUMENT) << call.name;
        EXPECT_TRUE(side.nothing_written()) << call.name;
    }
}

TEST(ZokAgreementNoCurve, OrderOfZeroReturns1000027) {
    const OwnSession session(small_record(&Curve::n));
    for (uint32_t d : {0u, 1u, 123u}) expect_all(session.handle(), ZOK_ERR_ARGUMENT, d);
}

TEST(ZokAgreementNoCurve, ModulusOfZeroReturnsMinusOneWithoutResults) {
    // p / n is zero, and k with it.
    const OwnSession session(small_record(&Curve::p));
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        side.session = session.handle();
        EXPECT_EQ(run(side, call), ZOK_ERR_INTERNAL) << call.name;
        EXPECT_TRUE(side.results_untouched()) << call.name;
        if (!call.draws) continue;
        const ByteString zero(32, 0);
        expect_public_written(side.R_written, zero, zero);
    }
}

TEST(ZokAgreementNoCurve, WorksOnceACurveIsInstalled) {
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    CurvePara record = small_record();
    record.type = 7;
    const OwnSession session(record);
    record.type = 4;
    ASSERT_EQ(ZOK_CurveParaCfg(session.handle(), 4, &record), ZOK_OK);
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        side.session = session.handle();
        ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
        expect_results(side, call, exchange.hashes());
    }
}

}  // namespace zokecc_test::agreement_no_curve_test

// What the exchange over the process-wide curve refuses before it computes: -1, no result, no
// random point and no number drawn.
#include <gtest/gtest.h>

#include <functional>

#include "tests/support/legacy_exchange.h"

namespace zokecc_test::sm2_exchange_refusals_test {

using namespace exchange;

namespace {

ExchangeCase small_exchange(unsigned byte_len = 32) {
    ExchangeCase out = tiny_case(prime_group(), byte_len, 0);
    install(out.curve);
    return out;
}

using Change = std::function<void(LegacyExchange &)>;

void expect_refused(const LegacyKeyCall &call, const Change &change) {
    const ExchangeCase exchange = small_exchange();
    LegacyExchange side(exchange, call.role);
    change(side);
    FakeEntropy entropy;
    const LegacyCall function = call.call == kResponderCall.call ? &LegacyExchange::b1_10 : call.call;
    EXPECT_EQ((side.*function)(), -1) << call.name;
    EXPECT_TRUE(side.nothing_written()) << call.name;
    EXPECT_EQ(entropy.number_calls, 0u) << call.name;
    EXPECT_TRUE(entropy.call_order.empty()) << call.name;
}

void expect_refused_by_all(const Change &change) {
    for (const LegacyKeyCall &call : kLegacyKeyCalls) expect_refused(call, change);
}
// The calls that are given the own random point.
void expect_refused_with_own_point(const Change &change) {
    for (const LegacyKeyCall &call : {kInitiatorCall, kWholeInitiator, kWholeResponder})
        expect_refused(call, change);
}

ByteString changed(ByteString bytes) {
    bytes.back() ^= 1;
    return bytes;
}
ByteString x_of(const ecc_point_bytes &point) { return ByteString(point.x, point.x + 32); }
ByteString y_of(const ecc_point_bytes &point) { return ByteString(point.y, point.y + 32); }

const ByteString kZero(32, 0);

}  // namespace

TEST(Sm2KeyExChgRefusals, NothingIsRefusedWithAllArguments) {
    for (const LegacyKeyCall &call : kLegacyKeyCalls) {
        const ExchangeCase exchange = small_exchange();
        LegacyExchange side(exchange, call.role);
        EXPECT_EQ((side.*call.call)(), 0) << call.name;
    }
}

TEST(Sm2KeyExChgRefusals, PrivateKeyEqualToTheOrderReturnsMinusOne) {
    expect_refused_by_all([](LegacyExchange &side) { side.d_bytes.set(tiny_bytes(991, 32)); });
}

TEST(Sm2KeyExChgRefusals, PrivateKeyAboveTheOrderReturnsMinusOne) {
    expect_refused_by_all([](LegacyExchange &side) { side.d_bytes.set(tiny_bytes(992, 32)); });
    expect_refused_by_all([](LegacyExchange &side) { side.d_bytes.set(ByteString(32, 0xFF)); });
    expect_refused_by_all([](LegacyExchange &side) { side.d_bytes.set(ByteString(76, 0xFF)); });
    expect_refused_by_all([](LegacyExchange &side) {
        side.d_bytes.set(joined({{0x01}, ByteString(75, 0x00)}));
    });
}

TEST(Sm2KeyExChgRefusals, PrivateKeyOfMoreThan76BytesReturnsMinusOne) {
    const ByteString small = joined({ByteString(76, 0x00), {0x05}});
    expect_refused_by_all([&](LegacyExchange &side) { side.d_bytes.set(small); });
    expect_refused_by_all([](LegacyExchange &side) { side.d->length = 0xFFFFFFFF; });
}

TEST(Sm2KeyExChgRefusals, RandomScalarOfMoreThan76BytesReturnsMinusOne) {
    const ByteString small = joined({ByteString(76, 0x00), {0x05}});
    expect_refused_with_own_point([&](LegacyExchange &side) { side.r_bytes.set(small); });
    expect_refused_with_own_point([](LegacyExchange &side) { side.r->length = 0xFFFFFFFF; });
}

TEST(Sm2KeyExChgRefusals, PeerKeyWithAZeroCoordinateReturnsMinusOne) {
    expect_refused_by_all(
        [](LegacyExchange &s) { s.peerP_record = point_record(kZero, y_of(s.peerP_record)); });
    expect_refused_by_all(
        [](LegacyExchange &s) { s.peerP_record = point_record(x_of(s.peerP_record), kZero); });
    expect_refused_by_all([](LegacyExchange &s) { s.peerP_record = point_record(kZero, kZero); });
    expect_refused_by_all([](LegacyExchange &s) { s.peerP_record.length = 0; });
    expect_refused_by_all([](LegacyExchange &s) { s.peerP_record.length = 30; });  // the leading zeros only
}

TEST(Sm2KeyExChgRefusals, OwnRandomPointWithAZeroCoordinateReturnsMinusOne) {
    expect_refused_with_own_point(
        [](LegacyExchange &s) { s.R_record = point_record(kZero, y_of(s.R_record)); });
    expect_refused_with_own_point(
        [](LegacyExchange &s) { s.R_record = point_record(x_of(s.R_record), kZero); });
    expect_refused_with_own_point([](LegacyExchange &s) { s.R_record = point_record(kZero, kZero); });
    expect_refused_with_own_point([](LegacyExchange &s) { s.R_record.length = 0; });
}

TEST(Sm2KeyExChgRefusals, ReceivedRandomPointOffTheCurveReturnsMinusOne) {
    expect_refused_by_all([](LegacyExchange &s) {
        s.peerR_record = point_record(changed(x_of(s.peerR_record)), y_of(s.peerR_record));
    });
    expect_refused_by_all([](LegacyExchange &s) {
        s.peerR_record = point_record(x_of(s.peerR_record), changed(y_of(s.peerR_record)));
    });
    expect_refused_by_all([](LegacyExchange &s) { s.peerR_record = point_record(kZero, kZero); });
    expect_refused_by_all([](LegacyExchange &s) { s.peerR_record.length = 0; });
}

TEST(Sm2KeyExChgRefusals, ReceivedRandomPointOffASm2CurveReturnsMinusOne) {
    const ExchangeCase exchange = vector_case(worked_example("GM/T 0003.5-2012 B.2"));
    install(exchange.curve);
    for (const LegacyKeyCall &call : kLegacyKeyCalls)
        for (int coordinate : {0, 1}) {
            LegacyExchange side(exchange, call.role);
            (coordinate == 0 ? side.peerR_record.x : side.peerR_record.y)[31] ^= 1;
            FakeEntropy entropy;
            EXPECT_EQ((side.*call.call)(), -1) << call.name;
            EXPECT_TRUE(side.nothing_written()) << call.name;
        }
}

TEST(Sm2KeyExChg, OwnRandomPointOffTheCurveReturnsMinusOne) {
    for (const LegacyKeyCall &call : {kWholeInitiator, kWholeResponder}) {
        expect_refused(call, [](LegacyExchange &s) {
            s.R_record = point_record(changed(x_of(s.R_record)), y_of(s.R_record));
        });
        expect_refused(call, [](LegacyExchange &s) {
            s.R_record = point_record(x_of(s.R_record), changed(y_of(s.R_record)));
        });
    }
}

TEST(Sm2KeyExChgRefusals, RecordLongerThanItsFieldsReturnsMinusOne) {
    for (uint32_t length : {66u, 67u, 0x80000000u, 0xFFFFFFFFu}) {
        expect_refused_by_all([=](LegacyExchange &s) { s.peerP_record.length = length; });
        expect_refused_by_all([=](LegacyExchange &s) { s.peerR_record.length = length; });
        expect_refused_with_own_point([=](LegacyExchange &s) { s.R_record.length = length; });
    }
}

TEST(Sm2KeyExChgRefusals, NullPointerReturnsMinusOne) {
    expect_refused_by_all([](LegacyExchange &s) { s.d = nullptr; });
    expect_refused_by_all([](LegacyExchange &s) { s.d->bytes = nullptr; });
    expect_refused_by_all([](LegacyExchange &s) { s.peerP = nullptr; });
    expect_refused_by_all([](LegacyExchange &s) { s.peerR = nullptr; });
    expect_refused_by_all([](LegacyExchange &s) { s.ZA = nullptr; });
    expect_refused_by_all([](LegacyExchange &s) { s.ZB = nullptr; });
    expect_refused_by_all([](LegacyExchange &s) { s.out02 = nullptr; });
    expect_refused_by_all([](LegacyExchange &s) { s.out03 = nullptr; });
    expect_refused_by_all([](LegacyExchange &s) { s.K = nullptr; });
    expect_refused_with_own_point([](LegacyExchange &s) { s.r = nullptr; });
    expect_refused_with_own_point([](LegacyExchange &s) { s.r->bytes = nullptr; });
    expect_refused_with_own_point([](LegacyExchange &s) { s.R = nullptr; });
    expect_refused(kResponderCall, [](LegacyExchange &s) { s.R_out = nullptr; });
}

TEST(Sm2KeyExChgRefusals, NullPointerIsRefusedBeforeTheResponderDraws) {
    // Each of these alone would only be met after the draw.
    for (uint8_t *LegacyExchange::*output :
         {&LegacyExchange::out02, &LegacyExchange::out03, &LegacyExchange::K})
        expect_refused(kResponderCall, [=](LegacyExchange &s) { s.*output = nullptr; });
}

TEST(Sm2KeyExChgRefusals, WithoutACurveEveryCallReturnsMinusOne) {
    const ExchangeCase exchange = small_exchange();
    uninstall();
    FakeEntropy entropy;
    for (const LegacyKeyCall &call : {kInitiatorCall, kWholeInitiator, kWholeResponder}) {
        LegacyExchange side(exchange, call.role);
        EXPECT_EQ((side.*call.call)(), -1) << call.name;
        EXPECT_TRUE(side.nothing_written()) << call.name;
    }
    LegacyExchange responder(exchange, Role::kResponder);
    EXPECT_EQ(responder.b1_10(), -1);
    EXPECT_EQ(responder.a1_3(), -1);
    EXPECT_TRUE(responder.nothing_written());
    EXPECT_EQ(entropy.number_calls, 0u);
}

TEST(Sm2KeyExChgRefusals, OrderOrModulusOfZeroReturnsMinusOne) {
    for (mint GlobalCurve::*number : {&GlobalCurve::n, &GlobalCurve::p})
        for (uint32_t len : {0u, 1u}) {
            const Change spoil = [=](LegacyExchange &) {
                global_curve.*number = mint{};
                (global_curve.*number).len = len;
            };
            expect_refused_by_all(spoil);
            const ExchangeCase exchange = small_exchange();
            LegacyExchange side(exchange, Role::kInitiator);
            spoil(side);
            EXPECT_EQ(side.a1_3(), -1);
            EXPECT_TRUE(side.nothing_written());
        }
}

TEST(Sm2KeyExChgRefusals, CurveTooLongForTheTranscriptReturnsMinusOne) {
    // No curve of that length can be installed; the length is set by hand.
    const ExchangeCase exchange = small_exchange();
    for (const LegacyKeyCall &call : kLegacyKeyCalls) {
        install(exchange.curve);
        global_curve.byte_len = 40;
        LegacyExchange side(exchange, call.role);
        EXPECT_EQ((side.*call.call)(), -1) << call.name;
        EXPECT_TRUE(side.results_untouched()) << call.name;
    }
}

TEST(Sm2KeyExChgA13, ScalarNotBelowTheOrderReturnsMinusOne) {
    const ExchangeCase exchange = small_exchange();
    for (const ByteString &scalar :
         {tiny_bytes(991, 32), tiny_bytes(992, 32), ByteString(32, 0xFF), ByteString(76, 0xFF)}) {
        LegacyExchange side(exchange, Role::kInitiator);
        side.r_bytes.set(scalar);
        EXPECT_EQ(side.a1_3(), -1);
        EXPECT_TRUE(side.nothing_written());
    }
}

TEST(Sm2KeyExChgA13, ScalarOfMoreThan76BytesReturnsMinusOne) {
    const ExchangeCase exchange = small_exchange();
    LegacyExchange side(exchange, Role::kInitiator);
    side.r_bytes.set(joined({ByteString(76, 0x00), {0x05}}));
    EXPECT_EQ(side.a1_3(), -1);
    EXPECT_TRUE(side.nothing_written());
}

TEST(Sm2KeyExChgA13, NullPointerReturnsMinusOne) {
    const ExchangeCase exchange = small_exchange();
    LegacyExchange side(exchange, Role::kInitiator);
    side.r->bytes = nullptr;
    EXPECT_EQ(side.a1_3(), -1);
    side.r = nullptr;
    EXPECT_EQ(side.a1_3(), -1);
    EXPECT_TRUE(side.nothing_written());
    LegacyExchange without_output(exchange, Role::kInitiator);
    without_output.R_out = nullptr;
    EXPECT_EQ(without_output.a1_3(), -1);
}

}  // namespace zokecc_test::sm2_exchange_refusals_test

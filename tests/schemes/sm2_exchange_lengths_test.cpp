// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Which bytes of the records count for what: coordinates are read at the record's own length,
// x-bar and the hashes take the curve's length from the start of the field. And what is accepted.
#include <gtest/gtest.h>

#include "tests/support/legacy_exchange.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::sm2_exchange_lengths_test {

using namespace exchange;

namespace {

const TinyGroup &group() { return prime_group(); }

ExchangeCase small_exchange(unsigned byte_len = 32) {
    ExchangeCase out = tiny_case(group(), byte_len, 0);
    install(out.curve);
    return out;
}

// A record of two-byte coordinates, with other bytes behind them in the fields.
ecc_point_bytes short_record(const ByteString &x, const ByteString &y) {
    ecc_point_bytes out = point_record(test_bytes(65, 3), test_bytes(65, 4));
    std::copy(x.end() - 2, x.end(), out.x);
    std::copy(y.end() - 2, y.end(), out.y);
    out.length = 2;
    return out;
}
// The coordinate in 65 bytes.
ecc_point_bytes long_record(const ByteString &x, const ByteString &y) {
    const ByteString zeros(65 - x.size(), 0);
    return point_record(joined({zeros, x}), joined({zeros, y}));
}
ByteString start_of(const uint8_t *field, unsigned byte_len) { return ByteString(field, field + byte_len); }

// Puts the L bytes that stand in the records into the hashes, R for the side's own random point.
void use_fields(ExchangeHashes &hashes, const LegacyExchange &side, Role role, unsigned byte_len) {
    const ecc_point_bytes &first = role == Role::kInitiator ? side.R_record : side.peerR_record;
    const ecc_point_bytes &second = role == Role::kInitiator ? side.peerR_record : side.R_record;
    hashes.x1 = start_of(first.x, byte_len);
    hashes.y1 = start_of(first.y, byte_len);
    hashes.x2 = start_of(second.x, byte_len);
    hashes.y2 = start_of(second.y, byte_len);
}

// Both random points held at another length than the curve's.
template <class MakeRecord>
void expect_own_and_peer_fields_count(MakeRecord make_record) {
    for (unsigned byte_len : {24u, 28u, 32u})
        for (const LegacyKeyCall &call : {kInitiatorCall, kWholeInitiator, kWholeResponder}) {
            const ExchangeCase exchange = small_exchange(byte_len);
            const ExchangeParty &own = exchange.own(call.role);
            const ExchangeParty &peer = exchange.peer(call.role);
            LegacyExchange side(exchange, call.role);
            side.R_record = make_record(own.Rx, own.Ry);
            side.peerR_record = make_record(peer.Rx, peer.Ry);
            TinySide model = tiny_side(exchange, call.role);
            model.own_x = start_of(side.R_record.x, byte_len);
            model.peer_x = start_of(side.peerR_record.x, byte_len);
            const TinySteps steps = tiny_steps(group(), model);
            ASSERT_FALSE(steps.U.infinite);
            ExchangeHashes expected = with_point(exchange, steps.U);
            use_fields(expected, side, call.role, byte_len);
            ASSERT_EQ((side.*call.call)(), 0) << call.name;
            if (call.call == kInitiatorCall.call) {
                expect_split_results(side, expected);
            } else {
                expect_whole_results(side, expected, peer);
            }
        }
}

}  // namespace

TEST(Sm2KeyExChgLengths, ShortRandomPointsGiveTheFieldsBytesToXBarAndTheHashes) {
    expect_own_and_peer_fields_count(short_record);
}

TEST(Sm2KeyExChgLengths, LongRandomPointsGiveTheFieldsBytesToXBarAndTheHashes) {
    expect_own_and_peer_fields_count(long_record);
}

TEST(Sm2KeyExChgLengths, ReceivedRandomPointOfTheResponderMayBeShort) {
    const ExchangeCase exchange = small_exchange();
    LegacyExchange side(exchange, Role::kResponder);
    side.peerR_record = short_record(exchange.A.Rx, exchange.A.Ry);
    TinySide model = tiny_side(exchange, Role::kResponder);
    model.peer_x = start_of(side.peerR_record.x, 32);
    const TinySteps steps = tiny_steps(group(), model);
    ASSERT_FALSE(steps.U.infinite);
    ExchangeHashes expected = with_point(exchange, steps.U);
    expected.x1 = start_of(side.peerR_record.x, 32);
    expected.y1 = start_of(side.peerR_record.y, 32);
    ASSERT_EQ(side.b1_10_with_r(), 0);
    expect_split_results(side, expected);
}

TEST(Sm2KeyExChgLengths, PeerKeyIsReadAtItsOwnLength) {
    const ExchangeCase exchange = small_exchange();
    for (const LegacyKeyCall &call : {kInitiatorCall, kResponderCall})
        for (auto make_record : {short_record, long_record}) {
            const ExchangeParty &peer = exchange.peer(call.role);
            LegacyExchange side(exchange, call.role);
            side.peerP_record = make_record(peer.x, peer.y);
            ASSERT_EQ((side.*call.call)(), 0) << call.name;
            expect_split_results(side, exchange.hashes());
        }
}

TEST(Sm2KeyExChgLengths, PeerKeyLengthDoesNotChangeTheConfirmationOfTheWholeCall) {
    const ExchangeCase exchange = small_exchange();
    for (Role role : {Role::kInitiator, Role::kResponder})
        for (auto make_record : {short_record, long_record}) {
            LegacyExchange side(exchange, role);
            side.peerP_record = make_record(exchange.peer(role).x, exchange.peer(role).y);
            ASSERT_EQ(side.whole(), 0);
            expect_whole_results(side, exchange.hashes(), exchange.peer(role));
        }
}

TEST(Sm2KeyExChgLengths, ScalarsMayHaveAnyCountUpTo76Bytes) {
    const ExchangeCase exchange = small_exchange();
    for (const LegacyKeyCall &call : {kInitiatorCall, kResponderCall})
        for (size_t count : {size_t{2}, size_t{31}, size_t{33}, size_t{76}}) {
            LegacyExchange side(exchange, call.role);
            const ByteString zeros(count - 2, 0);
            auto last_two = [](const ByteString &bytes) { return ByteString(bytes.end() - 2, bytes.end()); };
            side.d_bytes.set(joined({zeros, last_two(exchange.own(call.role).d)}));
            side.r_bytes.set(joined({zeros, last_two(exchange.own(call.role).r)}));
            ASSERT_EQ((side.*call.call)(), 0) << call.name << " " << count;
            expect_split_results(side, exchange.hashes());
        }
}

TEST(Sm2KeyExChgAccepted, RandomScalarIsReducedAndNotRefused) {
    const ExchangeCase exchange = small_exchange();
    for (const LegacyKeyCall &call : {kInitiatorCall, kWholeInitiator, kWholeResponder})
        for (const ByteString &r :
             {tiny_bytes(991, 32), tiny_bytes(991 + 37, 32), ByteString(76, 0xFF), ByteString{}}) {
            LegacyExchange side(exchange, call.role);
            side.r_bytes.set(r);
            if (r.empty()) side.r->bytes = nullptr;
            TinySide model = tiny_side(exchange, call.role);
            model.r = Natural::from_hex(to_hex(r));
            const TinySteps steps = tiny_steps(group(), model);
            ASSERT_FALSE(steps.U.infinite || steps.k == 0);
            ASSERT_EQ((side.*call.call)(), 0) << call.name;
            EXPECT_EQ(text_of(side.key), to_hex(with_point(exchange, steps.U).key(16))) << call.name;
        }
}

TEST(Sm2KeyExChgAccepted, PrivateKeyOfZeroAndOfTheOrderLessOneAreNotRefused) {
    const ExchangeCase exchange = small_exchange();
    for (const LegacyKeyCall &call : kLegacyKeyCalls)
        for (uint32_t d : {0u, 1u, 990u}) {
            LegacyExchange side(exchange, call.role);
            side.d_bytes.set(tiny_bytes(d, 32));
            TinySide model = tiny_side(exchange, call.role);
            model.d = d;
            const TinySteps steps = tiny_steps(group(), model);
            ASSERT_FALSE(steps.U.infinite || steps.k == 0);
            ASSERT_EQ((side.*call.call)(), 0) << call.name;
            EXPECT_EQ(text_of(side.key), to_hex(with_point(exchange, steps.U).key(16))) << call.name;
        }
}

TEST(Sm2KeyExChgAccepted, PeerKeyOffTheCurveIsNotRefused) {
    const ExchangeCase exchange = small_exchange();
    for (const LegacyKeyCall &call : kLegacyKeyCalls) {
        LegacyExchange side(exchange, call.role);
        TinySide model = tiny_side(exchange, call.role);
        model.peer_key.y += 1;
        side.peerP_record = point_record(tiny_bytes(model.peer_key.x, 32), tiny_bytes(model.peer_key.y, 32));
        const TinySteps steps = tiny_steps(group(), model);
        ASSERT_FALSE(steps.U.infinite);
        ASSERT_EQ((side.*call.call)(), 0) << call.name;
        EXPECT_EQ(text_of(side.key), to_hex(with_point(exchange, steps.U).key(16))) << call.name;
    }
}

TEST(Sm2KeyExChgA410, OwnRandomPointOffTheCurveIsNotRefused) {
    const ExchangeCase exchange = small_exchange();
    LegacyExchange side(exchange, Role::kInitiator);
    side.R_record.x[31] ^= 1;
    TinySide model = tiny_side(exchange, Role::kInitiator);
    model.own_x[31] ^= 1;
    const TinySteps steps = tiny_steps(group(), model);
    ASSERT_FALSE(steps.U.infinite);
    ExchangeHashes expected = with_point(exchange, steps.U);
    expected.x1[31] ^= 1;
    ASSERT_EQ(side.a4_10(), 0);
    expect_split_results(side, expected);
}

TEST(Sm2KeyExChgB110, DrawnNumberOfZeroGivesARandomPointOfZeroBytes) {
    const ExchangeCase exchange = small_exchange();
    LegacyExchange side(exchange, Role::kResponder);
    side.r_bytes.set(tiny_bytes(0, 32));
    const ByteString zero(32, 0);
    TinySide model = tiny_side(exchange, Role::kResponder);
    model.r = Natural();
    model.own_x = zero;
    const TinySteps steps = tiny_steps(group(), model);
    ASSERT_FALSE(steps.U.infinite);
    ExchangeHashes expected = with_point(exchange, steps.U);
    expected.x2 = zero;
    expected.y2 = zero;
    ASSERT_EQ(side.b1_10_with_r(), 0);
    expect_point_written(side.R_written, zero, zero);
    expect_split_results(side, expected);
}

}  // namespace zokecc_test::sm2_exchange_lengths_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Which bytes of the key records count for what: numbers are read at the record's own bits / 8,
// x-bar, Z and the hashes take the session's length from the start of the field. And what is
// accepted although it is odd.
#include <gtest/gtest.h>

#include "tests/support/model_hash.h"
#include "tests/support/session_exchange.h"

namespace zokecc_test::agreement_lengths_test {

using namespace exchange;

namespace {

const TinyGroup &group() { return prime_group(); }

ByteString start_of(const uint8_t *field, size_t count) { return ByteString(field, field + count); }
ByteString last_two(const ByteString &bytes) { return ByteString(bytes.end() - 2, bytes.end()); }

// A record of two-byte coordinates, with other bytes behind them in the fields.
ECCrefPublicKey short_record(const ByteString &x, const ByteString &y) {
    ECCrefPublicKey out = public_record(test_bytes(64, 3), test_bytes(64, 4));
    std::copy(x.end() - 2, x.end(), out.x);
    std::copy(y.end() - 2, y.end(), out.y);
    out.bits = 16;
    return out;
}
// The coordinate in 64 bytes.
ECCrefPublicKey long_record(const ByteString &x, const ByteString &y) {
    const ByteString zeros(64 - x.size(), 0);
    return public_record(joined({zeros, x}), joined({zeros, y}));
}

struct FieldsOf {
    ByteString x, y;
    FieldsOf(const ECCrefPublicKey &key, unsigned byte_len)
        : x(start_of(key.x, byte_len)), y(start_of(key.y, byte_len)) {}
};

// The received random point, and where it is given the own one, at another length.
template <class MakeRecord>
void expect_random_fields_count(const SessionKeyCall &call, unsigned byte_len, MakeRecord make_record) {
    const ExchangeCase exchange = tiny_case(group(), byte_len, 0);
    SessionExchange side(exchange, call.role);
    side.peerR_record = make_record(exchange.peer(call.role).Rx, exchange.peer(call.role).Ry);
    const bool own_is_given = call.call != kInitiate.call && !call.draws;
    if (own_is_given) side.R_record = make_record(exchange.own(call.role).Rx, exchange.own(call.role).Ry);
    const FieldsOf own(side.R_record, byte_len);
    const FieldsOf peer(side.peerR_record, byte_len);

    TinySide model = tiny_side(exchange, call.role);
    model.own_x = own.x;
    model.peer_x = peer.x;
    const TinySteps steps = tiny_steps(group(), model);
    ASSERT_FALSE(steps.U.infinite) << call.name;
    ExchangeHashes expected = with_point(exchange, steps.U);
    const bool initiates = call.role == Role::kInitiator;
    expected.x1 = initiates ? own.x : peer.x;
    expected.y1 = initiates ? own.y : peer.y;
    expected.x2 = initiates ? peer.x : own.x;
    expected.y2 = initiates ? peer.y : own.y;
    ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
    expect_results(side, call, expected);
}

}  // namespace

TEST(ZokAgreementLengths, ShortRandomPointsGiveTheFieldsBytesToXBarAndTheHashes) {
    for (unsigned byte_len : {20u, 24u, 28u, 32u})
        for (const SessionKeyCall &call : kSessionKeyCalls)
            expect_random_fields_count(call, byte_len, short_record);
}

TEST(ZokAgreementLengths, LongRandomPointsGiveTheFieldsBytesToXBarAndTheHashes) {
    for (unsigned byte_len : {20u, 24u, 28u, 32u})
        for (const SessionKeyCall &call : kSessionKeyCalls)
            expect_random_fields_count(call, byte_len, long_record);
}

TEST(ZokAgreementLengths, BitsNeedNotBeAMultipleOfEight) {
    const ExchangeCase exchange = tiny_case(group(), 32, 0);
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        for (uint32_t *bits :
             {&side.d_record.bits, &side.r_record.bits, &side.peerR_record.bits, &side.peerP_record.bits})
            *bits += 7;
        ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
        expect_results(side, call, exchange.hashes());
    }
}

TEST(ZokAgreementLengths, PeerKeyIsReadAtItsBitsAndGivesItsFieldsToZ) {
    const ExchangeCase exchange = tiny_case(group(), 32, 0);
    for (const SessionKeyCall &call : kSessionKeyCalls)
        for (auto make_record : {short_record, long_record}) {
            const ExchangeParty &peer = exchange.peer(call.role);
            SessionExchange side(exchange, call.role);
            side.peerP_record = make_record(peer.x, peer.y);
            const FieldsOf fields(side.peerP_record, 32);
            ExchangeHashes expected = exchange.hashes();
            ByteString &Z = call.role == Role::kInitiator ? expected.ZB : expected.ZA;
            if (call.makes_Z) Z = model_user_z(exchange.curve, 0, peer.id, fields.x, fields.y);
            ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
            expect_results(side, call, expected);
        }
}

TEST(ZokAgreementLengths, PeerKeyOfNoBitsIsThePointOfTwoZeros) {
    const ExchangeCase exchange = tiny_case(group(), 32, 0);
    for (const SessionKeyCall &call : kPlainFamily) {
        SessionExchange side(exchange, call.role);
        side.peerP_record.bits = 7;
        TinySide model = tiny_side(exchange, call.role);
        model.peer_key = {false, 0, 0};
        const TinySteps steps = tiny_steps(group(), model);
        ASSERT_FALSE(steps.U.infinite);
        ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
        expect_results(side, call, with_point(exchange, steps.U));
    }
}

TEST(ZokAgreementLengths, ScalarsMayHaveAnyLengthUpTo64Bytes) {
    const ExchangeCase exchange = tiny_case(group(), 32, 0);
    for (const SessionKeyCall &call : kSessionKeyCalls)
        for (size_t count : {size_t{2}, size_t{31}, size_t{33}, size_t{64}}) {
            SessionExchange side(exchange, call.role);
            const ByteString zeros(count - 2, 0);
            side.d_record = private_record(joined({zeros, last_two(exchange.own(call.role).d)}));
            side.r_record = private_record(joined({zeros, last_two(exchange.own(call.role).r)}));
            ASSERT_EQ(run(side, call), ZOK_OK) << call.name << " " << count;
            expect_results(side, call, exchange.hashes());
        }
}

TEST(ZokAgreementLengths, GivenRandomPointOfTheResponderMayHaveAnyBits) {
    // Only its fields are read; its bits are set.
    const ExchangeCase exchange = tiny_case(group(), 28, 0);
    for (const SessionKeyCall &call : {kSm2Respond, kRespond})
        for (uint32_t bits : {0u, 7u, 224u, 520u, 0xFFFFFFFFu}) {
            SessionExchange side(exchange, Role::kResponder);
            side.R_record.bits = bits;
            ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
            expect_results(side, call, exchange.hashes());
            EXPECT_EQ(record_text(side.R_record), record_text(public_record(exchange.B.Rx, exchange.B.Ry)));
        }
}

TEST(ZokAgreement, RandomScalarOfTheResponderIsReducedAndNotRefused) {
    const ExchangeCase exchange = tiny_case(group(), 32, 0);
    for (const SessionKeyCall &call : {kSm2Respond, kRespond})
        for (const ByteString &r :
             {tiny_bytes(991, 32), tiny_bytes(991 + 98, 32), ByteString(64, 0xFF), ByteString{}}) {
            SessionExchange side(exchange, Role::kResponder);
            side.r_record = private_record(r);
            TinySide model = tiny_side(exchange, Role::kResponder);
            model.r = Natural::from_hex(to_hex(r));
            const TinySteps steps = tiny_steps(group(), model);
            ASSERT_FALSE(steps.U.infinite || steps.k == 0);
            ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
            expect_results(side, call, with_point(exchange, steps.U));
        }
}

TEST(ZokAgreement, GivenOwnRandomPointIsNotTested) {
    // Neither RA of the SM2 initiator nor RB of the responders has to be on the curve.
    const ExchangeCase exchange = tiny_case(group(), 32, 0);
    for (const SessionKeyCall &call : {kSm2Initiate, kSm2Respond, kRespond}) {
        SessionExchange side(exchange, call.role);
        side.R_record.x[31] ^= 1;
        TinySide model = tiny_side(exchange, call.role);
        model.own_x[31] ^= 1;
        const TinySteps steps = tiny_steps(group(), model);
        ASSERT_FALSE(steps.U.infinite);
        ExchangeHashes expected = with_point(exchange, steps.U);
        (call.role == Role::kInitiator ? expected.x1 : expected.x2)[31] ^= 1;
        ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
        expect_results(side, call, expected);
    }
}

TEST(ZokSm2GenerateKeyWithEcc, OwnRandomPointIsTakenAsGivenAndNotFromTheScalar) {
    const ExchangeCase exchange = tiny_case(group(), 32, 0);
    const TinyPoint other = group().multiple(5);
    SessionExchange side(exchange, Role::kInitiator);
    side.R_record = public_record(tiny_bytes(other.x, 32), tiny_bytes(other.y, 32));
    TinySide model = tiny_side(exchange, Role::kInitiator);
    model.own_x = tiny_bytes(other.x, 32);
    const TinySteps steps = tiny_steps(group(), model);
    ASSERT_FALSE(steps.U.infinite);
    ExchangeHashes expected = with_point(exchange, steps.U);
    expected.x1 = tiny_bytes(other.x, 32);
    expected.y1 = tiny_bytes(other.y, 32);
    ASSERT_EQ(run(side, kSm2Initiate), ZOK_OK);
    expect_results(side, kSm2Initiate, expected);
}

TEST(ZokAgreement, InputsStayAsTheyWere) {
    const ExchangeCase exchange = tiny_case(group(), 32, 0);
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        const SessionExchange before(exchange, call.role);
        ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
        EXPECT_EQ(record_text(side.d_record), record_text(before.d_record));
        EXPECT_EQ(record_text(side.r_record), record_text(before.r_record));
        EXPECT_EQ(record_text(side.R_record), record_text(before.R_record));
        EXPECT_EQ(record_text(side.peerR_record), record_text(before.peerR_record));
        EXPECT_EQ(record_text(side.peerP_record), record_text(before.peerP_record));
        EXPECT_EQ(side.ZA, before.ZA);
        EXPECT_EQ(side.ZB, before.ZB);
    }
}

}  // namespace zokecc_test::agreement_lengths_test

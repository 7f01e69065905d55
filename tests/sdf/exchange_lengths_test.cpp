// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Which bytes of an exchange's records are used for what: numbers are read with the record's own length,
// x-bar, Z and the hashes use the curve's length from the start of the field. And odd inputs that
// are accepted.
#include <gtest/gtest.h>

#include "tests/support/exchange_generations.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::exchange_lengths_test {

using namespace exchange;

namespace {

template <class G>
class ExchangeLengths : public testing::Test {};
TYPED_TEST_SUITE(ExchangeLengths, Generations, GenerationName);

const TinyGroup &group() { return prime_group(); }

ByteString last_two(const ByteString &bytes) { return ByteString(bytes.end() - 2, bytes.end()); }

// Two-byte coordinates followed by other bytes in the fields, or coordinates that fill
// their fields.
enum class Width { kShort, kLong };
template <class G>
auto resized(Width width, const ByteString &x, const ByteString &y) {
    const size_t field = sizeof(G::point({}, {}).x);
    const ByteString zeros(field - x.size(), 0);
    if (width == Width::kLong) return G::point(joined({zeros, x}), joined({zeros, y}));
    auto out = G::point(test_bytes(field, 3), test_bytes(field, 4));
    std::copy(x.end() - 2, x.end(), out.x);
    std::copy(y.end() - 2, y.end(), out.y);
    G::set_length(out, 2);
    return out;
}

struct FieldsOf {
    ByteString x, y;
    template <class Record>
    FieldsOf(const Record &key, unsigned byte_len) : x(key.x, key.x + byte_len), y(key.y, key.y + byte_len) {}
};

// One side in the model, with its expected results.
struct Modelled {
    Modelled(const ExchangeCase &from, Role side)
        : exchange(from), role(side), model(tiny_side(from, side)) {}

    // The own random point and the peer's enter the hashes with these bytes.
    ExchangeHashes hashes(const FieldsOf &own, const FieldsOf &peer) {
        model.own_x = own.x;
        model.peer_x = peer.x;
        ExchangeHashes out = hashes();
        const bool initiates = role == Role::kInitiator;
        out.x1 = (initiates ? own : peer).x;
        out.y1 = (initiates ? own : peer).y;
        out.x2 = (initiates ? peer : own).x;
        out.y2 = (initiates ? peer : own).y;
        return out;
    }
    ExchangeHashes hashes() const {
        const TinySteps steps = tiny_steps(group(), model);
        EXPECT_FALSE(steps.U.infinite || steps.k == 0);
        return with_point(exchange, steps.U);
    }

    const ExchangeCase &exchange;
    Role role;
    TinySide model;
};

// The received random point, and our own one if given, with another length.
template <class G>
void expect_random_fields_count() {
    for (unsigned byte_len : G::kLengths)
        for (const auto &call : G::kCalls)
            for (Width width : {Width::kShort, Width::kLong}) {
                const ExchangeCase exchange = small_exchange<G>(byte_len);
                const ExchangeParty &own = exchange.own(call.role), &peer = exchange.peer(call.role);
                typename G::Side side(exchange, call.role);
                side.peerR_record = resized<G>(width, peer.Rx, peer.Ry);
                for (const auto &given : G::kGivenPoint)
                    if (given.call == call.call) side.R_record = resized<G>(width, own.Rx, own.Ry);
                expect_gives(side, call,
                             Modelled(exchange, call.role)
                                 .hashes({side.R_record, byte_len}, {side.peerR_record, byte_len}));
            }
}

template <class G>
void expect_random_scalar_reduced() {
    const ExchangeCase exchange = small_exchange<G>();
    for (const auto &call : G::kReducing)
        for (const ByteString &r : {tiny_bytes(991, 32), tiny_bytes(991 + 37, 32), tiny_bytes(991 + 98, 32),
                                    ByteString(G::kMostScalarBytes, 0xFF), ByteString{}}) {
            typename G::Side side(exchange, call.role);
            G::set_r(side, r);
            Modelled expected(exchange, call.role);
            expected.model.r = Natural::from_hex(to_hex(r));
            expect_gives(side, call, expected.hashes());
        }
}

// A given own random point need not be on the curve.
template <class G>
void expect_own_point_not_tested(std::initializer_list<typename G::Call> calls) {
    const ExchangeCase exchange = small_exchange<G>();
    for (const auto &call : calls) {
        typename G::Side side(exchange, call.role);
        side.R_record.x[31] ^= 1;
        expect_gives(side, call,
                     Modelled(exchange, call.role).hashes({side.R_record, 32}, {side.peerR_record, 32}));
    }
}

}  // namespace

TYPED_TEST(ExchangeLengths, PeerKeyIsReadAtItsLengthAndGivesItsFieldsToZ) {
    const ExchangeCase exchange = small_exchange<TypeParam>();
    for (const auto &call : TypeParam::kCalls)
        for (Width width : {Width::kShort, Width::kLong}) {
            const Role other = call.role == Role::kInitiator ? Role::kResponder : Role::kInitiator;
            const ExchangeParty &peer = exchange.own(other);
            typename TypeParam::Side side(exchange, call.role);
            side.peerP_record = resized<TypeParam>(width, peer.x, peer.y);
            const FieldsOf fields(side.peerP_record, 32);
            ExchangeHashes expected = exchange.hashes();
            if (ByteString *Z = TypeParam::Z_of(expected, call, other))
                *Z = model_user_z(exchange.curve, 0, peer.id, fields.x, fields.y);
            expect_gives(side, call, expected);
        }
}

TYPED_TEST(ExchangeLengths, ScalarsMayHaveAnyLengthUpToTheMost) {
    const ExchangeCase exchange = small_exchange<TypeParam>();
    for (const auto &call : TypeParam::kCalls)
        for (size_t count : {size_t{2}, size_t{31}, size_t{33}, TypeParam::kMostScalarBytes}) {
            typename TypeParam::Side side(exchange, call.role);
            const ByteString zeros(count - 2, 0);
            TypeParam::set_d(side, joined({zeros, last_two(exchange.own(call.role).d)}));
            TypeParam::set_r(side, joined({zeros, last_two(exchange.own(call.role).r)}));
            expect_gives(side, call, exchange.hashes());
        }
}

TYPED_TEST(ExchangeLengths, InputsStayAsTheyWere) {
    const ExchangeCase exchange = small_exchange<TypeParam>();
    for (const auto &call : TypeParam::kCalls) {
        typename TypeParam::Side side(exchange, call.role);
        const std::string before = TypeParam::inputs(side);
        ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
        EXPECT_EQ(TypeParam::inputs(side), before) << call.name;
    }
}

TEST(Sm2KeyExChgLengths, RandomPointsGiveTheFieldsBytesToXBarAndTheHashes) {
    expect_random_fields_count<Legacy>();
}
TEST(ZokAgreementLengths, RandomPointsGiveTheFieldsBytesToXBarAndTheHashes) {
    expect_random_fields_count<Sessions>();
}

TEST(Sm2KeyExChgAccepted, RandomScalarIsReducedAndNotRefused) { expect_random_scalar_reduced<Legacy>(); }
TEST(ZokAgreement, RandomScalarOfTheResponderIsReducedAndNotRefused) {
    expect_random_scalar_reduced<Sessions>();
}

TEST(Sm2KeyExChgA410, OwnRandomPointOffTheCurveIsNotRefused) {
    expect_own_point_not_tested<Legacy>({kInitiatorCall});
}
TEST(ZokAgreement, GivenOwnRandomPointIsNotTested) {
    expect_own_point_not_tested<Sessions>({kSm2Initiate, kSm2Respond, kRespond});
}

TEST(Sm2KeyExChgAccepted, PrivateKeyOfZeroAndOfTheOrderLessOneAreNotRefused) {
    const ExchangeCase exchange = small_exchange<Legacy>();
    for (const LegacyKeyCall &call : kLegacyKeyCalls)
        for (uint32_t d : {kLeastKey, 1u, 990u}) {
            LegacyExchange side(exchange, call.role);
            side.d_bytes.set(tiny_bytes(d, 32));
            Modelled expected(exchange, call.role);
            expected.model.d = d;
            expect_gives(side, call, expected.hashes());
        }
}

TEST(Sm2KeyExChgB110, DrawnNumberOfZeroGivesARandomPointOfZeroBytes) {
    const ExchangeCase exchange = small_exchange<Legacy>();
    LegacyExchange side(exchange, Role::kResponder);
    side.r_bytes.set(tiny_bytes(0, 32));
    side.R_record = point_record(ByteString(32, 0), ByteString(32, 0));
    Modelled expected(exchange, Role::kResponder);
    expected.model.r = Natural();
    expect_gives(side, kResponderCall, expected.hashes({side.R_record, 32}, {side.peerR_record, 32}));
    expect_record(side.R_written, ByteString(32, 0), ByteString(32, 0));
}

TEST(ZokAgreementLengths, BitsNeedNotBeAMultipleOfEight) {
    const ExchangeCase exchange = small_exchange<Sessions>();
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        for (uint32_t *bits :
             {&side.d_record.bits, &side.r_record.bits, &side.peerR_record.bits, &side.peerP_record.bits})
            *bits += 7;
        expect_gives(side, call, exchange.hashes());
    }
}

TEST(ZokAgreementLengths, PeerKeyOfNoBitsIsThePointOfTwoZeros) {
    const ExchangeCase exchange = small_exchange<Sessions>();
    for (const SessionKeyCall &call : kPlainFamily) {
        SessionExchange side(exchange, call.role);
        side.peerP_record.bits = 7;
        Modelled expected(exchange, call.role);
        expected.model.peer_key = {false, 0, 0};
        expect_gives(side, call, expected.hashes());
    }
}

TEST(ZokAgreementLengths, GivenRandomPointOfTheResponderMayHaveAnyBits) {
    // Only its fields are read; its bits are set.
    const ExchangeCase exchange = small_exchange<Sessions>(28);
    for (const SessionKeyCall &call : {kSm2Respond, kRespond})
        for (uint32_t bits : {0u, 7u, 224u, 520u, 0xFFFFFFFFu}) {
            SessionExchange side(exchange, Role::kResponder);
            side.R_record.bits = bits;
            expect_gives(side, call, exchange.hashes());
            Sessions::expect_marked_point(side, call, exchange);
        }
}

TEST(ZokSm2GenerateKeyWithEcc, OwnRandomPointIsTakenAsGivenAndNotFromTheScalar) {
    const ExchangeCase exchange = small_exchange<Sessions>();
    const TinyPoint other = group().multiple(5);
    SessionExchange side(exchange, Role::kInitiator);
    side.R_record = public_key(tiny_bytes(other.x, 32), tiny_bytes(other.y, 32));
    expect_gives(side, kSm2Initiate,
                 Modelled(exchange, Role::kInitiator).hashes({side.R_record, 32}, {side.peerR_record, 32}));
}

}  // namespace zokecc_test::exchange_lengths_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The results of an exchange: every call of both generations compared with the model, both sides with each
// other, and the generations with each other.
#include <gtest/gtest.h>

#include "tests/support/exchange_generations.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::exchange_results_test {

using namespace exchange;

namespace {

template <class G>
class ExchangeResults : public testing::Test {};
TYPED_TEST_SUITE(ExchangeResults, Generations, GenerationName);

// The responder goes first; the initiator uses its drawn random point.
template <class G>
void expect_sides_agree(const ExchangeCase &exchange, const typename G::Call &initiating,
                        const typename G::Call &responding) {
    SCOPED_TRACE(std::string(initiating.name) + ", " + responding.name);
    G::use(exchange.curve);
    typename G::Side initiator(exchange, Role::kInitiator, 45);
    typename G::Side responder(exchange, Role::kResponder, 45);
    ASSERT_EQ(run(responder, responding), ZOK_OK);
    if (G::writes_point(responding)) initiator.peerR = responder.R_out;
    ASSERT_EQ(run(initiator, initiating), ZOK_OK);
    EXPECT_EQ(text_of(initiator.key), text_of(responder.key));
    EXPECT_EQ(G::values(initiator, initiating), G::values(responder, responding));
    EXPECT_NE(G::values(initiator, initiating).first, G::values(initiator, initiating).second);
}

// Z values from the library's own call.
ByteString generated_Z(const ExchangeCase &exchange, const ExchangeParty &party) {
    const ECCrefPublicKey key = public_key(party.x, party.y);
    ByteString Z(32);
    uint32_t length = 0;
    EXPECT_EQ(ZOK_GenerateUserInfo(shared_session(exchange.curve, exchange.selector), &key, party.id.data(),
                                   static_cast<uint32_t>(party.id.size()), Z.data(), &length),
              ZOK_OK);
    EXPECT_EQ(length, 32u);
    return Z;
}

// Two calls of the same role return the same, whatever arguments they take.
void expect_same_bytes(const ExchangeCase &exchange, const SessionKeyCall &one, const SessionKeyCall &other) {
    SCOPED_TRACE(std::string(one.name) + ", " + other.name);
    SessionExchange first(exchange, one.role, 45), second(exchange, other.role, 45);
    ASSERT_EQ(run(first, one), ZOK_OK);
    ASSERT_EQ(run(second, other), ZOK_OK);
    EXPECT_EQ(text_of(first.key), text_of(second.key));
    EXPECT_EQ(Sessions::values(first, one), Sessions::values(second, other));
    expect_random_point<Sessions>(first, one, exchange);
    expect_random_point<Sessions>(second, other, exchange);
}

// The point of a record that A1_3 fills for this scalar.
void expect_first_point(const ByteString &scalar, const ByteString &x, const ByteString &y) {
    const ExchangeCase exchange = small_exchange<Legacy>(static_cast<unsigned>(x.size()));
    LegacyExchange side(exchange, Role::kInitiator);
    side.r_bytes.set(scalar);
    ASSERT_EQ(side.a1_3(), 0);
    expect_record(side.R_written, x, y);
    EXPECT_TRUE(side.results_untouched());
}

}  // namespace

TYPED_TEST(ExchangeResults, EveryCallGivesTheModelsForAllLengthsAndBothHashes) {
    for (unsigned byte_len : TypeParam::kLengths)
        for (uint32_t selector : {0u, 1u}) {
            const ExchangeCase exchange = small_exchange<TypeParam>(byte_len, selector);
            for (const auto &call : TypeParam::kCalls) {
                typename TypeParam::Side side(exchange, call.role, 45);
                expect_gives(side, call, exchange.hashes());
                expect_random_point<TypeParam>(side, call, exchange);
            }
        }
}

TYPED_TEST(ExchangeResults, InitiatorComesFirstInBothPairsOfValuesWhicheverSideCalls) {
    const ExchangeCase exchange = small_exchange<TypeParam>();
    ExchangeHashes swapped = exchange.hashes();
    std::swap(swapped.ZA, swapped.ZB);
    EXPECT_NE(to_hex(swapped.key(16)), to_hex(exchange.hashes().key(16)));
    for (const auto &call : TypeParam::kGivenZ) {
        typename TypeParam::Side side(exchange, call.role);
        side.set_Z(exchange.B.Z, exchange.A.Z);
        expect_gives(side, call, swapped);
    }
}

TYPED_TEST(ExchangeResults, ZValuesNeedNoAlignmentAndNoByteBehindThem) {
    const ExchangeCase exchange = small_exchange<TypeParam>();
    const ByteString ZA = joined({{0x77}, exchange.A.Z}), ZB = joined({ByteString(3, 0x77), exchange.B.Z});
    for (const auto &call : TypeParam::kGivenZ) {
        typename TypeParam::Side side(exchange, call.role);
        TypeParam::take_Z(side, ZA.data() + 1, ZB.data() + 3);
        expect_gives(side, call, exchange.hashes());
    }
}

TYPED_TEST(ExchangeResults, RespondersThatDrawTakeOneNumberBelowTheOrder) {
    const ExchangeCase exchange = small_exchange<TypeParam>();
    for (const auto &call : TypeParam::kDrawing) {
        typename TypeParam::Side side(exchange, Role::kResponder);
        FakeEntropy entropy;
        ASSERT_EQ((side.*call.call)(), 0) << call.name;
        EXPECT_EQ(entropy.number_calls, 1u);
        // The same generator state gives the number that the call drew.
        FakeEntropy again;
        mint r{};
        gen_random_number(&r, &exchange.curve.n);
        EXPECT_EQ(entropy.call_order, again.call_order);
        const TinyPoint R = prime_group().multiple(r.words[0]);
        TypeParam::expect_point(side, tiny_bytes(R.x, 32), tiny_bytes(R.y, 32));
    }
}

TYPED_TEST(ExchangeResults, OtherCallsDrawNothing) {
    const ExchangeCase exchange = small_exchange<TypeParam>();
    for (const auto &call : TypeParam::kOthers) {
        typename TypeParam::Side side(exchange, call.role);
        FakeEntropy entropy;
        ASSERT_EQ((side.*call.call)(), 0) << call.name;
        EXPECT_TRUE(entropy.call_order.empty() && entropy.number_calls == 0) << call.name;
    }
}

TEST(Sm2KeyExChgSplitCalls, BothSidesDeriveTheSameKeyAndConfirmEachOther) {
    for (const TinyGroup *group : {&prime_group(), &cofactor_group()})
        for (unsigned byte_len : Legacy::kLengths)
            expect_sides_agree<Legacy>(tiny_case(*group, byte_len, 0), kInitiatorCall, kResponderCall);
}

TEST(Sm2KeyExChgB110, InitiatorAgreesWithADrawnNumber) {
    expect_sides_agree<Legacy>(vector_case(worked_example("GM/T 0003.5-2012 B.2")), kInitiatorCall,
                               Legacy::kDrawing[0]);
}

TEST(ZokAgreement, BothSidesDeriveTheSameKeyAndConfirmEachOther) {
    for (const SessionKeyCall &initiating : {kSm2Initiate, kInitiate})
        for (const SessionKeyCall &responding : {kSm2Respond, kSm2RespondAtOnce, kRespond, kRespondAtOnce})
            for (const TinyGroup *group : {&prime_group(), &cofactor_group()})
                for (unsigned byte_len : Sessions::kLengths)
                    for (uint32_t selector : {0u, 1u})
                        expect_sides_agree<Sessions>(tiny_case(*group, byte_len, selector), initiating,
                                                     responding);
}

TEST(ZokAgreement, FamiliesAgreeOnZValuesFromTheUserInformationCall) {
    for (uint32_t selector : {0u, 1u}) {
        ExchangeCase exchange = tiny_case(prime_group(), 32, selector);
        exchange.A.Z = generated_Z(exchange, exchange.A);
        exchange.B.Z = generated_Z(exchange, exchange.B);
        for (size_t i = 0; i < std::size(kSm2Family); ++i)
            expect_same_bytes(exchange, kSm2Family[i], kPlainFamily[i]);
    }
}

TEST(ZokAgreement, ProcessWideCurveHasNoPartInASession) {
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    uninstall();
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        expect_gives(side, call, exchange.hashes());
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
        expect_gives(side, call, expected);
    }
}

TEST(ZokAgreementNull, ValuesWithoutBytesNeedNoPointer) {
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        side.idA_bytes = side.idB_bytes = side.ZA_bytes = side.ZB_bytes = nullptr;
        side.idA_len = side.idB_len = side.ZA_len = side.ZB_len = 0;
        ExchangeHashes expected = exchange.hashes();
        expected.ZA = expected.ZB = ByteString{};
        if (call.makes_Z) {
            expected.ZA = model_user_z(exchange.curve, 0, {}, exchange.A.x, exchange.A.y);
            expected.ZB = model_user_z(exchange.curve, 0, {}, exchange.B.x, exchange.B.y);
        }
        expect_gives(side, call, expected);
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
        expect_gives(side, call, exchange.hashes());
    }
}

TEST(ZokAgreement, RandomPointOutputKeepsWhatStandsBehindTheCoordinates) {
    const ExchangeCase exchange = tiny_case(prime_group(), 24, 1);
    for (const SessionKeyCall &call : Sessions::kDrawing) {
        SessionExchange side(exchange, call.role);
        std::memset(side.R_out, 0x33, sizeof *side.R_out);
        ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
        EXPECT_EQ(side.R_out->bits, 192u);
        EXPECT_EQ(to_hex(side.R_out->x, 64), to_hex(joined({exchange.B.Rx, ByteString(40, 0x33)})));
        EXPECT_EQ(to_hex(side.R_out->y, 64), to_hex(joined({exchange.B.Ry, ByteString(40, 0x33)})));
    }
}

TEST(Sm2KeyExChgA13, WritesTheMultipleOfTheBasePointInTheCurvesLength) {
    for (unsigned byte_len : Legacy::kLengths)
        for (uint32_t r : {1u, 2u, 37u, 990u}) {
            const TinyPoint R = prime_group().multiple(r);
            expect_first_point(tiny_bytes(r, byte_len), tiny_bytes(R.x, byte_len), tiny_bytes(R.y, byte_len));
        }
}

TEST(Sm2KeyExChgA13, ScalarOfZeroGivesZeroBytes) {
    for (unsigned byte_len : Legacy::kLengths)
        for (const ByteString &zero : {tiny_bytes(0, byte_len), ByteString{}})
            expect_first_point(zero, ByteString(byte_len, 0), ByteString(byte_len, 0));
}

TEST(Sm2KeyExChgA13, ScalarMayHaveAnyCountUpTo76Bytes) {
    const TinyPoint R = prime_group().multiple(37);
    for (size_t count : {size_t{1}, size_t{2}, size_t{31}, size_t{33}, size_t{65}, size_t{76}}) {
        ByteString scalar(count, 0);
        scalar.back() = 37;
        expect_first_point(scalar, tiny_bytes(R.x, 32), tiny_bytes(R.y, 32));
    }
}

}  // namespace zokecc_test::exchange_results_test

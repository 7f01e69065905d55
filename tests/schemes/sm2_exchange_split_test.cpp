// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The calls for one role: A1_3 and A4_10 against B1_10, and both against the model.
#include <gtest/gtest.h>

#include "tests/support/legacy_exchange.h"

namespace zokecc_test::sm2_exchange_split_test {

using namespace exchange;

namespace {

constexpr unsigned kLengths[] = {24, 28, 32};

// A case on the curve of 991 points, which is installed.
ExchangeCase small_exchange(unsigned byte_len = 32, uint32_t selector = 0) {
    ExchangeCase out = tiny_case(prime_group(), byte_len, selector);
    install(out.curve);
    return out;
}

// The point of a record that A1_3 fills for this scalar.
void expect_point(const ByteString &scalar, const ByteString &x, const ByteString &y) {
    const ExchangeCase exchange = small_exchange(static_cast<unsigned>(x.size()));
    LegacyExchange side(exchange, Role::kInitiator);
    side.r_bytes.set(scalar);
    ASSERT_EQ(side.a1_3(), 0);
    expect_point_written(side.R_written, x, y);
    EXPECT_TRUE(side.results_untouched());
}

}  // namespace

TEST(Sm2KeyExChgA13, WritesTheMultipleOfTheBasePointInTheCurvesLength) {
    for (unsigned byte_len : kLengths)
        for (uint32_t r : {1u, 2u, 37u, 990u}) {
            const TinyPoint R = prime_group().multiple(r);
            expect_point(tiny_bytes(r, byte_len), tiny_bytes(R.x, byte_len), tiny_bytes(R.y, byte_len));
        }
}

TEST(Sm2KeyExChgA13, ScalarOfZeroGivesZeroBytes) {
    for (unsigned byte_len : kLengths) {
        expect_point(tiny_bytes(0, byte_len), ByteString(byte_len, 0), ByteString(byte_len, 0));
        expect_point({}, ByteString(byte_len, 0), ByteString(byte_len, 0));
    }
}

TEST(Sm2KeyExChgA13, ScalarMayHaveAnyCountUpTo76Bytes) {
    const TinyPoint R = prime_group().multiple(37);
    for (size_t count : {size_t{1}, size_t{2}, size_t{31}, size_t{33}, size_t{65}, size_t{76}}) {
        ByteString scalar(count, 0);
        scalar.back() = 37;
        expect_point(scalar, tiny_bytes(R.x, 32), tiny_bytes(R.y, 32));
    }
}

TEST(Sm2KeyExChgA410, ResultsAreTheModelsForBothHashesAndAllLengths) {
    for (unsigned byte_len : kLengths)
        for (uint32_t selector : {0u, 1u}) {
            const ExchangeCase exchange = small_exchange(byte_len, selector);
            LegacyExchange side(exchange, Role::kInitiator, 45);
            ASSERT_EQ(side.a4_10(), 0);
            expect_split_results(side, exchange.hashes());
            EXPECT_TRUE(side.R_written.unchanged());
        }
}

TEST(Sm2KeyExChgB110, ResultsAreTheModelsForBothHashesAndAllLengths) {
    for (unsigned byte_len : kLengths)
        for (uint32_t selector : {0u, 1u}) {
            const ExchangeCase exchange = small_exchange(byte_len, selector);
            LegacyExchange side(exchange, Role::kResponder, 45);
            ASSERT_EQ(side.b1_10_with_r(), 0);
            expect_split_results(side, exchange.hashes());
            expect_point_written(side.R_written, exchange.B.Rx, exchange.B.Ry);
        }
}

TEST(Sm2KeyExChgB110, DrawsOneNumberBelowTheOrder) {
    const ExchangeCase exchange = small_exchange();
    LegacyExchange side(exchange, Role::kResponder);
    FakeEntropy entropy;
    ASSERT_EQ(side.b1_10(), 0);
    EXPECT_EQ(entropy.number_calls, 1u);
    // The same start of the generator gives the number that the call drew.
    FakeEntropy again;
    mint r{};
    gen_random_number(&r, &global_curve.n);
    EXPECT_EQ(entropy.call_order, again.call_order);
    const TinyPoint R = prime_group().multiple(r.words[0]);
    expect_point_written(side.R_written, tiny_bytes(R.x, 32), tiny_bytes(R.y, 32));
}

TEST(Sm2KeyExChgB110, InitiatorAgreesWithADrawnNumber) {
    const ExchangeCase exchange = vector_case(worked_example("GM/T 0003.5-2012 B.2"));
    install(exchange.curve);
    LegacyExchange responder(exchange, Role::kResponder, 48);
    FakeEntropy entropy;
    ASSERT_EQ(responder.b1_10(), 0);
    LegacyExchange initiator(exchange, Role::kInitiator, 48);
    initiator.peerR = responder.R_out;
    ASSERT_EQ(initiator.a4_10(), 0);
    EXPECT_EQ(text_of(initiator.key), text_of(responder.key));
    EXPECT_EQ(text_of(initiator.value02), text_of(responder.value02));
    EXPECT_EQ(text_of(initiator.value03), text_of(responder.value03));
    EXPECT_NE(text_of(initiator.value02), text_of(initiator.value03));
}

TEST(Sm2KeyExChgSplitCalls, BothSidesDeriveTheSameKeyAndConfirmEachOther) {
    for (const TinyGroup *group : {&prime_group(), &cofactor_group()})
        for (unsigned byte_len : kLengths) {
            const ExchangeCase exchange = tiny_case(*group, byte_len, 0);
            install(exchange.curve);
            LegacyExchange initiator(exchange, Role::kInitiator, 45);
            LegacyExchange responder(exchange, Role::kResponder, 45);
            ASSERT_EQ(responder.b1_10_with_r(), 0);
            ASSERT_EQ(initiator.a1_3(), 0);
            initiator.R = initiator.R_out;
            initiator.peerR = responder.R_out;
            ASSERT_EQ(initiator.a4_10(), 0);
            EXPECT_EQ(text_of(initiator.key), text_of(responder.key));
            EXPECT_EQ(text_of(initiator.value02), text_of(responder.value02)) << "S1 and SB";
            EXPECT_EQ(text_of(initiator.value03), text_of(responder.value03)) << "SA and S2";
        }
}

TEST(Sm2KeyExChgSplitCalls, SwappedZValuesGiveAnotherKeyAndOtherConfirmations) {
    const ExchangeCase exchange = small_exchange();
    LegacyExchange initiator(exchange, Role::kInitiator);
    std::swap(initiator.ZA, initiator.ZB);
    ASSERT_EQ(initiator.a4_10(), 0);
    ExchangeHashes swapped = exchange.hashes();
    std::swap(swapped.ZA, swapped.ZB);
    expect_split_results(initiator, swapped);
    EXPECT_NE(to_hex(swapped.key(16)), to_hex(exchange.hashes().key(16)));
}

TEST(Sm2KeyExChgSplitCalls, ZValuesNeedNoAlignmentAndHave32Bytes) {
    const ExchangeCase exchange = small_exchange();
    for (const LegacyKeyCall &call : {kInitiatorCall, kResponderCall}) {
        LegacyExchange side(exchange, call.role);
        const ByteString shifted_ZA = joined({{0x77}, exchange.A.Z});
        const ByteString shifted_ZB = joined({{0x77, 0x77, 0x77}, exchange.B.Z});
        side.ZA = shifted_ZA.data() + 1;
        side.ZB = shifted_ZB.data() + 3;
        ASSERT_EQ((side.*call.call)(), 0) << call.name;
        expect_split_results(side, exchange.hashes());
    }
}

TEST(Sm2KeyExChgSplitCalls, InputsStayAsTheyWere) {
    const ExchangeCase exchange = small_exchange();
    for (const LegacyKeyCall &call : {kInitiatorCall, kResponderCall}) {
        LegacyExchange side(exchange, call.role);
        const LegacyExchange before(exchange, call.role);
        ASSERT_EQ((side.*call.call)(), 0) << call.name;
        EXPECT_EQ(std::memcmp(&side.R_record, &before.R_record, sizeof before.R_record), 0);
        EXPECT_EQ(std::memcmp(&side.peerR_record, &before.peerR_record, sizeof before.peerR_record), 0);
        EXPECT_EQ(std::memcmp(&side.peerP_record, &before.peerP_record, sizeof before.peerP_record), 0);
        EXPECT_EQ(to_hex(side.d->bytes, side.d->length), to_hex(exchange.own(call.role).d));
        EXPECT_EQ(to_hex(side.r->bytes, side.r->length), to_hex(exchange.own(call.role).r));
    }
}

}  // namespace zokecc_test::sm2_exchange_split_test

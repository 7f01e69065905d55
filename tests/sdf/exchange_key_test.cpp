// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The key buffer of an exchange: exactly the requested bytes are written, whatever the derivation needs
// internally; when a null one is refused; the effect of an unknown hash.
#include <gtest/gtest.h>

#include "tests/support/emulated.h"
#include "tests/support/exchange_generations.h"

namespace zokecc_test::exchange_key_test {

using namespace exchange;

namespace {

constexpr uint32_t kUnknown = 2;

template <class G>
class ExchangeKey : public testing::Test {};
TYPED_TEST_SUITE(ExchangeKey, Generations, GenerationName);

// With an unknown hash the key is zero bytes or unchanged, and nothing else is written.
template <class G>
void expect_unknown_selector(const typename G::Call &call, unsigned byte_len, size_t klen,
                             uint32_t selector) {
    SCOPED_TRACE(std::string(call.name) + " " + std::to_string(klen));
    const ExchangeCase exchange = small_exchange<G>(byte_len);
    typename G::Side side(exchange, call.role, static_cast<int>(klen));
    G::set_selector(side, exchange, selector);
    EXPECT_EQ(run(side, call), ZOK_OK);
    const bool whole_steps = klen % byte_len == 0;
    EXPECT_EQ(text_of(side.key), to_hex(ByteString(klen, whole_steps ? kFill : uint8_t{0})));
    EXPECT_TRUE(side.key.untouched_from(klen) && side.values_untouched());
    expect_random_point<G>(side, call, exchange);
}

template <class G>
void expect_a_zero_key() {
    for (unsigned byte_len : G::kLengths)
        for (const auto &call : G::kGivenZ)
            for (size_t klen : {1u, 16u, 31u, 33u, 65u, 101u, 199u})
                expect_unknown_selector<G>(call, byte_len, klen, kUnknown);
}

template <class G>
void expect_a_key_of_whole_steps_left() {
    for (unsigned byte_len : G::kLengths)
        for (const auto &call : G::kGivenZ)
            for (unsigned steps : {0u, 1u, 2u, 5u})
                expect_unknown_selector<G>(call, byte_len, steps * byte_len, kUnknown);
}

template <class G>
void expect_every_selector_above_one_unknown() {
    for (uint32_t selector : {2u, 3u, 0x100u, 0x80000000u, 0xFFFFFFFFu})
        for (const auto &call : G::kGivenZ)
            for (size_t klen : {20u, 64u}) expect_unknown_selector<G>(call, 32, klen, selector);
}

// Compares only the result record, whose pointer the test has changed.
bool slots_untouched(SessionExchange &side) {
    side.result->key = side.key.data();
    return side.results_untouched();
}

}  // namespace

TYPED_TEST(ExchangeKey, EveryLengthUpTo200IsWrittenExactlyAndIsTheStandardsStream) {
    for (unsigned byte_len : TypeParam::kLengths) {
        const ExchangeCase exchange = small_exchange<TypeParam>(byte_len);
        const std::string stream = to_hex(exchange.hashes().key(200));
        for (int klen = 1; klen <= 200; klen += kStride) {
            typename TypeParam::Side side(exchange, Role::kInitiator, klen);
            ASSERT_EQ(run(side, TypeParam::kInitiator), ZOK_OK);
            ASSERT_EQ(text_of(side.key), stream.substr(0, 2 * side.key.size())) << byte_len << " " << klen;
            ASSERT_TRUE(side.key.untouched_from(side.key.size())) << byte_len << " " << klen;
        }
    }
}

TYPED_TEST(ExchangeKey, LengthsAroundStepsAndDigestsAreWrittenExactlyByEveryCall) {
    for (unsigned byte_len : TypeParam::kLengths) {
        const ExchangeCase exchange = small_exchange<TypeParam>(byte_len, 1);
        for (const auto &call : TypeParam::kCalls)
            for (int klen : {1, 20, 24, 31, 32, 33, 40, 45, 47, 48, 49, 56, 60, 64, 72, 96, 97, 100, 200}) {
                typename TypeParam::Side side(exchange, call.role, klen);
                expect_gives(side, call, exchange.hashes());
            }
    }
}

TYPED_TEST(ExchangeKey, LengthOfZeroNeedsNoBufferAndWritesTheConfirmations) {
    const ExchangeCase exchange = small_exchange<TypeParam>();
    for (const auto &call : TypeParam::kCalls) {
        typename TypeParam::Side side(exchange, call.role, 0);
        expect_gives(side, call, exchange.hashes());
        TypeParam::take_no_key(side);
        EXPECT_EQ(run(side, call), ZOK_OK) << call.name;
    }
}

TEST(Sm2KeyExChgKey, LengthBelowOneWritesNoKeyAndTheConfirmations) {
    const ExchangeCase exchange = small_exchange<Legacy>();
    for (int32_t klen : {-1, -32, INT32_MIN})
        for (const LegacyKeyCall &call : kLegacyKeyCalls) {
            LegacyExchange side(exchange, call.role, klen);
            expect_gives(side, call, exchange.hashes());
            side.K = nullptr;
            EXPECT_EQ(run(side, call), ZOK_OK) << call.name << " " << klen;
        }
}

TEST(ZokAgreementKey, BitsBelowAByteDoNotCount) {
    const ExchangeCase exchange = small_exchange<Sessions>(20);
    for (const SessionKeyCall &call : kSessionKeyCalls)
        for (int klen : {0, 45})
            for (uint32_t extra : {1u, 7u}) {
                SessionExchange side(exchange, call.role, klen);
                side.klen_bits += extra;
                expect_gives(side, call, exchange.hashes());
            }
}

TEST(ZokAgreementKey, NullBufferReturns1000027BeforeAnyResult) {
    const ExchangeCase exchange = small_exchange<Sessions>();
    for (const SessionKeyCall &call : kSessionKeyCalls)
        for (int klen : {1, 32, 45}) {
            SessionExchange side(exchange, call.role, klen);
            side.result->key = nullptr;
            Sessions::mark_point(side, call);
            EXPECT_EQ(run(side, call), ZOK_ERR_ARGUMENT) << call.name;
            EXPECT_TRUE(slots_untouched(side)) << call.name;
            // After the random point.
            expect_random_point<Sessions>(side, call, exchange);
            Sessions::expect_marked_point(side, call, exchange);
        }
}

TEST(ZokAgreementKey, KOfZeroWinsOverANullBuffer) {
    const ExchangeCase exchange = small_exchange<Sessions>();
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        TinySide model = tiny_side(exchange, call.role);
        model.d = 0;
        side.d_record = private_key(tiny_bytes(991 - tiny_steps(prime_group(), model).t, 32));
        side.result->key = nullptr;
        EXPECT_EQ(run(side, call), ZOK_ERR_INTERNAL) << call.name;
        EXPECT_TRUE(slots_untouched(side)) << call.name;
    }
}

TEST(Sm2KeyExChg, KeptUnknownSelectorGivesAZeroKey) { expect_a_zero_key<Legacy>(); }
TEST(ZokGenerateKeyWithEcc, KeptUnknownSelectorGivesAZeroKey) { expect_a_zero_key<Sessions>(); }

TEST(Sm2KeyExChg, KeptUnknownSelectorLeavesAKeyOfWholeSteps) { expect_a_key_of_whole_steps_left<Legacy>(); }
TEST(ZokGenerateKeyWithEcc, KeptUnknownSelectorLeavesAKeyOfWholeSteps) {
    expect_a_key_of_whole_steps_left<Sessions>();
}

TEST(Sm2KeyExChg, KeptEverySelectorAboveOneIsUnknown) { expect_every_selector_above_one_unknown<Legacy>(); }
TEST(ZokGenerateKeyWithEcc, KeptEverySelectorAboveOneIsUnknown) {
    expect_every_selector_above_one_unknown<Sessions>();
}

TEST(Sm2KeyExChg, KeptUnknownSelectorWithALengthBelowOneWritesNothing) {
    const ExchangeCase exchange = small_exchange<Legacy>();
    for (int32_t klen : {0, -1, -33})
        for (const LegacyKeyCall &call : kLegacyKeyCalls) {
            LegacyExchange side(exchange, call.role, klen);
            side.selector = kUnknown;
            EXPECT_EQ(run(side, call), ZOK_OK) << call.name;
            EXPECT_TRUE(side.results_untouched()) << call.name;
        }
}

TEST(Sm2KeyExChg, KeptUnknownSelectorNeedsNoConfirmationOutputs) {
    const ExchangeCase exchange = small_exchange<Legacy>();
    for (const LegacyKeyCall &call : kLegacyKeyCalls)
        for (int32_t klen : {63, 64}) {
            LegacyExchange side(exchange, call.role, klen);
            side.selector = kUnknown;
            side.out02 = side.out03 = nullptr;
            if (klen == 64) side.K = nullptr;
            EXPECT_EQ(run(side, call), ZOK_OK) << call.name;
            const uint8_t expected = klen == 63 ? 0 : kFill;
            EXPECT_EQ(text_of(side.key), to_hex(ByteString(side.key.size(), expected))) << call.name;
        }
}

TEST(ZokGenerateKeyWithEcc, KeptUnknownSelectorNeedsAKeyBufferOnlyForAnOddLength) {
    const ExchangeCase exchange = small_exchange<Sessions>();
    for (const SessionKeyCall &call : kPlainFamily)
        for (int klen : {31, 64}) {
            SessionExchange side(exchange, call.role, klen);
            side.session = shared_session(exchange.curve, kUnknown);
            side.result->key = nullptr;
            EXPECT_EQ(run(side, call), klen == 64 ? ZOK_OK : ZOK_ERR_ARGUMENT) << call.name;
            EXPECT_TRUE(slots_untouched(side)) << call.name;
        }
}

TEST(Sm2KeyExChg, KeptUnknownSelectorIsNoticedAfterEveryCheck) {
    const ExchangeCase exchange = small_exchange<Legacy>();
    for (const LegacyKeyCall &call : kLegacyKeyCalls)
        for (bool null_key : {false, true}) {
            LegacyExchange side(exchange, call.role, 63);
            side.selector = kUnknown;
            if (null_key)
                side.K = nullptr;  // although it is needed
            else
                side.peerR_record.y[31] ^= 1;
            EXPECT_EQ(run(side, call), ZOK_ERR_INTERNAL) << call.name;
            EXPECT_TRUE(side.nothing_written()) << call.name;
        }
}

TEST(ZokAgreementKey, ResultSlotsKeepWhatStandsBehindTheDigests) {
    const ExchangeCase exchange = small_exchange<Sessions>(20);
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        std::memset(side.result->check, 0x11, 64);
        std::memset(side.result->send, 0x22, 64);
        ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
        EXPECT_EQ(to_hex(side.result->check + 32, 32), to_hex(ByteString(32, 0x11))) << call.name;
        EXPECT_EQ(to_hex(side.result->send + 32, 32), to_hex(ByteString(32, 0x22))) << call.name;
        EXPECT_EQ(side.result->key, side.key.data()) << call.name;
    }
}

}  // namespace zokecc_test::exchange_key_test

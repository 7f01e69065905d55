// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The key buffer named in the result record: exactly klen_bits / 8 bytes are written, whatever the
// derivation needs inside; when a null one is refused; what an unknown hash leaves.
#include <gtest/gtest.h>

#include "tests/support/session_exchange.h"

namespace zokecc_test::agreement_key_test {

using namespace exchange;

namespace {

constexpr unsigned kLengths[] = {20, 24, 28, 32};
constexpr uint32_t kUnknown = 2;

bool slots_untouched(SessionExchange &side) {
    side.result->key = side.key.data();
    return side.results_untouched();
}

// A plain call in a session with an unknown hash: zero bytes, or the key as it was, and 0.
void expect_unknown_selector(const SessionKeyCall &call, unsigned byte_len, uint32_t klen,
                             uint32_t selector) {
    const ExchangeCase exchange = tiny_case(prime_group(), byte_len, 0);
    SessionExchange side(exchange, call.role, klen);
    side.session = session_on(exchange.curve, selector);
    EXPECT_EQ(run(side, call), ZOK_OK) << call.name;
    const bool whole_steps = klen % byte_len == 0;
    EXPECT_EQ(key_text(side), to_hex(ByteString(klen, whole_steps ? kUnused : uint8_t{0})))
        << call.name << " " << klen;
    EXPECT_TRUE(side.key.untouched_from(klen)) << call.name << " " << klen;
    EXPECT_EQ(to_hex(side.result->check, 64), to_hex(ByteString(64, kUnused))) << call.name;
    EXPECT_EQ(to_hex(side.result->send, 64), to_hex(ByteString(64, kUnused))) << call.name;
    if (call.draws) expect_public_written(side.R_written, exchange.B.Rx, exchange.B.Ry);
}

}  // namespace

TEST(ZokAgreementKey, EveryLengthUpTo200IsWrittenExactlyAndIsTheStandardsStream) {
    for (unsigned byte_len : kLengths) {
        const ExchangeCase exchange = tiny_case(prime_group(), byte_len, 0);
        const std::string stream = to_hex(exchange.hashes().key(200));
        for (uint32_t klen = 1; klen <= 200; ++klen) {
            SessionExchange side(exchange, Role::kInitiator, klen);
            ASSERT_EQ(run(side, kInitiate), ZOK_OK);
            ASSERT_EQ(key_text(side), stream.substr(0, 2 * size_t{klen})) << byte_len << " " << klen;
            ASSERT_TRUE(side.key.untouched_from(klen)) << byte_len << " " << klen;
        }
    }
}

TEST(ZokAgreementKey, LengthsAroundStepsAndDigestsAreWrittenExactlyByEveryCall) {
    for (unsigned byte_len : kLengths) {
        const ExchangeCase exchange = tiny_case(prime_group(), byte_len, 1);
        for (const SessionKeyCall &call : kSessionKeyCalls)
            for (uint32_t klen :
                 {1u, 20u, 31u, 32u, 33u, 40u, 45u, 47u, 48u, 56u, 60u, 64u, 96u, 100u, 200u}) {
                SessionExchange side(exchange, call.role, klen);
                ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
                expect_results(side, call, exchange.hashes());
            }
    }
}

TEST(ZokAgreementKey, BitsBelowAByteDoNotCount) {
    const ExchangeCase exchange = tiny_case(prime_group(), 20, 0);
    for (const SessionKeyCall &call : kSessionKeyCalls)
        for (uint32_t extra : {1u, 7u}) {
            SessionExchange side(exchange, call.role, 45);
            side.klen_bits += extra;
            ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
            expect_results(side, call, exchange.hashes());
        }
}

TEST(ZokAgreementKey, LengthOfZeroWritesNoKeyAndTheConfirmations) {
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    for (const SessionKeyCall &call : kSessionKeyCalls)
        for (uint32_t bits : {0u, 7u}) {
            SessionExchange side(exchange, call.role, 0);
            side.klen_bits = bits;
            ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
            expect_results(side, call, exchange.hashes());
        }
}

TEST(ZokAgreementKey, NullBufferReturns1000027BeforeAnyResult) {
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    for (const SessionKeyCall &call : kSessionKeyCalls)
        for (uint32_t klen : {1u, 32u, 45u}) {
            SessionExchange side(exchange, call.role, klen);
            side.result->key = nullptr;
            EXPECT_EQ(run(side, call), ZOK_ERR_ARGUMENT) << call.name;
            EXPECT_TRUE(slots_untouched(side)) << call.name;
        }
}

TEST(ZokAgreementKey, NullBufferIsNoticedAfterTheRandomPointIsWritten) {
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    for (const SessionKeyCall &call : {kSm2RespondAtOnce, kRespondAtOnce}) {
        SessionExchange side(exchange, call.role);
        side.result->key = nullptr;
        EXPECT_EQ(run(side, call), ZOK_ERR_ARGUMENT) << call.name;
        expect_public_written(side.R_written, exchange.B.Rx, exchange.B.Ry);
    }
    for (const SessionKeyCall &call : {kSm2Respond, kRespond}) {
        SessionExchange side(exchange, call.role);
        side.result->key = nullptr;
        side.R_record.bits = 1;
        EXPECT_EQ(run(side, call), ZOK_ERR_ARGUMENT) << call.name;
        EXPECT_EQ(side.R_record.bits, 256u) << call.name;
    }
}

TEST(ZokAgreementKey, KOfZeroWinsOverANullBuffer) {
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        TinySide model = tiny_side(exchange, call.role);
        model.d = 0;
        side.d_record = private_record(tiny_bytes(991 - tiny_steps(prime_group(), model).t, 32));
        side.result->key = nullptr;
        EXPECT_EQ(run(side, call), ZOK_ERR_INTERNAL) << call.name;
        EXPECT_TRUE(slots_untouched(side)) << call.name;
    }
}

TEST(ZokAgreementKey, NullBufferIsAllowedForALengthOfZero) {
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role, 0);
        side.result->key = nullptr;
        EXPECT_EQ(run(side, call), ZOK_OK) << call.name;
        EXPECT_FALSE(slots_untouched(side)) << call.name;
    }
}

TEST(ZokGenerateKeyWithEcc, KeptUnknownSelectorGivesAZeroKey) {
    for (unsigned byte_len : kLengths)
        for (const SessionKeyCall &call : kPlainFamily)
            for (uint32_t klen : {1u, 16u, 31u, 33u, 65u, 101u, 199u})
                expect_unknown_selector(call, byte_len, klen, kUnknown);
}

TEST(ZokGenerateKeyWithEcc, KeptUnknownSelectorLeavesAKeyOfWholeSteps) {
    for (unsigned byte_len : kLengths)
        for (const SessionKeyCall &call : kPlainFamily)
            for (uint32_t steps : {0u, 1u, 2u, 5u})
                expect_unknown_selector(call, byte_len, steps * byte_len, kUnknown);
}

TEST(ZokGenerateKeyWithEcc, KeptEverySelectorAboveOneIsUnknown) {
    for (uint32_t selector : {3u, 0x100u, 0xFFFFFFFFu}) {
        expect_unknown_selector(kInitiate, 32, 20, selector);
        expect_unknown_selector(kRespondAtOnce, 32, 64, selector);
    }
}

TEST(ZokGenerateKeyWithEcc, KeptUnknownSelectorNeedsAKeyBufferOnlyForAnOddLength) {
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    for (const SessionKeyCall &call : kPlainFamily)
        for (uint32_t klen : {31u, 64u}) {
            SessionExchange side(exchange, call.role, klen);
            side.session = session_on(exchange.curve, kUnknown);
            side.result->key = nullptr;
            EXPECT_EQ(run(side, call), klen == 64 ? ZOK_OK : ZOK_ERR_ARGUMENT) << call.name;
            EXPECT_TRUE(slots_untouched(side)) << call.name;
        }
}

TEST(ZokAgreementKey, ResultSlotsKeepWhatStandsBehindTheDigests) {
    const ExchangeCase exchange = tiny_case(prime_group(), 20, 0);
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

}  // namespace zokecc_test::agreement_key_test

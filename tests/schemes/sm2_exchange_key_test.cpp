// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The key buffer of the exchange over the process-wide curve: exactly the bytes asked for, none
// for lengths below 1, and what an unknown hash leaves.
#include <gtest/gtest.h>

#include "tests/support/legacy_exchange.h"

namespace zokecc_test::sm2_exchange_key_test {

using namespace exchange;

namespace {

constexpr unsigned kLengths[] = {24, 28, 32};

ExchangeCase small_exchange(unsigned byte_len = 32, uint32_t selector = 0) {
    ExchangeCase out = tiny_case(prime_group(), byte_len, selector);
    install(out.curve);
    return out;
}

// All or nothing: with an unknown hash the key is zero bytes, or stays as it was.
void expect_unknown_selector(const LegacyKeyCall &call, unsigned byte_len, int32_t klen, uint32_t selector) {
    const ExchangeCase exchange = small_exchange(byte_len);
    LegacyExchange side(exchange, call.role, klen);
    side.selector = selector;
    EXPECT_EQ((side.*call.call)(), 0) << call.name;
    EXPECT_TRUE(side.value02.untouched()) << call.name;
    EXPECT_TRUE(side.value03.untouched()) << call.name;
    if (static_cast<unsigned>(klen) % byte_len == 0) {
        EXPECT_TRUE(side.key.untouched()) << call.name << " " << klen;
    } else {
        EXPECT_EQ(text_of(side.key), to_hex(ByteString(side.key.size(), 0))) << call.name << " " << klen;
        EXPECT_TRUE(side.key.untouched_from(side.key.size())) << call.name << " " << klen;
    }
}

}  // namespace

TEST(Sm2KeyExChgKey, EveryLengthUpTo200IsWrittenExactlyAndIsTheStandardsStream) {
    for (unsigned byte_len : kLengths) {
        const ExchangeCase exchange = small_exchange(byte_len);
        const std::string stream = to_hex(exchange.hashes().key(200));
        for (int32_t klen = 1; klen <= 200; ++klen) {
            LegacyExchange side(exchange, Role::kInitiator, klen);
            ASSERT_EQ(side.a4_10(), 0);
            ASSERT_EQ(text_of(side.key), stream.substr(0, 2 * static_cast<size_t>(klen)))
                << byte_len << " " << klen;
            ASSERT_TRUE(side.key.untouched_from(static_cast<size_t>(klen))) << byte_len << " " << klen;
        }
    }
}

TEST(Sm2KeyExChgKey, LengthsAroundStepsAndDigestsAreWrittenExactlyByEveryCall) {
    for (unsigned byte_len : kLengths) {
        const ExchangeCase exchange = small_exchange(byte_len, 1);
        for (const LegacyKeyCall &call : {kResponderCall, kWholeInitiator, kWholeResponder})
            for (int32_t klen : {1, 24, 31, 32, 33, 47, 48, 49, 56, 64, 72, 96, 97, 200}) {
                LegacyExchange side(exchange, call.role, klen);
                ASSERT_EQ((side.*call.call)(), 0) << call.name;
                EXPECT_EQ(text_of(side.key), to_hex(exchange.hashes().key(static_cast<size_t>(klen))))
                    << klen;
                EXPECT_TRUE(side.key.untouched_from(static_cast<size_t>(klen))) << call.name << " " << klen;
            }
    }
}

TEST(Sm2KeyExChgKey, LengthBelowOneWritesNoKeyAndTheConfirmations) {
    for (int32_t klen : {0, -1, -32, INT32_MIN}) {
        const ExchangeCase exchange = small_exchange();
        for (const LegacyKeyCall &call : kLegacyKeyCalls) {
            LegacyExchange side(exchange, call.role, klen);
            GuardedBuffer key(32);
            side.K = key.data();
            ASSERT_EQ((side.*call.call)(), 0) << call.name << " " << klen;
            EXPECT_TRUE(key.untouched()) << call.name << " " << klen;
            if (call.call == &LegacyExchange::whole) {
                expect_whole_results(side, exchange.hashes(), exchange.peer(call.role));
            } else {
                expect_split_results(side, exchange.hashes());
            }
        }
    }
}

TEST(Sm2KeyExChgKey, NullKeyIsAllowedWhereNothingIsWrittenToIt) {
    for (int32_t klen : {0, -1, INT32_MIN}) {
        const ExchangeCase exchange = small_exchange();
        for (const LegacyKeyCall &call : kLegacyKeyCalls) {
            LegacyExchange side(exchange, call.role, klen);
            side.K = nullptr;
            EXPECT_EQ((side.*call.call)(), 0) << call.name << " " << klen;
        }
    }
}

TEST(Sm2KeyExChg, KeptUnknownSelectorGivesAZeroKey) {
    for (unsigned byte_len : kLengths)
        for (const LegacyKeyCall &call : kLegacyKeyCalls)
            for (int32_t klen : {1, 16, 31, 33, 65, 100, 199})
                expect_unknown_selector(call, byte_len, klen, 2);
}

TEST(Sm2KeyExChg, KeptUnknownSelectorLeavesAKeyOfWholeSteps) {
    for (unsigned byte_len : kLengths)
        for (const LegacyKeyCall &call : kLegacyKeyCalls)
            for (int32_t steps : {1, 2, 5})
                expect_unknown_selector(call, byte_len, steps * static_cast<int32_t>(byte_len), 2);
}

TEST(Sm2KeyExChg, KeptEverySelectorAboveOneIsUnknown) {
    for (uint32_t selector : {2u, 3u, 0x100u, 0x80000000u, 0xFFFFFFFFu}) {
        expect_unknown_selector(kInitiatorCall, 32, 20, selector);
        expect_unknown_selector(kWholeResponder, 32, 32, selector);
    }
}

TEST(Sm2KeyExChg, KeptUnknownSelectorWithALengthBelowOneWritesNothing) {
    for (int32_t klen : {0, -1, -33})
        for (const LegacyKeyCall &call : kLegacyKeyCalls) {
            const ExchangeCase exchange = small_exchange();
            LegacyExchange side(exchange, call.role, klen);
            side.selector = 2;
            side.K = nullptr;
            EXPECT_EQ((side.*call.call)(), 0) << call.name;
            EXPECT_TRUE(side.results_untouched()) << call.name;
        }
}

TEST(Sm2KeyExChg, KeptUnknownSelectorNeedsNoConfirmationOutputs) {
    const ExchangeCase exchange = small_exchange();
    for (const LegacyKeyCall &call : kLegacyKeyCalls) {
        LegacyExchange whole_steps(exchange, call.role, 64);
        whole_steps.selector = 2;
        whole_steps.out02 = whole_steps.out03 = whole_steps.K = nullptr;
        EXPECT_EQ((whole_steps.*call.call)(), 0) << call.name;
        LegacyExchange other(exchange, call.role, 63);
        other.selector = 2;
        other.out02 = other.out03 = nullptr;
        EXPECT_EQ((other.*call.call)(), 0) << call.name;
        EXPECT_EQ(text_of(other.key), to_hex(ByteString(63, 0))) << call.name;
    }
}

TEST(Sm2KeyExChg, UnknownSelectorWithANullKeyThatIsNeededReturnsMinusOne) {
    const ExchangeCase exchange = small_exchange();
    for (const LegacyKeyCall &call : kLegacyKeyCalls) {
        LegacyExchange side(exchange, call.role, 63);
        side.selector = 2;
        side.K = nullptr;
        EXPECT_EQ((side.*call.call)(), -1) << call.name;
        EXPECT_TRUE(side.nothing_written()) << call.name;
    }
}

TEST(Sm2KeyExChg, KeptUnknownSelectorIsNoticedAfterEveryCheck) {
    const ExchangeCase exchange = small_exchange();
    for (const LegacyKeyCall &call : kLegacyKeyCalls) {
        LegacyExchange side(exchange, call.role, 20);
        side.selector = 2;
        side.peerR_record.y[31] ^= 1;
        EXPECT_EQ((side.*call.call)(), -1) << call.name;
        EXPECT_TRUE(side.nothing_written()) << call.name;
    }
}

}  // namespace zokecc_test::sm2_exchange_key_test

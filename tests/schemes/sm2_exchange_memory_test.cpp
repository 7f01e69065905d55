// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// What the exchange over the process-wide curve allocates, what it gives back, and what it answers
// when any one of the allocations fails.
#include <gtest/gtest.h>

#include "tests/support/failing_alloc.h"
#include "tests/support/legacy_exchange.h"

namespace zokecc_test::sm2_exchange_memory_test {

using namespace exchange;

namespace {

constexpr unsigned kNone = 0;

ExchangeCase small_exchange(unsigned byte_len = 32) {
    ExchangeCase out = tiny_case(prime_group(), byte_len, 0);
    install(out.curve);
    return out;
}

struct Outcome {
    int32_t status;
    unsigned allocations;
    int outstanding;
    unsigned draws;
    bool results_written;
    bool point_written;
};

Outcome run(const LegacyKeyCall &call, unsigned byte_len, int32_t klen, unsigned fail_at) {
    const ExchangeCase exchange = small_exchange(byte_len);
    LegacyExchange side(exchange, call.role, klen);
    FakeEntropy entropy;
    entropy.queued_numbers.push_back(mint_from_hex(to_hex(exchange.own(call.role).r)));
    const LegacyCall function = call.call == kResponderCall.call ? &LegacyExchange::b1_10 : call.call;
    FailingAlloc counter(fail_at);
    const int32_t status = (side.*function)();
    return {status,
            counter.allocations,
            counter.outstanding,
            entropy.number_calls,
            !side.results_untouched(),
            !side.R_written.unchanged()};
}

// Two multiplications of points that are not G, each with a digit buffer that stays allocated.
void expect_two_digit_buffers(const Outcome &done, unsigned allocations, const char *name) {
    EXPECT_EQ(done.status, 0) << name;
    EXPECT_EQ(done.allocations, allocations) << name;
    EXPECT_EQ(done.outstanding, kept_digit_buffers(2)) << name;
}

}  // namespace

TEST(Sm2KeyExChgMemory, KeptEveryCallKeepsTwoDigitBuffers) {
    for (const LegacyKeyCall &call : kLegacyKeyCalls) {
        expect_two_digit_buffers(run(call, 32, 100, kNone), 2, call.name);
        expect_two_digit_buffers(run(call, 24, 47, kNone), 2, call.name);
        expect_two_digit_buffers(run(call, 24, 0, kNone), 2, call.name);
    }
}

TEST(Sm2KeyExChgMemory, BlockForAWiderDerivationIsGivenBack) {
    for (const LegacyKeyCall &call : kLegacyKeyCalls) {
        expect_two_digit_buffers(run(call, 24, 48, kNone), 3, call.name);
        expect_two_digit_buffers(run(call, 28, 200, kNone), 3, call.name);
    }
}

TEST(Sm2KeyExChgMemory, FailedDigitBufferReturnsMinusOneWithoutResults) {
    for (const LegacyKeyCall &call : kLegacyKeyCalls)
        for (unsigned fail_at : {1u, 2u}) {
            const Outcome done = run(call, 32, 100, fail_at);
            EXPECT_EQ(done.status, -1) << call.name;
            EXPECT_FALSE(done.results_written) << call.name;
            EXPECT_EQ(done.point_written, call.call == kResponderCall.call) << call.name;
            EXPECT_LE(done.outstanding, kept_digit_buffers(1)) << call.name;
        }
}

TEST(Sm2KeyExChgMemory, AnyFailedAllocationReturnsMinusOneWithoutResults) {
    for (const LegacyKeyCall &call : kLegacyKeyCalls)
        for (unsigned fail_at : {1u, 2u, 3u}) {
            const Outcome done = run(call, 24, 48, fail_at);
            EXPECT_EQ(done.status, -1) << call.name << " " << fail_at;
            EXPECT_FALSE(done.results_written) << call.name << " " << fail_at;
            EXPECT_LE(done.outstanding, kept_digit_buffers(1)) << call.name << " " << fail_at;
        }
}

TEST(Sm2KeyExChgB110, FailedBlockForAWiderDerivationDrawsNothing) {
    const Outcome done = run(kResponderCall, 24, 48, 1);
    EXPECT_EQ(done.status, -1);
    EXPECT_EQ(done.allocations, 1u);
    EXPECT_EQ(done.outstanding, 0);
    EXPECT_EQ(done.draws, 0u);
    EXPECT_FALSE(done.point_written);
    EXPECT_FALSE(done.results_written);
}

TEST(Sm2KeyExChgA13, AllocatesNothing) {
    const ExchangeCase exchange = small_exchange();
    LegacyExchange side(exchange, Role::kInitiator);
    FailingAlloc counter(1);
    EXPECT_EQ(side.a1_3(), 0);
    EXPECT_EQ(counter.allocations, 0u);
}

TEST(Sm2KeyExChgMemory, UnknownSelectorNeedsNoBlock) {
    for (const LegacyKeyCall &call : kLegacyKeyCalls) {
        const ExchangeCase exchange = small_exchange(24);
        LegacyExchange side(exchange, call.role, 100);
        side.selector = 2;
        FakeEntropy entropy;
        const LegacyCall function = call.call == kResponderCall.call ? &LegacyExchange::b1_10 : call.call;
        FailingAlloc counter;
        EXPECT_EQ((side.*function)(), 0) << call.name;
        EXPECT_EQ(counter.allocations, 2u) << call.name;
        EXPECT_EQ(counter.outstanding, kept_digit_buffers(2)) << call.name;
    }
}

}  // namespace zokecc_test::sm2_exchange_memory_test

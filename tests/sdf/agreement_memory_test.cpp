// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// What the key agreement calls allocate, what they give back, and what they answer when any one of
// the allocations fails.
#include <gtest/gtest.h>

#include "tests/support/failing_alloc.h"
#include "tests/support/model_hash.h"
#include "tests/support/session_exchange.h"

namespace zokecc_test::agreement_memory_test {

using namespace exchange;

namespace {

constexpr unsigned kNone = 0;
constexpr uint32_t kInPlace = 19;  // a key that is derived in place for every length of a curve
constexpr uint32_t kWider = 40;    // on a 20-byte curve the derivation writes 64 bytes for it

struct Outcome {
    uint32_t status;
    unsigned allocations;
    int outstanding;
    unsigned draws;
    bool results_written;
    bool point_written;
    bool bits_set;
    size_t last_size;
};

Outcome run_failing(const SessionKeyCall &call, uint32_t klen, unsigned fail_at) {
    static const ExchangeCase exchange = tiny_case(prime_group(), 20, 0);
    SessionExchange side(exchange, call.role, klen);
    side.R_record.bits = 161;
    FakeEntropy entropy;
    entropy.queued_numbers.push_back(mint_from_hex(to_hex(exchange.own(call.role).r)));
    FailingAlloc counter(fail_at);
    const uint32_t status = (side.*call.call)();
    return {status,
            counter.allocations,
            counter.outstanding,
            entropy.number_calls,
            !side.results_untouched(),
            !side.R_written.unchanged(),
            side.R_record.bits == 160,
            counter.last_size};
}

unsigned blocks_for_Z(const SessionKeyCall &call) { return call.makes_Z ? 2 : 0; }

void expect_success(const SessionKeyCall &call, uint32_t klen, unsigned allocations) {
    const Outcome done = run_failing(call, klen, kNone);
    EXPECT_EQ(done.status, ZOK_OK) << call.name;
    EXPECT_EQ(done.allocations, allocations) << call.name;
    EXPECT_EQ(done.outstanding, kept_digit_buffers(2)) << call.name;
}

}  // namespace

TEST(ZokAgreementMemory, KeptEveryCallKeepsTwoDigitBuffers) {
    for (const SessionKeyCall &call : kSessionKeyCalls)
        expect_success(call, kInPlace, blocks_for_Z(call) + 2);
}

TEST(ZokAgreementMemory, BlockForAWiderDerivationIsGivenBack) {
    for (const SessionKeyCall &call : kSessionKeyCalls) expect_success(call, kWider, blocks_for_Z(call) + 3);
}

TEST(ZokAgreementMemory, FailedUserInformationBufferReturns1000027) {
    for (const SessionKeyCall &call : kSm2Family)
        for (unsigned fail_at : {1u, 2u}) {
            const Outcome done = run_failing(call, kWider, fail_at);
            EXPECT_EQ(done.status, ZOK_ERR_ARGUMENT) << call.name;
            EXPECT_EQ(done.allocations, fail_at) << call.name;
            EXPECT_EQ(done.outstanding, 0) << call.name;
            EXPECT_EQ(done.draws, 0u) << call.name;
            EXPECT_FALSE(done.results_written || done.point_written || done.bits_set) << call.name;
        }
}

TEST(ZokAgreementMemory, FailedDigitBufferReturnsMinusOneWithoutResults) {
    for (const SessionKeyCall &call : kSessionKeyCalls)
        for (unsigned digit_buffer : {1u, 2u}) {
            const Outcome done = run_failing(call, kInPlace, blocks_for_Z(call) + digit_buffer);
            EXPECT_EQ(done.status, ZOK_ERR_INTERNAL) << call.name;
            EXPECT_FALSE(done.results_written) << call.name;
            EXPECT_LE(done.outstanding, kept_digit_buffers(1)) << call.name;
            // The random point stands, and the bits of a given one are set.
            EXPECT_EQ(done.draws, call.draws ? 1u : 0u) << call.name;
            EXPECT_EQ(done.point_written, call.draws) << call.name;
            EXPECT_EQ(done.bits_set, call.role == Role::kResponder && !call.draws) << call.name;
        }
}

TEST(ZokAgreementMemory, AnyFailedAllocationGivesNoResults) {
    for (const SessionKeyCall &call : kSessionKeyCalls)
        for (unsigned fail_at = 1; fail_at <= blocks_for_Z(call) + 3; ++fail_at) {
            const Outcome done = run_failing(call, kWider, fail_at);
            EXPECT_EQ(done.status, fail_at <= blocks_for_Z(call) ? ZOK_ERR_ARGUMENT : ZOK_ERR_INTERNAL)
                << call.name << " " << fail_at;
            EXPECT_FALSE(done.results_written) << call.name << " " << fail_at;
            EXPECT_LE(done.outstanding, kept_digit_buffers(1)) << call.name << " " << fail_at;
        }
}

TEST(ZokAgreementMemory, FailedBlockForAWiderDerivationWritesAndDrawsNothing) {
    for (const SessionKeyCall &call : {kSm2Respond, kSm2RespondAtOnce, kRespond, kRespondAtOnce}) {
        const Outcome done = run_failing(call, kWider, blocks_for_Z(call) + 1);
        EXPECT_EQ(done.status, ZOK_ERR_INTERNAL) << call.name;
        EXPECT_EQ(done.outstanding, 0) << call.name;
        EXPECT_EQ(done.draws, 0u) << call.name;
        EXPECT_FALSE(done.results_written || done.point_written || done.bits_set) << call.name;
    }
}

TEST(ZokAgreementMemory, RefusedArgumentsAllocateNothing) {
    const ExchangeCase exchange = tiny_case(prime_group(), 20, 0);
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role, kWider);
        side.d_record = private_record(tiny_bytes(991, 20));
        FailingAlloc counter;
        EXPECT_EQ((side.*call.call)(), ZOK_ERR_ARGUMENT) << call.name;
        EXPECT_EQ(counter.allocations, 0u) << call.name;
    }
}

// Z values that the key derivation refuses: no key, and no block for one.
TEST(ZokAgreementMemory, RefusedDerivationHasNoBlockForItsKey) {
    const ExchangeCase exchange = tiny_case(prime_group(), 20, 0);
    for (const SessionKeyCall &call : kPlainFamily)
        for (uint32_t beyond : {0u, 1u}) {
            SessionExchange side(exchange, call.role, kWider);
            side.set_ZA(test_bytes(200));
            side.set_ZB(test_bytes(60 + beyond));
            FailingAlloc counter;
            EXPECT_EQ((side.*call.call)(), ZOK_OK) << call.name;
            EXPECT_EQ(counter.allocations, 3u - beyond) << call.name;
        }
}

TEST(ZokExternalEcdhKeyAgreement, KeptKeepsOneDigitBuffer) {
    const ExchangeCase exchange = tiny_case(prime_group(), 20, 0);
    SessionExchange side(exchange, Role::kInitiator);
    GuardedBuffer out(20);
    FailingAlloc counter;
    EXPECT_EQ(side.ecdh(out.data()), ZOK_OK);
    EXPECT_EQ(counter.allocations, 1u);
    EXPECT_EQ(counter.outstanding, kept_digit_buffers(1));
}

TEST(ZokAgreementMemory, OwnUserInformationComesFirst) {
    // A is named by 5 bytes and B by 4, so that the size shows whose value is being made.
    const size_t of_A = 6u * 20 + 5 + 3, of_B = 6u * 20 + 4 + 3;
    for (const SessionKeyCall &call : kSm2Family) {
        const bool initiates = call.role == Role::kInitiator;
        EXPECT_EQ(run_failing(call, kInPlace, 1).last_size, initiates ? of_A : of_B) << call.name;
        EXPECT_EQ(run_failing(call, kInPlace, 2).last_size, initiates ? of_B : of_A) << call.name;
    }
}

}  // namespace zokecc_test::agreement_memory_test

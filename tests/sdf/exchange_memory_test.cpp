// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// What the exchange calls of both generations allocate and free, and what they return if any
// one of the allocations fails.
#include <gtest/gtest.h>

#include "tests/support/exchange_generations.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::exchange_memory_test {

using namespace exchange;

namespace {

template <class G>
class ExchangeMemory : public testing::Test {};
TYPED_TEST_SUITE(ExchangeMemory, Generations, GenerationName);

constexpr unsigned kNone = 0;
constexpr int kInPlace = 19;  // a key length derived in place on every curve

// On the shortest curve the derivation writes 64 bytes for this key, which has two steps.
template <class G>
constexpr int kWider = static_cast<int>(2 * G::kLengths[0]);

struct Outcome {
    uint32_t status;
    unsigned allocations;
    int outstanding;
    unsigned draws;
    bool results_written;
    bool point_written;
    bool bits_set;
    size_t last_size;

    bool nothing_written() const { return !results_written && !point_written && !bits_set; }
};

bool bits_set(const LegacyExchange &) { return false; }
bool bits_set(const SessionExchange &side) { return side.R_record.bits == 160; }

template <class G>
Outcome run_failing(const typename G::Call &call, int klen, unsigned fail_at) {
    const ExchangeCase exchange = small_exchange<G>(G::kLengths[0]);
    typename G::Side side(exchange, call.role, klen);
    if constexpr (std::is_same_v<G, Sessions>) side.R_record.bits = 161;
    FakeEntropy entropy;
    entropy.queued_numbers.push_back(mint_from_hex(to_hex(exchange.own(call.role).r)));
    FailingAlloc counter(fail_at);
    const auto status = static_cast<uint32_t>((side.*G::bare(call).call)());
    return {status,
            counter.allocations,
            counter.outstanding,
            entropy.number_calls,
            !side.results_untouched(),
            !side.R_written.unchanged(),
            bits_set(side),
            counter.last_size};
}

unsigned blocks_for_Z(const LegacyKeyCall &) { return 0; }
unsigned blocks_for_Z(const SessionKeyCall &call) { return call.makes_Z ? 2 : 0; }

// Two multiplications of points other than G never free their digits.
template <class G>
void expect_success(int klen, unsigned other_blocks) {
    for (const auto &call : G::kCalls) {
        const Outcome done = run_failing<G>(call, klen, kNone);
        EXPECT_EQ(done.status, ZOK_OK) << call.name;
        EXPECT_EQ(done.allocations, blocks_for_Z(call) + digit_allocations(2) + other_blocks) << call.name;
        EXPECT_EQ(done.outstanding, kept_digit_buffers(2)) << call.name;
    }
}

template <class G>
void expect_two_digit_buffers() {
    for (int klen : {0, kInPlace, kWider<G> - 1}) expect_success<G>(klen, 0);
}

}  // namespace

TEST(Sm2KeyExChgMemory, KeptEveryCallKeepsTwoDigitBuffers) { expect_two_digit_buffers<Legacy>(); }
TEST(ZokAgreementMemory, KeptEveryCallKeepsTwoDigitBuffers) { expect_two_digit_buffers<Sessions>(); }

TYPED_TEST(ExchangeMemory, BlockForAWiderDerivationIsGivenBack) {
    for (int klen : {kWider<TypeParam>, 200}) expect_success<TypeParam>(klen, 1);
}

TYPED_TEST(ExchangeMemory, AnyFailedAllocationGivesNoResults) {
    for (const auto &call : TypeParam::kCalls)
        for (int klen : {kInPlace, kWider<TypeParam>})
            for (unsigned fail_at = 1;
                 fail_at <= blocks_for_Z(call) + digit_allocations(2) + (klen == kInPlace ? 0 : 1);
                 ++fail_at) {
                SCOPED_TRACE(std::string(call.name) + ' ' + std::to_string(fail_at));
                const Outcome done = run_failing<TypeParam>(call, klen, fail_at);
                EXPECT_EQ(done.status, fail_at <= blocks_for_Z(call) ? ZOK_ERR_ARGUMENT : ZOK_ERR_INTERNAL);
                EXPECT_FALSE(done.results_written);
                EXPECT_LE(done.outstanding, kept_digit_buffers(1));
                if (klen != kInPlace || fail_at <= blocks_for_Z(call)) continue;
                // Allocating digits fails: the random point is written, and the bits of a given one are set.
                EXPECT_EQ(done.draws, TypeParam::writes_point(call) ? 1u : 0u);
                EXPECT_EQ(done.point_written, TypeParam::writes_point(call));
                EXPECT_EQ(done.bits_set, TypeParam::sets_bits(call));
            }
}

TYPED_TEST(ExchangeMemory, FailedBlockForAWiderDerivationWritesAndDrawsNothing) {
    for (const auto &call : TypeParam::kCalls) {
        if (call.role == Role::kInitiator) continue;
        const Outcome done = run_failing<TypeParam>(call, kWider<TypeParam>, blocks_for_Z(call) + 1);
        EXPECT_EQ(done.status, ZOK_ERR_INTERNAL) << call.name;
        EXPECT_EQ(done.allocations, blocks_for_Z(call) + 1) << call.name;
        EXPECT_EQ(done.outstanding, 0) << call.name;
        EXPECT_EQ(done.draws, 0u) << call.name;
        EXPECT_TRUE(done.nothing_written()) << call.name;
    }
}

TEST(ZokAgreementMemory, FailedUserInformationBufferReturns1000027) {
    for (const SessionKeyCall &call : kSm2Family)
        for (unsigned fail_at : {1u, 2u}) {
            const Outcome done = run_failing<Sessions>(call, kWider<Sessions>, fail_at);
            EXPECT_EQ(done.status, ZOK_ERR_ARGUMENT) << call.name;
            EXPECT_EQ(done.allocations, fail_at) << call.name;
            EXPECT_EQ(done.outstanding, 0) << call.name;
            EXPECT_EQ(done.draws, 0u) << call.name;
            EXPECT_TRUE(done.nothing_written()) << call.name;
        }
}

TEST(ZokAgreementMemory, OwnUserInformationComesFirst) {
    // A's name has 5 bytes and B's 4, so the size shows whose Z is being computed.
    const size_t of_A = 6u * 20 + 5 + 3, of_B = 6u * 20 + 4 + 3;
    for (const SessionKeyCall &call : kSm2Family) {
        const bool initiates = call.role == Role::kInitiator;
        EXPECT_EQ(run_failing<Sessions>(call, kInPlace, 1).last_size, initiates ? of_A : of_B) << call.name;
        EXPECT_EQ(run_failing<Sessions>(call, kInPlace, 2).last_size, initiates ? of_B : of_A) << call.name;
    }
}

TYPED_TEST(ExchangeMemory, RefusedArgumentsAllocateNothing) {
    const unsigned byte_len = TypeParam::kLengths[0];
    const ExchangeCase exchange = small_exchange<TypeParam>(byte_len);
    for (const auto &call : TypeParam::kCalls) {
        typename TypeParam::Side side(exchange, call.role, kWider<TypeParam>);
        TypeParam::set_d(side, tiny_bytes(991, byte_len));
        FailingAlloc counter;
        EXPECT_NE((side.*call.call)(), 0) << call.name;
        EXPECT_EQ(counter.allocations, 0u) << call.name;
    }
}

TEST(Sm2KeyExChgA13, AllocatesNothing) {
    const ExchangeCase exchange = small_exchange<Legacy>();
    LegacyExchange side(exchange, Role::kInitiator);
    FailingAlloc counter(1);
    EXPECT_EQ(side.a1_3(), 0);
    EXPECT_EQ(counter.allocations, 0u);
}

TEST(Sm2KeyExChgMemory, UnknownSelectorNeedsNoBlock) {
    for (const LegacyKeyCall &call :
         {kInitiatorCall, Legacy::kDrawing[0], kWholeInitiator, kWholeResponder}) {
        const ExchangeCase exchange = small_exchange<Legacy>(24);
        LegacyExchange side(exchange, call.role, 100);
        side.selector = 2;
        FakeEntropy entropy;
        FailingAlloc counter;
        EXPECT_EQ((side.*call.call)(), 0) << call.name;
        EXPECT_EQ(counter.allocations, digit_allocations(2)) << call.name;
        EXPECT_EQ(counter.outstanding, kept_digit_buffers(2)) << call.name;
    }
}

// Z values that the key derivation refuses: no key, and no block for one.
TEST(ZokAgreementMemory, RefusedDerivationHasNoBlockForItsKey) {
    const ExchangeCase exchange = small_exchange<Sessions>(20);
    for (const SessionKeyCall &call : kPlainFamily)
        for (uint32_t beyond : {0u, 1u}) {
            SessionExchange side(exchange, call.role, kWider<Sessions>);
            side.set_Z(test_bytes(200), test_bytes(60 + beyond));
            FailingAlloc counter;
            EXPECT_EQ((side.*call.call)(), ZOK_OK) << call.name;
            EXPECT_EQ(counter.allocations, digit_allocations(2) + 1 - beyond) << call.name;
        }
}

TEST(ZokExternalEcdhKeyAgreement, KeptKeepsOneDigitBuffer) {
    const ExchangeCase exchange = small_exchange<Sessions>(20);
    SessionExchange side(exchange, Role::kInitiator);
    GuardedBuffer out(20);
    FailingAlloc counter;
    EXPECT_EQ(side.ecdh(out.data()), ZOK_OK);
    EXPECT_EQ(counter.allocations, 1u);
    EXPECT_EQ(counter.outstanding, kept_digit_buffers(1));
}

}  // namespace zokecc_test::exchange_memory_test

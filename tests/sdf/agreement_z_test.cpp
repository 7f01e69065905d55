// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Given Z values of all lengths: those the key derivation accepts, those it silently refuses,
// and those that do not fit at all.
#include <gtest/gtest.h>

#include "tests/support/exchange_generations.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::agreement_z_test {

using namespace exchange;

namespace {

constexpr unsigned kLengths[] = {20, 24, 28, 32};

// Z values of these lengths, in the side and in the expectation.
ExchangeHashes use_Z(SessionExchange &side, const ExchangeCase &exchange, size_t ZA_len, size_t ZB_len) {
    side.set_Z(test_bytes(ZA_len, 5), test_bytes(ZB_len, 6));
    ExchangeHashes out = exchange.hashes();
    out.ZA = side.ZA;
    out.ZB = side.ZB;
    return out;
}

void expect_accepted(const SessionKeyCall &call, unsigned byte_len, size_t ZA_len, size_t ZB_len) {
    const ExchangeCase exchange = tiny_case(prime_group(), byte_len, 0);
    SessionExchange side(exchange, call.role, 45);
    SCOPED_TRACE(std::to_string(ZA_len) + " and " + std::to_string(ZB_len));
    expect_gives(side, call, use_Z(side, exchange, ZA_len, ZB_len));
}

// The key is unchanged, everything else is as in a successful call.
void expect_key_missing(const SessionKeyCall &call, unsigned byte_len, size_t ZA_len, size_t ZB_len,
                        int klen) {
    const ExchangeCase exchange = tiny_case(prime_group(), byte_len, 0);
    SessionExchange side(exchange, call.role, klen);
    const ExchangeHashes expected = use_Z(side, exchange, ZA_len, ZB_len);
    ASSERT_EQ(run(side, call), ZOK_OK) << call.name << " " << ZA_len << " " << ZB_len;
    EXPECT_TRUE(side.key.untouched()) << call.name;
    EXPECT_EQ(Sessions::values(side, call),
              std::pair(to_hex(expected.confirmation(0x02)), to_hex(expected.confirmation(0x03))));
}

void expect_refused(const SessionKeyCall &call, unsigned byte_len, uint32_t ZA_len, uint32_t ZB_len) {
    const ExchangeCase exchange = tiny_case(prime_group(), byte_len, 0);
    SessionExchange side(exchange, call.role);
    const ByteString one = {0x5A};  // no more may be read of either
    side.ZA_bytes = side.ZB_bytes = one.data();
    side.ZA_len = ZA_len;
    side.ZB_len = ZB_len;
    side.R_record.bits = 0xDEADBEEF;
    if (call.call == kSm2Initiate.call || call.role == Role::kInitiator) side.R_record.bits = 8 * byte_len;
    const ECCrefPublicKey before = side.R_record;
    FakeEntropy entropy;
    EXPECT_EQ((side.*call.call)(), ZOK_ERR_ARGUMENT) << call.name << " " << ZA_len << " " << ZB_len;
    EXPECT_TRUE(side.nothing_written()) << call.name;
    EXPECT_EQ(to_hex(image(side.R_record)), to_hex(image(before))) << call.name;
    EXPECT_EQ(entropy.number_calls, 0u) << call.name;
}

}  // namespace

TEST(ZokAgreementZ, EveryLengthUpToTheLimitOfTheDerivationIsAccepted) {
    for (unsigned byte_len : kLengths) {
        const size_t most = 300 - 2 * byte_len;
        for (const SessionKeyCall &call : kPlainFamily) {
            expect_accepted(call, byte_len, 0, 0);
            expect_accepted(call, byte_len, 32, 32);
            expect_accepted(call, byte_len, 1, 0);
            expect_accepted(call, byte_len, 0, 33);
            expect_accepted(call, byte_len, most, 0);
            expect_accepted(call, byte_len, 0, most);
            expect_accepted(call, byte_len, most / 2, most - most / 2);
        }
    }
}

TEST(ZokGenerateKeyWithEcc, KeptRefusedDerivationIsNotReported) {
    for (unsigned byte_len : kLengths) {
        const size_t first = 301 - 2 * byte_len;
        const size_t last = 448 - 5 * byte_len;
        for (const SessionKeyCall &call : kPlainFamily) {
            expect_key_missing(call, byte_len, first, 0, 45);
            expect_key_missing(call, byte_len, 0, first, 45);
            expect_key_missing(call, byte_len, first / 2, first - first / 2, 64);
            expect_key_missing(call, byte_len, last, 0, 45);
            expect_key_missing(call, byte_len, last / 2, last - last / 2, 100);
        }
    }
}

TEST(ZokAgreementZ, KeptRefusedDerivationNeedsNoKeyBuffer) {
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    for (const SessionKeyCall &call : kPlainFamily) {
        SessionExchange side(exchange, call.role);
        const ExchangeHashes expected = use_Z(side, exchange, 200, 37);
        side.result->key = nullptr;
        EXPECT_EQ(run(side, call), ZOK_OK) << call.name;
        const uint8_t prefix = call.role == Role::kInitiator ? 0x02 : 0x03;
        EXPECT_EQ(to_hex(side.result->check, 32), to_hex(expected.confirmation(prefix))) << call.name;
    }
}

TEST(ZokAgreementZ, TranscriptAbove448BytesReturns1000027) {
    for (unsigned byte_len : kLengths) {
        const uint32_t first = 449 - 5 * byte_len;
        for (const SessionKeyCall &call : kPlainFamily) {
            expect_refused(call, byte_len, first, 0);
            expect_refused(call, byte_len, 0, first);
            expect_refused(call, byte_len, first / 2, first - first / 2);
        }
    }
}

}  // namespace zokecc_test::agreement_z_test

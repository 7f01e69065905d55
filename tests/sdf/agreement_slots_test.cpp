// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Which confirmation value stands in which slot: the value with 02 is S1 and SB, that with 03 is S2
// and SA, and every side compares the one that it does not send.
#include <gtest/gtest.h>

#include "tests/support/session_exchange.h"

namespace zokecc_test::agreement_slots_test {

using namespace exchange;

namespace {

const ExchangeCase &small_exchange() {
    static const ExchangeCase exchange = tiny_case(prime_group(), 24, 1);
    return exchange;
}

void expect_slots(const SessionKeyCall &call, uint8_t check_prefix, uint8_t send_prefix) {
    SessionExchange side(small_exchange(), call.role);
    ASSERT_EQ(run(side, call), ZOK_OK);
    EXPECT_EQ(to_hex(side.result->check, 32), to_hex(small_exchange().hashes().confirmation(check_prefix)));
    EXPECT_EQ(to_hex(side.result->send, 32), to_hex(small_exchange().hashes().confirmation(send_prefix)));
    EXPECT_EQ(to_hex(side.result->check + 32, 32), to_hex(ByteString(32, kUnused)));
    EXPECT_EQ(to_hex(side.result->send + 32, 32), to_hex(ByteString(32, kUnused)));
    EXPECT_TRUE(side.written.guards_intact());
}

}  // namespace

TEST(ZokSm2GenerateKeyWithEcc, ComparesTheValueWith02AndSendsThatWith03) {
    expect_slots(kSm2Initiate, 0x02, 0x03);
}

TEST(ZokGenerateKeyWithEcc, ComparesTheValueWith02AndSendsThatWith03) { expect_slots(kInitiate, 0x02, 0x03); }

TEST(ZokSm2GenerateResponseWithEcc, ComparesTheValueWith03AndSendsThatWith02) {
    expect_slots(kSm2Respond, 0x03, 0x02);
}

TEST(ZokGenerateResponseWithEcc, ComparesTheValueWith03AndSendsThatWith02) {
    expect_slots(kRespond, 0x03, 0x02);
}

TEST(ZokSm2GenerateAgreementDataAndKeyWithEcc, ComparesTheValueWith03AndSendsThatWith02) {
    expect_slots(kSm2RespondAtOnce, 0x03, 0x02);
}

TEST(ZokGenerateAgreementDataAndKeyWithEcc, ComparesTheValueWith03AndSendsThatWith02) {
    expect_slots(kRespondAtOnce, 0x03, 0x02);
}

TEST(ZokAgreement, RandomPointOutputKeepsWhatStandsBehindTheCoordinates) {
    for (const SessionKeyCall &call : {kSm2RespondAtOnce, kRespondAtOnce}) {
        SessionExchange side(small_exchange(), call.role);
        std::memset(side.R_out, 0x33, sizeof *side.R_out);
        ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
        EXPECT_EQ(side.R_out->bits, 192u);
        EXPECT_EQ(to_hex(side.R_out->x, 64), to_hex(joined({small_exchange().B.Rx, ByteString(40, 0x33)})));
        EXPECT_EQ(to_hex(side.R_out->y, 64), to_hex(joined({small_exchange().B.Ry, ByteString(40, 0x33)})));
    }
}

}  // namespace zokecc_test::agreement_slots_test

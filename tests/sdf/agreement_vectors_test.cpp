// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Key agreement over sessions against the standards' worked examples and the rest of sm2_kex.rsp.
#include <gtest/gtest.h>

#include <algorithm>

#include "sdf/sm2_x_bar_session.h"
#include "tests/support/session_exchange.h"

namespace zokecc_test::agreement_vectors_test {

using namespace exchange;

namespace {

bool fits_session(const VectorBlock &block) {
    const std::vector<std::string> names = session_curve_names();
    return std::find(names.begin(), names.end(), block.text("Curve")) != names.end();
}

std::vector<size_t> usable_blocks() {
    std::vector<size_t> out;
    for (size_t i = 0; i < exchange_vectors().size(); ++i)
        if (fits_session(exchange_vectors()[i])) out.push_back(i);
    return out;
}

std::string name_of_block(const testing::TestParamInfo<size_t> &block) {
    return "Block" + std::to_string(block.param) + exchange_vectors()[block.param].text("Curve");
}

// One call's results are what the file says: S1 and S2 in the slots of the role.
void expect_file_values(const VectorBlock &block, const SessionKeyCall &call) {
    const ExchangeCase exchange = vector_case(block);
    SessionExchange side(exchange, call.role, block.decimal("KLen"));
    ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
    const bool initiates = call.role == Role::kInitiator;
    EXPECT_EQ(key_text(side), block.text("K")) << call.name;
    EXPECT_EQ(to_hex(side.result->check, 32), block.text(initiates ? "S1" : "S2")) << call.name;
    EXPECT_EQ(to_hex(side.result->send, 32), block.text(initiates ? "S2" : "S1")) << call.name;
    if (call.draws) expect_public_written(side.R_written, exchange.B.Rx, exchange.B.Ry);
}

std::string x_bar_text(void *session, const ByteString &x) {
    const SessionContext &context = *static_cast<SessionContext *>(session);
    uint8_t out[100] = {};
    sm2_x_bar_session(session, x.data(), context.w, out);
    return to_hex(out, context.byte_len);
}

class ZokAgreementVectors : public testing::TestWithParam<size_t> {
protected:
    const VectorBlock &block() const { return exchange_vectors()[GetParam()]; }
};

}  // namespace

TEST_P(ZokAgreementVectors, Sm2FamilyGetsTheFilesKeyAndValues) {
    for (const SessionKeyCall &call : kSm2Family) expect_file_values(block(), call);
}

TEST_P(ZokAgreementVectors, PlainFamilyGetsTheFilesKeyAndValues) {
    for (const SessionKeyCall &call : kPlainFamily) expect_file_values(block(), call);
}

TEST_P(ZokAgreementVectors, XBarOfBothPointsIsTheFiles) {
    const ExchangeCase exchange = vector_case(block());
    void *session = session_on(exchange.curve, exchange.selector);
    EXPECT_EQ(x_bar_text(session, exchange.A.Rx), block().text("x1bar"));
    EXPECT_EQ(x_bar_text(session, exchange.B.Rx), block().text("x2bar"));
}

TEST_P(ZokAgreementVectors, OtherKeyLengthsContinueTheSameStream) {
    const ExchangeCase exchange = vector_case(block());
    for (uint32_t klen : {19u, 77u}) {
        SessionExchange side(exchange, Role::kInitiator, klen);
        ASSERT_EQ(run(side, kInitiate), ZOK_OK);
        expect_results(side, kInitiate, exchange.hashes());
    }
}

INSTANTIATE_TEST_SUITE_P(File, ZokAgreementVectors, testing::ValuesIn(usable_blocks()), name_of_block);

TEST(ZokAgreementVectorFile, EveryBlockButThoseOfA161BitOrderFitsASession) {
    EXPECT_EQ(exchange_vectors().size(), 35u);
    EXPECT_EQ(usable_blocks().size(), 33u);
    for (const VectorBlock &block : exchange_vectors())
        EXPECT_EQ(fits_session(block), block.text("Curve") != "secp160r1");
}

TEST(ZokSm2GenerateKeyWithEcc, WorkedExampleOfGbT32918Part3) {
    expect_file_values(worked_example("GB/T 32918.3-2016 A.2"), kSm2Initiate);
}

TEST(ZokSm2GenerateResponseWithEcc, WorkedExampleOfGbT32918Part3) {
    expect_file_values(worked_example("GB/T 32918.3-2016 A.2"), kSm2Respond);
}

TEST(ZokSm2GenerateAgreementDataAndKeyWithEcc, WorkedExampleOfGbT32918Part3) {
    expect_file_values(worked_example("GB/T 32918.3-2016 A.2"), kSm2RespondAtOnce);
}

TEST(ZokSm2GenerateKeyWithEcc, WorkedExampleOfGmT0003Part5) {
    expect_file_values(worked_example("GM/T 0003.5-2012 B.2"), kSm2Initiate);
}

TEST(ZokSm2GenerateResponseWithEcc, WorkedExampleOfGmT0003Part5) {
    expect_file_values(worked_example("GM/T 0003.5-2012 B.2"), kSm2Respond);
}

TEST(ZokSm2GenerateAgreementDataAndKeyWithEcc, WorkedExampleOfGmT0003Part5) {
    expect_file_values(worked_example("GM/T 0003.5-2012 B.2"), kSm2RespondAtOnce);
}

}  // namespace zokecc_test::agreement_vectors_test

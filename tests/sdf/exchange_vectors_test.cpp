// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Exchanges in both generations of calls, compared with the standards' examples and the rest of sm2_kex.rsp:
// both random points, x-bar, the key and both confirmation values.
#include <gtest/gtest.h>

#include <algorithm>

#include "schemes/records.h"
#include "sdf/agreement_steps.h"
#include "tests/support/exchange_generations.h"

namespace zokecc_test::exchange_vectors_test {

using namespace exchange;

namespace {

// Sessions support all curves of the file but one, the process-wide calls those of Curve_Init.
bool fits(const std::vector<std::string> &names, const VectorBlock &block) {
    return std::find(names.begin(), names.end(), block.text("Curve")) != names.end();
}
bool fits_process_curve(const VectorBlock &block) { return fits(legacy_curve_names(), block); }
bool fits_session(const VectorBlock &block) { return fits(session_curve_names(), block); }

std::vector<size_t> blocks_where(bool (*usable)(const VectorBlock &)) {
    std::vector<size_t> out;
    for (size_t i = 0; i < exchange_vectors().size(); ++i)
        if (usable(exchange_vectors()[i])) out.push_back(i);
    return out;
}

std::string name_of_block(const testing::TestParamInfo<size_t> &block) {
    return "Block" + std::to_string(block.param) + exchange_vectors()[block.param].text("Curve");
}

// Every call's results are the file's. The call for both roles has the same key but different values.
template <class G>
void expect_file_values(const VectorBlock &block) {
    const ExchangeCase exchange = vector_case(block);
    for (const auto &call : G::kCalls) {
        typename G::Side side(exchange, call.role, static_cast<int>(block.decimal("KLen")));
        expect_gives(side, call, exchange.hashes());
        EXPECT_EQ(text_of(side.key), block.text("K")) << call.name;
        expect_random_point<G>(side, call, exchange);
        if (std::string(call.name).compare(0, 5, "whole") == 0) continue;
        EXPECT_EQ(G::values(side, call), std::pair(block.text("S1"), block.text("S2"))) << call.name;
    }
}

template <class G>
void expect_stream_continued(const VectorBlock &block) {
    const ExchangeCase exchange = vector_case(block);
    for (int klen : {19, 77}) {
        typename G::Side side(exchange, Role::kInitiator, klen);
        expect_gives(side, G::kInitiator, exchange.hashes());
    }
}

class ExchangeVectors : public testing::TestWithParam<size_t> {
protected:
    const VectorBlock &block() const { return exchange_vectors()[GetParam()]; }
};
class Sm2KeyExChgVectors : public ExchangeVectors {
protected:
    void SetUp() override { install(curve(block().text("Curve"))); }
};
using ZokAgreementVectors = ExchangeVectors;

}  // namespace

TEST_P(Sm2KeyExChgVectors, EveryCallGetsTheFilesPointKeyAndValues) { expect_file_values<Legacy>(block()); }
TEST_P(ZokAgreementVectors, EveryCallGetsTheFilesPointKeyAndValues) { expect_file_values<Sessions>(block()); }

TEST_P(Sm2KeyExChgVectors, InitiatorsFirstPointIsTheFiles) {
    const ExchangeCase exchange = vector_case(block());
    LegacyExchange side(exchange, Role::kInitiator);
    ASSERT_EQ(side.a1_3(), 0);
    expect_record(side.R_written, exchange.A.Rx, exchange.A.Ry);
}

TEST_P(Sm2KeyExChgVectors, XBarOfBothPointsIsTheFiles) {
    const ExchangeCase exchange = vector_case(block());
    for (const ExchangeParty *party : {&exchange.A, &exchange.B}) {
        const ecc_point_bytes point = point_record(party->Rx, party->Ry);
        uint8_t out[100] = {};
        sm2_x_bar(&point, global_curve.w, out);
        EXPECT_EQ(to_hex(out, party->Rx.size()), block().text(party == &exchange.A ? "x1bar" : "x2bar"));
    }
}
TEST_P(ZokAgreementVectors, XBarOfBothPointsIsTheFiles) {
    const ExchangeCase exchange = vector_case(block());
    void *session = shared_session(exchange.curve, exchange.selector);
    for (const ExchangeParty *party : {&exchange.A, &exchange.B}) {
        uint8_t out[100] = {};
        sm2_x_bar_session(session, party->Rx.data(), static_cast<SessionContext *>(session)->w, out);
        EXPECT_EQ(to_hex(out, party->Rx.size()), block().text(party == &exchange.A ? "x1bar" : "x2bar"));
    }
}

TEST_P(Sm2KeyExChgVectors, OtherKeyLengthsContinueTheSameStream) { expect_stream_continued<Legacy>(block()); }
TEST_P(ZokAgreementVectors, OtherKeyLengthsContinueTheSameStream) {
    expect_stream_continued<Sessions>(block());
}

INSTANTIATE_TEST_SUITE_P(File, Sm2KeyExChgVectors, testing::ValuesIn(blocks_where(fits_process_curve)),
                         name_of_block);
INSTANTIATE_TEST_SUITE_P(File, ZokAgreementVectors, testing::ValuesIn(blocks_where(fits_session)),
                         name_of_block);

TEST(ExchangeVectorFile, EveryBlockButThoseOf160BitsIsServedByBoth) {
    EXPECT_EQ(exchange_vectors().size(), 35u);
    EXPECT_EQ(blocks_where(fits_process_curve).size(), 31u);
    EXPECT_EQ(blocks_where(fits_session).size(), 33u);
    for (const VectorBlock &block : exchange_vectors())
        EXPECT_EQ(fits_session(block), block.text("Curve") != "secp160r1");
    for (const char *source : {"GB/T 32918.3-2016 A.2", "GM/T 0003.5-2012 B.2"})
        EXPECT_TRUE(fits_process_curve(worked_example(source)) && fits_session(worked_example(source)));
}

TEST(ExchangeVectorFile, ModelOfTheHashesGivesTheFilesValues) {
    for (const VectorBlock &block : exchange_vectors()) {
        const ExchangeHashes hashes = vector_case(block).hashes();
        EXPECT_EQ(to_hex(hashes.key(block.decimal("KLen"))), block.text("K"));
        EXPECT_EQ(to_hex(hashes.confirmation(0x02)), block.text("S1"));
        EXPECT_EQ(to_hex(hashes.confirmation(0x03)), block.text("S2"));
    }
}

}  // namespace zokecc_test::exchange_vectors_test

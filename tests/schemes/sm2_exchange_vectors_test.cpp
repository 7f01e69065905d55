// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The exchange over the process-wide curve against the standards' worked examples and the rest of
// sm2_kex.rsp: both random points, x-bar, the key and both confirmation values, in all calls.
#include <gtest/gtest.h>

#include <algorithm>

#include "schemes/sm2_x_bar.h"
#include "tests/support/legacy_exchange.h"

namespace zokecc_test::sm2_exchange_vectors_test {

using namespace exchange;

namespace {

bool fits_process_curve(const VectorBlock &block) {
    const std::vector<std::string> names = legacy_curve_names();
    return std::find(names.begin(), names.end(), block.text("Curve")) != names.end();
}

std::vector<size_t> usable_blocks() {
    std::vector<size_t> out;
    for (size_t i = 0; i < exchange_vectors().size(); ++i)
        if (fits_process_curve(exchange_vectors()[i])) out.push_back(i);
    return out;
}

std::string name_of_block(const testing::TestParamInfo<size_t> &block) {
    return "Block" + std::to_string(block.param) + exchange_vectors()[block.param].text("Curve");
}

// What the file says came out. A call for both roles has the same key and other values.
void expect_file_values(const LegacyExchange &side, const VectorBlock &block) {
    EXPECT_EQ(text_of(side.key), block.text("K"));
    EXPECT_EQ(text_of(side.value02), block.text("S1"));
    EXPECT_EQ(text_of(side.value03), block.text("S2"));
}

void expect_initiator(const VectorBlock &block) {
    const ExchangeCase exchange = vector_case(block);
    LegacyExchange side(exchange, Role::kInitiator, static_cast<int32_t>(block.decimal("KLen")));
    ASSERT_EQ(side.a1_3(), 0);
    expect_point_written(side.R_written, exchange.A.Rx, exchange.A.Ry);
    side.R = side.R_out;
    ASSERT_EQ(side.a4_10(), 0);
    expect_file_values(side, block);
}

void expect_responder(const VectorBlock &block) {
    const ExchangeCase exchange = vector_case(block);
    LegacyExchange side(exchange, Role::kResponder, static_cast<int32_t>(block.decimal("KLen")));
    ASSERT_EQ(side.b1_10_with_r(), 0);
    expect_point_written(side.R_written, exchange.B.Rx, exchange.B.Ry);
    expect_file_values(side, block);
}

void expect_whole_call(const VectorBlock &block, Role role) {
    const ExchangeCase exchange = vector_case(block);
    LegacyExchange side(exchange, role, static_cast<int32_t>(block.decimal("KLen")));
    ASSERT_EQ(side.whole(), 0);
    EXPECT_EQ(text_of(side.key), block.text("K"));
    expect_whole_results(side, exchange.hashes(), exchange.peer(role));
}

std::string file_x_bar(const ecc_point_bytes &point, size_t byte_len) {
    uint8_t out[100] = {};
    sm2_x_bar(&point, global_curve.w, out);
    return to_hex(out, byte_len);
}

class Sm2KeyExChgVectors : public testing::TestWithParam<size_t> {
protected:
    const VectorBlock &block() const { return exchange_vectors()[GetParam()]; }
    void SetUp() override { install(curve(block().text("Curve"))); }
};

}  // namespace

TEST_P(Sm2KeyExChgVectors, InitiatorGetsTheFilesPointKeyAndValues) { expect_initiator(block()); }

TEST_P(Sm2KeyExChgVectors, ResponderGetsTheFilesPointKeyAndValues) { expect_responder(block()); }

TEST_P(Sm2KeyExChgVectors, CallForBothRolesGetsTheFilesKey) {
    expect_whole_call(block(), Role::kInitiator);
    expect_whole_call(block(), Role::kResponder);
}

TEST_P(Sm2KeyExChgVectors, XBarOfBothPointsIsTheFiles) {
    const ExchangeCase exchange = vector_case(block());
    EXPECT_EQ(file_x_bar(point_record(exchange.A.Rx, exchange.A.Ry), exchange.curve.byte_len),
              block().text("x1bar"));
    EXPECT_EQ(file_x_bar(point_record(exchange.B.Rx, exchange.B.Ry), exchange.curve.byte_len),
              block().text("x2bar"));
}

TEST_P(Sm2KeyExChgVectors, OtherKeyLengthsContinueTheSameStream) {
    const ExchangeCase exchange = vector_case(block());
    for (int32_t klen : {19, 77}) {
        LegacyExchange side(exchange, Role::kInitiator, klen);
        ASSERT_EQ(side.a4_10(), 0);
        expect_split_results(side, exchange.hashes());
    }
}

INSTANTIATE_TEST_SUITE_P(File, Sm2KeyExChgVectors, testing::ValuesIn(usable_blocks()), name_of_block);

TEST(Sm2KeyExChgVectorFile, EveryBlockButThoseOf160BitsFitsTheProcessCurve) {
    EXPECT_EQ(exchange_vectors().size(), 35u);
    EXPECT_EQ(usable_blocks().size(), 31u);
}

TEST(Sm2KeyExChgVectorFile, ModelOfTheHashesGivesTheFilesValues) {
    for (const VectorBlock &block : exchange_vectors()) {
        const ExchangeHashes hashes = vector_case(block).hashes();
        EXPECT_EQ(to_hex(hashes.key(block.decimal("KLen"))), block.text("K"));
        EXPECT_EQ(to_hex(hashes.confirmation(0x02)), block.text("S1"));
        EXPECT_EQ(to_hex(hashes.confirmation(0x03)), block.text("S2"));
    }
}

TEST(Sm2KeyExChgA410, WorkedExampleOfGbT32918Part3) {
    const VectorBlock &block = worked_example("GB/T 32918.3-2016 A.2");
    install(curve(block.text("Curve")));
    expect_initiator(block);
}

TEST(Sm2KeyExChgB110, WorkedExampleOfGbT32918Part3) {
    const VectorBlock &block = worked_example("GB/T 32918.3-2016 A.2");
    install(curve(block.text("Curve")));
    expect_responder(block);
}

TEST(Sm2KeyExChgA410, WorkedExampleOfGmT0003Part5) {
    const VectorBlock &block = worked_example("GM/T 0003.5-2012 B.2");
    install(curve(block.text("Curve")));
    expect_initiator(block);
}

TEST(Sm2KeyExChgB110, WorkedExampleOfGmT0003Part5) {
    const VectorBlock &block = worked_example("GM/T 0003.5-2012 B.2");
    install(curve(block.text("Curve")));
    expect_responder(block);
}

}  // namespace zokecc_test::sm2_exchange_vectors_test

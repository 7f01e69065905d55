// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// A session's curve: ZOK_CurveParaCfg.
//
// The sessions here are plain records on the heap: the call needs nothing else.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>

#include "tests/ecc/multiples.h"
#include "tests/ecc/tiny_record.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/model_curve.h"

namespace zokecc_test::session_curve_test {

namespace {

// A freshly opened session. The record copy that the library allocates is freed here.
class RawSession {
public:
    RawSession() : context_(std::make_unique<SessionContext>()) {}
    ~RawSession() {
        if (context_->record_is_borrowed == 0) std::free(context_->record);
    }
    RawSession(const RawSession &) = delete;
    RawSession &operator=(const RawSession &) = delete;
    SessionContext *get() const { return context_.get(); }
    SessionContext *operator->() const { return context_.get(); }
    uint32_t configure(const CurvePara &record) { return ZOK_CurveParaCfg(get(), record.type, &record); }

private:
    std::unique_ptr<SessionContext> context_;
};

class SessionSnapshot {
public:
    explicit SessionSnapshot(const RawSession &session)
        : session_(session), before_(std::make_unique<SessionContext>(*session.get())) {}
    bool unchanged() const { return same_bytes(*before_, *session_.get()); }
    const SessionContext *operator->() const { return before_.get(); }

private:
    const RawSession &session_;
    std::unique_ptr<SessionContext> before_;
};

CurvePara tiny(uint32_t type = 1, unsigned byte_len = 20) { return tiny_record<CurvePara>(byte_len, type); }

void expect_tiny_numbers(const RawSession &session) {
    EXPECT_TRUE(same_value(kTinyP, session->p));
    EXPECT_TRUE(same_value(small(2), session->a));
    EXPECT_TRUE(same_value(small(3), session->b));
    EXPECT_TRUE(same_point(kTinyG, session->G));
    EXPECT_TRUE(same_value(small(5), session->n));
    EXPECT_TRUE(same_value(small(19), session->h));
    EXPECT_TRUE(same_point(kTinyG, session->table.entry[3]));
}

class ZokCurveParaCfgOn : public testing::TestWithParam<std::string> {};

TEST_P(ZokCurveParaCfgOn, InstallsEveryNumber) {
    const Curve &c = curve(GetParam());
    CurvePara record = c.record(1);
    RawSession session;
    EXPECT_EQ(ZOK_OK, session.configure(record));
    EXPECT_EQ(record.type, session->curve_type);
    EXPECT_EQ(8 * c.byte_len, session->curve_bits);
    EXPECT_EQ(8 * c.byte_len, session->config_bits);
    EXPECT_EQ(c.byte_len, session->byte_len);
    EXPECT_EQ(1u, session->hash_selector);
    EXPECT_TRUE(same_value(c.p, session->p));
    EXPECT_TRUE(same_value(c.a, session->a));
    EXPECT_TRUE(same_value(c.b, session->b));
    EXPECT_TRUE(same_point(c.G, session->G));
    EXPECT_TRUE(same_value(c.n, session->n));
    EXPECT_TRUE(same_value(small(1), session->h)) << "cofactor one";
    EXPECT_EQ(4 * c.byte_len - 1, session->w) << "127 for 256 bits, 79 for 160";
    EXPECT_TRUE(same_bytes(record, *session->record));
    EXPECT_NE(&record, session->record);
    std::vector<ecc_point> expected = ModelCurve(c.a, c.b, c.p).table(c.G);
    for (size_t i = 0; i < expected.size(); ++i)
        EXPECT_TRUE(same_point(expected[i], session->table.entry[i])) << i;
}

INSTANTIATE_TEST_SUITE_P(Curves, ZokCurveParaCfgOn,
                         testing::Values("brainpoolP160r1", "secp192r1", "brainpoolP224r1", "secp256k1"),
                         curve_test_name<testing::TestParamInfo<std::string>>);

TEST(ZokCurveParaCfg, NullSessionIsRefusedFirst) {
    CurvePara record = tiny();
    EXPECT_EQ(ZOK_ERR_SESSION, ZOK_CurveParaCfg(nullptr, 1, &record));
    EXPECT_EQ(ZOK_ERR_SESSION, ZOK_CurveParaCfg(nullptr, 1, nullptr));
    EXPECT_EQ(ZOK_ERR_SESSION, ZOK_CurveParaCfg(nullptr, 7, &record));
}

TEST(ZokCurveParaCfg, NullRecordIsRefusedAndChangesNothing) {
    RawSession session;
    ASSERT_EQ(ZOK_OK, session.configure(tiny()));
    SessionSnapshot before(session);
    EXPECT_EQ(ZOK_ERR_ARGUMENT, ZOK_CurveParaCfg(session.get(), 1, nullptr));
    EXPECT_EQ(ZOK_ERR_ARGUMENT, ZOK_CurveParaCfg(session.get(), 0, nullptr));
    EXPECT_TRUE(before.unchanged());
}

TEST(ZokCurveParaCfg, TypeOutsideOneToSixIsRefusedAndChangesNothing) {
    CurvePara record = tiny();
    record.Gy[19] = 7;
    RawSession session;
    SessionSnapshot before(session);
    FailingAlloc failing(1);
    for (uint32_t type : {0u, 7u, 8u, 0x80000001u, 0xFFFFFFFFu})
        EXPECT_EQ(ZOK_ERR_ARGUMENT, ZOK_CurveParaCfg(session.get(), type, &record)) << type;
    EXPECT_EQ(0u, failing.allocations) << "before the record copy and before the test of G";
    EXPECT_TRUE(before.unchanged());
}

TEST(ZokCurveParaCfg, SizesOfTheSixTypes) {
    struct {
        uint32_t type, byte_len;
    } const types[] = {{1, 20}, {2, 24}, {3, 28}, {4, 32}, {5, 32}, {6, 32}};
    for (auto [type, byte_len] : types) {
        RawSession session;
        EXPECT_EQ(ZOK_OK, session.configure(tiny(type, byte_len))) << type;
        EXPECT_EQ(type, session->curve_type);
        EXPECT_EQ(byte_len, session->byte_len) << type;
        EXPECT_EQ(8 * byte_len, session->curve_bits) << type;
        EXPECT_EQ(8 * byte_len, session->config_bits) << type;
        expect_tiny_numbers(session);
    }
}

TEST(ZokCurveParaCfg, TypeComesFromTheArgumentNotFromTheRecord) {
    CurvePara record = tiny(1, 24);
    RawSession session;
    EXPECT_EQ(ZOK_OK, ZOK_CurveParaCfg(session.get(), 2, &record));
    EXPECT_EQ(2u, session->curve_type);
    EXPECT_EQ(24u, session->byte_len);
    EXPECT_EQ(1u, session->record->type) << "copied as it stands";
    expect_tiny_numbers(session);
}

TEST(ZokCurveParaCfg, SelectorIsStoredAsItStands) {
    CurvePara record = tiny();
    RawSession session;
    for (uint32_t selector : {0u, 1u, 2u, 0xFFFFFFFFu}) {
        record.hash_selector = selector;
        EXPECT_EQ(ZOK_OK, session.configure(record));
        EXPECT_EQ(selector, session->hash_selector);
    }
}

TEST(ZokCurveParaCfg, ReadsOnlyTheFirstBytesOfEachFieldAndCopiesAll) {
    CurvePara record = tiny();
    for (uint8_t *field : {record.p, record.a, record.b, record.Gx, record.Gy, record.n})
        std::memset(field + 20, 0xFF, 64 - 20);
    const CurvePara before = record;
    RawSession session;
    EXPECT_EQ(ZOK_OK, session.configure(record));
    expect_tiny_numbers(session);
    EXPECT_TRUE(same_bytes(before, record));
    EXPECT_TRUE(same_bytes(before, *session->record));
}

TEST(ZokCurveParaCfg, FailedRecordCopyReturnsInternalAndChangesNothing) {
    RawSession session;
    SessionSnapshot before(session);
    {
        FailingAlloc failing(1);
        EXPECT_EQ(ZOK_ERR_INTERNAL, session.configure(tiny()));
        EXPECT_EQ(1u, failing.allocations);
        EXPECT_EQ(sizeof(CurvePara), failing.last_size);
    }
    EXPECT_TRUE(before.unchanged());
}

TEST(ZokCurveParaCfg, FailedRecordCopyWinsOverBasePointOffTheCurve) {
    CurvePara record = tiny();
    record.Gy[19] = 7;
    RawSession session;
    FailingAlloc failing(1);
    EXPECT_EQ(ZOK_ERR_INTERNAL, session.configure(record));
    EXPECT_EQ(0u, session->byte_len) << "the numbers are not read";
}

TEST(ZokCurveParaCfg, SecondConfigurationReusesTheCopyAndReplacesTheCurve) {
    const Curve &c = curve("brainpoolP160r1");
    RawSession session;
    ASSERT_EQ(ZOK_OK, session.configure(c.record(1)));
    CurvePara *copy = session->record;
    FailingAlloc counting;
    EXPECT_EQ(ZOK_OK, session.configure(tiny(2, 24)));
    EXPECT_EQ(0u, counting.allocations);
    EXPECT_EQ(0, counting.outstanding);
    EXPECT_EQ(copy, session->record);
    EXPECT_TRUE(same_bytes(tiny(2, 24), *session->record));
    EXPECT_EQ(2u, session->curve_type);
    EXPECT_EQ(192u, session->curve_bits);
    EXPECT_EQ(24u, session->byte_len);
    EXPECT_EQ(0u, session->hash_selector);
    expect_tiny_numbers(session);
}

TEST(ZokCurveParaCfg, RecordMayBeTheSessionsOwnCopy) {
    RawSession session;
    ASSERT_EQ(ZOK_OK, session.configure(tiny()));
    CurvePara *copy = session->record;
    copy->hash_selector = 1;
    EXPECT_EQ(ZOK_OK, ZOK_CurveParaCfg(session.get(), 1, copy));
    EXPECT_EQ(copy, session->record);
    EXPECT_EQ(1u, session->hash_selector);
    expect_tiny_numbers(session);
}

TEST(ZokCurveParaCfg, BasePointOffTheCurveLeavesTypeAndFirstBitLengthUnset) {
    CurvePara record = tiny();
    record.Gy[19] = 7;
    record.hash_selector = 1;
    RawSession session;
    EXPECT_EQ(ZOK_ERR_INTERNAL, session.configure(record));
    EXPECT_EQ(0u, session->curve_type);
    EXPECT_EQ(0u, session->curve_bits);
    ASSERT_NE(nullptr, session->record);
    EXPECT_TRUE(same_bytes(record, *session->record));
    EXPECT_EQ(20u, session->byte_len);
    EXPECT_EQ(160u, session->config_bits);
    EXPECT_EQ(1u, session->hash_selector);
    EXPECT_TRUE(same_value(kTinyP, session->p));
    EXPECT_TRUE(same_point(affine(small(3), small(7)), session->G));
    EXPECT_TRUE(same_point(affine(small(3), small(7)), session->table.entry[1]));
    EXPECT_TRUE(same_value(small(19), session->h));
    EXPECT_EQ((160u - 29) / 2, session->w);
}

TEST(ZokCurveParaCfg, BasePointOffTheCurveKeepsTypeAndFirstBitLengthOfTheCurveBefore) {
    RawSession session;
    ASSERT_EQ(ZOK_OK, session.configure(tiny(4, 32)));
    CurvePara record = tiny(2, 24);
    record.Gx[23] = 5;
    EXPECT_EQ(ZOK_ERR_INTERNAL, session.configure(record));
    EXPECT_EQ(4u, session->curve_type);
    EXPECT_EQ(256u, session->curve_bits);
    EXPECT_EQ(24u, session->byte_len);
    EXPECT_EQ(192u, session->config_bits);
    EXPECT_TRUE(same_bytes(record, *session->record));
    EXPECT_TRUE(same_value(small(5), session->G.x));
    EXPECT_TRUE(same_point(affine(small(5), small(6)), session->table.entry[1]));
}

TEST(ZokCurveParaCfg, ZeroPrimeReturnsZeroAndLeavesTheTable) {
    RawSession session;
    ASSERT_EQ(ZOK_OK, session.configure(tiny()));
    SessionSnapshot before(session);
    CurvePara record = tiny(3, 28);
    std::memset(record.p, 0, sizeof(record.p));
    EXPECT_EQ(ZOK_OK, session.configure(record));
    EXPECT_TRUE(same_bytes(before->table, session->table));
    EXPECT_EQ(3u, session->curve_type);
    EXPECT_EQ(224u, session->curve_bits);
    EXPECT_EQ(0u, session->p.len);
    EXPECT_EQ(0u, session->h.len);
}

TEST(ZokCurveParaCfg, ZeroOrderLeavesTheQuotientZero) {
    RawSession session;
    ASSERT_EQ(ZOK_OK, session.configure(tiny()));
    CurvePara record = tiny();
    set_order(record, 20, 0);
    EXPECT_EQ(ZOK_OK, session.configure(record));
    EXPECT_EQ(0u, session->n.len);
    EXPECT_EQ(0u, session->h.len) << "not the quotient of the curve before";
    EXPECT_EQ(79u, session->w) << "no used word counts no zero bits";
}

// The type's bits minus the leading zero bits of the order's highest used word.
TEST(ZokCurveParaCfg, WidthComesFromTheTypeAndTheTopWordOfTheOrder) {
    struct {
        uint32_t n, w;
    } const cases[] = {{0x80000001u, 79}, {0x7FFFFFFFu, 79}, {0x3FFFFFFFu, 78}, {1u, 64}};
    RawSession session;
    for (auto [n, w] : cases) {
        CurvePara record = tiny();
        set_order(record, 20, n);
        EXPECT_EQ(ZOK_OK, session.configure(record));
        EXPECT_EQ(w, session->w) << n;
    }
}

TEST(ZokCurveParaCfg, SessionsAndTheGlobalCurveAreIndependent) {
    RawSession first, second;
    auto global_before = std::make_unique<GlobalCurve>(global_curve);
    ASSERT_EQ(ZOK_OK, first.configure(tiny()));
    SessionSnapshot before(first);
    ASSERT_EQ(ZOK_OK, second.configure(curve("brainpoolP160r1").record(0)));
    EXPECT_TRUE(before.unchanged());
    EXPECT_TRUE(same_bytes(*global_before, global_curve));
}

// A session opened on a device that has a record points to the device's own.
class BorrowedRecord : public testing::Test {
protected:
    BorrowedRecord() {
        session->device = &device;
        session->record = &shared;
        session->record_is_borrowed = 1;
    }
    CurvePara shared = tiny();
    DeviceContext device{1, 1, &shared};
    RawSession session;
};

using ZokCurveParaCfgBorrowed = BorrowedRecord;

TEST_F(ZokCurveParaCfgBorrowed, ConfiguringFromTheSharedRecordCopiesNothing) {
    FailingAlloc counting;
    const CurvePara before = shared;
    EXPECT_EQ(ZOK_OK, ZOK_CurveParaCfg(session.get(), 1, &shared));
    EXPECT_EQ(0u, counting.allocations);
    EXPECT_EQ(&shared, session->record);
    EXPECT_EQ(1u, session->record_is_borrowed);
    EXPECT_TRUE(same_bytes(before, shared));
    expect_tiny_numbers(session);
}

TEST_F(ZokCurveParaCfgBorrowed, AnotherRecordGetsAnOwnCopyAndLeavesTheDeviceAlone) {
    const CurvePara before = shared;
    CurvePara other = tiny(2, 24);
    EXPECT_EQ(ZOK_OK, session.configure(other));
    EXPECT_NE(&shared, session->record);
    EXPECT_NE(&other, session->record);
    EXPECT_EQ(0u, session->record_is_borrowed);
    EXPECT_TRUE(same_bytes(other, *session->record));
    EXPECT_TRUE(same_bytes(before, shared));
    EXPECT_EQ(&shared, device.curve);
    EXPECT_EQ(1u, device.session_count);
    EXPECT_EQ(2u, session->curve_type);
}

TEST_F(ZokCurveParaCfgBorrowed, FailedOwnCopyReturnsInternalAndChangesNothing) {
    SessionSnapshot before(session);
    FailingAlloc failing(1);
    EXPECT_EQ(ZOK_ERR_INTERNAL, session.configure(tiny(2, 24)));
    EXPECT_TRUE(before.unchanged());
}

TEST_F(ZokCurveParaCfgBorrowed, RefusedTypeKeepsTheSharedRecord) {
    SessionSnapshot before(session);
    EXPECT_EQ(ZOK_ERR_ARGUMENT, ZOK_CurveParaCfg(session.get(), 7, &shared));
    EXPECT_TRUE(before.unchanged());
}

}  // namespace

}  // namespace zokecc_test::session_curve_test

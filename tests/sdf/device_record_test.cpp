// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Sessions of a device that holds a curve record. The record belongs to its supplier, not to the
// device: sessions read it, never free it, never write it.
#include "tests/sdf/fixtures.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::device_record_test {

namespace {

class SdfOpenSessionWithDeviceRecord : public ::testing::Test {
protected:
    SdfOpenSessionWithDeviceRecord() { device()->curve = &record_; }
    ~SdfOpenSessionWithDeviceRecord() override {
        EXPECT_EQ(image(record_), given_);
        device()->curve = nullptr;
    }

    DeviceContext *device() { return device_.context(); }
    SessionContext *open() { return static_cast<SessionContext *>(open_on(device_)); }
    // Replaces the device's record; at the end it is compared with the last one set.
    void give(const CurvePara &record) {
        record_ = record;
        given_ = image(record_);
    }

    Device device_;
    CurvePara record_ = small_curve().record(HASH_ALG_SM3);
    ByteString given_ = image(record_);
};

CurvePara other_record() {
    CurvePara out = small_curve().record(HASH_ALG_SHA256);
    std::memset(out.p + 20, 0x77, 44);  // bytes after the number are copied but not read
    return out;
}

bool signs(SessionContext *session) {
    FakeEntropy entropy;
    queue_numbers(entropy, {77});
    ECCSignature sig{};
    if (sign_e(session, ZOK_ALG_SM2_SIGN, small_private_key(), small_bytes(456), &sig) != ZOK_OK)
        return false;
    return to_hex(sig.r, 20) == to_hex(small_bytes(226)) && to_hex(sig.s, 20) == to_hex(small_bytes(216));
}

}  // namespace

TEST_F(SdfOpenSessionWithDeviceRecord, ConfiguresNewSessionsWithoutACopy) {
    FailingAlloc counter;
    SessionContext *session = open();
    EXPECT_EQ(counter.allocations, 1u);
    EXPECT_EQ(session->record, &record_);
    EXPECT_EQ(session->record_is_borrowed, 1u);
    EXPECT_EQ(session->curve_type, 1u);
    EXPECT_EQ(session->curve_bits, 160u);
    EXPECT_TRUE(signs(session));
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 0);
}

TEST_F(SdfOpenSessionWithDeviceRecord, FailedSessionAllocationReturns1000042) {
    void *session = nullptr;
    FailingAlloc counter(1);
    EXPECT_EQ(SDF_OpenSession(device_.handle(), &session), ZOK_ERR_OPEN_SESSION);
    EXPECT_EQ(session, nullptr);
    EXPECT_EQ(device()->session_count, 0u);
}

TEST_F(SdfOpenSessionWithDeviceRecord, SurvivesEveryKindOfClose) {
    FailingAlloc counter;
    SessionContext *first = open();
    SessionContext *second = open();
    SessionContext *third = open();
    EXPECT_EQ(SDF_CloseSession(first), ZOK_OK);
    EXPECT_EQ(ZOK_CloseSession(second), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 1);
    EXPECT_TRUE(signs(third));
    EXPECT_EQ(SDF_CloseSession(third), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 0);
    device()->session_count = 0;  // the session closed without its device was still counted
}

TEST_F(SdfOpenSessionWithDeviceRecord, ConfiguringWithTheBorrowedRecordCopiesNothing) {
    SessionContext *session = open();
    FailingAlloc counter;
    EXPECT_EQ(ZOK_CurveParaCfg(session, record_.type, &record_), ZOK_OK);
    EXPECT_EQ(counter.allocations, 0u);
    EXPECT_EQ(session->record, &record_);
    EXPECT_EQ(session->record_is_borrowed, 1u);
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
}

TEST_F(SdfOpenSessionWithDeviceRecord, ConfiguringWithAnotherRecordMakesAnOwnCopy) {
    SessionContext *session = open();
    CurvePara other = other_record();
    FailingAlloc counter;
    EXPECT_EQ(ZOK_CurveParaCfg(session, other.type, &other), ZOK_OK);
    EXPECT_EQ(counter.allocations, 1u);
    EXPECT_EQ(counter.last_size, 392u);
    EXPECT_NE(session->record, &record_);
    EXPECT_NE(session->record, &other);
    EXPECT_EQ(session->record_is_borrowed, 0u);
    EXPECT_EQ(image(*session->record), image(other));
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
    EXPECT_EQ(counter.outstanding, -1);  // the copy and the session, which is older than the counter
}

TEST_F(SdfOpenSessionWithDeviceRecord, OwnCopyIsUsedAgainByALaterConfiguration) {
    SessionContext *session = open();
    CurvePara other = other_record();
    ASSERT_EQ(ZOK_CurveParaCfg(session, other.type, &other), ZOK_OK);
    CurvePara *copy = session->record;
    FailingAlloc counter;
    EXPECT_EQ(ZOK_CurveParaCfg(session, record_.type, &record_), ZOK_OK);
    EXPECT_EQ(counter.allocations, 0u);
    EXPECT_EQ(session->record, copy);
    EXPECT_EQ(session->record_is_borrowed, 0u);
    EXPECT_EQ(image(*session->record), image(record_));
    EXPECT_EQ(ZOK_CurveParaCfg(session, copy->type, copy), ZOK_OK);  // its own copy as the argument
    EXPECT_EQ(image(*session->record), image(record_));
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
}

TEST_F(SdfOpenSessionWithDeviceRecord, FailedCopyReturnsMinusOneAndKeepsTheBorrowedRecord) {
    SessionContext *session = open();
    CurvePara other = curve("sm2p256v1").record(HASH_ALG_SHA256);
    {
        FailingAlloc counter(1);
        EXPECT_EQ(ZOK_CurveParaCfg(session, other.type, &other), ZOK_ERR_INTERNAL);
    }
    EXPECT_EQ(session->record, &record_);
    EXPECT_EQ(session->record_is_borrowed, 1u);
    EXPECT_EQ(session->byte_len, 20u);
    EXPECT_TRUE(signs(session));
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
}

TEST_F(SdfOpenSessionWithDeviceRecord, KeptBasePointOffTheCurveStillReturnsASession) {
    CurvePara off = small_curve().record(HASH_ALG_SM3);
    off.Gy[19] ^= 1;
    give(off);
    SessionContext *session = open();
    EXPECT_EQ(session->curve_type, 0u);
    EXPECT_EQ(session->curve_bits, 0u);
    EXPECT_EQ(session->record, &record_);
    EXPECT_EQ(session->record_is_borrowed, 1u);
    EXPECT_EQ(device()->session_count, 1u);
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
}

TEST_F(SdfOpenSessionWithDeviceRecord, KeptUnknownTypeStillReturnsASession) {
    CurvePara unknown = small_curve().record(HASH_ALG_SM3);
    unknown.type = 7;
    give(unknown);
    SessionContext *session = open();
    EXPECT_EQ(session->curve_type, 0u);
    EXPECT_EQ(session->byte_len, 0u);
    EXPECT_EQ(session->record, &record_);
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
}

TEST_F(SdfOpenSessionWithDeviceRecord, BorrowedRecordServesTheUserInformation) {
    SessionContext *session = open();
    ByteString id = text_bytes("ALICE");
    ECCrefPublicKey key = small_public_key();
    GuardedBuffer z(32);
    uint32_t z_len = 0;
    EXPECT_EQ(ZOK_GenerateUserInfo(session, &key, id.data(), 5, z.data(), &z_len), ZOK_OK);
    EXPECT_EQ(to_hex(z.all()), "0b41dde392ef30d430f882651b0b826e734c5bda035e36fa7f275354092cd9de");
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
}

}  // namespace zokecc_test::device_record_test

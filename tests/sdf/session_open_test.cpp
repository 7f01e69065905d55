// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Sessions: opening, with and without a device.
#include "tests/sdf/fixtures.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::session_open_test {

namespace {

void *const kUntouched = reinterpret_cast<void *>(uintptr_t{0x1234});

SessionContext *context(void *session) { return static_cast<SessionContext *>(session); }

}  // namespace

TEST(SdfOpenSession, FailedAllocationReturns1000042AndLeavesDeviceAndOutput) {
    Device device;
    void *session = kUntouched;
    FailingAlloc counter(1);
    EXPECT_EQ(SDF_OpenSession(device.handle(), &session), ZOK_ERR_OPEN_SESSION);
    EXPECT_EQ(session, kUntouched);
    EXPECT_EQ(device.context()->session_count, 0u);
}

TEST(SdfOpenSession, AllocatesOneSessionRecord) {
    Device device;
    FailingAlloc counter;
    void *session = open_on(device);
    EXPECT_EQ(counter.allocations, 1u);
    EXPECT_EQ(counter.last_size, sizeof(SessionContext));
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 0);
}

TEST(SdfOpenSession, RecordIsZeroButForTheDevice) {
    Device device;
    void *session = open_on(device);
    auto expected = std::make_unique<SessionContext>();
    std::memset(expected.get(), 0, sizeof(SessionContext));
    expected->device = device.context();
    EXPECT_EQ(std::memcmp(session, expected.get(), sizeof(SessionContext)), 0);
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
}

TEST(SdfOpenSession, RaisesTheCountOfItsDevice) {
    Device device;
    Device other;
    void *first = open_on(device);
    void *second = open_on(device);
    EXPECT_EQ(device.context()->session_count, 2u);
    EXPECT_EQ(other.context()->session_count, 0u);
    EXPECT_EQ(SDF_CloseSession(first), ZOK_OK);
    EXPECT_EQ(device.context()->session_count, 1u);
    EXPECT_EQ(SDF_CloseSession(second), ZOK_OK);
    EXPECT_EQ(device.context()->session_count, 0u);
}

TEST(SdfOpenSession, HasNoCurveUntilOneIsConfigured) {
    Device device;
    void *session = open_on(device);
    ECCrefPrivateKey key = small_private_key();
    GuardedRecord<ECCSignature> sig;
    EXPECT_EQ(sign_e(session, ZOK_ALG_SM2_SIGN, key, small_bytes(456), sig.get()), ZOK_ERR_SIGN);
    EXPECT_TRUE(sig.unchanged());

    EXPECT_EQ(configure(session, small_curve().record(HASH_ALG_SM3)), ZOK_OK);
    FakeEntropy entropy;
    queue_numbers(entropy, {77});
    EXPECT_EQ(sign_e(session, ZOK_ALG_SM2_SIGN, key, small_bytes(456), sig.get()), ZOK_OK);
    expect_small_signature(sig, 226, 216);
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
}

TEST(ZokOpenSession, ConfiguresTheCurveOfItsRecord) {
    CurvePara record = small_curve().record(HASH_ALG_SHA256);
    ByteString before = image(record);
    void *session = nullptr;
    ASSERT_EQ(ZOK_OpenSession(&session, &record), ZOK_OK);
    EXPECT_EQ(context(session)->curve_type, 1u);
    EXPECT_EQ(context(session)->curve_bits, 160u);
    EXPECT_EQ(context(session)->byte_len, 20u);
    EXPECT_EQ(context(session)->hash_selector, HASH_ALG_SHA256);
    EXPECT_EQ(context(session)->device, nullptr);
    EXPECT_NE(context(session)->record, &record);
    EXPECT_EQ(image(*context(session)->record), before);
    EXPECT_EQ(image(record), before);
    EXPECT_EQ(ZOK_CloseSession(session), ZOK_OK);
}

TEST(ZokOpenSession, AllocatesTheSessionAndItsRecordWhichClosingFrees) {
    CurvePara record = small_curve().record(HASH_ALG_SM3);
    FailingAlloc counter;
    void *session = nullptr;
    ASSERT_EQ(ZOK_OpenSession(&session, &record), ZOK_OK);
    EXPECT_EQ(counter.allocations, 2u);
    EXPECT_EQ(counter.largest_size, sizeof(SessionContext));
    EXPECT_EQ(counter.last_size, 392u);
    EXPECT_EQ(ZOK_CloseSession(session), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 0);
}

TEST(ZokOpenSession, FailedSessionAllocationReturns1000042AndLeavesTheOutput) {
    CurvePara record = small_curve().record(HASH_ALG_SM3);
    void *session = kUntouched;
    FailingAlloc counter(1);
    EXPECT_EQ(ZOK_OpenSession(&session, &record), ZOK_ERR_OPEN_SESSION);
    EXPECT_EQ(session, kUntouched);
    EXPECT_EQ(counter.outstanding, 0);
}

TEST(ZokOpenSession, KeptFailedRecordAllocationStillReturnsASession) {
    CurvePara record = small_curve().record(HASH_ALG_SM3);
    void *session = nullptr;
    FailingAlloc counter(2);
    ASSERT_EQ(ZOK_OpenSession(&session, &record), ZOK_OK);
    EXPECT_EQ(counter.allocations, 2u);
    EXPECT_EQ(context(session)->record, nullptr);
    EXPECT_EQ(context(session)->curve_type, 0u);
    EXPECT_EQ(context(session)->byte_len, 0u);
    EXPECT_EQ(ZOK_CloseSession(session), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 0);
}

TEST(ZokOpenSession, KeptUnknownTypeStillReturnsASessionWithoutACurve) {
    for (uint32_t type : {0u, 7u, 0xFFFFFFFFu}) {
        CurvePara record = small_curve().record(HASH_ALG_SM3);
        record.type = type;
        void *session = nullptr;
        ASSERT_EQ(ZOK_OpenSession(&session, &record), ZOK_OK) << type;
        EXPECT_EQ(context(session)->record, nullptr);
        EXPECT_EQ(context(session)->curve_type, 0u);
        EXPECT_EQ(context(session)->byte_len, 0u);
        EXPECT_EQ(ZOK_CloseSession(session), ZOK_OK);
    }
}

TEST(ZokOpenSession, KeptStatusOfTheConfigurationIsLost) {
    CurvePara record = small_curve().record(HASH_ALG_SM3);
    record.Gy[19] ^= 1;
    void *session = nullptr;
    ASSERT_EQ(ZOK_OpenSession(&session, &record), ZOK_OK);
    EXPECT_EQ(context(session)->curve_type, 0u);
    EXPECT_EQ(context(session)->curve_bits, 0u);
    EXPECT_EQ(context(session)->byte_len, 20u);
    EXPECT_EQ(image(*context(session)->record), image(record));
    EXPECT_EQ(ZOK_CloseSession(session), ZOK_OK);
}

}  // namespace zokecc_test::session_open_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Sessions: closing, with and without a device, and what remains allocated.
#include <cstdlib>

#include "tests/sdf/fixtures.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::session_close_test {

TEST(SdfCloseSession, FreesTheSessionAndItsOwnRecord) {
    Device device;
    FailingAlloc counter;
    void *session = open_on(device);
    CurvePara record = small_curve().record(HASH_ALG_SM3);
    ASSERT_EQ(configure(session, record), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 2);
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 0);
}

TEST(SdfCloseSession, ClosesASessionWithoutDevice) {
    CurvePara record = small_curve().record(HASH_ALG_SM3);
    FailingAlloc counter;
    void *session = nullptr;
    ASSERT_EQ(ZOK_OpenSession(&session, &record), ZOK_OK);
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 0);
}

TEST(SdfCloseSession, CountOfZeroStaysZero) {
    Device device;
    void *session = open_on(device);
    device.context()->session_count = 0;
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
    EXPECT_EQ(device.context()->session_count, 0u);
    EXPECT_EQ(device.context()->state, 1u);
}

TEST(SdfCloseSession, LastOfThreeSessionsFreesAClosedDevice) {
    FailingAlloc counter;
    Device device;
    void *sessions[3] = {open_on(device), open_on(device), open_on(device)};
    DeviceContext *record = device.context();
    device.close();
    EXPECT_EQ(SDF_CloseSession(sessions[1]), ZOK_OK);
    EXPECT_EQ(SDF_CloseSession(sessions[0]), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 2);
    EXPECT_EQ(record->state, 2u);
    EXPECT_EQ(record->session_count, 1u);
    EXPECT_EQ(SDF_CloseSession(sessions[2]), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 0);
}

TEST(SdfCloseSession, SessionOfAClosedDeviceStaysUsable) {
    Device device;
    void *session = open_on(device);
    device.close();
    EXPECT_EQ(configure(session, small_curve().record(HASH_ALG_SM3)), ZOK_OK);
    EXPECT_EQ(
        verify_e(session, ZOK_ALG_SM2_SIGN, small_public_key(), small_bytes(456), small_signature(226, 216)),
        ZOK_OK);
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
}

TEST(ZokCloseSession, OpenDeviceKeepsItsCount) {
    FailingAlloc counter;
    Device device;
    DeviceContext *const record = device.context();
    EXPECT_EQ(ZOK_CloseSession(open_on(device)), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 1);
    EXPECT_EQ(record->session_count, 1u);
    device.close();  // does not know that the session is gone
    EXPECT_EQ(counter.outstanding, 1);
    EXPECT_EQ(record->state, 2u);
    std::free(record);
}

TEST(ZokCloseSession, LastSessionFreesAClosedDevice) {
    FailingAlloc counter;
    Device device;
    void *first = open_on(device);
    void *second = open_on(device);
    DeviceContext *record = device.context();
    device.close();
    EXPECT_EQ(ZOK_CloseSession(first), ZOK_OK);
    EXPECT_EQ(record->session_count, 1u);
    EXPECT_EQ(counter.outstanding, 2);
    EXPECT_EQ(ZOK_CloseSession(second), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 0);
}

TEST(ZokCloseSession, FreesTheRecordOfASessionWithADevice) {
    FailingAlloc counter;
    Device device;
    void *session = open_on(device);
    device.close();
    CurvePara record = small_curve().record(HASH_ALG_SM3);
    ASSERT_EQ(configure(session, record), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 3);
    EXPECT_EQ(ZOK_CloseSession(session), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 0);
}

}  // namespace zokecc_test::session_close_test

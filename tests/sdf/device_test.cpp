// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Devices: opening, closing, and the device information record.
#include "tests/sdf/fixtures.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::device_test {

namespace {

void *not_a_session() { return reinterpret_cast<void *>(uintptr_t{1}); }

}  // namespace

TEST(SdfOpenDevice, ReturnsAnOpenDeviceWithoutSessionsAndWithoutRecord) {
    void *handle = nullptr;
    ASSERT_EQ(SDF_OpenDevice(&handle), ZOK_OK);
    ASSERT_NE(handle, nullptr);
    DeviceContext *device = static_cast<DeviceContext *>(handle);
    EXPECT_EQ(device->state, 1u);
    EXPECT_EQ(device->session_count, 0u);
    EXPECT_EQ(device->curve, nullptr);
    EXPECT_EQ(SDF_CloseDevice(handle), ZOK_OK);
}

TEST(SdfOpenDevice, TwoDevicesAreTwoRecords) {
    void *first = nullptr;
    void *second = nullptr;
    ASSERT_EQ(SDF_OpenDevice(&first), ZOK_OK);
    ASSERT_EQ(SDF_OpenDevice(&second), ZOK_OK);
    EXPECT_NE(first, second);
    EXPECT_EQ(SDF_CloseDevice(first), ZOK_OK);
    EXPECT_EQ(static_cast<DeviceContext *>(second)->state, 1u);
    EXPECT_EQ(SDF_CloseDevice(second), ZOK_OK);
}

TEST(SdfOpenDevice, AllocatesOneDeviceRecordWhichClosingFrees) {
    FailingAlloc counter;
    void *handle = nullptr;
    ASSERT_EQ(SDF_OpenDevice(&handle), ZOK_OK);
    EXPECT_EQ(counter.allocations, 1u);
    EXPECT_EQ(counter.last_size, sizeof(DeviceContext));
    EXPECT_EQ(counter.outstanding, 1);
    EXPECT_EQ(SDF_CloseDevice(handle), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 0);
}

TEST(SdfOpenDevice, FailedAllocationReturns100001BAndLeavesTheOutput) {
    void *handle = not_a_session();
    FailingAlloc counter(1);
    EXPECT_EQ(SDF_OpenDevice(&handle), ZOK_ERR_OPEN_DEVICE);
    EXPECT_EQ(handle, not_a_session());
    EXPECT_EQ(counter.outstanding, 0);
}

TEST(SdfOpenDevice, NullOutputReturns1000027AndAllocatesNothing) {
    FailingAlloc counter;
    EXPECT_EQ(SDF_OpenDevice(nullptr), ZOK_ERR_ARGUMENT);
    EXPECT_EQ(counter.allocations, 0u);
}

TEST(SdfCloseDevice, NullDeviceReturns100001D) { EXPECT_EQ(SDF_CloseDevice(nullptr), ZOK_ERR_CLOSE_DEVICE); }

TEST(SdfCloseDevice, StateOtherThanOneReturnsZeroAndFreesNothing) {
    for (uint32_t state : {0u, 2u, 3u, 0xFFFFFFFFu}) {
        DeviceContext device{state, 0, nullptr};
        FailingAlloc counter;
        EXPECT_EQ(SDF_CloseDevice(&device), ZOK_OK) << state;
        EXPECT_EQ(counter.outstanding, 0) << state;
        EXPECT_EQ(device.state, state);
        EXPECT_EQ(device.session_count, 0u);
    }
}

TEST(SdfCloseDevice, OpenSessionsKeepTheRecordInStateTwo) {
    FailingAlloc counter;
    void *device = nullptr;
    void *session = nullptr;
    ASSERT_EQ(SDF_OpenDevice(&device), ZOK_OK);
    ASSERT_EQ(SDF_OpenSession(device, &session), ZOK_OK);
    EXPECT_EQ(SDF_CloseDevice(device), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 2);
    EXPECT_EQ(static_cast<DeviceContext *>(device)->state, 2u);
    EXPECT_EQ(static_cast<DeviceContext *>(device)->session_count, 1u);
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 0);
}

TEST(SdfCloseDevice, SecondCloseOfAReferencedDeviceReturnsZeroAndFreesNothing) {
    FailingAlloc counter;
    void *device = nullptr;
    void *session = nullptr;
    ASSERT_EQ(SDF_OpenDevice(&device), ZOK_OK);
    ASSERT_EQ(SDF_OpenSession(device, &session), ZOK_OK);
    EXPECT_EQ(SDF_CloseDevice(device), ZOK_OK);
    EXPECT_EQ(SDF_CloseDevice(device), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 2);
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 0);
}

TEST(SdfCloseDevice, AfterTheLastSessionFreesAtOnce) {
    FailingAlloc counter;
    void *device = nullptr;
    void *session = nullptr;
    ASSERT_EQ(SDF_OpenDevice(&device), ZOK_OK);
    ASSERT_EQ(SDF_OpenSession(device, &session), ZOK_OK);
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 1);
    EXPECT_EQ(SDF_CloseDevice(device), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 0);
}

TEST(SdfGetDeviceInfo, CopiesTheHundredBytes) {
    ByteString expected = text_bytes("ZOKTECH");
    expected.resize(40, 0);
    for (char c : std::string("ZOK-ECC-T200")) expected.push_back(static_cast<uint8_t>(c));
    expected.resize(56, 0);
    for (char c : std::string("200905170000042")) expected.push_back(static_cast<uint8_t>(c));
    expected.resize(72, 0);
    expected.insert(expected.end(), {1, 0, 0, 0, 1, 0, 0, 0});
    expected.resize(100, 0);

    GuardedRecord<DEVICEINFO> info;
    EXPECT_EQ(SDF_GetDeviceInfo(small_session(), info.get()), ZOK_OK);
    EXPECT_EQ(to_hex(info.bytes()), to_hex(expected));
    EXPECT_TRUE(info.guards_intact());
}

TEST(SdfGetDeviceInfo, EveryCallGivesTheSameBytes) {
    GuardedRecord<DEVICEINFO> first;
    GuardedRecord<DEVICEINFO> second;
    EXPECT_EQ(SDF_GetDeviceInfo(small_session(), first.get()), ZOK_OK);
    std::memset(first->issuer_name, 0xFF, sizeof first->issuer_name);
    EXPECT_EQ(SDF_GetDeviceInfo(small_session(), first.get()), ZOK_OK);
    EXPECT_EQ(SDF_GetDeviceInfo(small_session(), second.get()), ZOK_OK);
    EXPECT_EQ(first.bytes(), second.bytes());
}

TEST(SdfGetDeviceInfo, OnlyTestsTheHandleForNull) {
    GuardedRecord<DEVICEINFO> info;
    EXPECT_EQ(SDF_GetDeviceInfo(not_a_session(), info.get()), ZOK_OK);
    EXPECT_EQ(std::string(reinterpret_cast<char *>(info->device_name)), "ZOK-ECC-T200");
    EXPECT_EQ(info->device_version, 1u);
    EXPECT_EQ(info->standard_version, 1u);
}

TEST(SdfGetDeviceInfo, NullOutputReturns1000027) {
    EXPECT_EQ(SDF_GetDeviceInfo(small_session(), nullptr), ZOK_ERR_ARGUMENT);
}

TEST(SdfGetDeviceInfo, NullSessionReturns1000026AndWritesNothing) {
    GuardedRecord<DEVICEINFO> info;
    EXPECT_EQ(SDF_GetDeviceInfo(nullptr, info.get()), ZOK_ERR_SESSION);
    EXPECT_TRUE(info.unchanged());
}

TEST(SdfGetDeviceInfo, NullSessionWinsOverNullOutput) {
    EXPECT_EQ(SDF_GetDeviceInfo(nullptr, nullptr), ZOK_ERR_SESSION);
}

}  // namespace zokecc_test::device_test

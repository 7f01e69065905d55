// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Devices: opening, closing, and the device information record.
#include "tests/sdf/fixtures.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::device_test {

namespace {

void *not_a_session() { return reinterpret_cast<void *>(uintptr_t{1}); }

}  // namespace

TEST(SdfOpenDevice, ReturnsAnOpenDeviceWithoutSessionsAndWithoutRecord) {
    Device device;
    ASSERT_NE(device.handle(), nullptr);
    EXPECT_EQ(device.context()->state, 1u);
    EXPECT_EQ(device.context()->session_count, 0u);
    EXPECT_EQ(device.context()->curve, nullptr);
}

TEST(SdfOpenDevice, TwoDevicesAreTwoRecords) {
    Device first, second;
    EXPECT_NE(first.handle(), second.handle());
    first.close();
    EXPECT_EQ(second.context()->state, 1u);
}

TEST(SdfOpenDevice, AllocatesOneDeviceRecordWhichClosingFrees) {
    FailingAlloc counter;
    Device device;
    EXPECT_EQ(counter.allocations, 1u);
    EXPECT_EQ(counter.last_size, sizeof(DeviceContext));
    EXPECT_EQ(counter.outstanding, 1);
    device.close();
    EXPECT_EQ(counter.outstanding, 0);
}

TEST(SdfOpenDevice, FailedAllocationReturns100001BAndLeavesTheOutput) {
    void *handle = not_a_session();
    FailingAlloc counter(1);
    EXPECT_EQ(SDF_OpenDevice(&handle), ZOK_ERR_OPEN_DEVICE);
    EXPECT_EQ(handle, not_a_session());
    EXPECT_EQ(counter.outstanding, 0);
}

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

TEST(SdfCloseDevice, OpenSessionsKeepTheRecordInStateTwoAlsoAfterASecondClose) {
    FailingAlloc counter;
    Device device;
    DeviceContext *const record = device.context();
    void *session = open_on(device);
    device.close();
    for (int more : {1, 0}) {
        EXPECT_EQ(counter.outstanding, 2);
        EXPECT_EQ(record->state, 2u);
        EXPECT_EQ(record->session_count, 1u);
        if (more > 0) {
            EXPECT_EQ(SDF_CloseDevice(record), ZOK_OK);
        }
    }
    EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 0);
}

TEST(SdfCloseDevice, AfterTheLastSessionFreesAtOnce) {
    FailingAlloc counter;
    Device device;
    EXPECT_EQ(SDF_CloseSession(open_on(device)), ZOK_OK);
    EXPECT_EQ(counter.outstanding, 1);
    device.close();
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

}  // namespace zokecc_test::device_test

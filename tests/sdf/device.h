// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// A device as an object, for the tests of sessions.
#ifndef ZOKECC_TESTS_SDF_DEVICE_H
#define ZOKECC_TESTS_SDF_DEVICE_H

#include "tests/sdf/fixtures.h"

namespace zokecc_test {

// A device that is closed when the test ends, unless the test did it.
class Device {
public:
    Device() { EXPECT_EQ(SDF_OpenDevice(&handle_), ZOK_OK); }
    ~Device() {
        if (handle_ != nullptr) close();
    }
    Device(const Device &) = delete;
    Device &operator=(const Device &) = delete;

    void close() {
        EXPECT_EQ(SDF_CloseDevice(handle_), ZOK_OK);
        handle_ = nullptr;
    }
    void *handle() { return handle_; }
    DeviceContext *context() { return static_cast<DeviceContext *>(handle_); }

private:
    void *handle_ = nullptr;
};

inline void *open_on(Device &device) {
    void *session = nullptr;
    EXPECT_EQ(SDF_OpenSession(device.handle(), &session), ZOK_OK);
    return session;
}

inline uint32_t configure(void *session, const CurvePara &record) {
    return ZOK_CurveParaCfg(session, record.type, &record);
}

}  // namespace zokecc_test

#endif

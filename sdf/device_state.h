// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The states of a device record.
#ifndef ZOKECC_SDF_DEVICE_STATE_H
#define ZOKECC_SDF_DEVICE_STATE_H

#include <cstdint>

namespace zokecc {

constexpr uint32_t kDeviceOpen = 1;
constexpr uint32_t kDeviceClosed = 2;  // by its owner, while sessions still point to it

}  // namespace zokecc

#endif

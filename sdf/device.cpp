// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Devices: a small record in memory, without any hardware (GM/T 0018).
#include <zokecc/sdf.h>

#include <cstdlib>

#include "ecc/curve.h"

using namespace zokecc;

namespace {

constexpr DEVICEINFO kDeviceInfo = {
    .issuer_name = "ZOKTECH",
    .device_name = "ZOK-ECC-T200",
    .device_serial = "200905170000042",
    .device_version = 1,
    .standard_version = 1,
    .asym_alg_ability = {0, 0},
    .sym_alg_ability = 0,
    .hash_alg_ability = 0,
    .buffer_size = 0,
};
static_assert(sizeof(DEVICEINFO) == 100);

}  // namespace

uint32_t SDF_OpenDevice(void **device_out)
{
    if (device_out == nullptr) return ZOK_ERR_ARGUMENT;
    DeviceContext *device = static_cast<DeviceContext *>(std::calloc(1, sizeof(DeviceContext)));
    if (device == nullptr) return ZOK_ERR_OPEN_DEVICE;
    device->state = kDeviceOpen;
    *device_out = device;
    return ZOK_OK;
}

// A device with open sessions stays in memory, marked as closed, until the last of them is closed.
uint32_t SDF_CloseDevice(void *device)
{
    if (device == nullptr) return ZOK_ERR_CLOSE_DEVICE;
    DeviceContext *d = static_cast<DeviceContext *>(device);
    if (d->state != kDeviceOpen) return ZOK_OK;
    if (d->session_count != 0)
        d->state = kDeviceClosed;
    else
        std::free(d);
    return ZOK_OK;
}

uint32_t SDF_GetDeviceInfo(void *session, DEVICEINFO *info_out)
{
    if (session == nullptr) return ZOK_ERR_SESSION;
    if (info_out == nullptr) return ZOK_ERR_ARGUMENT;
    *info_out = kDeviceInfo;
    return ZOK_OK;
}

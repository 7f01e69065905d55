// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Opening and closing sessions, with and without a device.
#include <zokecc/sdf.h>

#include <cstdlib>

#include "ecc/curve.h"

using namespace zokecc;

namespace {

SessionContext *allocate_session()
{
    return static_cast<SessionContext *>(std::calloc(1, sizeof(SessionContext)));
}

void free_session(SessionContext *session)
{
    if (session->record_is_borrowed == 0) std::free(session->record);
    std::free(session);
}

// One session less; a device that was closed before its sessions is freed with the last of them.
void leave_device(DeviceContext *device)
{
    if (device->session_count > 0) --device->session_count;
    if (device->state == kDeviceClosed && device->session_count == 0) std::free(device);
}

}  // namespace

// KEPT: both opening calls ignore the status of the configuration. If the record is refused they still
// return 0, with a session without a usable curve; callers find out at first use. Held by
// ZokOpenSession.KeptStatusOfTheConfigurationIsLost.

uint32_t SDF_OpenSession(void *device, void **session_out)
{
    if (device == nullptr) return ZOK_ERR_DEVICE;
    if (session_out == nullptr) return ZOK_ERR_ARGUMENT;
    DeviceContext *d = static_cast<DeviceContext *>(device);
    SessionContext *session = allocate_session();
    if (session == nullptr) return ZOK_ERR_OPEN_SESSION;
    session->device = d;
    session->record = d->curve;
    ++d->session_count;
    if (session->record != nullptr) {
        session->record_is_borrowed = 1;
        ZOK_CurveParaCfg(session, session->record->type, session->record);
    }
    *session_out = session;
    return ZOK_OK;
}

uint32_t SDF_CloseSession(void *session)
{
    if (session == nullptr) return ZOK_ERR_CLOSE_SESSION;
    SessionContext *s = static_cast<SessionContext *>(session);
    if (s->device != nullptr) leave_device(s->device);
    free_session(s);
    return ZOK_OK;
}

uint32_t ZOK_OpenSession(void **session_out, const CurvePara *record)
{
    if (session_out == nullptr || record == nullptr) return ZOK_ERR_ARGUMENT;
    SessionContext *session = allocate_session();
    if (session == nullptr) return ZOK_ERR_OPEN_SESSION;
    ZOK_CurveParaCfg(session, record->type, record);
    *session_out = session;
    return ZOK_OK;
}

// Meant for sessions without a device. An open device still counts a session closed this way; only a
// closed device, which callers can no longer use, has its count adjusted.
uint32_t ZOK_CloseSession(void *session)
{
    if (session == nullptr) return ZOK_ERR_CLOSE_SESSION;
    SessionContext *s = static_cast<SessionContext *>(session);
    if (s->device != nullptr && s->device->state == kDeviceClosed) leave_device(s->device);
    free_session(s);
    return ZOK_OK;
}

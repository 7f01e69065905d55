// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Sessions: opening and closing, with a device and without.
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

// One session less; a device closed before its sessions goes with the last of them.
void leave_device(DeviceContext *device)
{
    if (device->session_count > 0) --device->session_count;
    if (device->state == kDeviceClosed && device->session_count == 0) std::free(device);
}

}  // namespace

// KEPT: in both opening calls the status of the configuration is lost. A record that is refused
// leaves a session without a usable curve and the answer 0; callers find out at first use. Held
// by ZokOpenSession.KeptStatusOfTheConfigurationIsLost.

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

// Made for sessions without a device. An open device keeps counting a session closed this way; a
// closed one, which nobody can see any more, is told.
uint32_t ZOK_CloseSession(void *session)
{
    if (session == nullptr) return ZOK_ERR_CLOSE_SESSION;
    SessionContext *s = static_cast<SessionContext *>(session);
    if (s->device != nullptr && s->device->state == kDeviceClosed) leave_device(s->device);
    free_session(s);
    return ZOK_OK;
}

/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/**
 * @file status.h
 * The status codes of sessions in words, for messages and logs.
 */
#ifndef ZOKECC_STATUS_H
#define ZOKECC_STATUS_H

#include <zokecc/conventions.h>

/**
 * Says in English what a status code of an SDF_ or ZOK_ call means.
 *
 * The function is compiled into the program that calls it; the library does not export it. The small integers
 * that the calls of mint.h, ecc.h and schemes.h return are not status codes.
 *
 * @param status  status code
 * @return a constant string without a full stop; for a number that is no status code "unknown status"
 *
 * @par Timing
 *      Depends on the code.
 */
static inline const char *zokecc_status_text(uint32_t status) {
    switch (status) {
    case ZOK_OK:
        return "success";
    case ZOK_ERR_SM3:
        return "the SM3 hash failed";
    case ZOK_ERR_SIGN:
        return "signing failed: the private key is out of range, or the session has no curve";
    case ZOK_ERR_VERIFY:
        return "the signature is not valid, or the session has no curve";
    case ZOK_ERR_CLOSE_SESSION:
        return "closing a session: the handle is null";
    case ZOK_ERR_OPEN_DEVICE:
        return "opening a device: no memory";
    case ZOK_ERR_CLOSE_DEVICE:
        return "closing a device: the handle is null";
    case ZOK_ERR_DEVICE:
        return "opening a session: the device handle is null";
    case ZOK_ERR_SESSION:
        return "the session handle is null";
    case ZOK_ERR_ARGUMENT:
        return "an argument is null or out of range, or the session has no curve";
    case ZOK_ERR_OPEN_SESSION:
        return "opening a session: no memory";
    case ZOK_ERR_INTERNAL:
        return "no memory, no random numbers, a point off the curve, an algorithm that is not served, "
               "or a check value that differs";
    default:
        return "unknown status";
    }
}

#endif

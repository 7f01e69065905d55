/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Curve parameters inside keys: a named curve, or exactly the numbers of one. */
#ifndef ZOKECC_TOOLS_EC_PARAMETERS_H
#define ZOKECC_TOOLS_EC_PARAMETERS_H

#include "der.h"
#include "named_curves.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Reads ECParameters (RFC 5480, SEC 1 annex C). Explicit numbers are accepted only if p, a, b, the base point
 * and the order are all those of one known curve: a key must not bring its own curve. Returns null, or
 * a message. */
const char *read_parameters(der_reader *in, const named_curve **curve);

#ifdef __cplusplus
}
#endif

#endif

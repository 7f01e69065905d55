/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* The curves that the command-line tool knows, by name and by object identifier. */
#ifndef ZOKECC_TOOLS_NAMED_CURVES_H
#define ZOKECC_TOOLS_NAMED_CURVES_H

#include <stddef.h>

#include <zokecc/ecc.h>

#ifdef __cplusplus
extern "C" {
#endif

enum { MAX_COORDINATE = 32, MAX_OID = 9, CURVE_ALIASES = 3 };

typedef struct named_curve {
    const char *name;
    const char *aliases[CURVE_ALIASES]; /* other common names, padded with null */
    uint8_t oid[MAX_OID];               /* content of the OBJECT IDENTIFIER */
    uint8_t oid_size;
    uint8_t size;   /* L: bytes of a coordinate, and of the order */
    uint8_t is_sm2; /* SM2 signatures with SM3 by default */
    const CurvePara *record;
} named_curve;

extern const named_curve named_curves[];
extern const size_t named_curve_count;

/* Null if there is no such curve. Names are not case-sensitive. */
const named_curve *curve_by_name(const char *name);
const named_curve *curve_by_oid(const uint8_t *oid, size_t size);

#ifdef __cplusplus
}
#endif

#endif

/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
#include "named_curves.h"

#include <string.h>
#include <strings.h>

#include <zokecc/curves.h>

/* Of RFC 5480, SEC 2, RFC 5639 and GM/T 0006. */
const named_curve named_curves[] = {
    {"sm2p256v1",
     {"sm2", NULL, NULL},
     {0x2a, 0x81, 0x1c, 0xcf, 0x55, 1, 0x82, 0x2d},
     8,
     32,
     1,
     &zokecc_sm2p256v1},
    {"secp192r1",
     {"P-192", "prime192v1", "p192"},
     {0x2a, 0x86, 0x48, 0xce, 0x3d, 3, 1, 1},
     8,
     24,
     0,
     &zokecc_secp192r1},
    {"secp224r1", {"P-224", "p224", NULL}, {0x2b, 0x81, 4, 0, 33}, 5, 28, 0, &zokecc_secp224r1},
    {"secp256r1",
     {"P-256", "prime256v1", "p256"},
     {0x2a, 0x86, 0x48, 0xce, 0x3d, 3, 1, 7},
     8,
     32,
     0,
     &zokecc_secp256r1},
    {"secp256k1", {NULL, NULL, NULL}, {0x2b, 0x81, 4, 0, 10}, 5, 32, 0, &zokecc_secp256k1},
    {"brainpoolP160r1",
     {NULL, NULL, NULL},
     {0x2b, 0x24, 3, 3, 2, 8, 1, 1, 1},
     9,
     20,
     0,
     &zokecc_brainpoolP160r1},
    {"brainpoolP192r1",
     {NULL, NULL, NULL},
     {0x2b, 0x24, 3, 3, 2, 8, 1, 1, 3},
     9,
     24,
     0,
     &zokecc_brainpoolP192r1},
    {"brainpoolP224r1",
     {NULL, NULL, NULL},
     {0x2b, 0x24, 3, 3, 2, 8, 1, 1, 5},
     9,
     28,
     0,
     &zokecc_brainpoolP224r1},
    {"brainpoolP256r1",
     {NULL, NULL, NULL},
     {0x2b, 0x24, 3, 3, 2, 8, 1, 1, 7},
     9,
     32,
     0,
     &zokecc_brainpoolP256r1},
};
const size_t named_curve_count = sizeof named_curves / sizeof named_curves[0];

static int has_name(const named_curve *curve, const char *name)
{
    if (strcasecmp(curve->name, name) == 0) return 1;
    for (int i = 0; i < CURVE_ALIASES; ++i)
        if (curve->aliases[i] != NULL && strcasecmp(curve->aliases[i], name) == 0) return 1;
    return 0;
}

const named_curve *curve_by_name(const char *name)
{
    for (size_t i = 0; i < named_curve_count; ++i)
        if (has_name(&named_curves[i], name)) return &named_curves[i];
    return NULL;
}

const named_curve *curve_by_oid(const uint8_t *oid, size_t size)
{
    for (size_t i = 0; i < named_curve_count; ++i)
        if (named_curves[i].oid_size == size && memcmp(named_curves[i].oid, oid, size) == 0)
            return &named_curves[i];
    return NULL;
}

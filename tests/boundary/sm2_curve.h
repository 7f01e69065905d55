// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
/* The recommended 256-bit curve of GM/T 0003.5, for the C programs of this folder. */
#ifndef ZOKECC_TESTS_BOUNDARY_SM2_CURVE_H
#define ZOKECC_TESTS_BOUNDARY_SM2_CURVE_H

#include <zokecc/ecc.h>

#include <stdlib.h>
#include <string.h>

#define SM2_P "fffffffeffffffffffffffffffffffffffffffff00000000ffffffffffffffff"
#define SM2_A "fffffffeffffffffffffffffffffffffffffffff00000000fffffffffffffffc"
#define SM2_B "28e9fa9e9d9f5e344d5a9e4bcf6509a7f39789f515ab8f92ddbcbd414d940e93"
#define SM2_GX "32c4ae2c1f1981195f9904466a39c9948fe30bbff2660be1715a4589334c74c7"
#define SM2_GY "bc3736a2f4f6779c59bdcee36b692153d0a9877cc62a474002df32e52139f0a0"
#define SM2_N "fffffffeffffffffffffffffffffffff7203df6b21c6052b53bbf40939d54123"

/* Twice the base point. */
#define SM2_2GX "56cefd60d7c87c000d58ef57fa73ba4d9c0dfa08c08a7331495c2e1da3f2bd52"
#define SM2_2GY "31b7e7e6cc8189f668535ce0f8eaf1bd6de84c182f6c8e716f780d3a970a23c3"

static inline void put_hex(uint8_t *bytes, const char *digits) {
    char pair[3] = {0, 0, 0};
    for (; *digits != '\0'; digits += 2) {
        memcpy(pair, digits, 2);
        *bytes++ = (uint8_t)strtoul(pair, NULL, 16);
    }
}

static inline CurvePara sm2_curve(uint32_t hash_selector) {
    CurvePara curve;
    memset(&curve, 0, sizeof curve);
    put_hex(curve.p, SM2_P);
    put_hex(curve.a, SM2_A);
    put_hex(curve.b, SM2_B);
    put_hex(curve.Gx, SM2_GX);
    put_hex(curve.Gy, SM2_GY);
    put_hex(curve.n, SM2_N);
    curve.type = 4;
    curve.hash_selector = hash_selector;
    return curve;
}

/* The same for Curve_Init, where 256 bits are type 1. */
static inline ecc_curve_bytes sm2_process_curve(void) {
    ecc_curve_bytes curve;
    memset(&curve, 0, sizeof curve);
    put_hex(curve.p, SM2_P);
    put_hex(curve.a, SM2_A);
    put_hex(curve.b, SM2_B);
    put_hex(curve.Gx, SM2_GX);
    put_hex(curve.Gy, SM2_GY);
    put_hex(curve.n, SM2_N);
    curve.type = 1;
    return curve;
}

#endif

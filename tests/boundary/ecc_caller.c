/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Curves, points and their byte strings, called from C through the shared library. */
#include <zokecc/ecc.h>

#include "check.h"
#include "sm2_curve.h"

static mint p, a, b;
static ecc_point G;

static void read_number(const char *digits, mint *value) {
    uint8_t bytes[32];
    put_hex(bytes, digits);
    CHECK(octetstring_to_mint(bytes, sizeof bytes, value) == 0);
}

static int is_twice_G(const ecc_point *point) {
    uint8_t x[32], y[32];
    uint32_t size = 0;
    if (point->infinity != 0) return 0;
    mint_to_fixedlen_os(&point->x, 32, 32, &size, x);
    mint_to_fixedlen_os(&point->y, 32, 32, &size, y);
    return equals_hex(x, SM2_2GX) && equals_hex(y, SM2_2GY);
}

static void check_affine(void) {
    ecc_point twice;
    memset(&twice, 0, sizeof twice);
    CHECK(ecc_test_point(&G, &a, &b, &p) == 0);
    ecc_point_double(&G, &a, &b, &p, &twice);
    CHECK(is_twice_G(&twice));
    twice.y.words[0] ^= 1; /* off the curve */
    CHECK(ecc_test_point(&twice, &a, &b, &p) != 0);
}

static void check_jacobian(void) {
    ecc_jac_point sum;
    ecc_point affine;
    memset(&affine, 0, sizeof affine);
    ecc_affine_jacobin(&sum, &G);
    ecc_jac_point_double(&sum, &a, &b, &p, &sum);
    ecc_jacobin_affine(&affine, &p, &sum);
    CHECK(is_twice_G(&affine));
}

static void check_multiples(void) {
    static ecc_point table[PRECOMP_TABLE_ENTRIES];
    ecc_point by_table, by_digits;
    mint two;
    const uint8_t byte = 2;
    octetstring_to_mint(&byte, 1, &two);
    memset(&by_table, 0, sizeof by_table);
    memset(&by_digits, 0, sizeof by_digits);

    ecc_precomputation_point_1(&G, &a, &b, &p, table);
    ecc_fix_point_mul_1(&two, &G, &a, &b, &p, &by_table, table);
    CHECK(is_twice_G(&by_table));
    ecc_unknown_point_mul(&two, &G, &a, &b, &p, &by_digits);
    CHECK(is_twice_G(&by_digits));
}

static void check_session(void) {
    const CurvePara curve = sm2_curve(0);
    CHECK(ZOK_CurveParaCfg(NULL, curve.type, &curve) == ZOK_ERR_SESSION);
}

static void check_root(void) {
    mint y;
    memset(&y, 0, sizeof y);
    CHECK(ecc_point_unpress(&y, &G.x, &a, &b, &p, 0) == 0); /* the last digit of SM2_GY is even */
    CHECK(mint_compare(&y, &G.y) == 0);
}

/* The base point in all three forms and back, on the process-wide curve. */
static void check_encodings(void) {
    static const uint8_t prefixes[3] = {4, 2, 6};
    const ecc_curve_bytes curve = sm2_process_curve();
    ecc_point_bytes base, back;
    uint8_t bytes[65];

    memset(&base, 0, sizeof base);
    put_hex(base.x, SM2_GX);
    put_hex(base.y, SM2_GY);
    base.length = 32;
    CHECK(Curve_Init(&curve) == 0);
    for (uint32_t form = 0; form < 3; ++form) {
        const int32_t size = form == 1 ? 33 : 65;
        memset(&back, 0, sizeof back);
        CHECK(ecc_PointToByte(&base, form, bytes, size - 1) == -1);
        CHECK(ecc_PointToByte(&base, form, bytes, size) == size);
        CHECK(bytes[0] == prefixes[form] && equals_hex(bytes + 1, SM2_GX));
        CHECK(ecc_ByteToPoint(bytes, (uint32_t)size, &back) == 0);
        CHECK(memcmp(&back, &base, sizeof back) == 0);
    }
    bytes[64] ^= 1; /* off the curve */
    CHECK(ecc_ByteToPoint(bytes, sizeof bytes, &back) == -1);
    CHECK(Curve_Exit() == 0);
}

int main(void) {
    read_number(SM2_P, &p);
    read_number(SM2_A, &a);
    read_number(SM2_B, &b);
    read_number(SM2_GX, &G.x);
    read_number(SM2_GY, &G.y);
    check_affine();
    check_jacobian();
    check_multiples();
    check_session();
    check_root();
    check_encodings();
    return check_result();
}

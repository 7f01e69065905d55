/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
#include "selftest.h"

#include <string.h>

/* P-256: 2 G and 3 G as in the "nisttv" list of multiples of NIST's curves. */
#define P256_2GX "7cf27b188d034f7e8a52380304b51ac3c08969e277f21b35a60b48fc47669978"
#define P256_2GY "07775510db8ed040293d9ac69f7430dbba7dade63ce982299e04b79d227873d1"
#define P256_3GX "5ecbe4d1a6330a44c8f7ef951d4bf165e6c6b721efada985fb41661bc6e7fd6c"
#define P256_3GY "8734640c4998ff7e374b06ce1a64a2ecd82ab036384fb83d9a79b127a27d5032"

/* sm2p256v1: MULTIPLE = FACTOR * POINT, computed with OpenSSL and with Python. */
#define FACTOR "01e942a824590ed223b6ea139027a25f0de3008d0fa80d2b0754423b8d36acd0"
#define POINT_X "e3ffb9635584b501fc90746a4510915602007772cab1f6b0e9314a57b5e2cdf5"
#define POINT_Y "395947b955b944e93cca525ee4ae9dfde51c3e568c05f3df8363b7dd869465d6"
#define MULTIPLE_X "71a21cefee34710b4c64795c945466c1a7d04b9f483423a41356f0cb17c6543e"
#define MULTIPLE_Y "4b5a850888d2e3cb36dc619e14bb44116653876ffada67cccd9cdbbbcfa375ae"

/* The numbers of a curve in the form that the point calls take. */
typedef struct curve {
    mint p, a, b;
    ecc_point G;
} curve;

static mint field(const uint8_t *bytes)
{
    mint value;
    octetstring_to_mint(bytes, L, &value);
    return value;
}

static curve curve_of(const ecc_curve_bytes *c)
{
    curve result = {field(c->p), field(c->a), field(c->b), {0, field(c->Gx), field(c->Gy)}};
    return result;
}

static int is_point(const ecc_point *P, const char *x, const char *y)
{
    const ecc_point expected = point(x, y);
    return is(P->infinity, 0) && is_number(&P->x, &expected.x) && is_number(&P->y, &expected.y);
}

static int curve_checks(void)
{
    ecc_curve_bytes off_curve = sm2_of_process;
    CurvePara wrong_point = sm2_of_session;
    CurvePara wrong_order = p256_of_session;
    off_curve.Gy[L - 1] ^= 1;
    wrong_point.Gy[L - 1] ^= 1;
    wrong_order.n[L - 1] ^= 2;
    REQUIRE(is(Curve_Init(&off_curve), -1) && is(Curve_Init(NULL), -1));
    REQUIRE(is(Curve_Init(&p256_of_process), 0) && is(Curve_Init(&sm2_of_process), 0));
    REQUIRE(is(ZOK_CurveVerify(4, &sm2_of_session), ZOK_OK));
    REQUIRE(is(ZOK_CurveVerify(4, &p256_of_session), ZOK_OK));
    REQUIRE(is(ZOK_CurveVerify(4, &wrong_point), ZOK_ERR_INTERNAL));
    REQUIRE(is(ZOK_CurveVerify(4, &wrong_order), ZOK_ERR_INTERNAL));
    return 0;
}

/* G, 2 G and 3 G in both coordinate systems. */
static int sums_of_points(void)
{
    const curve c = curve_of(&p256_of_process);
    ecc_point sum;
    ecc_jac_point jacobian;
    ecc_jac_point doubled;
    REQUIRE(is(ecc_test_point(&c.G, &c.a, &c.b, &c.p), 0));
    ecc_point_double(&c.G, &c.a, &c.b, &c.p, &sum);
    REQUIRE(is_point(&sum, P256_2GX, P256_2GY));
    ecc_point_add(&sum, &c.G, &c.a, &c.b, &c.p, &sum);
    REQUIRE(is_point(&sum, P256_3GX, P256_3GY));

    ecc_affine_jacobin(&jacobian, &c.G);
    ecc_jac_point_double(&jacobian, &c.a, &c.b, &c.p, &doubled);
    ecc_jac_point_add(&doubled, &c.G, &c.a, &c.b, &c.p, &jacobian);
    ecc_jacobin_affine(&sum, &c.p, &jacobian);
    REQUIRE(is_point(&sum, P256_3GX, P256_3GY));
    ecc_invert_point(&c.p, &doubled);
    ecc_jac_point_add_1(&jacobian, &doubled, &c.a, &c.b, &c.p, &jacobian);
    ecc_jacobin_affine(&sum, &c.p, &jacobian);
    REQUIRE(is_number(&sum.x, &c.G.x) && is_number(&sum.y, &c.G.y));
    return 0;
}

/* The public key and C1 of the standard's example, with both kinds of table. */
static int products_of_base_point(void)
{
    static ecc_point table[PRECOMP_TABLE_ENTRIES];
    const curve c = curve_of(&sm2_of_process);
    const mint d = number(STANDARD_D);
    const mint k = number(SIGN_K);
    ecc_point product;
    REQUIRE(is(Curve_Init(&sm2_of_process), 0));
    ecc_fix_point_mul(&d, &c.G, &c.a, &c.b, &c.p, &product);
    REQUIRE(is_point(&product, STANDARD_PX, STANDARD_PY));
    REQUIRE(is(ecc_precomputation_point_1(&c.G, &c.a, &c.b, &c.p, table), 0));
    ecc_fix_point_mul_1(&k, &c.G, &c.a, &c.b, &c.p, &product, table);
    REQUIRE(is_point(&product, C1_X, C1_Y));
    REQUIRE(is(ecc_unknown_point_mul(&k, &c.G, &c.a, &c.b, &c.p, &product), 1));
    REQUIRE(is_point(&product, C1_X, C1_Y));
    return 0;
}

static int products_of_other_points(void)
{
    const curve c = curve_of(&sm2_of_process);
    const mint k = number(FACTOR);
    const ecc_point P = point(POINT_X, POINT_Y);
    ecc_point product;
    REQUIRE(is(ecc_unknown_point_mul(&k, &P, &c.a, &c.b, &c.p, &product), 1));
    REQUIRE(is_point(&product, MULTIPLE_X, MULTIPLE_Y));
    REQUIRE(is(ecc_point_mul(&k, &P, &c.G, &c.a, &c.b, &c.p, &product), 0));
    REQUIRE(is_point(&product, MULTIPLE_X, MULTIPLE_Y));
    return 0;
}

static int points_as_bytes(void)
{
    const ecc_point_bytes P = point_bytes(STANDARD_PX, STANDARD_PY);
    uint8_t out[1 + 2 * L];
    ecc_point_bytes back;
    REQUIRE(is(Curve_Init(&sm2_of_process), 0));
    REQUIRE(is(ecc_PointToByte(&P, 0, out, sizeof out), 1 + 2 * L) &&
            is_hex(out, "04" STANDARD_PX STANDARD_PY));
    REQUIRE(is(ecc_ByteToPoint(out, sizeof out, &back), 0) && is(back.length, L));
    out[2 * L] ^= 1;
    REQUIRE(is(ecc_ByteToPoint(out, sizeof out, &back), -1)); /* not on the curve */
    REQUIRE(is(ecc_PointToByte(&P, 1, out, 1 + L), 1 + L) && is_hex(out, "03" STANDARD_PX));
    memset(&back, 0, sizeof back);
    REQUIRE(is(ecc_ByteToPoint(out, 1 + L, &back), 0) && is_hex(back.y, STANDARD_PY));
    return 0;
}

const selftest_case ecc_cases[] = {
    {"curve checks", curve_checks},
    {"sums of points", sums_of_points},
    {"products of the base point", products_of_base_point},
    {"products of other points", products_of_other_points},
    {"points as bytes", points_as_bytes},
    {NULL, NULL},
};

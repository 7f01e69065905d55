/* Curves and points, called from C through the shared library. */
#include <zokecc/ecc.h>

#include "check.h"
#include "sm2_curve.h"

/* Twice the base point. */
#define SM2_2GX "56cefd60d7c87c000d58ef57fa73ba4d9c0dfa08c08a7331495c2e1da3f2bd52"
#define SM2_2GY "31b7e7e6cc8189f668535ce0f8eaf1bd6de84c182f6c8e716f780d3a970a23c3"

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
    return check_result();
}

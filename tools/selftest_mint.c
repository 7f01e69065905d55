/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
#include "selftest.h"

/* The field and the order of sm2p256v1, GM/T 0003.5. */
#define SM2_P "fffffffeffffffffffffffffffffffffffffffff00000000ffffffffffffffff"
#define SM2_A "fffffffeffffffffffffffffffffffffffffffff00000000fffffffffffffffc"
#define SM2_B "28e9fa9e9d9f5e344d5a9e4bcf6509a7f39789f515ab8f92ddbcbd414d940e93"
#define SM2_N "fffffffeffffffffffffffffffffffff7203df6b21c6052b53bbf40939d54123"

/* The field of secp224r1, which is 1 modulo 8, and the y of its base point, FIPS 186-4 D.1.2.2. */
#define P224_P "ffffffffffffffffffffffffffffffff000000000000000000000001"
#define P224_GY "bd376388b5f723fb4c22dfe6cd4375a05a07476444d5819985007e34"

static int same(const mint *value, const char *digits)
{
    const mint expected = number(digits);
    return is_number(value, &expected);
}

/* FFFFFFFF + 1, and back. */
static int carry_and_borrow(void)
{
    mint ones = number("ffffffff");
    mint one = number("01");
    mint out;
    REQUIRE(is(mint_add(&ones, &one, &out), 0) && same(&out, "0100000000"));
    REQUIRE(is(mint_sub(&one, &out, &out), 1) && same(&out, "ffffffff"));
    REQUIRE(is(mint_left_move(&out, 36), 0) && same(&out, "0ffffffff000000000"));
    REQUIRE(is(get_mint_bit_len(&out), 68) && is(mint_bit_set(&out, 36), 1) && is(mint_bit_set(&out, 35), 0));
    REQUIRE(is(mint_right_move(&out, 35), 0) && same(&out, "01fffffffe"));
    return 0;
}

/* d * k of the standard's signature, computed with Python's integers. */
static int product_and_quotient(void)
{
    const mint d = number(STANDARD_D);
    const mint k = number(SIGN_K);
    const mint one = number("01");
    mint product;
    mint quotient;
    mint remainder;
    REQUIRE(is(mint_mul(&d, &k, &product), 1));
    REQUIRE(same(&product, "13f1da7e74d7e96d4d7388e0e7a350d37ebf5af8aba2a3db10b48583452cd227"
                           "d2acc821c778ae36aea223eeb91de6f099ee76fa243fadb24c9709f941db9cb8"));
    mint dividend = product;
    mint increment = one;
    mint_add(&dividend, &increment, &dividend);
    REQUIRE(is(mint_div(&dividend, &k, &quotient, &remainder), 1));
    REQUIRE(same(&quotient, STANDARD_D) && is_number(&remainder, &one));
    REQUIRE(is(mint_mod(&dividend, &d, &remainder), 1) && is_number(&remainder, &one));
    return 0;
}

/* s = (k - r d) / (1 + d) mod n, with the numbers of the standard's signature. */
static int modular_arithmetic(void)
{
    const mint n = number(SM2_N);
    const mint r = number(SIGN_R);
    const mint k = number(SIGN_K);
    mint d = number(STANDARD_D);
    mint one = number("01");
    mint s;
    mint divisor;
    mint inverse;
    REQUIRE(is(mint_mod_mul(&r, &d, &n, &s), 0) && is(mint_mod_sub(&k, &s, &n, &s), 0));
    REQUIRE(is(mint_mod_add(&d, &one, &n, &divisor), 0) && is(mint_EEA_algo(&divisor, &n, &inverse), 0));
    REQUIRE(is(mint_mod_mul(&s, &inverse, &n, &s), 0) && same(&s, SIGN_S));
    REQUIRE(is(mint_mod_mul(&divisor, &inverse, &n, &s), 0) && same(&s, "01"));
    return 0;
}

/* y of the standard's public key from its x: by square root, and the same by a power. */
static int square_root(void)
{
    const mint p = number(SM2_P);
    const mint x = number(STANDARD_PX);
    mint a = number(SM2_A);
    mint b = number(SM2_B);
    mint exponent = p;
    mint one = number("01");
    mint right;
    mint root;
    mint power;
    mint_mod_mul(&x, &x, &p, &right);
    mint_mod_add(&right, &a, &p, &right);
    mint_mod_mul(&right, &x, &p, &right);
    mint_mod_add(&right, &b, &p, &right); /* (x^2 + a) x + b */
    REQUIRE(is(mint_sqrt(&right, &p, &root), 1));
    mint_add(&exponent, &one, &exponent);
    mint_right_move(&exponent, 2); /* (p + 1) / 4 */
    REQUIRE(is(mint_exp(&right, &exponent, &p, &power), 0) && is_number(&power, &root));
    if (!same(&root, STANDARD_PY)) mint_sub(&p, &root, &root);
    REQUIRE(same(&root, STANDARD_PY));
    return 0;
}

/* The other method, which draws random numbers if none of the first twenty candidates is suitable. */
static int square_root_one_mod_eight(void)
{
    const mint p = number(P224_P);
    const mint y = number(P224_GY);
    mint square;
    mint root;
    REQUIRE(is(mint_mod_mul(&y, &y, &p, &square), 0) && is(mint_sqrt(&square, &p, &root), 1));
    if (mint_compare(&root, &y) != 0) mint_sub(&p, &root, &root);
    REQUIRE(same(&root, P224_GY));
    return 0;
}

static int bytes_and_numbers(void)
{
    const mint value = number("000102030405");
    uint8_t out[8];
    uint32_t out_len = 0;
    REQUIRE(is(value.len, 2) && is(value.words[0], 0x02030405u) && is(value.words[1], 0x01u));
    REQUIRE(is(mint_to_octetstring(&value, sizeof out, out, &out_len), 0) && is(out_len, 5));
    REQUIRE(is_hex(out, "0102030405"));
    REQUIRE(is(mint_to_octetstring(&value, 4, out, &out_len), 1));
    REQUIRE(is(mint_to_fixedlen_os(&value, 8, 8, &out_len, out), 0) && is_hex(out, "0000000102030405"));
    return 0;
}

/* Two results that differ from the textbook and are kept: see docs/compatibility.md. */
static int kept_results(void)
{
    const mint greater = number("000000010000000500000001");
    const mint smaller = number("0000000500000002");
    const mint two = number("02");
    const mint n = number(SM2_N);
    mint out;
    REQUIRE(is(mint_sub(&greater, &smaller, &out), 0) && same(&out, "fffffffeffffffff"));
    REQUIRE(is(mint_EEA_algo(&two, &n, &out), 0));
    REQUIRE(same(&out, "7fffffff7ffffffffffffffefffffffeb901efb590e30295a9ddfa049ceaa092"));
    return 0;
}

const selftest_case mint_cases[] = {
    {"mint bytes", bytes_and_numbers},
    {"mint add, subtract, shift", carry_and_borrow},
    {"mint multiply, divide", product_and_quotient},
    {"mint modular arithmetic, inverse", modular_arithmetic},
    {"mint power, square root", square_root},
    {"mint square root, p = 1 (mod 8)", square_root_one_mod_eight},
    {"mint kept results", kept_results},
    {NULL, NULL},
};

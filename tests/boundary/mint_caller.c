/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Integers, called from C through the shared library. */
#include <zokecc/mint.h>

#include "check.h"

static mint number(uint32_t high, uint32_t low) {
    uint8_t bytes[8];
    mint value;
    for (int i = 0; i < 4; ++i) {
        bytes[i] = (uint8_t)(high >> (24 - 8 * i));
        bytes[4 + i] = (uint8_t)(low >> (24 - 8 * i));
    }
    CHECK(octetstring_to_mint(bytes, sizeof bytes, &value) == 0);
    return value;
}

static void check_product(void) {
    mint a = number(0x01234567, 0x89abcdef), b = number(0xfedcba98, 0x76543210), product, sum;
    uint8_t bytes[16];
    uint32_t size = 0;

    mint_mul(&a, &b, &product);
    CHECK(product.len == 4);
    CHECK(mint_to_fixedlen_os(&product, sizeof bytes, sizeof bytes, &size, bytes) == 0 &&
          size == sizeof bytes);
    CHECK(equals_hex(bytes, "0121fa00ad77d7422236d88fe5618cf0"));

    mint_add(&a, &b, &sum);
    CHECK(sum.len == 2 && sum.words[0] == 0xffffffff && sum.words[1] == 0xffffffff);
    CHECK(get_mint_bit_len(&sum) == 64);
}

static void check_modular(void) {
    mint p = number(0x0de0b6b3, 0xa7640009); /* 10^18 + 9, a prime */
    mint three = number(0, 3), one = number(0, 1), exponent, power, inverse, product;

    mint_sub(&p, &one, &exponent);
    mint_exp(&three, &exponent, &p, &power); /* Fermat: 3^(p-1) = 1 */
    CHECK(mint_compare(&power, &one) == 0);

    mint_EEA_algo(&three, &p, &inverse);
    mint_mod_mul(&three, &inverse, &p, &product);
    CHECK(mint_compare(&product, &one) == 0);
}

int main(void) {
    check_product();
    check_modular();
    return check_result();
}

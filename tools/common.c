/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
#include "common.h"

#include <string.h>

const CurvePara sm2_of_session = {ZOKECC_SM2P256V1_NUMBERS, 4, HASH_ALG_SM3};
const CurvePara p256_of_session = {ZOKECC_SECP256R1_NUMBERS, 4, HASH_ALG_SHA256};
const ecc_curve_bytes sm2_of_process = {ZOKECC_SM2P256V1_NUMBERS, 1};
const ecc_curve_bytes p256_of_process = {ZOKECC_SECP256R1_NUMBERS, 1};

static unsigned digit_value(char digit) { return (unsigned)(digit <= '9' ? digit - '0' : digit - 'a' + 10); }

static uint8_t byte_value(const char *pair)
{
    return (uint8_t)(16 * digit_value(pair[0]) + digit_value(pair[1]));
}

uint32_t from_hex(const char *digits, uint8_t *out)
{
    uint32_t count = 0;
    for (; digits[0] != '\0' && digits[1] != '\0'; digits += 2) out[count++] = byte_value(digits);
    return count;
}

mint number(const char *digits)
{
    uint8_t bytes[4 * MINT_WORDS];
    mint value;
    octetstring_to_mint(bytes, from_hex(digits, bytes), &value);
    return value;
}

ecc_point point(const char *x, const char *y)
{
    ecc_point result = {0, number(x), number(y)};
    return result;
}

ECCrefPublicKey public_key(const char *x, const char *y)
{
    ECCrefPublicKey key;
    memset(&key, 0, sizeof key);
    key.bits = 8 * L;
    from_hex(x, key.x);
    from_hex(y, key.y);
    return key;
}

ECCrefPrivateKey private_key(const char *d)
{
    ECCrefPrivateKey key;
    memset(&key, 0, sizeof key);
    key.bits = 8 * L;
    from_hex(d, key.K);
    return key;
}

ecc_point_bytes point_bytes(const char *x, const char *y)
{
    ecc_point_bytes record;
    memset(&record, 0, sizeof record);
    record.length = L;
    from_hex(x, record.x);
    from_hex(y, record.y);
    return record;
}

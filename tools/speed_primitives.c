/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Numbers, hashes and points. */
#include "speed.h"

#include <string.h>

/* ---- Numbers of 256 bits, modulo the field of sm2p256v1 ------------------------------------------ */

static mint p, a, b, x, out;

int prepare_numbers(void)
{
    octetstring_to_mint(sm2_of_process.p, L, &p);
    octetstring_to_mint(sm2_of_process.a, L, &a);
    octetstring_to_mint(sm2_of_process.b, L, &b);
    octetstring_to_mint(sm2_of_process.Gx, L, &x);
    return p.len == 8 && x.len == 8;
}

static int modular_sum(void) { return mint_mod_add(&x, &b, &p, &out) == 0; }
static int modular_product(void) { return mint_mod_mul(&x, &b, &p, &out) == 0; }
static int modular_inverse(void) { return mint_EEA_algo(&x, &p, &out) == 0; }
static int plain_product(void) { return mint_mul(&x, &b, &out) == 1; }

/* b is x^3 + a x + b for x = 0, and it is a square. */
static int square_root(void) { return mint_sqrt(&b, &p, &out) == 1; }

const speed_operation number_operations[] = {
    {"mint multiply", plain_product},           {"mint modular add", modular_sum},
    {"mint modular multiply", modular_product}, {"mint modular inverse", modular_inverse},
    {"mint modular square root", square_root},  {NULL, NULL},
};

/* ---- Hashes ----------------------------------------------------------------------------------------- */

static uint8_t text[1024];
static uint8_t digest[DIGEST_BYTES];

int prepare_hashes(void)
{
    memset(text, 0x5a, sizeof text);
    return 1;
}

static int sha256(void) { return mhash_sha256(text, sizeof text, digest) == 0; }

static int sm3(void)
{
    const sm3_msg message = {text, 0, sizeof text};
    return sm3_hash(&message, digest) == 0;
}

static int hmac_sha256(void) { return mhmac_sha256(text, sizeof text, text, 32, digest, 32) == 0; }

/* The session is only tested for null. */
static int hmac_sm3(void) { return ZOK_HMAC_SM3(text, text, sizeof text, text, 32, digest, 32) == ZOK_OK; }

static int random_bytes(void) { return gen_random(digest, sizeof digest) == 0; }

const speed_operation hash_operations[] = {
    {"sha-256, 1024 bytes", sha256},          {"sm3, 1024 bytes", sm3},
    {"hmac-sha256, 1024 bytes", hmac_sha256}, {"hmac-sm3, 1024 bytes", hmac_sm3},
    {"random, 32 bytes", random_bytes},       {NULL, NULL},
};

/* ---- Points of sm2p256v1 ------------------------------------------------------------------------------ */

static mint k;
static ecc_point G, P, product;
static ecc_point table[PRECOMP_TABLE_ENTRIES];
static uint8_t compressed[1 + L];

int prepare_points(void)
{
    ecc_point_bytes Q;
    if (!prepare_numbers() || Curve_Init(&sm2_of_process) != 0) return 0;
    octetstring_to_mint(sm2_of_process.Gx, L, &G.x);
    octetstring_to_mint(sm2_of_process.Gy, L, &G.y);
    octetstring_to_mint(sm2_of_process.Gy, L, &k); /* any number of 256 bits */
    ecc_point_double(&G, &a, &b, &p, &P);
    memset(&Q, 0, sizeof Q);
    memcpy(Q.x, sm2_of_process.Gx, L);
    memcpy(Q.y, sm2_of_process.Gy, L);
    Q.length = L;
    return ecc_PointToByte(&Q, 1, compressed, sizeof compressed) == 1 + L;
}

static int sum_of_points(void) { return ecc_point_add(&G, &P, &a, &b, &p, &product) == 0; }
static int base_product(void) { return ecc_fix_point_mul(&k, &G, &a, &b, &p, &product) == 0; }
static int other_product(void) { return ecc_unknown_point_mul(&k, &P, &a, &b, &p, &product) == 1; }
static int whole_table(void) { return ecc_precomputation_point_1(&G, &a, &b, &p, table) == 0; }

static int decompress(void)
{
    ecc_point_bytes Q;
    return ecc_ByteToPoint(compressed, sizeof compressed, &Q) == 0;
}

const speed_operation point_operations[] = {
    {"affine sum of points", sum_of_points},     {"product of the base point", base_product},
    {"product of another point", other_product}, {"table of a base point", whole_table},
    {"decompress a point", decompress},          {NULL, NULL},
};

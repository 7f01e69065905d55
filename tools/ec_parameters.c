/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
#include "ec_parameters.h"

#include <string.h>

static const uint8_t prime_field[] = {0x2a, 0x86, 0x48, 0xce, 0x3d, 1, 1};

static const char unknown[] = "the key's curve is not one of those in `zokecc help curves`";
static const char damaged[] = "the key's curve parameters are damaged";

/* Compares big-endian bytes; leading zero bytes may be missing, as some writers omit them. */
static int is_number(const der_reader *value, const uint8_t *number, size_t size)
{
    size_t zeros = 0;
    if (value->left == 0 || value->left > size) return 0;
    while (zeros < size - value->left && number[zeros] == 0) ++zeros;
    return zeros == size - value->left && memcmp(number + zeros, value->at, value->left) == 0;
}

/* The base point, compressed or not. */
static int is_base(const der_reader *point, const named_curve *curve)
{
    const CurvePara *r = curve->record;
    const size_t size = curve->size;
    if (point->left < 1 + size || memcmp(point->at + 1, r->Gx, size) != 0) return 0;
    const uint8_t form = point->at[0];
    const uint8_t parity = r->Gy[size - 1] & 1;
    if (point->left == 1 + size) return form == (2 | parity);
    if (point->left != 1 + 2 * size || memcmp(point->at + 1 + size, r->Gy, size) != 0) return 0;
    return form == 4 || form == (6 | parity);
}

typedef struct explicit_curve {
    uint8_t p[MAX_COORDINATE], n[MAX_COORDINATE];
    der_reader a, b, base;
} explicit_curve;

static int read_explicit(der_reader *in, explicit_curve *out)
{
    der_reader field, type, curve, seed;
    uint8_t version = 0, cofactor = 1;
    if (!der_read_uint(in, &version, 1) || version < 1 || version > 3) return 0;
    if (!der_read(in, DER_SEQUENCE, &field) || !der_read(&field, DER_OID, &type)) return 0;
    if (!der_equals(&type, prime_field, sizeof prime_field)) return 0;
    if (!der_read_uint(&field, out->p, sizeof out->p) || field.left != 0) return 0;
    if (!der_read(in, DER_SEQUENCE, &curve) || !der_read(&curve, DER_OCTET_STRING, &out->a)) return 0;
    if (!der_read(&curve, DER_OCTET_STRING, &out->b)) return 0;
    (void)der_read_bits(&curve, &seed);
    if (curve.left != 0 || !der_read(in, DER_OCTET_STRING, &out->base)) return 0;
    if (!der_read_uint(in, out->n, sizeof out->n)) return 0;
    if (in->left != 0 && (!der_read_uint(in, &cofactor, 1) || in->left != 0)) return 0;
    return cofactor == 1; /* as for every curve here */
}

static int is_curve(const explicit_curve *e, const named_curve *curve)
{
    static const uint8_t zeros[MAX_COORDINATE];
    const CurvePara *r = curve->record;
    const size_t size = curve->size;
    const size_t before = MAX_COORDINATE - size;
    return memcmp(e->p, zeros, before) == 0 && memcmp(e->p + before, r->p, size) == 0 &&
           memcmp(e->n, zeros, before) == 0 && memcmp(e->n + before, r->n, size) == 0 &&
           is_number(&e->a, r->a, size) && is_number(&e->b, r->b, size) && is_base(&e->base, curve);
}

const char *read_parameters(der_reader *in, const named_curve **curve)
{
    der_reader content;
    explicit_curve e;
    *curve = NULL;
    if (der_read(in, DER_OID, &content)) {
        *curve = curve_by_oid(content.at, content.left);
        return *curve == NULL ? unknown : NULL;
    }
    if (!der_read(in, DER_SEQUENCE, &content)) return damaged;
    if (!read_explicit(&content, &e)) return unknown;
    for (size_t i = 0; i < named_curve_count; ++i)
        if (is_curve(&e, &named_curves[i])) *curve = &named_curves[i];
    return *curve == NULL ? unknown : NULL;
}

/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
#include "key_math.h"

#include <stdlib.h>
#include <string.h>

enum { ON_CURVE = 0 };

typedef struct curve_numbers {
    mint p, a, b, n;
} curve_numbers;

static void load_curve(const named_curve *curve, curve_numbers *out)
{
    const CurvePara *r = curve->record;
    octetstring_to_mint(r->p, curve->size, &out->p);
    octetstring_to_mint(r->a, curve->size, &out->a);
    octetstring_to_mint(r->b, curve->size, &out->b);
    octetstring_to_mint(r->n, curve->size, &out->n);
}

static void store(const named_curve *curve, const mint *value, uint8_t *out)
{
    uint32_t size = 0;
    mint_to_fixedlen_os(value, curve->size, curve->size, &size, out);
}

static int is_below(const mint *value, const mint *bound) { return mint_compare(value, bound) < 0; }

const char *point_to_record(const named_curve *curve, const uint8_t *point, size_t size, ECCrefPublicKey *out)
{
    const uint32_t L = curve->size;
    const uint8_t form = size > 0 ? point[0] : 0;
    const int compressed = form == 2 || form == 3;
    if (!compressed && form != 4 && form != 6 && form != 7)
        return "the point does not start with 02, 03, 04, 06 or 07";
    if (size != (compressed ? 1 + L : 1 + 2 * L)) return "the point has the wrong length for its curve";

    curve_numbers c;
    ecc_point P;
    load_curve(curve, &c);
    P.infinity = 0;
    octetstring_to_mint(point + 1, L, &P.x);
    if (!is_below(&P.x, &c.p)) return "the point's x is not below p";
    if (compressed) {
        if (ecc_point_unpress(&P.y, &P.x, &c.a, &c.b, &c.p, form & 1u) != 0)
            return "there is no point with this x on the curve";
    } else {
        octetstring_to_mint(point + 1 + L, L, &P.y);
        if ((form == 6 || form == 7) && (point[2 * L] & 1u) != (form & 1u))
            return "the point's first byte contradicts its y";
    }
    if (!is_below(&P.y, &c.p)) return "the point's y is not below p";
    if (ecc_test_point(&P, &c.a, &c.b, &c.p) != ON_CURVE) return "the point is not on the curve";
    memset(out, 0, sizeof *out);
    out->bits = 8 * L;
    store(curve, &P.x, out->x);
    store(curve, &P.y, out->y);
    return NULL;
}

const char *coordinates_fault(const named_curve *curve, const uint8_t *x, const uint8_t *y)
{
    uint8_t point[MAX_POINT] = {4};
    ECCrefPublicKey P;
    memcpy(point + 1, x, curve->size);
    memcpy(point + 1 + curve->size, y, curve->size);
    return point_to_record(curve, point, 1 + 2u * curve->size, &P);
}

size_t record_to_point(const named_curve *curve, const ECCrefPublicKey *pub, int compressed,
                       uint8_t out[MAX_POINT])
{
    const size_t L = curve->size;
    memcpy(out + 1, pub->x, L);
    if (compressed) {
        out[0] = (uint8_t)(2 | (pub->y[L - 1] & 1));
        return 1 + L;
    }
    out[0] = 4;
    memcpy(out + 1 + L, pub->y, L);
    return 1 + 2 * L;
}

const char *private_to_record(const ec_key *key, ECCrefPrivateKey *out)
{
    const char *fault = NULL;
    mint d, n, one = {{1}, 1}, most;
    if (!key->has_private) return "this is a public key; a private key is needed";
    octetstring_to_mint(key->d, key->curve->size, &d);
    octetstring_to_mint(key->curve->record->n, key->curve->size, &n);
    mint_sub(&n, &one, &most);
    const int below = is_below(&d, key->curve->is_sm2 ? &most : &n);
    if (get_mint_bit_len(&d) == 0 || !below) fault = "the private key is 0 or too large for its curve";
    clear_secret(&d, sizeof d);
    memset(out, 0, sizeof *out);
    if (fault != NULL) return fault;
    out->bits = 8u * key->curve->size;
    memcpy(out->K, key->d, key->curve->size);
    return NULL;
}

const char *public_of_private(const named_curve *curve, const ECCrefPrivateKey *priv, ECCrefPublicKey *out)
{
    curve_numbers c;
    ecc_point G, Q;
    mint d;
    ecc_point *table = calloc(PRECOMP_TABLE_ENTRIES, sizeof *table);
    if (table == NULL) return "no memory for a table of 85 kilobytes";
    load_curve(curve, &c);
    G.infinity = 0;
    octetstring_to_mint(curve->record->Gx, curve->size, &G.x);
    octetstring_to_mint(curve->record->Gy, curve->size, &G.y);
    octetstring_to_mint(priv->K, curve->size, &d);
    ecc_precomputation_point_1(&G, &c.a, &c.b, &c.p, table);
    ecc_fix_point_mul_1(&d, &G, &c.a, &c.b, &c.p, &Q, table);
    clear_secret(&d, sizeof d);
    free(table);
    if (Q.infinity != 0 || ecc_test_point(&Q, &c.a, &c.b, &c.p) != ON_CURVE)
        return "no public key belongs to this private key";
    memset(out, 0, sizeof *out);
    out->bits = 8u * curve->size;
    store(curve, &Q.x, out->x);
    store(curve, &Q.y, out->y);
    return NULL;
}

const char *public_to_record(const ec_key *key, ECCrefPublicKey *out)
{
    ECCrefPublicKey computed;
    ECCrefPrivateKey priv;
    const char *fault = NULL;
    if (key->point_size > 0) fault = point_to_record(key->curve, key->point, key->point_size, out);
    if (fault != NULL || !key->has_private) return fault;
    fault = private_to_record(key, &priv);
    if (fault == NULL) fault = public_of_private(key->curve, &priv, &computed);
    clear_secret(&priv, sizeof priv);
    if (fault != NULL) return fault;
    if (key->point_size > 0 && memcmp(&computed, out, sizeof computed) != 0)
        return "the public key in the file does not belong to its private key";
    *out = computed;
    return NULL;
}

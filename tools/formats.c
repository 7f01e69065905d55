/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
#include "formats.h"

#include <string.h>

#include "der.h"

const char *const signature_forms[] = {"der", "raw", NULL};
const char *const cipher_forms[] = {"der", "c1c3c2", "c1c2c3", "c1c3c2-no04", "c1c2c3-no04", NULL};

const char *read_signature(const named_curve *curve, signature_form form, const uint8_t *bytes, size_t size,
                           ECCSignature *out)
{
    const size_t L = curve->size;
    memset(out, 0, sizeof *out);
    if (form == SIGNATURE_RAW) {
        if (size != 2 * L) return "the signature does not have the length of r and s";
        memcpy(out->r, bytes, L);
        memcpy(out->s, bytes + L, L);
        return NULL;
    }
    der_reader in = {bytes, size};
    der_reader sequence;
    if (der_read(&in, DER_SEQUENCE, &sequence) && in.left == 0 && der_read_uint(&sequence, out->r, L) &&
        der_read_uint(&sequence, out->s, L) && sequence.left == 0)
        return NULL;
    memset(out, 0, sizeof *out);
    return size == 2 * L ? "the signature is not DER but has the length of a raw one: use -f raw"
                         : "the signature is not DER with r and s of the curve's length";
}

size_t write_signature(const named_curve *curve, signature_form form, const ECCSignature *sig, uint8_t *out)
{
    const size_t L = curve->size;
    if (form == SIGNATURE_RAW) {
        memcpy(out, sig->r, L);
        memcpy(out + L, sig->s, L);
        return 2 * L;
    }
    der_writer w;
    der_begin(&w, out, MAX_SIGNATURE_BYTES);
    der_put_uint(&w, sig->s, L);
    der_put_uint(&w, sig->r, L);
    der_wrap(&w, DER_SEQUENCE, 0);
    return der_finish(&w);
}

static const char *read_der_cipher(const named_curve *curve, const uint8_t *bytes, size_t size,
                                   cipher_parts *out)
{
    der_reader in = {bytes, size};
    der_reader sequence, c3, c2;
    if (!der_read(&in, DER_SEQUENCE, &sequence)) return "the ciphertext is not DER: give its form with -f";
    if (in.left != 0 || !der_read_uint(&sequence, out->x, curve->size) ||
        !der_read_uint(&sequence, out->y, curve->size) || !der_read(&sequence, DER_OCTET_STRING, &c3) ||
        !der_read(&sequence, DER_OCTET_STRING, &c2) || sequence.left != 0)
        return "the ciphertext's DER is damaged, or of another curve";
    if (c3.left != CHECK_BYTES) return "the ciphertext's check value does not have 32 bytes";
    if (c2.left == 0) return "the ciphertext has no message";
    out->c3 = c3.at;
    out->c2 = c2.at;
    out->c2_size = c2.left;
    return NULL;
}

static int has_04(cipher_form form) { return form == CIPHER_C1C3C2 || form == CIPHER_C1C2C3; }
static int has_check_first(cipher_form form) { return form == CIPHER_C1C3C2 || form == CIPHER_C1C3C2_NO04; }

const char *read_cipher(const named_curve *curve, cipher_form form, const uint8_t *bytes, size_t size,
                        cipher_parts *out)
{
    const size_t L = curve->size;
    if (form == CIPHER_DER) return read_der_cipher(curve, bytes, size, out);
    const size_t mark = has_04(form) ? 1 : 0;
    if (size <= mark + 2 * L + CHECK_BYTES) return "the ciphertext is too short";
    if (mark == 1 && bytes[0] != 4) return "the ciphertext does not start with 04: try the form with -no04";
    bytes += mark;
    memcpy(out->x, bytes, L);
    memcpy(out->y, bytes + L, L);
    bytes += 2 * L;
    out->c2_size = size - mark - 2 * L - CHECK_BYTES;
    out->c3 = has_check_first(form) ? bytes : bytes + out->c2_size;
    out->c2 = has_check_first(form) ? bytes + CHECK_BYTES : bytes;
    return NULL;
}

size_t write_cipher(const named_curve *curve, cipher_form form, const cipher_parts *parts, uint8_t *out,
                    size_t capacity)
{
    static const uint8_t uncompressed = 4;
    const size_t L = curve->size;
    der_writer w;
    der_begin(&w, out, capacity);
    if (form == CIPHER_DER) {
        der_put_value(&w, DER_OCTET_STRING, parts->c2, parts->c2_size);
        der_put_value(&w, DER_OCTET_STRING, parts->c3, CHECK_BYTES);
        der_put_uint(&w, parts->y, L);
        der_put_uint(&w, parts->x, L);
        der_wrap(&w, DER_SEQUENCE, 0);
        return der_finish(&w);
    }
    if (has_check_first(form)) {
        der_put(&w, parts->c2, parts->c2_size);
        der_put(&w, parts->c3, CHECK_BYTES);
    } else {
        der_put(&w, parts->c3, CHECK_BYTES);
        der_put(&w, parts->c2, parts->c2_size);
    }
    der_put(&w, parts->y, L);
    der_put(&w, parts->x, L);
    if (has_04(form)) der_put(&w, &uncompressed, 1);
    return der_finish(&w);
}

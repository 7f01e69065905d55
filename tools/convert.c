/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* convert: keys, signatures and ciphertexts from one form into another. Only the form is checked,
 * and that a point lies on its curve. */
#include <stdlib.h>
#include <string.h>

#include "command.h"
#include "formats.h"
#include "key_math.h"

typedef enum key_text { SEC1, PKCS8, SPKI, SPKI_COMPRESSED, POINT, POINT_COMPRESSED, XY, D } key_text;
static const char *const key_forms[] = {
    "sec1", "pkcs8", "spki", "spki-compressed", "point", "point-compressed", "xy", "d", NULL};

/* The forms that do not name a curve. */
static const char *read_bare_key(ec_key *key, int form, const content *in)
{
    const size_t L = key->curve->size;
    const uint8_t *bytes = in->bytes;
    if (form == D) {
        if (in->size != L) return "the number does not have the length of the curve's order";
        memcpy(key->d, bytes, L);
        key->has_private = 1;
        return NULL;
    }
    if (form == XY) {
        if (in->size != 2 * L) return "x and y do not have the length of the curve's coordinates";
        key->point[0] = 4;
        memcpy(key->point + 1, bytes, 2 * L);
        key->point_size = 1 + 2 * L;
        return NULL;
    }
    if (in->size == 0 || in->size > MAX_POINT) return "the point has the wrong length for its curve";
    memcpy(key->point, bytes, in->size);
    key->point_size = in->size;
    return NULL;
}

static int write_converted_key(const options *o, ec_key *key, const ECCrefPublicKey *pub, key_text form)
{
    char text[MAX_KEY_PEM];
    const int compressed = form == SPKI_COMPRESSED || form == POINT_COMPRESSED;
    const key_form file_form = form == SEC1 ? KEY_SEC1 : form == PKCS8 ? KEY_PKCS8 : KEY_SPKI;
    const int private = form == SEC1 || form == PKCS8 || form == D;
    size_t size = 0;
    if (private && !key->has_private) return misuse("a public key cannot be converted to a private one");
    key->point_size = record_to_point(key->curve, pub, compressed, key->point);
    if (form == D) {
        size = key->curve->size;
        memcpy(text, key->d, size);
    } else if (form >= POINT) {
        const size_t skipped = form == XY ? 1 : 0;
        size = key->point_size - skipped;
        memcpy(text, key->point + skipped, size);
    } else if (o->der) {
        size = ec_key_to_der(key, file_form, (uint8_t *)text, sizeof text);
    } else {
        size = ec_key_to_pem(key, file_form, text, sizeof text);
    }
    int status = MISUSE;
    if (private && o->out == NULL)
        status = misuse("a private key needs -o FILE, or -o - for standard output");
    else if (form >= POINT && !private)
        status = write_result(o, (const uint8_t *)text, size);
    else
        status = write_key_file(o, o->out, text, size, private);
    clear_secret(text, sizeof text);
    return status;
}

static int convert_key(const options *o, const named_curve *curve, const content *in)
{
    ec_key key;
    ECCrefPublicKey pub;
    const int from = o->from == NULL ? SPKI : index_of(o->from, key_forms);
    const int to = index_of(o->format, key_forms);
    if (from < 0 || to < 0) return misuse("unknown key form %s", from < 0 ? o->from : o->format);
    if (from >= POINT && curve == NULL) return misuse("the form %s does not name its curve: use -c", o->from);
    memset(&key, 0, sizeof key);
    key.curve = curve;
    /* PEM and DER identify themselves. */
    const char *fault =
        from >= POINT ? read_bare_key(&key, from, in) : ec_key_from_file(&key, in->bytes, in->size);
    if (fault == NULL) fault = public_to_record(&key, &pub);
    const int status =
        fault != NULL ? invalid("%s", fault) : write_converted_key(o, &key, &pub, (key_text)to);
    clear_secret(&key, sizeof key);
    return status;
}

static int convert_signature(const options *o, const named_curve *curve, const content *in)
{
    uint8_t out[MAX_SIGNATURE_BYTES];
    ECCSignature sig;
    const int from = o->from == NULL ? -1 : index_of(o->from, signature_forms);
    const int to = index_of(o->format, signature_forms);
    if (from < 0 || to < 0) return misuse("a signature needs -F and -f, each der or raw");
    const char *fault = read_signature(curve, (signature_form)from, in->bytes, in->size, &sig);
    if (fault != NULL) return invalid("%s", fault);
    return write_result(o, out, write_signature(curve, (signature_form)to, &sig, out));
}

static int convert_cipher(const options *o, const named_curve *curve, const content *in)
{
    cipher_parts parts;
    const int from = o->from == NULL ? -1 : index_of(o->from, cipher_forms);
    const int to = index_of(o->format, cipher_forms);
    if (from < 0 || to < 0)
        return misuse("use -F and -f, each with der, c1c3c2, c1c2c3, c1c3c2-no04 or c1c2c3-no04");
    const char *fault = read_cipher(curve, (cipher_form)from, in->bytes, in->size, &parts);
    if (fault == NULL) fault = coordinates_fault(curve, parts.x, parts.y);
    if (fault != NULL) return invalid("%s", fault);
    const size_t capacity = parts.c2_size + CIPHER_OVERHEAD;
    uint8_t *out = malloc(capacity);
    const size_t size = out == NULL ? 0 : write_cipher(curve, (cipher_form)to, &parts, out, capacity);
    const int status = size == 0 ? misuse("no memory for the ciphertext") : write_result(o, out, size);
    free(out);
    return status;
}

int run_convert(const options *o)
{
    static const char *const types[] = {"key", "signature", "cipher", NULL};
    const int type = o->type == NULL ? 0 : index_of(o->type, types);
    content in;
    int status = DONE;
    const named_curve *curve = chosen_curve(o, &status);
    if (status != DONE) return status;
    if (type < 0) return misuse("unknown type %s: use key, signature or cipher", o->type);
    if (o->format == NULL) return misuse("missing -f FORM, the form to write");
    if (type > 0 && curve == NULL) curve = curve_by_name("sm2p256v1");
    status = read_content(o, argument(o, 0), type == 0 ? (uint64_t)MAX_KEY_FILE : 0x7fffffff, &in);
    if (status != DONE) return status;
    status = type == 0   ? convert_key(o, curve, &in)
             : type == 1 ? convert_signature(o, curve, &in)
                         : convert_cipher(o, curve, &in);
    drop_content(&in);
    return status;
}

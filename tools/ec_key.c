/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
#include "ec_key.h"

#include <string.h>

#include "der.h"
#include "ec_parameters.h"
#include "pem.h"

static const uint8_t id_ec_public_key[] = {0x2a, 0x86, 0x48, 0xce, 0x3d, 2, 1};
static const uint8_t version_0 = 0, version_1 = 1;

static const char damaged[] = "the key is damaged: its DER is malformed";

void clear_secret(void *memory, size_t size)
{
    memset(memory, 0, size);
    __asm__ __volatile__("" : : "r"(memory) : "memory");
}

/* Sets the curve of a key that is being read; it must be the expected one, if any. */
static const char *set_curve(ec_key *key, const named_curve *curve)
{
    if (key->curve != NULL && key->curve != curve) return "the key belongs to another curve";
    key->curve = curve;
    return NULL;
}

static const char *set_point(ec_key *key, const der_reader *bits)
{
    if (bits->left == 0 || bits->left > MAX_POINT) return "its public key has the wrong length";
    memcpy(key->point, bits->at, bits->left);
    key->point_size = bits->left;
    return NULL;
}

/* AlgorithmIdentifier: id-ecPublicKey and the curve. */
static const char *read_algorithm(ec_key *key, der_reader *in)
{
    der_reader algorithm, oid;
    if (!der_read(in, DER_SEQUENCE, &algorithm) || !der_read(&algorithm, DER_OID, &oid)) return damaged;
    if (!der_equals(&oid, id_ec_public_key, sizeof id_ec_public_key))
        return "the key is not an unencrypted elliptic-curve key (`openssl pkey` shows what it is)";
    const named_curve *curve = NULL;
    const char *fault = read_parameters(&algorithm, &curve);
    if (fault != NULL) return fault;
    return algorithm.left != 0 ? damaged : set_curve(key, curve);
}

/* Reads an ECPrivateKey after its version. */
static const char *read_sec1(ec_key *key, der_reader *in)
{
    der_reader d, tagged, point;
    const char *fault = NULL;
    if (!der_read(in, DER_OCTET_STRING, &d)) return damaged;
    if (der_read(in, DER_CONTEXT_0, &tagged)) {
        const named_curve *curve = NULL;
        fault = read_parameters(&tagged, &curve);
        if (fault == NULL) fault = tagged.left != 0 ? damaged : set_curve(key, curve);
        if (fault != NULL) return fault;
    }
    if (key->curve == NULL) return "the key does not name its curve: use -c CURVE";
    if (der_read(in, DER_CONTEXT_1, &tagged)) {
        if (!der_read_bits(&tagged, &point) || tagged.left != 0) return damaged;
        fault = set_point(key, &point);
    }
    if (fault != NULL || in->left != 0) return fault != NULL ? fault : damaged;
    /* RFC 5915 pads the number to the curve's length; some writers do not, or add zero bytes. */
    const size_t size = key->curve->size;
    while (d.left > size && d.at[0] == 0) {
        ++d.at;
        --d.left;
    }
    if (d.left == 0 || d.left > size) return "the private key has the wrong length for its curve";
    memcpy(key->d + (size - d.left), d.at, d.left);
    key->has_private = 1;
    return NULL;
}

/* Reads a PrivateKeyInfo after its version. */
static const char *read_pkcs8(ec_key *key, der_reader *in)
{
    der_reader wrapped, sequence, skipped;
    uint8_t version = 0;
    const char *fault = read_algorithm(key, in);
    if (fault != NULL) return fault;
    if (!der_read(in, DER_OCTET_STRING, &wrapped)) return damaged;
    (void)der_read(in, DER_CONTEXT_0, &skipped); /* attributes */
    if (in->left != 0) return damaged;
    if (!der_read(&wrapped, DER_SEQUENCE, &sequence) || wrapped.left != 0) return damaged;
    if (!der_read_uint(&sequence, &version, 1) || version != 1) return damaged;
    return read_sec1(key, &sequence);
}

static const char *read_spki(ec_key *key, der_reader *in)
{
    der_reader point;
    const char *fault = read_algorithm(key, in);
    if (fault != NULL) return fault;
    if (!der_read_bits(in, &point) || in->left != 0) return damaged;
    return set_point(key, &point);
}

const char *ec_key_from_der(ec_key *key, const uint8_t *der, size_t size)
{
    const named_curve *expected = key->curve;
    memset(key, 0, sizeof *key);
    key->curve = expected;
    der_reader in = {der, size};
    der_reader sequence;
    uint8_t version = 0;
    const char *fault = damaged;
    if (der_read(&in, DER_SEQUENCE, &sequence) && in.left == 0) {
        if (der_is_next(&sequence, DER_SEQUENCE))
            fault = read_spki(key, &sequence);
        else if (der_read_uint(&sequence, &version, 1))
            fault = version == 1 && der_is_next(&sequence, DER_OCTET_STRING) ? read_sec1(key, &sequence)
                    : version == 0                                           ? read_pkcs8(key, &sequence)
                                   : "the key has an unknown version";
    }
    if (fault != NULL) clear_secret(key, sizeof *key);
    return fault;
}

/* Null for the label of a readable key. */
static const char *label_fault(const char *label)
{
    static const char *const served[] = {"PUBLIC KEY", "PRIVATE KEY", "EC PRIVATE KEY", "SM2 PRIVATE KEY"};
    for (size_t i = 0; i < sizeof served / sizeof served[0]; ++i)
        if (strcmp(label, served[i]) == 0) return NULL;
    if (strcmp(label, "ENCRYPTED PRIVATE KEY") == 0)
        return "the key is encrypted: decrypt it with `openssl pkey -in FILE -out FILE`";
    if (strstr(label, "CERTIFICATE") != NULL)
        return "this is a certificate: extract its key with `openssl x509 -pubkey -noout -in FILE`";
    return "the file contains no elliptic-curve key";
}

/* Reads the key's own block; curve parameter blocks before it are skipped. */
static const char *from_pem(ec_key *key, const uint8_t *bytes, size_t size, uint8_t der[MAX_KEY_DER])
{
    pem_reader in = {(const char *)bytes, size};
    char label[PEM_MAX_LABEL];
    size_t der_size = 0;
    for (;;) {
        const pem_status status = pem_read(&in, label, der, MAX_KEY_DER, &der_size);
        if (status == PEM_HEADERS)
            return "the key is encrypted: decrypt it with `openssl ec -in FILE -out FILE`";
        if (status != PEM_OK) return pem_status_text(status);
        if (strcmp(label, "EC PARAMETERS") == 0 || strcmp(label, "SM2 PARAMETERS") == 0) continue;
        const char *fault = label_fault(label);
        if (fault == NULL) fault = ec_key_from_der(key, der, der_size);
        if (fault != NULL) return fault;
        if ((strcmp(label, "PUBLIC KEY") == 0) == key->has_private)
            return "the BEGIN line does not match the kind of key";
        return NULL;
    }
}

const char *ec_key_from_file(ec_key *key, const uint8_t *bytes, size_t size)
{
    uint8_t der[MAX_KEY_DER];
    if (size > 0 && bytes[0] == DER_SEQUENCE) return ec_key_from_der(key, bytes, size);
    const char *fault = from_pem(key, bytes, size, der);
    clear_secret(der, sizeof der);
    if (fault != NULL) clear_secret(key, sizeof *key);
    return fault;
}

static void put_algorithm(der_writer *w, const named_curve *curve)
{
    const size_t before = der_length(w);
    der_put_value(w, DER_OID, curve->oid, curve->oid_size);
    der_put_value(w, DER_OID, id_ec_public_key, sizeof id_ec_public_key);
    der_wrap(w, DER_SEQUENCE, before);
}

/* Inside PKCS #8 the curve has already been named. */
static void put_sec1(der_writer *w, const ec_key *key, int with_curve)
{
    const size_t before = der_length(w);
    if (key->point_size > 0) {
        der_put_bits(w, key->point, key->point_size);
        der_wrap(w, DER_CONTEXT_1, before);
    }
    if (with_curve) {
        const size_t point = der_length(w);
        der_put_value(w, DER_OID, key->curve->oid, key->curve->oid_size);
        der_wrap(w, DER_CONTEXT_0, point);
    }
    der_put_value(w, DER_OCTET_STRING, key->d, key->curve->size);
    der_put_uint(w, &version_1, 1);
    der_wrap(w, DER_SEQUENCE, before);
}

size_t ec_key_to_der(const ec_key *key, key_form form, uint8_t *out, size_t capacity)
{
    der_writer w;
    if (form == KEY_SPKI ? key->point_size == 0 : !key->has_private) return 0;
    der_begin(&w, out, capacity);
    if (form == KEY_SEC1) {
        put_sec1(&w, key, 1);
    } else {
        if (form == KEY_SPKI) {
            der_put_bits(&w, key->point, key->point_size);
        } else {
            put_sec1(&w, key, 0);
            der_wrap(&w, DER_OCTET_STRING, 0);
        }
        put_algorithm(&w, key->curve);
        if (form == KEY_PKCS8) der_put_uint(&w, &version_0, 1);
        der_wrap(&w, DER_SEQUENCE, 0);
    }
    const size_t size = der_finish(&w);
    /* Copies of the private key remain after the result: the writer works backwards. */
    clear_secret(out + size, capacity - size);
    return size;
}

size_t ec_key_to_pem(const ec_key *key, key_form form, char *out, size_t capacity)
{
    static const char *const labels[] = {"EC PRIVATE KEY", "PRIVATE KEY", "PUBLIC KEY"};
    uint8_t der[MAX_KEY_DER];
    const size_t der_size = ec_key_to_der(key, form, der, sizeof der);
    const size_t size = der_size == 0 ? 0 : pem_write(labels[form], der, der_size, out, capacity);
    clear_secret(der, sizeof der);
    return size;
}

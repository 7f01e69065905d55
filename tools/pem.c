/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
#include "pem.h"

#include <string.h>

enum { MAX_LINE = 76, WRITTEN_LINE = 64, CHARACTERS = 4, BYTES = 3 };

static const char begin_mark[] = "-----BEGIN ";
static const char end_mark[] = "-----END ";
static const char dashes[] = "-----";

const char *pem_status_text(pem_status status)
{
    static const char *const texts[] = {
        "",
        "no BEGIN line was found",
        "a BEGIN line has no valid label",
        "the block has headers, as encrypted keys in the old form do",
        "the base64 text is damaged",
        "the END line is missing",
        "BEGIN and END lines do not match",
        "the block is empty",
        "the block is too long for a key",
    };
    return texts[status];
}

typedef struct line {
    const char *at;
    size_t length; /* without the line's end */
} line;

/* Reads the next line. Returns 0 at the end of the text. */
static int next_line(pem_reader *in, line *out)
{
    if (in->left == 0) return 0;
    const char *end = memchr(in->at, '\n', in->left);
    const size_t taken = end == NULL ? in->left : (size_t)(end - in->at) + 1;
    out->at = in->at;
    out->length = end == NULL ? taken : taken - 1;
    if (end != NULL && out->length > 0 && out->at[out->length - 1] == '\r') --out->length;
    in->at += taken;
    in->left -= taken;
    return 1;
}

static int starts_with(const line *l, const char *mark)
{
    const size_t length = strlen(mark);
    return l->length >= length && memcmp(l->at, mark, length) == 0;
}

/* The label of a line that starts with the mark. */
static int read_label(const line *l, const char *mark, char label[PEM_MAX_LABEL])
{
    const size_t before = strlen(mark);
    const size_t behind = sizeof dashes - 1;
    if (l->length <= before + behind || l->length - before - behind >= PEM_MAX_LABEL) return 0;
    if (memcmp(l->at + l->length - behind, dashes, behind) != 0) return 0;
    const size_t length = l->length - before - behind;
    for (size_t i = 0; i < length; ++i)
        if (l->at[before + i] < ' ' || l->at[before + i] > '~') return 0;
    memcpy(label, l->at + before, length);
    label[length] = '\0';
    return 1;
}

/* The six bits of a base64 character, or -1. */
static int six_bits(char c)
{
    if (c >= 'A' && c <= 'Z') return c - 'A';
    if (c >= 'a' && c <= 'z') return c - 'a' + 26;
    if (c >= '0' && c <= '9') return c - '0' + 52;
    if (c == '+') return 62;
    return c == '/' ? 63 : -1;
}

/* Four characters at a time, across lines. */
typedef struct decoder {
    uint32_t bits;
    unsigned characters; /* of the current four */
    unsigned padding;
    uint8_t *out;
    size_t capacity, size;
} decoder;

static pem_status finish_four(decoder *d)
{
    const unsigned count = BYTES - d->padding;
    if (d->padding > 0 && (d->bits & ((1u << 8 * d->padding) - 1u)) != 0) return PEM_BAD_TEXT;
    if (count > d->capacity - d->size) return PEM_TOO_LONG;
    for (unsigned i = 0; i < count; ++i) d->out[d->size++] = (uint8_t)(d->bits >> (16 - 8 * i));
    d->bits = 0;
    d->characters = 0;
    return PEM_OK;
}

static pem_status decode_line(decoder *d, const line *l)
{
    if (l->length > MAX_LINE) return PEM_BAD_TEXT;
    for (size_t i = 0; i < l->length; ++i) {
        const int value = six_bits(l->at[i]);
        const int pad = l->at[i] == '=' && d->characters >= 2;
        /* After padding only more padding may follow, in the same four. */
        if ((value < 0 && !pad) || (d->padding > 0 && (!pad || d->characters == 0))) return PEM_BAD_TEXT;
        if (pad) ++d->padding;
        d->bits = d->bits << 6 | (pad ? 0u : (uint32_t)value);
        if (++d->characters == CHARACTERS) {
            const pem_status status = finish_four(d);
            if (status != PEM_OK) return status;
        }
    }
    return PEM_OK;
}

/* Skips to a BEGIN line. */
static pem_status find_begin(pem_reader *in, char label[PEM_MAX_LABEL])
{
    line l;
    while (next_line(in, &l))
        if (starts_with(&l, begin_mark)) return read_label(&l, begin_mark, label) ? PEM_OK : PEM_BAD_LABEL;
    return PEM_NO_BEGIN;
}

static pem_status read_body(pem_reader *in, decoder *d, const char *label)
{
    char end_label[PEM_MAX_LABEL];
    line l;
    while (next_line(in, &l)) {
        if (starts_with(&l, end_mark)) {
            if (!read_label(&l, end_mark, end_label) || strcmp(label, end_label) != 0) return PEM_OTHER_END;
            if (d->characters != 0) return PEM_BAD_TEXT;
            return d->size == 0 ? PEM_EMPTY : PEM_OK;
        }
        if (starts_with(&l, dashes)) return PEM_NO_END;
        if (memchr(l.at, ':', l.length) != NULL) return PEM_HEADERS;
        const pem_status status = decode_line(d, &l);
        if (status != PEM_OK) return status;
    }
    return PEM_NO_END;
}

pem_status pem_read(pem_reader *in, char label[PEM_MAX_LABEL], uint8_t *out, size_t capacity, size_t *size)
{
    pem_reader rest = *in;
    decoder d = {0, 0, 0, out, capacity, 0};
    pem_status status = find_begin(&rest, label);
    if (status == PEM_OK) status = read_body(&rest, &d, label);
    d.bits = 0;
    if (status != PEM_OK) return status;
    *size = d.size;
    *in = rest;
    return PEM_OK;
}

/* The write position; null after an overflow. */
typedef struct text {
    char *at;
    size_t left;
} text;

static void put(text *t, const char *characters, size_t count)
{
    if (t->at == NULL || count > t->left) {
        t->at = NULL;
        return;
    }
    memcpy(t->at, characters, count);
    t->at += count;
    t->left -= count;
}

static void put_boundary(text *t, const char *mark, const char *label)
{
    put(t, mark, strlen(mark));
    put(t, label, strlen(label));
    put(t, dashes, sizeof dashes - 1);
    put(t, "\n", 1);
}

size_t pem_write(const char *label, const uint8_t *bytes, size_t size, char *out, size_t capacity)
{
    static const char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    text t = {out, capacity};
    if (strlen(label) >= PEM_MAX_LABEL) return 0;
    put_boundary(&t, begin_mark, label);
    for (size_t i = 0; i < size; i += BYTES) {
        const size_t count = size - i < BYTES ? size - i : BYTES;
        uint32_t bits = 0;
        for (size_t j = 0; j < BYTES; ++j) bits = bits << 8 | (j < count ? bytes[i + j] : 0u);
        char four[CHARACTERS];
        for (size_t j = 0; j < CHARACTERS; ++j)
            four[j] = (char)(j <= count ? digits[bits >> (18 - 6 * j) & 63u] : '=');
        put(&t, four, sizeof four);
        if ((i + BYTES) % (WRITTEN_LINE / CHARACTERS * BYTES) == 0 || i + BYTES >= size) put(&t, "\n", 1);
    }
    put_boundary(&t, end_mark, label);
    return t.at == NULL ? 0 : (size_t)(t.at - out);
}

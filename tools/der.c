/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
#include "der.h"

#include <string.h>

/* Reads a length in its only valid form. */
static int read_length(der_reader *in, size_t *length)
{
    if (in->left == 0) return 0;
    const uint8_t first = in->at[0];
    ++in->at;
    --in->left;
    if (first < 0x80) {
        *length = first;
        return 1;
    }
    const size_t bytes = first & 0x7fu;
    /* 0 would be an indefinite length; no file read here needs more than four bytes. */
    if (bytes == 0 || bytes > 4 || bytes > in->left || in->at[0] == 0) return 0;
    uint32_t value = 0;
    for (size_t i = 0; i < bytes; ++i) value = value << 8 | in->at[i];
    in->at += bytes;
    in->left -= bytes;
    *length = value;
    return value >= 0x80;
}

int der_is_next(const der_reader *in, uint8_t tag) { return in->left > 0 && in->at[0] == tag; }

int der_read(der_reader *in, uint8_t tag, der_reader *content)
{
    if (!der_is_next(in, tag)) return 0;
    der_reader rest = {in->at + 1, in->left - 1};
    size_t length = 0;
    if (!read_length(&rest, &length) || length > rest.left) return 0;
    content->at = rest.at;
    content->left = length;
    in->at = rest.at + length;
    in->left = rest.left - length;
    return 1;
}

int der_read_uint(der_reader *in, uint8_t *out, size_t size)
{
    der_reader rest = *in;
    der_reader number;
    if (!der_read(&rest, DER_INTEGER, &number) || number.left == 0) return 0;
    if (number.at[0] >= 0x80) return 0; /* negative */
    if (number.left > 1 && number.at[0] == 0) {
        if (number.at[1] < 0x80) return 0; /* the zero byte is redundant */
        ++number.at;
        --number.left;
    }
    if (number.left > size) return 0;
    memset(out, 0, size - number.left);
    memcpy(out + (size - number.left), number.at, number.left);
    *in = rest;
    return 1;
}

int der_read_bits(der_reader *in, der_reader *content)
{
    der_reader rest = *in;
    der_reader bits;
    if (!der_read(&rest, DER_BIT_STRING, &bits) || bits.left == 0 || bits.at[0] != 0) return 0;
    content->at = bits.at + 1;
    content->left = bits.left - 1;
    *in = rest;
    return 1;
}

int der_equals(const der_reader *content, const uint8_t *bytes, size_t size)
{
    return content->left == size && (size == 0 || memcmp(content->at, bytes, size) == 0);
}

void der_begin(der_writer *w, uint8_t *buffer, size_t size)
{
    w->start = buffer;
    w->end = buffer + size;
    w->at = w->end;
}

size_t der_length(const der_writer *w) { return w->at == NULL ? 0 : (size_t)(w->end - w->at); }

void der_put(der_writer *w, const uint8_t *bytes, size_t size)
{
    if (w->at == NULL) return;
    if (size > (size_t)(w->at - w->start)) {
        w->at = NULL;
        return;
    }
    w->at -= size;
    if (size > 0) memcpy(w->at, bytes, size);
}

static void put_byte(der_writer *w, size_t byte)
{
    const uint8_t low = (uint8_t)byte;
    der_put(w, &low, 1);
}

void der_wrap(der_writer *w, uint8_t tag, size_t since)
{
    const size_t length = der_length(w) - since;
    if (w->at == NULL) return;
    if (length < 0x80) {
        put_byte(w, length);
    } else {
        size_t bytes = 0;
        for (size_t rest = length; rest > 0; rest >>= 8, ++bytes) put_byte(w, rest);
        put_byte(w, 0x80 | bytes);
    }
    put_byte(w, tag);
}

void der_put_value(der_writer *w, uint8_t tag, const uint8_t *bytes, size_t size)
{
    const size_t before = der_length(w);
    der_put(w, bytes, size);
    der_wrap(w, tag, before);
}

void der_put_uint(der_writer *w, const uint8_t *bytes, size_t size)
{
    while (size > 0 && bytes[0] == 0) {
        ++bytes;
        --size;
    }
    const size_t before = der_length(w);
    der_put(w, bytes, size);
    if (size == 0 || bytes[0] >= 0x80) put_byte(w, 0);
    der_wrap(w, DER_INTEGER, before);
}

void der_put_bits(der_writer *w, const uint8_t *bytes, size_t size)
{
    const size_t before = der_length(w);
    der_put(w, bytes, size);
    put_byte(w, 0);
    der_wrap(w, DER_BIT_STRING, before);
}

size_t der_finish(der_writer *w)
{
    const size_t size = der_length(w);
    if (size > 0) memmove(w->start, w->at, size);
    return size;
}

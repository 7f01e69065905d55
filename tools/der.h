/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Reading and writing DER, as much as keys, signatures and ciphertexts need.
 *
 * Strict: definite lengths in their shortest form, one-byte tags, non-negative integers in their shortest
 * form, bit strings of whole bytes. Nothing is allocated and nothing is read or written out of bounds. The
 * two files der.h and der.c need nothing else of this project.
 *
 * Every reading function returns 1, or 0 and leaves the reader where it was.
 */
#ifndef ZOKECC_TOOLS_DER_H
#define ZOKECC_TOOLS_DER_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

enum {
    DER_INTEGER = 0x02,
    DER_BIT_STRING = 0x03,
    DER_OCTET_STRING = 0x04,
    DER_OID = 0x06,
    DER_SEQUENCE = 0x30,
    DER_CONTEXT_0 = 0xa0,
    DER_CONTEXT_1 = 0xa1
};

/* The bytes not yet read. */
typedef struct der_reader {
    const uint8_t *at;
    size_t left;
} der_reader;

/* True if an element with this tag comes next. */
int der_is_next(const der_reader *in, uint8_t tag);

/* Reads one element; *content refers to its content, inside the same bytes. */
int der_read(der_reader *in, uint8_t tag, der_reader *content);

/* Reads a non-negative INTEGER as `size` big-endian bytes, padded with zero bytes on the left. Refuses a
 * longer one and then writes nothing. */
int der_read_uint(der_reader *in, uint8_t *out, size_t size);

/* Reads a BIT STRING whose bits fill whole bytes. */
int der_read_bits(der_reader *in, der_reader *content);

/* True if the content is exactly these bytes. */
int der_equals(const der_reader *content, const uint8_t *bytes, size_t size);

/*
 * Writes from the last byte to the first, so that every length is known when its header is written:
 *
 *     der_writer w;
 *     der_begin(&w, buffer, sizeof buffer);
 *     der_put_uint(&w, s, 32);             the last element first
 *     der_put_uint(&w, r, 32);
 *     der_wrap(&w, DER_SEQUENCE, 0);       around everything written since length 0
 *     size_t size = der_finish(&w);        0 if the buffer was too small
 */
typedef struct der_writer {
    uint8_t *start;
    uint8_t *at; /* the first byte written so far; null after an overflow */
    uint8_t *end;
} der_writer;

void der_begin(der_writer *w, uint8_t *buffer, size_t size);

/* The bytes written so far. */
size_t der_length(const der_writer *w);

/* Puts plain bytes before what has been written. */
void der_put(der_writer *w, const uint8_t *bytes, size_t size);

/* Puts tag and length before what has been written since der_length was `since`. */
void der_wrap(der_writer *w, uint8_t tag, size_t since);

/* Puts one element with this content. */
void der_put_value(der_writer *w, uint8_t tag, const uint8_t *bytes, size_t size);

/* Puts a big-endian number as an INTEGER: without its leading zero bytes, with one if its top bit is set. */
void der_put_uint(der_writer *w, const uint8_t *bytes, size_t size);

/* Puts a BIT STRING of whole bytes. */
void der_put_bits(der_writer *w, const uint8_t *bytes, size_t size);

/* Moves the result to the start of the buffer and returns its length; 0 if it did not fit. */
size_t der_finish(der_writer *w);

#ifdef __cplusplus
}
#endif

#endif

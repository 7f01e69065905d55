/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Reading and writing PEM, the textual form of RFC 7468: base64 between a BEGIN and an END line.
 *
 * Strict: labels match, base64 is canonical (padding only at the end, unused bits zero), there is only base64
 * between the two, in lines of at most 76 characters. Text before the first BEGIN line is skipped.
 * Line ends are LF or CR LF. Nothing is allocated. The two files pem.h and pem.c need nothing else of this
 * project; after reading a private key the caller must wipe the text and the bytes.
 */
#ifndef ZOKECC_TOOLS_PEM_H
#define ZOKECC_TOOLS_PEM_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

enum { PEM_MAX_LABEL = 48 }; /* with the zero byte */

typedef enum pem_status {
    PEM_OK,
    PEM_NO_BEGIN,  /* no (further) BEGIN line */
    PEM_BAD_LABEL, /* a BEGIN line without five dashes at its end, or an empty or too long label */
    PEM_HEADERS,   /* headers as in RFC 1421, used by encrypted keys */
    PEM_BAD_TEXT,  /* something that is not base64, a line that is too long, or padding out of place */
    PEM_NO_END,    /* the text ends before an END line */
    PEM_OTHER_END, /* the END line has another label */
    PEM_EMPTY,     /* no bytes between the lines */
    PEM_TOO_LONG   /* more bytes than fit */
} pem_status;

/* A message; the empty string for PEM_OK. */
const char *pem_status_text(pem_status status);

/* The text not yet read. */
typedef struct pem_reader {
    const char *at;
    size_t left;
} pem_reader;

/* Reads the next block: its label as a string, and its bytes into out, which has room for capacity bytes.
 * After PEM_OK the reader is after the END line; otherwise it has not moved, and the content of out
 * is meaningless. */
pem_status pem_read(pem_reader *in, char label[PEM_MAX_LABEL], uint8_t *out, size_t capacity, size_t *size);

/* Writes one block with lines of 64 characters. Returns its length, without a zero byte at the end; 0 if it
 * does not fit or the label is too long. */
size_t pem_write(const char *label, const uint8_t *bytes, size_t size, char *out, size_t capacity);

#ifdef __cplusplus
}
#endif

#endif

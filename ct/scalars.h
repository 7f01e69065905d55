// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Secret numbers modulo n or p, in records as wide as the modulus (ct/points.h), and what schemes compute
// with them. Of everything that is drawn, read or computed here only the outcome of a test is told to the
// outside, as a status, and what a comment calls public.
//
// Every modulus is one that has_secret_field() takes.
#ifndef ZOKECC_CT_SCALARS_H
#define ZOKECC_CT_SCALARS_H

#include <zokecc/mint.h>

#include "base/linkage.h"

namespace zokecc {

// out = bytes[count], big-endian, in a record as wide as n. False unless 0 < out < n.
bool read_secret(const mint &n, const uint8_t *bytes, uint32_t count, mint &out);

// out = bytes[count] mod p, for any count.
void reduce_secret(const mint &p, const uint8_t *bytes, uint32_t count, mint &out);

// The number of a wide record in len bytes, big-endian; bytes that do not fit are left out.
void write_secret(const mint &wide, uint32_t len, uint8_t *out);

// How many of bytes[count] are left without the zero bytes at its beginning: public from here on.
uint32_t secret_length(const uint8_t *bytes, uint32_t count);

// The number as a record of the other layers: public from here on.
void publish(const mint &wide, mint &out);

// True for zero.
bool is_zero_secret(const mint &wide);

// True if a + b = n, or a + 1 = n for a null b.
bool sums_to_order(const mint &n, const mint &a, const mint *b);

// out = (a + b) mod n for public, trimmed numbers below n: exactly, which mod_add is not always.
void add_exactly(const mint &n, const mint &a, const mint &b, mint &out);

// out = (d + x_bar r) mod n, for a public x_bar. False if that is 0.
bool exchange_scalar(const mint &n, const mint &d, const mint &r, const mint &x_bar, mint &out);

// s = (1 + d)^-1 (k - r d) mod n, public. False if 1 + d is 0, or if s + (r + s) d is not k: something
// went wrong in between. r is public, and trimmed.
bool sm2_secret_half(const mint &n, const mint &d, const mint &k, const mint &r, mint &s);

// s = k^-1 (e + r d) mod n, public, for public e and r below n. False unless s k is e + r d.
bool ecdsa_secret_half(const mint &n, const mint &e, const mint &d, const mint &k, const mint &r, mint &s);

// out = a b mod p.
void multiply_secrets(const mint &p, const mint &a, const mint &b, mint &out);

// out = a / b mod p, for a public a below p. False if b is 0.
bool divide_by_secret(const mint &p, const mint &a, const mint &b, mint &out);

}  // namespace zokecc

// out = a number from 1 to n - 2, or, with a key, a nonce from 1 to n - 1. Sixty-four bits more than n has
// are drawn and reduced, so no number is likelier than another by more than 2^-64. What the kernel gives is
// hashed, for a nonce with key and digest, so that a nonce which comes again has the same of both. -1 if
// the kernel gives nothing.
ZOKECC_INTERNAL int32_t draw_secret_number(mint *out, const mint *n, const mint *key, const mint *digest);

// words[count] = a number other than zero to blind coordinates with. Without the kernel it is 1: what it
// would blind is told by no jump and by no address in any case.
ZOKECC_INTERNAL void draw_blinding(uint32_t *words, uint32_t count);

#endif

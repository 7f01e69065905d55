// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Arithmetic of the schemes on secret numbers modulo n or p, in wide records (ct/points.h). The only things
// that become public are the outcome of a test, as a status, and whatever a comment below calls public.
//
// Every modulus must be one for which has_secret_field() is true.
#ifndef ZOKECC_CT_SCALARS_H
#define ZOKECC_CT_SCALARS_H

#include <zokecc/mint.h>

#include "base/linkage.h"

namespace zokecc {

// out = bytes[count], big-endian, as wide as n. False unless 0 < out < n.
bool read_secret(const mint &n, const uint8_t *bytes, uint32_t count, mint &out);

// out = bytes[count] mod p, for any count.
void reduce_secret(const mint &p, const uint8_t *bytes, uint32_t count, mint &out);

// out[len] = the number, big-endian; bytes that do not fit are dropped.
void write_secret(const mint &wide, uint32_t len, uint8_t *out);

// Returns the length of bytes[count] without leading zero bytes: public from here on.
uint32_t secret_length(const uint8_t *bytes, uint32_t count);

// out = the number as a trimmed record for the other layers: public from here on.
void publish(const mint &wide, mint &out);

// True for zero.
bool is_zero_secret(const mint &wide);

// True if a + b = n, or a + 1 = n for a null b.
bool sums_to_order(const mint &n, const mint &a, const mint *b);

// out = (a + b) mod n for public, trimmed numbers below n: always exact, unlike mod_add.
void add_exactly(const mint &n, const mint &a, const mint &b, mint &out);

// out = (d + x_bar r) mod n, for a public x_bar. False if that is 0.
bool exchange_scalar(const mint &n, const mint &d, const mint &r, const mint &x_bar, mint &out);

// s = (1 + d)^-1 (k - r d) mod n, public. False if 1 + d is 0, or if s + (r + s) d is not k, which means a
// fault during the computation. r is public and trimmed.
bool sm2_secret_half(const mint &n, const mint &d, const mint &k, const mint &r, mint &s);

// s = k^-1 (e + r d) mod n, public, for public e and r below n. False unless s k is e + r d.
bool ecdsa_secret_half(const mint &n, const mint &e, const mint &d, const mint &k, const mint &r, mint &s);

// out = a b mod p.
void multiply_secrets(const mint &p, const mint &a, const mint &b, mint &out);

// out = a / b mod p, for a public a below p. False if b is 0.
bool divide_by_secret(const mint &p, const mint &a, const mint &b, mint &out);

}  // namespace zokecc

// out = a random number from 1 to n - 2, or, with a key, a nonce from 1 to n - 1. 64 bits more than n has are
// drawn and reduced, so the bias is below 2^-64. The kernel's bytes are hashed,
// for a nonce together with key and digest, so that a nonce can only repeat for the same key and digest. -1
// if the kernel delivers nothing.
ZOKECC_INTERNAL int32_t draw_secret_number(mint *out, const mint *n, const mint *key, const mint *digest);

// words[count] = a nonzero random number to blind coordinates with. It is 1 if the kernel delivers nothing:
// even unblinded coordinates affect no branch and no address.
ZOKECC_INTERNAL void draw_blinding(uint32_t *words, uint32_t count);

#endif

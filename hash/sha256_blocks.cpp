// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The block transformation of SHA-256 in C++, FIPS 180-4 sections 4.1.2, 4.2.2 and 6.2.2.
#include "hash/sha256_blocks.h"

#include <bit>

#include "base/config.h"
#include "base/cpu_x86_64.h"
#include "base/linkage.h"
#include "hash/bytes.h"

namespace zokecc {

const uint32_t kSha256Constants[64] = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

namespace {

struct State {
    uint32_t a, b, c, d, e, f, g, h;
};

// W[16 + i], from sigma0(W[i + 1]) and sigma1(W[i + 14]).
inline void expand(uint32_t *w, uint32_t i)
{
    const uint32_t x = w[i + 1];
    const uint32_t y = w[i + 14];
    const uint32_t sigma_0 = std::rotr(x ^ std::rotr(x, 11), 7) ^ x >> 3;
    const uint32_t sigma_1 = std::rotr(y ^ std::rotr(y, 2), 17) ^ y >> 10;
    w[i + 16] = w[i] + w[i + 9] + sigma_0 + sigma_1;
}

// One round on fixed registers: the callers rotate the names instead. majority(a, b, c) is
// ((a ^ b) & (b ^ c)) ^ b, and this round's a ^ b is the next one's b ^ c. The sums are written in the
// order that needs the fewest registers.
ZOKECC_INLINE void round(uint32_t a, uint32_t b, uint32_t &d, uint32_t e, uint32_t f, uint32_t g, uint32_t &h,
                         uint32_t &b_xor_c, uint32_t constant, uint32_t w)
{
    h += constant;
    h += w;
    uint32_t big_sigma = e ^ std::rotr(e, 5);
    big_sigma ^= std::rotr(e, 19);
    h += std::rotr(big_sigma, 6);
    uint32_t choice = (f ^ g) & e;
    choice ^= g;
    h += choice;
    d += h;
    big_sigma = a ^ std::rotr(a, 11);
    big_sigma ^= std::rotr(a, 20);
    h += std::rotr(big_sigma, 2);
    const uint32_t a_xor_b = a ^ b;
    b_xor_c &= a_xor_b;
    b_xor_c ^= b;
    h += b_xor_c;
    b_xor_c = a_xor_b;
}

ZOKECC_INLINE void eight_rounds(State &s, uint32_t &b_xor_c, const uint32_t *k, const uint32_t *w)
{
    round(s.a, s.b, s.d, s.e, s.f, s.g, s.h, b_xor_c, k[0], w[0]);
    round(s.h, s.a, s.c, s.d, s.e, s.f, s.g, b_xor_c, k[1], w[1]);
    round(s.g, s.h, s.b, s.c, s.d, s.e, s.f, b_xor_c, k[2], w[2]);
    round(s.f, s.g, s.a, s.b, s.c, s.d, s.e, b_xor_c, k[3], w[3]);
    round(s.e, s.f, s.h, s.a, s.b, s.c, s.d, b_xor_c, k[4], w[4]);
    round(s.d, s.e, s.g, s.h, s.a, s.b, s.c, b_xor_c, k[5], w[5]);
    round(s.c, s.d, s.f, s.g, s.h, s.a, s.b, b_xor_c, k[6], w[6]);
    round(s.b, s.c, s.e, s.f, s.g, s.h, s.a, b_xor_c, k[7], w[7]);
}

void compress_block(uint32_t *hash, const uint8_t *block)
{
    uint32_t w[64];
    load_block(block, w);
    for (uint32_t *p = w; p < w + 48; p += 8) {
        expand(p, 0);
        expand(p, 1);
        expand(p, 2);
        expand(p, 3);
        expand(p, 4);
        expand(p, 5);
        expand(p, 6);
        expand(p, 7);
    }
    State s = {hash[0], hash[1], hash[2], hash[3], hash[4], hash[5], hash[6], hash[7]};
    uint32_t b_xor_c = s.b ^ s.c;
    const uint32_t *k = kSha256Constants;
    for (const uint32_t *p = w; p < w + 64; p += 8) {
        eight_rounds(s, b_xor_c, k, p);
        k += 8;
    }
    hash[0] += s.a;
    hash[1] += s.b;
    hash[2] += s.c;
    hash[3] += s.d;
    hash[4] += s.e;
    hash[5] += s.f;
    hash[6] += s.g;
    hash[7] += s.h;
}

}  // namespace

void sha256_blocks_portable(uint32_t *hash, const uint8_t *data, uint32_t count)
{
    for (; count > 0; --count) {
        compress_block(hash, data);
        data += 64;
    }
}

void sha256_blocks(uint32_t *hash, const uint8_t *data, uint32_t count)
{
    if constexpr (kShaInstructions) {
        if (has_sha_instructions()) return sha256_blocks_x86(hash, data, count);
    }
    sha256_blocks_portable(hash, data, count);
}

}  // namespace zokecc

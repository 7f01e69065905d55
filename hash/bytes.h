// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Byte strings: loading and storing words, and operations on whole strings.
#ifndef ZOKECC_HASH_BYTES_H
#define ZOKECC_HASH_BYTES_H

#include <bit>
#include <cstdint>
#include <cstring>
#include <span>

#include "base/config.h"
#include "base/linkage.h"

namespace zokecc {

// A view of a byte string: start and length, not owned.
using Bytes = std::span<const uint8_t>;

bool is_all_zero(const uint8_t *bytes, uint32_t count);

// True if a[count] equals b[count]; the time does not depend on where they differ.
bool are_equal(const uint8_t *a, const uint8_t *b, uint32_t count);

// out[m] = in[m] xor stream[m]. out may be in.
void mask(const uint8_t *in, const uint8_t *stream, uint32_t m, uint8_t *out);

inline uint32_t load_big_endian(const uint8_t *bytes)
{
    return ((uint32_t{bytes[0]} << 8 | bytes[1]) << 8 | bytes[2]) << 8 | bytes[3];
}

// The same for an aligned word, in three ARM instructions; the compiler's own byte reversal takes four.
// even_bytes is 00FF00FF, hidden from the compiler.
inline uint32_t load_aligned_big_endian(const uint8_t *bytes, uint32_t even_bytes)
{
    uint32_t word;
    std::memcpy(&word, __builtin_assume_aligned(bytes, 4), 4);
    return (std::rotl(word, 8) & even_bytes) | std::rotr(word & even_bytes, 8);
}

// w[16] = the words of a 64-byte block. Processors without unaligned loads must assemble each word from bytes
// unless the block is word-aligned.
ZOKECC_ONE_COPY inline void load_block(const uint8_t *block, uint32_t *w)
{
    const uint32_t *const end = w + 16;
    if (kAlignedLoadsOnly && reinterpret_cast<uintptr_t>(block) % 4 == 0) {
        uint32_t even_bytes = 0x00FF00FF;
        __asm__("" : "+r"(even_bytes));
        for (; w < end; w += 4) {
            w[0] = load_aligned_big_endian(block, even_bytes);
            w[1] = load_aligned_big_endian(block + 4, even_bytes);
            w[2] = load_aligned_big_endian(block + 8, even_bytes);
            w[3] = load_aligned_big_endian(block + 12, even_bytes);
            block += 16;
        }
        return;
    }
    for (; w < end; w += 2) {
        w[0] = load_big_endian(block);
        w[1] = load_big_endian(block + 4);
        block += 8;
    }
}

inline void store_big_endian(uint32_t word, uint8_t *bytes)
{
    if constexpr (kAlignedLoadsOnly) {
        bytes[0] = static_cast<uint8_t>(word >> 24);
        bytes[1] = static_cast<uint8_t>(word >> 16);
        bytes[2] = static_cast<uint8_t>(word >> 8);
        bytes[3] = static_cast<uint8_t>(word);
    } else {
        word = __builtin_bswap32(word);
        std::memcpy(bytes, &word, sizeof word);
    }
}

constexpr uint32_t kHashBlockBytes = 64;  // for both hashes

// The padded end of a message of length bytes, the same for both hashes (FIPS 180-4, section 5.1.1): the
// message's last length % 64 bytes, at tail, then 0x80, zero bytes and the length in bits. Fills all 128
// bytes of end and returns how many of its blocks to hash, 1 or 2.
uint32_t pad_end(const uint8_t *tail, uint64_t length, uint8_t *end);

// Working area for the digest of a whole message.
struct DigestWork {
    uint32_t state[8];
    uint8_t end[2 * kHashBlockBytes];

    void write_digest(uint8_t *out) const
    {
#pragma GCC unroll 8
        for (uint32_t i = 0; i < 8; ++i) store_big_endian(state[i], out + 4 * i);
    }
};

inline uint32_t load_little_endian(const uint8_t *bytes)
{
    return uint32_t{bytes[3]} << 24 | uint32_t{bytes[2]} << 16 | uint32_t{bytes[1]} << 8 | bytes[0];
}

inline void store_little_endian(uint32_t word, uint8_t *bytes)
{
    bytes[0] = static_cast<uint8_t>(word);
    bytes[1] = static_cast<uint8_t>(word >> 8);
    bytes[2] = static_cast<uint8_t>(word >> 16);
    bytes[3] = static_cast<uint8_t>(word >> 24);
}

}  // namespace zokecc

#endif

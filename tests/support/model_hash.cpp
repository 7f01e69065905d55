// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "tests/support/model_hash.h"

#include <cmath>

namespace zokecc_test {

namespace {

uint32_t rotate_left(uint32_t value, unsigned count) {
    count %= 32;
    return count == 0 ? value : value << count | value >> (32 - count);
}
uint32_t rotate_right(uint32_t value, unsigned count) { return rotate_left(value, 32 - count); }

uint32_t big_endian(const uint8_t *bytes) {
    uint32_t value = 0;
    for (int i = 0; i < 4; ++i) value = value << 8 | bytes[i];
    return value;
}

// FIPS 180-4 takes its constants from the fractional parts of roots of the first primes. A
// double has 53 bits, and no root needs more than 3 + 32 of them.
uint32_t fraction_bits(double root) {
    return static_cast<uint32_t>((root - std::floor(root)) * 4294967296.0);
}

std::array<unsigned, 64> first_primes() {
    std::array<unsigned, 64> primes{};
    size_t found = 0;
    for (unsigned candidate = 2; found < primes.size(); ++candidate) {
        bool composite = false;
        for (size_t i = 0; i < found; ++i) composite = composite || candidate % primes[i] == 0;
        if (!composite) primes[found++] = candidate;
    }
    return primes;
}

std::array<uint32_t, 64> sha256_constants() {
    std::array<uint32_t, 64> constants{};
    const auto primes = first_primes();
    for (size_t i = 0; i < 64; ++i) constants[i] = fraction_bits(std::cbrt(static_cast<double>(primes[i])));
    return constants;
}

HashState sha256_start() {
    HashState state{};
    const auto primes = first_primes();
    for (size_t i = 0; i < 8; ++i) state[i] = fraction_bits(std::sqrt(static_cast<double>(primes[i])));
    return state;
}

// The message, one bit, zero bits up to 448 modulo 512, the length in bits.
ByteString padded(const ByteString &message) {
    ByteString out = message;
    out.push_back(0x80);
    while (out.size() % 64 != 56) out.push_back(0);
    const uint64_t bits = 8 * static_cast<uint64_t>(message.size());
    for (int shift = 56; shift >= 0; shift -= 8) out.push_back(static_cast<uint8_t>(bits >> shift));
    return out;
}

using Block = HashState (*)(const HashState &, const uint8_t *);
using Hash = ByteString (*)(const ByteString &);

ByteString hash(HashState state, Block block, const ByteString &message) {
    const ByteString input = padded(message);
    for (size_t at = 0; at < input.size(); at += 64) state = block(state, input.data() + at);
    return model_digest(state);
}

// RFC 2104 with a block of 64 bytes.
ByteString hmac(Hash digest, ByteString key, const ByteString &message) {
    if (key.size() > 64) key = digest(key);
    key.resize(64, 0);
    ByteString inner, outer;
    for (uint8_t byte : key) {
        inner.push_back(byte ^ 0x36);
        outer.push_back(byte ^ 0x5C);
    }
    inner.insert(inner.end(), message.begin(), message.end());
    const ByteString middle = digest(inner);
    outer.insert(outer.end(), middle.begin(), middle.end());
    return digest(outer);
}

}  // namespace

HashState model_sha256_start() {
    static const HashState start = sha256_start();
    return start;
}

HashState model_sm3_start() {
    return {0x7380166F, 0x4914B2B9, 0x172442D7, 0xDA8A0600, 0xA96F30BC, 0x163138AA, 0xE38DEE4D, 0xB0FB0E4E};
}

// FIPS 180-4, section 6.2.2.
HashState model_sha256_block(const HashState &state, const uint8_t *block) {
    static const std::array<uint32_t, 64> constants = sha256_constants();
    uint32_t schedule[64];
    for (unsigned t = 0; t < 64; ++t) {
        if (t < 16) {
            schedule[t] = big_endian(block + 4 * t);
            continue;
        }
        const uint32_t x = schedule[t - 15], y = schedule[t - 2];
        schedule[t] = (rotate_right(y, 17) ^ rotate_right(y, 19) ^ y >> 10) + schedule[t - 7] +
                      (rotate_right(x, 7) ^ rotate_right(x, 18) ^ x >> 3) + schedule[t - 16];
    }
    HashState v = state;  // a to h
    for (unsigned t = 0; t < 64; ++t) {
        const uint32_t choice = (v[4] & v[5]) ^ (~v[4] & v[6]);
        const uint32_t majority = (v[0] & v[1]) ^ (v[0] & v[2]) ^ (v[1] & v[2]);
        const uint32_t sum0 = rotate_right(v[0], 2) ^ rotate_right(v[0], 13) ^ rotate_right(v[0], 22);
        const uint32_t sum1 = rotate_right(v[4], 6) ^ rotate_right(v[4], 11) ^ rotate_right(v[4], 25);
        const uint32_t t1 = v[7] + sum1 + choice + constants[t] + schedule[t];
        v = {t1 + sum0 + majority, v[0], v[1], v[2], v[3] + t1, v[4], v[5], v[6]};
    }
    for (size_t i = 0; i < 8; ++i) v[i] += state[i];
    return v;
}

// GB/T 32905, sections 5.3.2 and 5.3.3.
HashState model_sm3_block(const HashState &state, const uint8_t *block) {
    uint32_t words[68];
    for (unsigned j = 0; j < 68; ++j) {
        if (j < 16) {
            words[j] = big_endian(block + 4 * j);
            continue;
        }
        const uint32_t x = words[j - 16] ^ words[j - 9] ^ rotate_left(words[j - 3], 15);
        const uint32_t permuted = x ^ rotate_left(x, 15) ^ rotate_left(x, 23);
        words[j] = permuted ^ rotate_left(words[j - 13], 7) ^ words[j - 6];
    }
    HashState v = state;  // A to H
    for (unsigned j = 0; j < 64; ++j) {
        const bool early = j < 16;
        const uint32_t constant = rotate_left(early ? 0x79CC4519u : 0x7A879D8Au, j);
        const uint32_t ss1 = rotate_left(rotate_left(v[0], 12) + v[4] + constant, 7);
        const uint32_t ss2 = ss1 ^ rotate_left(v[0], 12);
        const uint32_t ff = early ? v[0] ^ v[1] ^ v[2] : (v[0] & v[1]) | (v[0] & v[2]) | (v[1] & v[2]);
        const uint32_t gg = early ? v[4] ^ v[5] ^ v[6] : (v[4] & v[5]) | (~v[4] & v[6]);
        const uint32_t tt1 = ff + v[3] + ss2 + (words[j] ^ words[j + 4]);
        const uint32_t tt2 = gg + v[7] + ss1 + words[j];
        const uint32_t permuted = tt2 ^ rotate_left(tt2, 9) ^ rotate_left(tt2, 17);
        v = {tt1, v[0], rotate_left(v[1], 9), v[2], permuted, v[4], rotate_left(v[5], 19), v[6]};
    }
    for (size_t i = 0; i < 8; ++i) v[i] ^= state[i];
    return v;
}

ByteString model_digest(const HashState &state) {
    ByteString out;
    for (uint32_t word : state)
        for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<uint8_t>(word >> shift));
    return out;
}

ByteString model_sha256(const ByteString &message) {
    return hash(model_sha256_start(), model_sha256_block, message);
}
ByteString model_sm3(const ByteString &message) { return hash(model_sm3_start(), model_sm3_block, message); }
ByteString model_hmac_sha256(const ByteString &key, const ByteString &message) {
    return hmac(model_sha256, key, message);
}
ByteString model_hmac_sm3(const ByteString &key, const ByteString &message) {
    return hmac(model_sm3, key, message);
}

ByteString test_bytes(size_t length, uint32_t seed) {
    ByteString out;
    uint32_t state = seed * 2654435761u + 12345u;
    for (size_t i = 0; i < length; ++i) {
        state = state * 1664525u + 1013904223u;
        out.push_back(static_cast<uint8_t>(state >> 24));
    }
    return out;
}

}  // namespace zokecc_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Shared by the tests of this folder: descriptors, handles and small comparisons.
#ifndef ZOKECC_TESTS_HASH_HELPERS_H
#define ZOKECC_TESTS_HASH_HELPERS_H

#include <zokecc/hash.h>

#include <cstdint>
#include <vector>

#include "tests/support/guarded_buffer.h"
#include "tests/support/hex.h"

namespace zokecc_test {

// A non-null handle that no call may dereference.
inline void *any_session() { return reinterpret_cast<void *>(uintptr_t{4}); }

inline uint32_t length_of(const ByteString &bytes) { return static_cast<uint32_t>(bytes.size()); }
inline int32_t signed_length_of(const ByteString &bytes) { return static_cast<int32_t>(bytes.size()); }

inline hash_msg message_for(uint32_t selector, const ByteString &bytes) {
    return {selector, bytes.data(), 0, length_of(bytes)};
}
// The descriptor's pointer is not const, although the message is only read.
inline sm3_msg sm3_message(const ByteString &bytes) {
    return {const_cast<uint8_t *>(bytes.data()), 0, length_of(bytes)};
}

inline ByteString text_bytes(const char *text) {
    ByteString out;
    while (*text != '\0') out.push_back(static_cast<uint8_t>(*text++));
    return out;
}

inline ByteString joined(ByteString left, const ByteString &right) {
    for (uint8_t byte : right) left.push_back(byte);
    return left;
}

inline ByteString shortened(ByteString bytes, size_t length) {
    bytes.resize(length);
    return bytes;
}

// A digest as an integer of 8 words, least significant first.
inline std::vector<uint32_t> digest_words(const ByteString &digest) {
    std::vector<uint32_t> words(8, 0);
    for (size_t i = 0; i < 32; ++i) words[7 - i / 4] = words[7 - i / 4] << 8 | digest[i];
    return words;
}

// value modulo a nonzero modulus, bit by bit. The result has as many words as
// the modulus, the topmost ones possibly zero.
inline std::vector<uint32_t> model_remainder(const std::vector<uint32_t> &value,
                                             const std::vector<uint32_t> &modulus) {
    std::vector<uint32_t> rest(modulus.size() + 1, 0);
    std::vector<uint32_t> wide = modulus;
    wide.push_back(0);
    for (size_t bit = 32 * value.size(); bit-- > 0;) {
        uint32_t carry = value[bit / 32] >> (bit % 32) & 1;
        for (uint32_t &word : rest) {
            const uint32_t top = word >> 31;
            word = word << 1 | carry;
            carry = top;
        }
        size_t at = wide.size();
        while (at > 0 && rest[at - 1] == wide[at - 1]) --at;
        if (at > 0 && rest[at - 1] < wide[at - 1]) continue;
        uint64_t borrow = 0;
        for (size_t i = 0; i < rest.size(); ++i) {
            const uint64_t difference = uint64_t{rest[i]} - wide[i] - borrow;
            rest[i] = static_cast<uint32_t>(difference);
            borrow = difference >> 63;
        }
    }
    rest.pop_back();
    return rest;
}

inline mint mint_of(const std::vector<uint32_t> &words) {
    mint out{};
    for (size_t i = 0; i < words.size(); ++i) out.words[i] = words[i];
    out.len = static_cast<uint32_t>(words.size());
    return out;
}
inline std::vector<uint32_t> words_of(const mint &value) {
    return std::vector<uint32_t>(value.words, value.words + value.len);
}

}  // namespace zokecc_test

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Hexadecimal text to bytes and to integers, and back.
#ifndef ZOKECC_TESTS_SUPPORT_HEX_H
#define ZOKECC_TESTS_SUPPORT_HEX_H

#include <zokecc/mint.h>

#include <cstring>
#include <initializer_list>
#include <string>

#include "tests/support/give_up.h"
#include "tests/support/guarded_buffer.h"

namespace zokecc_test {

uint8_t nibble(char digit);
ByteString from_hex(const std::string &text);

inline ByteString text_bytes(const std::string &text) { return ByteString(text.begin(), text.end()); }

inline ByteString joined(std::initializer_list<ByteString> parts) {
    ByteString out;
    for (const ByteString &part : parts) out.insert(out.end(), part.begin(), part.end());
    return out;
}

inline std::string to_hex(const uint8_t *bytes, size_t count) {
    static const char digits[] = "0123456789abcdef";
    std::string out;
    for (size_t i = 0; i < count; ++i) {
        out.push_back(digits[bytes[i] >> 4]);
        out.push_back(digits[bytes[i] & 15]);
    }
    return out;
}
inline std::string to_hex(const ByteString &bytes) { return to_hex(bytes.data(), bytes.size()); }

// A normalised value from any number of hexadecimal digits, without using the library.
inline mint mint_from_hex(const std::string &text) {
    mint out{};
    uint32_t nibbles = 0;
    for (size_t i = text.size(); i-- > 0;) {
        uint32_t digit = nibble(text[i]);
        uint32_t word = nibbles / 8;
        if (word >= MINT_WORDS) {
            if (digit != 0) give_up("does not fit a record");
        } else {
            out.words[word] |= digit << (4 * (nibbles % 8));
            if (out.words[word] != 0) out.len = word + 1;
        }
        ++nibbles;
    }
    return out;
}

// The used words, most significant first, as hexadecimal digits without leading zeros.
inline std::string mint_to_hex(const mint &value) {
    ByteString bytes;
    for (uint32_t i = value.len; i-- > 0;)
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes.push_back(static_cast<uint8_t>(value.words[i] >> shift));
    std::string text = to_hex(bytes);
    size_t first = text.find_first_not_of('0');
    return first == std::string::npos ? "0" : text.substr(first);
}

// Same length and same used words; words above the length do not count.
inline bool same_value(const mint &a, const mint &b) {
    if (a.len != b.len) return false;
    if (a.len == 0) return true;
    return a.len <= MINT_WORDS && std::memcmp(a.words, b.words, 4u * a.len) == 0;
}

// All 80 bytes equal.
inline bool same_record(const mint &a, const mint &b) { return std::memcmp(&a, &b, sizeof(mint)) == 0; }

}  // namespace zokecc_test

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Takes numbers, lengths and byte strings from one fuzz input, in order; after its end come
// bytes that depend on the whole input, so that even a short one fills keys and points.
//
// Integers come in special shapes, not only as raw words: the arithmetic is hardest if words are all
// ones, all zeros or equal to their neighbours, which mutations rarely find.
#ifndef ZOKECC_FUZZ_FUZZ_INPUT_H
#define ZOKECC_FUZZ_FUZZ_INPUT_H

#include <zokecc/mint.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "tests/support/guarded_buffer.h"
#include "tests/support/naive_int.h"

namespace zokecc_fuzz {

using zokecc_test::ByteString;
using zokecc_test::Natural;

class FuzzInput {
public:
    FuzzInput(const uint8_t *data, size_t size) : data_(data), left_(size) {
        for (size_t i = 0; i < size; ++i) state_ = (state_ ^ data[i]) * 0x100000001B3u;
    }

    size_t left() const { return left_; }
    uint8_t byte() {
        if (left_ == 0) return beyond_the_end();
        --left_;
        return *data_++;
    }
    bool flag() { return (byte() & 1) != 0; }
    uint32_t word() {
        uint32_t out = 0;
        for (int i = 0; i < 4; ++i) out = out << 8 | byte();
        return out;
    }
    // From 0 to bound - 1; one byte of input for small bounds.
    uint32_t below(uint32_t bound) { return (bound <= 256 ? byte() : word()) % bound; }
    template <class T, size_t N>
    const T &pick(const T (&choices)[N]) {
        return choices[below(static_cast<uint32_t>(N))];
    }
    ByteString bytes(size_t count) {
        ByteString out(count);
        for (uint8_t &each : out) each = byte();
        return out;
    }
    // The remaining bytes, up to a limit.
    ByteString rest(size_t limit) { return bytes(std::min(limit, left_)); }

    // Up to max_len words, the top ones possibly zero; the unused words are nonzero.
    mint untrimmed(uint32_t max_len) {
        mint out = rubbish();
        out.len = below(max_len + 1);
        const bool shaped = flag();
        for (uint32_t i = 0; i < out.len; ++i)
            out.words[i] = shaped ? shaped_word(i == 0 ? 0 : out.words[i - 1]) : word();
        return out;
    }
    mint trimmed(uint32_t max_len) { return trim(untrimmed(max_len)); }
    mint number(uint32_t max_len) { return flag() ? untrimmed(max_len) : trimmed(max_len); }

    // Trimmed; has most words in common with the other number, so that borrows meet equal words.
    mint relative_of(const mint &other) {
        mint out = rubbish();
        out.len = std::min<uint32_t>(other.len, MINT_WORDS);
        std::copy(other.words, other.words + out.len, out.words);
        for (uint32_t changes = below(4); changes > 0 && out.len > 0; --changes) {
            uint32_t &changed = out.words[below(out.len)];
            changed += shaped_word(changed);
        }
        if (out.len > 0 && flag()) out.len = 1 + below(out.len);
        return trim(out);
    }
    mint relative_or_trimmed(const mint &other, uint32_t max_len) {
        return flag() ? relative_of(other) : trimmed(max_len);
    }

    // Trimmed and below a nonzero bound, often close to it.
    mint reduced(const mint &bound) {
        const Natural limit(bound);
        const Natural drawn(flag() ? relative_of(bound) : trimmed(bound.len));
        const Natural value = drawn % limit;
        return with_rubbish(flag() ? (limit - value) % limit : value);
    }

    static mint with_rubbish(const Natural &value) {
        const mint plain = value.to_mint();
        mint out = rubbish();
        std::copy(plain.words, plain.words + plain.len, out.words);
        out.len = plain.len;
        return out;
    }

private:
    static mint trim(mint value) {
        while (value.len > 0 && value.words[value.len - 1] == 0) --value.len;
        return value;
    }
    static mint rubbish() {
        mint out;
        for (uint32_t &each : out.words) each = 0xC0DEC0DEu;
        out.len = 0;
        return out;
    }
    uint32_t shaped_word(uint32_t previous) {
        const uint8_t shape = byte();
        switch (shape & 7) {
        case 0: return 0;
        case 1: return 0xFFFFFFFFu;
        case 2: return previous;
        case 3: return 1u << (shape >> 3);
        case 4: return 0xFFFFFFFFu << (shape >> 3);
        case 5: return 0xFFFFFFFFu >> (shape >> 3);
        case 6: return shape >> 3;
        default: return word();
        }
    }

    uint8_t beyond_the_end() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        return static_cast<uint8_t>(state_ >> 32);
    }

    const uint8_t *data_;
    size_t left_;
    uint64_t state_ = 0xCBF29CE484222325u;
};

}  // namespace zokecc_fuzz

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// A second implementation of the random generator, on the fake clock and rand and on
// the model's SHA-256. It shares no code with the library.
//
// The fake kernel delivers the same words, so this is the model of the hardened build, too.
#ifndef ZOKECC_TESTS_HASH_MODEL_RANDOM_H
#define ZOKECC_TESTS_HASH_MODEL_RANDOM_H

#include <array>
#include <cstdint>
#include <vector>

#include "tests/support/guarded_buffer.h"
#include "tests/support/model_hash.h"

namespace zokecc_test {

class ModelRandom {
public:
    ModelRandom(uint32_t now_, uint32_t counter_) : now(now_), counter(counter_) {}

    uint32_t now;      // the clock
    uint32_t counter;  // rand calls so far
    unsigned seedings = 0;
    bool stuck = false;  // rand returns stuck_value
    uint32_t stuck_value = 0;

    std::array<uint32_t, 8> seed() {
        ++seedings;
        state_ = now;
        std::array<uint32_t, 8> words{};
        for (uint32_t &word : words) {
            word = 1;
            for (unsigned shift : {0u, 11u, 22u}) {
                const uint32_t drawn = next();
                const uint32_t halved = counter >> 1 | (counter & 0x80000000u);
                word |= (drawn + 3 * counter + halved) << shift;
                ++counter;
            }
        }
        return words;
    }

    ByteString bytes(uint32_t length) {
        ByteString out, state = seed_bytes();
        while (out.size() < length) {
            const ByteString middle = model_sha256(seed_bytes());
            const ByteString block = model_sha256(exclusive_or(state, middle));
            state = model_sha256(exclusive_or(middle, block));
            out.insert(out.end(), block.begin(), block.end());
        }
        out.resize(length);
        return out;
    }

    // The requested number of words, least significant first.
    std::vector<uint32_t> words(uint32_t count) {
        const ByteString drawn = bytes(4 * count);
        std::vector<uint32_t> out(count, 0);
        for (size_t i = 0; i < drawn.size(); ++i) out[i / 4] |= uint32_t{drawn[i]} << (8 * (i % 4));
        return out;
    }

private:
    uint32_t next() {
        if (stuck) return stuck_value;
        state_ = state_ * 1103515245u + 12345u;
        return state_ >> 1;
    }

    // Each word with its least significant byte first.
    ByteString seed_bytes() {
        ByteString out;
        for (uint32_t word : seed())
            for (int i = 0; i < 4; ++i) out.push_back(static_cast<uint8_t>(word >> (8 * i)));
        return out;
    }

    static ByteString exclusive_or(ByteString left, const ByteString &right) {
        for (size_t i = 0; i < left.size(); ++i) left[i] ^= right[i];
        return left;
    }

    uint32_t state_ = 0;
};

}  // namespace zokecc_test

#endif

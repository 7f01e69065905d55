// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SHA-256 contexts to start from and to compare with in the streaming tests.
#ifndef ZOKECC_TESTS_HASH_SHA256_CONTEXT_H
#define ZOKECC_TESTS_HASH_SHA256_CONTEXT_H

#include <gtest/gtest.h>

#include <cstring>

#include "hash/sha256.h"
#include "tests/support/model_hash.h"

namespace zokecc_test {

inline sha256_ctx fresh() {
    sha256_ctx context;
    EXPECT_EQ(sha256_init(&context), 0);
    return context;
}

inline HashState state_of(const sha256_ctx &context) {
    HashState state;
    std::memcpy(state.data(), context.hash, sizeof context.hash);
    return state;
}

inline bool same_context(const sha256_ctx &a, const sha256_ctx &b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// One byte below the largest length that 64 bits can count.
inline sha256_ctx almost_full() {
    sha256_ctx context = fresh();
    context.length_high = 0xFFFFFFFFu;
    context.length_low = 0xFFFFFFF8u;
    return context;
}

}  // namespace zokecc_test

#endif

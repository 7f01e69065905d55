// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The end of a streamed SHA-256: finalising, returning the digest, and the block transformation.
#include <gtest/gtest.h>

#include <cstring>

#include "hash/sha256.h"
#include "tests/hash/helpers.h"
#include "tests/hash/sha256_context.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::sha256_result_test {

namespace {

TEST(Sha256Final, ClearsBlockAndLengthAndSetsComputed) {
    sha256_ctx context = fresh();
    const ByteString message = test_bytes(100);
    sha256_update(&context, message.data(), 100);
    GuardedBuffer out(32);
    EXPECT_EQ(sha256_final(&context, out.data()), 0);
    EXPECT_EQ(out.all(), model_sha256(message));
    EXPECT_TRUE(out.untouched_from(32));
    EXPECT_EQ(model_digest(state_of(context)), out.all());
    EXPECT_EQ(ByteString(context.block, context.block + 64), ByteString(64, 0));
    EXPECT_EQ(context.length_high, 0u);
    EXPECT_EQ(context.length_low, 0u);
    EXPECT_EQ(context.block_index, 0);
    EXPECT_EQ(context.computed, 1);
    EXPECT_EQ(context.corrupted, 0);
}

TEST(Sha256Final, SecondCallWritesTheSameDigestAgain) {
    sha256_ctx context = fresh();
    sha256_update(&context, text_bytes("abc").data(), 3);
    uint8_t first[32];
    EXPECT_EQ(sha256_final(&context, first), 0);
    const sha256_ctx before = context;
    GuardedBuffer second(32);
    EXPECT_EQ(sha256_final(&context, second.data()), 0);
    EXPECT_EQ(second.all(), ByteString(first, first + 32));
    EXPECT_TRUE(same_context(context, before));
}

TEST(Sha256Final, PadsWithBothWordsOfTheLength) {
    sha256_ctx context = fresh();
    sha256_update(&context, text_bytes("abc").data(), 3);
    context.length_high = 0x01020304u;
    ByteString block = text_bytes("abc");
    block.push_back(0x80);
    block.resize(64, 0);
    for (uint8_t i = 0; i < 4; ++i) block[56u + i] = static_cast<uint8_t>(i + 1);
    block[63] = 24;
    uint8_t out[32];
    EXPECT_EQ(sha256_final(&context, out), 0);
    const HashState expected = model_sha256_block(model_sha256_start(), block.data());
    EXPECT_EQ(ByteString(out, out + 32), model_digest(expected));
    EXPECT_EQ(context.length_high, 0u);
    EXPECT_EQ(context.length_low, 0u);
}

TEST(Sha256Final, WritesWhateverTheStatusIs) {
    sha256_ctx context = fresh();
    sha256_update(&context, text_bytes("abc").data(), 3);
    context.corrupted = 1;
    uint8_t out[32];
    EXPECT_EQ(sha256_final(&context, out), 0);
    EXPECT_EQ(ByteString(out, out + 32), model_sha256(text_bytes("abc")));
    EXPECT_EQ(context.corrupted, 1);
}

TEST(Sha256Result, NullPointerReturnsOne) {
    GuardedBuffer out(32);
    sha256_ctx context = fresh();
    EXPECT_EQ(sha256_result(nullptr, out.data()), 1);
    EXPECT_EQ(sha256_result(&context, nullptr), 1);
    EXPECT_EQ(sha256_result(nullptr, nullptr), 1);
    EXPECT_TRUE(out.untouched());
    EXPECT_TRUE(same_context(context, fresh()));
}

TEST(Sha256Result, NullPointerWinsOverTheStatus) {
    sha256_ctx context = fresh();
    context.corrupted = 3;
    EXPECT_EQ(sha256_result(&context, nullptr), 1);
}

TEST(Sha256Result, StatusIsReturnedAndNothingIsWritten) {
    for (int32_t status : {1, 3, -5}) {
        GuardedBuffer out(32);
        sha256_ctx context = fresh();
        context.corrupted = status;
        const sha256_ctx before = context;
        EXPECT_EQ(sha256_result(&context, out.data()), status);
        EXPECT_TRUE(out.untouched());
        EXPECT_TRUE(same_context(context, before));
    }
}

TEST(Sha256Result, RefusesAfterAnOverflow) {
    GuardedBuffer out(32);
    sha256_ctx context = almost_full();
    sha256_update(&context, text_bytes("xyz").data(), 3);
    EXPECT_EQ(sha256_result(&context, out.data()), 1);
    EXPECT_TRUE(out.untouched());
}

TEST(Sha256Result, RefusesAfterInputBehindTheDigestButFinalRepeatsIt) {
    sha256_ctx context = fresh();
    uint8_t first[32];
    EXPECT_EQ(sha256_result(&context, first), 0);
    EXPECT_EQ(sha256_update(&context, text_bytes("x").data(), 1), 3);
    GuardedBuffer out(32);
    EXPECT_EQ(sha256_result(&context, out.data()), 3);
    EXPECT_TRUE(out.untouched());
    EXPECT_EQ(sha256_final(&context, out.data()), 0);
    EXPECT_EQ(out.all(), ByteString(first, first + 32));
}

TEST(Sha256Result, RepeatsTheDigest) {
    sha256_ctx context = fresh();
    sha256_update(&context, text_bytes("abc").data(), 3);
    const ByteString expected = model_sha256(text_bytes("abc"));
    for (int i = 0; i < 3; ++i) {
        GuardedBuffer out(32);
        EXPECT_EQ(sha256_result(&context, out.data()), 0);
        EXPECT_EQ(out.all(), expected);
        EXPECT_TRUE(out.untouched_from(32));
    }
}

TEST(Sha256Compress, TransformsTheBlockAndResetsTheIndexOnly) {
    for (uint32_t seed = 1; seed <= 10; ++seed) {
        sha256_ctx context = fresh();
        const ByteString state = test_bytes(32, 100 + seed), block = test_bytes(64, seed);
        std::memcpy(context.hash, state.data(), 32);
        std::memcpy(context.block, block.data(), 64);
        context.block_index = 64;
        context.length_high = 5;
        context.length_low = 6;
        context.corrupted = 1;
        const HashState start = state_of(context);
        sha256_compress(&context);
        EXPECT_EQ(state_of(context), model_sha256_block(start, block.data())) << seed;
        EXPECT_EQ(context.block_index, 0);
        EXPECT_EQ(context.length_high, 5u);
        EXPECT_EQ(context.length_low, 6u);
        EXPECT_EQ(context.computed, 0);
        EXPECT_EQ(context.corrupted, 1);
    }
}

}  // namespace

}  // namespace zokecc_test::sha256_result_test

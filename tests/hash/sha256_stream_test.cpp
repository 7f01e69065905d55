// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The streaming SHA-256: its state, its status and its limits.
#include <gtest/gtest.h>

#include <cstring>

#include "hash/sha256.h"
#include "tests/hash/helpers.h"
#include "tests/hash/sha256_context.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::sha256_stream_test {

namespace {

// The digest of the context's input; the context itself is not changed.
std::string digest_of(sha256_ctx context) {
    uint8_t out[32];
    EXPECT_EQ(sha256_result(&context, out), 0);
    return to_hex(out, 32);
}

TEST(Sha256Init, NullContextReturnsOne) { EXPECT_EQ(sha256_init(nullptr), 1); }

TEST(Sha256Init, ClearsTheWholeContextAndLoadsTheStart) {
    GuardedRecord<sha256_ctx> context;
    EXPECT_EQ(sha256_init(context.get()), 0);
    EXPECT_EQ(state_of(*context.get()), model_sha256_start());
    const ByteString bytes = context.bytes();
    EXPECT_EQ(ByteString(bytes.begin() + 32, bytes.end()), ByteString(sizeof(sha256_ctx) - 32, 0));
    EXPECT_TRUE(context.guards_intact());
}

TEST(Sha256Update, LengthZeroReturnsZeroWhateverThePointersAre) {
    const uint8_t byte = 7;
    EXPECT_EQ(sha256_update(nullptr, nullptr, 0), 0);
    EXPECT_EQ(sha256_update(nullptr, &byte, 0), 0);
    sha256_ctx context = fresh();
    EXPECT_EQ(sha256_update(&context, nullptr, 0), 0);
    EXPECT_TRUE(same_context(context, fresh()));
}

TEST(Sha256Update, LengthZeroWinsOverFinalisationAndStatus) {
    sha256_ctx context = fresh();
    context.computed = 1;
    context.corrupted = 1;
    const sha256_ctx before = context;
    EXPECT_EQ(sha256_update(&context, nullptr, 0), 0);
    EXPECT_TRUE(same_context(context, before));
}

TEST(Sha256Update, NullContextOrMessageReturnsOne) {
    const uint8_t byte = 7;
    EXPECT_EQ(sha256_update(nullptr, &byte, 1), 1);
    EXPECT_EQ(sha256_update(nullptr, nullptr, 1), 1);
    sha256_ctx context = fresh();
    EXPECT_EQ(sha256_update(&context, nullptr, 1), 1);
    EXPECT_TRUE(same_context(context, fresh()));
}

TEST(Sha256Update, NullMessageWinsOverFinalisation) {
    sha256_ctx context = fresh();
    context.computed = 1;
    EXPECT_EQ(sha256_update(&context, nullptr, 1), 1);
    EXPECT_EQ(context.corrupted, 0);
}

TEST(Sha256Update, InputAfterFinalisationSetsTheStatusToThree) {
    sha256_ctx context = fresh();
    uint8_t digest[32];
    sha256_final(&context, digest);
    const sha256_ctx before = context;
    const uint8_t byte = 7;
    EXPECT_EQ(sha256_update(&context, &byte, 1), 3);
    EXPECT_EQ(context.corrupted, 3);
    context.corrupted = 0;
    EXPECT_TRUE(same_context(context, before));
}

TEST(Sha256Update, FinalisationWinsOverAnEarlierStatus) {
    sha256_ctx context = fresh();
    context.computed = 1;
    context.corrupted = 1;
    const uint8_t byte = 7;
    EXPECT_EQ(sha256_update(&context, &byte, 1), 3);
    EXPECT_EQ(context.corrupted, 3);
}

TEST(Sha256Update, StatusIsStickyAndReturnedAsItIs) {
    const uint8_t byte = 7;
    for (int32_t status : {1, 2, 3, -5}) {
        sha256_ctx context = fresh();
        context.corrupted = status;
        const sha256_ctx before = context;
        EXPECT_EQ(sha256_update(&context, &byte, 1), status);
        EXPECT_TRUE(same_context(context, before));
    }
}

TEST(Sha256Update, WaitingBytesStandInTheBlockAndTheLengthCountsBits) {
    sha256_ctx context = fresh();
    EXPECT_EQ(sha256_update(&context, text_bytes("abcde").data(), 5), 0);
    EXPECT_EQ(context.block_index, 5);
    EXPECT_EQ(std::memcmp(context.block, "abcde", 5), 0);
    EXPECT_EQ(context.length_low, 40u);
    EXPECT_EQ(context.length_high, 0u);
    EXPECT_EQ(state_of(context), model_sha256_start());
}

TEST(Sha256Update, FullBlockIsCompressedAtOnce) {
    const ByteString message = test_bytes(67);
    sha256_ctx context = fresh();
    EXPECT_EQ(sha256_update(&context, message.data(), 67), 0);
    EXPECT_EQ(context.block_index, 3);
    EXPECT_EQ(std::memcmp(context.block, message.data() + 64, 3), 0);
    EXPECT_EQ(context.length_low, 67u * 8);
    EXPECT_EQ(state_of(context), model_sha256_block(model_sha256_start(), message.data()));
}

TEST(Sha256Update, LengthCarriesIntoItsHighWord) {
    const uint8_t bytes[2] = {1, 2};
    sha256_ctx context = fresh();
    context.length_low = 0xFFFFFFF8u;
    EXPECT_EQ(sha256_update(&context, bytes, 2), 0);
    EXPECT_EQ(context.length_high, 1u);
    EXPECT_EQ(context.length_low, 8u);
    EXPECT_EQ(context.corrupted, 0);
}

TEST(Sha256Update, OverflowingLengthDropsTheRestAndStillReturnsZero) {
    sha256_ctx context = almost_full();
    EXPECT_EQ(sha256_update(&context, text_bytes("xyz").data(), 3), 0);
    EXPECT_EQ(context.corrupted, 1);
    EXPECT_EQ(context.length_high, 0u);
    EXPECT_EQ(context.length_low, 0u);
    EXPECT_EQ(context.block_index, 1);
    EXPECT_EQ(context.block[0], 'x');
    EXPECT_EQ(context.block[1], 0);
}

TEST(Sha256Update, LastCountableLengthIsNoOverflow) {
    sha256_ctx context = almost_full();
    context.length_low = 0xFFFFFFF0u;
    EXPECT_EQ(sha256_update(&context, text_bytes("x").data(), 1), 0);
    EXPECT_EQ(context.corrupted, 0);
    EXPECT_EQ(context.length_high, 0xFFFFFFFFu);
    EXPECT_EQ(context.length_low, 0xFFFFFFF8u);
}

TEST(Sha256Update, OverflowingByteStillCompletesItsBlock) {
    const ByteString message = test_bytes(66);
    sha256_ctx context = almost_full();
    std::memcpy(context.block, message.data(), 63);
    context.block_index = 63;
    EXPECT_EQ(sha256_update(&context, message.data() + 63, 3), 0);
    EXPECT_EQ(context.corrupted, 1);
    EXPECT_EQ(context.block_index, 0);
    EXPECT_EQ(state_of(context), model_sha256_block(model_sha256_start(), message.data()));
}

TEST(Sha256Update, NothingFollowsAnOverflow) {
    sha256_ctx context = almost_full();
    EXPECT_EQ(sha256_update(&context, text_bytes("xy").data(), 2), 0);
    const sha256_ctx before = context;
    EXPECT_EQ(sha256_update(&context, text_bytes("z").data(), 1), 1);
    EXPECT_TRUE(same_context(context, before));
}

TEST(Sha256Update, SplitAtEveryPositionGivesTheSameDigest) {
    const ByteString message = test_bytes(130);
    const std::string expected = to_hex(model_sha256(message));
    for (uint32_t split = 0; split <= 130; ++split) {
        sha256_ctx context = fresh();
        EXPECT_EQ(sha256_update(&context, message.data(), split), 0);
        EXPECT_EQ(sha256_update(&context, message.data() + split, 130 - split), 0);
        EXPECT_EQ(digest_of(context), expected) << split;
    }
}

TEST(Sha256Update, EveryLengthInOneUpdateOrManyAgreesWithTheModel) {
    const ByteString message = test_bytes(200, 3);
    sha256_ctx bytewise = fresh();
    for (uint32_t length = 0; length <= 200; ++length) {
        const std::string expected = to_hex(model_sha256(shortened(message, length)));
        sha256_ctx whole = fresh(), sevens = fresh();
        EXPECT_EQ(sha256_update(&whole, message.data(), length), 0);
        for (uint32_t at = 0; at < length; at += 7)
            EXPECT_EQ(sha256_update(&sevens, message.data() + at, length - at < 7 ? length - at : 7), 0);
        EXPECT_EQ(digest_of(whole), expected) << length;
        EXPECT_EQ(digest_of(sevens), expected) << length;
        EXPECT_EQ(digest_of(bytewise), expected) << length;
        if (length == 200) break;
        EXPECT_EQ(sha256_update(&bytewise, message.data() + length, 1), 0);
    }
}

}  // namespace

}  // namespace zokecc_test::sha256_stream_test

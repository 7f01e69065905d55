// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The two chained derivation functions: bytes, extent and the effect of a failing step.
#include <gtest/gtest.h>
#include <zokecc/hash.h>

#include "tests/hash/helpers.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::key_derivation_test {

namespace {

using Mac = ByteString (*)(const ByteString &, const ByteString &);

// The full blocks of a chain: each is the MAC of the one before it, the first of the text.
ByteString full_blocks(Mac mac, const ByteString &key, ByteString message, uint32_t count) {
    ByteString out;
    for (uint32_t i = 0; i < count; ++i) {
        message = mac(key, message);
        out = joined(out, message);
    }
    return out;
}

// The MAC for the remainder after `count` full blocks.
ByteString last_mac(Mac mac, const ByteString &key, const ByteString &text, uint32_t count) {
    const ByteString chain = full_blocks(mac, key, text, count + 1);
    return ByteString(chain.end() - 32, chain.end());
}

// What KD_hmac_sha256 writes for a length: for a remainder after full blocks the last call
// requests the whole length again and therefore writes far past it.
ByteString sha256_derivation(const ByteString &key, const ByteString &text, uint32_t length) {
    const uint32_t count = length / 32;
    ByteString out = full_blocks(model_hmac_sha256, key, text, count);
    if (length % 32 == 0) return out;
    ByteString last = last_mac(model_hmac_sha256, key, text, count);
    last.resize(length, 0);
    return joined(out, last);
}

ByteString sm3_derivation(const ByteString &key, const ByteString &data, uint32_t length) {
    return shortened(full_blocks(model_hmac_sm3, key, data, length / 32 + 1), length);
}

const ByteString &key() {
    static const ByteString bytes = test_bytes(20, 2);
    return bytes;
}
const ByteString &text() {
    static const ByteString bytes = test_bytes(50);
    return bytes;
}

void derive_sha256(uint8_t *out, uint32_t length) {
    KD_hmac_sha256(text().data(), 50, key().data(), 20, out, length);
}
uint32_t derive_sm3(uint8_t *out, uint32_t length) {
    return ZOK_KD_HMAC_SM3(any_session(), text().data(), 50, key().data(), 20, out, length);
}

TEST(KdHmacSha256, LengthZeroWritesNothing) {
    GuardedBuffer out(32);
    derive_sha256(out.data(), 0);
    EXPECT_TRUE(out.untouched());
}

TEST(KdHmacSha256, TwentyBytesAreTheStartOfTheFirstMacAndNothingElse) {
    GuardedBuffer out(64);
    derive_sha256(out.data(), 20);
    EXPECT_EQ(out.first(20), shortened(model_hmac_sha256(key(), text()), 20));
    EXPECT_TRUE(out.untouched_from(20));
}

TEST(KdHmacSha256, SixtyFourBytesAreTheMacAndTheMacOfIt) {
    GuardedBuffer out(96);
    derive_sha256(out.data(), 64);
    const ByteString first = model_hmac_sha256(key(), text());
    EXPECT_EQ(out.first(64), joined(first, model_hmac_sha256(key(), first)));
    EXPECT_TRUE(out.untouched_from(64));
}

TEST(KdHmacSha256, KeptFortyBytesWriteSeventyTwo) {
    GuardedBuffer out(128);
    derive_sha256(out.data(), 40);
    const ByteString first = model_hmac_sha256(key(), text());
    const ByteString second = model_hmac_sha256(key(), first);
    EXPECT_EQ(out.first(72), joined(joined(first, second), ByteString(8, 0)));
    EXPECT_TRUE(out.untouched_from(72));
}

TEST(KdHmacSha256, KeptLastCallAsksForTheWholeLength) {
    for (uint32_t length = 0; length <= 130; ++length) {
        const ByteString expected = sha256_derivation(key(), text(), length);
        ASSERT_EQ(expected.size(), length % 32 == 0 ? length : length / 32 * 32 + length);
        GuardedBuffer out(300);
        derive_sha256(out.data(), length);
        EXPECT_EQ(to_hex(out.first(expected.size())), to_hex(expected)) << length;
        EXPECT_TRUE(out.untouched_from(expected.size())) << length;
    }
}

TEST(KdHmacSha256, LongKeyIsHashedInEveryStep) {
    const ByteString long_key = test_bytes(100, 4);
    GuardedBuffer out(96);
    KD_hmac_sha256(text().data(), 50, long_key.data(), 100, out.data(), 96);
    EXPECT_EQ(out.all(), full_blocks(model_hmac_sha256, long_key, text(), 3));
}

TEST(KdHmacSha256, RefusedKeyWritesNothing) {
    for (int32_t key_len : {1, 64, 65}) {
        GuardedBuffer out(128);
        KD_hmac_sha256(text().data(), 50, nullptr, key_len, out.data(), 70);
        EXPECT_TRUE(out.untouched()) << key_len;
    }
}

// After a refused first step the chain continues from the old content of the output.
TEST(KdHmacSha256, KeptRefusedTextLeavesItsBlockAndTheChainGoesOn) {
    const ByteString pattern(32, 0xA5);
    for (int32_t text_len : {-1, 50}) {
        GuardedBuffer out(128);
        KD_hmac_sha256(nullptr, text_len, key().data(), 20, out.data(), 96);
        const ByteString chain = full_blocks(model_hmac_sha256, key(), pattern, 2);
        EXPECT_EQ(out.first(96), joined(pattern, chain)) << text_len;
        EXPECT_TRUE(out.untouched_from(96));
    }
}

TEST(KdHmacSha256, RefusedTextOfAShortOutputWritesNothing) {
    GuardedBuffer out(64);
    KD_hmac_sha256(nullptr, 50, key().data(), 20, out.data(), 20);
    EXPECT_TRUE(out.untouched());
}

TEST(ZokKdHmacSm3, LengthZeroWritesNothingAndReturnsZero) {
    GuardedBuffer out(32);
    EXPECT_EQ(derive_sm3(out.data(), 0), 0u);
    EXPECT_TRUE(out.untouched());
}

TEST(ZokKdHmacSm3, FortyBytesAreTheFirstMacAndTheStartOfTheMacOfIt) {
    GuardedBuffer out(96);
    EXPECT_EQ(derive_sm3(out.data(), 40), 0u);
    const ByteString first = model_hmac_sm3(key(), text());
    EXPECT_EQ(out.first(40), joined(first, shortened(model_hmac_sm3(key(), first), 8)));
    EXPECT_TRUE(out.untouched_from(40));
}

TEST(ZokKdHmacSm3, EveryLengthWritesExactlyThatMany) {
    for (uint32_t length = 0; length <= 130; ++length) {
        GuardedBuffer out(300);
        EXPECT_EQ(derive_sm3(out.data(), length), 0u);
        EXPECT_EQ(to_hex(out.first(length)), to_hex(sm3_derivation(key(), text(), length))) << length;
        EXPECT_TRUE(out.untouched_from(length)) << length;
    }
}

TEST(ZokKdHmacSm3, NullSessionIsRefusedBeforeAnythingElse) {
    GuardedBuffer out(64);
    FailingAlloc allocations;
    const uint32_t result = ZOK_KD_HMAC_SM3(nullptr, text().data(), 50, key().data(), 20, out.data(), 40);
    EXPECT_EQ(allocations.allocations, 0u);
    EXPECT_EQ(result, ZOK_ERR_SESSION);
    EXPECT_TRUE(out.untouched());
}

TEST(ZokKdHmacSm3, NullSessionIsRefusedForLengthZeroToo) {
    EXPECT_EQ(ZOK_KD_HMAC_SM3(nullptr, nullptr, 0, nullptr, 0, nullptr, 0), ZOK_ERR_SESSION);
}

TEST(ZokKdHmacSm3, TakesOneBufferPerBlockAndReturnsThem) {
    GuardedBuffer out(96);
    FailingAlloc allocations;
    derive_sm3(out.data(), 70);
    EXPECT_EQ(allocations.allocations, 3u);
    EXPECT_EQ(allocations.largest_size, 50u + 129);
    EXPECT_EQ(allocations.last_size, 32u + 129);
    EXPECT_EQ(allocations.outstanding, 0);
}

// Every block but the failing one is written; the next one uses its old content as the
// message.
TEST(ZokKdHmacSm3, KeptInnerFailureIsNotReported) {
    const ByteString pattern(32, 0xA5);
    for (uint32_t failing = 1; failing <= 3; ++failing) {
        GuardedBuffer out(128);
        FailingAlloc allocations(failing);
        const uint32_t result = derive_sm3(out.data(), 96);
        EXPECT_EQ(allocations.outstanding, 0);
        EXPECT_EQ(allocations.allocations, 3u);
        EXPECT_EQ(result, 0u);
        ByteString expected = joined(full_blocks(model_hmac_sm3, key(), text(), failing - 1), pattern);
        expected = joined(expected, full_blocks(model_hmac_sm3, key(), pattern, 3 - failing));
        EXPECT_EQ(to_hex(out.first(96)), to_hex(expected)) << failing;
        EXPECT_TRUE(out.untouched_from(96));
    }
}

TEST(ZokKdHmacSm3, KeptFailedRemainderStillReturnsZeroAndLeavesIt) {
    GuardedBuffer out(64);
    FailingAlloc allocations(2);
    EXPECT_EQ(derive_sm3(out.data(), 40), 0u);
    EXPECT_EQ(out.first(32), model_hmac_sm3(key(), text()));
    EXPECT_TRUE(out.untouched_from(32));
}

TEST(ZokKdHmacSm3, KeptDataTooLongStillReturnsZeroAndLeavesTheFirstBlock) {
    GuardedBuffer out(64);
    const uint32_t result =
        ZOK_KD_HMAC_SM3(any_session(), text().data(), 0xFFFFFFFFu, key().data(), 20, out.data(), 32);
    EXPECT_EQ(result, 0u);
    EXPECT_TRUE(out.untouched());
}

}  // namespace

}  // namespace zokecc_test::key_derivation_test

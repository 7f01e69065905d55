// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The calls that take a session handle: their checks, and the failures they do not report.
#include <gtest/gtest.h>
#include <zokecc/hash.h>

#include "tests/hash/helpers.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::session_calls_test {

namespace {

const uint32_t kUnset = 0x55AA55AAu;

TEST(ZokSha256, NullSessionIsRefusedAndNothingIsWritten) {
    const ByteString data = test_bytes(50);
    GuardedBuffer out(32);
    uint32_t out_len = kUnset;
    EXPECT_EQ(ZOK_Sha256(nullptr, data.data(), 50, out.data(), &out_len), ZOK_ERR_SESSION);
    EXPECT_TRUE(out.untouched());
    EXPECT_EQ(out_len, kUnset);
}

TEST(ZokSha256, NullSessionWinsOverNullOutputs) {
    EXPECT_EQ(ZOK_Sha256(nullptr, nullptr, 50, nullptr, nullptr), ZOK_ERR_SESSION);
}

TEST(ZokSha256, NullLengthPointerIsRefusedAndNothingIsWritten) {
    const ByteString data = test_bytes(50);
    GuardedBuffer out(32);
    EXPECT_EQ(ZOK_Sha256(any_session(), data.data(), 50, out.data(), nullptr), ZOK_ERR_ARGUMENT);
    EXPECT_TRUE(out.untouched());
}

TEST(ZokSha256, StoresThirtyTwoWhateverTheLengthWasBefore) {
    const ByteString data = test_bytes(50);
    for (uint32_t before : {0u, 16u, 0xFFFFFFFFu}) {
        GuardedBuffer out(32);
        uint32_t out_len = before;
        EXPECT_EQ(ZOK_Sha256(any_session(), data.data(), 50, out.data(), &out_len), 0u);
        EXPECT_EQ(out_len, 32u);
        EXPECT_EQ(out.all(), model_sha256(data));
        EXPECT_TRUE(out.untouched_from(32));
    }
}

TEST(ZokSha256, KeptNullDataWithALengthGivesTheDigestOfTheEmptyMessage) {
    GuardedBuffer out(32);
    uint32_t out_len = 0;
    EXPECT_EQ(ZOK_Sha256(any_session(), nullptr, 50, out.data(), &out_len), 0u);
    EXPECT_EQ(out_len, 32u);
    EXPECT_EQ(out.all(), model_sha256({}));
}

TEST(ZokSha256, KeptNullOutputReturnsZeroAndStoresThirtyTwo) {
    const ByteString data = test_bytes(50);
    uint32_t out_len = 0;
    EXPECT_EQ(ZOK_Sha256(any_session(), data.data(), 50, nullptr, &out_len), 0u);
    EXPECT_EQ(out_len, 32u);
}

TEST(ZokSm3, NullSessionIsRefusedAndNothingIsWritten) {
    const ByteString data = test_bytes(50);
    GuardedBuffer out(32);
    uint32_t out_len = kUnset;
    EXPECT_EQ(ZOK_SM3(nullptr, data.data(), 50, out.data(), &out_len), ZOK_ERR_SESSION);
    EXPECT_TRUE(out.untouched());
    EXPECT_EQ(out_len, kUnset);
}

TEST(ZokSm3, NullSessionWinsOverNullOutputs) {
    EXPECT_EQ(ZOK_SM3(nullptr, nullptr, 50, nullptr, nullptr), ZOK_ERR_SESSION);
}

TEST(ZokSm3, NullLengthPointerIsRefusedAndNothingIsWritten) {
    const ByteString data = test_bytes(50);
    GuardedBuffer out(32);
    EXPECT_EQ(ZOK_SM3(any_session(), data.data(), 50, out.data(), nullptr), ZOK_ERR_ARGUMENT);
    EXPECT_TRUE(out.untouched());
}

TEST(ZokSm3, StoresThirtyTwoWhateverTheLengthWasBefore) {
    const ByteString data = test_bytes(50);
    for (uint32_t before : {0u, 16u, 0xFFFFFFFFu}) {
        GuardedBuffer out(32);
        uint32_t out_len = before;
        EXPECT_EQ(ZOK_SM3(any_session(), data.data(), 50, out.data(), &out_len), 0u);
        EXPECT_EQ(out_len, 32u);
        EXPECT_EQ(out.all(), model_sm3(data));
        EXPECT_TRUE(out.untouched_from(32));
    }
}

TEST(ZokSm3, NullDataOfLengthZeroIsTheEmptyMessage) {
    GuardedBuffer out(32);
    uint32_t out_len = 0;
    EXPECT_EQ(ZOK_SM3(any_session(), nullptr, 0, out.data(), &out_len), 0u);
    EXPECT_EQ(out.all(), model_sm3({}));
    EXPECT_EQ(out_len, 32u);
}

TEST(ZokHmacSha256, NullSessionIsRefusedAndNothingIsWritten) {
    const ByteString key = test_bytes(20, 2), data = test_bytes(50);
    GuardedBuffer out(32);
    EXPECT_EQ(ZOK_HmacSha256(nullptr, key.data(), 20, data.data(), 50, out.data(), 32), ZOK_ERR_SESSION);
    EXPECT_TRUE(out.untouched());
}

TEST(ZokHmacSha256, NullSessionWinsOverAnInnerFailure) {
    GuardedBuffer out(32);
    EXPECT_EQ(ZOK_HmacSha256(nullptr, nullptr, 20, nullptr, 50, out.data(), 32), ZOK_ERR_SESSION);
    EXPECT_TRUE(out.untouched());
}

TEST(ZokHmacSha256, KeyComesBeforeTheData) {
    const ByteString one = text_bytes("one"), other = text_bytes("other");
    GuardedBuffer out(32);
    EXPECT_EQ(ZOK_HmacSha256(any_session(), one.data(), 3, other.data(), 5, out.data(), 32), 0u);
    EXPECT_EQ(out.all(), model_hmac_sha256(one, other));
}

TEST(ZokHmacSha256, KeptOutputLengthHasNoBound) {
    const ByteString key = test_bytes(20, 2), data = test_bytes(50);
    for (uint32_t length : {0u, 16u, 32u, 33u, 64u, 65u, 100u}) {
        GuardedBuffer out(128);
        EXPECT_EQ(ZOK_HmacSha256(any_session(), key.data(), 20, data.data(), 50, out.data(), length), 0u);
        ByteString expected = model_hmac_sha256(key, data);
        expected.resize(length, 0);
        EXPECT_EQ(out.first(length), expected) << length;
        EXPECT_TRUE(out.untouched_from(length)) << length;
    }
}

TEST(ZokHmacSha256, KeptInnerFailureIsNotReported) {
    const ByteString key = test_bytes(20, 2), data = test_bytes(50);
    GuardedBuffer out(32);
    EXPECT_EQ(ZOK_HmacSha256(any_session(), key.data(), 20, nullptr, 50, out.data(), 32), 0u);
    EXPECT_EQ(ZOK_HmacSha256(any_session(), key.data(), 20, data.data(), -1, out.data(), 32), 0u);
    EXPECT_EQ(ZOK_HmacSha256(any_session(), nullptr, 20, data.data(), 50, out.data(), 32), 0u);
    EXPECT_EQ(ZOK_HmacSha256(any_session(), nullptr, 65, data.data(), 50, out.data(), 32), 0u);
    EXPECT_TRUE(out.untouched());
}

TEST(ZokKdHmacSha256, NullSessionIsRefusedAndNothingIsWritten) {
    const ByteString key = test_bytes(20, 2), data = test_bytes(50);
    GuardedBuffer out(64);
    uint32_t length = 32;
    EXPECT_EQ(ZOK_KdHmacSha256(nullptr, key.data(), 20, data.data(), 50, out.data(), &length),
              ZOK_ERR_SESSION);
    EXPECT_TRUE(out.untouched());
    EXPECT_EQ(length, 32u);
}

TEST(ZokKdHmacSha256, NullSessionWinsOverANullLengthPointer) {
    EXPECT_EQ(ZOK_KdHmacSha256(nullptr, nullptr, 20, nullptr, 50, nullptr, nullptr), ZOK_ERR_SESSION);
}

TEST(ZokKdHmacSha256, NullLengthPointerIsRefusedAndNothingIsWritten) {
    const ByteString key = test_bytes(20, 2), data = test_bytes(50);
    GuardedBuffer out(64);
    EXPECT_EQ(ZOK_KdHmacSha256(any_session(), key.data(), 20, data.data(), 50, out.data(), nullptr),
              ZOK_ERR_ARGUMENT);
    EXPECT_TRUE(out.untouched());
}

// The same bytes, to the same extent, as KD_hmac_sha256, which has its own tests.
TEST(ZokKdHmacSha256, WritesWhatTheDerivationWritesAndLeavesTheLength) {
    const ByteString key = test_bytes(20, 2), data = test_bytes(50);
    for (uint32_t length : {0u, 1u, 20u, 31u, 32u, 33u, 40u, 64u, 70u, 96u, 100u}) {
        GuardedBuffer expected(256), out(256);
        uint32_t word = length;
        KD_hmac_sha256(data.data(), 50, key.data(), 20, expected.data(), length);
        EXPECT_EQ(ZOK_KdHmacSha256(any_session(), key.data(), 20, data.data(), 50, out.data(), &word), 0u);
        EXPECT_EQ(out.all(), expected.all()) << length;
        EXPECT_TRUE(out.untouched_from(256));
        EXPECT_EQ(word, length);
    }
}

TEST(ZokKdHmacSha256, KeptFortyBytesWriteSeventyTwo) {
    const ByteString key = test_bytes(20, 2), data = test_bytes(50);
    GuardedBuffer out(128);
    uint32_t length = 40;
    EXPECT_EQ(ZOK_KdHmacSha256(any_session(), key.data(), 20, data.data(), 50, out.data(), &length), 0u);
    const ByteString first = model_hmac_sha256(key, data);
    EXPECT_EQ(out.first(72), joined(joined(first, model_hmac_sha256(key, first)), ByteString(8, 0)));
    EXPECT_TRUE(out.untouched_from(72));
    EXPECT_EQ(length, 40u);
}

TEST(ZokKdHmacSha256, KeptInnerFailureIsNotReported) {
    const ByteString data = test_bytes(50);
    GuardedBuffer out(64);
    uint32_t length = 40;
    EXPECT_EQ(ZOK_KdHmacSha256(any_session(), nullptr, 20, data.data(), 50, out.data(), &length), 0u);
    EXPECT_TRUE(out.untouched());
    EXPECT_EQ(length, 40u);
}

}  // namespace

}  // namespace zokecc_test::session_calls_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// ZOK_HMAC_SM3: keys, output lengths, refusals and its one allocation.
#include <gtest/gtest.h>
#include <zokecc/hash.h>

#include "tests/hash/helpers.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::hmac_sm3_test {

namespace {

// The largest message whose work buffer, 129 bytes longer, still has a 32-bit size.
constexpr uint32_t kLongestData = 0xFFFFFFFFu - 129;

uint32_t mac_call(const uint8_t *data, uint32_t data_len, const ByteString &key, uint8_t *out,
                  uint32_t out_len) {
    return ZOK_HMAC_SM3(any_session(), data, data_len, key.data(), length_of(key), out, out_len);
}

ByteString mac_of(const ByteString &key, const ByteString &data) {
    GuardedBuffer out(32);
    EXPECT_EQ(mac_call(data.data(), length_of(data), key, out.data(), 32), 0u);
    EXPECT_TRUE(out.untouched_from(32));
    return out.all();
}

TEST(ZokHmacSm3, EveryKeyLengthUpToTwoHundredAgreesWithTheModel) {
    const ByteString longest = test_bytes(200, 2), data = test_bytes(50);
    for (size_t length = 0; length <= 200; ++length) {
        const ByteString key = shortened(longest, length);
        EXPECT_EQ(mac_of(key, data), model_hmac_sm3(key, data)) << length;
    }
}

// Messages of 0 to 130 bytes: the second step reuses the message buffer, and must neither
// hash remains of a long message nor run past the end of a short one.
TEST(ZokHmacSm3, EveryDataLengthUpToOneHundredAndThirtyAgreesWithTheModel) {
    const ByteString key = test_bytes(20, 2), longest = test_bytes(130);
    for (size_t length = 0; length <= 130; ++length) {
        const ByteString data = shortened(longest, length);
        EXPECT_EQ(mac_of(key, data), model_hmac_sm3(key, data)) << length;
    }
}

TEST(ZokHmacSm3, KeyOfSixtyFourBytesIsUsedAsItIs) {
    const ByteString key = test_bytes(64, 2), data = test_bytes(50);
    EXPECT_EQ(mac_of(key, data), model_hmac_sm3(key, data));
    EXPECT_NE(mac_of(key, data), mac_of(model_sm3(key), data));
}

TEST(ZokHmacSm3, KeyOfSixtyFiveBytesIsHashedFirst) {
    const ByteString key = test_bytes(65, 2), data = test_bytes(50);
    EXPECT_EQ(mac_of(key, data), mac_of(model_sm3(key), data));
}

TEST(ZokHmacSm3, DataComesBeforeTheKey) {
    const ByteString one = text_bytes("one"), other = text_bytes("other");
    EXPECT_EQ(mac_of(one, other), model_hmac_sm3(one, other));
    EXPECT_NE(mac_of(one, other), mac_of(other, one));
}

TEST(ZokHmacSm3, OutputOfSixteenBytesIsTheStartOfTheMac) {
    const ByteString key = test_bytes(20, 2), data = test_bytes(50);
    GuardedBuffer out(32);
    EXPECT_EQ(mac_call(data.data(), 50, key, out.data(), 16), 0u);
    EXPECT_EQ(out.first(16), shortened(model_hmac_sm3(key, data), 16));
    EXPECT_TRUE(out.untouched_from(16));
}

TEST(ZokHmacSm3, EveryOutputLengthUpToThirtyTwoTruncates) {
    const ByteString key = test_bytes(20, 2), data = test_bytes(50);
    const ByteString mac = model_hmac_sm3(key, data);
    for (uint32_t length = 0; length <= 32; ++length) {
        GuardedBuffer out(40);
        EXPECT_EQ(mac_call(data.data(), 50, key, out.data(), length), 0u);
        EXPECT_EQ(out.first(length), shortened(mac, length));
        EXPECT_TRUE(out.untouched_from(length)) << length;
    }
}

TEST(ZokHmacSm3, NullPointersOfLengthZeroAreEmptyStrings) {
    GuardedBuffer out(32);
    EXPECT_EQ(ZOK_HMAC_SM3(any_session(), nullptr, 0, nullptr, 0, out.data(), 32), 0u);
    EXPECT_EQ(out.all(), model_hmac_sm3({}, {}));
}

TEST(ZokHmacSm3, MacMayReplaceDataOrKey) {
    const ByteString key = test_bytes(80, 2), data = test_bytes(50);
    const ByteString expected = model_hmac_sm3(key, data);
    ByteString over_data = data, over_key = key;
    EXPECT_EQ(ZOK_HMAC_SM3(any_session(), over_data.data(), 50, key.data(), 80, over_data.data(), 32), 0u);
    EXPECT_EQ(shortened(over_data, 32), expected);
    EXPECT_EQ(ZOK_HMAC_SM3(any_session(), data.data(), 50, over_key.data(), 80, over_key.data(), 32), 0u);
    EXPECT_EQ(shortened(over_key, 32), expected);
}

// One call that must return `code`, without writing a byte or trying an allocation.
void expect_refused(void *session, uint32_t data_len, uint32_t out_len, uint32_t code) {
    const ByteString key = test_bytes(20, 2), data = test_bytes(1);
    GuardedBuffer out(64);
    FailingAlloc allocations;
    const uint32_t result =
        ZOK_HMAC_SM3(session, data.data(), data_len, key.data(), length_of(key), out.data(), out_len);
    EXPECT_EQ(allocations.allocations, 0u);
    EXPECT_EQ(result, code);
    EXPECT_TRUE(out.untouched());
}

TEST(ZokHmacSm3, NullSessionIsRefused) { expect_refused(nullptr, 1, 32, ZOK_ERR_SESSION); }

TEST(ZokHmacSm3, OutputLengthAboveThirtyTwoIsRefused) {
    for (uint32_t length : {33u, 64u, 0xFFFFFFFFu})
        expect_refused(any_session(), 1, length, ZOK_ERR_ARGUMENT);
}

TEST(ZokHmacSm3, NullSessionWinsOverTheOutputLength) { expect_refused(nullptr, 1, 33, ZOK_ERR_SESSION); }

TEST(ZokHmacSm3, DataTooLongForItsBufferIsRefusedWithoutReading) {
    for (uint32_t length : {kLongestData + 1, 0xFFFFFFFFu - 63, 0xFFFFFFFFu})
        expect_refused(any_session(), length, 32, ZOK_ERR_INTERNAL);
}

TEST(ZokHmacSm3, OutputLengthWinsOverTheDataLength) {
    expect_refused(any_session(), 0xFFFFFFFFu, 33, ZOK_ERR_ARGUMENT);
}

TEST(ZokHmacSm3, NullSessionWinsOverTheDataLength) {
    expect_refused(nullptr, 0xFFFFFFFFu, 32, ZOK_ERR_SESSION);
}

TEST(ZokHmacSm3, TakesOneBufferOfTheDataAndOneHundredAndTwentyNineBytesAndReturnsIt) {
    const ByteString key = test_bytes(70, 2), data = test_bytes(300);
    for (uint32_t length : {0u, 1u, 129u, 300u}) {
        GuardedBuffer out(32);
        FailingAlloc allocations;
        const uint32_t result = mac_call(data.data(), length, key, out.data(), 32);
        EXPECT_EQ(allocations.allocations, 1u);
        EXPECT_EQ(allocations.last_size, length + 129);
        EXPECT_EQ(allocations.outstanding, 0);
        EXPECT_EQ(result, 0u);
    }
}

TEST(ZokHmacSm3, FailedAllocationWritesNothing) {
    const ByteString key = test_bytes(20, 2), data = test_bytes(50);
    GuardedBuffer out(32);
    FailingAlloc allocations(1);
    const uint32_t result = mac_call(data.data(), 50, key, out.data(), 32);
    EXPECT_EQ(allocations.outstanding, 0);
    EXPECT_EQ(result, ZOK_ERR_INTERNAL);
    EXPECT_TRUE(out.untouched());
}

TEST(ZokHmacSm3, LongestDataStillAsksForItsBuffer) {
    const ByteString key = test_bytes(20, 2), data = test_bytes(1);
    GuardedBuffer out(32);
    FailingAlloc allocations(1);
    const uint32_t result = mac_call(data.data(), kLongestData, key, out.data(), 32);
    EXPECT_EQ(allocations.allocations, 1u);
    EXPECT_EQ(allocations.last_size, 0xFFFFFFFFu);
    EXPECT_EQ(result, ZOK_ERR_INTERNAL);
    EXPECT_TRUE(out.untouched());
}

}  // namespace

}  // namespace zokecc_test::hmac_sm3_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// mhmac_sha256: keys, output lengths and refusals.
#include <gtest/gtest.h>
#include <zokecc/hash.h>

#include "tests/hash/helpers.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::hmac_sha256_test {

namespace {

constexpr int32_t kMinimum = INT32_MIN;

ByteString mac_of(const ByteString &key, const ByteString &text) {
    GuardedBuffer out(32);
    EXPECT_EQ(
        mhmac_sha256(text.data(), signed_length_of(text), key.data(), signed_length_of(key), out.data(), 32),
        0);
    EXPECT_TRUE(out.untouched_from(32));
    return out.all();
}

// The call must return 1 and leave the output alone.
void expect_refused(const uint8_t *text, int32_t text_len, const uint8_t *key, int32_t key_len) {
    GuardedBuffer out(64);
    EXPECT_EQ(mhmac_sha256(text, text_len, key, key_len, out.data(), 32), 1);
    EXPECT_TRUE(out.untouched());
}

TEST(MhmacSha256, EveryKeyLengthUpToTwoHundredAgreesWithTheModel) {
    const ByteString longest = test_bytes(200, 2), text = test_bytes(50);
    for (size_t length = 0; length <= 200; ++length) {
        const ByteString key = shortened(longest, length);
        EXPECT_EQ(mac_of(key, text), model_hmac_sha256(key, text)) << length;
    }
}

TEST(MhmacSha256, EveryTextLengthUpToOneHundredAndThirtyAgreesWithTheModel) {
    const ByteString key = test_bytes(20, 2), longest = test_bytes(130);
    for (size_t length = 0; length <= 130; ++length) {
        const ByteString text = shortened(longest, length);
        EXPECT_EQ(mac_of(key, text), model_hmac_sha256(key, text)) << length;
    }
}

TEST(MhmacSha256, KeyOfSixtyFourBytesIsUsedAsItIs) {
    const ByteString key = test_bytes(64, 2), text = test_bytes(50);
    EXPECT_EQ(mac_of(key, text), model_hmac_sha256(key, text));
    EXPECT_NE(mac_of(key, text), mac_of(model_sha256(key), text));
}

TEST(MhmacSha256, KeyOfSixtyFiveBytesIsHashedFirst) {
    const ByteString key = test_bytes(65, 2), text = test_bytes(50);
    EXPECT_EQ(mac_of(key, text), mac_of(model_sha256(key), text));
}

TEST(MhmacSha256, MessageComesFirstAndKeySecond) {
    const ByteString one = text_bytes("one"), other = text_bytes("other");
    EXPECT_EQ(mac_of(one, other), model_hmac_sha256(one, other));
    EXPECT_NE(mac_of(one, other), mac_of(other, one));
}

TEST(MhmacSha256, OutputLengthUpToThirtyTwoTruncates) {
    const ByteString key = test_bytes(20, 2), text = test_bytes(50);
    const ByteString mac = model_hmac_sha256(key, text);
    for (uint32_t length = 0; length <= 32; ++length) {
        GuardedBuffer out(40);
        EXPECT_EQ(mhmac_sha256(text.data(), 50, key.data(), 20, out.data(), length), 0);
        EXPECT_EQ(out.first(length), shortened(mac, length));
        EXPECT_TRUE(out.untouched_from(length)) << length;
    }
}

TEST(MhmacSha256, OutputOfFortyBytesEndsInEightZeroBytes) {
    const ByteString key = test_bytes(20, 2), text = test_bytes(50);
    GuardedBuffer out(48);
    EXPECT_EQ(mhmac_sha256(text.data(), 50, key.data(), 20, out.data(), 40), 0);
    EXPECT_EQ(out.first(40), joined(model_hmac_sha256(key, text), ByteString(8, 0)));
    EXPECT_TRUE(out.untouched_from(40));
}

TEST(MhmacSha256, KeptOutputLongerThanTheMacIsZeroFilled) {
    const ByteString key = test_bytes(20, 2), text = test_bytes(50);
    const ByteString mac = model_hmac_sha256(key, text);
    for (uint32_t length = 33; length <= 300; length += length < 100 ? 1 : 50) {
        GuardedBuffer out(320);
        EXPECT_EQ(mhmac_sha256(text.data(), 50, key.data(), 20, out.data(), length), 0);
        EXPECT_EQ(out.first(length), joined(mac, ByteString(length - 32, 0))) << length;
        EXPECT_TRUE(out.untouched_from(length)) << length;
    }
}

TEST(MhmacSha256, KeyLengthZeroOrBelowIsTheEmptyKey) {
    const ByteString key = test_bytes(20, 2), text = test_bytes(50);
    const ByteString expected = model_hmac_sha256({}, text);
    for (int32_t key_len : {0, -1, -65, kMinimum})
        for (const uint8_t *pointer : {key.data(), static_cast<const uint8_t *>(nullptr)}) {
            GuardedBuffer out(32);
            EXPECT_EQ(mhmac_sha256(text.data(), 50, pointer, key_len, out.data(), 32), 0);
            EXPECT_EQ(out.all(), expected) << key_len;
        }
}

TEST(MhmacSha256, NullTextOfLengthZeroIsTheEmptyText) {
    const ByteString key = test_bytes(20, 2);
    GuardedBuffer out(32);
    EXPECT_EQ(mhmac_sha256(nullptr, 0, key.data(), 20, out.data(), 32), 0);
    EXPECT_EQ(out.all(), model_hmac_sha256(key, {}));
}

TEST(MhmacSha256, NullTextWithALengthReturnsOneAndWritesNothing) {
    const ByteString key = test_bytes(20, 2);
    for (int32_t length : {1, 64, INT32_MAX}) expect_refused(nullptr, length, key.data(), 20);
}

TEST(MhmacSha256, NegativeTextLengthReturnsOneAndWritesNothing) {
    const ByteString key = test_bytes(20, 2), text = test_bytes(50);
    for (int32_t length : {-1, -64, kMinimum}) {
        expect_refused(text.data(), length, key.data(), 20);
        expect_refused(nullptr, length, key.data(), 20);
    }
}

TEST(MhmacSha256, NullKeyLongerThanABlockReturnsOneAndWritesNothing) {
    const ByteString text = test_bytes(50);
    for (int32_t length : {65, 100, INT32_MAX}) expect_refused(text.data(), 50, nullptr, length);
}

TEST(MhmacSha256, NullKeyWithALengthUpToABlockReturnsOneAndWritesNothing) {
    const ByteString text = test_bytes(50);
    for (int32_t length : {1, 32, 64}) expect_refused(text.data(), 50, nullptr, length);
}

TEST(MhmacSha256, TwoFaultsAtOnceReturnOneAndWriteNothing) {
    const ByteString text = test_bytes(50);
    expect_refused(nullptr, 50, nullptr, 20);
    expect_refused(nullptr, 50, nullptr, 65);
    expect_refused(text.data(), -1, nullptr, 20);
    expect_refused(text.data(), -1, nullptr, 65);
}

TEST(MhmacSha256, MacMayReplaceTextOrKey) {
    const ByteString key = test_bytes(80, 2), text = test_bytes(50);
    const ByteString expected = model_hmac_sha256(key, text);
    ByteString over_text = text, over_key = key;
    EXPECT_EQ(mhmac_sha256(over_text.data(), 50, key.data(), 80, over_text.data(), 32), 0);
    EXPECT_EQ(shortened(over_text, 32), expected);
    EXPECT_EQ(mhmac_sha256(text.data(), 50, over_key.data(), 80, over_key.data(), 32), 0);
    EXPECT_EQ(shortened(over_key, 32), expected);
}

}  // namespace

}  // namespace zokecc_test::hmac_sha256_test

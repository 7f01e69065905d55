// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// mhash_sha256, the one-shot digest.
#include <gtest/gtest.h>
#include <zokecc/hash.h>

#include "tests/hash/helpers.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::sha256_test {

namespace {

const char kEmptyDigest[] = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";

// The digest from mhash_sha256, which must write 32 bytes and return 0.
std::string digest_of(const ByteString &message) {
    GuardedBuffer out(32);
    EXPECT_EQ(mhash_sha256(message.data(), length_of(message), out.data()), 0u);
    EXPECT_TRUE(out.untouched_from(32));
    return to_hex(out.all());
}

TEST(MhashSha256, EmptyMessageGivesThePublishedDigest) { EXPECT_EQ(digest_of({}), kEmptyDigest); }

TEST(MhashSha256, ThreeLettersGiveThePublishedDigest) {
    EXPECT_EQ(digest_of(text_bytes("abc")),
              "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

// With 55 bytes the length still fits after the padding bit, with 56 it moves to its
// own block, with 63 the padding bit fills the block and with 64 no bytes are pending.
TEST(MhashSha256, FiftyFiveBytesNeedOneBlockAndFiftySixTwo) {
    for (size_t length : {55u, 56u, 63u, 64u}) {
        const ByteString message = test_bytes(length, 55);
        EXPECT_EQ(digest_of(message), to_hex(model_sha256(message))) << length;
    }
}

TEST(MhashSha256, EveryLengthUpToTwoHundredAgreesWithTheModel) {
    for (size_t length = 0; length <= 200; ++length) {
        const ByteString message = test_bytes(length);
        EXPECT_EQ(digest_of(message), to_hex(model_sha256(message))) << length;
    }
}

TEST(MhashSha256, MessageAndDigestAtOddAddressesGiveTheSame) {
    const ByteString message = test_bytes(150);
    const std::string expected = to_hex(model_sha256(message));
    for (size_t offset = 1; offset < 4; ++offset) {
        ByteString moved(offset, 0);
        moved.insert(moved.end(), message.begin(), message.end());
        GuardedBuffer out(32 + offset);
        EXPECT_EQ(mhash_sha256(moved.data() + offset, 150, out.data() + offset), 0u);
        EXPECT_EQ(to_hex(out.data() + offset, 32), expected);
        EXPECT_TRUE(out.untouched_from(32 + offset));
    }
}

TEST(MhashSha256, DigestMayReplaceTheMessage) {
    const ByteString message = test_bytes(100);
    ByteString buffer = message;
    EXPECT_EQ(mhash_sha256(buffer.data(), 100, buffer.data()), 0u);
    EXPECT_EQ(shortened(buffer, 32), model_sha256(message));
    EXPECT_EQ(ByteString(buffer.begin() + 32, buffer.end()), ByteString(message.begin() + 32, message.end()));
}

TEST(MhashSha256, NullMessageOfLengthZeroIsTheEmptyMessage) {
    GuardedBuffer out(32);
    EXPECT_EQ(mhash_sha256(nullptr, 0, out.data()), 0u);
    EXPECT_EQ(to_hex(out.all()), kEmptyDigest);
}

// The refusal of a null message is not reported: the computation ends as if nothing had
// been appended.
TEST(MhashSha256, KeptInnerFailuresAreNotReported) {
    for (uint32_t length : {1u, 64u, 0xFFFFFFFFu}) {
        GuardedBuffer out(32);
        EXPECT_EQ(mhash_sha256(nullptr, length, out.data()), 0u);
        EXPECT_EQ(to_hex(out.all()), kEmptyDigest);
        EXPECT_TRUE(out.untouched_from(32));
    }
}

TEST(MhashSha256, KeptNullOutputReturnsZero) {
    const ByteString message = test_bytes(70);
    EXPECT_EQ(mhash_sha256(message.data(), 70, nullptr), 0u);
    EXPECT_EQ(mhash_sha256(nullptr, 70, nullptr), 0u);
}

}  // namespace

}  // namespace zokecc_test::sha256_test

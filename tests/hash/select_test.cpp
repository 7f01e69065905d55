// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The two calls that choose the hash by number, and the digest as an integer.
#include <gtest/gtest.h>
#include <zokecc/hash.h>

#include "tests/hash/helpers.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::select_test {

namespace {

// Found by search: the first four bytes of the SHA-256 digest are zero.
const char kSha256Zero[] = "zero digest fff22752";
const char kSha256ZeroDigest[] = "00000000fa0a95213715d3a9e9f0dff56e80618cdc5553a149ba2a07bb14c031";
// Found by search: the first four bytes of the SM3 digest are zero.
const char kSm3Zero[] = "zero digest cca5dd2d";
const char kSm3ZeroDigest[] = "00000000667650a88cec59e7069748d7a7f5afb547bf5b24c91b75696df31f4d";

const char kP192Order[] = "ffffffffffffffffffffffff99def836146bc9b1b4d22831";
const char kP256Order[] = "ffffffff00000000ffffffffffffffffbce6faada7179e84f3b9cac2fc632551";
constexpr uint32_t kPattern = 0xA5A5A5A5u;  // the fill of a GuardedRecord

ByteString digest(uint32_t selector, const ByteString &message) {
    return selector == HASH_ALG_SM3 ? model_sm3(message) : model_sha256(message);
}

TEST(HashByte, SelectorsZeroAndOneWriteThirtyTwoBytes) {
    const ByteString message = test_bytes(77);
    for (uint32_t selector : {HASH_ALG_SM3, HASH_ALG_SHA256}) {
        const hash_msg descriptor = message_for(selector, message);
        GuardedBuffer out(48);
        EXPECT_EQ(hash_byte(&descriptor, out.data()), 32);
        EXPECT_EQ(out.first(32), digest(selector, message));
        EXPECT_TRUE(out.untouched_from(32));
    }
}

TEST(HashByte, UnknownSelectorWritesNothingAndReturnsZero) {
    const ByteString message = test_bytes(77);
    for (uint32_t selector : {2u, 3u, 0x80000000u, 0xFFFFFFFFu}) {
        const hash_msg descriptor = message_for(selector, message);
        GuardedBuffer out(32);
        EXPECT_EQ(hash_byte(&descriptor, out.data()), 0);
        EXPECT_TRUE(out.untouched());
    }
}

TEST(HashByte, UnknownSelectorReadsNoMessage) {
    const hash_msg descriptor{2, nullptr, 1, 5};
    EXPECT_EQ(hash_byte(&descriptor, nullptr), 0);
}

TEST(HashByte, NullMessageOfLengthZeroIsTheEmptyMessage) {
    for (uint32_t selector : {HASH_ALG_SM3, HASH_ALG_SHA256}) {
        const hash_msg descriptor{selector, nullptr, 0, 0};
        GuardedBuffer out(32);
        EXPECT_EQ(hash_byte(&descriptor, out.data()), 32);
        EXPECT_EQ(out.all(), digest(selector, {}));
    }
}

TEST(HashByte, KeptSha256OfANullMessageWithALengthIsTheDigestOfTheEmptyMessage) {
    const hash_msg descriptor{HASH_ALG_SHA256, nullptr, 0, 5};
    GuardedBuffer out(32);
    EXPECT_EQ(hash_byte(&descriptor, out.data()), 32);
    EXPECT_EQ(out.all(), model_sha256({}));
}

TEST(HashByte, KeptSha256IgnoresLenHigh) {
    const ByteString message = text_bytes("abc");
    const hash_msg descriptor{HASH_ALG_SHA256, message.data(), 1, 3};
    GuardedBuffer out(32);
    EXPECT_EQ(hash_byte(&descriptor, out.data()), 32);
    EXPECT_EQ(out.all(), model_sha256(message));
}

TEST(HashMintValue, NullModulusGivesTheWholeDigest) {
    for (uint32_t selector : {HASH_ALG_SM3, HASH_ALG_SHA256})
        for (size_t length : {0u, 3u, 64u, 100u}) {
            const ByteString message = test_bytes(length);
            const hash_msg descriptor = message_for(selector, message);
            GuardedRecord<mint> out;
            EXPECT_EQ(hash_mint_value(&descriptor, nullptr, out.get()), 0);
            EXPECT_TRUE(same_value(*out.get(), mint_of(digest_words(digest(selector, message))))) << length;
            EXPECT_TRUE(out.guards_intact());
        }
}

TEST(HashMintValue, Sm3ClearsTheWordsAboveTheDigest) {
    const ByteString message = text_bytes("abc");
    const hash_msg descriptor = message_for(HASH_ALG_SM3, message);
    GuardedRecord<mint> out;
    EXPECT_EQ(hash_mint_value(&descriptor, nullptr, out.get()), 0);
    EXPECT_TRUE(same_record(*out.get(), mint_of(digest_words(model_sm3(message)))));
}

TEST(HashMintValue, KeptSha256LeavesTheWordsAboveTheDigest) {
    const ByteString message = text_bytes("abc");
    const hash_msg descriptor = message_for(HASH_ALG_SHA256, message);
    GuardedRecord<mint> out;
    EXPECT_EQ(hash_mint_value(&descriptor, nullptr, out.get()), 0);
    mint expected = mint_of(digest_words(model_sha256(message)));
    for (uint32_t i = 8; i < MINT_WORDS; ++i) expected.words[i] = kPattern;
    EXPECT_TRUE(same_record(*out.get(), expected));
    EXPECT_TRUE(out.guards_intact());
}

TEST(HashMintValue, KeptSha256ValueIsNotTrimmed) {
    const ByteString message = text_bytes(kSha256Zero);
    ASSERT_EQ(to_hex(model_sha256(message)), kSha256ZeroDigest);
    const hash_msg descriptor = message_for(HASH_ALG_SHA256, message);
    GuardedRecord<mint> out;
    EXPECT_EQ(hash_mint_value(&descriptor, nullptr, out.get()), 0);
    EXPECT_EQ(out->len, 8u);
    EXPECT_EQ(out->words[7], 0u);
    EXPECT_EQ(out->words[6], 0xFA0A9521u);
    EXPECT_EQ(out->words[0], 0xBB14C031u);
    for (uint32_t i = 8; i < MINT_WORDS; ++i) EXPECT_EQ(out->words[i], kPattern);
}

TEST(HashMintValue, Sm3DropsALeadingZeroWord) {
    const ByteString message = text_bytes(kSm3Zero);
    ASSERT_EQ(to_hex(model_sm3(message)), kSm3ZeroDigest);
    const hash_msg descriptor = message_for(HASH_ALG_SM3, message);
    GuardedRecord<mint> out;
    EXPECT_EQ(hash_mint_value(&descriptor, nullptr, out.get()), 0);
    EXPECT_TRUE(same_record(*out.get(), mint_from_hex(kSm3ZeroDigest)));
    EXPECT_EQ(out->len, 7u);
}

// A value below the modulus passes the reduction unchanged, including its leading zero word.
TEST(HashMintValue, KeptLeadingZeroWordPassesALargerModulus) {
    const ByteString message = text_bytes(kSha256Zero);
    const hash_msg descriptor = message_for(HASH_ALG_SHA256, message);
    const mint modulus = mint_from_hex(kP256Order);
    mint out{};
    EXPECT_EQ(hash_mint_value(&descriptor, &modulus, &out), 0);
    EXPECT_TRUE(same_value(out, mint_of(digest_words(from_hex(kSha256ZeroDigest)))));
    EXPECT_EQ(out.len, 8u);
}

// Eight words compared with seven: the value is reduced, and the result is trimmed.
TEST(HashMintValue, LeadingZeroWordIsReducedByAShorterModulus) {
    const ByteString message = text_bytes(kSha256Zero);
    const hash_msg descriptor = message_for(HASH_ALG_SHA256, message);
    const std::vector<uint32_t> value = digest_words(from_hex(kSha256ZeroDigest));
    const mint larger = mint_from_hex("fb" + std::string(54, '0'));
    const mint smaller = mint_from_hex("fa" + std::string(54, '0'));
    mint out{};
    EXPECT_EQ(hash_mint_value(&descriptor, &larger, &out), 0);
    EXPECT_TRUE(same_value(out, mint_from_hex(kSha256ZeroDigest)));
    EXPECT_EQ(hash_mint_value(&descriptor, &smaller, &out), 0);
    EXPECT_EQ(mint_to_hex(out), mint_to_hex(mint_of(model_remainder(value, words_of(smaller)))));
}

TEST(HashMintValue, SmallerModulusReducesTheDigest) {
    for (uint32_t selector : {HASH_ALG_SM3, HASH_ALG_SHA256})
        for (const char *text : {"1", "7", "fffffffb", "100000000", kP192Order,
                                 "8000000000000000000000000000000000000000000000000000000000000001"}) {
            const mint modulus = mint_from_hex(text);
            const ByteString message = test_bytes(30, selector + 3);
            const hash_msg descriptor = message_for(selector, message);
            const std::vector<uint32_t> value = digest_words(digest(selector, message));
            const mint expected = mint_of(model_remainder(value, words_of(modulus)));
            GuardedRecord<mint> out;
            EXPECT_EQ(hash_mint_value(&descriptor, &modulus, out.get()), 0);
            EXPECT_EQ(mint_to_hex(*out.get()), mint_to_hex(expected)) << text;
            EXPECT_TRUE(out.guards_intact());
        }
}

// For a 192-bit order the whole digest is reduced; the usual rule would drop the last 64 bits.
TEST(HashMintValue, KeptWholeDigestWithoutTruncation) {
    const ByteString message = text_bytes("abc");
    const mint modulus = mint_from_hex(kP192Order);
    const hash_msg descriptor = message_for(HASH_ALG_SHA256, message);
    mint out{};
    EXPECT_EQ(hash_mint_value(&descriptor, &modulus, &out), 0);
    const std::vector<uint32_t> value = digest_words(model_sha256(message));
    EXPECT_EQ(mint_to_hex(out), mint_to_hex(mint_of(model_remainder(value, words_of(modulus)))));
    const std::vector<uint32_t> leftmost(value.begin() + 2, value.end());
    EXPECT_NE(mint_to_hex(out), mint_to_hex(mint_of(model_remainder(leftmost, words_of(modulus)))));
}

TEST(HashMintValue, ModulusIsNotWritten) {
    const mint modulus = mint_from_hex(kP192Order);
    const ByteString message = text_bytes("abc");
    const hash_msg descriptor = message_for(HASH_ALG_SHA256, message);
    mint out{};
    EXPECT_EQ(hash_mint_value(&descriptor, &modulus, &out), 0);
    EXPECT_TRUE(same_record(modulus, mint_from_hex(kP192Order)));
}

TEST(HashMintValue, ZeroModulusLeavesTheDigestUnreduced) {
    const ByteString message = text_bytes("abc");
    mint one_word_zero{};
    one_word_zero.len = 1;
    for (const mint &modulus : {mint{}, one_word_zero}) {
        const hash_msg descriptor = message_for(HASH_ALG_SM3, message);
        mint out{};
        EXPECT_EQ(hash_mint_value(&descriptor, &modulus, &out), 0);
        EXPECT_TRUE(same_value(out, mint_of(digest_words(model_sm3(message)))));
    }
}

TEST(HashMintValue, UnknownSelectorReturnsMinusOneAndLeavesTheOutput) {
    const ByteString message = text_bytes("abc");
    const mint modulus = mint_from_hex("7");
    for (uint32_t selector : {2u, 3u, 0xFFFFFFFFu})
        for (const mint *reduce_by : {&modulus, static_cast<const mint *>(nullptr)}) {
            const hash_msg descriptor = message_for(selector, message);
            GuardedRecord<mint> out;
            EXPECT_EQ(hash_mint_value(&descriptor, reduce_by, out.get()), -1);
            EXPECT_TRUE(out.unchanged());
        }
}

TEST(HashMintValue, UnknownSelectorDoesNotReduceWhatTheOutputHolds) {
    const hash_msg descriptor{2, nullptr, 0, 0};
    const mint modulus = mint_from_hex("7");
    mint out = mint_from_hex("1234");
    EXPECT_EQ(hash_mint_value(&descriptor, &modulus, &out), -1);
    EXPECT_TRUE(same_record(out, mint_from_hex("1234")));
}

TEST(HashMintValue, KeptSha256IgnoresLenHigh) {
    const ByteString message = text_bytes("abc");
    const hash_msg descriptor{HASH_ALG_SHA256, message.data(), 1, 3};
    mint out{};
    EXPECT_EQ(hash_mint_value(&descriptor, nullptr, &out), 0);
    EXPECT_TRUE(same_value(out, mint_of(digest_words(model_sha256(message)))));
}

}  // namespace

}  // namespace zokecc_test::select_test

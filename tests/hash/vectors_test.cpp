// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Every standard vector of SHA-256, SM3 and HMAC, through every call that can carry it.
#include <gtest/gtest.h>
#include <zokecc/hash.h>

#include "hash/sha256.h"
#include "tests/hash/helpers.h"
#include "tests/support/model_hash.h"
#include "tests/support/vector_file.h"

namespace zokecc_test::vectors_test {

namespace {

struct DigestCase {
    ByteString message, digest;
};

std::vector<DigestCase> digest_cases(const std::string &file) {
    std::vector<DigestCase> cases;
    for (const VectorBlock &block : read_vectors(file)) {
        const ByteString unit = block.bytes("Msg");
        ByteString message;
        for (unsigned i = block.has("Repeat") ? block.decimal("Repeat") : 1; i > 0; --i)
            message.insert(message.end(), unit.begin(), unit.end());
        EXPECT_EQ(message.size(), block.decimal("Len")) << file;
        cases.push_back({message, block.bytes("MD")});
    }
    return cases;
}

const std::vector<DigestCase> &sha256_cases() {
    static const std::vector<DigestCase> cases = digest_cases("sha256.rsp");
    return cases;
}
const std::vector<DigestCase> &sm3_cases() {
    static const std::vector<DigestCase> cases = digest_cases("sm3.rsp");
    return cases;
}

// Runs call(message, out) on every case; it must write the digest and nothing else.
template <class Call>
void expect_digests(const std::vector<DigestCase> &cases, Call call) {
    for (const DigestCase &one : cases) {
        GuardedBuffer out(48);
        call(one.message, out.data());
        EXPECT_EQ(to_hex(out.first(32)), to_hex(one.digest)) << "message of " << one.message.size();
        EXPECT_TRUE(out.untouched_from(32)) << "message of " << one.message.size();
    }
}

// Runs call(key, message, out, length) on every case of an HMAC file.
template <class Call>
void expect_macs(const std::string &file, size_t count, Call call) {
    const std::vector<VectorBlock> blocks = read_vectors(file);
    EXPECT_EQ(blocks.size(), count);
    for (const VectorBlock &block : blocks) {
        const uint32_t length = block.decimal("MacLen");
        GuardedBuffer out(48);
        call(block.bytes("Key"), block.bytes("Msg"), out.data(), length);
        EXPECT_EQ(to_hex(out.first(length)), block.text("Mac")) << "key " << block.text("Key");
        EXPECT_TRUE(out.untouched_from(length)) << "key " << block.text("Key");
    }
}

TEST(StandardVectors, AllOfThemArePresent) {
    EXPECT_EQ(sha256_cases().size(), 137u);
    EXPECT_EQ(sm3_cases().size(), 107u);
}

TEST(MhashSha256, AgreesWithEveryStandardVector) {
    expect_digests(sha256_cases(), [](const ByteString &message, uint8_t *out) {
        EXPECT_EQ(mhash_sha256(message.data(), length_of(message), out), 0u);
    });
}

TEST(HashByte, Sha256AgreesWithEveryStandardVector) {
    expect_digests(sha256_cases(), [](const ByteString &message, uint8_t *out) {
        const hash_msg descriptor = message_for(HASH_ALG_SHA256, message);
        EXPECT_EQ(hash_byte(&descriptor, out), 32);
    });
}

TEST(ZokSha256, AgreesWithEveryStandardVector) {
    expect_digests(sha256_cases(), [](const ByteString &message, uint8_t *out) {
        uint32_t out_len = 0;
        EXPECT_EQ(ZOK_Sha256(any_session(), message.data(), length_of(message), out, &out_len), 0u);
        EXPECT_EQ(out_len, 32u);
    });
}

TEST(Sha256Update, PiecesOfSixtyOneBytesAgreeWithEveryStandardVector) {
    expect_digests(sha256_cases(), [](const ByteString &message, uint8_t *out) {
        sha256_ctx context;
        EXPECT_EQ(sha256_init(&context), 0);
        for (size_t at = 0; at < message.size(); at += 61) {
            const size_t count = message.size() - at < 61 ? message.size() - at : 61;
            EXPECT_EQ(sha256_update(&context, message.data() + at, static_cast<uint32_t>(count)), 0);
        }
        EXPECT_EQ(sha256_result(&context, out), 0);
    });
}

TEST(Sm3Hash, AgreesWithEveryStandardVector) {
    expect_digests(sm3_cases(), [](const ByteString &message, uint8_t *out) {
        const sm3_msg descriptor = sm3_message(message);
        EXPECT_EQ(sm3_hash(&descriptor, out), 0u);
    });
}

TEST(HashByte, Sm3AgreesWithEveryStandardVector) {
    expect_digests(sm3_cases(), [](const ByteString &message, uint8_t *out) {
        const hash_msg descriptor = message_for(HASH_ALG_SM3, message);
        EXPECT_EQ(hash_byte(&descriptor, out), 32);
    });
}

TEST(ZokSm3, AgreesWithEveryStandardVector) {
    expect_digests(sm3_cases(), [](const ByteString &message, uint8_t *out) {
        uint32_t out_len = 0;
        EXPECT_EQ(ZOK_SM3(any_session(), message.data(), length_of(message), out, &out_len), 0u);
        EXPECT_EQ(out_len, 32u);
    });
}

TEST(MhmacSha256, AgreesWithEveryStandardVector) {
    expect_macs("hmac_sha256.rsp", 65,
                [](const ByteString &key, const ByteString &message, uint8_t *out, uint32_t length) {
                    EXPECT_EQ(mhmac_sha256(message.data(), signed_length_of(message), key.data(),
                                           signed_length_of(key), out, length),
                              0);
                });
}

TEST(ZokHmacSha256, AgreesWithEveryStandardVector) {
    expect_macs("hmac_sha256.rsp", 65,
                [](const ByteString &key, const ByteString &message, uint8_t *out, uint32_t length) {
                    EXPECT_EQ(ZOK_HmacSha256(any_session(), key.data(), signed_length_of(key), message.data(),
                                             signed_length_of(message), out, length),
                              0u);
                });
}

TEST(ZokHmacSm3, AgreesWithEveryStandardVector) {
    expect_macs("hmac_sm3.rsp", 40,
                [](const ByteString &key, const ByteString &message, uint8_t *out, uint32_t length) {
                    EXPECT_EQ(ZOK_HMAC_SM3(any_session(), message.data(), length_of(message), key.data(),
                                           length_of(key), out, length),
                              0u);
                });
}

// The other tests of this folder rely on the model, so it must pass the vectors, too.
// Two blocks' worth of every kind of padding is enough; the long messages only cost time.
TEST(ModelHash, AgreesWithTheStandardVectorsUpToTwoHundredBytes) {
    for (const DigestCase &one : sha256_cases())
        if (one.message.size() <= 200) {
            EXPECT_EQ(model_sha256(one.message), one.digest) << one.message.size();
        }
    for (const DigestCase &one : sm3_cases())
        if (one.message.size() <= 200) {
            EXPECT_EQ(model_sm3(one.message), one.digest) << one.message.size();
        }
    for (const VectorBlock &block : read_vectors("hmac_sha256.rsp")) {
        const ByteString mac = model_hmac_sha256(block.bytes("Key"), block.bytes("Msg"));
        EXPECT_EQ(shortened(mac, block.decimal("MacLen")), block.bytes("Mac"));
    }
    for (const VectorBlock &block : read_vectors("hmac_sm3.rsp")) {
        const ByteString mac = model_hmac_sm3(block.bytes("Key"), block.bytes("Msg"));
        EXPECT_EQ(shortened(mac, block.decimal("MacLen")), block.bytes("Mac"));
    }
}

}  // namespace

}  // namespace zokecc_test::vectors_test

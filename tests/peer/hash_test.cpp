// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SHA-256, SM3 and HMAC with both, compared with OpenSSL for messages and keys of many lengths.
#include <gtest/gtest.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <zokecc/hash.h>

#include <random>

#include "tests/support/guarded_buffer.h"
#include "tests/support/hex.h"

namespace zokecc_test::hash_test {

namespace {

constexpr uint32_t kSeed = 20240229;
constexpr int kRounds = 300;
constexpr uint32_t kLongest = 4096;

// Lengths up to kLongest, every fourth of them close to a multiple of the block.
class Draws {
public:
    uint32_t length() {
        const uint32_t drawn = number() % (kLongest + 1);
        if (number() % 4 != 0) return drawn;
        const uint32_t near = drawn / 64 * 64 + number() % 17 + 48;
        return near > kLongest ? kLongest : near;
    }
    ByteString bytes(uint32_t count) {
        ByteString out(count);
        for (uint8_t &byte : out) byte = static_cast<uint8_t>(number());
        return out;
    }
    uint32_t number() { return static_cast<uint32_t>(engine_()); }

private:
    std::mt19937 engine_{kSeed};
};

ByteString peer_digest(const EVP_MD *digest, const ByteString &message) {
    ByteString out(32);
    unsigned size = 0;
    EXPECT_EQ(EVP_Digest(message.data(), message.size(), out.data(), &size, digest, nullptr), 1);
    EXPECT_EQ(size, 32u);
    return out;
}

ByteString peer_mac(const EVP_MD *digest, const ByteString &key, const ByteString &message) {
    static const uint8_t nothing = 0;
    ByteString out(32);
    unsigned size = 0;
    EXPECT_NE(HMAC(digest, key.empty() ? &nothing : key.data(), static_cast<int>(key.size()), message.data(),
                   message.size(), out.data(), &size),
              nullptr);
    EXPECT_EQ(size, 32u);
    return out;
}

// Any non-null handle will do.
void *session() {
    static int place = 0;
    return &place;
}

TEST(PeerSha256, DigestsAgree) {
    Draws draws;
    for (int round = 0; round < kRounds; ++round) {
        const ByteString message = draws.bytes(draws.length());
        ByteString out(32);
        EXPECT_EQ(mhash_sha256(message.data(), static_cast<uint32_t>(message.size()), out.data()), 0u);
        EXPECT_EQ(to_hex(out), to_hex(peer_digest(EVP_sha256(), message)))
            << "seed " << kSeed << " round " << round << " length " << message.size();
    }
}

TEST(PeerSm3, DigestsAgree) {
    Draws draws;
    for (int round = 0; round < kRounds; ++round) {
        ByteString message = draws.bytes(draws.length());
        const sm3_msg descriptor{message.data(), 0, static_cast<uint32_t>(message.size())};
        ByteString out(32);
        EXPECT_EQ(sm3_hash(&descriptor, out.data()), 0u);
        EXPECT_EQ(to_hex(out), to_hex(peer_digest(EVP_sm3(), message)))
            << "seed " << kSeed << " round " << round << " length " << message.size();
    }
}

TEST(PeerHmacSha256, MacsAgree) {
    Draws draws;
    for (int round = 0; round < kRounds; ++round) {
        const ByteString message = draws.bytes(draws.length());
        const ByteString key = draws.bytes(draws.number() % 200);
        ByteString out(32);
        EXPECT_EQ(mhmac_sha256(message.data(), static_cast<int32_t>(message.size()), key.data(),
                               static_cast<int32_t>(key.size()), out.data(), 32),
                  0);
        EXPECT_EQ(to_hex(out), to_hex(peer_mac(EVP_sha256(), key, message)))
            << "seed " << kSeed << " round " << round << " key length " << key.size();
    }
}

TEST(PeerHmacSm3, MacsAgree) {
    Draws draws;
    for (int round = 0; round < kRounds; ++round) {
        const ByteString message = draws.bytes(draws.length());
        const ByteString key = draws.bytes(draws.number() % 200);
        ByteString out(32);
        EXPECT_EQ(ZOK_HMAC_SM3(session(), message.data(), static_cast<uint32_t>(message.size()), key.data(),
                               static_cast<uint32_t>(key.size()), out.data(), 32),
                  0u);
        EXPECT_EQ(to_hex(out), to_hex(peer_mac(EVP_sm3(), key, message)))
            << "seed " << kSeed << " round " << round << " key length " << key.size();
    }
}

}  // namespace

}  // namespace zokecc_test::hash_test

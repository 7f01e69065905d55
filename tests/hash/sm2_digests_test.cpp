// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The hashes of SM2 encryption and key exchange: check value, transcript and confirmations.
#include "hash/sm2_digests.h"

#include <gtest/gtest.h>

#include "tests/support/hex.h"
#include "tests/support/kdf_model.h"

namespace zokecc_test::sm2_digests_test {

using zokecc::ExchangePublics;
using zokecc::PointBytes;
using zokecc::Transcript;

namespace {

constexpr uint32_t kKnown[] = {HASH_ALG_SM3, HASH_ALG_SHA256};

PointBytes point_of(const ByteString &x, const ByteString &y) {
    PointBytes out{};
    out.len = static_cast<uint32_t>(x.size());
    std::memcpy(out.xy, x.data(), x.size());
    std::memcpy(out.xy + out.len, y.data(), y.size());
    return out;
}

zokecc::Bytes view(const ByteString &bytes) { return {bytes.data(), bytes.size()}; }

ByteString hash_of(const Transcript &transcript, uint32_t alg) {
    GuardedBuffer out(32);
    EXPECT_EQ(transcript.hash(alg, out.data()), 32);
    EXPECT_TRUE(out.untouched_from(32));
    return out.all();
}

}  // namespace

TEST(IsAllZero, SeesEveryByte) {
    ByteString bytes(70, 0);
    EXPECT_TRUE(zokecc::is_all_zero(bytes.data(), 70));
    for (size_t i = 0; i < bytes.size(); ++i)
        for (uint8_t value : {uint8_t{1}, uint8_t{0x80}}) {
            bytes[i] = value;
            EXPECT_FALSE(zokecc::is_all_zero(bytes.data(), 70)) << i;
            EXPECT_TRUE(zokecc::is_all_zero(bytes.data(), static_cast<uint32_t>(i))) << i;
            bytes[i] = 0;
        }
}

TEST(IsAllZero, NoBytesAreAllZero) { EXPECT_TRUE(zokecc::is_all_zero(nullptr, 0)); }

TEST(IsKnownHash, OnlyZeroAndOne) {
    EXPECT_TRUE(zokecc::is_known_hash(0));
    EXPECT_TRUE(zokecc::is_known_hash(1));
    for (uint32_t selector : {2u, 3u, 0x100u, 0x80000000u, 0xFFFFFFFFu})
        EXPECT_FALSE(zokecc::is_known_hash(selector)) << selector;
}

TEST(Transcript, HashesItsPartsInOrder) {
    const ByteString first = test_bytes(3, 1), second = test_bytes(70, 2);
    for (uint32_t alg : kKnown) {
        Transcript transcript;
        transcript.put(first.data(), 3).put(view(second)).put(nullptr, 0);
        EXPECT_EQ(transcript.size(), 73u);
        EXPECT_EQ(to_hex(transcript.data(), 73), to_hex(joined({first, second})));
        EXPECT_EQ(to_hex(hash_of(transcript, alg)), to_hex(selected_digest(alg, joined({first, second}))));
    }
}

TEST(Transcript, EmptyOneHashesTheEmptyMessage) {
    Transcript transcript;
    EXPECT_EQ(transcript.size(), 0u);
    for (uint32_t alg : kKnown)
        EXPECT_EQ(to_hex(hash_of(transcript, alg)), to_hex(selected_digest(alg, ByteString())));
}

TEST(Transcript, HoldsFourHundredAndFortyEightBytes) {
    const ByteString bytes = test_bytes(448);
    Transcript transcript;
    transcript.put(bytes.data(), 400).put(bytes.data() + 400, 48);
    EXPECT_EQ(transcript.size(), 448u);
    EXPECT_EQ(to_hex(hash_of(transcript, HASH_ALG_SM3)), to_hex(model_sm3(bytes)));
}

TEST(Transcript, PartThatDoesNotFitIsLeftOut) {
    const ByteString bytes = test_bytes(449);
    Transcript transcript;
    transcript.put(bytes.data(), 449);
    EXPECT_EQ(transcript.size(), 0u);
    transcript.put(bytes.data(), 440).put(bytes.data(), 9).put(bytes.data(), 0xFFFFFFFFu);
    EXPECT_EQ(transcript.size(), 440u);
    transcript.put(bytes.data() + 440, 8);
    EXPECT_EQ(to_hex(hash_of(transcript, HASH_ALG_SHA256)),
              to_hex(model_sha256(ByteString(bytes.begin(), bytes.begin() + 448))));
}

TEST(Transcript, UnknownHashWritesNothing) {
    Transcript transcript;
    GuardedBuffer out(32);
    EXPECT_EQ(transcript.hash(2, out.data()), 0);
    EXPECT_TRUE(out.untouched());
}

TEST(Sm2CheckValue, HashesXThenTheMessageThenY) {
    for (uint32_t alg : kKnown)
        for (size_t len : {size_t{20}, size_t{24}, size_t{28}, size_t{32}}) {
            const ByteString x = test_bytes(len, 1), y = test_bytes(len, 2), message = test_bytes(77, 3);
            const PointBytes point = point_of(x, y);
            GuardedBuffer work(77 + 2 * len), out(32);
            EXPECT_EQ(zokecc::sm2_check_value(alg, point, message.data(), 77, work.data(), out.data()), 32);
            const ByteString hashed = joined({x, message, y});
            EXPECT_EQ(to_hex(out.all()), to_hex(selected_digest(alg, hashed))) << len;
            EXPECT_EQ(to_hex(work.all()), to_hex(hashed)) << len;
            EXPECT_TRUE(work.untouched_from(77 + 2 * len)) << len;
            EXPECT_TRUE(out.untouched_from(32)) << len;
        }
}

TEST(Sm2CheckValue, UnknownHashWritesNoDigest) {
    const PointBytes point = point_of(test_bytes(20, 1), test_bytes(20, 2));
    const ByteString message = test_bytes(5);
    GuardedBuffer work(45), out(32);
    EXPECT_EQ(zokecc::sm2_check_value(2, point, message.data(), 5, work.data(), out.data()), 0);
    EXPECT_TRUE(out.untouched());
}

TEST(Sm2ExchangeHash, HashesXOfTheSharedPointThenBothUsersThenBothPoints) {
    const ByteString x = test_bytes(24, 1), y = test_bytes(24, 2), ZA = test_bytes(32, 3),
                     ZB = test_bytes(9, 4);
    const ByteString x1 = test_bytes(24, 5), y1 = test_bytes(24, 6), x2 = test_bytes(24, 7),
                     y2 = test_bytes(24, 8);
    const ExchangePublics publics = {view(ZA), view(ZB), x1.data(), y1.data(), x2.data(), y2.data()};
    for (uint32_t alg : kKnown) {
        GuardedBuffer out(32);
        EXPECT_EQ(zokecc::sm2_exchange_hash(alg, point_of(x, y), publics, out.data()), 32);
        EXPECT_EQ(to_hex(out.all()), to_hex(selected_digest(alg, joined({x, ZA, ZB, x1, y1, x2, y2}))));
        EXPECT_TRUE(out.untouched_from(32));
    }
}

TEST(Sm2ExchangeHash, UsersMayBeEmpty) {
    const ByteString x = test_bytes(32, 1), y = test_bytes(32, 2), part = test_bytes(32, 5);
    const ExchangePublics publics = {{}, {}, part.data(), part.data(), part.data(), part.data()};
    GuardedBuffer out(32);
    EXPECT_EQ(zokecc::sm2_exchange_hash(HASH_ALG_SM3, point_of(x, y), publics, out.data()), 32);
    EXPECT_EQ(to_hex(out.all()), to_hex(model_sm3(joined({x, part, part, part, part}))));
}

TEST(Sm2ExchangeHash, UnknownHashWritesNothing) {
    const ByteString part = test_bytes(20);
    const ExchangePublics publics = {{}, {}, part.data(), part.data(), part.data(), part.data()};
    GuardedBuffer out(32);
    EXPECT_EQ(zokecc::sm2_exchange_hash(7, point_of(part, part), publics, out.data()), 0);
    EXPECT_TRUE(out.untouched());
}

TEST(Sm2Confirmation, HashesThePrefixThenYThenTheTail) {
    EXPECT_EQ(zokecc::kResponderPrefix, 0x02);
    EXPECT_EQ(zokecc::kInitiatorPrefix, 0x03);
    const ByteString x = test_bytes(28, 1), y = test_bytes(28, 2), tail = test_bytes(32, 3);
    for (uint32_t alg : kKnown)
        for (uint8_t prefix : {zokecc::kResponderPrefix, zokecc::kInitiatorPrefix}) {
            GuardedBuffer out(32);
            zokecc::sm2_confirmation(alg, prefix, point_of(x, y), view(tail), out.data());
            EXPECT_EQ(to_hex(out.all()), to_hex(selected_digest(alg, joined({{prefix}, y, tail}))));
            EXPECT_TRUE(out.untouched_from(32));
        }
}

TEST(Sm2Confirmation, UnknownHashWritesNothing) {
    const ByteString part = test_bytes(20);
    GuardedBuffer out(32);
    zokecc::sm2_confirmation(2, 0x02, point_of(part, part), view(part), out.data());
    EXPECT_TRUE(out.untouched());
}

TEST(AreEqual, EveryByteCounts) {
    const ByteString a(32, 0x5A);
    EXPECT_TRUE(zokecc::are_equal(a.data(), a.data(), 32));
    EXPECT_TRUE(zokecc::are_equal(a.data(), ByteString(32, 0x5A).data(), 32));
    for (size_t at = 0; at < a.size(); ++at) {
        for (unsigned bit = 0; bit < 8; ++bit) {
            ByteString b = a;
            b[at] = static_cast<uint8_t>(b[at] ^ (1u << bit));
            EXPECT_FALSE(zokecc::are_equal(a.data(), b.data(), 32)) << at << ", bit " << bit;
            EXPECT_TRUE(zokecc::are_equal(a.data(), b.data(), static_cast<uint32_t>(at)));
        }
    }
}

TEST(AreEqual, NothingEqualsNothing) { EXPECT_TRUE(zokecc::are_equal(nullptr, nullptr, 0)); }

}  // namespace zokecc_test::sm2_digests_test

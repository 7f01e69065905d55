// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// sm2_KeyExChg, the call for both roles: the key of the split calls, and confirmation values over
// the digest's working area with the peer's key after it. And sm2_RPoint, which never reads its scalar.
#include <gtest/gtest.h>

#include "tests/support/exchange_generations.h"
#include "tests/support/give_up.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::sm2_exchange_whole_test {

using namespace exchange;

namespace {

constexpr LegacyKeyCall kWhole[] = {kWholeInitiator, kWholeResponder};

// On the named curve of that length, where all words of the coordinates are nonzero.
ExchangeCase full_size_exchange(unsigned byte_len, uint32_t selector) {
    const char *const name = byte_len == 24 ? "secp192r1" : byte_len == 28 ? "secp224r1" : "sm2p256v1";
    for (const VectorBlock &block : exchange_vectors())
        if (block.text("Curve") == name && (block.text("Hash") == "SM3") == (selector == 0)) {
            const ExchangeCase out = vector_case(block);
            install(out.curve);
            return out;
        }
    give_up("no exchange on such a curve");
}

// The input of the confirmation hashes assembled by hand: 0x02 or 0x03, yU, the digest, 68 zero
// bytes, the flag, all of x with its count, and the remainder of 5 L + 64 bytes from y: none of it
// for coordinates of 24 bytes, 20 bytes for 28, and for 32 all of y and 8 zero bytes.
ByteString confirmation_by_hand(const ExchangeCase &exchange, uint8_t prefix, const ExchangeParty &peer) {
    const size_t L = exchange.curve.byte_len;
    ByteString y(peer.y.rbegin(), peer.y.rend());
    y.resize(L == 24 ? 0 : L == 28 ? 20 : 40);
    const ByteString x(peer.x.rbegin(), peer.x.rend());
    const ByteString message = joined({{prefix},
                                       exchange.yU,
                                       exchange.hashes().inner(),
                                       ByteString(68, 0),
                                       {0, 0, 0, 0},
                                       x,
                                       ByteString(19 * 4 - L, 0),
                                       {static_cast<uint8_t>(L / 4), 0, 0, 0},
                                       y});
    EXPECT_EQ(message.size(), 1 + L + 5 * L + 64);
    return exchange.selector == 0 ? model_sm3(message) : model_sha256(message);
}

// x unchanged, L zero bytes at the start of y, and the length L.
ByteString expected_record(uint32_t byte_len) {
    ecc_point_bytes out = point_record({}, ByteString{});
    std::memset(out.y, 0, byte_len);
    out.length = byte_len;
    const uint8_t *bytes = reinterpret_cast<const uint8_t *>(&out);
    return ByteString(bytes, bytes + sizeof out);
}

void expect_zero_bytes_in_y(const uint8_t *scalar, uint32_t count, uint32_t byte_len) {
    GuardedRecord<ecc_point_bytes> out;
    EXPECT_EQ(sm2_RPoint(scalar, count, out.get()), 0);
    EXPECT_EQ(to_hex(out.bytes()), to_hex(expected_record(byte_len)));
    EXPECT_TRUE(out.guards_intact());
}

}  // namespace

TEST(Sm2KeyExChg, KeptConfirmationCoversThePeerKeyInMemory) {
    for (unsigned byte_len : Legacy::kLengths)
        for (uint32_t selector : {0u, 1u}) {
            const ExchangeCase exchange = full_size_exchange(byte_len, selector);
            for (const LegacyKeyCall &call : kWhole) {
                LegacyExchange side(exchange, call.role, 45);
                expect_gives(side, call, exchange.hashes());
                EXPECT_TRUE(side.R_written.unchanged());
            }
        }
}

TEST(Sm2KeyExChg, KeptConfirmationInputPutTogetherByHand) {
    for (unsigned byte_len : Legacy::kLengths)
        for (uint32_t selector : {0u, 1u}) {
            const ExchangeCase exchange = full_size_exchange(byte_len, selector);
            for (const LegacyKeyCall &call : kWhole) {
                LegacyExchange side(exchange, call.role);
                ASSERT_EQ(side.whole(), 0);
                const ExchangeParty &peer = exchange.peer(call.role);
                EXPECT_EQ(text_of(side.value02), to_hex(confirmation_by_hand(exchange, 0x02, peer)));
                EXPECT_EQ(text_of(side.value03), to_hex(confirmation_by_hand(exchange, 0x03, peer)));
            }
        }
}

TEST(Sm2KeyExChg, KeptSidesNeverAgreeOnConfirmations) {
    for (unsigned byte_len : Legacy::kLengths)
        for (uint32_t selector : {0u, 1u}) {
            const ExchangeCase exchange = full_size_exchange(byte_len, selector);
            LegacyExchange initiator(exchange, Role::kInitiator);
            LegacyExchange responder(exchange, Role::kResponder);
            ASSERT_EQ(initiator.whole(), 0);
            ASSERT_EQ(responder.whole(), 0);
            EXPECT_EQ(text_of(initiator.key), text_of(responder.key));
            EXPECT_EQ(text_of(initiator.key), to_hex(exchange.hashes().key(initiator.key.size())));
            EXPECT_NE(text_of(initiator.value02), text_of(responder.value02));
            EXPECT_NE(text_of(initiator.value03), text_of(responder.value03));
            EXPECT_NE(text_of(initiator.value02), to_hex(exchange.hashes().confirmation(0x02)));
            EXPECT_NE(text_of(responder.value03), to_hex(exchange.hashes().confirmation(0x03)));
        }
}

TEST(Sm2KeyExChg, KeptConfirmationsOfOneWordCoordinatesCountOneWord) {
    // The image of a small coordinate: one word, eighteen zero words, and the count 1.
    for (unsigned byte_len : Legacy::kLengths) {
        const ExchangeCase exchange = small_exchange<Legacy>(byte_len);
        for (const LegacyKeyCall &call : kWhole) {
            LegacyExchange side(exchange, call.role, 45);
            expect_gives(side, call, exchange.hashes());
        }
    }
}

TEST(Sm2KeyExChg, EveryRoleButOneIsTheResponder) {
    const ExchangeCase exchange = small_exchange<Legacy>();
    for (uint32_t role : {0u, 2u, 3u, 0x80000001u, 0xFFFFFFFFu}) {
        LegacyExchange side(exchange, Role::kResponder);
        side.role = role;
        expect_gives(side, kWholeResponder, exchange.hashes());
    }
}

TEST(Sm2KeyExChg, RoleOnlyDecidesTheOrderOfTheRandomPoints) {
    const ExchangeCase exchange = small_exchange<Legacy>();
    LegacyExchange side(exchange, Role::kInitiator);
    side.role = 0;
    ExchangeHashes turned = exchange.hashes();
    std::swap(turned.x1, turned.x2);
    std::swap(turned.y1, turned.y2);
    expect_gives(side, kWholeInitiator, turned);
}

TEST(Sm2RPoint, KeptWritesZeroBytesToYOnly) {
    const ByteString scalar(32, 0x01);
    for (unsigned byte_len : Legacy::kLengths) {
        install(prime_group().curve(byte_len));
        expect_zero_bytes_in_y(scalar.data(), 32, byte_len);
    }
    install(curve("sm2p256v1"));
    expect_zero_bytes_in_y(scalar.data(), 32, 32);
}

TEST(Sm2RPoint, KeptCountIsIgnored) {
    install(prime_group().curve(32));
    const ByteString scalar = {0x07};  // nothing after it may be read
    for (uint32_t count : {0u, 1u, 77u, 0x80000000u, 0xFFFFFFFFu})
        expect_zero_bytes_in_y(scalar.data(), count, 32);
}

TEST(Sm2RPoint, KeptEarlierContentOfYBehindTheCoordinateStays) {
    install(prime_group().curve(24));
    ecc_point_bytes record = point_record(ByteString(65, 0x11), ByteString(65, 0x22));
    const ByteString scalar = {0x07};
    EXPECT_EQ(sm2_RPoint(scalar.data(), 1, &record), 0);
    EXPECT_EQ(to_hex(record.x, 65), to_hex(ByteString(65, 0x11)));
    EXPECT_EQ(to_hex(record.y, 65), to_hex(joined({ByteString(24, 0x00), ByteString(41, 0x22)})));
    EXPECT_EQ(record.length, 24u);
}

TEST(Sm2RPoint, KeptWithoutACurveOnlyTheLengthIsWritten) {
    uninstall();
    const ByteString scalar = {0x07};
    expect_zero_bytes_in_y(scalar.data(), 1, 0);
}

TEST(Sm2RPoint, NullPointersReturnOneWithoutACurveToo) {
    uninstall();
    GuardedRecord<ecc_point_bytes> out;
    EXPECT_EQ(sm2_RPoint(nullptr, 1, out.get()), 1);
    EXPECT_TRUE(out.unchanged());
}

}  // namespace zokecc_test::sm2_exchange_whole_test

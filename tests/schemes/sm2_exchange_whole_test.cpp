// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// sm2_KeyExChg, the call for both roles: the key of the split calls, and confirmation values over
// the digest's working area with the peer's key behind it.
#include <gtest/gtest.h>

#include "tests/support/legacy_exchange.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::sm2_exchange_whole_test {

using namespace exchange;

namespace {

constexpr Role kRoles[] = {Role::kInitiator, Role::kResponder};

// On the named curve of that length, where words of the coordinates are not zero.
ExchangeCase full_size_exchange(unsigned byte_len, uint32_t selector) {
    const char *const name = byte_len == 24 ? "secp192r1" : byte_len == 28 ? "secp224r1" : "sm2p256v1";
    for (const VectorBlock &block : exchange_vectors())
        if (block.text("Curve") == name && (block.text("Hash") == "SM3") == (selector == 0)) {
            const ExchangeCase out = vector_case(block);
            install(out.curve);
            return out;
        }
    throw std::out_of_range("no exchange on such a curve");
}

ExchangeCase small_exchange(unsigned byte_len = 32) {
    ExchangeCase out = tiny_case(prime_group(), byte_len, 0);
    install(out.curve);
    return out;
}

// The input of the confirmation hashes put together by hand: 0x02 or 0x03, yU, the digest, 68 zero
// bytes, the flag, all of x with its count, and what is left of 5 L + 64 bytes from y: none of it
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

}  // namespace

TEST(Sm2KeyExChg, KeptConfirmationCoversThePeerKeyInMemory) {
    for (unsigned byte_len : {24u, 28u, 32u})
        for (uint32_t selector : {0u, 1u}) {
            const ExchangeCase exchange = full_size_exchange(byte_len, selector);
            for (Role role : kRoles) {
                LegacyExchange side(exchange, role, 45);
                ASSERT_EQ(side.whole(), 0) << byte_len;
                expect_whole_results(side, exchange.hashes(), exchange.peer(role));
                EXPECT_TRUE(side.R_written.unchanged());
            }
        }
}

TEST(Sm2KeyExChg, KeptConfirmationInputPutTogetherByHand) {
    for (unsigned byte_len : {24u, 28u, 32u})
        for (uint32_t selector : {0u, 1u}) {
            const ExchangeCase exchange = full_size_exchange(byte_len, selector);
            for (Role role : kRoles) {
                LegacyExchange side(exchange, role);
                ASSERT_EQ(side.whole(), 0);
                const ExchangeParty &peer = exchange.peer(role);
                EXPECT_EQ(text_of(side.value02), to_hex(confirmation_by_hand(exchange, 0x02, peer)));
                EXPECT_EQ(text_of(side.value03), to_hex(confirmation_by_hand(exchange, 0x03, peer)));
            }
        }
}

TEST(Sm2KeyExChg, KeptSidesNeverAgreeOnConfirmations) {
    for (unsigned byte_len : {24u, 28u, 32u})
        for (uint32_t selector : {0u, 1u}) {
            const ExchangeCase exchange = full_size_exchange(byte_len, selector);
            LegacyExchange initiator(exchange, Role::kInitiator);
            LegacyExchange responder(exchange, Role::kResponder);
            ASSERT_EQ(initiator.whole(), 0);
            ASSERT_EQ(responder.whole(), 0);
            EXPECT_EQ(text_of(initiator.key), text_of(responder.key));
            EXPECT_NE(text_of(initiator.value02), text_of(responder.value02));
            EXPECT_NE(text_of(initiator.value03), text_of(responder.value03));
            EXPECT_NE(text_of(initiator.value02), to_hex(exchange.hashes().confirmation(0x02)));
            EXPECT_NE(text_of(responder.value03), to_hex(exchange.hashes().confirmation(0x03)));
        }
}

TEST(Sm2KeyExChg, KeptConfirmationsOfOneWordCoordinatesCountOneWord) {
    // The image of a small coordinate: one word, eighteen zero words, and the count 1.
    for (unsigned byte_len : {24u, 28u, 32u}) {
        const ExchangeCase exchange = small_exchange(byte_len);
        for (Role role : kRoles) {
            LegacyExchange side(exchange, role, 45);
            ASSERT_EQ(side.whole(), 0);
            expect_whole_results(side, exchange.hashes(), exchange.peer(role));
        }
    }
}

TEST(Sm2KeyExChg, KeyIsThatOfTheSplitCalls) {
    const ExchangeCase exchange = full_size_exchange(32, 1);
    LegacyExchange split(exchange, Role::kInitiator, 100);
    ASSERT_EQ(split.a4_10(), 0);
    for (Role role : kRoles) {
        LegacyExchange side(exchange, role, 100);
        ASSERT_EQ(side.whole(), 0);
        EXPECT_EQ(text_of(side.key), text_of(split.key));
    }
}

TEST(Sm2KeyExChg, EveryRoleButOneIsTheResponder) {
    const ExchangeCase exchange = small_exchange();
    for (uint32_t role : {0u, 2u, 3u, 0x80000001u, 0xFFFFFFFFu}) {
        LegacyExchange side(exchange, Role::kResponder);
        side.role = role;
        ASSERT_EQ(side.whole(), 0) << role;
        expect_whole_results(side, exchange.hashes(), exchange.A);
    }
}

TEST(Sm2KeyExChg, RoleOnlyDecidesTheOrderOfTheRandomPoints) {
    const ExchangeCase exchange = small_exchange();
    LegacyExchange side(exchange, Role::kInitiator);
    side.role = 0;
    ASSERT_EQ(side.whole(), 0);
    ExchangeHashes turned = exchange.hashes();
    std::swap(turned.x1, turned.x2);
    std::swap(turned.y1, turned.y2);
    expect_whole_results(side, turned, exchange.B);
}

TEST(Sm2KeyExChg, ZValuesAreTakenInArgumentOrderForBothRoles) {
    const ExchangeCase exchange = small_exchange();
    ExchangeHashes swapped = exchange.hashes();
    std::swap(swapped.ZA, swapped.ZB);
    for (Role role : kRoles) {
        LegacyExchange side(exchange, role);
        std::swap(side.ZA, side.ZB);
        ASSERT_EQ(side.whole(), 0);
        expect_whole_results(side, swapped, exchange.peer(role));
    }
}

TEST(Sm2KeyExChg, DrawsNoNumber) {
    const ExchangeCase exchange = small_exchange();
    FakeEntropy entropy;
    for (Role role : kRoles) {
        LegacyExchange side(exchange, role);
        ASSERT_EQ(side.whole(), 0);
    }
    EXPECT_TRUE(entropy.call_order.empty());
    EXPECT_EQ(entropy.number_calls, 0u);
}

TEST(Sm2KeyExChg, InputsStayAsTheyWere) {
    const ExchangeCase exchange = small_exchange();
    for (Role role : kRoles) {
        LegacyExchange side(exchange, role);
        const LegacyExchange before(exchange, role);
        ASSERT_EQ(side.whole(), 0);
        EXPECT_EQ(std::memcmp(&side.R_record, &before.R_record, sizeof before.R_record), 0);
        EXPECT_EQ(std::memcmp(&side.peerR_record, &before.peerR_record, sizeof before.peerR_record), 0);
        EXPECT_EQ(std::memcmp(&side.peerP_record, &before.peerP_record, sizeof before.peerP_record), 0);
        EXPECT_EQ(to_hex(side.d->bytes, side.d->length), to_hex(exchange.own(role).d));
        EXPECT_EQ(to_hex(side.r->bytes, side.r->length), to_hex(exchange.own(role).r));
    }
}

}  // namespace zokecc_test::sm2_exchange_whole_test

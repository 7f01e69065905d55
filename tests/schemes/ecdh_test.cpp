// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Ecdh_KeyExChg: capacities, ranges, and the three things it does not check: the peer's
// point, a key of zero, and whether the multiplication succeeded.
#include "tests/support/emulated.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/legacy_records.h"
#include "tests/support/small_group.h"

namespace zokecc_test::ecdh_test {

namespace {

// One call with 100 guarded bytes of output; the declared size is `capacity`.
struct Exchange {
    Exchange(const ByteString &key, const PointBytes &point) : d(key), peer(point) {}
    Exchange(uint32_t key, const TinyPoint &P, size_t size = 32)
        : Exchange(number_bytes(key, size), PointBytes(P.x, P.y, size)) {}

    int32_t run(uint32_t capacity = 100) {
        int32_t written = Ecdh_KeyExChg(d.get(), peer.get(), out.data(), capacity);
        EXPECT_TRUE(d.intact() && peer.intact());
        return written;
    }
    void expect_secret(const ByteString &secret, uint32_t capacity = 100) {
        EXPECT_EQ(run(capacity), static_cast<int32_t>(secret.size()));
        EXPECT_EQ(to_hex(out.first(secret.size())), to_hex(secret));
        EXPECT_TRUE(out.untouched_from(secret.size()));
    }
    void expect_refused(uint32_t capacity = 100) {
        EXPECT_EQ(run(capacity), -1);
        EXPECT_TRUE(out.untouched());
    }

    Scalar d;
    PointBytes peer;
    GuardedBuffer out{100};
};

// Infinity reads as x = 0.
uint32_t x_of(const TinyPoint &P) { return P.infinite ? 0 : P.x; }

mint order_minus(uint32_t count) {
    mint out = global_curve.n;
    out.words[0] -= count;
    return out;
}

}  // namespace

TEST(EcdhKeyExChg, EveryKeyWithSeveralPeers) {
    install_small(32);
    for (uint32_t peer : {1u, 2u, 123u, 990u}) {
        const TinyPoint P = small_multiple(peer);
        for (uint32_t d = kLeastKey; d < kSmallN; d += kStride) {
            SCOPED_TRACE(d);
            const TinyPoint S = kHardened ? exact_multiple(d, P) : small_group().library_window(small(d), P);
            Exchange(d, P).expect_secret(number_bytes(x_of(S), 32));
        }
    }
}

TEST(EcdhKeyExChg, CapacityOfTheCurveLengthIsEnough) {
    for (unsigned byte_len : kLegacyLengths) {
        install_small(byte_len);
        const ByteString secret = number_bytes(small_multiple(33).x, byte_len);
        for (uint32_t capacity : {byte_len, byte_len + 1, 0x80000000u, 0xFFFFFFFFu})
            Exchange(3, small_multiple(11), byte_len).expect_secret(secret, capacity);
    }
}

TEST(EcdhKeyExChg, LengthsOfKeyAndPeerAreTheirOwn) {
    install_small(32);
    const TinyPoint P = small_multiple(11);
    for (size_t key_length : {1u, 33u, 76u})
        for (size_t peer_length : {2u, 24u, 65u})
            Exchange(number_bytes(3, key_length), PointBytes(P.x, P.y, peer_length))
                .expect_secret(number_bytes(small_multiple(33).x, 32));
}

TEST(EcdhKeyExChg, KeptZeroKeyGivesAZeroSecret) {
    install_small(32);
    for (const ByteString &zero : {ByteString(), ByteString(1, 0), ByteString(32, 0)})
        Exchange(zero, PointBytes(2, 365, 32)).expect_secret(ByteString(32, 0));
}

TEST(EcdhKeyExChg, KeptPeerPointIsNotValidated) {
    // A point of another curve is multiplied on that curve.
    install_small(32);
    for (uint32_t b : {24u, 26u, 500u}) {
        const TinyCurve other(kSmallP, 2, b);
        for (size_t index : {1u, 40u, 200u}) {
            const TinyPoint P = other.points().at(index);
            for (uint32_t d : {1u, 2u, 3u, 123u, 990u})
                Exchange(d, P).expect_secret(number_bytes(x_of(other.library_window(small(d), P)), 32));
        }
    }
}

TEST(EcdhKeyExChg, KeptPeerZeroZeroGivesAZeroSecret) {
    // A point of order 2 on the curve with b = 0: every multiple has x = 0.
    install_small(32);
    for (uint32_t d : {1u, 2u, 3u, 990u}) {
        Exchange(d, TinyPoint{false, 0, 0}).expect_secret(ByteString(32, 0));
        Exchange(number_bytes(d, 32), PointBytes(ByteString(), ByteString()))
            .expect_secret(ByteString(32, 0));
    }
}

// The hardened build refuses instead.
TEST(EcdhKeyExChg, KeptFailedMultiplicationGivesAZeroSecret) {
    for (unsigned byte_len : kLegacyLengths) {
        install_small(byte_len);
        Exchange exchange(3, small_multiple(11), byte_len);
        FailingAlloc failing(1);
        if (kHardened)
            exchange.expect_refused();
        else
            exchange.expect_secret(ByteString(byte_len, 0));
        EXPECT_EQ(failing.allocations, 1u);
        EXPECT_EQ(failing.outstanding, 0);
    }
}

TEST(EcdhKeyExChg, KeptDigitBufferStaysAllocated) {
    install_small(32);
    Exchange exchange(3, small_multiple(11));
    FailingAlloc counter;
    exchange.expect_secret(number_bytes(small_multiple(33).x, 32));
    EXPECT_EQ(counter.allocations, 1u);
    EXPECT_EQ(counter.outstanding, kept_digit_buffers(1));
    EXPECT_EQ(counter.last_size, 3u);  // two bits and one more
}

TEST(EcdhKeyExChg, KeptKeyJustBelowTheOrderGivesAZeroSecret) {
    // n - 2 (n mod 16): the last addition of wNAF meets an equal point.
    struct Case {
        const char *name;
        uint32_t below;
    };
    for (const Case &row : {Case{"sm2p256v1", 6}, Case{"secp256r1", 2}, Case{"secp192r1", 2}}) {
        SCOPED_TRACE(row.name);
        install(row.name);
        const size_t size = global_curve.byte_len;
        PointBytes G(fixed_bytes(global_curve.G.x, size), fixed_bytes(global_curve.G.y, size));
        Exchange(fixed_bytes(order_minus(row.below), size), G).expect_secret(ByteString(size, 0));
        // -G has the x of G.
        Exchange(fixed_bytes(order_minus(1), size), G).expect_secret(fixed_bytes(global_curve.G.x, size));
    }
}

TEST(EcdhKeyExChg, DrawsNothing) {
    install_small(32);
    FakeEntropy entropy;
    Exchange(3, small_multiple(11)).expect_secret(number_bytes(small_multiple(33).x, 32));
    EXPECT_EQ(entropy.calls() + entropy.number_calls, 0u);
}

}  // namespace zokecc_test::ecdh_test

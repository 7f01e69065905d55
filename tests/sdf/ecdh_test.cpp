// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// ZOK_ExternalEcdhKeyAgreement: the x coordinate of d P in exactly L bytes, and refusals.
// Vectors are in ecdh_vectors_test.cpp.
#include "tests/support/emulated.h"
#include "tests/support/encryption_case.h"

namespace zokecc_test::ecdh_test {

namespace {

uint32_t agree(void *session, const ECCrefPrivateKey &priv, const ECCrefPublicKey &pub, GuardedBuffer &out) {
    const ByteString pub_before = image(pub);
    const Inputs inputs(session, priv, pub_before);
    const FakeEntropy entropy;
    const uint32_t status = ZOK_ExternalEcdhKeyAgreement(session, &priv, &pub, out.data());
    EXPECT_EQ(to_hex(image(pub)), to_hex(pub_before));
    EXPECT_EQ(entropy.calls() + entropy.number_calls, 0u);
    return status;
}

void expect_secret(void *session, const ECCrefPrivateKey &priv, const ECCrefPublicKey &pub,
                   const ByteString &want) {
    GuardedBuffer out(64);
    EXPECT_EQ(agree(session, priv, pub, out), ZOK_OK);
    EXPECT_EQ(to_hex(out.first(want.size())), to_hex(want));
    EXPECT_TRUE(out.untouched_from(want.size()));
}

ECCrefPublicKey key_of(const TinyPoint &P) { return small_public_key(P.x, P.y); }

}  // namespace

TEST(ZokExternalEcdhKeyAgreement, EveryPrivateKeyOnTheSmallCurve) {
    for (const TinyPoint &P : {small_key_point(), TinyPoint{false, 2, 365}, TinyPoint{false, 0, 5}})
        for (uint32_t d = kLeastKey; d < kSmallN; d += kStride) {
            SCOPED_TRACE(d);
            expect_secret(small_session(), small_private_key(d), key_of(P),
                          coordinate(small_product(d, P), &TinyPoint::x));
        }
}

TEST(ZokExternalEcdhKeyAgreement, BothSidesAgree) {
    const TinyPoint A = small_multiple(123), B = small_multiple(700);
    GuardedBuffer by_a(20), by_b(20);
    EXPECT_EQ(agree(small_session(), small_private_key(123), key_of(B), by_a), ZOK_OK);
    EXPECT_EQ(agree(small_session(), small_private_key(700), key_of(A), by_b), ZOK_OK);
    EXPECT_EQ(to_hex(by_a.all()), to_hex(by_b.all()));
    EXPECT_EQ(to_hex(by_a.all()), to_hex(small_bytes(small_multiple(123 * 700 % kSmallN).x)));
}

TEST(ZokExternalEcdhKeyAgreement, WritesExactlyLBytesForEveryLength) {
    for (const char *name : {"brainpoolP160r1", "secp192r1", "secp224r1", "sm2p256v1"}) {
        const Curve &c = curve(name);
        const ByteString x = fixed_bytes(c.G.x, c.byte_len), y = fixed_bytes(c.G.y, c.byte_len);
        SCOPED_TRACE(name);
        expect_secret(shared_session(c), private_key({1}), public_key(x, y), x);
    }
}

TEST(ZokExternalEcdhKeyAgreement, HashOfTheSessionHasNoPartInIt) {
    for (uint32_t selector : {HASH_ALG_SM3, HASH_ALG_SHA256, kUnknownSelector})
        expect_secret(small_session(selector), small_private_key(), key_of(small_multiple(700)),
                      small_bytes(small_multiple(123 * 700 % kSmallN).x));
}

TEST(ZokExternalEcdhKeyAgreement, KeptPrivateKeyOfZeroGivesZeroBytes) {
    expect_secret(small_session(), small_private_key(0), small_public_key(), ByteString(20, 0));
    ECCrefPrivateKey without_size = small_private_key();
    without_size.bits = 7;
    expect_secret(small_session(), without_size, small_public_key(), ByteString(20, 0));
}

TEST(ZokExternalEcdhKeyAgreement, KeptPeerOffTheCurveIsNotRefused) {
    const TinyCurve other(kSmallP, 2, (7 * 7 + 2 * kSmallP - 5 * 5 * 5 - 2 * 5) % kSmallP);
    const TinyPoint shared = other.library_window(small_number(kSmallD), {false, 5, 7});
    ASSERT_FALSE(shared.infinite);
    expect_secret(small_session(), small_private_key(), small_public_key(5, 7), small_bytes(shared.x));
}

TEST(ZokExternalEcdhKeyAgreement, KeptPeerOfZerosGivesZeroBytes) {
    for (uint32_t d : {1u, 2u, 3u, kSmallD})
        expect_secret(small_session(), small_private_key(d), small_public_key(0, 0), ByteString(20, 0));
    ECCrefPublicKey without_size = small_public_key();
    without_size.bits = 0;
    expect_secret(small_session(), small_private_key(), without_size, ByteString(20, 0));
}

TEST(ZokExternalEcdhKeyAgreement, KeptInfiniteSecretIsWrittenAsZeroBytes) {
    // (0, 1) on y^2 = x^3 + 2x + 1 modulo 97 has order 56; the session claims a larger one.
    const TinyCurve group(97, 2, 1);
    const TinyPoint P{false, 0, 1};
    Session session(small_variant(97, 2, 1, P, 96));
    for (uint32_t d = 0; d < 96; ++d) {
        SCOPED_TRACE(d);
        expect_secret(session.handle(), small_private_key(d), key_of(P),
                      coordinate(group.library_window(small_number(d), P), &TinyPoint::x));
    }
    ASSERT_TRUE(group.library_window(small_number(56), P).infinite);
}

TEST(ZokExternalEcdhKeyAgreement, KeptPrivateKeySixBelowTheOrderGivesZeroBytes) {
    // There wNAF meets an equal point on this curve.
    const Curve &c = curve("sm2p256v1");
    mint d{};
    const mint six = small_number(6);
    mint_sub(&c.n, &six, &d);
    expect_secret(sm2_session(), private_key(fixed_bytes(d, 32)), base_point_key(c), ByteString(32, 0));
}

TEST(ZokExternalEcdhKeyAgreement, KeysAreReadAtTheirOwnSizes) {
    const ByteString want = small_bytes(small_product(kSmallD, small_key_point()).x);
    for (size_t size : {size_t{2}, size_t{20}, size_t{64}}) {
        ECCrefPrivateKey priv = private_key(fixed_bytes(small_number(kSmallD), size));
        ECCrefPublicKey pub =
            public_key(fixed_bytes(small_number(346), size), fixed_bytes(small_number(763), size));
        priv.bits += 7;
        pub.bits += 7;
        expect_secret(small_session(), priv, pub, want);
        expect_secret(small_session(), priv, small_public_key(), want);
        expect_secret(small_session(), small_private_key(), pub, want);
    }
}

TEST(ZokExternalEcdhKeyAgreement, OutputMayBeAFieldOfEitherKey) {
    const ByteString want = small_bytes(small_product(kSmallD, small_key_point()).x);
    ECCrefPrivateKey priv = small_private_key();
    ECCrefPublicKey pub = small_public_key();
    EXPECT_EQ(ZOK_ExternalEcdhKeyAgreement(small_session(), &priv, &pub, priv.K), ZOK_OK);
    EXPECT_EQ(to_hex(image(priv)), to_hex(image(private_key(want))));
    priv = small_private_key();
    EXPECT_EQ(ZOK_ExternalEcdhKeyAgreement(small_session(), &priv, &pub, pub.x), ZOK_OK);
    EXPECT_EQ(to_hex(image(pub)), to_hex(image(public_key(want, small_bytes(763)))));
}

TEST(ZokExternalEcdhKeyAgreement, SessionWithoutAModulusGivesZeroBytes) {
    Session session(small_variant(0, 2, 25, {false, 2, 365}, kSmallN));
    for (uint32_t d : {0u, 1u, 2u, kSmallD})
        expect_secret(session.handle(), small_private_key(d), small_public_key(), ByteString(20, 0));
}

}  // namespace zokecc_test::ecdh_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Multiplication by secret scalars in the hardened build, compared with OpenSSL's on its own copies of the
// curves: exact for every scalar, even those that the default build's subtraction spoils.
#ifdef ZOKECC_HARDENED

#include <gtest/gtest.h>
#include <openssl/ec.h>
#include <openssl/obj_mac.h>

#include "ct/points.h"
#include "ct/scalars.h"
#include "tests/peer/bignum.h"
#include "tests/support/curves.h"
#include "tests/support/fake_entropy.h"
#include "tests/support/hard_words.h"
#include "tests/support/points.h"
#include "tests/support/unusual_curves.h"

namespace zokecc_test::secret_points_test {

namespace {

struct FreeGroup {
    void operator()(EC_GROUP *group) const { EC_GROUP_free(group); }
    void operator()(EC_POINT *point) const { EC_POINT_free(point); }
};
using Group = std::unique_ptr<EC_GROUP, FreeGroup>;
using Point = std::unique_ptr<EC_POINT, FreeGroup>;

struct PeerCurve {
    Curve ours;
    int nid;  // or NID_undef, for a curve of which the peer has no copy

    Group group() const {
        if (nid != NID_undef) return Group(EC_GROUP_new_by_curve_name(nid));
        Group out(EC_GROUP_new_curve_GFp(bn(ours.p).get(), bn(ours.a).get(), bn(ours.b).get(), scratch()));
        Point G(EC_POINT_new(out.get()));
        EXPECT_EQ(1, EC_POINT_set_affine_coordinates(out.get(), G.get(), bn(ours.G.x).get(),
                                                     bn(ours.G.y).get(), nullptr));
        EXPECT_EQ(1, EC_GROUP_set_generator(out.get(), G.get(), bn(ours.n).get(), BN_value_one()));
        return out;
    }
};

std::vector<PeerCurve> tested_curves() {
    std::vector<PeerCurve> out = {
        {curve("secp192r1"), NID_X9_62_prime192v1},
        {curve("secp224r1"), NID_secp224r1},
        {curve("secp256r1"), NID_X9_62_prime256v1},
        {curve("secp256k1"), NID_secp256k1},
        {curve("brainpoolP160r1"), NID_brainpoolP160r1},
        {curve("brainpoolP192r1"), NID_brainpoolP192r1},
        {curve("brainpoolP224r1"), NID_brainpoolP224r1},
        {curve("brainpoolP256r1"), NID_brainpoolP256r1},
        {curve("sm2p256v1"), NID_sm2},
        {secp160r1_of_24_bytes(), NID_secp160r1},
    };
    for (const Curve &ours : unusual_curves())
        if (ours.name != "secp160r1") out.push_back({ours, NID_undef});
    return out;
}

class SecretPointsPeer : public testing::TestWithParam<PeerCurve> {
protected:
    // Structured scalars from 1 to n - 1: few bits, runs of ones, close to n and to fractions of it.
    std::vector<Natural> structured() const {
        const Natural n(c.n), one(1);
        std::vector<Natural> out;
        for (uint32_t i = 1; i <= 40; ++i) {
            out.push_back(Natural(i));
            out.push_back(n - Natural(i));
        }
        const unsigned step = GetParam().nid == NID_undef ? 5 : 1;
        for (unsigned bit = n.bit_length() % step; bit + 1 < n.bit_length(); bit += step) {
            out.push_back(Natural::power_of_two(bit));
            out.push_back(Natural::power_of_two(bit + 1) - one);
            out.push_back(n - Natural::power_of_two(bit));
            if (bit % 8 == 0) out.push_back((n >> (bit + 1)) + one);
        }
        for (unsigned first = 8; first + 40 < n.bit_length(); first += 24)
            out.push_back(Natural::power_of_two(first + 40) - Natural::power_of_two(first));
        out.push_back(n >> 1);
        out.push_back((n >> 1) + one);
        return out;
    }
    Natural random_scalar() {
        const Natural k(hard.reduced(c.n));
        return k.is_zero() ? Natural(1) : k;
    }

    mint wide(const Natural &value) const {
        mint out{};
        for (size_t i = 0; i < c.n.len; ++i) out.words[i] = value.word(i);
        out.len = c.n.len;
        return out;
    }

    Point peer_point(const ecc_point &P) const {
        Point out(EC_POINT_new(group.get()));
        EXPECT_EQ(1, EC_POINT_set_affine_coordinates(group.get(), out.get(), bn(P.x).get(), bn(P.y).get(),
                                                     nullptr));
        return out;
    }
    ecc_point from_peer(const Point &P) const {
        Bignum x = bn(), y = bn();
        EXPECT_EQ(1, EC_POINT_get_affine_coordinates(group.get(), P.get(), x.get(), y.get(), nullptr));
        return affine(mint_from_hex(hex_of(x)), mint_from_hex(hex_of(y)));
    }
    ecc_point peer_times(const Natural &k, const ecc_point &P) const {
        Point out(EC_POINT_new(group.get())), point = peer_point(P);
        EXPECT_EQ(1, EC_POINT_mul(group.get(), out.get(), nullptr, point.get(), bn(k).get(), scratch()));
        return from_peer(out);
    }

    void expect_base_multiple(const Natural &k) {
        ecc_point out{};
        const mint scalar = wide(k);
        ASSERT_TRUE(zokecc::multiply_base_in_secret(view, scalar, out)) << k.to_hex();
        zokecc::publish_point(out, out);
        EXPECT_TRUE(same_point(peer_times(k, c.G), out)) << "k " << k.to_hex();
    }
    void expect_multiple(const Natural &k, const ecc_point &P) {
        ecc_point out{};
        const mint scalar = wide(k);
        ASSERT_TRUE(zokecc::multiply_in_secret(view, scalar, bits, P, nullptr, out)) << k.to_hex();
        zokecc::publish_point(out, out);
        EXPECT_TRUE(same_point(peer_times(k, P), out)) << "k " << k.to_hex();
    }

    const Curve &c = GetParam().ours;
    const uint32_t bits = Natural(c.n).bit_length();
    const Group group = GetParam().group();
    const int random_rounds = GetParam().nid == NID_undef ? 40 : 200;
    HardWords hard{0x5EED0101u};
    Session session{c};
    const zokecc::CurveView view = zokecc::view_of(*session.context());
};

TEST_P(SecretPointsPeer, CurvesAreWhatTheySay) {
    EXPECT_EQ(1, EC_GROUP_check(group.get(), scratch()));
    EXPECT_EQ(1, BN_check_prime(bn(c.p).get(), scratch(), nullptr));
    EXPECT_EQ(1, BN_check_prime(EC_GROUP_get0_order(group.get()), scratch(), nullptr));
    EXPECT_EQ(mint_to_hex(c.n), hex_of(Bignum(BN_dup(EC_GROUP_get0_order(group.get())))));
}

TEST_P(SecretPointsPeer, MultiplesOfTheBasePoint) {
    ASSERT_TRUE(zokecc::has_secret_points(view));
    for (const Natural &k : structured()) expect_base_multiple(k);
    for (int i = 0; i < random_rounds && !HasFailure(); ++i) expect_base_multiple(random_scalar());
}

TEST_P(SecretPointsPeer, MultiplesOfAnyPoint) {
    const ecc_point P = peer_times(random_scalar(), c.G);
    for (const Natural &k : structured()) expect_multiple(k, P);
    for (int i = 0; i < random_rounds && !HasFailure(); ++i)
        expect_multiple(random_scalar(), peer_times(random_scalar(), c.G));
}

TEST_P(SecretPointsPeer, SumsWithAnotherPoint) {
    for (int i = 0; i < 60 && !HasFailure(); ++i) {
        const Natural k = random_scalar(), of_addend = i % 6 == 0 ? k : random_scalar();
        const ecc_point P = peer_times(random_scalar(), c.G);
        const ecc_point addend = peer_times(of_addend, i % 6 == 0 ? P : c.G);  // 2 k P now and then
        Point sum = peer_point(peer_times(k, P));
        ASSERT_EQ(1, EC_POINT_add(group.get(), sum.get(), sum.get(), peer_point(addend).get(), nullptr));
        ecc_point out{};
        const mint scalar = wide(k);
        ASSERT_TRUE(zokecc::multiply_in_secret(view, scalar, bits, P, &addend, out));
        zokecc::publish_point(out, out);
        EXPECT_TRUE(same_point(from_peer(sum), out)) << hard.where();
    }
}

// k P - k P, and the order times a point.
TEST_P(SecretPointsPeer, InfinityIsRefused) {
    const ecc_point P = peer_times(random_scalar(), c.G);
    const Natural k = random_scalar(), n(c.n);
    const ecc_point opposite = peer_times(n - k, P);
    ecc_point out{};
    const mint scalar = wide(k), order = wide(n), zero = wide(Natural());
    EXPECT_FALSE(zokecc::multiply_in_secret(view, scalar, bits, P, &opposite, out));
    EXPECT_FALSE(zokecc::multiply_in_secret(view, order, bits, P, nullptr, out));
    EXPECT_FALSE(zokecc::multiply_in_secret(view, zero, bits, P, nullptr, out));
    EXPECT_FALSE(zokecc::multiply_base_in_secret(view, order, out));
    EXPECT_FALSE(zokecc::multiply_base_in_secret(view, zero, out));
}

TEST_P(SecretPointsPeer, PointsFromOutside) {
    const ecc_point P = peer_times(random_scalar(), c.G);
    EXPECT_TRUE(zokecc::is_valid_point(view, P));
    for (int i = 0; i < 200; ++i) {
        ecc_point other = P;
        (i % 2 == 0 ? other.x : other.y) = Natural(hard.reduced(c.p)).to_mint();
        Point point(EC_POINT_new(group.get()));
        const bool is_on = EC_POINT_set_affine_coordinates(group.get(), point.get(), bn(other.x).get(),
                                                           bn(other.y).get(), nullptr) == 1;
        EXPECT_EQ(is_on, zokecc::is_valid_point(view, other)) << mint_to_hex(other.x);
    }
    ecc_point wrong = P;
    wrong.x = (Natural(P.x) + Natural(c.p)).to_mint();
    EXPECT_FALSE(zokecc::is_valid_point(view, wrong)) << "x + p";
    wrong = P;
    wrong.y = (Natural(P.y) + Natural(c.p)).to_mint();
    EXPECT_FALSE(zokecc::is_valid_point(view, wrong)) << "y + p";
    wrong = P;
    wrong.infinity = 1;
    EXPECT_FALSE(zokecc::is_valid_point(view, wrong));
    EXPECT_FALSE(zokecc::is_valid_point(view, ecc_point{}));
}

INSTANTIATE_TEST_SUITE_P(Curves, SecretPointsPeer, testing::ValuesIn(tested_curves()),
                         [](const auto &tested) { return tested.param.ours.name; });

}  // namespace

}  // namespace zokecc_test::secret_points_test

#endif

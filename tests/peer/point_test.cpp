// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Points, compared with OpenSSL's group arithmetic on its own copies of the curves.
//
// Numbers are drawn from fixed seeds; a failure names the seed and the draw.
#include <gtest/gtest.h>
#include <openssl/bn.h>
#include <openssl/ec.h>
#include <openssl/obj_mac.h>

#include <memory>

#include "tests/support/curves.h"
#include "tests/support/hard_words.h"
#include "tests/support/points.h"

namespace zokecc_test::point_test {

namespace {

struct FreeGroup {
    void operator()(EC_GROUP *group) const { EC_GROUP_free(group); }
};
struct FreePoint {
    void operator()(EC_POINT *point) const { EC_POINT_free(point); }
};
struct FreeNumber {
    void operator()(BIGNUM *number) const { BN_free(number); }
};
using Group = std::unique_ptr<EC_GROUP, FreeGroup>;
using Point = std::unique_ptr<EC_POINT, FreePoint>;
using Number = std::unique_ptr<BIGNUM, FreeNumber>;

struct PeerCurve {
    const char *name;
    int nid;
    // The only multiple n + offset that the library's wNAF loses in its last addition, counted
    // in scalars as long as n.
    int lost_offset;
};
const PeerCurve kCurves[] = {
    {"secp160r1", NID_secp160r1, -14},
    {"secp192r1", NID_X9_62_prime192v1, -2},
    {"secp224r1", NID_secp224r1, 6},
    {"secp256r1", NID_X9_62_prime256v1, -2},
    {"secp256k1", NID_secp256k1, -2},
    {"brainpoolP160r1", NID_brainpoolP160r1, 14},
    {"brainpoolP192r1", NID_brainpoolP192r1, -2},
    {"brainpoolP224r1", NID_brainpoolP224r1, 2},
    {"brainpoolP256r1", NID_brainpoolP256r1, -14},
    {"sm2p256v1", NID_sm2, -6},
};

Number to_peer(const mint &value) {
    ByteString bytes = fixed_bytes(value, 4 * MINT_WORDS);
    return Number(BN_bin2bn(bytes.data(), static_cast<int>(bytes.size()), nullptr));
}

mint from_peer(const BIGNUM *number) {
    ByteString bytes(static_cast<size_t>(BN_num_bytes(number)));
    BN_bn2bin(number, bytes.data());
    return mint_from_hex(to_hex(bytes));
}

class PointPeer : public testing::TestWithParam<PeerCurve> {
protected:
    Point new_point() const { return Point(EC_POINT_new(group.get())); }

    Point to_peer_point(const ecc_point &P) const {
        Point out = new_point();
        Number x = to_peer(P.x), y = to_peer(P.y);
        EXPECT_EQ(1, EC_POINT_set_affine_coordinates(group.get(), out.get(), x.get(), y.get(), nullptr));
        return out;
    }

    ecc_point from_peer_point(const Point &P) const {
        if (EC_POINT_is_at_infinity(group.get(), P.get()) == 1) return affine_infinity();
        Number x(BN_new()), y(BN_new());
        EXPECT_EQ(1, EC_POINT_get_affine_coordinates(group.get(), P.get(), x.get(), y.get(), nullptr));
        return affine(from_peer(x.get()), from_peer(y.get()));
    }

    ecc_point peer_times(const mint &k, const ecc_point &P) const {
        Point out = new_point(), point = to_peer_point(P);
        Number scalar = to_peer(k);
        EXPECT_EQ(1, EC_POINT_mul(group.get(), out.get(), nullptr, point.get(), scalar.get(), nullptr));
        return from_peer_point(out);
    }

    // A finite multiple of G, from the peer.
    ecc_point some_point() {
        ecc_point out = affine_infinity();
        while (out.infinity == 1) out = peer_times(hard.trimmed(c.n.len), c.G);
        return out;
    }

    mint near_order(int offset) const {
        Number n = to_peer(c.n);
        if (offset < 0)
            BN_sub_word(n.get(), static_cast<BN_ULONG>(-offset));
        else
            BN_add_word(n.get(), static_cast<BN_ULONG>(offset));
        return from_peer(n.get());
    }

    const Curve &c = curve(GetParam().name);
    Group group{EC_GROUP_new_by_curve_name(GetParam().nid)};
    HardWords hard{0x5EED0001u};
};

TEST_P(PointPeer, CurveIsThePeersCurve) {
    Number p(BN_new()), a(BN_new()), b(BN_new());
    ASSERT_EQ(1, EC_GROUP_get_curve(group.get(), p.get(), a.get(), b.get(), nullptr));
    EXPECT_TRUE(same_value(c.p, from_peer(p.get())));
    EXPECT_TRUE(same_value(c.a, from_peer(a.get())));
    EXPECT_TRUE(same_value(c.b, from_peer(b.get())));
    EXPECT_TRUE(same_value(c.n, from_peer(EC_GROUP_get0_order(group.get()))));
    Point G(EC_POINT_dup(EC_GROUP_get0_generator(group.get()), group.get()));
    EXPECT_TRUE(same_point(c.G, from_peer_point(G)));
}

TEST_P(PointPeer, RandomMultiplesOfTheBasePoint) {
    ASSERT_EQ(0, ecc_precomputation_point(&c.G, &c.a, &c.b, &c.p));
    for (int i = 0; i < 100 && !HasFailure(); ++i) {
        mint k = hard.reduced(c.n);
        ecc_point expected = peer_times(k, c.G), out{};
        EXPECT_EQ(0, ecc_fix_point_mul(&k, &c.G, &c.a, &c.b, &c.p, &out));
        EXPECT_TRUE(same_point(expected, out)) << hard.where() << " k " << mint_to_hex(k);
    }
}

TEST_P(PointPeer, RandomMultiplesOfRandomPoints) {
    mint lost = near_order(GetParam().lost_offset);
    for (int i = 0; i < 50 && !HasFailure(); ++i) {
        ecc_point P = some_point(), out{};
        mint k = hard.reduced(c.n);
        EXPECT_EQ(1, ecc_unknown_point_mul(&k, &P, &c.a, &c.b, &c.p, &out));
        ecc_point expected = same_value(k, lost) ? affine_infinity() : peer_times(k, P);
        EXPECT_TRUE(same_point(expected, out)) << hard.where() << " k " << mint_to_hex(k);
    }
}

// The table and wNAF also agree with the peer for scalars far above the order.
TEST_P(PointPeer, WideScalars) {
    ASSERT_EQ(0, ecc_precomputation_point(&c.G, &c.a, &c.b, &c.p));
    for (int i = 0; i < 20 && !HasFailure(); ++i) {
        mint k = hard.trimmed(MINT_WORDS);
        ecc_point expected = peer_times(k, c.G), out{};
        EXPECT_EQ(0, ecc_fix_point_mul(&k, &c.G, &c.a, &c.b, &c.p, &out));
        EXPECT_TRUE(same_point(expected, out)) << hard.where() << " k " << mint_to_hex(k);
        EXPECT_EQ(1, ecc_unknown_point_mul(&k, &c.G, &c.a, &c.b, &c.p, &out));
        EXPECT_TRUE(same_point(expected, out)) << hard.where() << " k " << mint_to_hex(k);
    }
}

TEST_P(PointPeer, RandomSumsAndDoubles) {
    for (int i = 0; i < 50 && !HasFailure(); ++i) {
        ecc_point P = some_point(), Q = some_point();
        if (same_value(P.x, Q.x)) continue;
        Point p = to_peer_point(P), q = to_peer_point(Q), sum = new_point(), twice = new_point();
        ASSERT_EQ(1, EC_POINT_add(group.get(), sum.get(), p.get(), q.get(), nullptr));
        ASSERT_EQ(1, EC_POINT_dbl(group.get(), twice.get(), p.get(), nullptr));
        ecc_point out{}, back{};
        EXPECT_EQ(0, ecc_point_add(&P, &Q, &c.a, &c.b, &c.p, &out));
        EXPECT_TRUE(same_point(from_peer_point(sum), out)) << hard.where();
        EXPECT_EQ(0, ecc_point_double(&P, &c.a, &c.b, &c.p, &out));
        EXPECT_TRUE(same_point(from_peer_point(twice), out)) << hard.where();
        EXPECT_EQ(0, ecc_test_point(&out, &c.a, &c.b, &c.p));

        ecc_jac_point left{}, right{}, jacobian_out{};
        ecc_affine_jacobin(&left, &P);
        ecc_affine_jacobin(&right, &Q);
        ecc_jac_point_double(&left, &c.a, &c.b, &c.p, &left);          // 2P, with a Z
        ecc_jac_point_add_1(&left, &right, &c.a, &c.b, &c.p, &right);  // 2P + Q
        ecc_jac_point_add(&right, &Q, &c.a, &c.b, &c.p, &jacobian_out);
        ecc_jacobin_affine(&back, &c.p, &jacobian_out);
        ASSERT_EQ(1, EC_POINT_dbl(group.get(), sum.get(), sum.get(), nullptr));
        EXPECT_TRUE(same_point(from_peer_point(sum), back)) << "2 (P + Q), " << hard.where();
    }
}

// KEPT, one by one: cases in which the peer has a sum, a double or a multiple and the library does not.
TEST_P(PointPeer, KeptOppositePointsAreFiniteHere) {
    ecc_point P = some_point(), minus_P = P, out{};
    mint_mod_sub(&c.p, &P.y, &c.p, &minus_P.y);
    Point p = to_peer_point(P), q = to_peer_point(minus_P), sum = new_point();
    ASSERT_EQ(1, EC_POINT_add(group.get(), sum.get(), p.get(), q.get(), nullptr));
    EXPECT_EQ(1, EC_POINT_is_at_infinity(group.get(), sum.get()));
    EXPECT_EQ(0, ecc_point_add(&P, &minus_P, &c.a, &c.b, &c.p, &out));
    EXPECT_EQ(0u, out.infinity);
}

TEST_P(PointPeer, KeptEqualPointsInTwoRecordsAreInfiniteHere) {
    ecc_point P = some_point();
    ecc_jac_point left{}, right{};
    ecc_affine_jacobin(&left, &P);
    ecc_affine_jacobin(&right, &P);
    EXPECT_EQ(1, ecc_jac_point_add_1(&left, &right, &c.a, &c.b, &c.p, &left));
    EXPECT_EQ(0u, left.Z.len);
}

TEST_P(PointPeer, KeptOneMultipleIsInfiniteHere) {
    ecc_point P = some_point(), out{};
    for (int offset = -16; offset <= 16; ++offset) {
        mint k = near_order(offset);
        EXPECT_EQ(1, ecc_unknown_point_mul(&k, &P, &c.a, &c.b, &c.p, &out));
        ecc_point expected = offset == GetParam().lost_offset ? affine_infinity() : peer_times(k, P);
        EXPECT_TRUE(same_point(expected, out)) << offset;
    }
    EXPECT_FALSE(same_point(affine_infinity(), peer_times(near_order(GetParam().lost_offset), P)));
}

INSTANTIATE_TEST_SUITE_P(Curves, PointPeer, testing::ValuesIn(kCurves),
                         [](const auto &tested) { return std::string(tested.param.name); });

}  // namespace

}  // namespace zokecc_test::point_test

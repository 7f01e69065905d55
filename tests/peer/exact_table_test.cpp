// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The table of a base point in the hardened build: exact on curves where the borrow rule spoils entries of
// the default build's table.
#ifdef ZOKECC_HARDENED

#include <gtest/gtest.h>
#include <openssl/ec.h>

#include <memory>

#include "tests/peer/bignum.h"
#include "tests/support/curves.h"
#include "tests/support/naive_int.h"
#include "tests/support/points.h"

namespace zokecc_test::exact_table_test {

namespace {

struct Free {
    void operator()(EC_GROUP *group) const { EC_GROUP_free(group); }
    void operator()(EC_POINT *point) const { EC_POINT_free(point); }
};

// y^2 = x^3 + a x + b over the field of the SM2 curve, through a given point. Its number of points is
// unknown, and no table entry depends on it.
Curve curve_through(uint32_t x, uint32_t y) {
    Curve out = curve("sm2p256v1");
    const Natural p(out.p), a(out.a), X(x), Y(y);
    const Natural right = (X * X * X + a * X) % p;
    out.name = "through " + std::to_string(x) + ", " + std::to_string(y);
    out.b = ((Y * Y + p - right) % p).to_mint();
    out.G = affine(small(x), small(y));
    return out;
}

// The scalar of an entry of either half.
Natural scalar_of(uint32_t index, unsigned words) {
    Natural out;
    for (unsigned j = 0; j < words; ++j)
        if ((index >> j & 1) != 0) out = out + Natural::power_of_two(32 * j);
    return out;
}

class PeerMultiples {
public:
    explicit PeerMultiples(const Curve &c)
        : group_(EC_GROUP_new_curve_GFp(bn(c.p).get(), bn(c.a).get(), bn(c.b).get(), scratch())),
          G_(EC_POINT_new(group_.get())) {
        EXPECT_EQ(1, EC_POINT_set_affine_coordinates(group_.get(), G_.get(), bn(c.G.x).get(), bn(c.G.y).get(),
                                                     nullptr));
    }
    ecc_point times(const Natural &k) const {
        std::unique_ptr<EC_POINT, Free> out(EC_POINT_new(group_.get()));
        Bignum x = bn(), y = bn();
        EXPECT_EQ(1, EC_POINT_mul(group_.get(), out.get(), nullptr, G_.get(), bn(k).get(), scratch()));
        EXPECT_EQ(1, EC_POINT_get_affine_coordinates(group_.get(), out.get(), x.get(), y.get(), nullptr));
        return affine(mint_from_hex(hex_of(x)), mint_from_hex(hex_of(y)));
    }

private:
    std::unique_ptr<EC_GROUP, Free> group_;
    std::unique_ptr<EC_POINT, Free> G_;
};

}  // namespace

TEST(ExactTable, HoldsWhereTheBorrowRuleSpoilsTheContractsTable) {
    constexpr unsigned kWords = 8;
    constexpr uint32_t kHalf = 1u << kWords;
    unsigned spoilt = 0;
    for (uint32_t x = 1; x <= 3; ++x) {
        const Curve c = curve_through(x, 2 * x + 1);
        SCOPED_TRACE(c.name);
        const Session session(c);
        const ecc_point *const exact = session.context()->table.entry;
        const auto contract = std::make_unique<ecc_point[]>(PRECOMP_TABLE_ENTRIES);
        ecc_precomputation_point_1(&c.G, &c.a, &c.b, &c.p, contract.get());
        const PeerMultiples peer(c);
        for (uint32_t i = 1; i < kHalf; ++i) {
            const Natural k = scalar_of(i, kWords);
            const uint32_t high = kHalf + i;
            EXPECT_TRUE(same_point(peer.times(k), exact[i])) << i;
            EXPECT_TRUE(same_point(peer.times(k << 16), exact[high])) << high;
            spoilt += same_point(exact[i], contract[i]) ? 0u : 1u;
            spoilt += same_point(exact[high], contract[high]) ? 0u : 1u;
        }
    }
    EXPECT_GT(spoilt, 0u);
}

// The base point must be on the curve; otherwise no table is written.
TEST(ExactTable, BasePointOffTheCurveIsRefused) {
    Curve c = curve("sm2p256v1");
    c.G.y.words[0] ^= 1;
    CurvePara record = c.record(HASH_ALG_SM3);
    void *session = nullptr;
    ASSERT_EQ(ZOK_OpenSession(&session, &record), ZOK_OK);
    EXPECT_EQ(ZOK_CurveParaCfg(session, record.type, &record), ZOK_ERR_INTERNAL);
    EXPECT_EQ(ZOK_CloseSession(session), ZOK_OK);
}

}  // namespace zokecc_test::exact_table_test

#endif

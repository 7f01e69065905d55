// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Multiples of a base point with a precomputed table.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>

#include "tests/ecc/multiples.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/model_curve.h"

namespace zokecc_test::comb_test {

namespace {

// A curve's table, and multiplication with it.
class Comb {
public:
    explicit Comb(const Curve &curve) : c(curve), table(std::make_unique<PrecompTable>()) {
        ecc_precomputation_point_1(&c.G, &c.a, &c.b, &c.p, table->entry);
    }
    ecc_point times(const mint &k) const {
        ecc_point out{};
        EXPECT_EQ(0, ecc_fix_point_mul_1(&k, nullptr, &c.a, nullptr, &c.p, &out, table->entry));
        return out;
    }
    // Replaces every entry but `keep` by another point, which is not even on the curve.
    void poison_all_but(size_t keep) {
        for (size_t i = 0; i < PRECOMP_TABLE_ENTRIES; ++i)
            if (i != keep) table->entry[i] = affine(small(static_cast<uint32_t>(i)), small(1));
    }

    const Curve &c;
    std::unique_ptr<PrecompTable> table;
};

mint sum(mint x, mint y) {
    mint out{};
    mint_add(&x, &y, &out);
    return out;
}
mint less(const mint &x, uint32_t y) {
    mint out{}, other = small(y);
    mint_sub(&x, &other, &out);
    return out;
}

ecc_point window(const Curve &c, const mint &k) {
    ecc_point out{};
    EXPECT_EQ(1, ecc_unknown_point_mul(&k, &c.G, &c.a, &c.b, &c.p, &out));
    return out;
}

TEST(EccFixPointMul1, ZeroScalarGivesInfinityAndLeavesTheWords) {
    Comb comb(curve("brainpoolP160r1"));
    for (const mint &zero : {small(0), zero_in_one_word(), with_garbage(small(0))}) {
        GuardedRecord<ecc_point> out;
        ecc_point expected = *out.get();
        expected.infinity = 1;
        expected.x.len = 0;
        expected.y.len = 0;
        EXPECT_EQ(0, ecc_fix_point_mul_1(&zero, &comb.c.G, &comb.c.a, &comb.c.b, &comb.c.p, out.get(),
                                         comb.table->entry));
        EXPECT_TRUE(same_bytes(expected, *out.get()));
        EXPECT_TRUE(out.guards_intact());
    }
}

class EccFixPointMul1On : public testing::TestWithParam<std::string> {};

TEST_P(EccFixPointMul1On, ScalarsAroundTheOrder) {
    const Curve &c = curve(GetParam());
    Comb comb(c);
    const std::vector<ecc_point> &multiple = multiples(c);
    EXPECT_TRUE(same_point(c.G, comb.times(small(1))));
    EXPECT_TRUE(same_point(multiple[2], comb.times(small(2))));
    EXPECT_TRUE(same_point(affine_infinity(), comb.times(c.n)));
    for (uint32_t i = 1; i <= 17; i += 4) {
        EXPECT_TRUE(same_point(minus(c, multiple[i]), comb.times(less(c.n, i)))) << "n - " << i;
        EXPECT_TRUE(same_point(multiple[i], comb.times(sum(c.n, small(i))))) << "n + " << i;
    }
}

// Multiples of n with one word more take another path to the same result.
TEST_P(EccFixPointMul1On, MultiplesOfTheOrderGiveInfinity) {
    const Curve &c = curve(GetParam());
    Comb comb(c);
    mint k = c.n;
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(same_point(affine_infinity(), comb.times(k))) << i;
        EXPECT_TRUE(same_point(multiples(c)[3], comb.times(sum(k, small(3))))) << i;
        k = sum(k, k);
    }
}

TEST_P(EccFixPointMul1On, EveryBitOfEveryWordCounts) {
    const Curve &c = curve(GetParam());
    Comb comb(c);
    ModelCurve model(c.a, c.b, c.p);
    ecc_point expected = c.G;
    mint k = small(1);
    for (uint32_t bit = 0; bit < 32 * c.p.len; ++bit) {
        EXPECT_TRUE(same_point(expected, comb.times(k))) << "2^" << bit;
        expected = model.add(expected, expected);
        k = sum(k, k);
    }
}

TEST_P(EccFixPointMul1On, WordsOfOnesUseTheFullEntries) {
    const Curve &c = curve(GetParam());
    Comb comb(c);
    mint ones{};
    ones.len = c.p.len;
    std::memset(ones.words, 0xFF, 4 * c.p.len);
    EXPECT_TRUE(same_point(window(c, ones), comb.times(ones)));
}

TEST_P(EccFixPointMul1On, WordsAboveTheUsedOnesDoNotMatter) {
    const Curve &c = curve(GetParam());
    Comb comb(c);
    for (const mint &k : {small(7), less(c.n, 5), mint_from_hex("8000000000000000ffff0001")})
        EXPECT_TRUE(same_point(comb.times(k), comb.times(with_garbage(k))));
}

INSTANTIATE_TEST_SUITE_P(Curves, EccFixPointMul1On,
                         testing::Values("brainpoolP160r1", "secp192r1", "secp224r1", "sm2p256v1",
                                         "secp256k1"),
                         curve_test_name<testing::TestParamInfo<std::string>>);

TEST(EccFixPointMul1, TopBitUsesTheLastBaseEntryOfTheUpperHalf) {
    Comb comb(curve("secp256r1"));
    mint k = power_of_two(255);
    ecc_point expected = window(comb.c, k);
    comb.poison_all_but(256 + 128);
    EXPECT_TRUE(same_point(expected, comb.times(k)));
}

// Bit 15 - i of each word feeds the lower half, bit 31 - i the upper half.
TEST(EccFixPointMul1, EachHalfOfAWordUsesItsHalfOfTheTable) {
    Comb lower(curve("brainpoolP160r1"));
    mint k = mint_from_hex("00008001000000000000800100000000");
    ecc_point expected = window(lower.c, k);
    lower.poison_all_but(0x0A);
    EXPECT_TRUE(same_point(expected, lower.times(k)));

    Comb upper(curve("brainpoolP160r1"));
    k = mint_from_hex("80010000000000008001000000000000");
    expected = window(upper.c, k);
    upper.poison_all_but(32 + 0x0A);
    EXPECT_TRUE(same_point(expected, upper.times(k)));
}

TEST(EccFixPointMul1, EntriesZeroAndTwoToTheMAndTheLastAreNotRead) {
    Comb comb(curve("brainpoolP160r1"));
    mint k = less(comb.c.n, 123456789);
    ecc_point expected = window(comb.c, k);
    for (size_t i : {0u, 32u, 64u}) std::memset(&comb.table->entry[i], 0xA5, sizeof(ecc_point));
    EXPECT_TRUE(same_point(expected, comb.times(k)));
}

TEST(EccFixPointMul1, UsesTheWordsOfThePrimeNotOfTheRecord) {
    // One word: y^2 = x^3 + 2x + 3 modulo 97, (3, 6) of order 5.
    mint p = small(97), a = small(2), b = small(3);
    ecc_point G = affine(small(3), small(6)), out{};
    auto table = std::make_unique<PrecompTable>();
    ASSERT_EQ(0, ecc_precomputation_point_1(&G, &a, &b, &p, table->entry));
    const uint32_t residue_2[] = {2, 7, 0x10001, 0x00020000, 0xFFFFFFFCu};
    for (uint32_t k : residue_2) {
        mint scalar = small(k);
        EXPECT_EQ(0, ecc_fix_point_mul_1(&scalar, &G, &a, &b, &p, &out, table->entry));
        EXPECT_TRUE(same_point(affine(small(80), small(10)), out)) << k;
    }
}

TEST(EccFixPointMul1, OutputMayBeTheUnreadBasePoint) {
    Comb comb(curve("brainpoolP160r1"));
    ecc_point G = comb.c.G;
    mint k = small(5);
    EXPECT_EQ(0, ecc_fix_point_mul_1(&k, &G, &comb.c.a, &comb.c.b, &comb.c.p, &G, comb.table->entry));
    EXPECT_TRUE(same_point(multiples(comb.c)[5], G));
}

TEST(EccFixPointMul1, LeavesInputsAsTheyWere) {
    Comb comb(curve("brainpoolP160r1"));
    const auto table_before = std::make_unique<PrecompTable>(*comb.table);
    mint k = with_garbage(untrimmed(small(0x12345))), a = with_garbage(comb.c.a), p = with_garbage(comb.c.p);
    const mint k0 = k, a0 = a, p0 = p;
    GuardedRecord<ecc_point> out;
    EXPECT_EQ(0, ecc_fix_point_mul_1(&k, nullptr, &a, nullptr, &p, out.get(), comb.table->entry));
    EXPECT_TRUE(same_point(comb.times(small(0x12345)), *out.get()));
    EXPECT_TRUE(out.guards_intact());
    EXPECT_TRUE(same_bytes(k0, k));
    EXPECT_TRUE(same_bytes(a0, a));
    EXPECT_TRUE(same_bytes(p0, p));
    EXPECT_TRUE(same_bytes(*table_before, *comb.table));
}

// Scalars with a nonzero word above those of p do not fit the table. Their product comes from
// the variable-point routine on entry 1, which allocates one byte more than the scalar has bits.
TEST(EccFixPointMul1, WiderScalarsGiveTheTrueProduct) {
    const Curve &c = curve("brainpoolP160r1");
    Comb comb(c);
    const mint wide[] = {power_of_two(160), mint_from_hex(std::string(42, 'f')),
                         mint_from_hex(std::string(128, '7')), mint_from_hex(std::string(152, 'e'))};
    for (const mint &k : wide) {
        mint reduced{};
        mint_mod(&k, &c.n, &reduced);
        ecc_point expected = comb.times(reduced);
        FailingAlloc counting;
        EXPECT_TRUE(same_point(expected, comb.times(k))) << mint_to_hex(k);
        EXPECT_EQ(1u, counting.allocations);
        EXPECT_EQ(model_bit_length(k) + 1, counting.last_size);
    }
}

TEST(EccFixPointMul1, WiderScalarReadsEntryOneOnly) {
    Comb comb(curve("brainpoolP160r1"));
    mint k = mint_from_hex(std::string(60, '3'));
    ecc_point expected = comb.times(k);
    comb.poison_all_but(1);
    EXPECT_TRUE(same_point(expected, comb.times(k)));
}

TEST(EccFixPointMul1, ZeroWordsAboveThoseOfThePrimeStayOnTheTable) {
    const Curve &c = curve("brainpoolP160r1");
    Comb comb(c);
    mint k = less(c.n, 3);
    while (k.len < MINT_WORDS) k.words[k.len++] = 0;
    FailingAlloc counting;
    EXPECT_TRUE(same_point(minus(c, multiples(c)[3]), comb.times(k)));
    EXPECT_EQ(0u, counting.allocations);
}

TEST(EccFixPointMul1, FailedAllocationForAWiderScalarGivesInfinity) {
    Comb comb(curve("brainpoolP160r1"));
    mint k = mint_from_hex(std::string(60, '3'));
    ecc_point out = comb.c.G;
    FailingAlloc failing(1);
    EXPECT_EQ(0, ecc_fix_point_mul_1(&k, nullptr, &comb.c.a, nullptr, &comb.c.p, &out, comb.table->entry));
    EXPECT_TRUE(same_point(affine_infinity(), out));
}

TEST(EccFixPointMul1, UnusableFieldSizeGivesInfinity) {
    Comb comb(curve("brainpoolP160r1"));
    const mint scalars[] = {small(0), small(1), power_of_two(600)};
    FailingAlloc counting;
    for (const mint &p : {small(0), zero_in_one_word(), power_of_two(260)})
        for (const mint &k : scalars) {
            ecc_point out = comb.c.G;
            EXPECT_EQ(0,
                      ecc_fix_point_mul_1(&k, &comb.c.G, &comb.c.a, &comb.c.b, &p, &out, comb.table->entry));
            EXPECT_TRUE(same_point(affine_infinity(), out));
        }
    EXPECT_EQ(0u, counting.allocations);
}

// wNAF loses this multiple in its last addition; the comb's mixed addition doubles instead.
TEST(EccFixPointMul1, IsRightWhereTheWindowMeetsEqualPoints) {
    Comb comb(curve("secp256r1"));
    EXPECT_TRUE(same_point(minus(comb.c, multiples(comb.c)[2]), comb.times(less(comb.c.n, 2))));
}

TEST(EccFixPointMul, UsesTheGlobalTable) {
    const Curve &c = curve("brainpoolP160r1");
    ASSERT_EQ(0, ecc_precomputation_point(&c.G, &c.a, &c.b, &c.p));
    Comb comb(c);
    const mint scalars[] = {small(0), small(1), less(c.n, 99), c.n, mint_from_hex(std::string(44, '9'))};
    for (const mint &k : scalars) {
        ecc_point out{};
        EXPECT_EQ(0, ecc_fix_point_mul(&k, nullptr, &c.a, nullptr, &c.p, &out));
        EXPECT_TRUE(same_point(comb.times(k), out)) << mint_to_hex(k);
    }
}

TEST(EccFixPointMul, UnusableFieldSizeGivesInfinity) {
    mint zero = small(0), k = small(3);
    ecc_point out{};
    EXPECT_EQ(0, ecc_fix_point_mul(&k, nullptr, &zero, nullptr, &zero, &out));
    EXPECT_TRUE(same_point(affine_infinity(), out));
}

}  // namespace

}  // namespace zokecc_test::comb_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The precomputed multiples of a base point, process-wide and in a caller's table.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>

#include "tests/ecc/multiples.h"
#include "tests/support/model_curve.h"

namespace zokecc_test::table_test {

namespace {

// A table filled with a pattern before it is built.
class PatternTable {
public:
    PatternTable() : table_(std::make_unique<PrecompTable>()) {
        std::memset(table_.get(), 0xA5, sizeof(PrecompTable));
    }
    ecc_point *entries() { return table_->entry; }
    const ecc_point &operator[](size_t i) const { return table_->entry[i]; }
    // True if all entries from `first` on still hold the pattern.
    bool untouched_from(size_t first) const {
        const uint8_t *bytes = reinterpret_cast<const uint8_t *>(table_->entry);
        for (size_t i = first * sizeof(ecc_point); i < sizeof(PrecompTable); ++i)
            if (bytes[i] != 0xA5) return false;
        return true;
    }

private:
    std::unique_ptr<PrecompTable> table_;
};

ecc_point all_zero() { return ecc_point{}; }
ecc_point zero_words_with_flag() {
    ecc_point out{};
    out.infinity = 1;
    return out;
}

// Every entry, including the three that are never read.
void expect_table(const std::vector<ecc_point> &expected, const ecc_point *entries) {
    size_t half = expected.size() / 2;
    for (size_t i = 0; i < expected.size(); ++i)
        EXPECT_TRUE(same_point(expected[i], entries[i])) << "entry " << i;
    EXPECT_TRUE(same_bytes(all_zero(), entries[half]));
    EXPECT_TRUE(same_bytes(zero_words_with_flag(), entries[2 * half]));
}

class PrecomputationOn : public testing::TestWithParam<std::string> {};

TEST_P(PrecomputationOn, EveryEntryIsTheStatedSum) {
    const Curve &c = curve(GetParam());
    PatternTable table;
    EXPECT_EQ(0, ecc_precomputation_point_1(&c.G, &c.a, &c.b, &c.p, table.entries()));
    std::vector<ecc_point> expected = ModelCurve(c.a, c.b, c.p).table(c.G);
    ASSERT_EQ((2u << c.p.len) + 1, expected.size());
    expect_table(expected, table.entries());
    EXPECT_TRUE(table.untouched_from(expected.size())) << "nothing is written above entry 2^(m+1)";
}

// By the scalar of each entry and the variable-point routine, which has no
// addition in common with the table. Entries with one and with all bits, and some between.
TEST_P(PrecomputationOn, EntriesAreTheMultiplesTheyStandFor) {
    const Curve &c = curve(GetParam());
    uint32_t m = c.p.len;
    PatternTable table;
    ecc_precomputation_point_1(&c.G, &c.a, &c.b, &c.p, table.entries());
    for (uint32_t bits : {0x01u, 0x02u, 0x03u, 0x0Du, 0x15u, 0x55u, 0x80u, 0xB6u, 0xFEu, 0xFFu}) {
        uint32_t i = bits & ((1u << m) - 1);
        if (i == 0) continue;
        for (uint32_t shift : {0u, 16u}) {
            mint k{};
            k.len = m;
            for (uint32_t j = 0; j < m; ++j) k.words[j] = (i >> j & 1u) << shift;
            mint_adjust_len(&k, static_cast<int32_t>(m));
            ecc_point expected{};
            EXPECT_EQ(1, ecc_unknown_point_mul(&k, &c.G, &c.a, &c.b, &c.p, &expected));
            uint32_t entry = shift == 0 ? i : (1u << m) + i;
            EXPECT_TRUE(same_point(expected, table[entry])) << entry;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Curves, PrecomputationOn,
                         testing::Values("brainpoolP160r1", "secp160r1", "secp192r1", "secp224r1",
                                         "secp256r1", "sm2p256v1", "brainpoolP256r1"),
                         curve_test_name<testing::TestParamInfo<std::string>>);

// y^2 = x^3 + 2x + 3 modulo 97; (3, 6) has order 5, and 2^16 is 1 modulo 5.
TEST(EccPrecomputationPoint1, OneWordPrimeHasFiveEntries) {
    mint p = small(97), a = small(2), b = small(3);
    ecc_point G = affine(small(3), small(6));
    PatternTable table;
    EXPECT_EQ(0, ecc_precomputation_point_1(&G, &a, &b, &p, table.entries()));
    EXPECT_TRUE(same_point(G, table[0]));
    EXPECT_TRUE(same_point(G, table[1]));
    EXPECT_TRUE(same_bytes(all_zero(), table[2]));
    EXPECT_TRUE(same_point(G, table[3]));
    EXPECT_TRUE(same_bytes(zero_words_with_flag(), table[4]));
    EXPECT_TRUE(table.untouched_from(5));
}

TEST(EccPrecomputationPoint1, InfiniteBasePointGivesInfiniteEntries) {
    mint p = small(97), a = small(2), b = small(3);
    ecc_point G = affine_infinity();
    PatternTable table;
    EXPECT_EQ(0, ecc_precomputation_point_1(&G, &a, &b, &p, table.entries()));
    for (size_t i : {0u, 1u, 3u, 4u}) EXPECT_TRUE(same_point(affine_infinity(), table[i])) << i;
    EXPECT_TRUE(same_bytes(all_zero(), table[2]));
}

// The entries depend on the number, not on the rest of its record.
TEST(EccPrecomputationPoint1, NoEntryHasWordsOfTheRecordAboveTheNumber) {
    mint p = small(97), a = small(2), b = small(3);
    ecc_point G = affine(small(3), small(6));
    for (size_t i = 1; i < MINT_WORDS; ++i) G.x.words[i] = G.y.words[i] = 0xDEADBEEF;
    PatternTable table;
    EXPECT_EQ(0, ecc_precomputation_point_1(&G, &a, &b, &p, table.entries()));
    for (size_t entry : {0u, 1u, 3u})
        for (size_t i = 1; i < MINT_WORDS; ++i)
            EXPECT_EQ(table[entry].x.words[i] | table[entry].y.words[i], 0u) << entry << " " << i;

    G.infinity = 1;
    EXPECT_EQ(0, ecc_precomputation_point_1(&G, &a, &b, &p, table.entries()));
    for (size_t entry : {0u, 1u, 3u}) EXPECT_TRUE(same_bytes(zero_words_with_flag(), table[entry])) << entry;
}

// (96, 0) has order 2: its double is infinity, and so are B[1] and entry 3.
TEST(EccPrecomputationPoint1, BasePointOfOrderTwoDoublesToInfinity) {
    mint p = small(97), a = small(2), b = small(3);
    ecc_point G = affine(small(96), small(0));
    PatternTable table;
    EXPECT_EQ(0, ecc_precomputation_point_1(&G, &a, &b, &p, table.entries()));
    EXPECT_TRUE(same_point(G, table[1]));
    EXPECT_TRUE(same_point(affine_infinity(), table[3]));
}

// y^2 = x^3 + 1 modulo 2^40 + 5383: G has order 641, and 2^32 is -1 modulo 641, so that B[1] is
// -G and entry 3 a sum of opposite points: (-2x, -y) of G, the first of the two.
TEST(EccPrecomputationPoint1, KeptOppositeBasePointsGiveAFiniteEntry) {
    mint p = mint_from_hex("010000001507"), a = small(0), b = small(1);
    ecc_point G = affine(mint_from_hex("713234680e"), mint_from_hex("75ff1e1d96"));
    PatternTable table;
    EXPECT_EQ(0, ecc_precomputation_point_1(&G, &a, &b, &p, table.entries()));
    EXPECT_TRUE(same_point(affine(G.x, mint_from_hex("8a00e1f771")), table[2]));
    EXPECT_TRUE(same_point(affine(mint_from_hex("1d9b9744eb"), mint_from_hex("8a00e1f771")), table[3]));
    EXPECT_TRUE(same_point(affine(mint_from_hex("e0dfc65231"), mint_from_hex("3e4b1fa307")), table[5]));
    EXPECT_TRUE(same_point(affine(mint_from_hex("3e407385ac"), mint_from_hex("c1b4e07200")), table[7]));
    EXPECT_TRUE(table.untouched_from(9));

    // 2^32 + 1 is a multiple of 641.
    mint k = mint_from_hex("0100000001");
    ecc_point out{};
    EXPECT_EQ(0, ecc_fix_point_mul_1(&k, &G, &a, &b, &p, &out, table.entries()));
    EXPECT_TRUE(same_point(table[3], out));
}

TEST(EccPrecomputationPoint1, PrimeWithoutWordsReturnsOneAndWritesNothing) {
    const Curve &c = curve("secp192r1");
    mint zero = with_garbage(small(0));
    PatternTable table;
    EXPECT_EQ(1, ecc_precomputation_point_1(&c.G, &c.a, &c.b, &zero, table.entries()));
    EXPECT_TRUE(table.untouched_from(0));
}

TEST(EccPrecomputationPoint1, PrimeAboveEightWordsReturnsOneAndWritesNothing) {
    const Curve &c = curve("secp192r1");
    mint wide = power_of_two(260);
    ASSERT_EQ(9u, wide.len);
    PatternTable table;
    EXPECT_EQ(1, ecc_precomputation_point_1(&c.G, &c.a, &c.b, &wide, table.entries()));
    EXPECT_TRUE(table.untouched_from(0));
}

TEST(EccPrecomputationPoint1, LeavesInputsAsTheyWereAndIgnoresUnusedWords) {
    const Curve &c = curve("brainpoolP160r1");
    ecc_point G = with_garbage(c.G);
    mint a = with_garbage(c.a), b = with_garbage(c.b), p = with_garbage(c.p);
    const ecc_point G0 = G;
    const mint a0 = a, b0 = b, p0 = p;
    PatternTable table, clean;
    EXPECT_EQ(0, ecc_precomputation_point_1(&G, &a, &b, &p, table.entries()));
    EXPECT_EQ(0, ecc_precomputation_point_1(&c.G, &c.a, &c.b, &c.p, clean.entries()));
    for (size_t i = 0; i <= 64; ++i) EXPECT_TRUE(same_point(clean[i], table[i])) << i;
    EXPECT_TRUE(same_bytes(G0, G));
    EXPECT_TRUE(same_bytes(a0, a));
    EXPECT_TRUE(same_bytes(b0, b));
    EXPECT_TRUE(same_bytes(p0, p));
}

TEST(EccPrecomputationPoint1, DoesNotReadBNorTheGlobalCurve) {
    const Curve &c = curve("brainpoolP160r1");
    auto before = std::make_unique<GlobalCurve>(global_curve);
    PatternTable table, other;
    EXPECT_EQ(0, ecc_precomputation_point_1(&c.G, &c.a, nullptr, &c.p, table.entries()));
    EXPECT_TRUE(same_bytes(*before, global_curve));
    EXPECT_EQ(0, ecc_precomputation_point_1(&c.G, &c.a, &c.b, &c.p, other.entries()));
    for (size_t i = 0; i <= 64; ++i) EXPECT_TRUE(same_point(other[i], table[i])) << i;
}

TEST(EccPrecomputationPoint, BuildsTheGlobalTableAndNothingAboveIt) {
    const Curve &c = curve("secp224r1");
    std::memset(&global_curve.table, 0xA5, sizeof(global_curve.table));
    EXPECT_EQ(0, ecc_precomputation_point(&c.G, &c.a, &c.b, &c.p));
    PatternTable expected;
    ecc_precomputation_point_1(&c.G, &c.a, &c.b, &c.p, expected.entries());
    for (size_t i = 0; i <= 256; ++i) EXPECT_TRUE(same_point(expected[i], global_curve.table.entry[i])) << i;
    const uint8_t *above = reinterpret_cast<const uint8_t *>(&global_curve.table.entry[257]);
    for (size_t i = 0; i < (520 - 257) * sizeof(ecc_point); ++i) ASSERT_EQ(0xA5, above[i]) << i;
}

TEST(EccPrecomputationPoint, ChangesNothingOfTheGlobalCurveButBaseAndTable) {
    const Curve &c = curve("brainpoolP160r1");
    auto before = std::make_unique<GlobalCurve>(global_curve);
    EXPECT_EQ(0, ecc_precomputation_point(&c.G, &c.a, &c.b, &c.p));
    EXPECT_EQ(0, std::memcmp(before.get(), &global_curve, offsetof(GlobalCurve, base)));
}

// The last round computes 2^16 B[m], that is 2^32 G again; it is never read.
TEST(EccPrecomputationPoint, KeptLastRoundOfBasePointsIsComputed) {
    const Curve &c = curve("sm2p256v1");
    std::memset(&global_curve.base, 0xA5, sizeof(global_curve.base));
    EXPECT_EQ(0, ecc_precomputation_point(&c.G, &c.a, &c.b, &c.p));
    std::vector<ecc_point> expected = ModelCurve(c.a, c.b, c.p).base_points(c.G);
    ASSERT_EQ(17u, expected.size());
    for (size_t i = 0; i < 17; ++i) EXPECT_TRUE(same_point(expected[i], global_curve.base[i])) << i;
    EXPECT_TRUE(same_point(global_curve.base[1], global_curve.base[16]));
}

TEST(EccPrecomputationPoint, ShorterPrimeLeavesTheHigherBasePoints) {
    const Curve &c = curve("brainpoolP160r1");
    std::memset(&global_curve.base, 0xA5, sizeof(global_curve.base));
    EXPECT_EQ(0, ecc_precomputation_point(&c.G, &c.a, &c.b, &c.p));
    std::vector<ecc_point> expected = ModelCurve(c.a, c.b, c.p).base_points(c.G);
    ASSERT_EQ(11u, expected.size());
    for (size_t i = 0; i < 11; ++i) EXPECT_TRUE(same_point(expected[i], global_curve.base[i])) << i;
    const uint8_t *above = reinterpret_cast<const uint8_t *>(&global_curve.base[11]);
    for (size_t i = 0; i < 6 * sizeof(ecc_point); ++i) ASSERT_EQ(0xA5, above[i]) << i;
}

TEST(EccPrecomputationPoint, UnusableFieldSizeReturnsOneAndWritesNothing) {
    const Curve &c = curve("secp192r1");
    auto before = std::make_unique<GlobalCurve>(global_curve);
    mint zero = small(0), wide = power_of_two(260);
    EXPECT_EQ(1, ecc_precomputation_point(&c.G, &c.a, &c.b, &zero));
    EXPECT_EQ(1, ecc_precomputation_point(&c.G, &c.a, &c.b, &wide));
    EXPECT_TRUE(same_bytes(*before, global_curve));
}

}  // namespace

}  // namespace zokecc_test::table_test

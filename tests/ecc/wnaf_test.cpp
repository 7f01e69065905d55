// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Multiples of any point by wNAF.
#include <gtest/gtest.h>

#include <memory>

#include "tests/ecc/multiples.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/model_curve.h"

namespace zokecc_test::wnaf_test {

namespace {

ecc_point times(const Curve &c, const mint &k, const ecc_point &P) {
    ecc_point out{};
    EXPECT_EQ(1, ecc_unknown_point_mul(&k, &P, &c.a, &c.b, &c.p, &out));
    return out;
}

// k n + offset.
mint near_order(const Curve &c, uint32_t factor, int offset) {
    mint product{}, multiplier = small(factor), out{};
    mint distance = small(static_cast<uint32_t>(offset < 0 ? -offset : offset));
    mint_mul(&c.n, &multiplier, &product);
    if (offset < 0)
        mint_sub(&product, &distance, &out);
    else
        mint_add(&product, &distance, &out);
    return out;
}

// Offsets from n, 2n and 3n within 20 at which the product is lost, and the curves they belong
// to. The last digit d is odd and below 8 in magnitude, the sum before it is (k - d) P, and k P is
// lost if that is d P: k = 2d modulo n and k = d modulo 16, or twice such a k. For n itself
// this is d = -(n mod 16) as a signed digit.
struct LostProducts {
    const char *curve;
    int near_n, near_2n, near_3n;  // 0 if there is none
};
const LostProducts kLost[] = {
    {"secp160r1", -14, 0, -10},      {"secp192r1", -2, -4, -6},    {"secp224r1", 6, 12, -14},
    {"secp256r1", -2, -4, -6},       {"secp256k1", -2, -4, -6},    {"brainpoolP160r1", 14, 0, 10},
    {"brainpoolP192r1", -2, -4, -6}, {"brainpoolP224r1", 2, 4, 6}, {"brainpoolP256r1", -14, 0, -10},
    {"sm2p256v1", -6, -12, 14},      {"sm2test256", -14, 0, -10},  {"sm2test192", -14, 0, -10},
};

class EccUnknownPointMulLost : public testing::TestWithParam<LostProducts> {};

// KEPT: the last addition meets an equal point in another record.
TEST_P(EccUnknownPointMulLost, KeptLastAdditionOfEqualPointsGivesInfinity) {
    const Curve &c = curve(GetParam().curve);
    const int lost[] = {GetParam().near_n, GetParam().near_2n, GetParam().near_3n};
    for (uint32_t factor = 1; factor <= 3; ++factor) {
        int offset = lost[factor - 1];
        if (offset == 0) continue;
        mint k = near_order(c, factor, offset);
        for (size_t multiple : {1u, 3u})
            EXPECT_TRUE(same_point(affine_infinity(), times(c, k, multiples(c)[multiple])))
                << factor << " n + " << offset;
    }
}

TEST_P(EccUnknownPointMulLost, EveryOtherScalarNearAMultipleOfTheOrderIsRight) {
    const Curve &c = curve(GetParam().curve);
    const int lost[] = {GetParam().near_n, GetParam().near_2n, GetParam().near_3n};
    for (uint32_t factor = 1; factor <= 3; ++factor)
        for (int offset = -20; offset <= 20; offset += factor == 1 ? 1 : 4) {
            if (offset != 0 && offset == lost[factor - 1]) continue;
            const ecc_point &multiple = multiples(c)[static_cast<size_t>(offset < 0 ? -offset : offset)];
            ecc_point expected = offset < 0 ? minus(c, multiple) : multiple;
            EXPECT_TRUE(same_point(expected, times(c, near_order(c, factor, offset), c.G)))
                << factor << " n + " << offset;
        }
}

TEST_P(EccUnknownPointMulLost, SmallMultiplesAreAsPublished) {
    const Curve &c = curve(GetParam().curve);
    for (uint32_t k = 0; k <= 20; ++k) EXPECT_TRUE(same_point(multiples(c)[k], times(c, small(k), c.G))) << k;
}

INSTANTIATE_TEST_SUITE_P(Curves, EccUnknownPointMulLost, testing::ValuesIn(kLost),
                         [](const auto &tested) { return std::string(tested.param.curve); });

// On the curves whose order is 1, 3, 5 or 7 modulo 16 the lost multiple is below the order.
TEST(EccUnknownPointMul, KeptLostMultipleBelowTheOrder) {
    struct {
        const char *curve;
        uint32_t residue;
    } const cases[] = {{"secp192r1", 1},       {"secp256r1", 1},  {"secp256k1", 1},
                       {"brainpoolP192r1", 1}, {"sm2p256v1", 3},  {"brainpoolP256r1", 7},
                       {"sm2test256", 7},      {"sm2test192", 7}, {"secp160r1", 7}};
    for (auto [name, residue] : cases) {
        const Curve &c = curve(name);
        ASSERT_EQ(residue, c.n.words[0] % 16) << name;
        mint k = near_order(c, 1, -2 * static_cast<int>(residue));
        EXPECT_TRUE(same_point(affine_infinity(), times(c, k, multiples(c)[5]))) << name;
    }
}

TEST(EccUnknownPointMul, ZeroScalarGivesInfinity) {
    const Curve &c = curve("secp256r1");
    for (const mint &zero : {small(0), zero_in_one_word(), with_garbage(small(0))})
        EXPECT_TRUE(same_point(affine_infinity(), times(c, zero, c.G)));
}

TEST(EccUnknownPointMul, InfinitePointGivesInfinityForEveryScalar) {
    const Curve &c = curve("sm2p256v1");
    ecc_point P = c.G;
    P.infinity = 1;
    for (const mint &k : {small(0), small(1), small(6), c.n, c.p})
        EXPECT_TRUE(same_point(affine_infinity(), times(c, k, P))) << mint_to_hex(k);
}

TEST(EccUnknownPointMul, InfiniteResultLeavesTheWords) {
    const Curve &c = curve("brainpoolP160r1");
    for (const mint &k : {small(0), c.n}) {
        GuardedRecord<ecc_point> out;
        ecc_point expected = *out.get();
        expected.infinity = 1;
        expected.x.len = 0;
        expected.y.len = 0;
        EXPECT_EQ(1, ecc_unknown_point_mul(&k, &c.G, &c.a, &c.b, &c.p, out.get()));
        EXPECT_TRUE(same_bytes(expected, *out.get()));
        EXPECT_TRUE(out.guards_intact());
    }
}

TEST(EccUnknownPointMul, EveryFlagButOneIsFinite) {
    const Curve &c = curve("secp224r1");
    ecc_point P = c.G;
    for (uint32_t flag : {2u, 0xFFFFFFFFu}) {
        P.infinity = flag;
        EXPECT_TRUE(same_point(multiples(c)[9], times(c, small(9), P))) << flag;
    }
}

// `bits` bits: ones at both ends, and runs of ones and zeros between.
mint scalar_of(unsigned bits) {
    mint out{};
    out.len = (bits + 31) / 32;
    const uint32_t pattern[] = {0x9F03C1E7u, 0xFFFFFFFFu, 0x00018000u, 0x5A17E3C9u, 0x80000001u};
    for (uint32_t i = 0; i < out.len; ++i) out.words[i] = pattern[i % 5];
    unsigned top = (bits - 1) % 32;
    out.words[out.len - 1] &= 0xFFFFFFFFu >> (31 - top);
    out.words[out.len - 1] |= 1u << top;
    out.words[0] |= 1u;
    return out;
}

// The window grows at 20, 70 and 300 bits; 608 is the longest scalar.
// Compared with the scalar reduced by the order, and with the model's digits.
TEST(EccUnknownPointMul, ScalarsOfEverySizeAgreeWithTheReducedScalar) {
    for (const char *name : {"brainpoolP160r1", "secp224r1", "sm2p256v1"}) {
        const Curve &c = curve(name);
        auto table = std::make_unique<PrecompTable>();
        ecc_precomputation_point_1(&c.G, &c.a, &c.b, &c.p, table->entry);
        for (unsigned bits : {1u, 3u, 19u, 20u, 21u, 69u, 70u, 71u, 159u, 255u, 299u, 300u, 301u, 608u}) {
            mint k = scalar_of(bits), reduced{};
            ASSERT_EQ(bits, model_bit_length(k));
            mint_mod(&k, &c.n, &reduced);
            ecc_point expected{};
            ecc_fix_point_mul_1(&reduced, &c.G, &c.a, &c.b, &c.p, &expected, table->entry);
            EXPECT_TRUE(same_point(expected, times(c, k, c.G))) << name << " " << bits;
            EXPECT_TRUE(same_point(expected, ModelCurve(c.a, c.b, c.p).window(k, c.G))) << "model, " << bits;
        }
    }
}

TEST(EccUnknownPointMul, StructuredLongScalarsAreRecoded) {
    const Curve &c = curve("secp192r1");
    ModelCurve model(c.a, c.b, c.p);
    mint top_bit{}, ones{}, alternating{};
    top_bit.len = ones.len = alternating.len = MINT_WORDS;
    top_bit.words[18] = 0x80000000u;
    for (uint32_t i = 0; i < MINT_WORDS; ++i) {
        ones.words[i] = 0xFFFFFFFFu;
        alternating.words[i] = i % 2 == 0 ? 0xAAAAAAAAu : 0x55555555u;
    }
    for (const mint &k : {top_bit, ones, alternating})
        EXPECT_TRUE(same_point(model.window(k, multiples(c)[7]), times(c, k, multiples(c)[7])));
}

TEST(EccUnknownPointMul, UntrimmedScalarIsTheSameNumber) {
    const Curve &c = curve("secp256k1");
    for (const mint &k : {small(1), small(6), near_order(c, 1, -7), scalar_of(69)}) {
        mint long_k = k;
        while (long_k.len < MINT_WORDS) long_k.words[long_k.len++] = 0;
        EXPECT_TRUE(same_point(times(c, k, c.G), times(c, untrimmed(k), c.G))) << mint_to_hex(k);
        EXPECT_TRUE(same_point(times(c, k, c.G), times(c, long_k, c.G))) << mint_to_hex(k);
    }
}

// Zero words on top count 32 bits each except the highest, which makes the window wider: four from
// eleven words on. There the last addition of n - 2 meets no equal point.
TEST(EccUnknownPointMul, KeptUntrimmedScalarSelectsAWiderWindow) {
    const Curve &c = curve("secp256r1");
    mint k = near_order(c, 1, -2);
    while (k.len < 10) k.words[k.len++] = 0;
    EXPECT_TRUE(same_point(affine_infinity(), times(c, k, c.G))) << "288 bits";
    k.words[k.len++] = 0;
    EXPECT_TRUE(same_point(minus(c, multiples(c)[2]), times(c, k, c.G))) << "320 bits";
}

TEST(EccUnknownPointMul, WordsAboveTheUsedOnesDoNotMatter) {
    const Curve &c = curve("secp224r1");
    mint a = with_garbage(c.a), b = with_garbage(c.b), p = with_garbage(c.p);
    ecc_point P = with_garbage(multiples(c)[3]);
    for (const mint &k : {small(5), scalar_of(33), scalar_of(224), near_order(c, 1, -1)}) {
        mint scalar = with_garbage(k);
        ecc_point out{};
        EXPECT_EQ(1, ecc_unknown_point_mul(&scalar, &P, &a, &b, &p, &out));
        EXPECT_TRUE(same_point(times(c, k, multiples(c)[3]), out)) << mint_to_hex(k);
    }
}

TEST(EccUnknownPointMul, OutputMayBeThePoint) {
    const Curve &c = curve("brainpoolP192r1");
    for (const mint &k : {small(0), small(1), small(5), scalar_of(150), c.n}) {
        ecc_point P = multiples(c)[2];
        EXPECT_EQ(1, ecc_unknown_point_mul(&k, &P, &c.a, &c.b, &c.p, &P));
        EXPECT_TRUE(same_point(times(c, k, multiples(c)[2]), P)) << mint_to_hex(k);
    }
}

TEST(EccUnknownPointMul, LeavesInputsAsTheyWereAndDoesNotReadB) {
    const Curve &c = curve("secp192r1");
    mint k = with_garbage(untrimmed(scalar_of(100))), a = with_garbage(untrimmed(c.a)), p = with_garbage(c.p);
    ecc_point P = with_garbage(multiples(c)[4]);
    const mint k0 = k, a0 = a, p0 = p;
    const ecc_point P0 = P;
    GuardedRecord<ecc_point> out;
    EXPECT_EQ(1, ecc_unknown_point_mul(&k, &P, &a, nullptr, &p, out.get()));
    EXPECT_TRUE(same_point(times(c, scalar_of(100), multiples(c)[4]), *out.get()));
    EXPECT_TRUE(out.guards_intact());
    EXPECT_TRUE(same_bytes(k0, k));
    EXPECT_TRUE(same_bytes(a0, a));
    EXPECT_TRUE(same_bytes(p0, p));
    EXPECT_TRUE(same_bytes(P0, P));
}

// KEPT: L + 1 bytes for a scalar of L bits, one byte for zero, freed in the hardened build
// only.
TEST(EccUnknownPointMul, KeptDigitBufferStaysAllocated) {
    const Curve &c = curve("brainpoolP160r1");
    for (unsigned bits : {1u, 2u, 19u, 20u, 70u, 160u, 300u, 607u, 608u}) {
        mint k = scalar_of(bits);
        FailingAlloc counting;
        times(c, k, c.G);
        EXPECT_EQ(1u, counting.allocations) << bits;
        EXPECT_EQ(bits + 1, counting.last_size) << bits;
        EXPECT_EQ(kept_digit_buffers(1), counting.outstanding) << bits;
    }
    for (const mint &k : {untrimmed(small(6)), untrimmed(zero_in_one_word())}) {
        FailingAlloc counting;
        times(c, k, c.G);
        EXPECT_EQ(33u, counting.last_size) << "the zero word counts as 32 bits below it";
    }
    for (const mint &zero : {small(0), zero_in_one_word()}) {
        FailingAlloc counting;
        times(c, zero, c.G);
        EXPECT_EQ(1u, counting.allocations);
        EXPECT_EQ(1u, counting.last_size);
        EXPECT_EQ(kept_digit_buffers(1), counting.outstanding);
    }
}

TEST(EccUnknownPointMul, InfinitePointStillAllocatesItsDigits) {
    const Curve &c = curve("brainpoolP160r1");
    FailingAlloc counting;
    times(c, scalar_of(77), affine_infinity());
    EXPECT_EQ(1u, counting.allocations);
    EXPECT_EQ(78u, counting.last_size);
}

TEST(EccUnknownPointMul, FailedAllocationReturnsMinusOneAndWritesNothing) {
    const Curve &c = curve("secp256r1");
    for (const mint &k : {small(1), small(77), c.n, scalar_of(608)}) {
        GuardedRecord<ecc_point> out;
        FailingAlloc failing(1);
        EXPECT_EQ(-1, ecc_unknown_point_mul(&k, &c.G, &c.a, &c.b, &c.p, out.get()));
        EXPECT_EQ(1u, failing.allocations);
        EXPECT_TRUE(out.unchanged());
    }
}

TEST(EccUnknownPointMul, FailedAllocationComesAfterTheInfinityOfZeroAndOfInfinity) {
    const Curve &c = curve("secp256r1");
    ecc_point infinite = c.G;
    infinite.infinity = 1;
    struct {
        mint k;
        ecc_point P;
    } const cases[] = {
        {small(0), c.G}, {zero_in_one_word(), c.G}, {small(9), infinite}, {small(0), infinite}};
    for (const auto &[k, P] : cases) {
        ecc_point out = c.G;
        FailingAlloc failing(1);
        EXPECT_EQ(-1, ecc_unknown_point_mul(&k, &P, &c.a, &c.b, &c.p, &out));
        EXPECT_TRUE(same_point(affine_infinity(), out));
    }
}

}  // namespace

}  // namespace zokecc_test::wnaf_test

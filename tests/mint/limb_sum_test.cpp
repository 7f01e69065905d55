// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Sums of products of limbs, compared with naive integers.
#include "mint/limbs/limb.h"
#include "tests/mint/limb_rows.h"
#include "tests/support/counting_trace.h"
#include "tests/support/emulated.h"

namespace zokecc_test::limb_sum_test {
namespace {

// The sum of products that add_column<count> computes, if it fits two limbs.
template <unsigned count, class Steps>
void check_column(HardWords &draw) {
    using L = typename Steps::Limb;
    for (int round = 0; round < rounds(60); ++round) {
        Row<L> a = drawn_limbs<L>(draw, count);
        Row<L> b = drawn_limbs<L>(draw, count);
        for (L &limb : a) limb >>= 4;  // sixteen such products fit
        const L start = drawn_limb<L>(draw);
        Natural expected = natural(start);
        for (unsigned i = 0; i < count; ++i) expected = expected + natural(a[i]) * natural(b[count - 1 - i]);
        const zokecc::Double<L> sum =
            Steps::template add_column<count>(zokecc::Double<L>{start}, a.data(), b.data());
        const Row<L> got = {static_cast<L>(sum), static_cast<L>(sum >> zokecc::kLimbBits<L>)};
        EXPECT_EQ(expected, natural(got)) << count << " products, " << draw.where();
    }
    if constexpr (count > 1) check_column<count - 1, Steps>(draw);
}

template <class Steps>
class LimbColumns : public testing::Test {};
TYPED_TEST_SUITE(LimbColumns, StepTypes);

TYPED_TEST(LimbColumns, OneToElevenProductsAddUp) {
    HardWords draw(7012);
    check_column<11, TypeParam>(draw);
}

TYPED_TEST(LimbColumns, OneProductIsAddedUpToTheLastBit) {
    using L = typename TypeParam::Limb;
    using D = zokecc::Double<L>;
    // (B - 1)^2 + 2 (B - 1) = B^2 - 1
    const D sum =
        TypeParam::multiply_add(D{kAllOnesLimb<L>} + kAllOnesLimb<L>, kAllOnesLimb<L>, kAllOnesLimb<L>);
    EXPECT_EQ(kAllOnesLimb<L>, static_cast<L>(sum));
    EXPECT_EQ(kAllOnesLimb<L>, static_cast<L>(sum >> zokecc::kLimbBits<L>));
}

#ifdef __SIZEOF_INT128__

using SumTypes = testing::Types<zokecc::PortableSum, zokecc::NativeSteps::Sum>;

template <class Sum>
class LimbSum : public testing::Test {};
TYPED_TEST_SUITE(LimbSum, SumTypes);

TYPED_TEST(LimbSum, ProductsAndLimbsAddUp) {
    HardWords draw(7011);
    for (int round = 0; round < rounds(300); ++round) {
        TypeParam sum;
        Natural expected;
        for (uint32_t products = 1 + draw.below(12); products > 0; --products) {
            const uint64_t a = drawn_limb<uint64_t>(draw);
            const uint64_t b = drawn_limb<uint64_t>(draw);
            sum.add_product(a, b);
            sum.add(b);
            expected = expected + natural(a) * natural(b) + natural(b);
        }
        ASSERT_EQ(expected, natural(Row<uint64_t>{sum.low, sum.middle, sum.high})) << draw.where();
        for (unsigned limb = 0; limb < 4; ++limb) {
            ASSERT_EQ((expected >> (64 * limb)).low_bits(64), natural(sum.shift())) << draw.where();
        }
    }
}

TYPED_TEST(LimbSum, LargestProductsCarryIntoTheThirdLimb) {
    const uint64_t ones = kAllOnesLimb<uint64_t>;
    TypeParam sum;
    Natural expected;
    for (int products = 1; products <= 20; ++products) {
        sum.add_product(ones, ones);
        sum.add(ones);
        expected = expected + natural(ones) * natural(ones) + natural(ones);
        EXPECT_EQ(expected, natural(Row<uint64_t>{sum.low, sum.middle, sum.high})) << products;
    }
    EXPECT_EQ(19u, sum.high);  // 20 (2^64 - 1) 2^64 is a little below 20 * 2^128
}

#endif

}  // namespace
}  // namespace zokecc_test::limb_sum_test

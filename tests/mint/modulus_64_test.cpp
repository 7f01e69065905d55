// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Products on 64-bit limbs, summed by compiled code and by assembly, in columns and, if the
// processor supports it, in rows.
#include "mint/limbs/modulus_64.h"

#include "tests/mint/limb_products.h"

#ifdef __SIZEOF_INT128__

namespace zokecc_test::full_limbs_test {
namespace {

template <class Product>
class FullLimbs : public testing::Test {};

using Portable = zokecc::PortableSteps<uint64_t>;

#ifdef __x86_64__
// Columns only, as on a processor without the instructions for rows.
struct Columns : zokecc::NativeSteps {
    using Sum = zokecc::x86_64::AssembledSum;
};
#endif

using Products = testing::Types<
#ifdef __x86_64__
    zokecc::FullLimbs<3, Columns>, zokecc::FullLimbs<4, Columns>, zokecc::FullLimbs<5, Columns>,
#endif
    zokecc::FullLimbs<3>, zokecc::FullLimbs<4>, zokecc::FullLimbs<3, Portable>,
    zokecc::FullLimbs<4, Portable>, zokecc::FullLimbs<5, Portable>>;
TYPED_TEST_SUITE(FullLimbs, Products);

// The widths for N limbs: 2 N words and one less, from five to nine words in all.
TYPED_TEST(FullLimbs, ProductsAreThoseOfTheDefinition) {
    for (uint32_t words = 2 * TypeParam::N - 1; words <= 2 * TypeParam::N && words <= 9; ++words)
        check_width<TypeParam>(words, 64, 7300);
}

TYPED_TEST(FullLimbs, WidthIsThatOfTheModulus) {
    const uint32_t words[2 * TypeParam::N + 1] = {};
    EXPECT_FALSE(TypeParam::fits(words, 2 * TypeParam::N - 2));
    EXPECT_TRUE(TypeParam::fits(words, 2 * TypeParam::N - 1));
    EXPECT_TRUE(TypeParam::fits(words, 2 * TypeParam::N));
    EXPECT_FALSE(TypeParam::fits(words, 2 * TypeParam::N + 1));
}

}  // namespace
}  // namespace zokecc_test::full_limbs_test

#endif

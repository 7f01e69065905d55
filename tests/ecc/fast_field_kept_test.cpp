// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The kept subtraction in the fast fields, computed by hand, and the moduli that they accept.
#include "tests/ecc/field_pairs.h"
#include "tests/mint/numbers.h"

namespace zokecc_test::fast_field_kept_test {
namespace {

// a - b modulo p in one of the fields.
template <class Field>
mint difference(const mint &a, const mint &b, const mint &p) {
    const Field field(p);
    typename Field::Element x, y;
    EXPECT_TRUE(field.load(a, x) && field.load(b, y));
    field.sub(x, y, x);
    mint out{};
    field.store(x, out);
    return out;
}

const char kSecp256k1[] = "fffffffffffffffffffffffffffffffffffffffffffffffffffffffefffffc2f";

template <class Field>
void check_kept_differences() {
    const mint p = of_hex(kSecp256k1);
    // Word 2 borrows, and word 3 is equal in both.
    const mint a = of_words({0, 0xFFFFFFFFu, 1, 5, 9});
    const mint b = of_words({1, 0, 2, 5, 3});
    const mint first = of_words({0xFFFFFFFFu, 0xFFFFFFFEu, 0xFFFFFFFFu, 0xFFFFFFFEu, 5});
    EXPECT_TRUE(is_value(difference<Field>(a, b, p), first));
    EXPECT_NE(Natural(a) - Natural(b), Natural(first));
    // p - first: word 0 borrows, and words 1 and 2 are equal in both.
    const mint second = of_words(
        {0xFFFFFC30u, 0xFFFFFFFEu, 0xFFFFFFFEu, 0, 0xFFFFFFFAu, 0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu});
    EXPECT_TRUE(is_value(difference<Field>(b, a, p), second));
    EXPECT_NE(Natural(p) + Natural(b) - Natural(a), Natural(second));
    EXPECT_NE(Natural(p) - Natural(first), Natural(second));
}

TEST(FastField, KeptBorrowRuleInModularSubtraction) {
    CountingTrace::reset();
    check_kept_differences<Counted<zokecc::AnyShortLimbs>>();
    check_kept_differences<Counted<zokecc::AnyWordLimbs>>();
    EXPECT_EQ(4, CountingTrace::counts.first_difference);
    EXPECT_EQ(2, CountingTrace::counts.second_difference);
#ifdef __SIZEOF_INT128__
    check_kept_differences<Counted<zokecc::FullLimbs<4>>>();
    check_kept_differences<Counted<PortableFullLimbs<4>>>();
#else
    check_kept_differences<Counted<PortableShortLimbs>>();
    check_kept_differences<Counted<PortableWordLimbs>>();
#endif
    EXPECT_EQ(8, CountingTrace::counts.first_difference);
    EXPECT_EQ(4, CountingTrace::counts.second_difference);
}

template <class Field>
void check_kept_doubling() {
    const mint p = of_hex(kSecp256k1);
    // 2 a is p and 2^64 - 1: word 0 borrows, word 1 is p's.
    const mint a = ((Natural(p) + Natural::power_of_two(64) - Natural(1)) >> 1).to_mint();
    const Field field(p);
    typename Field::Element x;
    ASSERT_TRUE(field.load(a, x));
    field.twice(x, x);
    mint out{};
    field.store(x, out);
    EXPECT_TRUE(is_value(out, of_words({0xFFFFFFFFu, 0xFFFFFFFEu})));
}

TEST(FastField, KeptBorrowRuleInDoubling) {
    CountingTrace::reset();
    check_kept_doubling<Counted<zokecc::AnyShortLimbs>>();
    EXPECT_EQ(1, CountingTrace::counts.doubled_difference);
#ifdef __SIZEOF_INT128__
    check_kept_doubling<Counted<zokecc::FullLimbs<4>>>();
    check_kept_doubling<Counted<PortableFullLimbs<4>>>();
#else
    check_kept_doubling<Counted<zokecc::AnyWordLimbs>>();
    check_kept_doubling<Counted<PortableShortLimbs>>();
#endif
    EXPECT_EQ(3, CountingTrace::counts.doubled_difference);
}

template <class Field>
bool serves(const Natural &p) {
    return Field::serves(p.to_mint());
}

TEST(FastField, ServesOddModuliOfFiveToNineWordsAlone) {
    using Short = Counted<zokecc::AnyShortLimbs>;
    const Natural one(1);
    for (unsigned words = 1; words <= MINT_WORDS; ++words) {
        const Natural p = Natural::power_of_two(32 * words) - one;
        const bool served = words >= 5 && words <= 9;
        EXPECT_EQ(served, serves<Short>(p)) << words;
        EXPECT_FALSE(serves<Short>(p - one)) << words;
        mint untrimmed = p.to_mint();
        if (untrimmed.len < MINT_WORDS) untrimmed.words[untrimmed.len++] = 0;
        EXPECT_EQ(words == MINT_WORDS ? served : false, Short::serves(untrimmed)) << words;
#ifdef __SIZEOF_INT128__
        using zokecc::FullLimbs;
        EXPECT_EQ(words == 5 || words == 6, serves<Counted<FullLimbs<3>>>(p)) << words;
        EXPECT_EQ(words == 7 || words == 8, serves<Counted<FullLimbs<4>>>(p)) << words;
        EXPECT_EQ(words == 9, serves<Counted<FullLimbs<5>>>(p)) << words;
        EXPECT_FALSE(serves<Counted<FullLimbs<4>>>(p - one)) << words;
        EXPECT_FALSE(Counted<FullLimbs<4>>::serves(untrimmed)) << words;
#endif
    }
    EXPECT_FALSE(serves<Short>(Natural()));
    EXPECT_FALSE(Short::serves(counting_words(0x80000008u)));
    EXPECT_FALSE(Short::serves(counting_words(0xFFFFFFFFu)));
}

}  // namespace
}  // namespace zokecc_test::fast_field_kept_test

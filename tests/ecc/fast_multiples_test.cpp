// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Multiples of points and tables over the fast fields, compared with the reference byte for byte.
#include <algorithm>
#include <memory>

#include "ecc/comb.h"
#include "ecc/table_builder.h"
#include "ecc/wnaf.h"
#include "tests/ecc/field_pairs.h"
#include "tests/ecc/multiples.h"
#include "tests/support/emulated.h"
#include "tests/support/model_curve.h"

namespace zokecc_test::fast_multiples_test {
namespace {

using zokecc::ReferenceField;

// Critical scalars: 0, 1, those around the order, all ones, and hard ones.
std::vector<mint> hard_scalars(const Curve &c, HardWords &draw) {
    const Natural n(c.n);
    const Natural one(1);
    std::vector<mint> out = {mint{}, small(1), small(2), c.n, (n - one).to_mint(), (n + one).to_mint()};
    out.push_back((Natural::power_of_two(32 * c.p.len) - one).to_mint());
    out.push_back(Natural::power_of_two(32 * c.p.len - 1).to_mint());
    for (int i = 0; i < rounds(6); ++i) out.push_back(draw.untrimmed(c.p.len));
    return out;
}

template <class Field>
class FastMultiples : public testing::Test {
protected:
    HardWords draw{8151};
};
TYPED_TEST_SUITE(FastMultiples, AllFields);

// There is no named curve of nine words.
template <class Field>
std::vector<std::string> served_curves() {
    std::vector<std::string> out;
    for (const std::string &name : all_curve_names())
        if (Field::serves(curve(name).p)) out.push_back(name);
    return out;
}

// Every byte of the result, written over a known pattern.
template <class Field, class Multiple>
ecc_point multiple_of(const Field &f, Multiple multiple) {
    ecc_point out;
    std::memset(&out, 0xA5, sizeof out);
    EXPECT_TRUE(multiple(f, out));
    return out;
}

TYPED_TEST(FastMultiples, WindowMultiples) {
    for (const std::string &name : served_curves<TypeParam>()) {
        const Curve &c = curve(name);
        const TypeParam fast(c.p);
        std::vector<mint> scalars = hard_scalars(c, this->draw);
        scalars.push_back((Natural::power_of_two(608) - Natural(1)).to_mint());
        for (const mint &k : scalars) {
            if (kEmulated && this->draw.below(3) != 0) continue;
            const ModelDigits model = model_digits(k);
            const std::vector<int8_t> digit(model.digit.begin(), model.digit.end());
            const zokecc::WindowDigits digits{digit.data(), static_cast<int32_t>(digit.size()), model.width};
            const ecc_point P = this->draw.below(2) == 0 ? c.G : loadable_point(this->draw, c.p);
            auto multiple = [&](const auto &f, ecc_point &out) {
                return zokecc::WindowMultiple{digits, P, c.a, out}.over(f);
            };
            EXPECT_TRUE(same_bytes(multiple_of(ReferenceField{c.p}, multiple), multiple_of(fast, multiple)))
                << name << ", " << mint_to_hex(k);
        }
    }
}

// Short scalars keep the structure of the point throughout.
TYPED_TEST(FastMultiples, WindowMultiplesOfAnyPoint) {
    for (const mint &p : served_moduli<TypeParam>(this->draw, rounds(12))) {
        const TypeParam fast(p);
        const mint a = loadable(this->draw, p);
        for (const mint &k :
             {small(this->draw.between(1, 31)), this->draw.trimmed(2), this->draw.trimmed(12)}) {
            const ModelDigits model = model_digits(k);
            const std::vector<int8_t> digit(model.digit.begin(), model.digit.end());
            const zokecc::WindowDigits digits{digit.data(), static_cast<int32_t>(digit.size()), model.width};
            const ecc_point P = loadable_point(this->draw, p);
            auto multiple = [&](const auto &f, ecc_point &out) {
                return zokecc::WindowMultiple{digits, P, a, out}.over(f);
            };
            EXPECT_TRUE(same_bytes(multiple_of(ReferenceField{p}, multiple), multiple_of(fast, multiple)))
                << mint_to_hex(p) << ", " << mint_to_hex(k) << ", " << this->draw.where();
        }
    }
}

template <class Field>
std::unique_ptr<PrecompTable> table_of(const Field &f, const Curve &c) {
    auto table = std::make_unique<PrecompTable>();
    zokecc::TableBuilder<Field> builder(f);
    EXPECT_TRUE(builder.load(c.a));
    EXPECT_TRUE(builder.fill_table(c.G, table->entry, 1u << c.p.len));
    return table;
}

// Under emulation, a table of eight words would take longer than everything else here.
bool is_in_reach(const Curve &c) { return c.p.len <= (kEmulated ? 6u : 8u); }

TYPED_TEST(FastMultiples, TablesAndCombMultiples) {
    uint32_t seen = 0;
    for (const std::string &name : served_curves<TypeParam>()) {
        const Curve &c = curve(name);
        if (!is_in_reach(c) || (seen & 1u << c.p.len) != 0) continue;
        seen |= 1u << c.p.len;
        const TypeParam fast(c.p);
        const auto table = table_of(fast, c);
        const auto wanted_table = table_of(ReferenceField{c.p}, c);
        for (uint32_t i = 0; i < PRECOMP_TABLE_ENTRIES; ++i)
            ASSERT_TRUE(same_bytes(wanted_table->entry[i], table->entry[i])) << name << ", entry " << i;
        for (const mint &k : hard_scalars(c, this->draw)) {
            auto multiple = [&](const auto &f, ecc_point &out) {
                return zokecc::CombMultiple{k, c.p.len, table->entry, c.a, out}.over(f);
            };
            EXPECT_TRUE(same_bytes(multiple_of(ReferenceField{c.p}, multiple), multiple_of(fast, multiple)))
                << name << ", " << mint_to_hex(k);
        }
    }
}

// Entries that are not multiples of anything, some of them infinity.
TYPED_TEST(FastMultiples, CombOverAnyEntries) {
    std::vector<ecc_point> entries(PRECOMP_TABLE_ENTRIES);
    for (const mint &p : served_moduli<TypeParam>(this->draw, rounds(4))) {
        if (p.len > 8) continue;
        for (ecc_point &entry : entries) entry = loadable_point(this->draw, p);
        const TypeParam fast(p);
        const mint a = loadable(this->draw, p);
        const mint k = this->draw.untrimmed(p.len);
        auto multiple = [&](const auto &f, ecc_point &out) {
            return zokecc::CombMultiple{k, p.len, entries.data(), a, out}.over(f);
        };
        EXPECT_TRUE(same_bytes(multiple_of(ReferenceField{p}, multiple), multiple_of(fast, multiple)))
            << mint_to_hex(p) << ", " << this->draw.where();
    }
}

// If load() refuses a number, the work stops before anything is written.
TYPED_TEST(FastMultiples, RefusedNumbersLeaveTheResultAlone) {
    const mint p = served_moduli<TypeParam>(this->draw, 0)[0];
    const TypeParam fast(p);
    const ecc_point good = affine(small(3), small(5));
    const int8_t digit[] = {1, 0, 1};
    const zokecc::WindowDigits digits{digit, 3, 1};
    ecc_point pattern, out;
    std::memset(&pattern, 0xA5, sizeof pattern);
    for (const mint &bad : {p, untrimmed(small(1)), zero_in_one_word()}) {
        std::vector<ecc_point> table(PRECOMP_TABLE_ENTRIES, affine(bad, small(1)));
        out = pattern;
        EXPECT_FALSE((zokecc::WindowMultiple{digits, good, bad, out}.over(fast)));
        EXPECT_FALSE((zokecc::WindowMultiple{digits, affine(bad, small(1)), small(1), out}.over(fast)));
        EXPECT_FALSE((zokecc::WindowMultiple{digits, affine(small(1), bad), small(1), out}.over(fast)));
        EXPECT_FALSE((zokecc::CombMultiple{small(1), 5, table.data(), small(1), out}.over(fast)));
        EXPECT_FALSE((zokecc::CombMultiple{power_of_two(31), 5, table.data(), small(1), out}.over(fast)));
        std::fill(table.begin(), table.end(), good);
        EXPECT_FALSE((zokecc::CombMultiple{small(1), 5, table.data(), bad, out}.over(fast)));
        EXPECT_TRUE(same_bytes(pattern, out));
    }
}

}  // namespace
}  // namespace zokecc_test::fast_multiples_test

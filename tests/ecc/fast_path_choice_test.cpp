// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The exported multiplications when the fast fields accept all, when they refuse the modulus, and when they
// refuse a number on the way: always the results of the formulas over the reference.
#include <algorithm>
#include <memory>

#include "ecc/comb.h"
#include "ecc/points.h"
#include "ecc/table_builder.h"
#include "ecc/wnaf.h"
#include "tests/ecc/field_pairs.h"
#include "tests/ecc/multiples.h"
#include "tests/mint/numbers.h"
#include "tests/support/emulated.h"
#include "tests/support/model_curve.h"

namespace zokecc_test::fast_path_choice_test {
namespace {

using zokecc::ReferenceField;

struct Choice {
    const char *why;
    mint p;
    bool fast;
};

mint with_zero_word(const Natural &value) { return untrimmed(value.to_mint()); }

std::vector<Choice> choices() {
    const Natural one(1);
    auto ones = [&](unsigned bits) { return Natural::power_of_two(bits) - one; };
    return {
        {"five words", ones(160).to_mint(), true},
        {"six words", of_hex("fffffffffffffffffffffffffffffffeffffffffffffffff"), true},
        {"seven words", of_hex("ffffffffffffffffffffffffffffffff000000000000000000000001"), true},
        {"eight words", curve("sm2p256v1").p, true},
        {"nine words", (Natural::power_of_two(285) - Natural(9)).to_mint(), true},
        {"four words", ones(128).to_mint(), false},
        {"one word", of_hex("fffffffb"), false},
        {"ten words", ones(320).to_mint(), false},
        {"nineteen words", ones(607).to_mint(), false},
        {"even", (Natural(curve("sm2p256v1").p) - one).to_mint(), false},
        {"untrimmed", with_zero_word(ones(160)), false},
        {"untrimmed to nine words", with_zero_word(Natural(curve("sm2p256v1").p)), false},
        {"without its top bits", ones(225).to_mint(), true},
        {"nine words without top bits", ones(257).to_mint(), true},
    };
}

struct CountedRun {
    int &runs;
    bool taken;

    template <class Field>
    bool over(const Field &) const {
        ++runs;
        return taken;
    }
};

class FastPathChoice : public testing::Test {
protected:
    static ecc_point pattern() {
        ecc_point out;
        std::memset(&out, 0xA5, sizeof out);
        return out;
    }

    static ecc_point defined_window(const mint &k, const ecc_point &P, const mint &a, const mint &p) {
        const ModelDigits model = model_digits(k);
        const std::vector<int8_t> digit(model.digit.begin(), model.digit.end());
        ecc_point out = pattern();
        zokecc::WindowMultiple{
            zokecc::WindowDigits{digit.data(), static_cast<int32_t>(digit.size()), model.width}, P, a, out}
            .over(ReferenceField{p});
        return out;
    }
    static void expect_window(const mint &k, const ecc_point &P, const mint &a, const mint &p) {
        ecc_point out = pattern();
        EXPECT_EQ(1, ecc_unknown_point_mul(&k, &P, &a, &a, &p, &out));
        EXPECT_TRUE(same_bytes(defined_window(k, P, a, p), out)) << mint_to_hex(k);
    }

    static void expect_comb(const mint &k, const std::vector<ecc_point> &table, const mint &a,
                            const mint &p) {
        ecc_point want = pattern();
        ecc_point out = pattern();
        EXPECT_TRUE((zokecc::CombMultiple{k, p.len, table.data(), a, want}.over(ReferenceField{p})));
        EXPECT_EQ(0, ecc_fix_point_mul_1(&k, &table[1], &a, &a, &p, &out, table.data()));
        EXPECT_TRUE(same_bytes(want, out)) << mint_to_hex(k);
    }

    static void expect_table(const ecc_point &G, const mint &a, const mint &p) {
        const uint32_t size = 1u << p.len;
        auto want = std::make_unique<PrecompTable>();
        auto got = std::make_unique<PrecompTable>();
        for (PrecompTable *table : {want.get(), got.get()}) std::memset(table, 0xA5, sizeof *table);
        const ReferenceField exact{p};
        zokecc::TableBuilder<ReferenceField> defined(exact);
        EXPECT_TRUE(defined.load(a) && defined.fill_table(G, want->entry, size));
        want->entry[size] = ecc_point{};
        want->entry[2 * size] = ecc_point{1, {}, {}};
        EXPECT_EQ(0, ecc_precomputation_point_1(&G, &a, &a, &p, got->entry));
        for (uint32_t i = 0; i < PRECOMP_TABLE_ENTRIES; ++i)
            ASSERT_TRUE(same_bytes(want->entry[i], got->entry[i])) << "entry " << i;
    }

    mint number(const mint &p) {
        const mint out = draw.reduced(p);
        return Natural(out).to_mint();
    }
    ecc_point point(const mint &p) {
        const mint x = number(p);
        return affine(x, number(p));
    }
    std::vector<ecc_point> entries(const mint &p) {
        std::vector<ecc_point> out(PRECOMP_TABLE_ENTRIES);
        for (ecc_point &entry : out) entry = point(p);
        return out;
    }
    // Numbers that no fast field accepts: p and above, too many words, and untrimmed.
    static std::vector<mint> refused(const mint &p) {
        const Natural value(p);
        return {p,
                (value + Natural(1)).to_mint(),
                (value << 40).to_mint(),
                (Natural::power_of_two(608) - Natural(1)).to_mint(),
                zero_in_one_word(),
                with_zero_word(value >> 1)};
    }

    HardWords draw{8201};
};

TEST_F(FastPathChoice, ModulusDecidesOnTheField) {
    for (const Choice &choice : choices()) {
        int runs = 0;
        EXPECT_EQ(choice.fast, zokecc::run_over_fast_field(choice.p, CountedRun{runs, true})) << choice.why;
        EXPECT_EQ(choice.fast ? 1 : 0, runs) << choice.why;
        // An operation that a field refuses runs again, over the reference.
        runs = 0;
        zokecc::run_over_best_field(choice.p, CountedRun{runs, false});
        EXPECT_EQ(choice.fast ? 2 : 1, runs) << choice.why;
    }
}

TEST_F(FastPathChoice, WindowMultiplesWhateverTheModulus) {
    for (const Choice &choice : choices())
        for (int round = 0; round < rounds(8); ++round) {
            const mint k = round % 2 == 0 ? small(draw.between(1, 999)) : draw.trimmed(8);
            if (k.len == 0) continue;
            const mint a = number(choice.p);
            expect_window(k, point(choice.p), a, choice.p);
            ASSERT_FALSE(HasFailure()) << choice.why << ", " << draw.where();
        }
}

TEST_F(FastPathChoice, CombMultiplesWhateverTheModulus) {
    for (const Choice &choice : choices()) {
        if (choice.p.len > 8) continue;
        const std::vector<ecc_point> table = entries(choice.p);
        for (int round = 0; round < rounds(6); ++round) {
            const mint k = draw.trimmed(choice.p.len);
            if (k.len == 0) continue;
            const mint a = number(choice.p);
            expect_comb(k, table, a, choice.p);
            ASSERT_FALSE(HasFailure()) << choice.why << ", " << draw.where();
        }
    }
}

TEST_F(FastPathChoice, TablesWhateverTheModulus) {
    for (const Choice &choice : choices()) {
        if (choice.p.len > (kEmulated ? 5u : 8u)) continue;
        const mint a = number(choice.p);
        expect_table(point(choice.p), a, choice.p);
        ASSERT_FALSE(HasFailure()) << choice.why << ", " << draw.where();
    }
}

TEST_F(FastPathChoice, WindowMultiplesOfRefusedNumbers) {
    for (const Choice &choice : choices()) {
        if (!choice.fast) continue;
        const mint good = number(choice.p);
        for (const mint &bad : refused(choice.p))
            for (const mint &k : {small(11), draw.trimmed(2)}) {
                if (k.len == 0) continue;
                expect_window(k, affine(bad, good), good, choice.p);
                expect_window(k, affine(good, bad), good, choice.p);
                expect_window(k, affine(good, good), bad, choice.p);
                ASSERT_FALSE(HasFailure()) << choice.why << ", " << mint_to_hex(bad) << ", " << draw.where();
            }
    }
}

// The round that first meets the refused entry is the last one, or the first: all earlier work
// is repeated.
TEST_F(FastPathChoice, CombMultiplesOverRefusedEntries) {
    for (const Choice &choice : choices()) {
        if (!choice.fast || choice.p.len > 8) continue;
        const uint32_t size = 1u << choice.p.len;
        const mint good = number(choice.p);
        const std::vector<ecc_point> clean = entries(choice.p);
        const mint k = (Natural::power_of_two(32 * choice.p.len) - Natural(2)).to_mint();
        for (const mint &bad : refused(choice.p)) {
            expect_comb(k, clean, bad, choice.p);
            for (uint32_t entry : {size - 1, size - 2, 2 * size - 1}) {
                std::vector<ecc_point> table = clean;
                table[entry].y = bad;
                expect_comb(k, table, good, choice.p);
                table[entry] = affine(bad, good);
                expect_comb(k, table, good, choice.p);
                table[entry].infinity = 1;  // then it is never read
                expect_comb(k, table, good, choice.p);
            }
            ASSERT_FALSE(HasFailure()) << choice.why << ", " << mint_to_hex(bad) << ", " << draw.where();
        }
    }
}

TEST_F(FastPathChoice, TablesOfRefusedNumbers) {
    const mint p = choices()[0].p;
    const mint good = number(p);
    for (const mint &bad : refused(p)) {
        expect_table(affine(bad, good), good, p);
        expect_table(affine(good, bad), good, p);
        expect_table(affine(good, good), bad, p);
        ASSERT_FALSE(HasFailure()) << mint_to_hex(bad) << ", " << draw.where();
    }
}

}  // namespace
}  // namespace zokecc_test::fast_path_choice_test

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Each operation of a fast field on some numbers, compared with the reference, for every output position.
#ifndef ZOKECC_TESTS_ECC_FAST_FIELD_ON_H
#define ZOKECC_TESTS_ECC_FAST_FIELD_ON_H

#include "tests/ecc/field_pairs.h"
#include "tests/mint/definition.h"
#include "tests/mint/kept_rules.h"

namespace zokecc_test {

// One modulus in both fields.
template <class Field>
struct Pair {
    explicit Pair(const mint &modulus) : p(modulus), fast(p), exact{p} {}
    const mint p;
    const Field fast;
    const zokecc::ReferenceField exact;
};

template <class Field>
class FastFieldOn : public testing::Test {
protected:
    using Element = typename Field::Element;
    using On = Pair<Field>;

    void SetUp() override { CountingTrace::reset(); }

    static Element loaded(const On &on, const mint &value) {
        Element out;
        EXPECT_TRUE(on.fast.load(value, out)) << mint_to_hex(value) << " modulo " << mint_to_hex(on.p);
        return out;
    }
    static testing::AssertionResult holds(const On &on, const Element &got, const mint &want) {
        mint stored{};
        on.fast.store(got, stored);
        return is_value(stored, want);
    }

    // operation(x, out), separate and in place.
    template <class Operation>
    static void expect_unary(const On &on, const mint &a, const mint &want, Operation operation) {
        Element x = loaded(on, a);
        Element out;
        operation(x, out);
        EXPECT_TRUE(holds(on, out, want)) << mint_to_hex(a);
        operation(x, x);
        EXPECT_TRUE(holds(on, x, want)) << mint_to_hex(a) << " in place";
    }

    // operation(x, y, out), separate, over x and over y.
    template <class Operation>
    static void expect_binary(const On &on, const mint &a, const mint &b, const mint &want,
                              Operation operation) {
        for (int place = 0; place < 3; ++place) {
            Element x = loaded(on, a);
            Element y = loaded(on, b);
            Element apart;
            Element &out = place == 0 ? apart : place == 1 ? x : y;
            operation(x, y, out);
            EXPECT_TRUE(holds(on, out, want))
                << mint_to_hex(a) << ", " << mint_to_hex(b) << ", place " << place;
        }
    }

    static void expect_same_sum(const On &on, const mint &a, const mint &b) {
        mint want{};
        on.exact.add(a, b, want);
        expect_binary(on, a, b, want, [&](auto &x, auto &y, auto &out) { on.fast.add(x, y, out); });
    }
    static void expect_same_difference(const On &on, const mint &a, const mint &b) {
        mint want{};
        on.exact.sub(a, b, want);
        expect_binary(on, a, b, want, [&](auto &x, auto &y, auto &out) { on.fast.sub(x, y, out); });
    }
    static void expect_same_product(const On &on, const mint &a, const mint &b) {
        const mint want = defined_product(a, b, on.p);
        expect_binary(on, a, b, want, [&](auto &x, auto &y, auto &out) { on.fast.mul(x, y, out); });
    }
    static void expect_same_shift(const On &on, const mint &a, int32_t bits) {
        mint want{};
        on.exact.shift_left(a, bits, want);
        expect_unary(on, a, want, [&](auto &x, auto &out) { on.fast.shift_left(x, bits, out); });
        if (bits != 1) return;
        on.exact.twice(a, want);
        expect_unary(on, a, want, [&](auto &x, auto &out) { on.fast.twice(x, out); });
    }
    static void expect_same_negations(const On &on, const mint &a) {
        mint want{};
        on.exact.negate(a, want);
        expect_unary(on, a, want, [&](auto &x, auto &out) { on.fast.negate(x, out); });
        if (a.len == 0) return;
        on.exact.subtract_from_p(a, want);
        expect_unary(on, a, want, [&](auto &x, auto &out) { on.fast.subtract_from_p(x, out); });
    }
    static void expect_same_half(const On &on, const mint &a) {
        mint want{};
        on.exact.halve(a, want);
        expect_unary(on, a, want, [&](auto &x, auto &out) { on.fast.halve(x, out); });
    }
    static void expect_same_inverse(const On &on, const mint &a) {
        const mint want = kept_inverse(Natural(a), Natural(on.p)).to_mint();
        expect_unary(on, a, want, [&](auto &x, auto &out) { on.fast.invert(x, out); });
    }

    // Runs check(pair) `times` times over every modulus.
    template <class Check>
    void for_each_modulus(int hard, int times, Check check) {
        for (const mint &p : served_moduli<Field>(draw, hard)) {
            const On on(p);
            for (int i = 0; i < times; ++i) check(on);
            ASSERT_FALSE(this->HasFailure()) << mint_to_hex(p) << ", " << draw.where();
        }
    }

    HardWords draw{8001};
};
}  // namespace zokecc_test

#endif

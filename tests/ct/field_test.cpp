// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The field for secret numbers, compared with plain integers.
#include "ct/field.h"

#include <gtest/gtest.h>

#include "mint/limbs/modulus_29.h"
#include "mint/limbs/modulus_32.h"
#include "mint/limbs/modulus_64.h"
#include "tests/mint/limb_products.h"
#include "tests/support/emulated.h"

namespace zokecc_test::ct_field_test {

namespace {

using zokecc::kMaxSecretWords;
using zokecc::Mask;
using zokecc::SecretField;

// A number below p, with extremes more often than by chance.
Natural drawn(HardWords &draw, const Natural &p) {
    switch (draw.below(12)) {
    case 0: return p - Natural(1 + draw.below(3));
    case 1: return Natural(draw.below(3));
    case 2: return Natural::power_of_two(draw.below(p.bit_length() - 1));
    default: return Natural(draw.reduced(p.to_mint()));
    }
}

// One modulus: every operation of the field, in place and not.
template <class Modulus>
class Checked {
public:
    using Field = SecretField<Modulus>;
    using Element = typename Field::Element;

    explicit Checked(const mint &p) : p_(p), field_(p) { raw_.prepare(p.words, p.len); }

    void check(const Natural &a, const Natural &b) {
        const Natural half = (p_ + Natural(1)) >> 1;
        expect(
            "+", (a + b) % p_, [&](auto &x, auto &y, auto &out) { field_.add(x, y, out); }, a, b);
        expect(
            "-", (a + (p_ - b)) % p_, [&](auto &x, auto &y, auto &out) { field_.sub(x, y, out); }, a, b);
        expect(
            "neg", (p_ - a) % p_, [&](auto &x, auto &, auto &out) { field_.negate(x, out); }, a, b);
        expect(
            "2", (a + a) % p_, [&](auto &x, auto &, auto &out) { field_.twice(x, out); }, a, b);
        expect(
            "1/2", mod_mul(a, half, p_), [&](auto &x, auto &, auto &out) { field_.halve(x, out); }, a, b);
        expect(
            "*", mod_mul(a, b, p_), [&](auto &x, auto &y, auto &out) { field_.mul(x, y, out); }, a, b);
        expect(
            "^2", mod_mul(a, a, p_), [&](auto &x, auto &, auto &out) { field_.square(x, out); }, a, b);
        EXPECT_EQ(a == b, field_.equal(element(a), element(b)) == ~Mask{0});
        EXPECT_EQ(a == b ? ~Mask{0} : 0, field_.equal(element(a), element(b)));
        EXPECT_EQ(a.is_zero() ? ~Mask{0} : 0, field_.is_zero(element(a)));
        Element scratch;
        open_ += raw_.multiply(element(a).limb, element(b).limb, scratch.limb) ? 0 : 1;
    }

    // Unreduced numbers are recognised.
    void check_range() {
        for (const Natural &number : {Natural(), Natural(1), p_ - Natural(1)})
            EXPECT_EQ(~Mask{0}, field_.is_reduced(element(number)));
        const Natural most = Natural::power_of_two(32 * field_.words()) - Natural(1);
        for (const Natural &number : {p_, most, p_ == most ? p_ : p_ + Natural(1)})
            EXPECT_EQ(Mask{0}, field_.is_reduced(element(number)));
    }

    void check_inverse(const Natural &a) {
        Element out, product;
        const Element in = element(a);
        const Mask found = field_.invert(in, out);
        const bool exists = greatest_common_divisor(a, p_) == Natural(1);
        EXPECT_EQ(exists ? ~Mask{0} : 0, found) << a.to_hex();
        field_.mul(in, out, product);
        if (exists) {
            EXPECT_EQ(Natural(1), value(product)) << a.to_hex();
        }
        EXPECT_TRUE(value(out) < p_);
    }

    // How many products left the quotient open.
    int open() const { return open_; }
    Natural inverse(const Natural &a) const {
        Element out;
        field_.invert(element(a), out);
        return value(out);
    }
    const Natural &modulus() const { return p_; }

private:
    Element element(const Natural &number) const {
        const mint record = number.to_mint();
        Element out;
        field_.read_words(record.words, out);
        return out;
    }
    Natural value(const Element &element) const {
        uint32_t words[kMaxSecretWords + 1];
        field_.write_words(element, words);
        return Natural(words, field_.words());
    }

    template <class Work>
    void expect(const char *name, const Natural &wanted, const Work &work, const Natural &a,
                const Natural &b) {
        Element x = element(a), y = element(b), out;
        work(x, y, out);
        EXPECT_EQ(wanted, value(out)) << text(name, a, b);
        work(x, y, x);
        EXPECT_EQ(wanted, value(x)) << text(name, a, b) << ", over the first operand";
        x = element(a);
        work(x, y, y);
        EXPECT_EQ(wanted, value(y)) << text(name, a, b) << ", over the second operand";
        if (!(a == b)) return;
        x = element(a);
        work(x, x, x);
        EXPECT_EQ(wanted, value(x)) << text(name, a, b) << ", all of them one";
    }
    std::string text(const char *name, const Natural &a, const Natural &b) const {
        return a.to_hex() + " " + name + " " + b.to_hex() + " modulo " + p_.to_hex();
    }

    Natural p_;
    Field field_;
    Modulus raw_;
    int open_ = 0;
};

// Products whose quotient the guard leaves open: those close to a multiple of p, on both sides.
template <class Modulus>
void check_boundaries(Checked<Modulus> &checked, unsigned guard_bits, HardWords &draw) {
    const Natural &p = checked.modulus();
    for (uint32_t step = 0; step < 18; ++step) {
        const Natural a = drawn(draw, p);
        if (!(greatest_common_divisor(a, p) == Natural(1))) continue;
        const Natural inverse = checked.inverse(a);
        const Natural rest = (((p * Natural(step)) >> guard_bits) + Natural(draw.below(3))) % p;
        checked.check(a, mod_mul(rest, inverse, p));
        checked.check(a, mod_mul((p - rest) % p, inverse, p));
    }
}

// For p = f g: a product that is exactly a multiple of p.
template <class Modulus>
int check_composite(uint32_t words, HardWords &draw) {
    const unsigned half = 16 * words;
    const Natural f = Natural::power_of_two(half) - Natural(2 * draw.below(1000) + 1);
    const Natural g = Natural::power_of_two(half) - Natural(2 * draw.below(1000) + 1);
    Checked<Modulus> checked((f * g).to_mint());
    for (int i = 0; i < 8; ++i)
        checked.check(f * Natural(1 + draw.below(0xFFFF)), g * Natural(1 + draw.below(0xFFFF)));
    checked.check_inverse(f);
    checked.check_inverse(g * Natural(3));
    return checked.open();
}

template <class Modulus>
void check_width(uint32_t words, unsigned guard_bits) {
    HardWords draw(9100 + words);
    int open = 0;
    for (const mint &p : moduli_of(words, draw, rounds(8))) {
        if (!SecretField<Modulus>::serves(p)) continue;
        Checked<Modulus> checked(p);
        checked.check_range();
        check_boundaries(checked, guard_bits, draw);
        for (int i = 0; i < rounds(10); ++i) {
            const Natural a = drawn(draw, checked.modulus());
            checked.check(a, draw.below(8) == 0 ? a : drawn(draw, checked.modulus()));
            checked.check_inverse(a);
        }
        ASSERT_FALSE(testing::Test::HasFailure()) << mint_to_hex(p) << ", " << draw.where();
        open += checked.open();
    }
    EXPECT_EQ(8, check_composite<Modulus>(words, draw));
    EXPECT_GE(open, 20);
}

#ifdef __SIZEOF_INT128__
TEST(SecretField, IsExactOnFullLimbs) {
    check_width<zokecc::FullLimbs<3>>(5, 64);
    check_width<zokecc::FullLimbs<3>>(6, 64);
    check_width<zokecc::FullLimbs<4>>(7, 64);
    check_width<zokecc::FullLimbs<4>>(8, 64);
    check_width<zokecc::FullLimbs<5>>(9, 64);
}
#endif

TEST(SecretField, IsExactOnShortLimbs) {
    for (uint32_t words = 5; words <= 9; ++words) check_width<zokecc::AnyShortLimbs>(words, 29);
}

TEST(SecretField, IsExactOnWholeWords) {
    for (uint32_t words = 5; words <= 9; ++words) check_width<zokecc::AnyWordLimbs>(words, 31);
}

}  // namespace

}  // namespace zokecc_test::ct_field_test

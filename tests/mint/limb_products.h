// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Products modulo p on limbs, compared with the reference, for each of the library's moduli.
#ifndef ZOKECC_TESTS_MINT_LIMB_PRODUCTS_H
#define ZOKECC_TESTS_MINT_LIMB_PRODUCTS_H

#include <vector>

#include "tests/mint/definition.h"
#include "tests/mint/moduli.h"
#include "tests/support/counting_trace.h"
#include "tests/support/emulated.h"

namespace zokecc_test {

// Odd moduli of the given number of words with a nonzero top word: the curves', other named ones,
// and `hard` hard ones.
inline std::vector<mint> moduli_of(uint32_t words, HardWords &draw, int hard) {
    std::vector<mint> out;
    for (const Modulus &modulus : odd_moduli())
        if (modulus.value.word_count() == words) out.push_back(modulus.value.to_mint());
    for (unsigned bits : {32 * words - 31, 32 * words - 1, 32 * words})
        out.push_back((Natural::power_of_two(bits) - Natural(1)).to_mint());
    for (unsigned bits : {32 * words - 32, 32 * words - 1})
        out.push_back((Natural::power_of_two(bits) + Natural(1)).to_mint());
    for (int i = 0; i < hard; ++i) {
        mint p = draw.untrimmed(words);
        p.words[0] |= 1;
        if (p.words[words - 1] == 0) p.words[words - 1] = draw.below(2) == 0 ? 1 : 0xFFFFFFFFu;
        out.push_back(p);
    }
    return out;
}

// One modulus of the library, and the check of its products.
template <class Product>
class LimbProducts {
public:
    using Limb = typename Product::Limb;
    static constexpr unsigned kWordsPerLimb = sizeof(Limb) / 4;

    LimbProducts(const mint &p, unsigned guard_bits) : p_(p), guard_bits_(guard_bits) {
        product_.prepare(p.words, p.len);
    }

    // Compares a b with the reference. Returns false if the quotient was left open, which may happen
    // only near a multiple of p, and then nothing may have been written.
    bool check(const mint &a, const mint &b) {
        const mint expected = defined_product(a, b, p_);
        const bool sure = check_place(a, b, expected, 0);
        EXPECT_EQ(sure, check_place(a, b, expected, 1));
        EXPECT_EQ(sure, check_place(a, b, expected, 2));
        if (mint_compare(&a, &b) == 0) {
            EXPECT_EQ(sure, check_place(a, b, expected, 3));
            check_square(a, expected, sure);
        }
        if (!sure) {
            EXPECT_TRUE(is_near_multiple(expected)) << mint_to_hex(expected) << " was left open";
        }
        return sure;
    }

private:
    struct Number {
        explicit Number(const mint &value) { std::memcpy(limb, value.words, 4 * value.len); }
        Limb limb[Product::kElementLimbs] = {};
        Limb fence = static_cast<Limb>(0xFEFEFEFEu);
    };

    // A separate output, over a, over b, and all three the same.
    bool check_place(const mint &a, const mint &b, const mint &expected, int place) {
        Number x(a), y(b), apart(p_);
        Number &second = place == 3 ? x : y;
        Number &out = place == 0 ? apart : place == 2 ? y : x;
        const Number before = out;
        const bool sure = product_.multiply(x.limb, second.limb, out.limb);
        const Number wanted = sure ? Number(expected) : before;
        EXPECT_EQ(0, std::memcmp(wanted.limb, out.limb, sizeof(Limb) * product_.limbs()))
            << mint_to_hex(a) << " * " << mint_to_hex(b) << " modulo " << mint_to_hex(p_) << ", place "
            << place;
        EXPECT_EQ(before.fence, out.fence);
        return sure;
    }

    // A separate squaring, if there is one: same bits as the product, in place and not.
    void check_square(const mint &a, const mint &expected, bool sure) {
        if constexpr (requires(const Limb *x, Limb *out) { product_.square(x, out); }) {
            for (bool in_place : {false, true}) {
                Number x(a), apart(p_);
                Number &out = in_place ? x : apart;
                const Number wanted = sure ? Number(expected) : out;
                EXPECT_EQ(sure, product_.square(x.limb, out.limb)) << mint_to_hex(a);
                EXPECT_EQ(0, std::memcmp(wanted.limb, out.limb, sizeof(Limb) * product_.limbs()))
                    << mint_to_hex(a) << " squared modulo " << mint_to_hex(p_);
                EXPECT_EQ(wanted.fence, out.fence);
            }
        }
    }

    // Within sixteen units of the guard column of 0 or p: only there can the quotient be open.
    bool is_near_multiple(const mint &rest) const {
        const Natural p(p_);
        const Natural value(rest);
        const Natural window = p << 4;
        return (value << guard_bits_) < window || ((p - value) << guard_bits_) < window;
    }

    mint p_;
    unsigned guard_bits_;
    Product product_;
};

// Operands up to and including p.
inline mint drawn_operand(HardWords &draw, const mint &p) {
    switch (draw.below(12)) {
    case 0: return p;
    case 1: return Natural(draw.below(3)).to_mint();
    case 2: return Natural::power_of_two(draw.below(Natural(p).bit_length() - 1)).to_mint();
    default: {
        const mint out = draw.reduced(p);
        return Natural(out).to_mint();
    }
    }
}

// Returns how many products were left open.
template <class Product>
int check_hard_products(const mint &p, unsigned guard_bits, HardWords &draw, int count) {
    LimbProducts<Product> products(p, guard_bits);
    int open = 0;
    for (int i = 0; i < count && !testing::Test::HasFailure(); ++i) {
        const mint a = drawn_operand(draw, p);
        const mint b = draw.below(4) == 0 ? a : drawn_operand(draw, p);
        open += products.check(a, b) ? 0 : 1;
    }
    return open;
}

// Products a few units away from a multiple of p, and around every step of the guard: for
// each remainder r it finds b = r / a. Returns how many products were left open.
template <class Product>
int check_boundary_products(const mint &p, unsigned guard_bits, HardWords &draw) {
    LimbProducts<Product> products(p, guard_bits);
    const Natural modulus(p);
    int open = 0;
    for (uint32_t step = 0; step < 18 && !testing::Test::HasFailure(); ++step) {
        const mint a = drawn_operand(draw, p);
        mint inverse{};
        mint_EEA_algo(&a, &p, &inverse);
        const Natural rest = ((modulus * Natural(step)) >> guard_bits) + Natural(draw.below(3));
        for (const Natural &r : {rest % modulus, (modulus - rest % modulus) % modulus}) {
            const mint b = defined_product(r.to_mint(), inverse, p);
            open += products.check(a, b) ? 0 : 1;
        }
    }
    return open;
}

// Exact multiples of p, which the guard can never distinguish from the quotient below.
template <class Product>
void check_exact_multiples(const mint &p, unsigned guard_bits, HardWords &draw) {
    LimbProducts<Product> products(p, guard_bits);
    for (int i = 0; i < 6; ++i) {
        const mint a = drawn_operand(draw, p);
        if (a.len == 0) continue;
        EXPECT_FALSE(products.check(a, p));
        EXPECT_FALSE(products.check(p, a));
    }
    const mint zero{};
    EXPECT_TRUE(products.check(zero, p));
    EXPECT_TRUE(products.check(p, zero));
    EXPECT_TRUE(products.check(zero, zero));
}

// p = f g with the given number of words, and the products (i f) (j g).
template <class Product>
void check_composite(uint32_t words, unsigned guard_bits, HardWords &draw) {
    const unsigned half = 16 * words;
    const Natural f = Natural::power_of_two(half) - Natural(2 * draw.below(1000) + 1);
    const Natural g = Natural::power_of_two(half) - Natural(2 * draw.below(1000) + 1);
    const mint p = (f * g).to_mint();
    LimbProducts<Product> products(p, guard_bits);
    for (int i = 0; i < 8; ++i) {
        const Natural x = f * Natural(1 + draw.below(0xFFFF));
        const Natural y = g * Natural(1 + draw.below(0xFFFF));
        EXPECT_FALSE(products.check((x % Natural(p)).to_mint(), (y % Natural(p)).to_mint()));
    }
}

// All of the above for one width.
template <class Product>
void check_width(uint32_t words, unsigned guard_bits, uint32_t seed) {
    HardWords draw(seed + words);
    int open = 0;
    int moduli = 0;
    for (const mint &p : moduli_of(words, draw, rounds(24))) {
        if (!Product::fits(p.words, p.len)) continue;
        check_hard_products<Product>(p, guard_bits, draw, rounds(40));
        open += check_boundary_products<Product>(p, guard_bits, draw);
        check_exact_multiples<Product>(p, guard_bits, draw);
        ASSERT_FALSE(testing::Test::HasFailure()) << mint_to_hex(p) << ", " << draw.where();
        ++moduli;
    }
    check_composite<Product>(words, guard_bits, draw);
    EXPECT_GE(moduli, rounds(20));
    EXPECT_GE(open, moduli);
}

}  // namespace zokecc_test

#endif

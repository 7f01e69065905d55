// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "tests/oracle/search.h"

#include <algorithm>

#include "ecc/recode.h"

namespace zokecc_test::oracle {

namespace {

constexpr int kMostDoublings = 4;

// The digits as used in the product.
std::vector<int8_t> digits_of(const mint &key) {
    const int32_t bits = get_mint_bit_len(&key);
    std::vector<int8_t> out(static_cast<size_t>(bits) + 1);
    out.resize(static_cast<size_t>(zokecc::recode(key, bits, zokecc::window_width(bits), out.data())));
    return out;
}

// a 2^shift, for an a of a few bits.
mint shifted(uint32_t a, int32_t shift) {
    mint out{};
    out.words[0] = a;
    out.len = 1;
    mint_left_move(&out, static_cast<uint32_t>(shift));
    return out;
}

mint number(uint32_t value) {
    mint out{};
    out.words[0] = value;
    out.len = 1;
    return out;
}

}  // namespace

bool guess_leading_digit(const mint &n, const mint &key, Guess &out) {
    const std::vector<int8_t> digits = digits_of(key);
    const int32_t top = static_cast<int32_t>(digits.size()) - 1;
    int32_t next = top - 1;
    while (next > 0 && digits[static_cast<size_t>(next)] == 0) --next;
    out.digit = digits.back();
    out.doublings = static_cast<unsigned>(std::min(top - next, kMostDoublings));

    const mint own = shifted(static_cast<uint32_t>(out.digit), top);
    mint rest{};
    mint last = n;
    mint_mod_sub(&key, &own, &n, &rest);
    last.words[0] -= 2;
    for (uint32_t digit = 1; digit <= 7; digit += 2) {
        mint leading = shifted(digit, top);
        if (static_cast<int>(digit) == out.digit) continue;
        mint_mod_add(&rest, &leading, &n, &out.other);
        std::vector<int8_t> changed = digits_of(out.other);
        if (changed.size() != digits.size() || changed.back() != static_cast<int>(digit)) continue;
        changed.back() = out.digit;
        if (changed == digits && mint_compare(&out.other, &last) <= 0) return true;
    }
    return false;
}

Search::Search(const zokecc::CurveView &curve, const Guess &guess)
    : curve_(curve),
      field_(curve.p),
      steps_(kBlock),
      points_(kBlock),
      differences_(kBlock),
      products_(kBlock),
      leading_{digits_, static_cast<int32_t>(guess.doublings) + 1, zokecc::kMaxWindowWidth - 1} {
    digits_[guess.doublings] = guess.digit;
    field_.load(curve.a, a_);
    for (uint32_t i = 0; i < kBlock; ++i) {
        ecc_point step{};
        zokecc::multiply_base(curve, number(i + 1), step);
        field_.load(step, steps_[i]);
    }
}

std::vector<mint> Search::block(const mint &first) {
    std::vector<mint> out;
    make_points(first);
    for (uint32_t i = 0; i < kBlock; ++i) {
        if (!may_act(points_[i])) continue;
        mint nonce = first;
        mint step = number(i + 1);
        mint_mod_add(&nonce, &step, &curve_.n, &nonce);
        out.push_back(nonce);
    }
    return out;
}

// Sums of affine points with one shared inversion. The borrow rule may spoil one in a great many, which
// is detected when the whole product is checked.
void Search::make_points(const mint &first) {
    ecc_point record{};
    Field::Affine base;
    Field::Element product, inverse, slope;
    zokecc::multiply_base(curve_, first, record);
    field_.load(record, base);
    Field::set_one(product);
    for (uint32_t i = 0; i < kBlock; ++i) {
        products_[i] = product;
        field_.sub(steps_[i].x, base.x, differences_[i]);
        field_.mul(product, differences_[i], product);
    }
    field_.invert(product, product);
    for (uint32_t i = kBlock; i-- > 0;) {
        Field::Affine &out = points_[i];
        field_.mul(product, products_[i], inverse);
        field_.mul(product, differences_[i], product);
        field_.sub(steps_[i].y, base.y, slope);
        field_.mul(slope, inverse, slope);
        out.infinity = 0;
        field_.square(slope, out.x);
        field_.sub(out.x, base.x, out.x);
        field_.sub(out.x, steps_[i].x, out.x);
        field_.sub(base.x, out.x, out.y);
        field_.mul(slope, out.y, out.y);
        field_.sub(out.y, base.y, out.y);
    }
}

// The product's own steps, down to the last doubling determined by the leading digit.
bool Search::may_act(const Field::Affine &P) {
    Field::Jacobian odd[zokecc::kMaxOddMultiples], R;
    const uint32_t index = static_cast<uint32_t>(digits_[leading_.count - 1]) >> 1;
    zokecc::affine_to_jacobian(field_, P, odd[0]);
    if (index > 0) zokecc::odd_multiples(field_, a_, index + 1, R, odd);
    RuleTrace::noted = false;
    zokecc::evaluate(field_, a_, leading_, odd, R);
    return RuleTrace::noted;
}

}  // namespace zokecc_test::oracle

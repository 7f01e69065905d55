// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// A model of the kept arithmetic, step by step with the oracle's numbers.
//
// mint_sub departs from the textbook in two places, and everything that subtracts inherits
// it: modular subtraction, doubling and above all the inverse. These functions give the
// deployed results; if kept_sub and the textbook agree, so must everything built on it.
#ifndef ZOKECC_TESTS_MINT_KEPT_RULES_H
#define ZOKECC_TESTS_MINT_KEPT_RULES_H

#include <zokecc/mint.h>

#include "tests/support/hard_words.h"
#include "tests/support/naive_int.h"

namespace zokecc_test {

inline uint32_t usable_len(const mint &value) {
    if (static_cast<int32_t>(value.len) < 0) return 0;
    return value.len < MINT_WORDS ? value.len : MINT_WORDS;
}

// mint_compare: the length decides first, read as a signed number.
inline int32_t kept_compare(const mint &a, const mint &b) {
    if (a.len != b.len) return static_cast<int32_t>(a.len) > static_cast<int32_t>(b.len) ? 1 : -1;
    for (uint32_t i = usable_len(a); i-- > 0;)
        if (a.words[i] != b.words[i]) return a.words[i] > b.words[i] ? 1 : -1;
    return 0;
}

// Where mint_sub stores: separately or over the smaller operand, or over the larger.
enum class Over { kOther, kLarger };

struct KeptDifference {
    mint value;
    int32_t negative;
};

inline KeptDifference kept_sub(const mint &a, const mint &b, Over over) {
    KeptDifference out{};
    int32_t order = kept_compare(a, b);
    if (order == 0) return out;
    out.negative = order < 0 ? 1 : 0;
    const mint &larger = order < 0 ? b : a;
    const mint &smaller = order < 0 ? a : b;
    uint32_t borrow = 0;
    for (uint32_t i = 0; i < usable_len(larger); ++i) {
        uint32_t x = larger.words[i], y = i < usable_len(smaller) ? smaller.words[i] : 0;
        uint32_t &stored = out.value.words[i];
        if (i >= usable_len(smaller)) {
            stored = x - borrow;
            uint32_t read_again = over == Over::kLarger ? stored : x;
            borrow = stored > read_again ? 1 : 0;
        } else if (x > y) {
            stored = x - y - borrow;
            borrow = 0;
        } else if (x < y) {
            stored = x - borrow - y;
            borrow = 1;
        } else {
            stored = borrow != 0 ? 0xFFFFFFFEu : 0;
        }
        if (stored != 0) out.value.len = i + 1;
    }
    return out;
}

// |a - b| of trimmed numbers, stored separately or over the larger.
inline Natural kept_sub(const Natural &a, const Natural &b, Over over) {
    return Natural(kept_sub(a.to_mint(), b.to_mint(), over).value);
}

// mint_mod_sub for trimmed operands and a nonzero modulus.
inline Natural kept_mod_sub(const Natural &a, const Natural &b, const Natural &p) {
    if (a == b) return Natural();
    Natural rest = kept_sub(a, b, Over::kOther) % p;
    return b < a ? rest : kept_sub(p, rest, Over::kOther);
}

// mint_mod_left_move_1: double, truncate to a record, subtract p in place if not below it.
inline Natural kept_double(const Natural &a, const Natural &p) {
    Natural out = (a << 1).low_bits(32 * MINT_WORDS);
    return out < p ? out : kept_sub(out, p, Over::kLarger);
}

// mint_mod_left_move_n. `returned` becomes 0 if the value is wider than the modulus.
inline Natural kept_shift(const Natural &a, const Natural &p, int32_t n, int32_t &returned) {
    Natural out = a;
    returned = 1;
    while (n > 0) {
        int32_t room = static_cast<int32_t>(p.bit_length()) - static_cast<int32_t>(out.bit_length());
        if (room < 0) {
            returned = 0;
            return out;
        }
        int32_t step = room > n ? n : room == 0 ? 1 : room;
        out = (out << static_cast<unsigned>(step)).low_bits(32 * MINT_WORDS);
        n -= step;
        if (out >= p) out = kept_sub(out, p, Over::kLarger);
    }
    return out;
}

// mint_exp: the exponent modulo p - 1, the base unreduced.
inline Natural kept_power(const Natural &g, const Natural &e, const Natural &p) {
    Natural one(1);
    Natural order = p.is_zero() ? one : p - one;
    Natural rest = order.is_zero() ? Natural() : e % order;
    if (rest.is_zero()) return one;
    if (rest == one) return g;
    return mod_power(g % p, rest, p);
}

namespace inverse_detail {

// Halves `value` until it is odd, and `cofactor` as often, modulo m.
inline void drop_factors_of_two(Natural &value, Natural &cofactor, const Natural &m) {
    while (!value.is_odd()) {
        value.halve();
        if (cofactor.is_odd()) cofactor.add(m);
        cofactor.halve();
    }
}

// m - x, where x is reduced only if it is greater than m.
inline Natural negated(const Natural &x, const Natural &m) {
    return kept_sub(m, m < x ? x % m : x, Over::kOther);
}

inline Natural odd_inverse(Natural u, const Natural &m) {
    Natural v = m, x1(1), x2;
    while (!u.is_zero()) {
        drop_factors_of_two(u, x1, m);
        drop_factors_of_two(v, x2, m);
        if (u < v) {
            x2.add(x1);
            v = kept_sub(v, u, Over::kLarger);
        } else {
            x1.add(x2);
            u = kept_sub(u, v, Over::kLarger);
        }
    }
    return negated(x2, m);
}

// One division of the even method, with its shortcuts by bit lengths.
inline Natural division_step(const Natural &r0, const Natural &r1, Natural &rest) {
    unsigned bits0 = r0.bit_length(), bits1 = r1.bit_length();
    Natural twice = r1 << 1;
    if (bits0 == bits1 || (bits0 == bits1 + 1 && r0 < twice)) {
        rest = kept_sub(r0, r1, Over::kOther);
        return Natural(1);
    }
    if (bits0 == bits1 + 1) {
        rest = kept_sub(r0, twice, Over::kOther);
        if (r0 < twice + r1) return Natural(2);
        rest = kept_sub(rest, r1, Over::kOther);
        return Natural(3);
    }
    Natural quotient;
    divide(r0, r1, quotient, rest);
    return quotient;
}

inline Natural even_inverse(const Natural &u, const Natural &m) {
    Natural r0 = m, r1 = u, x1(1), x2;
    bool negative = true;
    while (!r1.is_zero()) {
        Natural rest;
        Natural quotient = division_step(r0, r1, rest);
        r0 = r1;
        r1 = rest;
        Natural next = quotient * x1 + x2;
        x2 = x1;
        x1 = next;
        negative = !negative;
    }
    return negative ? negated(x2, m) : x2;
}

}  // namespace inverse_detail

// mint_EEA_algo, for any a and m.
inline Natural kept_inverse(const Natural &a, const Natural &m) {
    Natural u = a >= m && !m.is_zero() ? a % m : a;
    return m.is_odd() ? inverse_detail::odd_inverse(u, m) : inverse_detail::even_inverse(u, m);
}

}  // namespace zokecc_test

#endif

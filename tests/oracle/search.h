// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// What the borrow rule of subtraction reveals about a private key.
//
// A multiplication in the default build, ecc/wnaf.h, runs over the signed digits of the key from the leading
// one down. If a difference on the way meets the rule (mint/limbs/borrow_rule.h), the product is wrong. The
// first doublings depend only on the point and the leading digit: for a guess of that digit they can be
// computed without the key. A point for which the rule applies there gives a valid ciphertext that the device
// refuses if the guess is right, and decrypts if not.
#ifndef ZOKECC_TESTS_ORACLE_SEARCH_H
#define ZOKECC_TESTS_ORACLE_SEARCH_H

#include <vector>

#include "ecc/fast_field.h"
#include "ecc/sm2_steps.h"
#include "ecc/wnaf.h"

namespace zokecc_test::oracle {

// Records that a difference had a word of all ones: the rule may have applied.
struct RuleTrace : zokecc::NoTrace {
    static inline bool noted = false;
    static void first_difference() { noted = true; }
    static void second_difference() { noted = true; }
    static void doubled_difference() { noted = true; }
};

// The leading digit of a key, and a key that differs only in that digit.
struct Guess {
    int8_t digit;
    unsigned doublings;  // from that digit to the next nonzero one, at most four
    mint other;
};

// False if no such key is below n - 1.
bool guess_leading_digit(const mint &n, const mint &key, Guess &out);

// Points k G for successive k, and those at which the rule applies for a leading digit.
class Search {
public:
    static constexpr uint32_t kBlock = 1024;

    Search(const zokecc::CurveView &curve, const Guess &guess);

    // Nonces from first + 1 to first + kBlock at which the rule may apply.
    std::vector<mint> block(const mint &first);

private:
    using Field = zokecc::FastField<zokecc::FullLimbs<4>, RuleTrace>;

    void make_points(const mint &first);
    bool may_act(const Field::Affine &P);

    const zokecc::CurveView &curve_;
    Field field_;
    Field::Element a_;
    std::vector<Field::Affine> steps_;   // 1 G to kBlock G
    std::vector<Field::Affine> points_;  // of the block
    std::vector<Field::Element> differences_, products_;
    int8_t digits_[5] = {};
    zokecc::WindowDigits leading_;
};

}  // namespace zokecc_test::oracle

#endif

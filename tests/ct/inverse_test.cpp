// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The constant-time inverse, compared with plain integers, for numbers of one to nine words.
#include "ct/inverse.h"

#include <gtest/gtest.h>

#include "tests/support/emulated.h"
#include "tests/support/hard_words.h"

namespace zokecc_test::ct_inverse_test {

namespace {

// The inverse exists if and only if it should, is correct, and may overwrite the number.
void expect_inverse(const Natural &a, const Natural &m, unsigned words) {
    uint32_t number[zokecc::kMaxSecretWords], modulus[zokecc::kMaxSecretWords];
    uint32_t out[zokecc::kMaxSecretWords + 1];
    for (unsigned i = 0; i < words; ++i) {
        number[i] = a.word(i);
        modulus[i] = m.word(i);
    }
    out[words] = 0xFEFEFEFEu;
    const zokecc::Mask found = zokecc::invert_secret(number, modulus, words, out);
    const bool exists = greatest_common_divisor(a, m) == Natural(1);
    EXPECT_EQ(exists ? ~zokecc::Mask{0} : 0, found) << a.to_hex() << " modulo " << m.to_hex();
    const Natural inverse(out, words);
    EXPECT_TRUE(inverse < m || m == Natural(1));
    if (exists) {
        EXPECT_EQ(Natural(1) % m, mod_mul(a, inverse, m)) << a.to_hex() << " modulo " << m.to_hex();
    }
    EXPECT_EQ(0xFEFEFEFEu, out[words]);
    EXPECT_EQ(found, zokecc::invert_secret(number, modulus, words, number));
    EXPECT_EQ(inverse, Natural(number, words)) << "in place";
}

}  // namespace

TEST(InvertSecret, EveryNumberModuloEverySmallOddNumber) {
    for (uint32_t m = 3; m < 300; m += 2)
        for (uint32_t a = 0; a < m; ++a) expect_inverse(Natural(a), Natural(m), 1);
}

TEST(InvertSecret, HardNumbersOfEveryLength) {
    for (unsigned words = 1; words <= zokecc::kMaxSecretWords; ++words) {
        HardWords draw(9300 + words);
        for (int i = 0; i < rounds(60) && !testing::Test::HasFailure(); ++i) {
            mint m = draw.untrimmed(words);
            m.words[0] |= 1;
            const Natural modulus(m);
            if (modulus == Natural(1)) continue;
            for (const Natural &a :
                 {Natural(draw.untrimmed(words)) % modulus, Natural(1), Natural(2) % modulus,
                  modulus - Natural(1), (modulus + Natural(1)) >> 1, Natural()})
                expect_inverse(a, modulus, words);
        }
    }
}

// Numbers of all ones and the like need the most steps.
TEST(InvertSecret, PowersOfTwoAndTheirNeighbours) {
    for (unsigned words = 1; words <= zokecc::kMaxSecretWords; ++words) {
        const Natural m = Natural::power_of_two(32 * words) - Natural(1);
        for (unsigned bit = 1; bit < 32 * words; bit += words) {
            expect_inverse(Natural::power_of_two(bit), m, words);
            expect_inverse(Natural::power_of_two(bit) - Natural(1), m - Natural(2), words);
        }
    }
}

}  // namespace zokecc_test::ct_inverse_test

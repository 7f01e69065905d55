// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// A simple and slow unsigned integer with 16-bit digits, the mathematical oracle of the tests.
//
// It shares nothing with the library: a different digit size, no carry words, division bit by
// bit, modular products by doubling and adding. Up to 1536 bits; it gives up on anything wider.
#ifndef ZOKECC_TESTS_SUPPORT_NAIVE_INT_H
#define ZOKECC_TESTS_SUPPORT_NAIVE_INT_H

#include <zokecc/mint.h>

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>

namespace zokecc_test {

class Natural {
public:
    Natural() = default;  // zero
    explicit Natural(uint32_t value);
    // The used words; a length above 19 reads as 19, a negative one as 0.
    explicit Natural(const mint &value);
    Natural(const uint32_t *words, size_t count);
    static Natural from_hex(const std::string &text);
    static Natural power_of_two(unsigned exponent);

    // Normalised, zero above the used words. Gives up above 19 words.
    mint to_mint() const;
    std::string to_hex() const;  // without leading zeros; "0" for zero

    bool is_zero() const { return size_ == 0; }
    bool is_odd() const { return size_ != 0 && (digits_[0] & 1) != 0; }
    bool bit(unsigned index) const;
    unsigned bit_length() const;
    uint32_t word(size_t index) const;  // 32 bits from bit 32 * index on
    size_t word_count() const { return (size_ + 1) / 2; }
    Natural low_bits(unsigned count) const;  // modulo 2^count

    // In place, for loops that would otherwise spend their time copying.
    void halve();
    void add(const Natural &other);
    void subtract(const Natural &other);  // gives up if other is greater

    static int compare(const Natural &a, const Natural &b);  // -1, 0 or 1

private:
    static constexpr size_t kDigits = 96;
    void trim(size_t size);
    void put(size_t index, uint32_t digit);
    void double_and_add(unsigned bit);

    friend Natural operator*(const Natural &a, const Natural &b);
    friend Natural operator<<(const Natural &a, unsigned count);
    friend Natural operator>>(const Natural &a, unsigned count);
    friend void divide(const Natural &a, const Natural &b, Natural &quotient, Natural &remainder);
    friend Natural mod_mul(const Natural &a, const Natural &b, const Natural &m);

    uint16_t digits_[kDigits] = {};  // least significant first, zero from size_ on
    size_t size_ = 0;                // the top digit is not zero
};

inline bool operator==(const Natural &a, const Natural &b) { return Natural::compare(a, b) == 0; }
inline bool operator!=(const Natural &a, const Natural &b) { return Natural::compare(a, b) != 0; }
inline bool operator<(const Natural &a, const Natural &b) { return Natural::compare(a, b) < 0; }
inline bool operator>=(const Natural &a, const Natural &b) { return Natural::compare(a, b) >= 0; }

Natural operator+(const Natural &a, const Natural &b);
Natural operator-(const Natural &a, const Natural &b);  // gives up if a < b
Natural operator*(const Natural &a, const Natural &b);
Natural operator<<(const Natural &a, unsigned count);
Natural operator>>(const Natural &a, unsigned count);
// Give up on a divisor of zero.
void divide(const Natural &a, const Natural &b, Natural &quotient, Natural &remainder);
Natural operator/(const Natural &a, const Natural &b);
Natural operator%(const Natural &a, const Natural &b);

Natural mod_mul(const Natural &a, const Natural &b, const Natural &m);    // a * b mod m
Natural mod_power(const Natural &a, const Natural &e, const Natural &m);  // a^e mod m; 1 mod m for e = 0
Natural greatest_common_divisor(Natural a, Natural b);

// For failure messages of the test framework.
inline void PrintTo(const Natural &value, std::ostream *out) { *out << value.to_hex(); }

}  // namespace zokecc_test

#endif

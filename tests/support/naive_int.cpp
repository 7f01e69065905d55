// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "tests/support/naive_int.h"

#include <algorithm>

#include "tests/support/give_up.h"
#include "tests/support/hex.h"

namespace zokecc_test {

Natural::Natural(uint32_t value) {
    put(0, value & 0xFFFFu);
    put(1, value >> 16);
    trim(2);
}

Natural::Natural(const uint32_t *words, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        put(2 * i, words[i] & 0xFFFFu);
        put(2 * i + 1, words[i] >> 16);
    }
    trim(std::min(2 * count, kDigits));
}

Natural::Natural(const mint &value) {
    uint32_t count = value.len <= MINT_WORDS ? value.len : MINT_WORDS;
    if (value.len >= 0x80000000u) count = 0;
    *this = Natural(value.words, count);
}

Natural Natural::from_hex(const std::string &text) {
    Natural out;
    for (char c : text)
        for (int shift = 3; shift >= 0; --shift)
            out.double_and_add(static_cast<unsigned>(nibble(c) >> shift) & 1u);
    return out;
}

Natural Natural::power_of_two(unsigned exponent) {
    Natural out;
    out.put(exponent / 16, 1u << (exponent % 16));
    out.trim(exponent / 16 + 1);
    return out;
}

void Natural::trim(size_t size) {
    while (size > 0 && digits_[size - 1] == 0) --size;
    size_ = size;
}

void Natural::put(size_t index, uint32_t digit) {
    if (index < kDigits)
        digits_[index] = static_cast<uint16_t>(digit);
    else if (digit != 0)
        give_up("number too wide for the oracle");
}

mint Natural::to_mint() const {
    if (word_count() > MINT_WORDS) give_up("does not fit a record");
    mint out{};
    out.len = static_cast<uint32_t>(word_count());
    for (size_t i = 0; i < word_count(); ++i) out.words[i] = word(i);
    return out;
}

std::string Natural::to_hex() const {
    static const char names[] = "0123456789abcdef";
    std::string out;
    for (size_t i = size_; i-- > 0;)
        for (int shift = 12; shift >= 0; shift -= 4) out.push_back(names[digits_[i] >> shift & 15]);
    size_t first = out.find_first_not_of('0');
    return first == std::string::npos ? "0" : out.substr(first);
}

bool Natural::bit(unsigned index) const {
    return index / 16 < size_ && (digits_[index / 16] >> (index % 16) & 1) != 0;
}

unsigned Natural::bit_length() const {
    unsigned count = static_cast<unsigned>(16 * size_);
    while (count > 0 && !bit(count - 1)) --count;
    return count;
}

uint32_t Natural::word(size_t index) const {
    uint32_t low = 2 * index < size_ ? digits_[2 * index] : 0u;
    uint32_t high = 2 * index + 1 < size_ ? digits_[2 * index + 1] : 0u;
    return high << 16 | low;
}

Natural Natural::low_bits(unsigned count) const {
    Natural out = *this;
    for (size_t i = 0; i < out.size_; ++i) {
        size_t first = 16 * i;
        if (first >= count)
            out.digits_[i] = 0;
        else if (count - first < 16)
            out.digits_[i] = static_cast<uint16_t>(out.digits_[i] & ((1u << (count - first)) - 1));
    }
    out.trim(out.size_);
    return out;
}

void Natural::halve() {
    uint32_t from_above = 0;
    for (size_t i = size_; i-- > 0;) {
        uint32_t digit = digits_[i];
        digits_[i] = static_cast<uint16_t>(digit >> 1 | from_above << 15);
        from_above = digit & 1;
    }
    trim(size_);
}

void Natural::add(const Natural &other) {
    size_t size = std::max(size_, other.size_);
    uint32_t carry = 0;
    for (size_t i = 0; i < size; ++i) {
        uint32_t sum = uint32_t{digits_[i]} + other.digits_[i] + carry;
        digits_[i] = static_cast<uint16_t>(sum);
        carry = sum >> 16;
    }
    put(size, carry);
    trim(std::min(size + 1, kDigits));
}

void Natural::subtract(const Natural &other) {
    if (*this < other) give_up("negative difference");
    uint32_t borrow = 0;
    for (size_t i = 0; i < size_; ++i) {
        uint32_t difference = 0x10000u + digits_[i] - other.digits_[i] - borrow;
        digits_[i] = static_cast<uint16_t>(difference);
        borrow = difference >> 16 == 0 ? 1u : 0u;
    }
    trim(size_);
}

void Natural::double_and_add(unsigned bit) {
    uint32_t carry = bit;
    for (size_t i = 0; i < size_; ++i) {
        uint32_t digit = uint32_t{digits_[i]} << 1 | carry;
        digits_[i] = static_cast<uint16_t>(digit);
        carry = digit >> 16;
    }
    put(size_, carry);
    trim(std::min(size_ + 1, kDigits));
}

int Natural::compare(const Natural &a, const Natural &b) {
    if (a.size_ != b.size_) return a.size_ < b.size_ ? -1 : 1;
    for (size_t i = a.size_; i-- > 0;)
        if (a.digits_[i] != b.digits_[i]) return a.digits_[i] < b.digits_[i] ? -1 : 1;
    return 0;
}

Natural operator+(const Natural &a, const Natural &b) {
    Natural out = a;
    out.add(b);
    return out;
}

Natural operator-(const Natural &a, const Natural &b) {
    Natural out = a;
    out.subtract(b);
    return out;
}

Natural operator*(const Natural &a, const Natural &b) {
    Natural out;
    for (size_t i = 0; i < a.size_; ++i) {
        uint32_t carry = 0;
        for (size_t j = 0; j < b.size_; ++j) {
            uint32_t old = i + j < Natural::kDigits ? out.digits_[i + j] : 0u;
            uint32_t sum = uint32_t{a.digits_[i]} * b.digits_[j] + old + carry;
            out.put(i + j, sum & 0xFFFFu);
            carry = sum >> 16;
        }
        out.put(i + b.size_, carry);
    }
    out.trim(std::min(a.size_ + b.size_, Natural::kDigits));
    return out;
}

Natural operator<<(const Natural &a, unsigned count) {
    Natural out;
    uint32_t carry = 0;
    for (size_t i = 0; i < a.size_; ++i) {
        uint32_t digit = uint32_t{a.digits_[i]} << (count % 16) | carry;
        out.put(i + count / 16, digit & 0xFFFFu);
        carry = digit >> 16;
    }
    out.put(a.size_ + count / 16, carry);
    out.trim(std::min(a.size_ + count / 16 + 1, Natural::kDigits));
    return out;
}

Natural operator>>(const Natural &a, unsigned count) {
    Natural out;
    size_t skipped = count / 16;
    for (size_t i = skipped; i < a.size_; ++i) {
        uint32_t above = i + 1 < a.size_ ? a.digits_[i + 1] : 0u;
        out.put(i - skipped, (above << 16 | a.digits_[i]) >> (count % 16) & 0xFFFFu);
    }
    out.trim(a.size_);
    return out;
}

void divide(const Natural &a, const Natural &b, Natural &quotient, Natural &remainder) {
    if (b.is_zero()) give_up("division by zero");
    Natural q, r;
    for (unsigned i = a.bit_length(); i-- > 0;) {
        r.double_and_add(a.bit(i) ? 1u : 0u);
        bool fits = r >= b;
        if (fits) r.subtract(b);
        q.double_and_add(fits ? 1u : 0u);
    }
    quotient = q;
    remainder = r;
}

Natural operator/(const Natural &a, const Natural &b) {
    Natural quotient, remainder;
    divide(a, b, quotient, remainder);
    return quotient;
}

Natural operator%(const Natural &a, const Natural &b) {
    Natural quotient, remainder;
    divide(a, b, quotient, remainder);
    return remainder;
}

Natural mod_mul(const Natural &a, const Natural &b, const Natural &m) {
    Natural row = a < m ? a : a % m;
    Natural out;
    for (unsigned i = b.bit_length(); i-- > 0;) {
        out.double_and_add(0);
        if (out >= m) out.subtract(m);
        if (b.bit(i)) out.add(row);
        if (out >= m) out.subtract(m);
    }
    return out;
}

Natural mod_power(const Natural &a, const Natural &e, const Natural &m) {
    Natural out = Natural(1) % m;
    for (unsigned i = e.bit_length(); i-- > 0;) {
        out = mod_mul(out, out, m);
        if (e.bit(i)) out = mod_mul(out, a, m);
    }
    return out;
}

Natural greatest_common_divisor(Natural a, Natural b) {
    while (!b.is_zero()) {
        Natural rest = a % b;
        a = b;
        b = rest;
    }
    return a;
}

}  // namespace zokecc_test

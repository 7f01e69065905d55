// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Division with remainder: Knuth, The Art of Computer Programming, volume 2, algorithm D,
// in base 2^32. Every result is exact.
#include "mint/divide.h"

#include "mint/limbs/division.h"
#include "mint/plain.h"
#include "mint/words.h"

using namespace zokecc;

namespace {

// out[count + 1] = x[count] * 2^bits, bits below 32.
void shift_up(const uint32_t *x, uint32_t count, uint32_t bits, uint32_t *out)
{
    uint32_t below = 0;
    for (uint32_t i = 0; i < count; ++i) {
        const uint64_t wide = uint64_t{x[i]} << bits;
        out[i] = low_half(wide) | below;
        below = high_half(wide);
    }
    out[count] = below;
}

// out[count] = x[count + 1] / 2^bits, bits below 32; the quotient must fit.
void shift_down(const uint32_t *x, uint32_t count, uint32_t bits, uint32_t *out)
{
    for (uint32_t i = 0; i < count; ++i) out[i] = low_half((uint64_t{x[i + 1]} << 32 | x[i]) >> bits);
}

// Returns the quotient digit of the span's three top words u0:u1:u2 by the divisor's two top words
// d1:d2, at most one too large; d1's top bit is set and u0 <= d1. For u0 == d1 the estimate is
// 2^32 - 1: in units of the divisor's top word the span is at least d1 * 2^32 and the divisor below
// d1 + 1, so the quotient is above 2^32 - 2^32 / (d1 + 1) > 2^32 - 2: the true digit is at most one less.
uint32_t estimate_digit(uint32_t u0, uint32_t u1, uint32_t u2, uint32_t d1, uint32_t d2)
{
    if (u0 == d1) return kAllOnes;
    const uint64_t top = uint64_t{u0} << 32 | u1;
    uint32_t digit = low_half(top / d1);  // u0 < d1, so it is one word
    uint32_t remainder = u1 - digit * d1;
    while (uint64_t{digit} * d2 > (uint64_t{remainder} << 32 | u2)) {
        --digit;
        remainder += d1;
        if (remainder < d1) break;
    }
    return digit;
}

// Subtracts digit * v[count] from span[count + 1] and returns the true digit.
uint32_t subtract_multiple(uint32_t *span, const uint32_t *v, uint32_t count, uint32_t digit)
{
    const uint32_t taken = PortableSteps<uint32_t>::mul_sub_limbs(v, digit, count, span);
    const bool too_large = span[count] < taken;
    span[count] -= taken;
    if (too_large) {
        span[count] += add_words(span, v, static_cast<int32_t>(count), span);
        --digit;
    }
    return digit;
}

}  // namespace

namespace zokecc {

void divide_words(const uint32_t *u, uint32_t u_count, const uint32_t *v, uint32_t v_count,
                  uint32_t *quotient, uint32_t *remainder)
{
    uint32_t dividend[kProductWords + 1];  // one word more than u, for the bits that the shift moves up
    uint32_t divisor[kMintWords + 1];
    const uint32_t shift = 32 - bit_length(v[v_count - 1]);
    shift_up(u, u_count, shift, dividend);
    shift_up(v, v_count, shift, divisor);

    const uint32_t d1 = divisor[v_count - 1];
    const uint32_t d2 = v_count > 1 ? divisor[v_count - 2] : 0;
    for (uint32_t position = u_count - v_count + 1; position-- > 0;) {
        uint32_t *span = dividend + position;
        const uint32_t u2 = v_count > 1 ? span[v_count - 2] : 0;
        uint32_t digit = estimate_digit(span[v_count], span[v_count - 1], u2, d1, d2);
        digit = subtract_multiple(span, divisor, v_count, digit);
        if (quotient != nullptr) quotient[position] = digit;
    }
    // After the last digit the remainder is below the divisor, so its word v_count is zero.
    shift_down(dividend, v_count, shift, remainder);
}

void divide_quickly(const uint32_t *u, uint32_t u_count, const uint32_t *v, uint32_t v_count,
                    uint32_t *quotient, uint32_t *remainder)
{
    if (v_count > kWordsPerLimb<NativeLimb>)
        divide_limbs<NativeSteps>(u, u_count, v, v_count, quotient, remainder);
    else
        divide_words(u, u_count, v, v_count, quotient, remainder);
}

void reduce_product(const uint32_t *x, uint32_t count, const mint &modulus, mint &out)
{
    if (is_zero(modulus)) return;
    const uint32_t used = used_words(modulus);
    if (count < used || (count == used && compare_words(x, modulus.words, count) < 0)) {
        set_words(out, x, count);
        return;
    }
    const uint32_t trimmed = trimmed_words(modulus);
    if (trimmed == 0) return;
    // The remainder is written last, so out may be the modulus.
    divide_quickly(x, count, modulus.words, trimmed, nullptr, out.words);
    out.len = trimmed_count(out.words, trimmed);
}

}  // namespace zokecc

int32_t mint_div(const mint *dividend, const mint *divisor, mint *quotient, mint *remainder)
{
    if (is_zero(*divisor) || remainder == nullptr) return 0;
    if (mint_compare(dividend, divisor) < 0) {
        mint_copy(remainder, dividend);
        if (quotient != nullptr) set_zero(*quotient);
        return 1;
    }
    // mint_compare goes by len first; from here on only the trimmed values count.
    const uint32_t u_count = trimmed_words(*dividend);
    const uint32_t v_count = trimmed_words(*divisor);
    if (v_count == 0) return 0;
    uint32_t quotient_words[kMintWords] = {};
    if (u_count < v_count) {
        set_words(*remainder, dividend->words, u_count);
        if (quotient != nullptr) set_zero(*quotient);
        return 1;
    }
    // The remainder is written last, so it may be an operand's record.
    divide_quickly(dividend->words, u_count, divisor->words, v_count, quotient_words, remainder->words);
    remainder->len = trimmed_count(remainder->words, v_count);
    if (quotient != nullptr) set_words(*quotient, quotient_words, u_count - v_count + 1);
    return 1;
}

int32_t mint_mod(const mint *dividend, const mint *modulus, mint *remainder)
{
    return mint_div(dividend, modulus, nullptr, remainder);
}

int32_t mint_mod_reduce(const mint *value, const mint *modulus, mint *out)
{
    // Reducing word by word leaves the same remainder as one long division.
    if (mint_compare(value, modulus) == 0 || mint_mod(value, modulus, out) == 0) set_zero(*out);
    return 0;
}

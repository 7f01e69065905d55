// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Products on 29-bit limbs for six, seven and eight words: product scanning, three columns at a time.
//
// Columns are stored times 8: the lower word of a sum is then the limb, times 8, the upper word is the
// carry, and closing a column takes two instructions. A limb of one operand is loaded once for its products
// in all three columns.
#ifndef ZOKECC_MINT_LIMBS_MODULUS_29_COLUMNS_H
#define ZOKECC_MINT_LIMBS_MODULUS_29_COLUMNS_H

#include <array>

#include "mint/limbs/column_sum.h"
#include "mint/limbs/modulus_29.h"

namespace zokecc {

// P = pn 2^(2 H) is the modulus in the terms of barrett.h, for pn of 32 Words bits with its top bit set:
// both factors are scaled by 2^H, so that a product and a square use the same limbs. P fills the N limbs, or
// has one bit more; then the remainder's top bit is recovered from the guard.
template <unsigned Words, class Steps>
class ColumnLimbs {
public:
    using Limb = uint32_t;
    static constexpr unsigned N = short_limbs(Words);
    static constexpr unsigned H = column_scale(Words) / 2;

    // out = a b mod pn for a, b up to pn; out may be a or b, and a square costs less. False if the guard
    // leaves the quotient open; see OpenQuotients for what out holds then.
    ZOKECC_INLINE static bool multiply(const ShortModulus &m, const Limb *a, const Limb *b, Limb *out)
    {
        Limb x[2 * N];
        product(a, b, x);
        Limb q[N];
        const Limb guard = quotient(m, x + N - 1, q);
        const uint32_t open = OpenQuotients::is_open(guard, greatest_guard(N) << 3);
        if (m.open_quotients.give_up(open)) [[unlikely]]
            return false;
        Limb r[N];
        remainder<0>(x, q, m.complement, r);
#pragma GCC unroll 8
        for (unsigned i = 0; i < Words; ++i) out[i] = word_from(r, 2 * H + 32 * i);
        if constexpr (kBitsAbove == 1) out[Words - 1] |= top_bit(m, guard, out[Words - 1]);
        return open == 0;
    }

private:
    using ColumnSum = ColumnSumOf<Steps>;
    static constexpr unsigned kBitsAbove = 32 * Words + 2 * H - kShortBits * N;
    static_assert(kBitsAbove <= 1);
    static constexpr unsigned kSplitRow = 5;  // where the quotient's two lowest columns are carried early

    ZOKECC_INLINE static void product(const Limb *a, const Limb *b, Limb *x)
    {
        Limb left[N];   // times 8
        Limb right[N];  // b, or 2 a for a square
        if (a == b) {
            split<0>(a, left);
#pragma GCC unroll 9
            for (unsigned i = 0; i < N; ++i) right[i] = left[i] >> 2;
            columns<0, true>(left, right, x);
        } else {
            split<0>(a, left);
            split<0>(b, right);
#pragma GCC unroll 9
            for (unsigned i = 0; i < N; ++i) right[i] >>= 3;
            columns<0, false>(left, right, x);
        }
    }

    // out[N] = the limbs of a 2^H, times 8.
    template <unsigned i>
    ZOKECC_INLINE static void split(const Limb *a, Limb *out)
    {
        if constexpr (i == 0) {
            out[0] = a[0] << (H + 3);
        } else {
            constexpr unsigned bit = kShortBits * i - H;
            constexpr unsigned word = bit / 32;
            constexpr unsigned low = bit % 32;
            Limb limb = a[word] >> low;
            if constexpr (low > 3 && word + 1 < Words) limb |= a[word + 1] << (32 - low);
            out[i] = limb << 3;
        }
        if constexpr (i + 1 < N) split<i + 1>(a, out);
    }

    // The first limb of a with a product in this column, for a b of this many limbs.
    static constexpr unsigned first_row(unsigned column, unsigned b_limbs)
    {
        return column < b_limbs ? 0 : column - b_limbs + 1;
    }

    // Adds a_i b_(k + c - i) to column k + c, for c < width and i from row to last. A square passes 2 a as b
    // and adds each pair once. The first product of an empty column is stored, not added.
    template <unsigned k, unsigned width, unsigned row, unsigned last, unsigned limbs, bool square,
              unsigned filled>
    ZOKECC_INLINE static void add_rows(const Limb *a, const Limb *b, ColumnSum *s)
    {
        if constexpr (row <= last) {
            const Limb x = a[row];
            add_one<k, row, limbs, square, (filled > 0)>(x, b, s[0]);
            if constexpr (width > 1) add_one<k + 1, row, limbs, square, (filled > 1)>(x, b, s[1]);
            if constexpr (width > 2) add_one<k + 2, row, limbs, square, (filled > 2)>(x, b, s[2]);
            add_rows<k, width, row + 1, last, limbs, square, filled>(a, b, s);
        }
    }

    template <unsigned column, unsigned row, unsigned limbs, bool square, bool filled>
    ZOKECC_INLINE static void add_one(Limb x, const Limb *b, ColumnSum &s)
    {
        if constexpr (row <= column && column - row < limbs && (!square || 2 * row <= column)) {
            constexpr bool first = !filled && row == first_row(column, limbs);
            s.template add<first>(x, square && 2 * row == column ? x >> 3 : b[column - row]);
        }
    }

    // Closes width columns: writes their limbs, returns the carry into the next column.
    template <unsigned width>
    ZOKECC_INLINE static ColumnSum close(ColumnSum *s, Limb *out)
    {
        out[0] = s[0].low;
        if constexpr (width > 1) {
            s[1].add_carry(s[0].high);
            out[1] = s[1].low;
        }
        if constexpr (width > 2) {
            s[2].add_carry(s[1].high);
            out[2] = s[2].low;
        }
        return {s[width - 1].high << 3, s[width - 1].high >> 29};
    }

    // x[2 N] = left right, from column k up; the last column has only a carry.
    template <unsigned k, bool square>
    ZOKECC_INLINE static void columns(const Limb *left, const Limb *right, Limb *x, ColumnSum carry = {})
    {
        constexpr unsigned width = 2 * N - 1 - k < 3 ? 2 * N - 1 - k : 3;
        constexpr unsigned end = square ? (k + width - 1) / 2 : k + width - 1;
        ColumnSum s[3];
        s[0] = carry;
        add_rows < k, width, first_row(k, N),
            end<N ? end : N - 1, N, square, (k > 0 ? 1 : 0)>(left, right, s);
        carry = close<width>(s, x + k);
        if constexpr (k + width < 2 * N - 1)
            columns<k + width, square>(left, right, x, carry);
        else
            x[2 * N - 1] = carry.low;
    }

    // From the top limbs of x: computes columns N and up; q is those from N + 2. Returns the guard, times 8.
    ZOKECC_INLINE static Limb quotient(const ShortModulus &m, const Limb *top, Limb *q)
    {
        ColumnSum s[3];
        add_rows<N, 3, 0, kSplitRow - 1, N + 1, false, 0>(top, m.reciprocal, s);
        s[1].add_carry(s[0].high);
        s[0].high = 0;
        s[2].add_carry(s[1].high);
        s[1].high = 0;
        add_rows<N, 3, kSplitRow, N, N + 1, false, 0>(top, m.reciprocal, s);
        Limb limbs[3];
        const ColumnSum carry = close<3>(s, limbs);
        q[0] = limbs[2];
        quotient_columns<N + 3>(top, m.reciprocal, q, carry);
        return limbs[1];
    }

    template <unsigned k>
    ZOKECC_INLINE static void quotient_columns(const Limb *top, const Limb *reciprocal, Limb *q,
                                               ColumnSum carry)
    {
        constexpr unsigned width = 2 * N + 1 - k < 3 ? 2 * N + 1 - k : 3;
        ColumnSum s[3];
        s[0] = carry;
        add_rows<k, width, k - N, N, N + 1, false, 1>(top, reciprocal, s);
        carry = close<width>(s, q + (k - N - 2));
        if constexpr (k + width <= 2 * N)
            quotient_columns<k + width>(top, reciprocal, q, carry);
        else
            q[N - 1] = carry.low;
    }

    // r[N] = the lowest N limbs of x + q (2^(29 N) - P): x - q P without the one bit it may have above.
    template <unsigned k>
    ZOKECC_INLINE static void remainder(const Limb *x, const Limb *q, const Limb *complement, Limb *r,
                                        ColumnSum carry = {})
    {
        constexpr unsigned width = N - k < 3 ? N - k : 3;
        ColumnSum s[3] = {{x[k], 0}, {width > 1 ? x[k + 1] : 0, 0}, {width > 2 ? x[k + 2] : 0, 0}};
        if constexpr (k > 0) {
            s[0].high = carry.high;
            s[0].add_word(carry.low);
        }
        add_rows<k, width, 0, k + width - 1, N, false, 3>(q, complement, s);
        carry = close<width>(s, r + k);
        if constexpr (k + width < N) remainder<k + width>(x, q, complement, r, carry);
    }

    // Returns 32 bits of r from the given bit position up, spread over two limbs that are stored times 8.
    ZOKECC_INLINE static Limb word_from(const Limb *r, unsigned position)
    {
        const unsigned limb = position / kShortBits;
        const unsigned bit = position % kShortBits;
        return r[limb] >> (bit + 3) | (bit <= 26 ? r[limb + 1] << (26 - bit) : r[limb + 1] >> (bit - 26));
    }

    // Returns the missing top bit of the remainder's top word. The remainder is pn times the fraction of the
    // quotient, and the guard is that fraction to within N + 5 units of 2^-29: the estimate is off by less
    // than 8 (N + 6) units, far less than half the bit's weight.
    ZOKECC_INLINE static Limb top_bit(const ShortModulus &m, Limb guard, Limb word)
    {
        const Limb estimate = static_cast<Limb>(uint64_t{guard} * m.top >> 32);
        return (estimate - word + 0x40000000u) & 0x80000000u;
    }

    // ---- Bounds: no column exceeds 64 bits ----

    using Limits = std::array<uint64_t, N + 1>;

    // The largest limbs, times scale, that a number of the given bits can have.
    static constexpr Limits limits(unsigned limbs, unsigned bits, uint64_t scale)
    {
        Limits out{};
        for (unsigned i = 0; i < limbs; ++i) {
            const unsigned left = bits - kShortBits * i;
            out[i] = scale * ((uint64_t{1} << (i + 1 < limbs ? kShortBits : left)) - 1);
        }
        return out;
    }

    // True if rows `row` to `last` of column k, a carry and a word fit 64 bits together.
    static constexpr bool fits(const Limits &a, const Limits &b, unsigned limbs, unsigned k, unsigned row,
                               unsigned last, bool square = false)
    {
        uint64_t sum = (uint64_t{1} << 35) + (uint64_t{1} << 32);
        for (unsigned i = row; i <= last && i <= k && (!square || 2 * i <= k); ++i) {
            if (k - i >= limbs) continue;
            const uint64_t term = a[i] * (square && 2 * i == k ? a[i] / 8 : b[k - i]);
            if (sum > ~uint64_t{0} - term) return false;
            sum += term;
        }
        return true;
    }

    static constexpr bool all_fit()
    {
        const Limits left = limits(N, 32 * Words + H, 8);
        const Limits right = limits(N, 32 * Words + H, 1);
        const Limits twice = limits(N, 32 * Words + H, 2);
        const Limits top = limits(N + 1, 64 * Words + 2 * H - kShortBits * (N - 1), 8);
        const Limits reciprocal = limits(N + 1, kShortBits * (N + 1) + 1 - kBitsAbove, 1);
        const Limits quotient = limits(N, 32 * Words, 8);
        const Limits complement = limits(N, kShortBits * N, 1);
        bool fit = true;
        for (unsigned k = 0; k < 2 * N; ++k) {
            fit = fit && fits(left, right, N, k, 0, N - 1) && fits(left, twice, N, k, 0, N - 1, true);
            fit = fit && (k < N || fits(top, reciprocal, N + 1, k, k > N + 1 ? 0 : kSplitRow, N));
            // Of the highest column of the remainder only the lower word is used.
            fit = fit && (k + 1 >= N || fits(quotient, complement, N, k, 0, N - 1));
        }
        return fit && fits(top, reciprocal, N + 1, N, 0, kSplitRow - 1) &&
               fits(top, reciprocal, N + 1, N + 1, 0, kSplitRow - 1) &&
               fits(top, reciprocal, N + 1, 2 * N, 0, N);
    }
    static_assert(all_fit());
};

// multiply_chosen and its kernels, with the given steps. Modulus is ShortModulus or a test's type.
template <class Steps, class Modulus = ShortModulus>
class ColumnProducts {
public:
    static bool multiply_chosen(const Modulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out)
    {
        if (p.kernel == 6) return multiply_six(p, a, b, out);
        if (p.kernel == 7) return multiply_seven(p, a, b, out);
        if (column_scale(p.words) == 0) return multiply_looped(p, a, b, out);
        return multiply_shifted(p, a, b, out);
    }

private:
    ZOKECC_ONE_COPY static bool multiply_six(const Modulus &p, const uint32_t *a, const uint32_t *b,
                                             uint32_t *out)
    {
        return ColumnLimbs<6, Steps>::multiply(p, a, b, out);
    }

    ZOKECC_ONE_COPY static bool multiply_seven(const Modulus &p, const uint32_t *a, const uint32_t *b,
                                               uint32_t *out)
    {
        return ColumnLimbs<7, Steps>::multiply(p, a, b, out);
    }

    // For p with zero bits at the top of its top word: (a 2^s) b mod p 2^s is (a b mod p) 2^s.
    ZOKECC_OWN_FRAME static bool multiply_shifted(const Modulus &p, const uint32_t *a, const uint32_t *b,
                                                  uint32_t *out)
    {
        uint32_t shifted[kMaxFastWords + 1];
        shift_limbs_up(a, p.words, p.shift, shifted);
        const bool is_exact = p.words == 6   ? multiply_six(p, shifted, b, out)
                              : p.words == 7 ? multiply_seven(p, shifted, b, out)
                                             : multiply_eight(p, shifted, b, out);
        // NOLINTNEXTLINE(readability-static-accessed-through-instance): static in the default build only
        if (p.open_quotients.give_up(1 ^ static_cast<uint32_t>(is_exact))) return false;
        Steps::shift_limbs_down(out, p.words, p.shift);
        return is_exact;
    }
};

}  // namespace zokecc

#endif

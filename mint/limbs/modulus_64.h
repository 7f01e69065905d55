// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Multiplication modulo p on 64-bit limbs, for machines with a 128-bit product.
#ifndef ZOKECC_MINT_LIMBS_MODULUS_64_H
#define ZOKECC_MINT_LIMBS_MODULUS_64_H

#include "base/linkage.h"
#include "mint/limbs/barrett.h"

namespace zokecc {

// p of N limbs, its top limb not zero; see barrett.h. The top limb of M, above N + 1 others, is always 1 (p
// is odd, so pn is above B^N / 2) and not stored.
template <unsigned Limbs, class StepsOfLimbs = NativeSteps>
class FullLimbs {
public:
    using Steps = StepsOfLimbs;
    using Limb = uint64_t;
    static constexpr unsigned N = Limbs;
    static constexpr unsigned kElementLimbs = Limbs;

    static constexpr unsigned words() { return 2 * N; }
    static constexpr unsigned limbs() { return N; }
    static bool fits(const uint32_t *, uint32_t words) { return (words + 1) / 2 == N; }

    void prepare(const uint32_t *p, uint32_t words)
    {
        shift_ = static_cast<unsigned>(std::countl_zero(p[words - 1])) + (2 * N - words) * 32;
        uint32_t padded[2 * N + 3] = {};
        std::memcpy(padded, p, 4 * words);
        std::memcpy(modulus_, padded, sizeof modulus_);
        if (shift_ != 0) shift_up(modulus_, shift_, modulus_);
        if constexpr (kHasRows) rows_ = Sum::has_rows();
        const Limb zero[N] = {};
        Limb ones;
        Steps::sub_limbs(zero, modulus_, N, complement_, ones);
        reciprocal_words(p, words, 64 * (2 * N + 1) - shift_, padded, 2 * N + 2);
        std::memcpy(reciprocal_, padded, sizeof reciprocal_);
    }

    // out = a b mod p for a, b up to p; out may be a or b. False if the guard leaves the quotient open; see
    // OpenQuotients for what out holds then.
    ZOKECC_INLINE bool multiply(const Limb *a, const Limb *b, Limb *out) const
    {
        if constexpr (kHasRows) {
            if (rows_) [[likely]]
                return multiply_by_rows(a, b, out);
        }
        return multiply_by_columns(a, b, out);
    }

    // The same for b = a.
    ZOKECC_INLINE bool square(const Limb *a, Limb *out) const
    {
        if constexpr (kHasRows && N <= 4) {
            if (rows_) [[likely]]
                return square_by_rows(a, out);
        }
        return multiply(a, a, out);
    }

    OpenQuotients &open_quotients() { return open_quotients_; }

private:
    using Sum = typename Steps::Sum;
    static constexpr bool kHasRows = Sum::kMaxRow > N;

    ZOKECC_ONE_COPY bool multiply_by_columns(const Limb *a, const Limb *b, Limb *out) const
    {
        Limb x[2 * N];
        if (shift_ == 0) {
            product(a, b, x);
        } else {
            Limb shifted[N];
            shift_up(a, shift_, shifted);
            product(shifted, b, x);
        }
        Limb q[N];
        const uint32_t open = quotient(x + N - 1, q);
        if (open_quotients_.give_up(open)) return false;
        remainder(x, q, out);
        return open == 0;
    }

    static void product(const Limb *a, const Limb *b, Limb *x)
    {
        Sum sum;
#pragma GCC unroll 9
        for (unsigned k = 0; k < 2 * N - 1; ++k) {
#pragma GCC unroll 5
            for (unsigned i = k < N ? 0 : k - N + 1; i <= (k < N ? k : N - 1); ++i)
                sum.add_product(a[i], b[k - i]);
            x[k] = sum.shift();
        }
        x[2 * N - 1] = sum.low;
    }

    // 1 if this guard leaves the quotient open, otherwise 0.
    static uint32_t is_open(Limb guard) { return static_cast<Limb>(guard + (N + 4)) < guard ? 1 : 0; }

    // q = the quotient, from the top limbs of x. Returns is_open of its guard.
    uint32_t quotient(const Limb *top, Limb *q) const
    {
        Sum sum;
        Limb guard = 0;
#pragma GCC unroll 6
        for (unsigned k = N; k <= 2 * N; ++k) {
#pragma GCC unroll 6
            for (unsigned i = k - N; i <= N; ++i) sum.add_product(top[i], reciprocal_[k - i]);
            if (k > N) sum.add(top[k - N - 1]);  // times M's top limb, 1
            const Limb limb = sum.shift();
            if (k == N + 1) guard = limb;
            if (k > N + 1) q[k - N - 2] = limb;
        }
        q[N - 1] = sum.low + top[N];
        return is_open(guard);
    }

    // out = (x - q pn) / 2^s. The difference is below pn, so only the low limbs are computed.
    void remainder(const Limb *x, const Limb *q, Limb *out) const
    {
        Sum sum;
        Limb r[N];
#pragma GCC unroll 5
        for (unsigned k = 0; k < N; ++k) {
#pragma GCC unroll 5
            for (unsigned i = 0; i <= k; ++i) sum.add_product(q[i], modulus_[k - i]);
            r[k] = sum.shift();
        }
        take_off(x, r, out);
    }

    // out = (x - r) / 2^s
    void take_off(const Limb *x, Limb *r, Limb *out) const
    {
        Limb ones;
        Steps::sub_limbs(x, r, N, r, ones);
        scale_down(r, out);
    }

    // out = r / 2^s
    ZOKECC_INLINE void scale_down(const Limb *r, Limb *out) const
    {
        if (shift_ == 0) {
            std::memcpy(out, r, N * sizeof(Limb));
            return;
        }
#pragma GCC unroll 5
        for (unsigned i = 0; i + 1 < N; ++i) out[i] = r[i] >> shift_ | r[i + 1] << (64 - shift_);
        out[N - 1] = r[N - 1] >> shift_;
    }

    // As multiply_by_columns, with operand scanning instead of product scanning.
    ZOKECC_INLINE bool multiply_by_rows(const Limb *a, const Limb *b, Limb *out) const
    {
        Limb scaled[N];
        Limb x[2 * N];
        a = scale(a, scaled);
        Sum::template set_row<N>(a[0], b, x);
        product_rows<1>(a, b, x);
        return remainder_by_rows(x, out);
    }

    // Each product of two different limbs is computed once and doubled, then the squares are added.
    ZOKECC_INLINE bool square_by_rows(const Limb *a, Limb *out) const
    {
        Limb x[2 * N];
        x[0] = 0;
        x[2 * N - 1] = 0;
        Sum::template set_row<N - 1>(a[0], a + 1, x + 1);
        square_rows<1>(a, x);
        Sum::template double_and_add_squares<N>(a, x);
        if (shift_ != 0) scale_wide(x);
        return remainder_by_rows(x, out);
    }

    // Returns a 2^s: in scaled, or a itself for s = 0.
    const Limb *scale(const Limb *a, Limb *scaled) const
    {
        if (shift_ == 0) return a;
        shift_up(a, shift_, scaled);
        return scaled;
    }

    void scale_wide(Limb *x) const
    {
        for (unsigned i = 2 * N - 1; i > 0; --i) x[i] = x[i] << shift_ | x[i - 1] >> (64 - shift_);
        x[0] <<= shift_;
    }

    // out = (x mod pn) / 2^s. The remainder is x + q (B^N - pn) modulo B^N.
    ZOKECC_INLINE bool remainder_by_rows(Limb *x, Limb *out) const
    {
        Limb columns[N + 2];  // columns N and up: [1] is the guard, [2] and up are the quotient
        Sum::template set_row<1>(x[N - 1], reciprocal_ + N, columns);
        quotient_rows<1>(x + N - 1, columns);
        const uint32_t open = is_open(columns[1]);
        if (open_quotients_.give_up(open)) return false;
        remainder_rows<0>(columns + 2, x);
        scale_down(x, out);
        return open == 0;
    }

    template <unsigned i>
    static ZOKECC_INLINE void product_rows(const Limb *a, const Limb *b, Limb *x)
    {
        x[i + N] = 0;
        Sum::template add_row<N>(a[i], b, x + i);
        if constexpr (i + 1 < N) product_rows<i + 1>(a, b, x);
    }

    template <unsigned i>
    static ZOKECC_INLINE void square_rows(const Limb *a, Limb *x)
    {
        if constexpr (i + 1 < N) {
            x[i + N] = 0;
            Sum::template add_row<N - 1 - i>(a[i], a + i + 1, x + 2 * i + 1);
            square_rows<i + 1>(a, x);
        }
    }

    template <unsigned i>
    ZOKECC_INLINE void quotient_rows(const Limb *top, Limb *columns) const
    {
        columns[i + 1] = 0;
        // Times M's top limb, 1: before the last row, which has to wait for a limb.
        if constexpr (i == N) Steps::add_limbs(columns + 1, top, N + 1, columns + 1);
        Sum::template add_row<i + 1>(top[i], reciprocal_ + N - i, columns);
        if constexpr (i < N) quotient_rows<i + 1>(top, columns);
    }

    // Only the lowest N limbs are computed.
    template <unsigned i>
    ZOKECC_INLINE void remainder_rows(const Limb *q, Limb *x) const
    {
        if constexpr (i + 1 < N) Sum::template add_row<N - 1 - i>(q[i], complement_, x + i);
        x[N - 1] += q[i] * complement_[N - 1 - i];
        if constexpr (i + 1 < N) remainder_rows<i + 1>(q, x);
    }

    // out = a 2^bits, 0 < bits < 64; the result must fit. out may be a.
    static void shift_up(const Limb *a, unsigned bits, Limb *out)
    {
        Limb below = 0;
#pragma GCC unroll 5
        for (unsigned i = 0; i < N; ++i) {
            const Limb limb = a[i];
            out[i] = limb << bits | below;
            below = limb >> (64 - bits);
        }
    }

    Limb modulus_[N];         // pn
    Limb complement_[N];      // B^N - pn
    Limb reciprocal_[N + 1];  // M without its top limb
    unsigned shift_;          // s
    [[no_unique_address]] OpenQuotients open_quotients_;
    bool rows_ = false;  // the processor has the instructions for rows
};

}  // namespace zokecc

#endif

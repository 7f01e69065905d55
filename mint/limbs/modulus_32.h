// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Multiplication modulo p on whole 32-bit words, for machines that multiply and add two words at once.
//
// a b + c + d always fits two words for words a, b, c, d, and from ARMv6 on it is one instruction: rows of
// products need no separate carry handling, and the words of a mint are used as limbs directly.
#ifndef ZOKECC_MINT_LIMBS_MODULUS_32_H
#define ZOKECC_MINT_LIMBS_MODULUS_32_H

#include "base/linkage.h"
#include "mint/limbs/any_width.h"
#include "mint/limbs/barrett.h"
#include "mint/limbs/borrow_rule.h"

namespace zokecc {

// p in the terms of barrett.h, with B = 2^32 and N = words. M = floor(B^(2N+1) / pn) has one bit more than
// N + 1 words, so half of it is stored; the quotient comes out halved and is doubled.
struct WordModulus {
    using Steps = StepsOn<uint32_t>;

    uint32_t words;
    uint32_t kernel;                              // words if there is no shift, otherwise 0
    uint32_t shift;                               // s
    uint32_t complement[kMaxFastWords];           // B^N - pn
    uint32_t half_reciprocal[kMaxFastWords + 1];  // floor(M / 2)
    [[no_unique_address]] OpenQuotients open_quotients;

    static bool fits(const uint32_t *p, uint32_t count)
    {
        return count >= 5 && count <= kMaxFastWords && p[count - 1] != 0;
    }
    void prepare(const uint32_t *p, uint32_t count)
    {
        words = count;
        shift = static_cast<uint32_t>(std::countl_zero(p[count - 1]));
        kernel = shift == 0 ? count : 0;
        uint32_t shifted[kMaxFastWords + 1];
        shift_limbs_up(p, count, shift, shifted);
        uint32_t borrow = 0;
        for (uint32_t i = 0; i < count; ++i) complement[i] = sub_limb(0u, shifted[i], borrow);
        reciprocal_words(p, count, 32 * (2 * count + 1) - shift - 1, half_reciprocal, count + 1);
    }
};

// The kernel for one number of words.
template <unsigned N, class Steps>
class WordLimbs {
public:
    using Limb = uint32_t;

    // out = a b mod pn for a, b up to pn; out may be a or b. False if the guard leaves the quotient open; see
    // OpenQuotients for what out holds then.
    ZOKECC_INLINE static bool multiply(const WordModulus &m, const Limb *a, const Limb *b, Limb *out)
    {
        Limb x[2 * N];
        product(a, b, x);
        Limb columns[N + 2];  // columns N and up: [1] is the guard, [2] and up are the quotient
        quotient(m, x + N - 1, columns);
        // Half the quotient is too small by less than N + 3 units of the guard column (barrett.h; with half
        // of M the low limbs of x count for less than one), and by a fraction of such a unit: doubled, by
        // less than 2 (N + 4).
        const Limb guard = columns[1] << 1;
        const uint32_t open = OpenQuotients::is_open(guard, 0u - 2 * (N + 4));
        if (m.open_quotients.give_up(open)) [[unlikely]]
            return false;
#pragma GCC unroll 9
        for (unsigned k = N + 1; k > 1; --k) columns[k] = columns[k] << 1 | columns[k - 1] >> 31;
        remainder(m, columns + 2, x);
#pragma GCC unroll 9
        for (unsigned i = 0; i < N; ++i) out[i] = x[i];
        return open == 0;
    }

    // x[2 N] = a[N] b[N]; x is neither a nor b. Two rows at a time: a word of b is loaded once for both.
    ZOKECC_INLINE static void product(const Limb *a, const Limb *b, Limb *x)
    {
#pragma GCC unroll 5
        for (unsigned i = 0; i + 1 < N; i += 2) {
            // The analyser cannot tell that the words above the shifted number are set.
            // NOLINTBEGIN(clang-analyzer-core.uninitialized.Assign)
            const Limb a0 = a[i];
            const Limb a1 = a[i + 1];
            // NOLINTEND(clang-analyzer-core.uninitialized.Assign)
            Limb c = 0;
            Limb d = 0;
#pragma GCC unroll 9
            for (unsigned j = 0; j < N; ++j) {
                const Limb w = b[j];
                if (i == 0 && j == 0)
                    multiply_words(x[0], c, a0, w);
                else
                    Steps::multiply_add_both(x[i + j], c, a0, w);
                if (i == 0 && j + 1 < N) x[j + 1] = 0;
                Steps::multiply_add_both(j + 1 < N ? x[i + j + 1] : c, d, a1, w);
            }
            x[i + N] = c;
            x[i + N + 1] = d;
        }
        if constexpr (N % 2 != 0) {
            Limb c = 0;
#pragma GCC unroll 9
            for (unsigned j = 0; j < N; ++j) Steps::multiply_add_both(x[N - 1 + j], c, a[N - 1], b[j]);
            x[2 * N - 1] = c;
        }
    }

private:
    // low + high B = a b
    ZOKECC_INLINE static void multiply_words(Limb &low, Limb &high, Limb a, Limb b)
    {
        const Double<Limb> product = Double<Limb>{a} * b;
        low = static_cast<Limb>(product);
        high = static_cast<Limb>(product >> 32);
    }

    // columns[N + 2] = columns N and up of top[N + 1] times half of M.
    ZOKECC_INLINE static void quotient(const WordModulus &m, const Limb *top, Limb *columns)
    {
        const Limb *const r = m.half_reciprocal;
        multiply_words(columns[0], columns[1], top[0], r[N]);
#pragma GCC unroll 5
        for (unsigned j = 1; j + 1 <= N; j += 2) {  // rows j and j + 1
            const Limb t0 = top[j];
            const Limb t1 = top[j + 1];
            Limb c = 0;
            Limb d = 0;
            Steps::multiply_add_both(columns[0], d, t1, r[N - j - 1]);
#pragma GCC unroll 10
            for (unsigned i = N - j; i <= N; ++i) {
                const Limb w = r[i];
                Steps::multiply_add_both(columns[i + j - N], c, t0, w);
                Steps::multiply_add_both(i < N ? columns[i + j + 1 - N] : c, d, t1, w);
            }
            columns[j + 1] = c;
            columns[j + 2] = d;
        }
        if constexpr (N % 2 != 0) {
            Limb c = 0;
#pragma GCC unroll 10
            for (unsigned i = 0; i <= N; ++i) Steps::multiply_add_both(columns[i], c, top[N], r[i]);
            columns[N + 1] = c;
        }
    }

    // x[N] = the lowest N words of x + q (B^N - pn): they equal x - q pn, which is below pn.
    ZOKECC_INLINE static void remainder(const WordModulus &m, const Limb *q, Limb *x)
    {
#pragma GCC unroll 5
        for (unsigned i = 0; i < N; i += 2) {
            const Limb q0 = q[i];
            const Limb q1 = i + 1 < N ? q[i + 1] : 0;
            Limb c = 0;
            Limb d = 0;
#pragma GCC unroll 9
            for (unsigned j = 0; i + j < N; ++j) {
                const Limb w = m.complement[j];
                Steps::multiply_add_both(x[i + j], c, q0, w);
                if (i + j + 1 < N) Steps::multiply_add_both(x[i + j + 1], d, q1, w);
            }
        }
    }
};

// out = a b mod p for a, b up to p; out may be a or b. False if the guard leaves the quotient open; see
// OpenQuotients for what out holds then. For p of exactly 256 bits, the most common case, and for any p.
bool multiply_eight(const WordModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out);
bool multiply_chosen(const WordModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out);

// multiply_chosen and its kernels, with the given steps. Modulus is WordModulus or a test's type.
template <class Steps, class Modulus = WordModulus>
class WordProducts {
public:
    static bool multiply_chosen(const Modulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out)
    {
        return p.kernel == 0 ? multiply_shifted(p, a, b, out) : multiply_words(p, a, b, out);
    }

private:
    ZOKECC_ONE_COPY static bool multiply_words(const Modulus &p, const uint32_t *a, const uint32_t *b,
                                               uint32_t *out)
    {
        switch (p.words) {
        case 5: return WordLimbs<5, Steps>::multiply(p, a, b, out);
        case 6: return WordLimbs<6, Steps>::multiply(p, a, b, out);
        case 7: return WordLimbs<7, Steps>::multiply(p, a, b, out);
        case 9: return WordLimbs<9, Steps>::multiply(p, a, b, out);
        default: return multiply_eight(p, a, b, out);
        }
    }

    // For p with zero bits at the top of its top word: (a 2^s) b mod p 2^s is (a b mod p) 2^s.
    ZOKECC_OWN_FRAME static bool multiply_shifted(const Modulus &p, const uint32_t *a, const uint32_t *b,
                                                  uint32_t *out)
    {
        uint32_t shifted[kMaxFastWords + 1];
        shift_limbs_up(a, p.words, p.shift, shifted);
        const bool is_exact = multiply_words(p, shifted, b, out);
        // NOLINTNEXTLINE(readability-static-accessed-through-instance): static in the default build only
        if (p.open_quotients.give_up(1 ^ static_cast<uint32_t>(is_exact))) return false;
        Steps::shift_limbs_down(out, p.words, p.shift);
        return is_exact;
    }
};

using AnyWordLimbs = AnyWidth<WordModulus>;

}  // namespace zokecc

#endif

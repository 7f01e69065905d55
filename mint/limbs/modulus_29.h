// Multiplication modulo p for machines with 32-bit words, on limbs of 29 bits.
//
// A product of two such limbs has 58 bits, so a column adds up in 64 bits without a carry: with
// ten limbs at most, 10 * 2^59 and what comes from the column below stay under 2^63. On ARM each
// product is then one umlal.
#ifndef ZOKECC_MINT_LIMBS_MODULUS_29_H
#define ZOKECC_MINT_LIMBS_MODULUS_29_H

#include "base/linkage.h"
#include "mint/limbs/barrett.h"
#include "mint/limbs/borrow_rule.h"

namespace zokecc {

constexpr unsigned kShortBits = 29;
constexpr uint32_t kShortMask = (1u << kShortBits) - 1;
constexpr unsigned short_limbs(unsigned words) { return (32 * words + kShortBits - 1) / kShortBits; }
constexpr unsigned kMaxShortLimbs = short_limbs(kMaxFastWords);

// p in the terms of reciprocal.h, with B = 2^29 and N = short_limbs(words).
struct ShortModulus {
    uint32_t words;
    uint32_t shift;                           // s, 2 to 31
    uint32_t modulus[kMaxShortLimbs];         // pn
    uint32_t reciprocal[kMaxShortLimbs + 1];  // M, below 2 B^(N+1): its top limb is below 2^30
    [[no_unique_address]] OpenQuotients open_quotients;

    // The shift has to stay within a word: p[count] may lack a few of its highest bits, no more.
    static bool fits(const uint32_t *p, uint32_t count)
    {
        return count >= 5 && count <= kMaxFastWords && shift_of(p, count) < 32;
    }
    static uint32_t shift_of(const uint32_t *p, uint32_t count)
    {
        return kShortBits * short_limbs(count) - 32 * count +
               static_cast<uint32_t>(std::countl_zero(p[count - 1]));
    }
    void prepare(const uint32_t *p, uint32_t count);
};

// 1 for a guard that leaves the quotient open with that many limbs, else 0.
inline uint32_t is_open_short(uint32_t guard, unsigned limbs)
{
    return (kShortMask - (limbs + 4) - guard) >> 31;
}

// out = a b mod p for a, b up to p, for any number of words; out may be a or b. False where the guard
// leaves the quotient open: see OpenQuotients for what is written then.
bool multiply_looped(const ShortModulus &p, const uint32_t *a, const uint32_t *b, uint32_t *out);

// The same unrolled for one number of words.
template <unsigned Words>
class ShortLimbs {
public:
    using Limb = uint32_t;
    static constexpr unsigned N = short_limbs(Words);
    static constexpr unsigned kElementLimbs = Words;

    static constexpr unsigned limbs() { return Words; }
    static bool fits(const uint32_t *p, uint32_t words)
    {
        return words == Words && ShortModulus::fits(p, words);
    }
    void prepare(const uint32_t *p, uint32_t words) { modulus_.prepare(p, words); }
    bool multiply(const Limb *a, const Limb *b, Limb *out) const { return multiply(modulus_, a, b, out); }
    OpenQuotients &open_quotients() { return modulus_.open_quotients; }

    static bool multiply(const ShortModulus &m, const Limb *a, const Limb *b, Limb *out)
    {
        Limb wide[Words + 1];
        Limb a_limbs[N];  // and the quotient, once they are multiplied
        Limb b_limbs[N];  // and the remainder
        Limb x[2 * N];
        shift_up(a, m.shift, wide);
        split<Words + 1>(wide, a_limbs);
        split<Words>(b, b_limbs);
        product(a_limbs, b_limbs, x);
        const uint32_t open = quotient(m, x + N - 1, a_limbs);
        if (m.open_quotients.give_up(open)) return false;
        remainder(m, x, a_limbs, b_limbs);
#pragma GCC unroll 10
        for (unsigned i = 0; i <= Words; ++i) wide[i] = word_from(b_limbs, 32 * i);
#pragma GCC unroll 9
        for (unsigned i = 0; i < Words; ++i) out[i] = wide[i] >> m.shift | wide[i + 1] << (32 - m.shift);
        return open == 0;
    }

private:
    // The limbs of x[count].
    template <unsigned count>
    static void split(const uint32_t *x, Limb *out)
    {
#pragma GCC unroll 10
        for (unsigned i = 0; i < N; ++i) {
            const unsigned word = kShortBits * i / 32;
            const unsigned bit = kShortBits * i % 32;
            Limb limb = word < count ? x[word] >> bit : 0;
            if (bit != 0 && word + 1 < count) limb |= x[word + 1] << (32 - bit);
            out[i] = limb & kShortMask;
        }
    }

    static void shift_up(const uint32_t *a, unsigned bits, uint32_t *out)
    {
        uint32_t below = 0;
#pragma GCC unroll 9
        for (unsigned i = 0; i < Words; ++i) {
            const uint32_t word = a[i];
            out[i] = word << bits | below;
            below = word >> (32 - bits);
        }
        out[Words] = below;
    }

    // x[2 N] = a[N] * b[N], a column after the other.
    template <unsigned k = 0>
    ZOKECC_INLINE static void product(const Limb *a, const Limb *b, Limb *x, uint64_t sum = 0)
    {
        constexpr unsigned first = k < N ? 0 : k - N + 1;
        constexpr unsigned last = k < N ? k : N - 1;
        sum = add_column<last - first + 1>(sum, a + first, b + (k - last));
        x[k] = static_cast<Limb>(sum) & kShortMask;
        sum >>= kShortBits;
        if constexpr (k + 2 < 2 * N)
            product<k + 1>(a, b, x, sum);
        else
            x[k + 1] = static_cast<Limb>(sum);
    }

    // From the top limbs of x. Returns is_open_short of its guard.
    template <unsigned k = N>
    ZOKECC_INLINE static uint32_t quotient(const ShortModulus &m, const Limb *top, Limb *q, uint64_t sum = 0,
                                           Limb guard = 0)
    {
        sum = add_column<2 * N - k + 1>(sum, top + (k - N), m.reciprocal + (k - N));
        if constexpr (k == N + 1) guard = static_cast<Limb>(sum) & kShortMask;
        if constexpr (k > N + 1) q[k - N - 2] = static_cast<Limb>(sum) & kShortMask;
        sum >>= kShortBits;
        if constexpr (k < 2 * N) {
            return quotient<k + 1>(m, top, q, sum, guard);
        } else {
            q[N - 1] = static_cast<Limb>(sum);
            return is_open_short(guard, N);
        }
    }

    // r[N] = x - q pn. Below pn, so the low limbs are all of it.
    template <unsigned k = 0>
    ZOKECC_INLINE static void remainder(const ShortModulus &m, const Limb *x, const Limb *q, Limb *r,
                                        uint64_t sum = 0, int32_t borrow = 0)
    {
        sum = add_column<k + 1>(sum, q, m.modulus);
        const int32_t difference =
            static_cast<int32_t>(x[k]) - static_cast<int32_t>(static_cast<Limb>(sum) & kShortMask) + borrow;
        r[k] = static_cast<Limb>(difference) & kShortMask;
        if constexpr (k + 1 < N) remainder<k + 1>(m, x, q, r, sum >> kShortBits, difference < 0 ? -1 : 0);
    }

    // 32 bits of r from bit position on, of two limbs: up to the ninth word they begin below bit 27.
    static uint32_t word_from(const Limb *r, unsigned position)
    {
        const unsigned limb = position / kShortBits;
        const unsigned bit = position % kShortBits;
        uint32_t out = limb < N ? r[limb] >> bit : 0;
        if (limb + 1 < N) out |= r[limb + 1] << (kShortBits - bit);
        return out;
    }

    ShortModulus modulus_;
};

// The width chosen when running: one body of everything that stands on it, whatever the width. The
// common widths are unrolled.
class AnyShortLimbs {
public:
    using Limb = uint32_t;
    static constexpr unsigned kElementLimbs = kMaxFastWords;

    unsigned limbs() const { return modulus_.words; }
    static bool fits(const uint32_t *p, uint32_t words) { return ShortModulus::fits(p, words); }
    void prepare(const uint32_t *p, uint32_t words) { modulus_.prepare(p, words); }
    bool multiply(const Limb *a, const Limb *b, Limb *out) const;
    OpenQuotients &open_quotients() { return modulus_.open_quotients; }

private:
    ShortModulus modulus_;
};

}  // namespace zokecc

#endif

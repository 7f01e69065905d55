// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Long division on limbs, multiplying by a reciprocal instead of dividing.
//
// The digits are those of Knuth's algorithm D; each is computed from the three highest limbs of the
// span and a reciprocal of the two highest limbs of the divisor: N. Moller and T. Granlund,
// "Improved division by invariant integers", IEEE Transactions on Computers 60 (2011), algorithms
// 4 and 6. Every result is exact.
#ifndef ZOKECC_MINT_LIMBS_DIVISION_H
#define ZOKECC_MINT_LIMBS_DIVISION_H

#include "base/linkage.h"
#include "mint/limbs/limb.h"
#include "mint/value.h"

namespace zokecc {

template <class L>
constexpr unsigned limbs_for(unsigned words)
{
    return (words + kWordsPerLimb<L> - 1) / kWordsPerLimb<L>;
}

// Leading zero bits of a nonzero limb; the % tells analysers that it is one.
template <class L>
inline unsigned leading_zeros(L limb)
{
    return static_cast<unsigned>(std::countl_zero(limb)) % kLimbBits<L>;
}

// Returns the limbs of x[count], padded with a zero word if needed: a copy in room, or x itself if limbs are
// words.
template <class L>
inline const L *as_limbs(const uint32_t *x, unsigned count, L *room)
{
    if constexpr (kWordsPerLimb<L> == 1) {
        return x;
    } else {
        if (count % kWordsPerLimb<L> != 0) room[count / kWordsPerLimb<L>] = 0;
        std::memcpy(room, x, 4 * count);
        return room;
    }
}

// floor((B^2 - 1) / d) - B for a d with its top bit set.
template <class L>
inline L reciprocal_limb(L d)
{
    return static_cast<L>(~Double<L>{0} / d - (Double<L>{1} << kLimbBits<L>));
}

// The same without a division, which small processors do in software: Newton's iteration for x = 2^63 / d,
// starting from 48/17 - 32/17 d, which is correct to four bits; the last units are added one by one.
inline uint32_t reciprocal_limb(uint32_t d)
{
    constexpr uint64_t kConstant = (uint64_t{48} << 31) / 17;
    constexpr uint64_t kSlope = (uint64_t{32} << 31) / 17;
    uint64_t x = kConstant - (d * kSlope >> 32);
    for (int bits = 4; bits < 32; bits *= 2) {
        const int64_t error = static_cast<int64_t>((uint64_t{1} << 63) - d * x) >> 32;
        x += static_cast<uint64_t>(static_cast<int64_t>(x) * error >> 31);
    }
    uint32_t v = static_cast<uint32_t>(2 * x);
    int64_t remainder = static_cast<int64_t>(~(x * 2 * d));  // 2^64 - 1 - (2^32 + v) d
    for (; remainder >= static_cast<int64_t>(d); remainder -= d) ++v;
    return v;
}

// Division by a two-limb divisor whose top bit is set.
template <class L>
class DigitFinder {
public:
    DigitFinder(L d1, L d0) : d1_(d1), d0_(d0)
    {
        // v = floor((B^3 - 1) / (d1 B + d0)) - B, from the reciprocal of d1 alone.
        L v = reciprocal_limb(d1);
        L p = static_cast<L>(d1 * v + d0);
        if (p < d0) {
            --v;
            if (p >= d1) {
                --v;
                p -= d1;
            }
            p -= d1;
        }
        const D t = D{v} * d0;
        const L t1 = static_cast<L>(t >> kLimbBits<L>);
        p += t1;
        if (p < t1) {
            --v;
            if (join(p, static_cast<L>(t)) >= join(d1, d0)) --v;
        }
        v_ = v;
    }

    // floor((u2 B^2 + u1 B + u0) / (d1 B + d0)), at most B - 1.
    L digit(L u2, L u1, L u0) const
    {
        const D divisor = join(d1_, d0_);
        if (join(u2, u1) >= divisor) return static_cast<L>(~L{0});
        D q = D{v_} * u2 + join(u2, u1);
        L q1 = static_cast<L>(q >> kLimbBits<L>);
        const L q0 = static_cast<L>(q);
        const L r1 = static_cast<L>(u1 - q1 * d1_);
        D r = join(r1, u0) - D{d0_} * q1 - divisor;
        ++q1;
        if (static_cast<L>(r >> kLimbBits<L>) >= q0) {
            --q1;
            r += divisor;
        }
        if (r >= divisor) ++q1;
        return q1;
    }

private:
    using D = Double<L>;
    static D join(L high, L low) { return D{high} << kLimbBits<L> | low; }

    L d1_, d0_, v_;
};

// True if the division holds its dividend as a complement and adds multiples of the divisor instead of
// subtracting them: fewer instructions with umaal, which multiplies and adds twice.
template <class Steps>
constexpr bool kComplementedDividend = (kArmUmaal && kIsNative<Steps>);

// Divides u[u_count + 1] by v[v_count], whose top bit is set; v_count is 2 or more. u's top limb holds the
// bits moved up when u was shifted by as many bits as v. Leaves the remainder, or its complement, in the
// lowest v_count limbs of u and the quotient in the u_count - v_count + 1 limbs above.
template <class Steps, bool complemented = kComplementedDividend<Steps>>
ZOKECC_ONE_COPY void divide_normalised(typename Steps::Limb *u, unsigned u_count,
                                       const typename Steps::Limb *v, unsigned v_count)
{
    using L = typename Steps::Limb;
    constexpr L kFlip = complemented ? static_cast<L>(~L{0}) : L{0};  // limb of u ^ kFlip = its value
    const DigitFinder<L> finder(v[v_count - 1], v[v_count - 2]);
    if constexpr (complemented) Steps::complement_limbs(u, u_count + 1, u);
    for (unsigned position = u_count - v_count + 1; position-- > 0;) {
        L *const span = u + position;
        const L top = span[v_count] ^ kFlip;
        L digit = finder.digit(top, span[v_count - 1] ^ kFlip, span[v_count - 2] ^ kFlip);
        const L taken = complemented ? Steps::mul_add_limbs(v, digit, v_count, span)
                                     : Steps::mul_sub_limbs(v, digit, v_count, span);
        if (top < taken) [[unlikely]] {  // one too large: it was found from the top limbs alone
            --digit;
            [[maybe_unused]] L ones;
            if constexpr (complemented)
                Steps::sub_limbs(span, v, v_count, span, ones);
            else
                Steps::add_limbs(span, v, v_count, span);
        }
        span[v_count] = digit;
    }
}

// remainder[count] = x 2^-bits, where x is what divide_normalised leaves, or not complemented.
template <class Steps, bool complemented = kComplementedDividend<Steps>>
inline void write_remainder(typename Steps::Limb *x, unsigned count, unsigned bits, uint32_t *remainder)
{
    using L = typename Steps::Limb;
    const unsigned n = limbs_for<L>(count);
    if constexpr (complemented && kWordsPerLimb<L> == 1) {
        Steps::complement_limbs(x, n, remainder);
        if (bits != 0) Steps::shift_limbs_down(remainder, n, bits);
        return;
    }
    if constexpr (complemented) Steps::complement_limbs(x, n, x);
    if (bits != 0) Steps::shift_limbs_down(x, n, bits);
    std::memcpy(remainder, x, 4 * count);
}

// Returns x[n] shifted up into room[n + 1], or x itself for 0 bits. room may be x.
template <class L>
inline const L *shifted_up(const L *x, unsigned n, unsigned bits, L *room)
{
    if (bits == 0) return x;
    shift_limbs_up(x, n, bits, room);
    return room;
}

// As divide_words, for a divisor longer than one limb.
template <class Steps>
ZOKECC_ONE_COPY void divide_limbs(const uint32_t *u, uint32_t u_count, const uint32_t *v, uint32_t v_count,
                                  uint32_t *quotient, uint32_t *remainder)
{
    using L = typename Steps::Limb;
    L dividend[limbs_for<L>(kProductWords) + 1];
    L divisor_room[limbs_for<L>(kMintWords) + 1];
    const unsigned u_limbs = limbs_for<L>(u_count);
    const unsigned v_limbs = limbs_for<L>(v_count);
    const L *divisor = as_limbs(v, v_count, divisor_room);
    const unsigned bits = leading_zeros(divisor[v_limbs - 1]);
    divisor = shifted_up(divisor, v_limbs, bits, divisor_room);
    shift_limbs_up(as_limbs(u, u_count, dividend), u_limbs, bits, dividend);
    divide_normalised<Steps>(dividend, u_limbs, divisor, v_limbs);
    if (quotient != nullptr) std::memcpy(quotient, dividend + v_limbs, 4 * (u_count - v_count + 1));
    write_remainder<Steps>(dividend, v_count, bits, remainder);
}

// out[x_limbs + y_limbs] = x[x_limbs] * y[y_limbs]
template <class Steps, class L>
ZOKECC_ONE_COPY void multiply_limbs(const L *x, unsigned x_limbs, const L *y, unsigned y_limbs, L *out)
{
    if (Steps::multiply_unrolled(x, x_limbs, y, y_limbs, out)) return;
    for (unsigned i = 0; i < x_limbs; ++i) out[i] = 0;
    for (; y_limbs > 0; --y_limbs) {
        out[x_limbs] = Steps::mul_add_limbs(x, *y++, x_limbs, out);
        ++out;
    }
}

// out[a_count + b_count] = a[a_count] * b[b_count], counts up to 19.
template <class Steps>
ZOKECC_ONE_COPY void multiply_words(const uint32_t *a, uint32_t a_count, const uint32_t *b, uint32_t b_count,
                                    uint32_t *out)
{
    using L = typename Steps::Limb;
    if constexpr (kWordsPerLimb<L> == 1) {
        multiply_limbs<Steps>(a, a_count, b, b_count, out);
    } else {
        constexpr unsigned kLimbs = limbs_for<L>(kMintWords);
        L x_room[kLimbs];
        L y_room[kLimbs];
        L product[2 * kLimbs];
        const L *x = as_limbs(a, a_count, x_room);
        const L *y = as_limbs(b, b_count, y_room);
        multiply_limbs<Steps>(x, limbs_for<L>(a_count), y, limbs_for<L>(b_count), product);
        std::memcpy(out, product, 4 * (a_count + b_count));
    }
}

// remainder[p_count] = a[a_count] * b[b_count] mod p[p_count]. The counts are 1 to 19, p's top word is
// not zero and p is longer than one limb.
template <class Steps>
ZOKECC_OWN_FRAME void multiply_and_divide(const uint32_t *a, uint32_t a_count, const uint32_t *b,
                                          uint32_t b_count, const uint32_t *p, uint32_t p_count,
                                          uint32_t *remainder)
{
    using L = typename Steps::Limb;
    constexpr unsigned kLimbs = limbs_for<L>(kMintWords);
    L divisor_room[kLimbs + 1];
    L x_room[kLimbs + 1];
    L y_room[kLimbs];
    L product[2 * kLimbs + 2];
    const unsigned p_limbs = limbs_for<L>(p_count);
    unsigned x_limbs = limbs_for<L>(a_count);
    const unsigned y_limbs = limbs_for<L>(b_count);
    const L *divisor = as_limbs(p, p_count, divisor_room);
    const L *x = as_limbs(a, a_count, x_room);
    const L *y = as_limbs(b, b_count, y_room);
    // Shifting one factor as far as the divisor shifts the product, too.
    const unsigned bits = leading_zeros(divisor[p_limbs - 1]);
    divisor = shifted_up(divisor, p_limbs, bits, divisor_room);
    x = shifted_up(x, x_limbs, bits, x_room);
    if (bits != 0 && x[x_limbs] != 0) ++x_limbs;

    multiply_limbs<Steps>(x, x_limbs, y, y_limbs, product);
    unsigned count = x_limbs + y_limbs;
    while (count > p_limbs && product[count - 1] == 0) --count;
    product[count] = 0;
    // The product of reduced factors is below p B^p_limbs, so its first digit is zero.
    if (count > p_limbs && is_below(product + count - p_limbs, divisor, p_limbs)) --count;
    if (count >= p_limbs) {
        divide_normalised<Steps>(product, count, divisor, p_limbs);
        write_remainder<Steps>(product, p_count, bits, remainder);
    } else {
        for (unsigned i = count; i < p_limbs; ++i) product[i] = 0;
        write_remainder<Steps, false>(product, p_count, bits, remainder);
    }
}

extern template void multiply_words<NativeSteps>(const uint32_t *, uint32_t, const uint32_t *, uint32_t,
                                                 uint32_t *);
extern template void divide_limbs<NativeSteps>(const uint32_t *, uint32_t, const uint32_t *, uint32_t,
                                               uint32_t *, uint32_t *);
extern template void multiply_and_divide<NativeSteps>(const uint32_t *, uint32_t, const uint32_t *, uint32_t,
                                                      const uint32_t *, uint32_t, uint32_t *);

}  // namespace zokecc

#endif

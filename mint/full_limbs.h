// Multiplication modulo p on 64-bit limbs, for machines with a 128-bit product.
#ifndef ZOKECC_MINT_FULL_LIMBS_H
#define ZOKECC_MINT_FULL_LIMBS_H

#include "mint/reciprocal.h"

#ifdef __SIZEOF_INT128__

namespace zokecc {

// p of N limbs, its top limb not zero; see reciprocal.h. Of M the limb above N + 1, which is 1
// (p is odd, so pn is above B^N / 2), is not stored.
template <unsigned Limbs, class Sum = NativeSum>
class FullLimbs {
public:
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
        reciprocal_words(p, words, 64 * (2 * N + 1) - shift_, padded, 2 * N + 2);
        std::memcpy(reciprocal_, padded, sizeof reciprocal_);
    }

    // out = a b mod p for a, b up to p; out may be a or b. False, with nothing written, where the
    // guard leaves the quotient open.
    bool multiply(const Limb *a, const Limb *b, Limb *out) const
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
        if (!quotient(x + N - 1, q)) return false;
        remainder(x, q, out);
        return true;
    }

private:
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

    // From the top limbs of x.
    bool quotient(const Limb *top, Limb *q) const
    {
        Sum sum;
        Limb guard = 0;
#pragma GCC unroll 6
        for (unsigned k = N; k <= 2 * N; ++k) {
#pragma GCC unroll 6
            for (unsigned i = k - N; i <= N; ++i) sum.add_product(top[i], reciprocal_[k - i]);
            if (k > N) sum.add(top[k - N - 1]);  // times the one above the reciprocal
            const Limb limb = sum.shift();
            if (k == N + 1) guard = limb;
            if (k > N + 1) q[k - N - 2] = limb;
        }
        q[N - 1] = sum.low + top[N];
        return guard < Limb{0} - (N + 4);
    }

    // (x - q pn) / 2^s. Below pn, so the low limbs are all of it.
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
        Limb ones;
        sub_limbs(x, r, N, r, ones);
        if (shift_ == 0) {
            std::memcpy(out, r, sizeof r);
            return;
        }
#pragma GCC unroll 5
        for (unsigned i = 0; i + 1 < N; ++i) out[i] = r[i] >> shift_ | r[i + 1] << (64 - shift_);
        out[N - 1] = r[N - 1] >> shift_;
    }

    // out = a 2^bits, 0 < bits < 64, nothing lost. out may be a.
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
    Limb reciprocal_[N + 1];  // M without its top limb
    unsigned shift_;          // s
};

}  // namespace zokecc

#endif
#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The modular inverse for odd moduli on limbs, with the same bits as the reference in mint/inverse.cpp.
//
// The result depends on every subtraction of the reference, because the kept borrow rule acts on the actual
// operands. So u and v take the same steps here, and each difference is tested for a word of all ones. The
// cofactors are only added and halved, and only their values modulo m matter in the end. They are held as a
// matrix F of single limbs times the last pair (X1, X2) that was written out:
//     x1 * 2^shift = F11 X1 + F12 X2,   x2 * 2^shift = F21 X1 + F22 X2   (mod m).
// Halving x1 doubles the second row, and vice versa. Each addition of one row to the other is followed by at
// least one halving, because the difference of two odd numbers is even; so by induction the entries of a row
// sum to at most 2^shift, or twice that between the addition and its halving. The matrix is applied before
// shift exceeds the bits of a limb minus two.
#ifndef ZOKECC_MINT_LIMBS_INVERSE_H
#define ZOKECC_MINT_LIMBS_INVERSE_H

#include "base/linkage.h"
#include "base/wipe.h"
#include "mint/limbs/borrow_rule.h"
#include "mint/limbs/inverse_steps.h"
#include "mint/limbs/limb.h"
#include "mint/limbs/trace.h"

namespace zokecc {

template <class Steps, class Trace>
class FastInverse {
public:
    using L = typename Steps::Limb;

    // m is odd and above 1, 0 < a < m; both have n limbs.
    FastInverse(const L *a, const L *m, unsigned n) : m_(m), n_(n), active_(n)
    {
        std::memcpy(u_.value, a, n * sizeof(L));
        std::memcpy(v_.value, m, n * sizeof(L));
        x1_[0][0] = 1;
        // Newton: m * m is 1 modulo 8, and each step doubles the number of correct bits.
        inverse_ = m[0];
        for (unsigned bits = 3; bits < kLimbBits<L>; bits *= 2) inverse_ *= 2 - m[0] * inverse_;
    }
    ~FastInverse() { wipe(this, sizeof *this); }
    FastInverse(const FastInverse &) = delete;
    FastInverse &operator=(const FastInverse &) = delete;

    // out[n] = what mint_EEA_algo leaves for a. False, with nothing written, if the cofactor is a multiple of
    // m: then the result depends on which multiple, and the caller must use the reference.
    ZOKECC_ONE_COPY bool run(L *out)
    {
        make_odd(u_, v_);
        if constexpr (kStepsInRegisters<Steps>) {
            while (step()) is_short();
        } else {
            while (!is_short())
                if (!step()) break;
            if (is_short()) finish_short();
        }
        apply();
        L ones;
        L result[kMaxFastLimbs<L>];
        const L *const x2 = x2_[now_];
        if (used_words_of(x2, n_) == 0) return false;
        Steps::sub_limbs(m_, x2, n_, result, ones);
        if (ones != 0) {
            Trace::last_difference();
            keep_equal_words(m_, x2, n_, result);
        }
        std::memcpy(out, result, n_ * sizeof(L));
        return true;
    }

private:
    using D = Double<L>;
    static constexpr unsigned kMaxShift = kLimbBits<L> - 2;
    static constexpr unsigned kRoom = (kMaxFastLimbs<L> + kLimbGroup<L> - 1) / kLimbGroup<L> * kLimbGroup<L>;

    // u with the row of x1, or v with that of x2. inverse_steps.h relies on the order of the members.
    struct Side {
        L f1, f2;
        L value[kRoom];
    };

    bool is_short()
    {
        while (active_ > 2 && (u_.value[active_ - 1] | v_.value[active_ - 1]) == 0) --active_;
        return active_ <= 2;
    }

    // active_ rounded up to whole groups: the extra limbs are zero and cost less than a partial group.
    unsigned grouped() const { return (active_ + kLimbGroup<L> - 1) / kLimbGroup<L> * kLimbGroup<L>; }

    // One subtraction of the reference's loop and the halvings after it. False once u is zero.
    bool step()
    {
        if constexpr (kStepsInRegisters<Steps>) {
            if (active_ <= 8) return many_steps(u_.value, v_.value);
        }
        const bool below = is_below(u_.value, v_.value, active_);
        Side &larger = below ? v_ : u_;
        Side &smaller = below ? u_ : v_;
        larger.f1 += smaller.f1;
        larger.f2 += smaller.f2;
        L ones;
        Steps::sub_limbs(larger.value, smaller.value, grouped(), larger.value, ones);
        return finish_step(larger, smaller, ones);
    }

    // Runs steps until one needs more than subtractions and halvings, and completes that one.
    template <class Word>
    bool many_steps(Word *u, Word *v)
    {
        Word room = kMaxShift - shift_;
        const Word *const difference =
            active_ <= 4 ? subtract_and_halve_4(u, v, &room) : subtract_and_halve_8(u, v, &room);
        const bool u_is_larger = difference == u;
        Side &larger = u_is_larger ? u_ : v_;
        Side &smaller = u_is_larger ? v_ : u_;
        shift_ = kMaxShift - room;
        L ones = 0;
        for (unsigned i = 0; i < active_; ++i) ones |= all_ones_mark(larger.value[i]);
        if (finish_step(larger, smaller, ones)) return true;
        if (!u_is_larger) {  // u equals v: the reference subtracts v from u, so undo v's new row
            v_.f1 -= u_.f1;
            v_.f2 -= u_.f2;
        }
        return false;
    }

    // The halvings after a subtraction. False for a difference of zero.
    bool finish_step(Side &larger, Side &smaller, L ones)
    {
        if (ones != 0) [[unlikely]] {
            Trace::difference_in_place();
            keep_in_place<Steps>(smaller.value, active_, larger.value);
        }
        if (larger.value[0] == 0 && used_words_of(larger.value, active_) == 0) return false;
        make_odd(larger, smaller);
        return true;
    }

    // The same steps until u is zero, for u and v of two limbs.
    void finish_short()
    {
        D u = join(u_.value);
        D v = join(v_.value);
        for (;;) {
            const bool below = u < v;
            Side &larger = below ? v_ : u_;
            Side &smaller = below ? u_ : v_;
            larger.f1 += smaller.f1;
            larger.f2 += smaller.f2;
            D d = below ? v - u : u - v;
            if ((all_ones_mark(static_cast<L>(d)) | all_ones_mark(static_cast<L>(d >> kLimbBits<L>))) != 0)
                [[unlikely]]
                d = kept_difference(below ? u : v, d);
            if (d == 0) return;
            while ((static_cast<L>(d) & 1) == 0) {
                const unsigned zeros = count_halvings(static_cast<L>(d), smaller);
                d >>= zeros;
            }
            if (below)
                v = d;
            else
                u = d;
        }
    }

    static D kept_difference(D smaller, D difference)
    {
        Trace::difference_in_place();
        L y[kMaxFastLimbs<L>] = {static_cast<L>(smaller), static_cast<L>(smaller >> kLimbBits<L>)};
        L x[2] = {static_cast<L>(difference), static_cast<L>(difference >> kLimbBits<L>)};
        keep_in_place<Steps>(y, 2, x);
        return join(x);
    }

    static D join(const L *x) { return D{x[1]} << kLimbBits<L> | x[0]; }

    // Halves a value other than zero until it is odd.
    void make_odd(Side &side, Side &other)
    {
        while ((side.value[0] & 1) == 0) {
            const unsigned zeros = count_halvings(side.value[0], other);
            if (zeros != 0) Steps::shift_limbs_down(side.value, grouped(), zeros);
        }
    }

    // Returns how often to halve a value with this even low limb before the next look at it: 0 to kMaxShift
    // times. Doubles the row of the other cofactor as often.
    unsigned count_halvings(L low, Side &other)
    {
        unsigned zeros = low != 0 ? static_cast<unsigned>(std::countr_zero(low)) : kMaxShift;
        if (shift_ + zeros > kMaxShift) {
            zeros = kMaxShift - shift_;
            if (zeros == 0) {
                apply();
                return 0;
            }
        }
        shift_ += zeros;
        other.f1 <<= zeros;
        other.f2 <<= zeros;
        return zeros;
    }

    // Writes the cofactors out and resets the matrix to the identity.
    void apply()
    {
        const unsigned next = 1 - now_;
        combine(u_, x1_[next]);
        combine(v_, x2_[next]);
        now_ = next;
        u_.f1 = v_.f2 = 1;
        u_.f2 = v_.f1 = 0;
        shift_ = 0;
    }

    // out = (f1 x1 + f2 x2) / 2^shift mod m. Adding q m clears the low bits. Both cofactors are below
    // m and the row sums to at most 2^(shift + 1), so the quotient is below 3 m, and a column of three
    // products and a carry stays within two limbs.
    ZOKECC_ONE_COPY void combine(const Side &row, L *out) const
    {
        const L *const x1 = x1_[now_];
        const L *const x2 = x2_[now_];
        const L f1 = row.f1;
        const L f2 = row.f2;
        const L low = f1 * x1[0] + f2 * x2[0];
        const L q = (0 - low * inverse_) & ((L{1} << shift_) - 1);
        const unsigned n = n_;
        const unsigned down = shift_;
        const unsigned up = kLimbBits<L> - 1 - down;  // plus one: down may be 0
        D sum = column(f1, x1[0], f2, x2[0], q, m_[0], 0);
        for (unsigned i = 1; i < n; ++i) {
            const L below = static_cast<L>(sum);
            sum = column(f1, x1[i], f2, x2[i], q, m_[i], static_cast<L>(sum >> kLimbBits<L>));
            *out++ = static_cast<L>(below >> down | static_cast<L>(sum) << 1 << up);
        }
        L above = static_cast<L>(sum >> kLimbBits<L>);
        *out = static_cast<L>(static_cast<L>(sum) >> down | above << 1 << up);
        out -= n - 1;
        above >>= down;
        L ones;
        while (above != 0 || !is_below(out, m_, n)) above -= Steps::sub_limbs(out, m_, n, out, ones);
    }

    static D column(L f1, L x1, L f2, L x2, L q, L m, L carry)
    {
        return Steps::multiply_add(Steps::multiply_add(Steps::multiply_add(D{carry}, f1, x1), f2, x2), q, m);
    }

    const L *m_;
    unsigned n_;
    unsigned active_;     // limbs of u and v that may be nonzero; at least two
    unsigned shift_ = 0;  // halvings since the last apply()
    L inverse_;           // of m modulo the limb
    Side u_ = {1, 0, {}};
    Side v_ = {0, 1, {}};
    unsigned now_ = 0;  // which of the two buffers of each cofactor is current
    L x1_[2][kMaxFastLimbs<L>] = {};
    L x2_[2][kMaxFastLimbs<L>] = {};
};

extern template class FastInverse<NativeSteps, NoTrace>;

}  // namespace zokecc

#endif

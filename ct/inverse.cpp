// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Division steps after D. J. Bernstein and B.-Y. Yang, "Fast constant-time gcd computation and modular
// inversion" (2019), with the start and the number of steps of P. Wuille, "Bounds on divsteps iterations in
// safegcd" (2021).
//
// f and g begin as m and a, delta as 1/2, and a step replaces (delta, f, g) by
//     (1 - delta, g, (g - f) / 2)    for delta > 0 and an odd g,
//     (1 + delta, f, (g + f) / 2)    for delta <= 0 and an odd g,
//     (1 + delta, f, g / 2)          for an even g.
// After (45907 bits + 26313) / 19929 steps g is 0 and f is the greatest common divisor or its negative.
// Thirty steps depend only on the lowest thirty bits of f and g; their effect on the whole of f and g, and on
// the cofactors d and e with f = d a and g = e a (mod m), is a matrix with entries up to 2^30. Numbers are
// signed, in limbs of 30 bits; the top limb carries the sign.
#include "ct/inverse.h"

#include "base/linkage.h"
#include "base/wipe.h"

namespace zokecc {

namespace {

constexpr unsigned kBits = 30;
constexpr uint32_t kLimbMask = (1u << kBits) - 1;
constexpr unsigned kMaxLimbs = (32 * kMaxSecretWords + 2 + kBits - 1) / kBits;

struct Signed {
    int32_t limb[kMaxLimbs];
};

// The effect of thirty steps, times 2^30: f' = (u f + v g) / 2^30, g' = (q f + r g) / 2^30.
struct Matrix {
    int32_t u, v, q, r;
};

// The state of one inversion, in one structure so that it can be wiped as a whole.
struct State {
    Signed f, g, d, e, m;
    Matrix steps;
    int32_t delta;     // plus one half
    uint32_t inverse;  // of m modulo 2^30
    unsigned limbs;
};

unsigned limbs_of(unsigned words) { return (32 * words + 2 + kBits - 1) / kBits; }

// Batches of thirty steps for numbers of 32 * words bits.
unsigned batches_of(unsigned words) { return ((45907 * 32 * words + 26313) / 19929 + kBits - 1) / kBits; }

ZOKECC_ONE_COPY void load(const uint32_t *words, unsigned count, unsigned limbs, Signed &out)
{
    for (unsigned i = 0; i < limbs; ++i) {
        const unsigned word = kBits * i / 32;
        const unsigned bit = kBits * i % 32;
        uint64_t pair = word < count ? words[word] : 0;
        if (word + 1 < count) pair |= uint64_t{words[word + 1]} << 32;
        out.limb[i] = static_cast<int32_t>(static_cast<uint32_t>(pair >> bit) & kLimbMask);
    }
}

void store(const Signed &in, unsigned count, unsigned limbs, uint32_t *out)
{
    for (unsigned i = 0; i < count; ++i) {
        const unsigned limb = 32 * i / kBits;
        const unsigned bit = 32 * i % kBits;
        uint64_t pair = static_cast<uint32_t>(in.limb[limb]);
        if (limb + 1 < limbs) pair |= uint64_t{static_cast<uint32_t>(in.limb[limb + 1])} << kBits;
        out[i] = static_cast<uint32_t>(pair >> bit);  // a shift by 2 i bits, at most 28
    }
}

// All ones for a negative number.
uint32_t sign_mask(int32_t x) { return opaque(static_cast<uint32_t>(x >> 31)); }

// Thirty steps on the lowest bits.
void step_batch(State &s)
{
    uint32_t f = static_cast<uint32_t>(s.f.limb[0]) | static_cast<uint32_t>(s.f.limb[1]) << kBits;
    uint32_t g = static_cast<uint32_t>(s.g.limb[0]) | static_cast<uint32_t>(s.g.limb[1]) << kBits;
    uint32_t u = 1;
    uint32_t v = 0;
    uint32_t q = 0;
    uint32_t r = 1;
    uint32_t delta = static_cast<uint32_t>(s.delta);
    for (unsigned i = 0; i < kBits; ++i) {
        const uint32_t odd = 0 - opaque(g & 1);
        const uint32_t swap = odd & ~sign_mask(static_cast<int32_t>(delta - 1));
        g += ((f ^ swap) - swap) & odd;  // g - f or g + f
        q += ((u ^ swap) - swap) & odd;
        r += ((v ^ swap) - swap) & odd;
        f += g & swap;  // now the old g
        u += q & swap;
        v += r & swap;
        delta = (delta ^ swap) - 2 * swap + 1;
        g >>= 1;
        u <<= 1;
        v <<= 1;
    }
    s.delta = static_cast<int32_t>(delta);
    s.steps = {static_cast<int32_t>(u), static_cast<int32_t>(v), static_cast<int32_t>(q),
               static_cast<int32_t>(r)};
}

int32_t take_limb(int64_t &sum)
{
    const int32_t limb = static_cast<int32_t>(static_cast<uint32_t>(sum) & kLimbMask);
    sum >>= kBits;
    return limb;
}

// Applies the matrix to f and g; the low thirty bits of both sums are zero.
void update_values(State &s)
{
    const Matrix t = s.steps;
    int64_t sum_f = 0;
    int64_t sum_g = 0;
    for (unsigned i = 0; i < s.limbs; ++i) {
        const int64_t f = s.f.limb[i];
        const int64_t g = s.g.limb[i];
        sum_f += t.u * f + t.v * g;
        sum_g += t.q * f + t.r * g;
        const int32_t low_f = take_limb(sum_f);
        const int32_t low_g = take_limb(sum_g);
        if (i == 0) continue;
        s.f.limb[i - 1] = low_f;
        s.g.limb[i - 1] = low_g;
    }
    s.f.limb[s.limbs - 1] = static_cast<int32_t>(sum_f);
    s.g.limb[s.limbs - 1] = static_cast<int32_t>(sum_g);
}

// The multiple of m that clears the low thirty bits of a row of the matrix times (d, e). Both d and e lie
// between -2 m and m; a negative one has m added first, so the result stays in that range.
int32_t multiple_of_m(const State &s, int32_t of_d, int32_t of_e)
{
    const uint32_t last = s.limbs - 1;
    const int32_t start = static_cast<int32_t>((static_cast<uint32_t>(of_d) & sign_mask(s.d.limb[last])) +
                                               (static_cast<uint32_t>(of_e) & sign_mask(s.e.limb[last])));
    const uint32_t low = static_cast<uint32_t>(of_d) * static_cast<uint32_t>(s.d.limb[0]) +
                         static_cast<uint32_t>(of_e) * static_cast<uint32_t>(s.e.limb[0]);
    return start - static_cast<int32_t>((s.inverse * low + static_cast<uint32_t>(start)) & kLimbMask);
}

// Applies the matrix to d and e, then divides by 2^30 modulo m.
void update_cofactors(State &s)
{
    const Matrix t = s.steps;
    const int64_t of_d = multiple_of_m(s, t.u, t.v);
    const int64_t of_e = multiple_of_m(s, t.q, t.r);
    int64_t sum_d = 0;
    int64_t sum_e = 0;
    for (unsigned i = 0; i < s.limbs; ++i) {
        const int64_t d = s.d.limb[i];
        const int64_t e = s.e.limb[i];
        const int64_t m = s.m.limb[i];
        sum_d += t.u * d + t.v * e + of_d * m;
        sum_e += t.q * d + t.r * e + of_e * m;
        const int32_t low_d = take_limb(sum_d);
        const int32_t low_e = take_limb(sum_e);
        if (i == 0) continue;
        s.d.limb[i - 1] = low_d;
        s.e.limb[i - 1] = low_e;
    }
    s.d.limb[s.limbs - 1] = static_cast<int32_t>(sum_d);
    s.e.limb[s.limbs - 1] = static_cast<int32_t>(sum_e);
}

// x += m where add is all ones; then x = -x where negate is all ones.
ZOKECC_ONE_COPY void adjust(Signed &x, const Signed &m, uint32_t add, uint32_t negate, unsigned limbs)
{
    int64_t sum = 0;
    for (unsigned i = 0; i < limbs; ++i) {
        const int32_t limb = x.limb[i] + static_cast<int32_t>(static_cast<uint32_t>(m.limb[i]) & add);
        sum += static_cast<int32_t>((static_cast<uint32_t>(limb) ^ negate) - negate);
        if (i + 1 < limbs)
            x.limb[i] = take_limb(sum);
        else
            x.limb[i] = static_cast<int32_t>(sum);
    }
}

// All ones if f, negated where negative is all ones, is 1.
Mask is_unit(const State &s, uint32_t negative)
{
    Signed f = s.f;
    adjust(f, s.m, 0, negative, s.limbs);
    uint32_t difference = static_cast<uint32_t>(f.limb[0]) ^ 1;
    for (unsigned i = 1; i < s.limbs; ++i) difference |= static_cast<uint32_t>(f.limb[i]);
    return mask_of_zero(difference);
}

}  // namespace

Mask invert_secret(const uint32_t *a, const uint32_t *m, unsigned words, uint32_t *out)
{
    Wiping<State> state;
    State &s = *state;
    s.limbs = limbs_of(words);
    load(m, words, s.limbs, s.m);
    load(a, words, s.limbs, s.g);
    s.f = s.m;
    s.e.limb[0] = 1;
    s.delta = 1;
    s.inverse = m[0];  // correct to three bits; each round doubles that
    for (unsigned bits = 3; bits < kBits; bits *= 2) s.inverse *= 2 - m[0] * s.inverse;
    const unsigned batches = batches_of(words);
    for (unsigned i = 0; i < batches; ++i) {
        step_batch(s);
        update_values(s);
        update_cofactors(s);
    }
    const unsigned last = s.limbs - 1;
    const uint32_t negative = sign_mask(s.f.limb[last]);
    adjust(s.d, s.m, sign_mask(s.d.limb[last]), negative, s.limbs);
    adjust(s.d, s.m, sign_mask(s.d.limb[last]), 0, s.limbs);
    store(s.d, words, s.limbs, out);
    return is_unit(s, negative);
}

}  // namespace zokecc

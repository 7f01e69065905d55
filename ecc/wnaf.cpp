// Multiples of any point: signed digits in a sliding window, and a table of odd multiples.
#include <zokecc/ecc.h>

#include "ecc/exact_field.h"
#include "ecc/point_formulas.h"
#include "mint/value.h"
#include "mint/wipe.h"
#include "mint/work_buffer.h"

namespace {

using zokecc::ExactField;
using zokecc::Wiping;

// 608 bits are the most a scalar has, so the width is 4 at most and the odd multiples are eight.
constexpr uint32_t kMaxWidth = 4;
constexpr uint32_t kMaxOddMultiples = 1u << (kMaxWidth - 1);

uint32_t window_width(int32_t bits)
{
    if (bits >= 300) return 4;
    if (bits >= 70) return 3;
    if (bits >= 20) return 2;
    return 1;
}

// Digits, least significant first, each zero or odd and below 2^width in size, with
// k = sum of digit[j] 2^j. Room for bits + 1 of them. Returns how many, or -1.
int32_t recode(const mint &k, int32_t bits, uint32_t width, int8_t *digits)
{
    const int32_t bit = 1 << width;
    const int32_t next = 2 * bit;
    const int32_t mask = next - 1;
    int32_t window = static_cast<int32_t>(zokecc::low_word(k)) & mask;
    int32_t j = 0;
    while (window != 0 || j + static_cast<int32_t>(width) + 1 < bits) {
        int32_t digit = 0;
        if ((window & 1) != 0) {
            digit = window;
            if ((window & bit) != 0) {
                // Near the top a negative digit would only lengthen the number.
                const bool near_top = j + static_cast<int32_t>(width) + 1 >= bits;
                digit = near_top ? window & (mask >> 1) : window - next;
            }
            window -= digit;
        }
        if (j > bits) return -1;
        digits[j++] = static_cast<int8_t>(digit);
        window = (window >> 1) + bit * mint_bit_set(&k, j + static_cast<int32_t>(width));
    }
    return j;
}

// out[i] = (2 i + 1) P
void odd_multiples(const ExactField &f, const ecc_point &P, const mint &a, uint32_t count, ecc_jac_point *out)
{
    zokecc::affine_to_jacobian<ExactField>(P, out[0]);
    Wiping<ecc_jac_point> twice;
    zokecc::jacobian_double(f, out[0], a, *twice);
    for (uint32_t i = 1; i < count; ++i) zokecc::jacobian_add(f, out[i - 1], *twice, a, out[i]);
}

// R = sum of digits[j] 2^j P, from the highest digit down. R is held negated where that saves a
// negation: an addition of a negative digit to R is one of a positive digit to -R.
void evaluate(const ExactField &f, const mint &a, const int8_t *digits, int32_t count,
              const ecc_jac_point *odd, ecc_jac_point &R)
{
    bool at_infinity = true;
    bool inverted = false;
    for (int32_t j = count - 1; j >= 0; --j) {
        if (!at_infinity) zokecc::jacobian_double(f, R, a, R);
        const int32_t digit = digits[j];
        if (digit == 0) continue;
        if ((digit < 0) != inverted) {
            if (!at_infinity) ecc_invert_point(&f.p, &R);
            inverted = !inverted;
        }
        const ecc_jac_point &multiple = odd[(digit < 0 ? -digit : digit) >> 1];
        if (at_infinity)
            zokecc::copy_jacobian<ExactField>(multiple, R);
        else
            zokecc::jacobian_add(f, multiple, R, a, R);
        at_infinity = false;
    }
    if (at_infinity)
        ecc_infinite_point(&R);
    else if (inverted)
        ecc_invert_point(&f.p, &R);
}

}  // namespace

// KEPT: the digit buffer stays allocated. Deployed systems account for it as part of this call's
// footprint. It is cleared, so no digit of the scalar stays behind. Held by
// EccUnknownPointMul.KeptDigitBufferStaysAllocated.
int32_t ecc_unknown_point_mul(const mint *k, const ecc_point *P, const mint *a, const mint *, const mint *p,
                              ecc_point *out)
{
    const bool k_is_zero = zokecc::is_zero(*k);
    const ecc_point base = *P;
    if (k_is_zero || base.infinity == zokecc::kInfinity) zokecc::set_affine_infinity<ExactField>(*out);

    const int32_t bits = k_is_zero ? 0 : get_mint_bit_len(k);
    const uint32_t width = window_width(bits);
    zokecc::WorkBuffer buffer(static_cast<uint32_t>(bits) + 1);
    if (!buffer) return -1;
    int8_t *const digits = reinterpret_cast<int8_t *>(buffer.data());
    const int32_t count = k_is_zero ? 1 : recode(*k, bits, width, digits);

    if (count >= 0) {
        const ExactField f{*p};
        Wiping<ecc_jac_point[kMaxOddMultiples]> odd;
        Wiping<ecc_jac_point> R;
        odd_multiples(f, base, *a, 1u << (width - 1), *odd);
        evaluate(f, *a, digits, count, *odd, *R);
        zokecc::jacobian_to_affine(f, *R, *out);
    }
    buffer.release();
    return count >= 0 ? 1 : -1;
}

// Multiples of any point: signed digits in a sliding window, and a table of odd multiples.
#include "ecc/wnaf.h"

#include <zokecc/ecc.h>

#include "base/work_buffer.h"
#include "ecc/points.h"
#include "mint/value.h"

namespace {

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

}  // namespace

// KEPT: the digit buffer stays allocated. Deployed systems account for it as part of this call's
// footprint. It is cleared, so no digit of the scalar stays behind. The hardened build frees it. Held by
// EccUnknownPointMul.KeptDigitBufferStaysAllocated.
int32_t ecc_unknown_point_mul(const mint *k, const ecc_point *P, const mint *a, const mint *, const mint *p,
                              ecc_point *out)
{
    const bool k_is_zero = zokecc::is_zero(*k);
    // Where out is P, P is infinity from here on, and so is its every multiple.
    if (k_is_zero || P->infinity == zokecc::kInfinity) zokecc::set_infinity(*out);

    const int32_t bits = k_is_zero ? 0 : get_mint_bit_len(k);
    const uint32_t width = window_width(bits);
    zokecc::WorkBuffer buffer(static_cast<uint32_t>(bits) + 1);
    if (!buffer) return -1;
    int8_t *const digit = reinterpret_cast<int8_t *>(buffer.data());
    const int32_t count = k_is_zero ? 1 : recode(*k, bits, width, digit);

    if (count >= 0) {
        const zokecc::WindowDigits digits{digit, count, width};
        zokecc::run_over_best_field(*p, zokecc::WindowMultiple{digits, *P, *a, *out});
    }
    if constexpr (!zokecc::kHardened) buffer.release();
    return count >= 0 ? 1 : -1;
}

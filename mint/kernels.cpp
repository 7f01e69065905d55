// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The word kernels under their exported names.
#include <zokecc/mint.h>

#include <cstring>

#include "mint/value.h"
#include "mint/words.h"

using namespace zokecc;

namespace {

// Copies an operand that is also the output array. Returns where to read it.
const uint32_t *apart_from(const uint32_t *out, const uint32_t *operand, int32_t count, uint32_t *copy)
{
    if (operand != out || count < 1 || count > static_cast<int32_t>(kProductWords)) return operand;
    std::memcpy(copy, operand, 4u * static_cast<uint32_t>(count));
    return copy;
}

}  // namespace

uint32_t add_2(const uint32_t *x, const uint32_t *y, int32_t count, uint32_t *out)
{
    return add_words(x, y, count, out);
}

uint32_t sub_2(const uint32_t *x, const uint32_t *y, int32_t count, uint32_t *out)
{
    return sub_words(x, y, count, out);
}

uint32_t mint_mul_4(uint32_t *out, const uint32_t *x, uint32_t w, int32_t count)
{
    return mul_word(x, w, count, out);
}

uint32_t mint_mul_3(uint32_t *accumulator, const uint32_t *x, uint32_t w, int32_t count)
{
    return mul_add_word(x, w, count, accumulator);
}

void mul_2(const uint32_t *a, int32_t a_count, const uint32_t *b, int32_t b_count, uint32_t *out)
{
    uint32_t copy_of_a[kProductWords];
    uint32_t copy_of_b[kProductWords];
    a = apart_from(out, a, a_count, copy_of_a);
    b = apart_from(out, b, b_count, copy_of_b);

    const bool a_is_row = a_count >= b_count;
    const uint32_t *row = a_is_row ? a : b;
    const uint32_t *multiplier = a_is_row ? b : a;
    const int32_t row_count = a_is_row ? a_count : b_count;
    const int32_t multiplier_count = a_is_row ? b_count : a_count;

    if (multiplier_count < 1) {
        mul_word(row, 0, row_count, out);
        return;
    }
    // The word above a row is new in each round, so the carry is stored, not added.
    out[row_count] = mul_word(row, multiplier[0], row_count, out);
    for (int32_t j = 1; j < multiplier_count; ++j)
        out[j + row_count] = mul_add_word(row, multiplier[j], row_count, out + j);
}

uint64_t div_2(uint32_t high, uint32_t low, uint32_t divisor)
{
    return (uint64_t{high} << 32 | low) / divisor;
}

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Long division on word arrays.
#ifndef ZOKECC_MINT_DIVIDE_H
#define ZOKECC_MINT_DIVIDE_H

#include <cstdint>

#include "mint/value.h"

namespace zokecc {

// quotient[u_count - v_count + 1] = floor(u[u_count] / v[v_count]), remainder[v_count] = u mod v.
// v's top word is not zero, v_count <= u_count <= 38 and v_count <= 19. quotient may be null but
// not u or v. remainder may be u or v.
void divide_words(const uint32_t *u, uint32_t u_count, const uint32_t *v, uint32_t v_count,
                  uint32_t *quotient, uint32_t *remainder);

// The same, on limbs and with a reciprocal if the divisor has at least two limbs.
void divide_quickly(const uint32_t *u, uint32_t u_count, const uint32_t *v, uint32_t v_count,
                    uint32_t *quotient, uint32_t *remainder);

}  // namespace zokecc

#endif

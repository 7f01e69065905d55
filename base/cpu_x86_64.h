// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Instruction sets that not every x86-64 processor has.
#ifndef ZOKECC_BASE_CPU_X86_64_H
#define ZOKECC_BASE_CPU_X86_64_H

namespace zokecc {

// The SHA-256 instructions, with SSSE3 and SSE4.1.
bool has_sha_instructions();

// AVX, BMI1 and BMI2.
bool has_vector_instructions();

// The above and AVX-512 on 128-bit vectors, with vector rotations and three-input logic.
bool has_rotating_vectors();

// BMI2 and ADX: multiplications that leave the flags alone, and two independent carry chains.
bool has_row_instructions();

}  // namespace zokecc

#endif

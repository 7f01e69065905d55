// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Which instructions an x86-64 processor has, of those that not all have.
#ifndef ZOKECC_BASE_CPU_X86_64_H
#define ZOKECC_BASE_CPU_X86_64_H

namespace zokecc {

// Those for SHA-256, with SSSE3 and SSE4.1.
bool has_sha_instructions();

// AVX and rotations to another register, BMI2.
bool has_vector_instructions();

// These, and AVX-512 on 128 bits, with rotations of vectors and sums of three.
bool has_rotating_vectors();

// Products and sums that leave carries alone, BMI2 and ADX.
bool has_row_instructions();

}  // namespace zokecc

#endif

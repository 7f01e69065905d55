// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Detects the instruction sets with CPUID.
#include "base/cpu_x86_64.h"

#include <cpuid.h>

#include <cstdint>

namespace zokecc {

namespace {

enum Answer : uint32_t { kAsked = 1, kSha = 2, kVectors = 4, kRows = 8, kRotating = 16 };

constexpr uint32_t kSavesAvx = 0x06;     // XCR0: the 128-bit and the 256-bit registers
constexpr uint32_t kSavesAvx512 = 0xE6;  // also the mask and the 512-bit registers

// XCR0: the registers that the operating system saves.
uint32_t saved_registers()
{
    uint32_t low;
    uint32_t high;
    __asm__("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    return low;
}

// CPUID leaf 1, ECX bits 9, 19, 27 and 28 for SSSE3, SSE4.1, XGETBV and AVX; leaf 7, EBX bits 3, 8,
// 16, 19, 29 and 31 for BMI1, BMI2, AVX-512, ADX, SHA and AVX-512 on shorter registers.
uint32_t ask_processor()
{
    unsigned eax = 0;
    unsigned ebx = 0;
    unsigned ecx = 0;
    unsigned edx = 0;
    if (__get_cpuid(1, &eax, &ebx, &ecx, &edx) == 0) return kAsked;
    const bool sse = (ecx & 1u << 9) != 0 && (ecx & 1u << 19) != 0;
    const uint32_t saved = (ecx & 1u << 27) != 0 && (ecx & 1u << 28) != 0 ? saved_registers() : 0;
    const bool avx = (saved & kSavesAvx) == kSavesAvx;
    if (__get_cpuid_count(7, 0, &eax, &ebx, &ecx, &edx) == 0) return kAsked;
    const bool sha = (ebx & 1u << 29) != 0;
    const bool bmi1 = (ebx & 1u << 3) != 0;
    const bool bmi2 = (ebx & 1u << 8) != 0;
    const bool adx = (ebx & 1u << 19) != 0;
    const bool vectors = avx && bmi1 && bmi2;
    const bool rotating = (saved & kSavesAvx512) == kSavesAvx512 && (ebx & 1u << 16) != 0 && ebx >> 31 != 0;
    return kAsked | (sse && sha ? kSha : 0u) | (vectors ? kVectors : 0u) |
           (vectors && rotating ? kRotating : 0u) | (bmi2 && adx ? kRows : 0u);
}

// Queried once, because CPUID is slow in virtual machines. Threads that get here at the same time all query
// it and get the same answer.
uint32_t known_answer()
{
    static uint32_t answer = 0;
    uint32_t known = __atomic_load_n(&answer, __ATOMIC_RELAXED);
    if (known == 0) {
        known = ask_processor();
        __atomic_store_n(&answer, known, __ATOMIC_RELAXED);
    }
    return known;
}

}  // namespace

bool has_sha_instructions() { return (known_answer() & kSha) != 0; }

bool has_vector_instructions() { return (known_answer() & kVectors) != 0; }

bool has_rotating_vectors() { return (known_answer() & kRotating) != 0; }

bool has_row_instructions() { return (known_answer() & kRows) != 0; }

}  // namespace zokecc

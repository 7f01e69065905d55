// What CPUID tells about instructions for hashes.
#include "hash/processor_x86.h"

#if ZOKECC_SHA_INSTRUCTIONS

#include <cpuid.h>

#include <cstdint>

namespace zokecc {

namespace {

enum Answer : uint32_t { kAsked = 1, kSha = 2, kVectors = 4 };

// True if the operating system saves the 128-bit and the 256-bit registers.
bool saves_vectors()
{
    uint32_t low;
    uint32_t high;
    __asm__("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    return (low & 6) == 6;
}

// CPUID leaf 1, ECX bits 9, 19, 27 and 28 for SSSE3, SSE4.1, XGETBV and AVX; leaf 7, EBX bits 3, 8
// and 29 for BMI1, BMI2 and SHA.
uint32_t ask_processor()
{
    unsigned eax = 0;
    unsigned ebx = 0;
    unsigned ecx = 0;
    unsigned edx = 0;
    if (__get_cpuid(1, &eax, &ebx, &ecx, &edx) == 0) return kAsked;
    const bool sse = (ecx & 1u << 9) != 0 && (ecx & 1u << 19) != 0;
    const bool avx = (ecx & 1u << 27) != 0 && (ecx & 1u << 28) != 0 && saves_vectors();
    if (__get_cpuid_count(7, 0, &eax, &ebx, &ecx, &edx) == 0) return kAsked;
    const bool sha = (ebx & 1u << 29) != 0;
    const bool bmi = (ebx & 1u << 3) != 0 && (ebx & 1u << 8) != 0;
    return kAsked | (sse && sha ? kSha : 0u) | (avx && bmi ? kVectors : 0u);
}

// Asked once: under virtual machines the question is slow. Whoever comes at the same time asks
// as well and gets the same answer.
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

}  // namespace zokecc

#endif

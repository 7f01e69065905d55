// Which instructions for hashes an x86-64 processor has, beyond those that all have.
#ifndef ZOKECC_HASH_PROCESSOR_X86_H
#define ZOKECC_HASH_PROCESSOR_X86_H

// ZOKECC_NO_SHA_INSTRUCTIONS leaves them out.
#if defined(__x86_64__) && !defined(ZOKECC_NO_SHA_INSTRUCTIONS)
#define ZOKECC_SHA_INSTRUCTIONS 1
#else
#define ZOKECC_SHA_INSTRUCTIONS 0
#endif

#if ZOKECC_SHA_INSTRUCTIONS

namespace zokecc {

// Those for SHA-256, with SSSE3 and SSE4.1.
bool has_sha_instructions();

// AVX and rotations to another register, BMI2.
bool has_vector_instructions();

}  // namespace zokecc

#endif
#endif

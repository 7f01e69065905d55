// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Marks where control flow may depend on a secret because the outcome becomes public anyway, as a status or a
// length.
#ifndef ZOKECC_BASE_DECLASSIFY_H
#define ZOKECC_BASE_DECLASSIFY_H

#include <cstddef>

// For builds in which valgrind's memcheck or clang's memory sanitizer looks for branches and addresses that
// depend on secrets.
#ifdef __has_feature
#if __has_feature(memory_sanitizer)
#define ZOKECC_MEMORY_SANITIZER
#endif
#endif
#if defined(ZOKECC_MEMORY_SANITIZER)
#include <sanitizer/msan_interface.h>
#elif defined(ZOKECC_MEMCHECK)
#include <valgrind/memcheck.h>
#endif

namespace zokecc {

// The sanitizer treats every input of inline assembly as a use that must be initialised: such lines are left
// out.
#ifdef ZOKECC_MEMORY_SANITIZER
constexpr bool kMemorySanitizer = true;
#else
constexpr bool kMemorySanitizer = false;
#endif

// The bytes are public from here on. Does nothing outside test builds.
inline void declassify([[maybe_unused]] void *bytes, [[maybe_unused]] size_t size)
{
#if defined(ZOKECC_MEMORY_SANITIZER)
    __msan_unpoison(bytes, size);
#elif defined(ZOKECC_MEMCHECK)
    VALGRIND_MAKE_MEM_DEFINED(bytes, size);
#endif
}

// The same for the result of a comparison.
inline bool declassify(bool outcome)
{
    declassify(&outcome, sizeof outcome);
    return outcome;
}

}  // namespace zokecc

#endif

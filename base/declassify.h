// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Marks where control flow may depend on a secret, because the outcome is public anyway, as a status or a
// length.
#ifndef ZOKECC_BASE_DECLASSIFY_H
#define ZOKECC_BASE_DECLASSIFY_H

#include <cstddef>

// For builds in which valgrind's memcheck looks for jumps and addresses that depend on secrets.
#ifdef ZOKECC_MEMCHECK
#include <valgrind/memcheck.h>
#endif

namespace zokecc {

// These bytes are public from here on. Does nothing outside of test builds.
inline void declassify([[maybe_unused]] void *bytes, [[maybe_unused]] size_t size)
{
#ifdef ZOKECC_MEMCHECK
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

// Where a secret may decide about a jump: what it decides there is told to the outside anyhow, by a status
// or a length.
#ifndef ZOKECC_BASE_DECLASSIFY_H
#define ZOKECC_BASE_DECLASSIFY_H

#include <cstddef>

// The tests that look for jumps and addresses which depend on secrets define this as a function of theirs.
#ifdef ZOKECC_DECLASSIFY
extern "C" void ZOKECC_DECLASSIFY(void *bytes, size_t size);
#endif

namespace zokecc {

// From here on these bytes are no secret. Nothing outside of test builds.
inline void declassify([[maybe_unused]] void *bytes, [[maybe_unused]] size_t size)
{
#ifdef ZOKECC_DECLASSIFY
    ZOKECC_DECLASSIFY(bytes, size);
#endif
}

// The same for the outcome of a test.
inline bool declassify(bool outcome)
{
    declassify(&outcome, sizeof outcome);
    return outcome;
}

}  // namespace zokecc

#endif

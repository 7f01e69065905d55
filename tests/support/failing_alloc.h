// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Makes the k-th allocation of the code under test fail, and counts what is never freed.
//
// The test programs are linked with --wrap=malloc, --wrap=calloc and --wrap=free, which
// reaches the library and the C parts of the tests but not operator new.
#ifndef ZOKECC_TESTS_SUPPORT_FAILING_ALLOC_H
#define ZOKECC_TESTS_SUPPORT_FAILING_ALLOC_H

#include <cstddef>
#include <cstdint>

namespace zokecc_test {

#ifdef ZOKECC_HARDENED
inline constexpr bool kHardened = true;
#else
inline constexpr bool kHardened = false;
#endif

// How many of `count` digit buffers of wNAF multiplications remain allocated: the hardened build
// frees them.
constexpr int kept_digit_buffers(int count) { return kHardened ? 0 : count; }

// How many digit buffers `count` multiplications by a secret allocate: in the hardened build none.
constexpr unsigned digit_allocations(unsigned count) { return kHardened ? 0 : count; }

// The smallest private number that is accepted.
inline constexpr uint32_t kLeastKey = kHardened ? 1 : 0;

class FailingAlloc {
public:
    // The fail_at-th allocation from now on fails (1 = the next one; 0 = none).
    explicit FailingAlloc(unsigned fail_at = 0);
    ~FailingAlloc();
    FailingAlloc(const FailingAlloc &) = delete;
    FailingAlloc &operator=(const FailingAlloc &) = delete;

    unsigned fail_at;
    unsigned allocations = 0;  // attempts, including the failed one
    int outstanding = 0;       // successful allocations minus frees since construction
    size_t last_size = 0;      // bytes requested by the last attempt
    size_t largest_size = 0;
};

// During an object's lifetime allocations neither fail nor count: for a test's own preparations.
class AllocPause {
public:
    AllocPause();
    ~AllocPause();
    AllocPause(const AllocPause &) = delete;
    AllocPause &operator=(const AllocPause &) = delete;

private:
    FailingAlloc *paused_;
};

}  // namespace zokecc_test

#endif

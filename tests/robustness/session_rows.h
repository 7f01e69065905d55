// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Rows of the table of bad inputs for the calls of a session.
#ifndef ZOKECC_TESTS_ROBUSTNESS_SESSION_ROWS_H
#define ZOKECC_TESTS_ROBUSTNESS_SESSION_ROWS_H

#include "tests/robustness/bad_inputs.h"
#include "tests/robustness/session_arguments.h"

namespace zokecc_test::robustness {

using Spoil = std::function<void(SessionArguments &)>;

// A row runs with the identifiers of SM2, with the others, or with both in turn.
enum Algorithms { kBoth, kSm2Only, kOtherOnly };

// The allocation that fails, and how many there are.
struct Memory {
    unsigned fail_at = 0;
    unsigned allocations = 0;
    int digit_buffers = 0;  // never freed
};
inline constexpr Memory kAnyMemory = {0, 99};

// The result; nothing written, nothing drawn.
inline void refuses(const NamedSessionCall &call, uint32_t status, const std::string &input,
                    const Spoil &spoil, Algorithms algorithms = kBoth, Memory memory = {}) {
    bad(call.name, input, [=, run = call.call] {
        for (bool other : {false, true}) {
            if (algorithms == (other ? kSm2Only : kOtherOnly)) continue;
            SessionArguments arguments;
            if (other) arguments.use_other_algorithms();
            spoil(arguments);
            FakeEntropy entropy;
            FailingAlloc counter(memory.fail_at);
            EXPECT_EQ((arguments.*run)(), status) << (other ? "ECDSA or multiplicative" : "SM2");
            EXPECT_TRUE(arguments.nothing_written());
            EXPECT_EQ(entropy.number_calls + entropy.calls(), 0u);
            EXPECT_EQ(counter.outstanding, kept_digit_buffers(memory.digit_buffers));
            if (memory.allocations != kAnyMemory.allocations) {
                EXPECT_EQ(counter.allocations, memory.allocations) << (other ? "other" : "SM2");
            }
        }
    });
}

}  // namespace zokecc_test::robustness

#endif

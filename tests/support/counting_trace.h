// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Counts how often a fast path fell back to each of its slow paths.
#ifndef ZOKECC_TESTS_SUPPORT_COUNTING_TRACE_H
#define ZOKECC_TESTS_SUPPORT_COUNTING_TRACE_H

#include "mint/limbs/trace.h"

namespace zokecc_test {

// A template argument to replace zokecc::NoTrace. Counts start at reset().
struct CountingTrace {
    struct Counts {
        int quotient_unsure, first_difference, second_difference, doubled_difference;
        int difference_in_place, last_difference, inverse_by_definition;
    };
    static inline Counts counts{};

    static void reset() { counts = Counts{}; }
    static void quotient_unsure() { ++counts.quotient_unsure; }
    static void first_difference() { ++counts.first_difference; }
    static void second_difference() { ++counts.second_difference; }
    static void doubled_difference() { ++counts.doubled_difference; }
    static void difference_in_place() { ++counts.difference_in_place; }
    static void last_difference() { ++counts.last_difference; }
    static void inverse_by_definition() { ++counts.inverse_by_definition; }
};

}  // namespace zokecc_test

#endif

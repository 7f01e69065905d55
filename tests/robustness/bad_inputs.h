// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The table of bad inputs: a row for each, with the exported call.
//
// A row makes the call and expects the exact result, and that nothing was written that the call's
// comment does not mention. The files of this folder add their rows before main; table_test.cpp runs
// all of them and checks that no exported call is missing.
#ifndef ZOKECC_TESTS_ROBUSTNESS_BAD_INPUTS_H
#define ZOKECC_TESTS_ROBUSTNESS_BAD_INPUTS_H

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace zokecc_test::robustness {

struct Row {
    std::string call, input;
    std::function<void()> run;
};

inline std::vector<Row> &table() {
    static std::vector<Row> rows;
    return rows;
}

inline void bad(const std::string &call, const std::string &input, std::function<void()> run) {
    table().push_back({call, input, std::move(run)});
}

// A file's rows.
struct Rows {
    explicit Rows(void (*add)()) { add(); }
};

}  // namespace zokecc_test::robustness

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Runs the table of bad inputs, and compares it with the list of exported names.
#include <cstdio>
#include <fstream>
#include <map>
#include <set>

#include "tests/robustness/bad_inputs.h"

namespace zokecc_test::table_test {

using zokecc_test::robustness::Row;
using zokecc_test::robustness::table;

TEST(BadInputs, EveryRowGetsItsAnswer) {
    std::map<std::string, unsigned> tried;
    for (const Row &row : table()) {
        SCOPED_TRACE(row.call + ": " + row.input);
        row.run();
        ++tried[row.call];
    }
    std::printf("%zu bad inputs to %zu calls\n", table().size(), tried.size());
    EXPECT_GT(table().size(), tried.size());
}

TEST(BadInputs, EveryExportedNameHasARowAndNoOtherHas) {
    std::set<std::string> exported, in_table;
    std::ifstream names(ZOKECC_VECTOR_DIR "/../boundary/exports.txt");
    for (std::string name; std::getline(names, name);)
        if (!name.empty() && name[0] != '#') exported.insert(name);
    for (const Row &row : table()) in_table.insert(row.call);
    EXPECT_FALSE(exported.empty());
    for (const std::string &name : exported)
        EXPECT_TRUE(in_table.count(name) == 1) << name << " is exported and has no row";
    for (const std::string &name : in_table)
        EXPECT_TRUE(exported.count(name) == 1) << name << " is not exported";
}

}  // namespace zokecc_test::table_test

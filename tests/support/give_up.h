// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Ends a test program whose own data are wrong, such as a vector file without a key or a search that found
// nothing. The tests are compiled without exceptions because that is faster.
#ifndef ZOKECC_TESTS_SUPPORT_GIVE_UP_H
#define ZOKECC_TESTS_SUPPORT_GIVE_UP_H

#include <cstdio>
#include <cstdlib>
#include <string>

namespace zokecc_test {

[[noreturn]] inline void give_up(const std::string &why) {
    std::fflush(stdout);
    std::fprintf(stderr, "the test itself is wrong: %s\n", why.c_str());
    std::abort();
}

}  // namespace zokecc_test

#endif

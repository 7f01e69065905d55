// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Every call that takes a secret or makes one.
#ifndef ZOKECC_TESTS_SECRETS_CALLS_H
#define ZOKECC_TESTS_SECRETS_CALLS_H

#include <vector>

#include "tests/secrets/machine.h"

namespace zokecc_test::secrets {

struct Call {
    const char *name;
    Work work;
    uint32_t expected;  // the result if nothing fails
};

std::vector<Call> hash_calls();
std::vector<Call> scheme_calls();
std::vector<Call> session_calls();
std::vector<Call> agreement_calls();

}  // namespace zokecc_test::secrets

#endif

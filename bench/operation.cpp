// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "bench/operation.h"

namespace zokecc_bench {

std::vector<Operation> &operations()
{
    static std::vector<Operation> all;
    return all;
}

Register::Register(std::initializer_list<Operation> added)
{
    operations().insert(operations().end(), added.begin(), added.end());
}

}  // namespace zokecc_bench

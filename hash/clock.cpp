// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The only place that reads the clock.
#include <zokecc/hash.h>

#include <ctime>

uint32_t ecc_time(uint32_t *t)
{
    const uint32_t now = static_cast<uint32_t>(std::time(nullptr));
    if (t != nullptr) *t = now;
    return now;
}

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Hexadecimal dump, the only routine that prints.
#include <zokecc/mint.h>

#include <cstdio>

void print_str_array(const char *label, const uint8_t *bytes, int32_t byte_count)
{
    if (label != nullptr) std::printf("%s(%d) :\n", label, static_cast<int>(byte_count));
    for (int32_t i = 0; i < byte_count; ++i) {
        std::printf("%02X", static_cast<unsigned>(bytes[i]));
        if (i % 4 == 3) std::printf(" ");
        if (i % 32 == 31) std::printf("\n");
    }
    if (byte_count % 32 != 0) std::printf("\n");
}

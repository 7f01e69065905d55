// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Apart from the header because this is compiled with optimisation: some vectors have very many digits.
#include "tests/support/hex.h"

namespace zokecc_test {

uint8_t nibble(char c) {
    if (c >= '0' && c <= '9') return static_cast<uint8_t>(c - '0');
    if (c >= 'a' && c <= 'f') return static_cast<uint8_t>(c - 'a' + 10);
    if (c >= 'A' && c <= 'F') return static_cast<uint8_t>(c - 'A' + 10);
    give_up("not a hexadecimal digit");
}

ByteString from_hex(const std::string &text) {
    if (text.size() % 2 != 0) give_up("odd number of hexadecimal digits");
    ByteString out;
    for (size_t i = 0; i < text.size(); i += 2)
        out.push_back(static_cast<uint8_t>(nibble(text[i]) << 4 | nibble(text[i + 1])));
    return out;
}

}  // namespace zokecc_test

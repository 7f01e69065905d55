// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// OpenSSL's big numbers, owned, for comparing integers.
#ifndef ZOKECC_TESTS_PEER_BIGNUM_H
#define ZOKECC_TESTS_PEER_BIGNUM_H

#include <openssl/bn.h>

#include <memory>
#include <string>

#include "tests/support/give_up.h"
#include "tests/support/hex.h"
#include "tests/support/naive_int.h"

namespace zokecc_test {

struct FreeBignum {
    void operator()(BIGNUM *value) const { BN_free(value); }
    void operator()(BN_CTX *context) const { BN_CTX_free(context); }
};
using Bignum = std::unique_ptr<BIGNUM, FreeBignum>;

inline Bignum bn() {
    Bignum out(BN_new());
    if (!out) give_up("no memory for a number");
    return out;
}

inline Bignum bn_from_hex(const std::string &text) {
    BIGNUM *out = nullptr;
    if (BN_hex2bn(&out, text.c_str()) != static_cast<int>(text.size())) give_up("bad number");
    return Bignum(out);
}
inline Bignum bn(const mint &value) { return bn_from_hex(mint_to_hex(value)); }
inline Bignum bn(const Natural &value) { return bn_from_hex(value.to_hex()); }

// Lower-case digits without leading zeros, as mint_to_hex writes them.
inline std::string hex_of(const Bignum &value) {
    std::unique_ptr<char, void (*)(char *)> text(BN_bn2hex(value.get()), [](char *p) { OPENSSL_free(p); });
    std::string out = text.get();
    for (char &c : out)
        if (c >= 'A' && c <= 'F') c = static_cast<char>(c - 'A' + 'a');
    size_t first = out.find_first_not_of('0');
    return first == std::string::npos ? "0" : out.substr(first);
}

// The scratch space that the slower calls need.
inline BN_CTX *scratch() {
    static const std::unique_ptr<BN_CTX, FreeBignum> context(BN_CTX_new());
    return context.get();
}

}  // namespace zokecc_test

#endif

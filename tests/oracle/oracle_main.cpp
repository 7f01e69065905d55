// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Searches for a valid SM2 ciphertext that the default build refuses with a private key and decrypts with
// one that differs only in the leading digit; tests/oracle/search.h explains why there is one.
//
//     oracle [KEY [NONCE [BLOCKS]]]     both numbers in hexadecimal; nonces are tried from NONCE on,
//                                       1,024 in a block
//
// Prints the case in the form of tests/vectors/sm2_borrow_rule.rsp, once for each of the two keys. The exit
// status is 0 if there is one, 1 if not, 2 for wrong arguments. Some 2^25 nonces must be tried, for which
// a processor takes a minute or two. An attacker sends a device the ciphertext for its public key, learns
// the digit from the status, and continues with the next one: the simulation is just as short there, after
// the known digits.
#include <zokecc/curves.h>
#include <zokecc/zokecc.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

#include "hash/sm2_kdf.h"
#include "mint/value.h"
#include "tests/oracle/search.h"
#include "tests/support/hex.h"

namespace {

using namespace zokecc_test;
using zokecc::CurveView;

constexpr uint32_t kL = 32;
const char kMessage[] = "one digit of a private key leaks";  // as long as in a record
constexpr int32_t kMessageBytes = sizeof kMessage - 1;

ByteString bytes_of(const mint &number) {
    ByteString out(kL);
    uint32_t written = 0;
    mint_to_fixedlen_os(&number, kL, kL, &written, out.data());
    return out;
}

ByteString coordinates(const ecc_point &P) { return joined({bytes_of(P.x), bytes_of(P.y)}); }

ecc_point multiple(const CurveView &curve, const mint &k) {
    ecc_point out{};
    zokecc::multiply_base(curve, k, out);
    return out;
}

// d C1 as the library computes it, and from the nonce and the table of the base point.
ecc_point by_window(const CurveView &curve, const mint &d, const ecc_point &C1) {
    ecc_point out{};
    ecc_unknown_point_mul(&d, &C1, &curve.a, &curve.b, &curve.p, &out);
    return out;
}
ecc_point by_nonce(const CurveView &curve, const mint &d, const mint &nonce) {
    mint product{};
    mint_mod_mul(&d, &nonce, &curve.n, &product);
    return multiple(curve, product);
}

bool window_is_right(const CurveView &curve, const mint &d, const mint &nonce) {
    const ecc_point C1 = multiple(curve, nonce);
    return coordinates(by_window(curve, d, C1)) == coordinates(by_nonce(curve, d, nonce));
}

void print(const char *key, const ByteString &value) { std::printf("%s = %s\n", key, to_hex(value).c_str()); }

void print_point(const char *name, const ecc_point &P) {
    print((std::string(name) + "x").c_str(), bytes_of(P.x));
    print((std::string(name) + "y").c_str(), bytes_of(P.y));
}

void print_case(const CurveView &curve, const mint &d, const mint &nonce, const char *answer) {
    const ByteString message = text_bytes(kMessage);
    const ecc_point C1 = multiple(curve, nonce), shared = by_nonce(curve, d, nonce);
    const ByteString z = coordinates(shared);
    ByteString mask(kL), C2 = message, C3(kL);
    sm2_kdf(z.data(), 2 * kL, kMessageBytes, kL, HASH_ALG_SM3, mask.data());
    mask.resize(message.size());
    for (size_t i = 0; i < C2.size(); ++i) C2[i] = static_cast<uint8_t>(C2[i] ^ mask[i]);
    const ByteString hashed = joined({bytes_of(shared.x), message, bytes_of(shared.y)});
    const hash_msg input = {HASH_ALG_SM3, hashed.data(), 0, static_cast<uint32_t>(hashed.size())};
    hash_byte(&input, C3.data());
    std::printf("\nCurve = sm2p256v1\nHash = SM3\nSource = computed\n");
    print("d", bytes_of(d));
    print_point("P", multiple(curve, d));
    print("M", message);
    print("k", bytes_of(nonce));
    print_point("C1", C1);
    print("x2", bytes_of(shared.x));
    print("y2", bytes_of(shared.y));
    print("t", mask);
    print("C2", C2);
    print("C3", C3);
    print("C", joined({{0x04}, coordinates(C1), C2, C3}));
    std::printf("Result = valid\nDefault = %s\n", answer);
}

// Tries a block of nonces; true if one of them qualifies.
bool search_block(const CurveView &curve, oracle::Search &search, const mint &key, const mint &other,
                  const mint &first) {
    for (const mint &nonce : search.block(first)) {
        const ecc_point C1 = multiple(curve, nonce);
        if (ecc_test_point(&C1, &curve.a, &curve.b, &curve.p) != 0) continue;
        if (window_is_right(curve, key, nonce) || !window_is_right(curve, other, nonce)) continue;
        print_case(curve, key, nonce, "refused");
        print_case(curve, other, nonce, "decrypted");
        return true;
    }
    return false;
}

mint number_or_hash(const char *argument, const char *label, const mint &n) {
    mint out{};
    if (argument != nullptr) {
        out = mint_from_hex(argument);
    } else {
        uint8_t digest[kL];
        const ByteString text = text_bytes(label);
        mhash_sha256(text.data(), static_cast<uint32_t>(text.size()), digest);
        octetstring_to_mint(digest, kL, &out);
    }
    mint_mod(&out, &n, &out);
    return out;
}

}  // namespace

int main(int argc, char **argv) {
    void *session = nullptr;
    if (ZOK_OpenSession(&session, &zokecc_sm2p256v1) != ZOK_OK) return 2;
    const CurveView curve = zokecc::view_of(*static_cast<SessionContext *>(session));
    const mint key = number_or_hash(argc > 1 ? argv[1] : nullptr, "a private key", curve.n);
    mint nonce = number_or_hash(argc > 2 ? argv[2] : nullptr, "nonce", curve.n);
    const unsigned long blocks = argc > 3 ? std::strtoul(argv[3], nullptr, 10) : 1ul << 20;
    oracle::Guess guess{};
    if (argc > 4 || zokecc::is_zero(key) || !oracle::guess_leading_digit(curve.n, key, guess)) {
        std::fprintf(stderr,
                     "usage: oracle [KEY [NONCE [BLOCKS]]], with a key whose leading digit can change\n");
        return 2;
    }
    std::printf("# The leading digit %d, and %u doublings after it\n", guess.digit, guess.doublings);
    oracle::Search search(curve, guess);
    mint step{};
    step.words[0] = oracle::Search::kBlock;
    step.len = 1;
    for (unsigned long done = 1; done <= blocks; ++done) {
        const bool found = search_block(curve, search, key, guess.other, nonce);
        if (found || done == blocks)
            std::printf("\n# %s among %lu nonces, after %.1f seconds of processor time\n",
                        found ? "Found" : "Nothing", done * oracle::Search::kBlock,
                        static_cast<double>(std::clock()) / CLOCKS_PER_SEC);
        if (found) return 0;
        mint_mod_add(&nonce, &step, &curve.n, &nonce);
    }
    return 1;
}

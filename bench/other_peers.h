// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Peers besides OpenSSL for some of the operations: libgcrypt and nettle, if installed.
//
// Their headers and ours use the same names for different things, so inputs are passed as byte strings.
#ifndef ZOKECC_BENCH_OTHER_PEERS_H
#define ZOKECC_BENCH_OTHER_PEERS_H

#include <string>
#include <vector>

#include "bench/operation.h"

namespace zokecc_bench {

using Bytes = std::vector<uint8_t>;

struct OtherPeer {
    std::string operation;  // a name in operations()
    std::string library;
    std::function<Loop()> make;  // compares deterministic results
};

std::vector<OtherPeer> &other_peers();

// For example "libgcrypt 1.10.1, nettle 3.8"; empty if there are none.
std::string &other_versions();

// Adds the peers of one library before main starts.
struct RegisterPeers {
    RegisterPeers(const std::string &version, std::initializer_list<OtherPeer> added);
};

constexpr size_t kShortMessage = 64, kLongMessage = 16384;  // of the hashes
constexpr size_t kSignedMessage = 100;

// The inputs of the operations, and this library's results.
Bytes peer_message(size_t size);
Bytes sm3_of(const Bytes &message);
Bytes sha256_of(const Bytes &message);

struct KeyNumbers {
    Bytes d, x, y;
};
KeyNumbers key_numbers(const std::string &curve_name, const std::string &label = "own");

// x of the other key's scalar times our own point.
Bytes shared_x(const std::string &curve_name);

}  // namespace zokecc_bench

#endif

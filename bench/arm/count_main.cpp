// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Runs one operation on both sides for a plugin of the emulator that counts instructions:
//
//     count_operation NAME REPETITIONS        count_operation --list        count_operation --about
//
// Each side runs once before counting starts, which excludes loading, binding and what OpenSSL fetches at
// first use. The loop around the calls is included: some five instructions each.
#include <openssl/crypto.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

#include "bench/arm/mark.h"
#include "bench/operation.h"
#include "bench/other_peers.h"

namespace {

using namespace zokecc_bench;

void mark(int what) { syscall(ZOKECC_MARK_NUMBER, what); }

void count(const Loop &loop, uint64_t repetitions, int what)
{
    loop(1);
    mark(ZOKECC_MARK_START);
    loop(repetitions);
    mark(what);
}

int run(const std::string &name, uint64_t repetitions)
{
    for (const Operation &operation : operations()) {
        if (operation.name != name) continue;
        const Sides sides = operation.make();
        mark(ZOKECC_MARK_START);
        mark(ZOKECC_MARK_EMPTY);
        if (sides.before_ours) sides.before_ours();
        count(sides.ours, repetitions, ZOKECC_MARK_OURS);
        if (operation.has_peer) count(sides.peer, repetitions, ZOKECC_MARK_PEER);
        for (const OtherPeer &peer : other_peers())
            if (peer.operation == name)
                count(peer.make(), repetitions,
                      peer.library == "nettle" ? ZOKECC_MARK_NETTLE : ZOKECC_MARK_LIBGCRYPT);
        return 0;
    }
    throw std::runtime_error("unknown operation");
}

int list()
{
    for (const Operation &operation : operations()) std::printf("%s\n", operation.name.c_str());
    return 0;
}

// A line of JSON.
int about()
{
    std::printf("{\"openssl\": \"%s\", \"others\": \"%s\", \"compiler\": \"%s\"}\n",
                OpenSSL_version(OPENSSL_VERSION), other_versions().c_str(), ZOKECC_BENCH_COMPILER);
    return 0;
}

}  // namespace

int main(int argc, char **argv)
{
    const std::string first = argc > 1 ? argv[1] : "";
    const uint64_t repetitions = argc == 3 ? std::strtoull(argv[2], nullptr, 10) : 0;
    if (argc == 2 && first == "--list") return list();
    if (argc == 2 && first == "--about") return about();
    if (repetitions == 0) {
        std::fprintf(stderr, "count_operation NAME REPETITIONS | --list | --about\n");
        return 2;
    }
    try {
        return run(first, repetitions);
    } catch (const std::exception &failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}

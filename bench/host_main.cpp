// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Measures the operations that are linked into the program with Google Benchmark, each as
// NAME/zokecc, NAME/openssl and NAME/PEER for each other peer that supports it.
#include <benchmark/benchmark.h>
#include <openssl/crypto.h>

#include <exception>
#include <fstream>
#include <map>
#include <string>

#include "bench/operation.h"
#include "bench/other_peers.h"

namespace {

using namespace zokecc_bench;

// Set up only once: with random interleaving an operation starts many times.
const Sides &sides_of(const Operation &operation)
{
    static std::map<const Operation *, Sides> made;
    const auto found = made.find(&operation);
    if (found != made.end()) return found->second;
    return made.emplace(&operation, operation.make()).first->second;
}

const Loop &loop_of(const OtherPeer &peer)
{
    static std::map<const OtherPeer *, Loop> made;
    const auto found = made.find(&peer);
    if (found != made.end()) return found->second;
    return made.emplace(&peer, peer.make()).first->second;
}

// `prepared` returns the loop; its other work is not measured.
template <class Prepared>
void measure(benchmark::State &state, unsigned batch, Prepared prepared)
{
    try {
        const Loop &loop = prepared();
        loop(batch);
        while (state.KeepRunningBatch(batch)) loop(batch);
    } catch (const std::exception &failure) {
        state.SkipWithError(failure.what());
    }
}

template <class Prepared>
void add(const Operation &operation, const std::string &side, Prepared prepared)
{
    benchmark::RegisterBenchmark(
        (operation.name + '/' + side).c_str(),
        [batch = operation.batch, prepared](benchmark::State &state) { measure(state, batch, prepared); });
}

void add_sides(const Operation &operation)
{
    add(operation, "zokecc", [&operation]() -> const Loop & {
        const Sides &sides = sides_of(operation);
        if (sides.before_ours) sides.before_ours();
        return sides.ours;
    });
    if (operation.has_peer)
        add(operation, "openssl", [&operation]() -> const Loop & { return sides_of(operation).peer; });
    for (const OtherPeer &peer : other_peers())
        if (peer.operation == operation.name)
            add(operation, peer.library, [&peer]() -> const Loop & { return loop_of(peer); });
}

std::string processor()
{
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);)
        if (line.rfind("model name", 0) == 0) return line.substr(line.find(':') + 2);
    return "unknown";
}

}  // namespace

int main(int argc, char **argv)
{
    for (const Operation &operation : operations()) add_sides(operation);
    benchmark::AddCustomContext("processor", processor());
    benchmark::AddCustomContext("openssl", OpenSSL_version(OPENSSL_VERSION));
    benchmark::AddCustomContext("others", other_versions());
    benchmark::AddCustomContext("compiler", ZOKECC_BENCH_COMPILER);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();  // a failure shows in the results
    return 0;
}

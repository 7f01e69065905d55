// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Measures the operations that are linked into the program with Google Benchmark, each as
// NAME/zokecc and NAME/openssl.
#include <benchmark/benchmark.h>
#include <openssl/crypto.h>

#include <exception>
#include <fstream>
#include <map>
#include <string>

#include "bench/operation.h"

namespace {

using namespace zokecc_bench;

// Set up at the first use, and kept: with random interleaving an operation starts many times.
const Sides &sides_of(const Operation &operation)
{
    static std::map<const Operation *, Sides> made;
    const auto found = made.find(&operation);
    if (found != made.end()) return found->second;
    return made.emplace(&operation, operation.make()).first->second;
}

void measure(benchmark::State &state, const Operation &operation, bool is_peer)
{
    try {
        const Sides &sides = sides_of(operation);
        if (!is_peer && sides.before_ours) sides.before_ours();
        const Loop &loop = is_peer ? sides.peer : sides.ours;
        loop(operation.batch);
        while (state.KeepRunningBatch(operation.batch)) loop(operation.batch);
    } catch (const std::exception &failure) {
        state.SkipWithError(failure.what());
    }
}

void add(const Operation &operation, const char *side, bool is_peer)
{
    benchmark::RegisterBenchmark(
        (operation.name + '/' + side).c_str(),
        [&operation, is_peer](benchmark::State &state) { measure(state, operation, is_peer); });
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
    for (const Operation &operation : operations()) {
        add(operation, "zokecc", false);
        if (operation.has_peer) add(operation, "openssl", true);
    }
    benchmark::AddCustomContext("processor", processor());
    benchmark::AddCustomContext("openssl", OpenSSL_version(OPENSSL_VERSION));
    benchmark::AddCustomContext("compiler", ZOKECC_BENCH_COMPILER);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();  // a failure shows in the results
    return 0;
}

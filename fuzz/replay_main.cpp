// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Runs a fuzz target on the files and folders named on the command line, so that its corpus is
// an ordinary test with every compiler, and findings can be examined without libFuzzer.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <vector>

#include "fuzz/fuzz_check.h"

namespace fs = std::filesystem;

int main(int argc, char **argv) {
    std::set<fs::path> files;
    for (int i = 1; i < argc; ++i) {
        if (!fs::is_directory(argv[i])) {
            files.insert(argv[i]);
            continue;
        }
        for (const fs::directory_entry &entry : fs::directory_iterator(argv[i])) files.insert(entry.path());
    }
    for (const fs::path &file : files) {
        std::ifstream in(file, std::ios::binary);
        if (!in) {
            std::fprintf(stderr, "cannot read %s\n", file.c_str());
            return 1;
        }
        const std::vector<char> text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
        const std::vector<uint8_t> bytes(text.begin(), text.end());
        // Printed before it runs, because a finding aborts the process.
        std::fprintf(stderr, "%s\n", file.c_str());
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    }
    std::printf("%zu inputs\n", files.size());
    return files.empty() ? 1 : 0;
}

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Reader of the vector files: blocks of "Key = value" lines between blank lines.
#ifndef ZOKECC_TESTS_SUPPORT_VECTOR_FILE_H
#define ZOKECC_TESTS_SUPPORT_VECTOR_FILE_H

#include <gtest/gtest.h>
#include <zokecc/hash.h>

#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "tests/support/give_up.h"
#include "tests/support/hex.h"

namespace zokecc_test {

// One block. A missing key is an error of the test, never an empty value.
class VectorBlock {
public:
    bool has(const std::string &key) const { return values_.count(key) != 0; }
    const std::string &text(const std::string &key) const {
        auto found = values_.find(key);
        if (found == values_.end()) give_up("vector block without " + key);
        return found->second;
    }
    ByteString bytes(const std::string &key) const { return from_hex(text(key)); }
    mint number(const std::string &key) const { return mint_from_hex(text(key)); }
    unsigned decimal(const std::string &key) const { return static_cast<unsigned>(std::stoul(text(key))); }

    // Identifies the block in messages.
    std::string name() const {
        std::string out;
        for (const char *key : {"Curve", "Hash", "tcId", "r", "C1x", "d", "Reason", "Comment"})
            if (has(key)) out += std::string(key) + ' ' + text(key) + ' ';
        return out;
    }
    bool is_valid() const { return text("Result") == "valid"; }
    uint32_t hash() const { return text("Hash") == "SM3" ? HASH_ALG_SM3 : HASH_ALG_SHA256; }

    bool empty() const { return values_.empty(); }
    void set(const std::string &key, const std::string &value) { values_[key] = value; }

private:
    std::map<std::string, std::string> values_;
};

// All blocks of tests/vectors/<name>. Gives up if the file cannot be read or has none.
inline std::vector<VectorBlock> read_vectors(const std::string &name) {
    std::ifstream in(std::string(ZOKECC_VECTOR_DIR "/") + name);
    if (!in) give_up("cannot read vector file " + name);
    std::vector<VectorBlock> blocks;
    VectorBlock current;
    for (std::string line; std::getline(in, line);) {
        if (line.empty()) {
            if (!current.empty()) blocks.push_back(current);
            current = VectorBlock();
        } else if (line[0] != '#') {
            size_t equals = line.find(" =");
            if (equals == std::string::npos) give_up(name + ": bad line " + line);
            current.set(line.substr(0, equals), equals + 3 <= line.size() ? line.substr(equals + 3) : "");
        }
    }
    if (!current.empty()) blocks.push_back(current);
    if (blocks.empty()) give_up("vector file without blocks: " + name);
    return blocks;
}

// Runs the test on every wanted block of the file, and returns how many there were.
template <class Wanted, class Test>
unsigned on_blocks(const std::string &file, Wanted wanted, Test test) {
    unsigned count = 0;
    for (const VectorBlock &block : read_vectors(file)) {
        if (!wanted(block)) continue;
        SCOPED_TRACE(block.name());
        test(block);
        ++count;
    }
    return count;
}

}  // namespace zokecc_test

#endif

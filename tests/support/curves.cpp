// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "tests/support/curves.h"

#include <algorithm>

#include "tests/support/give_up.h"
#include "tests/support/vector_file.h"

namespace zokecc_test {

namespace {

uint32_t session_type_of(unsigned byte_len) {
    switch (byte_len) {
    case 20: return 1;
    case 24: return 2;
    case 28: return 3;
    case 32: return 4;
    default: return kNoType;
    }
}

uint32_t legacy_type_of(unsigned byte_len) {
    switch (byte_len) {
    case 24: return 0;
    case 28: return 4;
    case 32: return 1;
    default: return kNoType;
    }
}

Curve read_curve(const VectorBlock &block) {
    Curve out{};
    out.name = block.text("Curve");
    out.byte_len = block.decimal("L");
    out.session_type = session_type_of(out.byte_len);
    out.legacy_type = legacy_type_of(out.byte_len);
    out.p = block.number("p");
    out.a = block.number("a");
    out.b = block.number("b");
    out.n = block.number("n");
    out.G.x = block.number("Gx");
    out.G.y = block.number("Gy");
    return out;
}

const std::vector<Curve> &all_curves() {
    static const std::vector<Curve> curves = [] {
        std::vector<Curve> read;
        for (const VectorBlock &block : read_vectors("curves.rsp")) read.push_back(read_curve(block));
        return read;
    }();
    return curves;
}

bool fits(const Curve &curve) { return curve.n.len <= (curve.byte_len + 3) / 4; }

void put(uint8_t *field, const mint &value, size_t byte_len) {
    ByteString bytes = fixed_bytes(value, byte_len);
    std::copy(bytes.begin(), bytes.end(), field);
}

// Both kinds of record use the same field names.
template <class Record>
void put_numbers(Record &record, const Curve &curve) {
    put(record.p, curve.p, curve.byte_len);
    put(record.a, curve.a, curve.byte_len);
    put(record.b, curve.b, curve.byte_len);
    put(record.Gx, curve.G.x, curve.byte_len);
    put(record.Gy, curve.G.y, curve.byte_len);
    put(record.n, curve.n, curve.byte_len);
}

}  // namespace

ByteString fixed_bytes(const mint &value, size_t size) {
    ByteString out(size, 0);
    for (size_t i = 0; i < 4u * value.len; ++i) {
        uint8_t byte = static_cast<uint8_t>(value.words[i / 4] >> (8 * (i % 4)));
        if (i < size)
            out[size - 1 - i] = byte;
        else if (byte != 0)
            give_up("number does not fit its field");
    }
    return out;
}

CurvePara Curve::record(uint32_t hash_selector) const {
    CurvePara out{};
    put_numbers(out, *this);
    out.type = session_type;
    out.hash_selector = hash_selector;
    return out;
}

ecc_curve_bytes Curve::legacy_record() const {
    if (legacy_type == kNoType) give_up(name + " has no legacy type");
    ecc_curve_bytes out{};
    put_numbers(out, *this);
    out.type = legacy_type;
    return out;
}

const Curve &curve(const std::string &name) {
    for (const Curve &candidate : all_curves())
        if (candidate.name == name) return candidate;
    give_up("no curve " + name);
}

std::vector<std::string> session_curve_names() {
    std::vector<std::string> names;
    for (const Curve &candidate : all_curves())
        if (candidate.session_type != kNoType && fits(candidate)) names.push_back(candidate.name);
    return names;
}

std::vector<std::string> legacy_curve_names() {
    std::vector<std::string> names;
    for (const Curve &candidate : all_curves())
        if (candidate.legacy_type != kNoType && fits(candidate)) names.push_back(candidate.name);
    return names;
}

Session::Session(const Curve &curve, uint32_t hash_selector) {
    CurvePara record = curve.record(hash_selector);
    uint32_t status = ZOK_OpenSession(&handle_, &record);
    if (status != ZOK_OK) give_up("no session: status " + std::to_string(status));
    if (context()->curve_type != record.type) {
        ZOK_CloseSession(handle_);
        give_up("session without its curve " + curve.name);
    }
}

Session::~Session() { ZOK_CloseSession(handle_); }

}  // namespace zokecc_test

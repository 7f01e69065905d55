// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The arguments of the calls that use the process-wide curve. Each remembers its original
// content, so that a test can check that a call left it alone; buffers have their exact size, so
// that an address sanitizer detects reading past them.
#ifndef ZOKECC_TESTS_SUPPORT_LEGACY_RECORDS_H
#define ZOKECC_TESTS_SUPPORT_LEGACY_RECORDS_H

#include <gtest/gtest.h>
#include <zokecc/schemes.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "tests/support/curves.h"
#include "tests/support/fake_entropy.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/hex.h"
#include "tests/support/points.h"
#include "tests/support/vector_file.h"

namespace zokecc_test {

inline constexpr uint32_t kUnknownHash = 5;
inline constexpr uint32_t kHashes[] = {HASH_ALG_SM3, HASH_ALG_SHA256};

inline ByteString number_bytes(uint32_t value, size_t size) { return fixed_bytes(small(value), size); }

// A scalar argument.
class Scalar {
public:
    explicit Scalar(const ByteString &bytes) { set(bytes); }
    Scalar(uint32_t value, size_t size) : Scalar(number_bytes(value, size)) {}
    Scalar(const Scalar &) = delete;
    Scalar &operator=(const Scalar &) = delete;

    void set(const ByteString &bytes) {
        bytes_ = first_ = bytes;
        record_ = {bytes_.data(), static_cast<uint32_t>(bytes_.size())};
    }
    ecc_scalar *get() { return &record_; }
    bool intact() const {
        return bytes_ == first_ && record_.bytes == bytes_.data() && record_.length == first_.size();
    }

private:
    ByteString bytes_, first_;
    ecc_scalar record_{};
};

// A message descriptor. Its middle word is ignored and contains garbage here.
class Message {
public:
    explicit Message(const ByteString &bytes) : bytes_(bytes), first_(bytes) {
        record_ = {bytes_.data(), 0xDEADBEEFu, static_cast<uint32_t>(bytes_.size())};
    }
    Message(const Message &) = delete;
    Message &operator=(const Message &) = delete;

    sm3_msg *get() { return &record_; }
    bool intact() const {
        return bytes_ == first_ && record_.data == bytes_.data() && record_.len_high == 0xDEADBEEFu &&
               record_.len_low == first_.size();
    }

private:
    ByteString bytes_, first_;
    sm3_msg record_{};
};

// x and y at the start of their fields, the fill pattern after them, and their length.
inline ecc_point_bytes point_record(const ByteString &x, const ByteString &y) {
    ecc_point_bytes out;
    std::memset(&out, kFill, sizeof out);
    std::copy(x.begin(), x.end(), out.x);
    std::copy(y.begin(), y.end(), out.y);
    out.length = static_cast<uint32_t>(x.size());
    return out;
}

// Such a point, or a signature.
class PointBytes {
public:
    PointBytes(const ByteString &x, const ByteString &y)
        : record_(point_record(x, y)), first_(image(record_)) {}
    PointBytes(uint32_t x, uint32_t y, size_t size)
        : PointBytes(number_bytes(x, size), number_bytes(y, size)) {}

    ecc_point_bytes *get() { return &record_; }
    bool intact() const { return image(record_) == first_; }
    // Changes only the length, not the fields.
    void set_length(uint32_t length) {
        record_.length = length;
        first_ = image(record_);
    }

private:
    ecc_point_bytes record_;
    ByteString first_;
};

// What a call must write to a record: the two numbers and their length, and nothing else.
inline void expect_record(const GuardedRecord<ecc_point_bytes> &written, const ByteString &x,
                          const ByteString &y) {
    EXPECT_EQ(to_hex(written.bytes()), to_hex(image(point_record(x, y))));
    EXPECT_TRUE(written.guards_intact());
}
inline void expect_record(const GuardedRecord<ecc_point_bytes> &written, uint32_t x, uint32_t y,
                          size_t size) {
    expect_record(written, number_bytes(x, size), number_bytes(y, size));
}

inline void queue_number(FakeEntropy &entropy, const mint &value, unsigned count = 1) {
    while (count-- > 0) entropy.queued_numbers.push_back(value);
}
inline void queue_number(FakeEntropy &entropy, uint32_t value, unsigned count = 1) {
    queue_number(entropy, small(value), count);
}

// Published vectors over the curves that Curve_Init takes.
inline bool is_legacy(const VectorBlock &block) { return curve(block.text("Curve")).legacy_type != kNoType; }
inline bool is_legacy_of_256_bits(const VectorBlock &block) {
    return curve(block.text("Curve")).legacy_type == 1;
}
inline bool is_shorter_legacy(const VectorBlock &block) {
    return is_legacy(block) && !is_legacy_of_256_bits(block);
}

}  // namespace zokecc_test

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The arguments of the calls that read the curve of the process. Each knows what it held at
// first, so that a test can say that a call left it alone; byte areas have their exact size, so
// that reading beyond them is noticed by an address sanitizer.
#ifndef ZOKECC_TESTS_SUPPORT_LEGACY_RECORDS_H
#define ZOKECC_TESTS_SUPPORT_LEGACY_RECORDS_H

#include <gtest/gtest.h>
#include <zokecc/schemes.h>

#include <cstring>
#include <string>

#include "tests/support/curves.h"
#include "tests/support/fake_entropy.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/hex.h"
#include "tests/support/points.h"

namespace zokecc_test {

inline constexpr uint8_t kFieldFill = 0xA5;  // what GuardedRecord fills records with
inline constexpr uint32_t kUnknownHash = 5;
inline constexpr uint32_t kHashes[] = {HASH_ALG_SM3, HASH_ALG_SHA256};

inline ByteString number_bytes(uint32_t value, size_t size) { return fixed_bytes(small(value), size); }

template <class Record>
ByteString record_image(const Record &record) {
    const uint8_t *bytes = reinterpret_cast<const uint8_t *>(&record);
    return ByteString(bytes, bytes + sizeof(Record));
}

// A scalar argument.
class Scalar {
public:
    explicit Scalar(const ByteString &bytes) : bytes_(bytes), first_(bytes) {
        record_ = {bytes_.data(), static_cast<uint32_t>(bytes_.size())};
    }
    Scalar(uint32_t value, size_t size) : Scalar(number_bytes(value, size)) {}
    Scalar(const Scalar &) = delete;
    Scalar &operator=(const Scalar &) = delete;

    ecc_scalar *get() { return &record_; }
    bool intact() const {
        return bytes_ == first_ && record_.bytes == bytes_.data() && record_.length == first_.size();
    }

private:
    ByteString bytes_, first_;
    ecc_scalar record_{};
};

// A message descriptor. Its middle word is not read, and holds nonsense here.
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

// A point, or a signature, whose fields hold the numbers at their start and the fill behind.
class PointBytes {
public:
    PointBytes(const ByteString &x, const ByteString &y) {
        std::memset(&record_, kFieldFill, sizeof record_);
        if (!x.empty()) std::memcpy(record_.x, x.data(), x.size());
        if (!y.empty()) std::memcpy(record_.y, y.data(), y.size());
        record_.length = static_cast<uint32_t>(x.size());
        first_ = record_image(record_);
    }
    PointBytes(uint32_t x, uint32_t y, size_t size)
        : PointBytes(number_bytes(x, size), number_bytes(y, size)) {}

    ecc_point_bytes *get() { return &record_; }
    bool intact() const { return record_image(record_) == first_; }
    // The fields stay; only the length says something else.
    void set_length(uint32_t length) {
        record_.length = length;
        first_ = record_image(record_);
    }

private:
    ecc_point_bytes record_;
    ByteString first_;
};

// A 65-byte field holds the value at its start and the fill behind it.
inline void expect_legacy_field(const uint8_t *field, const ByteString &value) {
    size_t rest = 65 - value.size();
    EXPECT_EQ(to_hex(field, value.size()), to_hex(value));
    EXPECT_EQ(to_hex(field + value.size(), rest), to_hex(ByteString(rest, kFieldFill)));
}

// What a call wrote into a record: the two numbers and their length, and nothing else.
inline void expect_record(GuardedRecord<ecc_point_bytes> &written, const ByteString &x, const ByteString &y) {
    expect_legacy_field(written->x, x);
    expect_legacy_field(written->y, y);
    EXPECT_EQ(written->length, x.size());
    // Between the fields and the length the record has two spare bytes.
    EXPECT_EQ(to_hex(written.bytes()).substr(260, 4), "a5a5");
    EXPECT_TRUE(written.guards_intact());
}
inline void expect_record(GuardedRecord<ecc_point_bytes> &written, uint32_t x, uint32_t y, size_t size) {
    expect_record(written, number_bytes(x, size), number_bytes(y, size));
}

inline void queue_number(FakeEntropy &entropy, const mint &value, unsigned count = 1) {
    while (count-- > 0) entropy.queued_numbers.push_back(value);
}
inline void queue_number(FakeEntropy &entropy, uint32_t value, unsigned count = 1) {
    queue_number(entropy, small(value), count);
}

}  // namespace zokecc_test

#endif

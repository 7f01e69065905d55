// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// A byte buffer between two guards, filled with a known pattern, so that a test can tell
// exactly which bytes a call wrote.
#ifndef ZOKECC_TESTS_SUPPORT_GUARDED_BUFFER_H
#define ZOKECC_TESTS_SUPPORT_GUARDED_BUFFER_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zokecc_test {

using ByteString = std::vector<uint8_t>;

inline constexpr uint8_t kFill = 0xA5;  // of guards and of unused parts of a record

// All bytes of a record.
template <class Record>
ByteString image(const Record &record) {
    const uint8_t *bytes = reinterpret_cast<const uint8_t *>(&record);
    return {bytes, bytes + sizeof record};
}

class GuardedBuffer {
public:
    explicit GuardedBuffer(size_t size, uint8_t pattern = kFill)
        : size_(size), pattern_(pattern), bytes_(size + 2 * kGuard, pattern) {}

    uint8_t *data() { return bytes_.data() + kGuard; }
    size_t size() const { return size_; }

    ByteString first(size_t count) const { return {begin(), begin() + static_cast<std::ptrdiff_t>(count)}; }
    ByteString all() const { return first(size_); }

    // True if both guards and all bytes after the first `from` still hold the pattern.
    bool untouched_from(size_t from) const {
        for (size_t i = 0; i < kGuard; ++i)
            if (bytes_[i] != pattern_) return false;
        for (size_t i = kGuard + from; i < bytes_.size(); ++i)
            if (bytes_[i] != pattern_) return false;
        return true;
    }
    bool untouched() const { return untouched_from(0); }

private:
    static constexpr size_t kGuard = 64;
    ByteString::const_iterator begin() const { return bytes_.begin() + kGuard; }

    size_t size_;
    uint8_t pattern_;
    ByteString bytes_;
};

// A record of type T between guards. fill() fills it with the pattern; unchanged() tells
// whether it and the guards are untouched since then.
template <class T>
class GuardedRecord {
public:
    GuardedRecord() : buffer_(sizeof(T)) {}

    T *get() { return static_cast<T *>(static_cast<void *>(buffer_.data())); }
    T *operator->() { return get(); }
    bool unchanged() const { return buffer_.untouched(); }
    bool guards_intact() const { return buffer_.untouched_from(sizeof(T)); }
    ByteString bytes() const { return buffer_.all(); }

private:
    GuardedBuffer buffer_;
};

}  // namespace zokecc_test

#endif

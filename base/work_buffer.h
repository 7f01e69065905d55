// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// A zeroed block of heap memory for one call.
#ifndef ZOKECC_BASE_WORK_BUFFER_H
#define ZOKECC_BASE_WORK_BUFFER_H

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "base/wipe.h"

namespace zokecc {

// Allocates size zero bytes; converts to false if the allocation failed. The block is wiped and freed at the
// end of the scope, unless release() lets it outlive the call.
class WorkBuffer {
public:
    explicit WorkBuffer(size_t size) : bytes_(static_cast<uint8_t *>(std::calloc(size, 1))), size_(size) {}
    ~WorkBuffer()
    {
        if (bytes_ == nullptr) return;
        wipe(bytes_, size_);
        std::free(bytes_);
    }
    WorkBuffer(const WorkBuffer &) = delete;
    WorkBuffer &operator=(const WorkBuffer &) = delete;

    explicit operator bool() const { return bytes_ != nullptr; }
    uint8_t *data() { return bytes_; }

    // Wipes the block and leaves it allocated for good.
    void release()
    {
        if (bytes_ != nullptr) wipe(bytes_, size_);
        bytes_ = nullptr;
    }  // NOLINT(clang-analyzer-unix.Malloc): the leak is intended

private:
    uint8_t *bytes_;
    size_t size_;
};

}  // namespace zokecc

#endif

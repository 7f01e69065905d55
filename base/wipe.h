// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Wipes secrets in a way that the compiler cannot optimise away.
#ifndef ZOKECC_BASE_WIPE_H
#define ZOKECC_BASE_WIPE_H

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace zokecc {

// Overwrites size bytes with zeros. The barrier makes the compiler assume that they are read afterwards, so
// the stores stay even if the memory is about to go out of scope.
inline void wipe(void *memory, size_t size)
{
    std::memset(memory, 0, size);
    __asm__ __volatile__("" : : "r"(memory) : "memory");
}

// Holds a secret (scalar, nonce, shared point, key stream) and wipes it at the end of the scope, on every
// return path. Starts as zero.
template <class T>
class Wiping {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    Wiping() = default;
    ~Wiping() { wipe(&value_, sizeof value_); }
    Wiping(const Wiping &) = delete;
    Wiping &operator=(const Wiping &) = delete;

    T *get() { return &value_; }
    T &operator*() { return value_; }
    T *operator->() { return &value_; }

private:
    T value_{};
};

}  // namespace zokecc

#endif

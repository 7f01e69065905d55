// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Random bytes from the kernel, for the hardened build.
#ifndef ZOKECC_HASH_KERNEL_RANDOM_H
#define ZOKECC_HASH_KERNEL_RANDOM_H

#include <cstddef>
#include <cstdint>

namespace zokecc {

// Fills size bytes from getrandom, which waits until the kernel's generator has been seeded, or from
// /dev/urandom where the C library or the kernel is too old to have that call, provided that it is the
// device (1, 9) and no other file. False if neither gives all of them; the bytes are zero then.
bool kernel_random(uint8_t *out, size_t size);

}  // namespace zokecc

#endif

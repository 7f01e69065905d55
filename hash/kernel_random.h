// Random bytes from the kernel, for the hardened build.
#ifndef ZOKECC_HASH_KERNEL_RANDOM_H
#define ZOKECC_HASH_KERNEL_RANDOM_H

#include <cstddef>
#include <cstdint>

namespace zokecc {

// Fills size bytes from getrandom, which waits until the kernel's generator has been seeded, or from
// /dev/urandom where the C library or the kernel is too old to have that call. False if neither gives
// all of them; what the bytes hold then must not be used.
bool kernel_random(uint8_t *out, size_t size);

}  // namespace zokecc

#endif

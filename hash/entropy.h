// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The library's only source of randomness.
//
// In the default build the source is the C library's generator. rand, srand and time are called by
// those names, so that a program can replace them with its own. The number and order of the calls are
// visible to such a replacement and part of the interface: every seeding calls time once, srand once and
// rand 24 times.
//
// In the hardened build the source is the kernel's generator: kernel_random.cpp replaces entropy.cpp.
#ifndef ZOKECC_HASH_ENTROPY_H
#define ZOKECC_HASH_ENTROPY_H

#include <cstddef>
#include <cstdint>

#include "base/linkage.h"

// Default build only: counts the rand calls of all seedings in the process, modulo 2^32. Never reset; it is
// all that makes two seedings within one second differ.
ZOKECC_INTERNAL uint32_t seed_counter;

// Fills 8 seed words. In the default build bit 0 of every word is 1. Returns 0, or -1 in the
// hardened build if the kernel delivers no random bytes.
ZOKECC_INTERNAL int32_t gen_random_seed(uint32_t *words);

namespace zokecc {

constexpr uint32_t kSeedWords = 8;

// Hardened build only: fills size bytes from getrandom, which waits until the kernel's generator has been
// seeded, or from /dev/urandom if the C library or the kernel is too old for that call; the file must be the
// device (1, 9). False, with the bytes zeroed, if both fail.
bool kernel_random(uint8_t *out, size_t size);

}  // namespace zokecc

#endif

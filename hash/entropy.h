// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The only place where the library reads the clock and a source of randomness.
//
// In the default build the source is the C library's generator. rand, srand and time are called by
// those names, so that a program can replace them with its own. The number and order of the calls is
// visible to such a replacement and part of the interface:
// every seeding calls time once, srand once and rand 24 times.
//
// In the hardened build the source is the kernel's generator: kernel_random.cpp in place of entropy.cpp.
#ifndef ZOKECC_HASH_ENTROPY_H
#define ZOKECC_HASH_ENTROPY_H

#include <cstddef>
#include <cstdint>

#include "base/linkage.h"

// In the default build: counts the rand calls of all seedings of the process, modulo 2^32. Never reset; it
// alone makes two seedings within one second differ.
ZOKECC_INTERNAL uint32_t seed_counter;

// Fills 8 seed words. In the default build bit 0 of every word is 1. Returns 0, or -1 in the
// hardened build if the kernel gives no random bytes.
ZOKECC_INTERNAL int32_t gen_random_seed(uint32_t *words);

namespace zokecc {

constexpr uint32_t kSeedWords = 8;

// In the hardened build: fills size bytes from getrandom, which waits until the kernel's generator has been
// seeded, or from /dev/urandom if the C library or the kernel is too old to have that call, provided that
// it is the device (1, 9) and no other file. False, with the bytes zeroed, if both fail.
bool kernel_random(uint8_t *out, size_t size);

}  // namespace zokecc

#endif

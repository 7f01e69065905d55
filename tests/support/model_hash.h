// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SHA-256, SM3 and HMAC with both, written for clarity, not for speed, as a second
// opinion that needs no other library and therefore also runs on the target.
#ifndef ZOKECC_TESTS_SUPPORT_MODEL_HASH_H
#define ZOKECC_TESTS_SUPPORT_MODEL_HASH_H

#include <array>
#include <cstdint>

#include "tests/support/guarded_buffer.h"

namespace zokecc_test {

using HashState = std::array<uint32_t, 8>;

// The initial states.
HashState model_sha256_start();
HashState model_sm3_start();

// One block transformation: the state after a 64-byte block.
HashState model_sha256_block(const HashState &state, const uint8_t *block);
HashState model_sm3_block(const HashState &state, const uint8_t *block);

// The state words, each with its most significant byte first.
ByteString model_digest(const HashState &state);

ByteString model_sha256(const ByteString &message);
ByteString model_sm3(const ByteString &message);
ByteString model_hmac_sha256(const ByteString &key, const ByteString &message);
ByteString model_hmac_sm3(const ByteString &key, const ByteString &message);

// A message of the given length: bytes without a visible pattern, the
// same on every run, different for different seeds.
ByteString test_bytes(size_t length, uint32_t seed = 1);

}  // namespace zokecc_test

#endif

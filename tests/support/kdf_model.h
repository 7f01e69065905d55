// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The key derivation of SM2 and the memory it writes, for the tests of the calls that use it.
//
// Digests come from model_hash.h. Nothing here uses the library.
#ifndef ZOKECC_TESTS_SUPPORT_KDF_MODEL_H
#define ZOKECC_TESTS_SUPPORT_KDF_MODEL_H

#include <algorithm>
#include <cstdint>
#include <vector>

#include "tests/support/hex.h"
#include "tests/support/model_hash.h"

namespace zokecc_test {

// SM3 for selector 0, SHA-256 for 1, and empty for any other.
inline ByteString selected_digest(uint32_t selector, const ByteString &message) {
    if (selector == 0) return model_sm3(message);
    if (selector == 1) return model_sha256(message);
    return ByteString();
}

// H(z || counter)
inline ByteString counted_digest(uint32_t selector, const ByteString &z, uint32_t counter) {
    ByteString message = z;
    for (int shift = 24; shift >= 0; shift -= 8) message.push_back(static_cast<uint8_t>(counter >> shift));
    return selected_digest(selector, message);
}

// The key stream of the standard: klen bytes of H(z || 1) || H(z || 2) || ...
inline ByteString standard_stream(uint32_t selector, const ByteString &z, size_t klen) {
    ByteString out;
    for (uint32_t counter = 1; out.size() < klen; ++counter) {
        ByteString digest = counted_digest(selector, z, counter);
        out.insert(out.end(), digest.begin(), digest.end());
    }
    out.resize(klen);
    return out;
}

// The output of the deployed derivation. digests[i] is H(z || i + 1); none for an unknown hash.
//
// KEPT: klen / step_len whole steps write a digest each, one after the other, cut to klen only
// if klen is shorter than the digest; then the remainder of klen, unless already exceeded. After the
// digest the remainder is zero bytes; for an unknown hash all of it is.
inline void deployed_derivation(const std::vector<ByteString> &digests, int32_t klen, int32_t step_len,
                                ByteString &area) {
    if (klen <= 0) return;
    const int32_t steps = klen / step_len;
    const int32_t part = digests.empty() ? 0 : std::min(klen, 32);
    auto put = [&](int32_t step, int32_t count) {
        for (int32_t i = 0; i < count; ++i) {
            const bool from_digest = i < 32 && !digests.empty();
            area.at(static_cast<size_t>(step * part + i)) =
                from_digest ? digests.at(static_cast<size_t>(step))[static_cast<size_t>(i)] : uint8_t{0};
        }
    };
    for (int32_t step = 0; step < steps; ++step) put(step, part);
    if (klen % step_len != 0) put(steps, klen - steps * part);
}

}  // namespace zokecc_test

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Destination of a derived key.
#ifndef ZOKECC_HASH_KEY_SINK_H
#define ZOKECC_HASH_KEY_SINK_H

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "base/wipe.h"
#include "hash/sm2_digests.h"
#include "hash/sm2_kdf.h"

namespace zokecc {

// True if the key derivation writes anything for this request. It does not if klen is below 1, or if the hash
// is unknown and klen is a multiple of step_len.
inline bool derivation_writes(int32_t klen, uint32_t step_len, uint32_t alg)
{
    return klen > 0 && (is_known_hash(alg) || static_cast<uint32_t>(klen) % step_len != 0);
}

// Callers expect klen bytes, but the derivation fills its steps with whole digests. If that is more, it
// writes to a heap block first, which is wiped and freed at the end of the scope.
class KeySink {
public:
    KeySink(uint8_t *key, int32_t klen, uint32_t step_len, uint32_t alg)
        : key_(key), klen_(klen), step_len_(step_len), alg_(alg)
    {
        if (klen < 1 || !is_known_hash(alg)) return;
        const uint64_t written = kdf_written_bytes(static_cast<uint32_t>(klen), step_len);
        if (written <= static_cast<uint32_t>(klen)) return;
        size_ = static_cast<size_t>(written);
        block_ = size_ == written ? static_cast<uint8_t *>(std::calloc(size_, 1)) : nullptr;
        missing_ = block_ == nullptr;
    }
    ~KeySink()
    {
        if (block_ == nullptr) return;
        wipe(block_, size_);
        std::free(block_);
    }
    KeySink(const KeySink &) = delete;
    KeySink &operator=(const KeySink &) = delete;

    // False if the block is needed and could not be allocated.
    bool is_ready() const { return !missing_; }

    // True if the key would be written but the caller gave no buffer.
    bool lacks_key() const { return key_ == nullptr && derivation_writes(klen_, step_len_, alg_); }

    // Derives the key of SM2's exchange, KDF(xU || yU || ZA || ZB). Z values that are too long for the
    // derivation leave the key unchanged.
    void derive(const PointBytes &U, Bytes ZA, Bytes ZB);

    // Derive to target(), then call deliver().
    uint8_t *target() { return block_ != nullptr ? block_ : key_; }
    void deliver()
    {
        if (block_ != nullptr) std::memcpy(key_, block_, static_cast<size_t>(klen_));
    }

private:
    uint8_t *key_;
    int32_t klen_;
    uint32_t step_len_;
    uint32_t alg_;
    uint8_t *block_ = nullptr;
    size_t size_ = 0;
    bool missing_ = false;
};

}  // namespace zokecc

#endif

// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The hashes of SM2 encryption and key exchange, computed from byte strings.
#ifndef ZOKECC_HASH_SM2_DIGESTS_H
#define ZOKECC_HASH_SM2_DIGESTS_H

#include <zokecc/hash.h>

#include <cstdint>
#include <cstring>

#include "base/wipe.h"
#include "hash/bytes.h"
#include "hash/digest.h"

namespace zokecc {

constexpr uint32_t kMaxCoordinateBytes = 32;  // L of every curve that can be installed
constexpr uint32_t kTranscriptBytes = 448;

// A coordinate pair as it is hashed: x || y, each of len bytes.
struct PointBytes {
    uint8_t xy[2 * kMaxCoordinateBytes];
    uint32_t len;

    const uint8_t *x() const { return xy; }
    const uint8_t *y() const { return xy + len; }
};

// A concatenation of byte strings, up to 448 bytes, wiped at the end of the scope.
class Transcript {
public:
    // cppcheck-suppress uninitMemberVar ; bytes after used_ are never read
    Transcript() = default;
    ~Transcript() { wipe(bytes_, sizeof bytes_); }
    Transcript(const Transcript &) = delete;
    Transcript &operator=(const Transcript &) = delete;

    Transcript &put(const uint8_t *bytes, uint32_t count);
    Transcript &put(Bytes bytes) { return put(bytes.data(), static_cast<uint32_t>(bytes.size())); }

    const uint8_t *data() const { return bytes_; }
    uint32_t size() const { return used_; }

    // out = H of the concatenation. Returns the digest's length; an unknown hash writes nothing and returns
    // 0.
    int32_t hash(uint32_t alg, uint8_t *out) const;

private:
    uint8_t bytes_[kTranscriptBytes];
    uint32_t used_ = 0;
};

// C3 = H(x2 || message || y2), assembled in work[count + 2 len]. Returns the digest's length.
int32_t sm2_check_value(uint32_t alg, const PointBytes &point, const uint8_t *message, uint32_t count,
                        uint8_t *work, uint8_t *out);

// The two users' Z and the two random points of an exchange, the initiator's first.
struct ExchangePublics {
    Bytes ZA;
    Bytes ZB;
    const uint8_t *x1;
    const uint8_t *y1;
    const uint8_t *x2;
    const uint8_t *y2;
};

// H(xU || ZA || ZB || x1 || y1 || x2 || y2). GB/T 32918.3, A8 and B8.
int32_t sm2_exchange_hash(uint32_t alg, const PointBytes &U, const ExchangePublics &publics, uint8_t *out);

// H(prefix || yU || tail)
void sm2_confirmation(uint32_t alg, uint8_t prefix, const PointBytes &U, Bytes tail, uint8_t *out);

constexpr uint8_t kResponderPrefix = 0x02;  // of S1 and SB
constexpr uint8_t kInitiatorPrefix = 0x03;  // of S2 and SA

// Both confirmation values, with prefix 02 and with prefix 03.
void sm2_confirmations(uint32_t alg, const PointBytes &U, Bytes tail, uint8_t *out02, uint8_t *out03);

// Both, with the exchange hash as the tail.
void sm2_exchange_confirmations(uint32_t alg, const PointBytes &U, const ExchangePublics &publics,
                                uint8_t *out02, uint8_t *out03);

}  // namespace zokecc

#endif

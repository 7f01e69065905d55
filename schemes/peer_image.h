// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The bytes after the prefix and yU in the confirmation values of sm2_KeyExChg: the digest's working
// area and, directly after it, the peer's public key as an ecc_point is laid out in the memory of a
// 32-bit little-endian device.
#ifndef ZOKECC_SCHEMES_PEER_IMAGE_H
#define ZOKECC_SCHEMES_PEER_IMAGE_H

#include <zokecc/ecc.h>

#include "hash/bytes.h"

namespace zokecc {

constexpr uint32_t kDigestArea = 100;  // the digest, then zero bytes
constexpr uint32_t kPointImage = 164;  // flag, x and y

struct PeerImage {
    uint8_t digest_area[kDigestArea];
    uint8_t point[kPointImage];
};
static_assert(sizeof(PeerImage) == kDigestArea + kPointImage && sizeof(ecc_point) == kPointImage);

// 19 words and their count, all little-endian. Returns the end of the image.
inline uint8_t *write_mint_image(const mint &value, uint8_t *out)
{
    for (const uint32_t word : value.words) {
        store_little_endian(word, out);
        out += 4;
    }
    store_little_endian(value.len, out);
    return out + 4;
}

// point must be finite and freshly read, so that words above the count are zero.
inline void write_peer_image(const ecc_point &point, PeerImage &image)
{
    store_little_endian(0, image.point);
    write_mint_image(point.y, write_mint_image(point.x, image.point + 4));
}

// A view of the first count bytes: 224 for coordinates of 32 bytes.
inline Bytes bytes_of(const PeerImage &image, uint32_t count)
{
    return {reinterpret_cast<const uint8_t *>(&image), count};
}

}  // namespace zokecc

#endif

// Words in byte strings.
#ifndef ZOKECC_HASH_BYTES_H
#define ZOKECC_HASH_BYTES_H

#include <cstdint>

namespace zokecc {

inline uint32_t load_big_endian(const uint8_t *bytes)
{
    return uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 8 | bytes[3];
}

// The 16 words of a 64-byte block.
inline void load_block(const uint8_t *block, uint32_t *w)
{
    for (const uint32_t *const end = w + 16; w < end; w += 2) {
        w[0] = load_big_endian(block);
        w[1] = load_big_endian(block + 4);
        block += 8;
    }
}

inline void store_big_endian(uint32_t word, uint8_t *bytes)
{
    bytes[0] = static_cast<uint8_t>(word >> 24);
    bytes[1] = static_cast<uint8_t>(word >> 16);
    bytes[2] = static_cast<uint8_t>(word >> 8);
    bytes[3] = static_cast<uint8_t>(word);
}

inline uint32_t load_little_endian(const uint8_t *bytes)
{
    return uint32_t{bytes[3]} << 24 | uint32_t{bytes[2]} << 16 | uint32_t{bytes[1]} << 8 | bytes[0];
}

inline void store_little_endian(uint32_t word, uint8_t *bytes)
{
    bytes[0] = static_cast<uint8_t>(word);
    bytes[1] = static_cast<uint8_t>(word >> 8);
    bytes[2] = static_cast<uint8_t>(word >> 16);
    bytes[3] = static_cast<uint8_t>(word >> 24);
}

}  // namespace zokecc

#endif

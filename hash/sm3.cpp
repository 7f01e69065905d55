// SM3, GB/T 32905-2016 (GM/T 0004-2012), over a message held whole in memory.
#include "hash/sm3.h"

#include <zokecc/hash.h>

#include <bit>
#include <cstring>

#include "hash/bytes.h"
#include "mint/wipe.h"

namespace {

constexpr uint32_t kBlockBytes = 64;

constexpr uint32_t kInitialState[8] = {0x7380166f, 0x4914b2b9, 0x172442d7, 0xda8a0600,
                                       0xa96f30bc, 0x163138aa, 0xe38dee4d, 0xb0fb0e4e};

constexpr uint32_t round_constant(uint32_t j)
{
    return std::rotl(j < 16 ? 0x79cc4519u : 0x7a879d8au, static_cast<int>(j % 32));
}
static_assert(round_constant(1) == 0xf3988a32u && round_constant(16) == 0x9d8a7a87u);

constexpr uint32_t p0(uint32_t x) { return x ^ std::rotl(x, 9) ^ std::rotl(x, 17); }
constexpr uint32_t p1(uint32_t x) { return x ^ std::rotl(x, 15) ^ std::rotl(x, 23); }

constexpr uint32_t ff(uint32_t j, uint32_t x, uint32_t y, uint32_t z)
{
    return j < 16 ? x ^ y ^ z : (x & y) | (x & z) | (y & z);
}

constexpr uint32_t gg(uint32_t j, uint32_t x, uint32_t y, uint32_t z)
{
    return j < 16 ? x ^ y ^ z : (x & y) | (~x & z);
}

// W[0..67]; the second expansion W' is W[j] ^ W[j + 4].
void expand(const uint8_t *block, uint32_t *w)
{
    for (uint32_t j = 0; j < 16; ++j) w[j] = zokecc::load_big_endian(block + 4 * j);
    for (uint32_t j = 16; j < 68; ++j)
        w[j] = p1(w[j - 16] ^ w[j - 9] ^ std::rotl(w[j - 3], 15)) ^ std::rotl(w[j - 13], 7) ^ w[j - 6];
}

}  // namespace

void sm3_compress(uint32_t *state, const uint8_t *block)
{
    uint32_t w[68];
    expand(block, w);
    uint32_t a = state[0], b = state[1], c = state[2], d = state[3];
    uint32_t e = state[4], f = state[5], g = state[6], h = state[7];
    for (uint32_t j = 0; j < 64; ++j) {
        const uint32_t ss1 = std::rotl(std::rotl(a, 12) + e + round_constant(j), 7);
        const uint32_t ss2 = ss1 ^ std::rotl(a, 12);
        const uint32_t tt1 = ff(j, a, b, c) + d + ss2 + (w[j] ^ w[j + 4]);
        const uint32_t tt2 = gg(j, e, f, g) + h + ss1 + w[j];
        d = c;
        c = std::rotl(b, 9);
        b = a;
        a = tt1;
        h = g;
        g = std::rotl(f, 19);
        f = e;
        e = p0(tt2);
    }
    state[0] ^= a;
    state[1] ^= b;
    state[2] ^= c;
    state[3] ^= d;
    state[4] ^= e;
    state[5] ^= f;
    state[6] ^= g;
    state[7] ^= h;
}

uint32_t sm3_hash(const sm3_msg *msg, uint8_t *out)
{
    const uint64_t length = uint64_t{msg->len_high} << 32 | msg->len_low;
    uint32_t state[8];
    std::memcpy(state, kInitialState, sizeof state);

    const uint8_t *data = msg->data;
    for (uint64_t blocks = length / kBlockBytes; blocks > 0; --blocks) {
        sm3_compress(state, data);
        data += kBlockBytes;
    }

    // The rest, 0x80, zero bytes and the bit length, in one block or two.
    uint8_t tail[2 * kBlockBytes] = {};
    const uint32_t rest = static_cast<uint32_t>(length % kBlockBytes);
    const uint32_t tail_bytes = rest <= kBlockBytes - 9 ? kBlockBytes : 2 * kBlockBytes;
    if (rest > 0) std::memcpy(tail, data, rest);
    tail[rest] = 0x80;
    const uint64_t bits = length * 8;
    zokecc::store_big_endian(static_cast<uint32_t>(bits >> 32), tail + tail_bytes - 8);
    zokecc::store_big_endian(static_cast<uint32_t>(bits), tail + tail_bytes - 4);
    for (uint32_t offset = 0; offset < tail_bytes; offset += kBlockBytes) sm3_compress(state, tail + offset);

    for (uint32_t i = 0; i < 8; ++i) zokecc::store_big_endian(state[i], out + 4 * i);
    zokecc::wipe(tail, sizeof tail);
    zokecc::wipe(state, sizeof state);
    return 0;
}

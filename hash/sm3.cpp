// SM3, GB/T 32905-2016 (GM/T 0004-2012), over a message held whole in memory.
#include "hash/sm3.h"

#include <zokecc/hash.h>

#include <bit>
#include <cstring>

#include "base/linkage.h"
#include "base/wipe.h"
#include "hash/bytes.h"

namespace {

constexpr uint32_t kBlockBytes = 64;

constexpr uint32_t kInitialState[8] = {0x7380166f, 0x4914b2b9, 0x172442d7, 0xda8a0600,
                                       0xa96f30bc, 0x163138aa, 0xe38dee4d, 0xb0fb0e4e};

constexpr uint32_t kEarlyConstant = 0x79cc4519;  // rounds 0 to 15, rotated by one more in each
constexpr uint32_t kLateConstant = 0x7a879d8a;

constexpr uint32_t p0(uint32_t x) { return x ^ std::rotl(x ^ std::rotl(x, 8), 9); }   // x, x <<< 9, x <<< 17
constexpr uint32_t p1(uint32_t x) { return x ^ std::rotl(x ^ std::rotl(x, 8), 15); }  // x, x <<< 15, x <<< 23

// W[16 + i]; the second expansion W' is W[j] ^ W[j + 4].
inline void expand(uint32_t *w, uint32_t i)
{
    w[16 + i] = p1(w[i] ^ w[7 + i] ^ std::rotl(w[13 + i], 15)) ^ std::rotl(w[3 + i], 7) ^ w[10 + i];
}

struct State {
    uint32_t a, b, c, d, e, f, g, h;
};

// One round on registers that do not move: the callers turn their names instead. The sums are
// written in the order in which they need the fewest registers.
template <bool early, int j>
ZOKECC_INLINE void round(uint32_t a, uint32_t &b, uint32_t c, uint32_t &d, uint32_t e, uint32_t &f,
                         uint32_t g, uint32_t &h, uint32_t constant, const uint32_t *w)
{
    uint32_t ss1 = e + std::rotl(constant, j);
    ss1 += std::rotl(a, 12);  // SS1 before its rotation by 7, which the uses make
    uint32_t tt2 = early ? e ^ f ^ g : ((f ^ g) & e) ^ g;
    tt2 += h;
    tt2 += w[j];
    tt2 += std::rotl(ss1, 7);
    uint32_t tt1 = early ? a ^ b ^ c : (a & b) | (c & (a | b));
    tt1 += d;
    tt1 += w[j] ^ w[j + 4];
    tt1 += std::rotl(ss1 ^ std::rotl(a, 5), 7);  // SS2
    d = tt1;
    h = p0(tt2);
    b = std::rotl(b, 9);
    f = std::rotl(f, 19);
}

template <bool early>
ZOKECC_INLINE void four_rounds(State &s, uint32_t constant, const uint32_t *w)
{
    round<early, 0>(s.a, s.b, s.c, s.d, s.e, s.f, s.g, s.h, constant, w);
    round<early, 1>(s.d, s.a, s.b, s.c, s.h, s.e, s.f, s.g, constant, w);
    round<early, 2>(s.c, s.d, s.a, s.b, s.g, s.h, s.e, s.f, constant, w);
    round<early, 3>(s.b, s.c, s.d, s.a, s.f, s.g, s.h, s.e, constant, w);
}

}  // namespace

void sm3_compress(uint32_t *state, const uint8_t *block)
{
    uint32_t w[68];
    zokecc::load_block(block, w);
    for (uint32_t *p = w; p < w + 52; p += 4) {
        expand(p, 0);
        expand(p, 1);
        expand(p, 2);
        expand(p, 3);
    }
    State s = {state[0], state[1], state[2], state[3], state[4], state[5], state[6], state[7]};
    uint32_t constant = kEarlyConstant;
    const uint32_t *p = w;
    for (; p < w + 16; p += 4) {
        four_rounds<true>(s, constant, p);
        constant = std::rotl(constant, 4);
    }
    constant = std::rotl(kLateConstant, 16);
    for (; p < w + 64; p += 4) {
        four_rounds<false>(s, constant, p);
        constant = std::rotl(constant, 4);
    }
    state[0] ^= s.a;
    state[1] ^= s.b;
    state[2] ^= s.c;
    state[3] ^= s.d;
    state[4] ^= s.e;
    state[5] ^= s.f;
    state[6] ^= s.g;
    state[7] ^= s.h;
}

namespace {

// The fastest of the routines that the processor has.
inline auto *best_compress()
{
#if ZOKECC_SHA_INSTRUCTIONS
    if (zokecc::has_rotating_vectors()) return zokecc::sm3_compress_avx512;
    if (zokecc::has_vector_instructions()) return zokecc::sm3_compress_avx;
#endif
    return sm3_compress;
}

}  // namespace

namespace zokecc {

ZOKECC_OUT_OF_LINE void sm3_finish(uint32_t *state, const uint8_t *rest, uint64_t length, uint8_t *out)
{
    // The rest, 0x80, zero bytes and the bit length, in one block or two.
    uint8_t tail[2 * kBlockBytes] = {};
    const uint32_t rest_bytes = static_cast<uint32_t>(length % kBlockBytes);
    const uint32_t tail_bytes = rest_bytes <= kBlockBytes - 9 ? kBlockBytes : 2 * kBlockBytes;
    if (rest_bytes > 0) std::memcpy(tail, rest, rest_bytes);
    tail[rest_bytes] = 0x80;
    const uint64_t bits = length * 8;
    store_big_endian(static_cast<uint32_t>(bits >> 32), tail + tail_bytes - 8);
    store_big_endian(static_cast<uint32_t>(bits), tail + tail_bytes - 4);
    auto *const compress = best_compress();
    for (uint32_t offset = 0; offset < tail_bytes; offset += kBlockBytes) compress(state, tail + offset);

    for (uint32_t i = 0; i < 8; ++i) store_big_endian(state[i], out + 4 * i);
    wipe(tail, sizeof tail);
}

}  // namespace zokecc

uint32_t sm3_hash(const sm3_msg *msg, uint8_t *out)
{
    const uint64_t length = uint64_t{msg->len_high} << 32 | msg->len_low;
    uint32_t state[8];
    std::memcpy(state, kInitialState, sizeof state);

    auto *const compress = best_compress();
    const uint8_t *data = msg->data;
    for (uint64_t blocks = length / kBlockBytes; blocks > 0; --blocks) {
        compress(state, data);
        data += kBlockBytes;
    }
    zokecc::sm3_finish(state, data, length, out);
    zokecc::wipe(state, sizeof state);
    return 0;
}
